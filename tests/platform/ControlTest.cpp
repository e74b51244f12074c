#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "platform/CButton.h"
#include "platform/CComboBox.h"
#include "platform/CEdit.h"
#include "platform/CListBox.h"
#include "platform/CListCtrl.h"
#include "platform/CScrollBar.h"
#include "tests/platform/RecordingPeer.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using vesk::Aspect;

constexpr int kLeast = std::numeric_limits<int>::min();
constexpr int kGreatest = std::numeric_limits<int>::max();

// Writes down what its controls send.
class Panel : public CWnd {
public:
    void OnNotify(int id, int code) override { m_Notes.emplace_back(id, code); }
    void OnHScroll(unsigned code, unsigned pos, CScrollBar*) override {
        m_Scrolls.push_back({'H', code, pos});
    }
    void OnVScroll(unsigned code, unsigned pos, CScrollBar*) override {
        m_Scrolls.push_back({'V', code, pos});
    }

    struct Scroll {
        char bar;
        unsigned code, pos;
        friend bool operator==(const Scroll&, const Scroll&) = default;
    };
    std::vector<std::pair<int, int>> m_Notes;
    std::vector<Scroll> m_Scrolls;
};

class Controls : public testing::Test {
protected:
    // Puts a control into the panel, where the user can reach it.
    template <class T>
    T& Put(T& control, int id = 1) {
        control.Attach(&m_Panel, id);
        control.ShowWindow(SW_SHOW);
        auto peer = std::make_unique<RecordingPeer>();
        m_Peer = peer.get();
        control.SetPeer(std::move(peer));
        return control;
    }
    static std::vector<std::string> LinesOf(const CListBox& list) {
        std::vector<std::string> lines;
        for (int i = 0; i < list.GetCount(); ++i) {
            CString text;
            list.GetText(i, text);
            lines.push_back(text.Str());
        }
        return lines;
    }
    static CListBox& Fill(CListBox& list, std::initializer_list<const char*> lines) {
        for (const char* line : lines) list.AddString(line);
        return list;
    }
    static SCROLLINFO Scroll(int min, int max, unsigned page, int pos) {
        SCROLLINFO info;
        info.fMask = SIF_ALL;
        info.nMin = min;
        info.nMax = max;
        info.nPage = page;
        info.nPos = pos;
        return info;
    }

    Panel m_Panel;
    RecordingPeer* m_Peer = nullptr;
};

TEST_F(Controls, DoNothingForTheUserWhileDisabledOrHidden) {
    CButton button;
    CEdit edit;
    CComboBox combo;
    CListBox list;
    CListCtrl rows;
    CScrollBar bar;
    button.m_Kind = vesk::ButtonKind::Check;
    combo.AddString("a");
    list.AddString("a");
    rows.InsertItem(0, "a");
    for (CWnd* control : std::initializer_list<CWnd*>{&button, &edit, &combo, &list, &rows, &bar})
        Put(*control);
    for (const bool hidden : {false, true}) {
        SCOPED_TRACE(hidden);
        for (CWnd* control : m_Panel.Children()) {
            control->EnableWindow(hidden);
            control->ShowWindow(hidden ? SW_HIDE : SW_SHOW);
        }
        button.Click();
        edit.Type("x");
        combo.Choose(0);
        list.Select(0);
        rows.Select({0});
        bar.Act(SB_LINEDOWN);
        EXPECT_EQ(button.GetCheck(), 0);
        EXPECT_TRUE(edit.GetWindowText().IsEmpty());
        EXPECT_EQ(combo.GetCurSel(), CB_ERR);
        EXPECT_EQ(list.GetCurSel(), LB_ERR);
        EXPECT_FALSE(rows.IsSelected(0));
    }
    EXPECT_THAT(m_Panel.m_Notes, IsEmpty());
    EXPECT_THAT(m_Panel.m_Scrolls, IsEmpty());
}

