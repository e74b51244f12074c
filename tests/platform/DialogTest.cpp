#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

#include "platform/CButton.h"
#include "platform/CComboBox.h"
#include "platform/CDataExchange.h"
#include "platform/CEdit.h"
#include "platform/CListBox.h"
#include "platform/CListCtrl.h"
#include "platform/HeadlessUserInterface.h"
#include "platform/Keys.h"
#include "platform/Resources.h"
#include "tests/platform/RecordingPeer.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using vesk::ControlKind;
using vesk::DialogUser;

constexpr int kName = 10, kCount = 11, kDigits = 12, kLocked = 13, kSecret = 14;
constexpr int kFirst = 20, kSecond = 21, kBetween = 22, kThird = 23;
constexpr int kOtherFirst = 24, kOtherSecond = 25;
constexpr int kCheck = 30, kCombo = 40, kList = 50, kRows = 60, kAction = 70;

constexpr vesk::ControlTemplate kControls[] = {
    {ControlKind::Group, -1, "Values", -1, 0, 0, 1, 1},
    {ControlKind::Edit, kName, "", 0, 0, 0, 1, 1},
    {ControlKind::Edit, kCount, "", 0, 1, 0, 1, 1},
    {ControlKind::Edit, kDigits, "", 0, 2, 0, 1, 1, vesk::kDigitsOnly},
    {ControlKind::Edit, kLocked, "fixed", 0, 3, 0, 1, 1, vesk::kReadOnly},
    {ControlKind::Edit, kSecret, "", 0, 4, 0, 1, 1, vesk::kHidden},
    {ControlKind::Radio, kFirst, "&First", 0, 5, 0, 1, 1, vesk::kGroupStart},
    {ControlKind::Radio, kSecond, "&Second", 0, 6, 0, 1, 1},
    {ControlKind::Edit, kBetween, "", 0, 7, 0, 1, 1},
    {ControlKind::Radio, kThird, "&Third", 0, 8, 0, 1, 1},
    {ControlKind::Radio, kOtherFirst, "Left && &right", 0, 9, 0, 1, 1, vesk::kGroupStart},
    {ControlKind::Radio, kOtherSecond, "O&ther", 0, 10, 0, 1, 1},
    {ControlKind::Check, kCheck, "&Check", 0, 11, 0, 1, 1},
    {ControlKind::DropList, kCombo, "", 0, 12, 0, 1, 1, vesk::kSorted},
    {ControlKind::ListBox, kList, "", 0, 13, 0, 1, 1},
    {ControlKind::ListControl, kRows, "", 0, 14, 0, 1, 1},
    {ControlKind::Button, kAction, "Ac&tion", 0, 15, 0, 1, 1, vesk::kDisabled},
    {ControlKind::Button, IDOK, "OK", -1, 1, 0, 1, 1},
    {ControlKind::Button, IDCANCEL, "Cancel", -1, 1, 1, 1, 1},
};
constexpr vesk::ControlTemplate kOneButton[] = {
    {ControlKind::Button, IDOK, "OK", -1, 0, 0, 1, 1},
    {ControlKind::Button, kAction, "Go", -1, 0, 1, 1, 1, vesk::kDefault},
};
constexpr vesk::DialogTemplate kDialogs[] = {{900, "Sample", kControls}, {901, "Go", kOneButton}};
constexpr vesk::ResourceTables kTables{{}, {}, {}, kDialogs, {}};

// Has a member for most of its controls, and keeps what it is told.
class SampleDialog : public CDialog {
public:
    SampleDialog() : CDialog(900) {}

