#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/CColorDialog.h"
#include "platform/CFileDialog.h"
#include "platform/CMenu.h"
#include "platform/CWnd.h"
#include "platform/HeadlessUserInterface.h"
#include "platform/SystemMetrics.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class Headless : public testing::Test {
protected:
    vesk::HeadlessUserInterface m_User;
    vesk::ScopedUserInterface m_InPlace{m_User};
};

TEST_F(Headless, KeepsWhatItIsShown) {
    EXPECT_EQ(AfxMessageBox("plain"), IDOK);
    EXPECT_EQ(AfxMessageBox(CString("warning"), MB_ICONEXCLAMATION), IDOK);
    EXPECT_EQ(CWnd().MessageBox("no file", "Error", MB_ICONSTOP), IDOK);
    OutputDebugStringA("trace");
    EXPECT_THAT(m_User.m_Messages, ElementsAre("plain", "warning", "no file"));
    EXPECT_EQ(m_User.m_MessageBoxes[1].m_Type, MB_ICONEXCLAMATION);
    EXPECT_EQ(m_User.m_MessageBoxes[2].m_Caption, "Error");
    EXPECT_THAT(m_User.m_DebugTexts, ElementsAre("trace"));
}

TEST_F(Headless, AnswersFileDialogsInTheirOrder) {
    const struct {
        bool open;
        const char* answer;
        int result;
        const char* path;
    } cases[] = {
        {false, "/logs/a", IDOK, "/logs/a.txt"},
        {false, "/logs.d/a.csv", IDOK, "/logs.d/a.csv"},
        {false, "/logs.d/a", IDOK, "/logs.d/a.txt"},
        {true, "/logs/a", IDOK, "/logs/a"},
        {false, "", IDCANCEL, "proposed"},
    };
    for (const auto& c : cases) m_User.OnFileDialog(c.answer);
    for (const auto& c : cases) {
        SCOPED_TRACE(c.answer);
        CFileDialog dialog(c.open, "txt", "proposed", 0, "Text file (*.txt)|*.txt||");
        EXPECT_EQ(dialog.DoModal(), c.result);
        EXPECT_EQ(dialog.GetPathName(), c.path);
    }
    EXPECT_THAT(m_User.m_Faults, IsEmpty());
    EXPECT_EQ(m_User.m_FileFilters.size(), std::size(cases));
}

TEST_F(Headless, AnswersColorDialogs) {
    m_User.OnColorDialog(RGB(1, 2, 3));
    CColorDialog dialog(RGB(9, 9, 9));
    EXPECT_EQ(dialog.DoModal(), IDOK);
    EXPECT_EQ(dialog.GetColor(), RGB(1, 2, 3));
}

// A menu of two commands, the second of which is disabled, and a pop-up with a third.
class MenuOwner : public CWnd {
public:
    MenuOwner() {
        Add(m_Menu, 1, nullptr);
        Add(m_Menu, 2, nullptr);
        Add(m_Menu, 0, std::make_unique<CMenu>());
        Add(*m_Menu.GetSubMenu(2), 3, nullptr);
    }
    void OnRun() {}
    void OnUpdateSecond(CCmdUI* ui) { ui->Enable(false); }
    void OnInitMenuPopup(CMenu*, unsigned index, bool) override { m_Opened.push_back(index); }
    const vesk::MessageMap* GetMessageMap() const override {
        static const vesk::MessageEntry entries[] = {
            vesk::Command<&MenuOwner::OnRun>(1),
            vesk::Command<&MenuOwner::OnRun, &MenuOwner::OnUpdateSecond>(2),
            vesk::Command<&MenuOwner::OnRun>(3),
        };
        static const vesk::MessageMap map{nullptr, entries};
        return &map;
    }
    static void Add(CMenu& menu, unsigned id, std::unique_ptr<CMenu> popup) {
        vesk::MenuItem item;
        item.m_Id = id;
        item.m_State.m_Enabled = id != 3;  // until its update says otherwise
        item.m_Popup = std::move(popup);
        menu.Items().push_back(std::move(item));
    }

    CMenu m_Menu;
    std::vector<unsigned> m_Opened;
};

TEST_F(Headless, ChoosesOnlyWhatAMenuOffers) {
    const struct {
        unsigned command, chosen;
        const char* fault;
    } cases[] = {
        {1, 1, nullptr}, {2, 0, "menu command 2 is disabled"},
        {3, 3, nullptr}, {4, 0, "menu command 4 is missing"},
        {0, 0, nullptr},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.command);
        MenuOwner owner;
        m_User.m_Faults.clear();
        m_User.OnMenu(c.command);
        EXPECT_EQ(m_User.RunMenu(owner.m_Menu, {}, owner), c.chosen);
        EXPECT_THAT(owner.m_Opened, ElementsAre(0U, 2U));
        if (c.fault) {
            EXPECT_THAT(m_User.m_Faults, ElementsAre(c.fault));
        } else {
            EXPECT_THAT(m_User.m_Faults, IsEmpty());
        }
    }
}

TEST_F(Headless, CancelsAndNotesWhatNobodyAnswers) {
    MenuOwner owner;
    EXPECT_EQ(CFileDialog(true, nullptr, nullptr, 0, "filter").DoModal(), IDCANCEL);
    EXPECT_EQ(CColorDialog().DoModal(), IDCANCEL);
    EXPECT_EQ(m_User.RunMenu(owner.m_Menu, {}, owner), 0U);
    EXPECT_THAT(m_User.m_Faults, ElementsAre("unexpected file dialog: filter",
                                             "unexpected color dialog", "unexpected menu"));
}

TEST_F(Headless, IsInPlaceUntilTheScopeEnds) {
    {
        vesk::HeadlessUserInterface inner;
        const vesk::ScopedUserInterface inPlace(inner);
        AfxMessageBox("inner");
        EXPECT_THAT(inner.m_Messages, ElementsAre("inner"));
    }
    AfxMessageBox("outer");
    EXPECT_THAT(m_User.m_Messages, ElementsAre("outer"));
}

TEST(SystemMetrics, AreThoseOfTheUserInterfaceInPlace) {
    EXPECT_EQ(GetSystemMetrics(SM_CXVSCROLL), 17);
    struct Wide : vesk::UserInterface {
        int SystemMetric(int index) override { return index == SM_CXSCREEN ? 3840 : 0; }
        COLORREF SystemColor(int) override { return RGB(7, 7, 7); }
    } wide;
    const vesk::ScopedUserInterface inPlace(wide);
    EXPECT_EQ(GetSystemMetrics(SM_CXSCREEN), 3840);
    EXPECT_EQ(GetSysColor(COLOR_WINDOW), RGB(7, 7, 7));
}

}  // namespace