TEST_F(Controls, CheckBoxesChangeAndTell) {
    CButton check;
    check.m_Kind = vesk::ButtonKind::Check;
    Put(check, 5);
    check.Click();
    EXPECT_EQ(check.GetCheck(), 1);
    check.Click();
    EXPECT_EQ(check.GetCheck(), 0);
    EXPECT_THAT(m_Panel.m_Notes, ElementsAre(std::pair(5, BN_CLICKED), std::pair(5, BN_CLICKED)));
    EXPECT_THAT(m_Peer->m_Changes, ElementsAre(Aspect::Selection, Aspect::Selection));
}

TEST_F(Controls, EditsForDigitsDropEverythingElse) {
    CEdit edit;
    Put(edit, 6).m_DigitsOnly = true;
    edit.Type("1a2-3");
    EXPECT_EQ(edit.GetWindowText(), "123");
    edit.Type("123x");
    EXPECT_THAT(m_Panel.m_Notes, ElementsAre(std::pair(6, EN_CHANGE))) << "nothing new the second";
}

TEST_F(Controls, ASelectionOfTextStaysWithinTheText) {
    const struct {
        int from, to, gotFrom, gotTo;
    } cases[] = {{0, -1, 0, 5}, {1, 3, 1, 3}, {-4, 99, 0, 5}, {4, 2, 4, 4}};
    CEdit edit;
    edit.SetWindowText("hello");
    for (const auto& c : cases) {
        SCOPED_TRACE(c.from);
        edit.SetSel(c.from, c.to);
        int from = -1, to = -1;
        edit.GetSel(from, to);
        EXPECT_EQ(from, c.gotFrom);
        EXPECT_EQ(to, c.gotTo);
    }
}

TEST_F(Controls, ComboBoxesRefuseIndexesThatDoNotExist) {
    CComboBox combo;
    combo.AddString("a");
    EXPECT_EQ(combo.SetCurSel(0), 0);
    for (const int index : {-1, 1}) {
        CString text = "before";
        combo.GetLBText(index, text);
        EXPECT_TRUE(text.IsEmpty());
        EXPECT_EQ(combo.GetItemData(index), CB_ERR);
        EXPECT_EQ(combo.SetItemData(index, 3), CB_ERR);
        EXPECT_EQ(combo.SetCurSel(index), CB_ERR);
        EXPECT_EQ(combo.GetCurSel(), CB_ERR) << "none is chosen";
    }
    EXPECT_EQ(combo.FindStringExact("A"), 0);
    EXPECT_EQ(combo.FindStringExact("aa"), CB_ERR);
}

TEST_F(Controls, AChoiceFollowsItsEntryInASortedComboBox) {
    CComboBox combo;
    combo.m_Sorted = true;
    EXPECT_EQ(combo.AddString("m"), 0);
    combo.SetItemData(0, 42);
    combo.SetCurSel(0);
    EXPECT_EQ(combo.AddString("Z"), 1);
    EXPECT_EQ(combo.AddString("A"), 0);
    EXPECT_EQ(combo.GetCurSel(), 1);
    EXPECT_EQ(combo.GetItemData(1), 42);
}

TEST_F(Controls, ListsSortWithoutRegardToCase) {
    CListBox list;
    list.m_Sorted = true;
    EXPECT_THAT(LinesOf(Fill(list, {"b", "C", "a", "B", "_"})),
                ElementsAre("a", "b", "B", "C", "_"));
}

TEST_F(Controls, ListsFindTheNextEntryThatBeginsWithAText) {
    CListBox list;
    EXPECT_EQ(list.FindString(-1, "a"), LB_ERR);
    Fill(list, {"Alpha", "beta", "ALTO", "alp"});
    const struct {
        int after;
        const char* beginning;
        int found;
    } cases[] = {
        {-1, "al", 0},  {0, "al", 2},  {2, "al", 3},      {3, "al", 0}, {0, "BETA", 1},
        {1, "beta", 1}, {-1, "x", -1}, {-1, "betas", -1}, {-9, "", 0},  {kGreatest, "alp", 0},
    };
    for (const auto& c : cases)
        EXPECT_EQ(list.FindString(c.after, c.beginning), c.found) << c.after << c.beginning;
}