    bool OnInitDialog() override {
        const bool focus = CDialog::OnInitDialog();
        for (const char* text : {"pear", "Apple", "fig"}) m_Combo.AddString(text);
        for (const char* text : {"one", "two", "three"}) m_List.AddString(text);
        m_Rows.InsertColumn(0, "Name");
        m_Rows.InsertColumn(1, "Value");
        m_Rows.InsertItem(0, "a");
        m_Rows.SetItemText(0, 1, "1");
        if (m_EndsAtOnce) EndDialog(77);
        return focus;
    }
    void OnFirst() { m_Told.push_back("first"); }
    void OnCheck() { m_Told.push_back("check"); }
    void OnNameChanged() { m_Told.push_back("name " + m_Name.GetWindowText().Str()); }
    void OnChosen() { m_Told.push_back("chosen"); }
    void OnSelected() { m_Told.push_back("selected"); }
    void OnDeleteKey() { m_Told.push_back("delete"); }
    const vesk::MessageMap* GetMessageMap() const override {
        static const vesk::MessageEntry entries[] = {
            vesk::Notification<&SampleDialog::OnFirst>(kFirst, BN_CLICKED),
            vesk::Notification<&SampleDialog::OnCheck>(kCheck, BN_CLICKED),
            vesk::Notification<&SampleDialog::OnNameChanged>(kName, EN_CHANGE),
            vesk::Notification<&SampleDialog::OnChosen>(kCombo, CBN_SELCHANGE),
            vesk::Notification<&SampleDialog::OnSelected>(kList, LBN_SELCHANGE),
            vesk::Notification<&SampleDialog::OnDeleteKey>(kRows, LVN_DELETEKEY),
        };
        static const vesk::MessageMap map{nullptr, entries};
        return &map;
    }

    CEdit m_Name;
    CComboBox m_Combo;
    CListBox m_List;
    CListCtrl m_Rows;
    CString m_NameText = "name";
    std::int32_t m_Count = 7;
    std::uint64_t m_Digits = 8;
    std::int32_t m_Choice = 2;
    std::int32_t m_OtherChoice = -1;
    std::int32_t m_Check = 1;
    bool m_EndsAtOnce = false;
    std::vector<std::string> m_Told;

protected:
    void DoDataExchange(CDataExchange* exchange) override {
        DDX_Control(exchange, kName, m_Name);
        DDX_Control(exchange, kCombo, m_Combo);
        DDX_Control(exchange, kList, m_List);
        DDX_Control(exchange, kRows, m_Rows);
        DDX_Text(exchange, kName, m_NameText);
        DDX_Text(exchange, kCount, m_Count);
        DDV_MinMaxInt(exchange, m_Count, 1, 50);
        DDX_Text(exchange, kDigits, m_Digits);
        DDX_Radio(exchange, kFirst, m_Choice);
        DDX_Radio(exchange, kOtherFirst, m_OtherChoice);
        DDX_Check(exchange, kCheck, m_Check);
    }
};

class Dialogs : public testing::Test {
protected:
    ~Dialogs() override { EXPECT_THAT(m_User.m_Faults, IsEmpty()); }

    int Run(CDialog& dialog, vesk::HeadlessUserInterface::DialogScript script) {
        m_User.OnDialog(std::move(script));
        return dialog.DoModal();
    }
    // What it took to go wrong, taken as seen.
    std::vector<std::string> TakeFaults() { return std::exchange(m_User.m_Faults, {}); }

    AFX_EXTENSION_MODULE m_Module{true, &kTables};
    CDynLinkLibrary m_Library{m_Module};
    vesk::HeadlessUserInterface m_User;
    vesk::ScopedUserInterface m_InPlace{m_User};
};

TEST_F(Dialogs, ShowTheMembersAndTakeThemBackWithOk) {
    SampleDialog dialog;
    EXPECT_EQ(Run(dialog,
                  [](DialogUser& user) {
                      EXPECT_EQ(user.Dialog().GetWindowText(), "Sample");
                      EXPECT_EQ(user.Text(kName), "name");
                      EXPECT_EQ(user.Text(kCount), "7");
                      EXPECT_EQ(user.Text(kDigits), "8");
                      EXPECT_TRUE(user.IsChecked(kThird));
                      EXPECT_FALSE(user.IsChecked(kFirst) || user.IsChecked(kOtherFirst));
                      EXPECT_TRUE(user.IsChecked(kCheck));
                      user.Type(kName, "new");
                      user.Type(kCount, " +50 ");
                      user.Type(kDigits, "-1x8446744073709551615");
                      user.Press("Second");
                      user.Press("Left && right");
                      user.Press(kCheck);
                      user.Press("OK");
                  }),
              IDOK);
    EXPECT_EQ(dialog.m_NameText, "new");
    EXPECT_EQ(dialog.m_Count, 50);
    EXPECT_EQ(dialog.m_Digits, 18446744073709551615U);
    EXPECT_EQ(dialog.m_Choice, 1);
    EXPECT_EQ(dialog.m_OtherChoice, 0);
    EXPECT_EQ(dialog.m_Check, 0);
    EXPECT_THAT(m_User.m_DialogTitles, ElementsAre("Sample"));
}

