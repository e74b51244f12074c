#include "desktop/ControlPeers.h"

#include <QAbstractButton>
#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>

#include "desktop/ListPeers.h"
#include "desktop/QtText.h"
#include "desktop/TextLabel.h"
#include "platform/CButton.h"
#include "platform/CComboBox.h"
#include "platform/CEdit.h"

namespace vesk {

namespace {

class LabelPeer : public ControlPeer {
public:
    LabelPeer(CWnd& window, TextLabel& label, Acted acted)
        : ControlPeer(window, label, std::move(acted)), m_Window(window), m_Label(label) {}
    void SyncText() override { m_Label.SetText(ToQt(m_Window.GetWindowText())); }

private:
    CWnd& m_Window;
    TextLabel& m_Label;
};

class GroupPeer : public ControlPeer {
public:
    GroupPeer(CWnd& window, QGroupBox& box, Acted acted)
        : ControlPeer(window, box, std::move(acted)), m_Window(window), m_Box(box) {}
    void SyncText() override { m_Box.setTitle(ToQt(m_Window.GetWindowText())); }

private:
    CWnd& m_Window;
    QGroupBox& m_Box;
};

// Tab leads to the button of a choice that is set, as arrows do to the others.
void LeadTabToTheSetOne(const QButtonGroup& choice) {
    const QAbstractButton* set = choice.checkedButton();
    for (QAbstractButton* button : choice.buttons()) {
        button->setFocusPolicy(set && button != set ? Qt::ClickFocus : Qt::StrongFocus);
    }
}

class ButtonPeer : public ControlPeer {
public:
    ButtonPeer(CButton& button, QAbstractButton& widget, Acted acted)
        : ControlPeer(button, widget, std::move(acted)), m_Button(button), m_Widget(widget) {
        connect(&widget, &QAbstractButton::clicked, this,
                [this] { Act([this] { m_Button.Click(); }); });
    }
    void SyncText() override { m_Widget.setText(ToQt(m_Button.GetWindowText())); }
    void SyncSelection() override {
        if (!m_Widget.isCheckable()) return;
        const QSignalBlocker quiet(m_Widget);
        // An exclusive choice would refuse to have none of its buttons set.
        QButtonGroup* choice = m_Widget.group();
        if (choice) choice->setExclusive(false);
        m_Widget.setChecked(m_Button.GetCheck() != 0);
        if (choice) choice->setExclusive(true);
        if (choice) LeadTabToTheSetOne(*choice);
    }

private:
    CButton& m_Button;
    QAbstractButton& m_Widget;
};

class EditPeer : public ControlPeer {
public:
    EditPeer(CEdit& edit, QLineEdit& line, Acted acted)
        : ControlPeer(edit, line, std::move(acted)), m_Edit(edit), m_Line(line) {
        connect(&line, &QLineEdit::textEdited, this,
                [this](const QString& text) { Act([&] { m_Edit.Type(FromQt(text)); }); });
    }
    void SyncText() override {
        m_Line.setReadOnly(m_Edit.m_ReadOnly);
        const QString text = ToQt(m_Edit.GetWindowText());
        if (text == m_Line.text()) return;
        const QSignalBlocker quiet(m_Line);
        // What was typed and dropped stood before the cursor.
        const qsizetype dropped = m_Line.text().size() - text.size();
        const auto cursor =
            static_cast<int>(m_Line.cursorPosition() - std::max<qsizetype>(dropped, 0));
        m_Line.setText(text);
        m_Line.setCursorPosition(std::max(cursor, 0));
    }
    void SyncTextSelection() override {
        int from = 0, to = 0;
        m_Edit.GetSel(from, to);
        const std::string text = m_Edit.GetWindowText().Str();
        const auto size = static_cast<int>(text.size());
        from = std::clamp(from, 0, size);
        to = to < 0 ? size : std::clamp(to, from, size);
        const auto lengthOf = [&](int first, int end) {
            return static_cast<int>(ToQt(text.substr(static_cast<std::size_t>(first),
                                                     static_cast<std::size_t>(end - first)))
                                        .size());
        };
        m_Line.setSelection(lengthOf(0, from), lengthOf(from, to));
    }

private:
    CEdit& m_Edit;
    QLineEdit& m_Line;
};

class ComboPeer : public ControlPeer {
public:
    ComboPeer(CComboBox& combo, QComboBox& box, Acted acted)
        : ControlPeer(combo, box, std::move(acted)), m_Combo(combo), m_Box(box) {
        connect(&box, &QComboBox::activated, this,
                [this](int index) { Act([&] { m_Combo.Choose(index); }); });
    }
    void SyncContent() override {
        const QSignalBlocker quiet(m_Box);
        m_Box.clear();
        for (int i = 0; i < m_Combo.GetCount(); ++i) {
            CString text;
            m_Combo.GetLBText(i, text);
            m_Box.addItem(ToQt(text));
        }
    }
    void SyncSelection() override {
        const QSignalBlocker quiet(m_Box);
        m_Box.setCurrentIndex(m_Combo.GetCurSel());
    }

private:
    CComboBox& m_Combo;
    QComboBox& m_Box;
};

template <class Peer, class Control, class Widget>
std::unique_ptr<ControlPeer> Make(CWnd& window, Widget* widget, ControlPeer::Acted acted) {
    return std::make_unique<Peer>(dynamic_cast<Control&>(window), *widget, std::move(acted));
}

QPushButton* MakePushButton(const ControlTemplate& control, QWidget& parent) {
    auto* button = new QPushButton(&parent);
    button->setAutoDefault(false);
    button->setDefault((control.m_Flags & kDefault) != 0);
    return button;
}

QComboBox* MakeComboBox(QWidget& parent) {
    auto* box = new QComboBox(&parent);
    box->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    return box;
}

}  // namespace

std::unique_ptr<ControlPeer> MakeControlPeer(const CDialog::Control& control, QWidget& parent,
                                             ControlPeer::Acted acted) {
    CWnd& window = *control.m_Window;
    const ControlTemplate& from = *control.m_Template;
    switch (from.m_Kind) {
        case ControlKind::Label: {
            auto* label = new TextLabel(parent, (from.m_Flags & kWordWrap) != 0);
            return std::make_unique<LabelPeer>(window, *label, std::move(acted));
        }
        case ControlKind::Group:
            return std::make_unique<GroupPeer>(window, *new QGroupBox(&parent), std::move(acted));
        case ControlKind::Button:
            return Make<ButtonPeer, CButton>(window, MakePushButton(from, parent),
                                             std::move(acted));
        case ControlKind::Radio:
            return Make<ButtonPeer, CButton>(window, new QRadioButton(&parent), std::move(acted));
        case ControlKind::Check:
            return Make<ButtonPeer, CButton>(window, new QCheckBox(&parent), std::move(acted));
        case ControlKind::Edit:
            return Make<EditPeer, CEdit>(window, new QLineEdit(&parent), std::move(acted));
        case ControlKind::DropList:
            return Make<ComboPeer, CComboBox>(window, MakeComboBox(parent), std::move(acted));
        case ControlKind::ListBox:
        case ControlKind::ListControl:
            break;
    }
    return MakeListPeer(control, parent, std::move(acted));
}

}  // namespace vesk