TEST_F(Controls, ListsForOneSelectOne) {
    CListBox list;
    Fill(Put(list, 7), {"a", "b", "c"});
    list.Select(1);
    list.Select(2, true);
    list.Select(3);
    EXPECT_EQ(list.GetCurSel(), 2);
    EXPECT_FALSE(list.GetSel(1));
    EXPECT_EQ(m_Panel.m_Notes.size(), 2U);
    EXPECT_EQ(list.SetSel(0), LB_ERR);
    EXPECT_EQ(list.SetCurSel(-1), LB_ERR);
    EXPECT_EQ(list.GetCurSel(), LB_ERR);
}

TEST_F(Controls, ListsForSeveralSelectSeveral) {
    CListBox list;
    Fill(Put(list), {"a", "b", "c"}).m_MultiSelect = true;
    list.Select(0);
    list.Select(2, true);
    EXPECT_TRUE(list.GetSel(0) && !list.GetSel(1) && list.GetSel(2));
    list.Select(0, true);
    EXPECT_FALSE(list.GetSel(0)) << "added twice, it is out again";
    list.Select(1);
    EXPECT_TRUE(list.GetSel(1) && !list.GetSel(2));
    EXPECT_EQ(list.SetSel(-1), 0);
    EXPECT_TRUE(list.GetSel(0) && list.GetSel(2));
    EXPECT_EQ(list.SetCurSel(0), LB_ERR);
}

TEST_F(Controls, APressSelectsTheLineUnderIt) {
    CListBox list;
    Fill(Put(list), {"a", "b", "c", "d"}).SetItemHeight(10);
    list.MoveWindow(0, 0, 50, 100);
    list.SetTopIndex(1);
    const struct {
        int y, selected;
    } cases[] = {{0, 1}, {9, 1}, {10, 2}, {29, 3}, {30, 3}, {-1, 3}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.y);
        list.OnLButtonDown(MK_LBUTTON, {5, c.y});
        EXPECT_EQ(list.GetCurSel(), c.selected);
    }
    CRect rect;
    ASSERT_TRUE(list.GetItemRect(0, &rect));
    EXPECT_EQ(rect, (CRect{0, -10, 50, 0}));
    EXPECT_FALSE(list.GetItemRect(4, &rect));
    list.SetTopIndex(99);
    EXPECT_EQ(list.GetTopIndex(), 3);
    list.ResetContent();
    EXPECT_EQ(list.GetTopIndex(), 0);
}

TEST_F(Controls, ListControlsKeepTextsBeneathTheirColumns) {
    CListCtrl rows;
    EXPECT_EQ(rows.InsertColumn(0, "Name"), 0);
    EXPECT_EQ(rows.InsertItem(99, "second"), 0);
    EXPECT_EQ(rows.InsertItem(0, "first"), 0);
    EXPECT_EQ(rows.InsertColumn(5, "Value", 80), 1);
    EXPECT_TRUE(rows.SetItemText(0, 1, "1"));
    EXPECT_FALSE(rows.SetItemText(0, 2, "no column"));
    EXPECT_FALSE(rows.SetItemText(2, 0, "no row"));
    rows.InsertColumn(1, "Unit");
    EXPECT_EQ(rows.GetItemText(0, 1), "");
    EXPECT_EQ(rows.GetItemText(0, 2), "1");
    EXPECT_EQ(rows.GetColumnWidth(2), 80);
    EXPECT_TRUE(rows.DeleteColumn(1));
    EXPECT_EQ(rows.GetItemText(0, 1), "1");
    EXPECT_TRUE(rows.DeleteItem(0));
    EXPECT_FALSE(rows.DeleteItem(1));
    EXPECT_EQ(rows.GetItemText(0, 0), "second");
    EXPECT_EQ(rows.GetItemText(0, 1), "");
}

