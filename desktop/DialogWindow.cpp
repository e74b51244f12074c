#include "desktop/DialogWindow.h"

#include <QButtonGroup>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <algorithm>

#include "desktop/ControlPeers.h"
#include "desktop/QtText.h"
#include "platform/Keys.h"
#include "platform/UserInterface.h"

namespace vesk {

namespace {

// Shows the dialog's own title.
class TitlePeer : public WindowPeer {
public:
    TitlePeer(const CDialog& dialog, QDialog& window) : m_Dialog(dialog), m_Window(window) {}
    void Changed(Aspect aspect) override {
        if (aspect == Aspect::Text) m_Window.setWindowTitle(ToQt(m_Dialog.GetWindowText()));
    }

private:
    const CDialog& m_Dialog;
    QDialog& m_Window;
};

bool IsList(const ControlTemplate& control) {
    return control.m_Kind == ControlKind::ListBox || control.m_Kind == ControlKind::ListControl;
}

bool IsField(const ControlTemplate& control) {
    return IsList(control) || control.m_Kind == ControlKind::Edit ||
           control.m_Kind == ControlKind::DropList || control.m_Kind == ControlKind::Group;
}

}  // namespace

DialogWindow::DialogWindow(CDialog& dialog, QWidget* parent) : QDialog(parent), m_Dialog(dialog) {
    setWindowTitle(ToQt(dialog.GetWindowText()));
    dialog.SetPeer(std::make_unique<TitlePeer>(dialog, *this));
    AddControls();
    ChooseDefaultButton();
    NameNeighbours();
    OrderTabs();
    SizeToContents();
    FocusFirst();
}

DialogWindow::~DialogWindow() {
    for (const CDialog::Control& control : m_Dialog.Controls()) control.m_Window->SetPeer(nullptr);
    m_Dialog.SetPeer(nullptr);
}

QWidget* DialogWindow::WidgetOf(int id) const {
    for (std::size_t i = 0; i < m_Peers.size(); ++i) {
        if (m_Dialog.Controls()[i].m_Template->m_Id == id) return &m_Peers[i]->Widget();
    }
    return nullptr;
}

void DialogWindow::reject() {
    if (!m_Dialog.HasEnded()) m_Dialog.Close();
    AfterAction();
}

void DialogWindow::keyPressEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter) {
        return QDialog::keyPressEvent(event);
    }
    m_Dialog.OnKey(VK_RETURN);
    AfterAction();
}

void DialogWindow::AddControls() {
    for (const CDialog::Control& control : m_Dialog.Controls()) {
        const int group = control.m_Template->m_Group;
        QWidget& parent = group < 0 ? *this : m_Peers.at(static_cast<std::size_t>(group))->Widget();
        auto peer = MakeControlPeer(control, parent, [this] { AfterAction(); });
        m_Peers.push_back(peer.get());
        AddToGrid(*control.m_Template, peer->Widget());
        JoinChoice(*control.m_Template, peer->Widget());
        control.m_Window->SetPeer(std::move(peer));
    }
    for (ControlPeer* peer : m_Peers) peer->Sync();
    StretchColumns(-1);
    for (int i = 0; i < static_cast<int>(m_Peers.size()); ++i) {
        const auto& control = m_Dialog.Controls()[static_cast<std::size_t>(i)];
        if (control.m_Template->m_Kind == ControlKind::Group) StretchColumns(i);
    }
}

void DialogWindow::AddToGrid(const ControlTemplate& control, QWidget& widget) {
    QGridLayout& grid = GridOf(control.m_Group);
    grid.addWidget(&widget, control.m_Row, control.m_Column, std::max(1, control.m_RowSpan),
                   std::max(1, control.m_ColumnSpan));
    // Lists take the room that a larger window has to give, and so do the groups around them.
    if (!IsList(control)) return;
    grid.setRowStretch(control.m_Row, 1);
    if (control.m_Group < 0) return;
    const ControlTemplate& group =
        *m_Dialog.Controls()[static_cast<std::size_t>(control.m_Group)].m_Template;
    GridOf(group.m_Group).setRowStretch(group.m_Row, 1);
}

