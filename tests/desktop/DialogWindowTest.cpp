#include "desktop/DialogWindow.h"

#include <gmock/gmock.h>

#include <QAbstractButton>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMessageBox>
#include <QPushButton>
#include <QTreeView>

#include "platform/CButton.h"
#include "platform/CComboBox.h"
#include "platform/CDC.h"
#include "platform/CDataExchange.h"
#include "platform/CEdit.h"
#include "platform/CListBox.h"
#include "platform/CListCtrl.h"
#include "tests/desktop/DesktopTest.h"

namespace vesk {
namespace {

using testing::ElementsAre;

enum Id {
    kNameLabel = 100,
    kName,
    kCount,
    kMode,
    kAll,
    kUnits,
    kUnitSize,
    kFast,
    kSlow,
    kSort,
    kColor,
    kLine,
    kSeveral,
    kTable,
    kDrawn,
    kScan,
    kSwap,
    kNote
};

constexpr ControlTemplate kControls[] = {
    {ControlKind::Label, kNameLabel, "&Name:", -1, 0, 0, 1, 1},
    {ControlKind::Edit, kName, "", -1, 0, 1, 1, 1},
    {ControlKind::Edit, kCount, "", -1, 1, 1, 1, 1, kDigitsOnly},
    {ControlKind::Group, kMode, "&Mode", -1, 2, 0, 1, 2},
    {ControlKind::Radio, kAll, "&All", 3, 0, 0, 1, 1, kGroupStart},
    {ControlKind::Radio, kUnits, "&Units", 3, 1, 0, 1, 1},
    {ControlKind::Edit, kUnitSize, "", 3, 1, 1, 1, 1, kDisabled},
    {ControlKind::Radio, kFast, "Fast", 3, 2, 0, 1, 1, kGroupStart},
    {ControlKind::Radio, kSlow, "Slow", 3, 2, 1, 1, 1},
    {ControlKind::Check, kSort, "So&rt", -1, 3, 0, 1, 1},
    {ControlKind::DropList, kColor, "", -1, 3, 1, 1, 1},
    {ControlKind::ListBox, kLine, "", -1, 4, 0, 1, 1},
    {ControlKind::ListBox, kSeveral, "", -1, 4, 1, 1, 1, kMultiSelect},
    {ControlKind::ListControl, kTable, "", -1, 5, 0, 1, 1},
    {ControlKind::ListBox, kDrawn, "", -1, 5, 1, 1, 1, kOwnerDrawn},
    {ControlKind::Button, kScan, "&Scan", -1, 6, 0, 1, 1},
    {ControlKind::Button, kSwap, "S&wap", -1, 6, 1, 1, 1},
    {ControlKind::Label, kNote, "", -1, 7, 0, 1, 2, kHidden},
    {ControlKind::Button, IDCANCEL, "Cancel", -1, 8, 0, 1, 1},
    {ControlKind::Button, IDOK, "OK", -1, 8, 1, 1, 1, kDefault},
};
constexpr ControlTemplate kPlainControls[] = {
    {ControlKind::Label, kNameLabel, "Nothing to answer", -1, 0, 0, 1, 1},
    {ControlKind::Button, IDOK, "OK", -1, 1, 0, 1, 1},
};
constexpr DialogTemplate kDialogs[] = {{1, "Every kind", kControls}, {2, "Plain", kPlainControls}};

// Draws every entry as a bar in the colour of its data.
class BarList : public CListBox {
public:
    void DrawItem(DRAWITEMSTRUCT* item) override {
        item->hDC->FillSolidRect(item->rcItem, static_cast<COLORREF>(item->itemData));
        m_LastWidth = item->rcItem.Width();
    }
    int m_LastWidth = 0;
};

class EveryKindDialog : public CDialog {
public:
    EveryKindDialog() : CDialog(1) {}

