#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <numeric>
#include <string>
#include <vector>

#include "host/VESKUIDoc.h"
#include "host/VESK_DLL_Shared_Data_T.h"
#include "log/McuJobList.h"
#include "platform/CDC.h"
#include "platform/GlyphSource.h"
#include "platform/RasterSurface.h"
#include "platform/RecordingSurface.h"
#include "platform/SystemMetrics.h"
#include "timeline/CMcuView.h"

// A view on a list of its own, in a window that leaves a canvas of 400 x 270 pixels: left 80, right
// 480, top 30, bottom 300.
class PaintTest : public testing::Test {
protected:
    static constexpr int kWidth = 400;
    static constexpr int kBottom = 300;

    PaintTest() { vesk_dll_shared_data = VESK_DLL_Shared_Data_T(); }
    ~PaintTest() override {
        m_View.reset();
        vesk_dll_shared_data = VESK_DLL_Shared_Data_T();
    }

    static McuJobList& Jobs() { return *vesk_dll_shared_data.m_pJobList; }

    static CSize WindowSize() {
        return {80 + kWidth + 30, kBottom + 100 + GetSystemMetrics(SM_CYHSCROLL)};
    }

    // A job that starts at a time, with a frame number and a counter.
    static void Job(std::uint64_t start, int frame = 0, std::uint32_t count = 0) {
        McuJob job("MAIN", start, start + 1);
        job.m_TimeStamp = frame;
        job.m_TimeCount = count;
        Jobs().Insert(job);
    }

    // An extra value with its range; the log has no sample of it.
    static void Extra(const char* name, unsigned least, unsigned most) {
        McuJobList& jobs = Jobs();
        ++jobs.m_ExtraInfoNum;
        jobs.m_ExtraNames.emplace_back(name);
        jobs.m_ExtraMin.push_back(static_cast<int>(least));
        jobs.m_ExtraMax.push_back(static_cast<int>(most));
    }

    // Opens the view on what the list holds, at 1 pixel per QBit or another zoom.
    CMcuView& Open(float pixelsPerQbit = 1.0f) {
        m_View = std::make_unique<CMcuView>();
        m_View->MoveWindow(0, 0, WindowSize().cx, WindowSize().cy);
        m_View->OnCreate();
        m_View->OnSize(SIZE_RESTORED, WindowSize().cx, WindowSize().cy);
        m_View->m_ZoomRatio = pixelsPerQbit / m_View->m_BaseScale;
        m_View->m_PixelsPerQbit = pixelsPerQbit;
        m_View->m_VisibleQbits = static_cast<std::uint64_t>(kWidth / pixelsPerQbit);
        m_View->Cal_VisibleIndex();
        return *m_View;
    }
    CMcuView& View() { return *m_View; }

    // Begins the view at a time, even where scrolling would not go.
    void LookFrom(std::uint64_t time) {
        m_View->m_TimeOffset = time;
        m_View->Cal_VisibleIndex();
    }

    using Drawing = std::function<void(CDC*)>;

    static vesk::RecordingSurface Recorded(const Drawing& draw) {
        vesk::RecordingSurface surface(WindowSize());
        CDC dc(&surface);
        dc.SetBkMode(TRANSPARENT);
        draw(&dc);
        return surface;
    }
    static std::vector<std::string> Lines(const Drawing& draw) { return Recorded(draw).Lines(); }
    static std::vector<std::string> Texts(const Drawing& draw) { return Recorded(draw).Texts(); }

    static const vesk::GlyphSource& FixedFont() {
        static const vesk::FixedGlyphs glyphs;
        return glyphs;
    }

    // Number of device pixels in which two drawings differ.
    static int Differences(const Drawing& a, const Drawing& b, double scale = 1.0,
                           const vesk::GlyphSource& glyphs = FixedFont()) {
        vesk::RasterSurface first(WindowSize(), glyphs, scale);
        vesk::RasterSurface second(WindowSize(), glyphs, scale);
        Paint(first, a);
        Paint(second, b);
        int differences = 0;
        for (int y = 0; y < first.DeviceHeight(); ++y) {
            const std::uint32_t* const row = first.Pixels() + y * first.Stride();
            const std::uint32_t* const other = second.Pixels() + y * second.Stride();
            differences += static_cast<int>(std::inner_product(
                row, row + first.DeviceWidth(), other, 0, std::plus(), std::not_equal_to()));
        }
        return differences;
    }

private:
    static void Paint(vesk::RasterSurface& surface, const Drawing& draw) {
        CDC dc(&surface);
        dc.SetBkMode(TRANSPARENT);
        draw(&dc);
    }

    VESKUIDoc m_Document;
    std::unique_ptr<CMcuView> m_View;
};
