#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>

#include "host/VESKUIDoc.h"
#include "host/VESK_DLL_Shared_Data_T.h"
#include "log/McuJobList.h"
#include "platform/CCmdUI.h"
#include "platform/HeadlessUserInterface.h"
#include "resources/VeskResources.h"
#include "timeline/CMcuView.h"

// Checks that scale, span, positions, bars and visible ranges of a view belong together; to be
// called after each step.
void ExpectConsistent(const CMcuView&);

// Checks the visible ranges against a walk over all records.
void ExpectRangesOfScan(const CMcuView&);

// A view of a log made of a few records. The view stands ready once it is open; records come
// before that. Scroll bars are 17 pixels wide.
class ViewTest : public testing::Test {
protected:
    // With the margins and bars taken off: the canvas is 1000 wide and goes down to y 500.
    static constexpr int kWidth = 1110;
    static constexpr int kHeight = 617;

    ViewTest() { vesk_dll_shared_data = VESK_DLL_Shared_Data_T(); }
    ~ViewTest() override {
        m_View.reset();
        vesk_dll_shared_data = VESK_DLL_Shared_Data_T();
    }

    static McuJobList& Log() { return *vesk_dll_shared_data.m_pJobList; }
    // An end of the log alone; all of its time is idle.
    static void LogOf(std::uint64_t end) { Log().Insert("IDLE", 0, end); }
    static void Names(std::initializer_list<const char*> names) {
        for (const char* name : names) Log().m_JobNames[name] = 1;
    }

    CMcuView& Open(int width = kWidth, int height = kHeight) {
        m_View = std::make_unique<CMcuView>();
        m_View->MoveWindow(0, 0, width, height);
        EXPECT_EQ(m_View->OnCreate(), 0);
        m_View->TakeInvalidRect();
        return *m_View;
    }
    CMcuView& View() { return *m_View; }

    // --- What a user does ----------------------------------------------------------------------

    // Chooses a command where it is enabled; false where it isn't.
    bool Press(unsigned id) {
        if (!Look(id).m_Enabled) return false;
        return m_View->OnCommand(id);
    }
    vesk::CommandState Look(unsigned id) {
        vesk::CommandState state;
        CCmdUI(id, state).DoUpdate(*m_View);
        return state;
    }
    void Key(unsigned key, unsigned modifiers = 0) { m_View->OnKeyDown(key, 1, modifiers); }
    void Wheel(double notches, unsigned flags = 0, int x = 580) {
        m_View->OnMouseWheel(flags, static_cast<int>(notches * 120), {x, 200});
    }
    void MiddleDrag(std::initializer_list<CPoint> path) {
        m_View->OnMButtonDown(MK_MBUTTON, *path.begin());
        for (const CPoint& point : path) m_View->OnMouseMove(MK_MBUTTON, point);
        m_View->OnMButtonUp(0, path.begin()[path.size() - 1]);
    }
    void ScrollTime(unsigned code, int track = 0) { m_View->m_HScrollBar.Act(code, track); }
    void ScrollLanes(unsigned code, int track = 0) { m_View->m_VScrollBar.Act(code, track); }

    // Zooms in (positive) or out by so many doublings.
    void ZoomBy(int doublings) {
        for (; doublings > 0; --doublings) Press(2020);
        for (; doublings < 0; ++doublings) Press(32771);
    }
    void GoTo(std::uint64_t time) {
        m_View->m_TimeOffset = time;
        m_View->Cal_HScrollPos();
    }
    // What has to be painted anew since the last time.
    CRect Painted() { return m_View->TakeInvalidRect(); }

    vesk::HeadlessUserInterface m_User;

private:
    vesk::ScopedUserInterface m_UserInPlace{m_User};
    std::unique_ptr<CMcuView> m_View;
};