    CString m_NameValue;
    std::int32_t m_CountValue = 0;
    std::int32_t m_ModeValue = 0;
    std::int32_t m_SpeedValue = 1;
    std::int32_t m_SortValue = 0;
    std::int32_t m_ColorValue = -1;
    CListBox m_Lines;
    CListBox m_Several;
    CListCtrl m_Rows;
    BarList m_Bars;
    std::vector<std::string> m_Heard;
    bool m_RefusesToCancel = false;

private:
    bool OnInitDialog() override {
        auto& colors = dynamic_cast<CComboBox&>(*GetDlgItem(kColor));
        for (const char* color : {"red", "green", "blue"}) colors.AddString(color);
        for (int i = 0; i < 5; ++i) {
            m_Lines.AddString("line " + std::to_string(i));
            m_Several.AddString("entry " + std::to_string(i));
            m_Bars.SetItemData(m_Bars.AddString(""), i == 1 ? 0x0000FF : 0x00FF00);
        }
        m_Rows.InsertColumn(0, "Name");
        m_Rows.InsertColumn(1, "Value");
        for (int i = 0; i < 3; ++i) {
            m_Rows.InsertItem(i, "<b>row " + std::to_string(i) + "</b>");
            m_Rows.SetItemText(i, 1, std::to_string(10 * i));
        }
        return CDialog::OnInitDialog();
    }

    void DoDataExchange(CDataExchange* exchange) override {
        DDX_Control(exchange, kLine, m_Lines);
        DDX_Control(exchange, kSeveral, m_Several);
        DDX_Control(exchange, kTable, m_Rows);
        DDX_Control(exchange, kDrawn, m_Bars);
        DDX_Text(exchange, kName, m_NameValue);
        DDX_Text(exchange, kCount, m_CountValue);
        DDX_Radio(exchange, kAll, m_ModeValue);
        DDX_Radio(exchange, kFast, m_SpeedValue);
        DDX_Check(exchange, kSort, m_SortValue);
        DDX_CBIndex(exchange, kColor, m_ColorValue);
    }

    void OnCancel() override {
        m_Heard.push_back("cancel");
        if (!m_RefusesToCancel) CDialog::OnCancel();
    }
    void OnMode() {
        const auto& units = dynamic_cast<CButton&>(*GetDlgItem(kUnits));
        GetDlgItem(kUnitSize)->EnableWindow(units.GetCheck() != 0);
    }
    void OnScan() {
        m_Heard.push_back("scan");
        GetDlgItem(kNote)->SetWindowText("<i>scanned</i>");
        GetDlgItem(kNote)->ShowWindow(SW_SHOW);
        for (int i = 0; i < 1000; ++i) m_Lines.AddString("more");
    }
    // The program sets what the user otherwise would.
    void OnSwap() {
        for (const int id : {kAll, kUnits}) {
            auto& button = dynamic_cast<CButton&>(*GetDlgItem(id));
            button.SetCheck(button.GetCheck() ? 0 : 1);
        }
        m_Lines.SetCurSel(3);
        GetDlgItem(kName)->SetWindowText("swapped");
        GetDlgItem(kName)->SetFocus();
        dynamic_cast<CEdit&>(*GetDlgItem(kName)).SetSel(0, -1);
        SetWindowText("Swapped");
    }
    void OnLine() { m_Heard.push_back("line " + std::to_string(m_Lines.GetCurSel())); }
    void OnLineTwice() { m_Heard.push_back("double"); }
    void OnSeveral() { m_Heard.push_back("several"); }
    void OnDelete() { m_Heard.push_back("delete"); }

    const MessageMap* GetMessageMap() const override {
        static constexpr MessageEntry entries[] = {
            Notification<&EveryKindDialog::OnMode>(kAll, BN_CLICKED),
            Notification<&EveryKindDialog::OnMode>(kUnits, BN_CLICKED),
            Notification<&EveryKindDialog::OnScan>(kScan, BN_CLICKED),
            Notification<&EveryKindDialog::OnSwap>(kSwap, BN_CLICKED),
            Notification<&EveryKindDialog::OnLine>(kLine, LBN_SELCHANGE),
            Notification<&EveryKindDialog::OnLineTwice>(kLine, LBN_DBLCLK),
            Notification<&EveryKindDialog::OnSeveral>(kSeveral, LBN_SELCHANGE),
            Notification<&EveryKindDialog::OnDelete>(kTable, LVN_DELETEKEY),
        };
        static constexpr MessageMap map{nullptr, entries};
        return &map;
    }
};

// Works in a dialog's real window with mouse and keys.
class Hands {
public:
    explicit Hands(QWidget& window) : m_Window(dynamic_cast<DialogWindow&>(window)) {}