// Labels and buttons stay as wide as they need be; what is left goes to columns of fields, or to
// those in which nothing stands by itself, or else to the last.
void DialogWindow::StretchColumns(int group) {
    QGridLayout& grid = GridOf(group);
    enum Holds { Nothing, Plain, Field };
    std::vector<Holds> columns(static_cast<std::size_t>(grid.columnCount()), Nothing);
    for (const CDialog::Control& control : m_Dialog.Controls()) {
        const ControlTemplate& from = *control.m_Template;
        if (from.m_Group != group || from.m_ColumnSpan > 1) continue;
        Holds& holds = columns[static_cast<std::size_t>(from.m_Column)];
        holds = std::max(holds, IsField(from) ? Field : Plain);
    }
    if (columns.empty()) return;
    if (std::count(columns.begin(), columns.end(), Plain) == std::ssize(columns)) {
        columns.back() = Field;
    }
    for (std::size_t i = 0; i < columns.size(); ++i) {
        grid.setColumnStretch(static_cast<int>(i), columns[i] == Plain ? 0 : 1);
    }
}

QGridLayout& DialogWindow::GridOf(int group) {
    QWidget& parent = group < 0 ? *this : m_Peers.at(static_cast<std::size_t>(group))->Widget();
    auto* grid = dynamic_cast<QGridLayout*>(parent.layout());
    return grid ? *grid : *new QGridLayout(&parent);
}

void DialogWindow::JoinChoice(const ControlTemplate& control, QWidget& widget) {
    if (control.m_Kind != ControlKind::Radio) return;
    if (!m_Choice || (control.m_Flags & kGroupStart)) m_Choice = new QButtonGroup(this);
    m_Choice->addButton(dynamic_cast<QRadioButton*>(&widget));
}

void DialogWindow::ChooseDefaultButton() {
    for (const ControlPeer* peer : m_Peers) {
        const auto* button = dynamic_cast<QPushButton*>(&peer->Widget());
        if (button && button->isDefault()) return;
    }
    if (auto* ok = dynamic_cast<QPushButton*>(WidgetOf(IDOK))) ok->setDefault(true);
}

// A label whose text marks a key leads to the control behind it.
void DialogWindow::NameNeighbours() {
    for (std::size_t i = 0; i + 1 < m_Peers.size(); ++i) {
        auto* label = dynamic_cast<QLabel*>(&m_Peers[i]->Widget());
        const char* text = m_Dialog.Controls()[i].m_Template->m_Text;
        QWidget& next = m_Peers[i + 1]->Widget();
        if (label && text && QString(text).contains('&') && next.focusPolicy() != Qt::NoFocus) {
            label->setBuddy(&next);
        }
    }
}

void DialogWindow::OrderTabs() {
    QWidget* previous = nullptr;
    for (const ControlPeer* peer : m_Peers) {
        if (peer->Widget().focusPolicy() == Qt::NoFocus) continue;
        if (previous) setTabOrder(previous, &peer->Widget());
        previous = &peer->Widget();
    }
}

// The control that the dialog chose; of a choice, the button that is set.
void DialogWindow::FocusFirst() {
    for (std::size_t i = 0; i < m_Peers.size(); ++i) {
        if (CWnd::GetFocus() != m_Dialog.Controls()[i].m_Window) continue;
        QWidget* widget = &m_Peers[i]->Widget();
        const auto* radio = dynamic_cast<QRadioButton*>(widget);
        if (radio && radio->group()->checkedButton()) widget = radio->group()->checkedButton();
        widget->setFocus(Qt::TabFocusReason);
        return;
    }
}

void DialogWindow::SizeToContents() {
    const auto& controls = m_Dialog.Controls();
    const bool grows = std::any_of(controls.begin(), controls.end(),
                                   [](const auto& control) { return IsList(*control.m_Template); });
    if (!layout()) return;
    // Wide enough for its title, and with that for the paths that are typed into it.
    GridOf(-1).setColumnMinimumWidth(0, fontMetrics().horizontalAdvance(windowTitle()));
    layout()->setSizeConstraint(grows ? QLayout::SetMinimumSize : QLayout::SetFixedSize);
    setSizeGripEnabled(grows);
}

void DialogWindow::AfterAction() {
    for (ControlPeer* peer : m_Peers) peer->Flush();
    if (m_Dialog.HasEnded()) done(QDialog::Accepted);
}

}  // namespace vesk