TEST_F(Dialogs, LeaveTheMembersAloneWithoutOk) {
    const struct {
        const char* what;
        void (*end)(DialogUser&);
    } cases[] = {
        {"the button", [](DialogUser& user) { user.Press("Cancel"); }},
        {"Escape", [](DialogUser& user) { user.Key(VK_ESCAPE); }},
        {"the close box", [](DialogUser& user) { user.Dialog().Close(); }},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        SampleDialog dialog;
        EXPECT_EQ(Run(dialog,
                      [&](DialogUser& user) {
                          user.Type(kName, "new");
                          c.end(user);
                      }),
                  IDCANCEL);
        EXPECT_EQ(dialog.m_NameText, "name");
        EXPECT_EQ(dialog.m_Name.GetWindowText(), "new");
    }
}

TEST_F(Dialogs, RefuseWhatIsNoNumberOfTheRange) {
    const struct {
        int id;
        const char* typed;
        const char* text;
    } cases[] = {
        {kCount, "", "Please enter an integer."},
        {kCount, "12 apples", "Please enter an integer."},
        {kCount, "+-3", "Please enter an integer."},
        {kCount, "2147483648", "Please enter an integer."},
        {kCount, "0", "Please enter an integer between 1 and 50."},
        {kCount, "51", "Please enter an integer between 1 and 50."},
        {kDigits, "18446744073709551616", "Please enter a positive integer."},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.typed);
        m_User.m_MessageBoxes.clear();
        SampleDialog dialog;
        EXPECT_EQ(Run(dialog,
                      [&](DialogUser& user) {
                          user.Type(c.id, c.typed);
                          user.Press(IDOK);
                          EXPECT_FALSE(user.Dialog().HasEnded());
                          auto* const edit = dynamic_cast<CEdit*>(user.Dialog().GetDlgItem(c.id));
                          EXPECT_EQ(CWnd::GetFocus(), edit);
                          int from = -1, to = -1;
                          edit->GetSel(from, to);
                          EXPECT_EQ(from, 0);
                          EXPECT_EQ(to, edit->GetWindowText().GetLength());
                          user.Key(VK_ESCAPE);
                      }),
                  IDCANCEL);
        ASSERT_EQ(m_User.m_MessageBoxes.size(), 1U);
        EXPECT_EQ(m_User.m_MessageBoxes[0].m_Text, c.text);
        EXPECT_EQ(m_User.m_MessageBoxes[0].m_Type, MB_ICONEXCLAMATION);
    }
}

TEST_F(Dialogs, AreToldWhatTheUserDoesButNothingOfTheirOwnChanges) {
    SampleDialog dialog;
    Run(dialog, [&](DialogUser& user) {
        user.Dialog().UpdateData(false);
        EXPECT_THAT(dialog.m_Told, IsEmpty());
        user.Press(kFirst);
        user.Press(kCheck);
        user.Type(kName, "x");
        user.Type(kName, "x");
        user.Choose(kCombo, "fig");
        user.Select(kList, 1);
        dialog.m_Rows.SetFocus();
        user.Key(VK_DELETE);
        user.Press(IDCANCEL);
        dialog.m_Name.Type("too late");
    });
    EXPECT_THAT(dialog.m_Told,
                ElementsAre("first", "check", "name x", "chosen", "selected", "delete"));
}

TEST_F(Dialogs, OneButtonOfAChoiceIsSetWhateverStandsBetween) {
    SampleDialog dialog;
    Run(dialog, [&](DialogUser& user) {
        user.Press(kOtherSecond);
        user.Press(kFirst);
        EXPECT_TRUE(user.IsChecked(kFirst));
        EXPECT_FALSE(user.IsChecked(kThird));
        EXPECT_TRUE(user.IsChecked(kOtherSecond));
        user.Press(kOtherFirst);
        EXPECT_TRUE(user.IsChecked(kFirst));
        EXPECT_FALSE(user.IsChecked(kOtherSecond));
        user.Press(IDCANCEL);
    });
}

