#include "desktop/QtUserInterface.h"

#include <QApplication>
#include <QColorDialog>
#include <QFileDialog>
#include <QMainWindow>
#include <QMdiArea>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>
#include <QStatusBar>
#include <QStyle>

#include "desktop/CommandMenu.h"
#include "desktop/DialogWindow.h"
#include "desktop/FileDialogFilter.h"
#include "desktop/FrameWindow.h"
#include "desktop/MainFramePeer.h"
#include "desktop/ModalProbe.h"
#include "desktop/ProgressDialog.h"
#include "desktop/QtGlyphs.h"
#include "desktop/QtText.h"
#include "desktop/ToolTipLabel.h"
#include "desktop/ViewWidget.h"
#include "platform/CColorDialog.h"
#include "platform/CDialog.h"
#include "platform/CFileDialog.h"
#include "platform/CMDIChildWnd.h"
#include "platform/CMDIFrameWnd.h"
#include "platform/CMenu.h"
#include "platform/CScrollBar.h"
#include "platform/CToolTipCtrl.h"
#include "platform/SystemMetrics.h"

namespace vesk {

namespace {

constexpr int kStatusTime = 10000;  // ms

QMessageBox::Icon IconOf(unsigned type) {
    switch (type & 0xF0) {
        case MB_ICONSTOP:
            return QMessageBox::Critical;
        case MB_ICONEXCLAMATION:
            return QMessageBox::Warning;
        case MB_ICONINFORMATION:
            return QMessageBox::Information;
        default:
            return QMessageBox::NoIcon;
    }
}

// A name without an extension gets that of the kind that is chosen: "SVG (*.svg)" gives svg.
void FollowFilter(QFileDialog& window) {
    QObject::connect(&window, &QFileDialog::filterSelected, &window, [&](const QString& filter) {
        const QString suffix = filter.section("(*.", 1).section(')', 0, 0).section(' ', 0, 0);
        if (!suffix.isEmpty() && suffix != "*") window.setDefaultSuffix(suffix);
    });
}

void SetUp(QFileDialog& window, const CFileDialog& dialog) {
    window.setAcceptMode(dialog.m_Open ? QFileDialog::AcceptOpen : QFileDialog::AcceptSave);
    const bool exists = dialog.m_Open && (dialog.m_Flags & (OFN_FILEMUSTEXIST | OFN_PATHMUSTEXIST));
    window.setFileMode(exists ? QFileDialog::ExistingFile : QFileDialog::AnyFile);
    window.setNameFilters(NameFilters(dialog.m_Filter));
    window.setDefaultSuffix(ToQt(dialog.m_DefaultExtension));
    if (!dialog.m_DefaultExtension.IsEmpty()) FollowFilter(window);
    window.setOption(QFileDialog::DontConfirmOverwrite,
                     (dialog.m_Flags & OFN_OVERWRITEPROMPT) == 0);
    if (!dialog.m_Path.IsEmpty()) window.selectFile(ToQt(dialog.m_Path));
}

QPalette::ColorRole RoleOf(int index) {
    switch (index) {
        case COLOR_WINDOW:
            return QPalette::Base;
        case COLOR_WINDOWTEXT:
        case COLOR_GRAYTEXT:
            return QPalette::Text;
        case COLOR_HIGHLIGHT:
            return QPalette::Highlight;
        case COLOR_HIGHLIGHTTEXT:
            return QPalette::HighlightedText;
        default:
            return QPalette::Button;
    }
}

COLORREF FromQt(const QColor& color) {
    return RGB(color.red(), color.green(), color.blue());
}

}  // namespace

QtUserInterface::QtUserInterface()
    : m_ProgressDelay(ProgressDialog::kDelay), m_Glyphs(std::make_unique<QtGlyphs>()) {}
QtUserInterface::~QtUserInterface() = default;

void QtUserInterface::SetMainWindow(QWidget& window, QMdiArea& area) {
    m_MainWindow = &window;
    m_Area = &area;
    area.setOption(QMdiArea::DontMaximizeSubWindowOnActivation);
}

QWidget* QtUserInterface::DialogParent() const {
    QWidget* modal = QApplication::activeModalWidget();
    return modal ? modal : m_MainWindow.data();
}

void QtUserInterface::PrepareModal(QWidget& window) const {
    if (m_Probe) ProbeOnceActive(window, m_Probe);
}

int QtUserInterface::ShowMessage(const Message& message) {
    QMessageBox box(DialogParent());
    box.setTextFormat(Qt::PlainText);
    box.setIcon(IconOf(message.m_Type));
    box.setText(ToQt(message.m_Text));
    box.setWindowTitle(message.m_Caption.IsEmpty() ? QGuiApplication::applicationDisplayName()
                                                   : ToQt(message.m_Caption));
    box.setStandardButtons(QMessageBox::Ok);
    PrepareModal(box);
    box.exec();
    return IDOK;
}

std::unique_ptr<ProgressDisplay> QtUserInterface::BeginProgress(const CString& what) {
    return std::make_unique<ProgressDialog>(ToQt(what), DialogParent(), m_ProgressDelay);
}

void QtUserInterface::ShowStatus(const CString& text) {
    auto* const window = qobject_cast<QMainWindow*>(m_MainWindow.data());
    if (window) window->statusBar()->showMessage(ToQt(text), kStatusTime);
}

void QtUserInterface::RunDialog(CDialog& dialog) {
    DialogWindow window(dialog, DialogParent());
    PrepareModal(window);
    window.exec();
}

int QtUserInterface::RunFileDialog(CFileDialog& dialog) {
    QFileDialog window(DialogParent());
    if (m_Probe) window.setOption(QFileDialog::DontUseNativeDialog);
    SetUp(window, dialog);
    PrepareModal(window);
    if (window.exec() != QDialog::Accepted || window.selectedFiles().isEmpty()) return IDCANCEL;
    dialog.m_Path = vesk::FromQt(window.selectedFiles().constFirst());
    return IDOK;
}

bool QtUserInterface::RunModal(QDialog& dialog) {
    PrepareModal(dialog);
    return dialog.exec() == QDialog::Accepted;
}

int QtUserInterface::RunColorDialog(CColorDialog& dialog) {
    const COLORREF color = dialog.m_Color;
    QColorDialog window(QColor(GetRValue(color), GetGValue(color), GetBValue(color)),
                        DialogParent());
    if (m_Probe) window.setOption(QColorDialog::DontUseNativeDialog);
    PrepareModal(window);
    if (window.exec() != QDialog::Accepted) return IDCANCEL;
    dialog.m_Color = FromQt(window.selectedColor());
    return IDOK;
}

unsigned QtUserInterface::RunMenu(CMenu& menu, CPoint screen, CWnd& owner) {
    unsigned chosen = 0;
    QMenu window(DialogParent());
    FillCommandMenu(window, menu,
                    {[&owner](CMenu& popup) {
                         owner.OnInitMenuPopup(&popup, 0, false);
                         popup.UpdateItems(owner);
                     },
                     [&chosen](unsigned command) { chosen = command; }});
    window.exec(QPoint(screen.x, screen.y));
    return chosen;
}

std::unique_ptr<WindowPeer> QtUserInterface::MakePeer(CWnd& window) {
    if (auto* tip = dynamic_cast<CToolTipCtrl*>(&window)) return MakeToolTipLabel(*tip);
    if (auto* bar = dynamic_cast<CScrollBar*>(&window)) {
        const CWnd* parent = bar->GetParent();
        ViewWidget* view = parent ? ViewWidget::Of(parent->Peer()) : nullptr;
        return view ? view->MakeScrollBar(*bar) : nullptr;
    }
    auto* area = dynamic_cast<QMdiArea*>(m_Area.data());
    if (!area || !m_MainWindow) return nullptr;
    if (auto* frame = dynamic_cast<CMDIChildWnd*>(&window)) return FrameWindow::Make(*area, *frame);
    if (auto* frame = dynamic_cast<CMDIFrameWnd*>(&window)) {
        return MakeMainFramePeer(*frame, *m_MainWindow, *area);
    }
    return nullptr;
}

int QtUserInterface::SystemMetric(int index) {
    const QScreen* screen = QGuiApplication::primaryScreen();
    switch (index) {
        case SM_CXSCREEN:
            return screen ? screen->geometry().width() : 0;
        case SM_CYSCREEN:
            return screen ? screen->geometry().height() : 0;
        case SM_CXVSCROLL:
        case SM_CYHSCROLL:
        case SM_CYVSCROLL:
        case SM_CXHSCROLL:
            return QApplication::style()->pixelMetric(QStyle::PM_ScrollBarExtent);
        default:
            return 0;
    }
}

COLORREF QtUserInterface::SystemColor(int index) {
    const auto group = index == COLOR_GRAYTEXT ? QPalette::Disabled : QPalette::Active;
    return FromQt(QGuiApplication::palette().color(group, RoleOf(index)));
}

const GlyphSource& QtUserInterface::Glyphs() {
    return *m_Glyphs;
}

}  // namespace vesk