TEST_F(Controls, ListControlsSelectExactlyTheRowsChosen) {
    CListCtrl rows;
    for (int i = 0; i < 3; ++i) Put(rows).InsertItem(i, "row");
    rows.SetSelected(0, true);
    rows.Select({1, 2, 7});
    EXPECT_TRUE(!rows.IsSelected(0) && rows.IsSelected(1) && rows.IsSelected(2));
}

TEST_F(Controls, ScrollBarsKeepTheirPositionWithinRangeAndPage) {
    const struct {
        const char* what;
        int min, max;
        unsigned page;
        int pos, limit, kept;
    } cases[] = {
        {"without a page", 0, 100, 0, 200, 100, 100},
        {"a page of one", 0, 100, 1, 100, 100, 100},
        {"a page", 0, 99, 10, 95, 90, 90},
        {"below the range", 5, 99, 10, -7, 90, 5},
        {"the range is one page", 0, 9, 10, 4, 0, 0},
        {"less than a page", 0, 9, 11, 4, 0, 0},
        {"ends before it begins", 7, 3, 1, 5, 7, 7},
        {"the widest range", kLeast, kGreatest, 30, kGreatest, kGreatest - 29, kGreatest - 29},
        {"the widest page", 0, kGreatest, 4294967295U, 8, 0, 0},
        {"the widest page in the widest range", kLeast, kGreatest, 4294967295U, 8, kLeast + 1,
         kLeast + 1},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        CScrollBar bar;
        const SCROLLINFO info = Scroll(c.min, c.max, c.page, c.pos);
        EXPECT_TRUE(bar.SetScrollInfo(&info));
        EXPECT_EQ(bar.GetScrollLimit(), c.limit);
        EXPECT_EQ(bar.GetScrollPos(), c.kept);
    }
}

TEST_F(Controls, ScrollBarsTakeAndTellWhatTheMaskNames) {
    CScrollBar bar;
    const SCROLLINFO all = Scroll(0, 50, 5, 20);
    bar.SetScrollInfo(&all);
    Put(bar);
    SCROLLINFO page;
    page.fMask = SIF_PAGE;
    page.nPage = 41;
    bar.SetScrollInfo(&page);
    bar.SetScrollInfo(&page);
    EXPECT_EQ(bar.GetScrollPos(), 10) << "the larger page leaves less to go";
    SCROLLINFO got = Scroll(-1, -1, 99, -1);
    bar.GetScrollInfo(&got, SIF_RANGE | SIF_PAGE);
    EXPECT_EQ(got.nMin, 0);
    EXPECT_EQ(got.nMax, 50);
    EXPECT_EQ(got.nPage, 41U);
    EXPECT_EQ(got.nPos, -1);
    EXPECT_EQ(bar.SetScrollPos(3), 10);
    EXPECT_THAT(m_Peer->m_Changes, ElementsAre(Aspect::Scroll, Aspect::Scroll));
}

TEST_F(Controls, ScrollBarsTellTheParentAndDoNotMoveByThemselves) {
    CScrollBar across, down;
    ASSERT_TRUE(across.Create(WS_CHILD | WS_VISIBLE | SBS_HORZ, {0, 90, 100, 100}, &m_Panel, 1));
    ASSERT_TRUE(down.Create(WS_CHILD | WS_VISIBLE | SBS_VERT, {90, 0, 100, 90}, &m_Panel, 2));
    EXPECT_FALSE(down.Create(SBS_VERT, {}, nullptr, 3));
    across.Act(SB_PAGERIGHT, 7);
    down.Act(SB_THUMBTRACK, 70'000);
    down.Act(SB_ENDSCROLL);
    EXPECT_THAT(m_Panel.m_Scrolls, ElementsAre(Panel::Scroll{'H', SB_PAGERIGHT, 0},
                                               Panel::Scroll{'V', SB_THUMBTRACK, 70'000},
                                               Panel::Scroll{'V', SB_ENDSCROLL, 0}));
    EXPECT_EQ(down.GetScrollPos(), 0);
    SCROLLINFO info;
    down.GetScrollInfo(&info);
    EXPECT_EQ(info.nTrackPos, 70'000);
}

}  // namespace