TEST_F(Dialogs, ListsShowWhatTheyHold) {
    SampleDialog dialog;
    Run(dialog, [&](DialogUser& user) {
        EXPECT_THAT(user.Lines(kCombo), ElementsAre("Apple", "fig", "pear"));
        EXPECT_THAT(user.Lines(kRows), ElementsAre("a\t1"));
        EXPECT_EQ(user.Selected(kCombo), -1);
        user.Choose(kCombo, 1);
        user.Select(kRows, 0);
        EXPECT_EQ(user.Selected(kCombo), 1);
        EXPECT_EQ(user.Selected(kRows), 0);
        user.Press(IDCANCEL);
    });
}

TEST_F(Dialogs, BeginAnewWhenRunAgain) {
    SampleDialog dialog;
    for (int run = 0; run < 2; ++run) {
        SCOPED_TRACE(run);
        Run(dialog, [&](DialogUser& user) {
            EXPECT_THAT(user.Lines(kList), ElementsAre("one", "two", "three"));
            EXPECT_EQ(user.Selected(kList), -1);
            EXPECT_EQ(dialog.m_Rows.Columns().size(), 2U);
            EXPECT_TRUE(user.IsEnabled(kName));
            user.Select(kList, 2);
            dialog.m_Name.EnableWindow(false);
            user.Press(IDOK);
        });
        EXPECT_EQ(dialog.m_List.GetCurSel(), 2) << "members keep their state";
        EXPECT_THAT(dialog.Controls(), IsEmpty());
        EXPECT_EQ(dialog.m_List.GetParent(), nullptr);
    }
}

TEST_F(Dialogs, EndBeforeTheyAreShown) {
    SampleDialog dialog;
    dialog.m_EndsAtOnce = true;
    EXPECT_EQ(dialog.DoModal(), 77);
    EXPECT_THAT(m_User.m_DialogTitles, IsEmpty());
}

TEST_F(Dialogs, NeedATemplate) {
    EXPECT_EQ(CDialog(999).DoModal(), -1);
}

TEST_F(Dialogs, ReturnPressesTheDefaultButton) {
    class GoDialog : public CDialog {
    public:
        GoDialog() : CDialog(901) {}
        void OnGo() { EndDialog(5); }
        const vesk::MessageMap* GetMessageMap() const override {
            static const vesk::MessageEntry entries[] = {
                vesk::Notification<&GoDialog::OnGo>(kAction, BN_CLICKED)};
            static const vesk::MessageMap map{nullptr, entries};
            return &map;
        }
    } go;
    EXPECT_EQ(Run(go, [](DialogUser& user) { user.Key(VK_RETURN); }), 5);
    SampleDialog plain;
    EXPECT_EQ(Run(plain, [](DialogUser& user) { user.Key(VK_RETURN); }), IDOK);
}

TEST_F(Dialogs, RunAHandlerOfTheirOwnForOk) {
    class AskingDialog : public CDialog {
    public:
        AskingDialog() : CDialog(901) {}
        void OnConfirm() { m_Asked = true; }
        const vesk::MessageMap* GetMessageMap() const override {
            static const vesk::MessageEntry entries[] = {
                vesk::Notification<&AskingDialog::OnConfirm>(IDOK, BN_CLICKED)};
            static const vesk::MessageMap map{nullptr, entries};
            return &map;
        }
        bool m_Asked = false;
    } dialog;
    Run(dialog, [](DialogUser& user) {
        user.Press(IDOK);
        EXPECT_FALSE(user.Dialog().HasEnded());
        user.Dialog().EndDialog(IDOK);
    });
    EXPECT_TRUE(dialog.m_Asked);
}