    QWidget& At(int id) const { return *m_Window.WidgetOf(id); }
    template <class T>
    T& As(int id) const {
        return dynamic_cast<T&>(At(id));
    }
    DialogWindow& Window() const { return m_Window; }

    // On the left, where the mark of radio buttons and check boxes is.
    void Click(int id) const {
        QTest::mouseClick(&At(id), Qt::LeftButton, {}, QPoint(8, At(id).height() / 2));
    }
    void Type(int id, const char* text) const {
        At(id).setFocus();
        QTest::keyClicks(&At(id), text);
    }
    void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const {
        QWidget* focus = m_Window.focusWidget();
        QTest::keyClick(focus ? focus : &m_Window, key, modifiers);
    }
    void ClickRow(int id, int row, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const {
        QTest::mouseClick(As<QAbstractItemView>(id).viewport(), Qt::LeftButton, modifiers,
                          RowCenter(id, row));
    }
    QPoint RowCenter(int id, int row) const {
        auto& view = As<QAbstractItemView>(id);
        return view.visualRect(view.model()->index(row, 0)).center();
    }
    QString RowText(int id, int row, int column = 0) const {
        return As<QAbstractItemView>(id).model()->index(row, column).data().toString();
    }

private:
    DialogWindow& m_Window;
};

class DialogWindowTest : public DesktopTest {
protected:
    DialogWindowTest() : DesktopTest({.m_Dialogs = kDialogs}) {}

    int Run(std::function<void(const Hands&)> work) {
        m_User.SetProbe([work](QWidget& window) { work(Hands(window)); });
        return m_Dialog.DoModal();
    }