TEST_F(Dialogs, GiveTheFocusToTheFirstControlThatTakesIt) {
    SampleDialog dialog;
    Run(dialog, [&](DialogUser& user) {
        EXPECT_EQ(CWnd::GetFocus(), &dialog.m_Name);
        user.Press(IDCANCEL);
    });
    EXPECT_EQ(CWnd::GetFocus(), nullptr);
}

TEST_F(Dialogs, LetGoOfThePeersWhenTheyAreOver) {
    SampleDialog dialog;
    int alive = 0;
    Run(dialog, [&](DialogUser& user) {
        for (const CDialog::Control& control : dialog.Controls())
            control.m_Window->SetPeer(std::make_unique<RecordingPeer>(&alive));
        EXPECT_GT(alive, 0);
        user.Press(IDCANCEL);
    });
    EXPECT_EQ(alive, 0);
}

TEST_F(Dialogs, ThrowWhenAMemberDoesNotFitTheTemplate) {
    class MisfitDialog : public CDialog {
    public:
        explicit MisfitDialog(int id) : CDialog(900), m_Id(id) {}
        int m_Id;
        CEdit m_Member;

    protected:
        void DoDataExchange(CDataExchange* exchange) override {
            DDX_Control(exchange, m_Id, m_Member);
        }
    };
    EXPECT_THROW(MisfitDialog(kList).DoModal(), std::logic_error);
    EXPECT_THROW(MisfitDialog(12345).DoModal(), std::logic_error);
}

TEST_F(Dialogs, NotPossibleForAPersonIsAFault) {
    const struct {
        const char* fault;
        bool (*act)(DialogUser&);
    } cases[] = {
        {"Sample: press: control 999 is missing", [](DialogUser& u) { return u.Press(999); }},
        {"Sample: press: control 70 is disabled", [](DialogUser& u) { return u.Press(kAction); }},
        {"Sample: press: control 10 is of another kind",
         [](DialogUser& u) { return u.Press(kName); }},
        {"Sample: press \"Action\": it is disabled",
         [](DialogUser& u) { return u.Press("Action"); }},
        {"Sample: press \"Nothing\": it is missing",
         [](DialogUser& u) { return u.Press("Nothing"); }},
        {"Sample: type: control 14 is hidden", [](DialogUser& u) { return u.Type(kSecret, "x"); }},
        {"Sample: type: control 13 is read-only",
         [](DialogUser& u) { return u.Type(kLocked, "x"); }},
        {"Sample: choose: control 40 has no entry 3",
         [](DialogUser& u) { return u.Choose(kCombo, 3); }},
        {"Sample: choose: control 40 has no entry \"plum\"",
         [](DialogUser& u) { return u.Choose(kCombo, "plum"); }},
        {"Sample: select: control 50 has no line 3",
         [](DialogUser& u) { return u.Select(kList, 3); }},
        {"Sample: press: control 1 stands in a dialog that has ended",
         [](DialogUser& u) {
             u.Press(IDCANCEL);
             return u.Press(IDOK);
         }},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.fault);
        SampleDialog dialog;
        EXPECT_EQ(Run(dialog,
                      [&](DialogUser& user) {
                          EXPECT_FALSE(c.act(user));
                          user.Dialog().Close();
                      }),
                  IDCANCEL);
        EXPECT_THAT(TakeFaults(), ElementsAre(c.fault));
        EXPECT_EQ(dialog.m_Combo.GetCurSel(), -1);
    }
}

TEST_F(Dialogs, WithoutAnAnswerAreCancelledAndNoted) {
    SampleDialog unexpected;
    EXPECT_EQ(unexpected.DoModal(), IDCANCEL);
    EXPECT_THAT(TakeFaults(), ElementsAre("unexpected dialog: Sample"));
    SampleDialog leftOpen;
    EXPECT_EQ(Run(leftOpen, [](DialogUser&) {}), IDCANCEL);
    EXPECT_THAT(TakeFaults(), ElementsAre("dialog left open: Sample"));
}

TEST_F(Dialogs, AreCancelledWhereNobodyIs) {
    vesk::UserInterface nobody;
    const vesk::ScopedUserInterface inPlace(nobody);
    SampleDialog dialog;
    EXPECT_EQ(dialog.DoModal(), IDCANCEL);
}

}  // namespace