    EveryKindDialog m_Dialog;
};

TEST_F(DialogWindowTest, ValuesAreShownAndArriveAfterRealInput) {
    m_Dialog.m_NameValue = "old ";
    m_Dialog.m_CountValue = 1;
    const int result = Run([](const Hands& hands) {
        EXPECT_EQ(hands.As<QLineEdit>(kName).text(), "old ");
        EXPECT_TRUE(hands.As<QAbstractButton>(kAll).isChecked());
        EXPECT_TRUE(hands.As<QAbstractButton>(kSlow).isChecked());
        EXPECT_EQ(hands.As<QComboBox>(kColor).currentIndex(), -1);
        hands.As<QLineEdit>(kName).setFocus();
        hands.Press(Qt::Key_End);
        hands.Type(kName, "new");
        hands.Type(kCount, "2x3");
        EXPECT_EQ(hands.As<QLineEdit>(kCount).text(), "231") << "typed before the 1, less the x";
        hands.Click(kUnits);
        hands.Click(kFast);
        hands.Click(kSort);
        hands.At(kColor).setFocus();
        hands.Press(Qt::Key_Down);
        hands.Press(Qt::Key_Down);
        hands.Click(IDOK);
    });
    EXPECT_EQ(result, IDOK);
    EXPECT_EQ(m_Dialog.m_NameValue, "old new");
    EXPECT_EQ(m_Dialog.m_CountValue, 231);
    EXPECT_EQ(m_Dialog.m_ModeValue, 1);
    EXPECT_EQ(m_Dialog.m_SpeedValue, 0);
    EXPECT_EQ(m_Dialog.m_SortValue, 1);
    EXPECT_EQ(m_Dialog.m_ColorValue, 1);
}

TEST_F(DialogWindowTest, WhatTheProgramChangesIsShown) {
    Run([](const Hands& hands) {
        EXPECT_FALSE(hands.At(kUnitSize).isEnabled());
        EXPECT_FALSE(hands.At(kNote).isVisible());
        hands.Click(kUnits);
        EXPECT_TRUE(hands.At(kUnitSize).isEnabled());
        EXPECT_FALSE(hands.As<QAbstractButton>(kAll).isChecked());

        hands.Click(kScan);
        EXPECT_TRUE(hands.At(kNote).isVisible());
        EXPECT_EQ(hands.As<QLabel>(kNote).text(), "<i>scanned</i>");
        EXPECT_EQ(hands.As<QLabel>(kNote).textFormat(), Qt::PlainText);
        EXPECT_EQ(hands.As<QAbstractItemView>(kLine).model()->rowCount(), 1005);
        EXPECT_EQ(hands.RowText(kLine, 1004), "more");

        hands.Click(kSwap);
        EXPECT_TRUE(hands.As<QAbstractButton>(kAll).isChecked());
        EXPECT_FALSE(hands.As<QAbstractButton>(kUnits).isChecked());
        EXPECT_EQ(hands.As<QAbstractItemView>(kLine).currentIndex().row(), 3);
        EXPECT_TRUE(hands.At(kName).hasFocus());
        EXPECT_EQ(hands.As<QLineEdit>(kName).selectedText(), "swapped");
        EXPECT_EQ(hands.Window().windowTitle(), "Swapped");
    });
    EXPECT_THAT(m_Dialog.m_Heard, ElementsAre("scan", "cancel")) << "no echo of what was set";
}

TEST_F(DialogWindowTest, ListsTakeClicksAndKeys) {
    std::vector<int> several;
    std::vector<bool> rows;
    Run([&](const Hands& hands) {
        EXPECT_EQ(hands.RowText(kTable, 2), "<b>row 2</b>");
        EXPECT_EQ(hands.RowText(kTable, 2, 1), "20");
        hands.ClickRow(kLine, 2);
        hands.Press(Qt::Key_Down);
        hands.ClickRow(kLine, 3);
        QTest::mouseDClick(hands.As<QAbstractItemView>(kLine).viewport(), Qt::LeftButton, {},
                           hands.RowCenter(kLine, 3));
        hands.ClickRow(kSeveral, 1);
        hands.ClickRow(kSeveral, 3, Qt::ControlModifier);
        for (int i = 0; i < 5; ++i) {
            if (m_Dialog.m_Several.GetSel(i)) several.push_back(i);
        }
        hands.ClickRow(kTable, 0);
        hands.ClickRow(kTable, 1, Qt::ShiftModifier);
        for (int i = 0; i < 3; ++i) rows.push_back(m_Dialog.m_Rows.IsSelected(i));
        hands.Press(Qt::Key_Delete);
    });
    EXPECT_THAT(several, ElementsAre(1, 3));
    EXPECT_THAT(rows, ElementsAre(true, true, false));
    EXPECT_THAT(m_Dialog.m_Heard, ElementsAre("line 2", "line 3", "double", "several", "several",
                                              "delete", "cancel"));
}

TEST_F(DialogWindowTest, ReturnInAListPressesTheDefaultButton) {
    EXPECT_EQ(Run([](const Hands& hands) {
                  hands.ClickRow(kLine, 1);
                  hands.Press(Qt::Key_Return);
              }),
              IDOK);
}

TEST_F(DialogWindowTest, ReturnOnAnotherButtonStillMeansTheDefaultOne) {
    EXPECT_EQ(Run([](const Hands& hands) {
                  hands.At(kScan).setFocus();
                  hands.Press(Qt::Key_Return);
              }),
              IDOK);
    EXPECT_THAT(m_Dialog.m_Heard, ElementsAre());
}

TEST_F(DialogWindowTest, EscapeAndTheCloseBoxCancel) {
    EXPECT_EQ(Run([](const Hands& hands) { hands.Press(Qt::Key_Escape); }), IDCANCEL);
    EXPECT_EQ(Run([](const Hands& hands) { hands.Window().close(); }), IDCANCEL);
    EXPECT_THAT(m_Dialog.m_Heard, ElementsAre("cancel", "cancel"));
}

TEST_F(DialogWindowTest, ADialogThatRefusesToCancelStaysOpen) {
    m_Dialog.m_RefusesToCancel = true;
    Run([this](const Hands& hands) {
        hands.Press(Qt::Key_Escape);
        EXPECT_TRUE(hands.Window().isVisible());
        m_Dialog.m_RefusesToCancel = false;
    });
    EXPECT_THAT(m_Dialog.m_Heard, ElementsAre("cancel", "cancel"));
}

TEST_F(DialogWindowTest, MarkedLettersAreKeys) {
    Run([](const Hands& hands) {
        hands.Press(Qt::Key_N, Qt::AltModifier);
        EXPECT_TRUE(hands.At(kName).hasFocus()) << "the label's control";
        hands.Press(Qt::Key_U, Qt::AltModifier);
        hands.Press(Qt::Key_R, Qt::AltModifier);
        const auto isChecked = [&] {
            return hands.As<QAbstractButton>(kUnits).isChecked() &&
                   hands.As<QAbstractButton>(kSort).isChecked();
        };
        EXPECT_TRUE(QTest::qWaitFor(isChecked));
        EXPECT_EQ(hands.As<QGroupBox>(kMode).title(), "&Mode");
    });
}

TEST_F(DialogWindowTest, TabGoesThroughTheControlsInTheirOrder) {
    std::vector<int> order;
    Run([&](const Hands& hands) {
        EXPECT_TRUE(hands.At(kName).hasFocus());
        for (int i = 0; i < 16; ++i) {
            for (const ControlTemplate& control : kControls) {
                if (hands.Window().WidgetOf(control.m_Id)->hasFocus())
                    order.push_back(control.m_Id);
            }
            hands.Press(Qt::Key_Tab);
        }
    });
    // Of a choice, the button that is set; nothing that is disabled.
    EXPECT_THAT(order, ElementsAre(kName, kCount, kAll, kSlow, kSort, kColor, kLine, kSeveral,
                                   kTable, kDrawn, kScan, kSwap, IDCANCEL, IDOK, kName, kCount));
}

TEST_F(DialogWindowTest, AnOwnerDrawnListIsDrawnByItsOwnerAndTakesPresses) {
    Run([this](const Hands& hands) {
        QWidget* viewport = hands.As<QAbstractScrollArea>(kDrawn).viewport();
        const QImage picture = viewport->grab().toImage();
        EXPECT_EQ(picture.pixelColor(picture.width() - 1, 8), QColor(0, 255, 0));
        EXPECT_EQ(picture.pixelColor(3, static_cast<int>(24 * picture.devicePixelRatio())),
                  QColor(255, 0, 0));
        EXPECT_EQ(m_Dialog.m_Bars.m_LastWidth, viewport->width());
        QTest::mouseClick(viewport, Qt::LeftButton, {}, QPoint(5, 2 * 16 + 3));
        EXPECT_EQ(m_Dialog.m_Bars.GetCurSel(), 2);
        hands.Press(Qt::Key_Up);
        EXPECT_EQ(m_Dialog.m_Bars.GetCurSel(), 1);
    });
}

TEST_F(DialogWindowTest, ARefusedValueIsToldOverTheDialogAndGetsTheFocus) {
    std::vector<QString> boxes;
    m_User.SetProbe([&](QWidget& window) {
        if (auto* box = dynamic_cast<QMessageBox*>(&window)) {
            boxes.push_back(box->text());
            EXPECT_NE(dynamic_cast<DialogWindow*>(box->parentWidget()), nullptr);
            QTest::keyClick(box, Qt::Key_Escape);
            return;
        }
        const Hands hands(window);
        hands.As<QLineEdit>(kCount).setFocus();
        hands.Press(Qt::Key_Backspace);
        hands.As<QLineEdit>(kCount).selectAll();
        hands.Press(Qt::Key_Delete);
        hands.Click(IDOK);
        EXPECT_TRUE(hands.Window().isVisible());
        EXPECT_EQ(hands.Window().focusWidget(), &hands.At(kCount));
    });
    EXPECT_EQ(m_Dialog.DoModal(), IDCANCEL);
    EXPECT_EQ(boxes.size(), 1U);
}

TEST_F(DialogWindowTest, AfterwardsTheControlsHaveNoWindowsAndTheDialogCanRunAgain) {
    EXPECT_EQ(Run([](const Hands& hands) { hands.Click(IDOK); }), IDOK);
    EXPECT_EQ(m_Dialog.m_Lines.Peer(), nullptr);
    EXPECT_EQ(m_Dialog.Peer(), nullptr);
    EXPECT_EQ(Run([](const Hands& hands) {
                  EXPECT_EQ(hands.As<QAbstractItemView>(kLine).model()->rowCount(), 5);
              }),
              IDCANCEL);
}

TEST_F(DialogWindowTest, OnlyADialogWithAListCanBeResized) {
    Run([](const Hands& hands) { EXPECT_GT(hands.Window().maximumHeight(), 10000); });
    m_User.SetProbe([](QWidget& window) { EXPECT_EQ(window.maximumSize(), window.size()); });
    CDialog plain(2);
    EXPECT_EQ(plain.DoModal(), IDCANCEL);
}

}  // namespace
}  // namespace vesk
