#include "tests/desktop/Viewer.h"

#include <QAbstractButton>
#include <QDropEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QMessageBox>
#include <QMimeData>
#include <QStatusBar>
#include <stdexcept>

#include "desktop/QtText.h"

namespace {

QString Plain(const QString& text) {
    return text.section('\t', 0, 0).remove('&');
}

QAction* Find(const QList<QAction*>& actions, const QString& text) {
    for (QAction* const action : actions)
        if (Plain(action->text()) == text) return action;
    return nullptr;
}

}  // namespace

Viewer::Viewer(const std::string& stateFile) : m_StateFile(QString::fromStdString(stateFile)) {
    m_User.SetProbe([this](QWidget& window) {
        if (m_Answers.empty()) {
            m_Unexpected.push_back(window.windowTitle().toStdString());
            return;
        }
        const Answer answer = std::move(m_Answers.front());
        m_Answers.pop_front();
        answer(window);
    });
    m_StateFile.Load(m_State);
    m_Window = std::make_unique<vesk::MainWindow>(m_User, m_Host, m_State, m_StateFile);
    m_Window->resize(760, 560);
    m_Window->show();
    if (!QTest::qWaitForWindowActive(m_Window.get())) throw std::runtime_error("no window");
}

Viewer::~Viewer() {
    m_Window->close();
    m_Window.reset();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void Viewer::ExpectDialog(std::function<void(vesk::DialogWindow&)> answer) {
    Expect([answer = std::move(answer)](QWidget& window) {
        answer(dynamic_cast<vesk::DialogWindow&>(window));
    });
}

void Viewer::ExpectMessage(std::string& text) {
    Expect([&text](QWidget& window) {
        auto& box = dynamic_cast<QMessageBox&>(window);
        text = box.text().toStdString();
        QTest::mouseClick(box.button(QMessageBox::Ok), Qt::LeftButton);
    });
}

QAction* Viewer::MenuEntry(const std::vector<QString>& texts) const {
    QAction* entry = nullptr;
    for (const QString& text : texts) {
        entry = Find(entry ? entry->menu()->actions() : m_Window->menuBar()->actions(), text);
        if (!entry) throw std::runtime_error("no menu entry " + text.toStdString());
    }
    return entry;
}

void Viewer::ClickMenu(const std::vector<QString>& texts) {
    QWidget* at = m_Window->menuBar();
    QAction* entry = nullptr;
    for (const QString& text : texts) {
        entry = Find(at->actions(), text);
        if (!entry) throw std::runtime_error("no menu entry " + text.toStdString());
        auto* const menu = dynamic_cast<QMenu*>(at);
        const QRect place =
            menu ? menu->actionGeometry(entry) : m_Window->menuBar()->actionGeometry(entry);
        QWidget* const clicked = at;
        at = entry->menu();
        QTest::mouseClick(clicked, Qt::LeftButton, {}, place.center());
        if (at && !QTest::qWaitFor([at] { return at->isVisible(); }))
            throw std::runtime_error("closed menu " + text.toStdString());
    }
}

void Viewer::PressKey(int key, Qt::KeyboardModifiers modifiers) {
    QTest::keyClick(m_Window.get(), static_cast<Qt::Key>(key), modifiers);
}

void Viewer::Drop(const std::vector<std::string>& paths) {
    QMimeData data;
    QList<QUrl> urls;
    for (const std::string& path : paths) urls.append(QUrl::fromLocalFile(vesk::ToQt(path)));
    data.setUrls(urls);
    QDragEnterEvent enter(QPoint(50, 50), Qt::CopyAction, &data, Qt::LeftButton, {});
    QCoreApplication::sendEvent(m_Window.get(), &enter);
    if (!enter.isAccepted()) return;
    QDropEvent drop(QPointF(50, 50), Qt::CopyAction, &data, Qt::LeftButton, {});
    QCoreApplication::sendEvent(m_Window.get(), &drop);
}

QString Viewer::StatusText() const {
    QStringList texts = {m_Window->statusBar()->currentMessage()};
    for (const QLabel* const label : m_Window->statusBar()->findChildren<QLabel*>())
        if (!label->isHidden()) texts.append(label->text());
    return texts.join('|');
}

QMdiSubWindow* Viewer::Frame() const {
    return m_Window->findChild<QMdiArea*>()->activeSubWindow();
}

int Viewer::Frames() const {
    int count = 0;
    for (const QMdiSubWindow* const frame : m_Window->findChild<QMdiArea*>()->subWindowList())
        count += frame->isVisible() ? 1 : 0;
    return count;
}

void Click(vesk::DialogWindow& dialog, int id) {
    QWidget* const widget = dialog.WidgetOf(id);
    // A button that is wider than its text takes clicks on its text only.
    QTest::mouseClick(widget, Qt::LeftButton, {}, QPoint(10, widget->height() / 2));
}

void Type(vesk::DialogWindow& dialog, int id, const std::string& text) {
    auto& edit = dynamic_cast<QLineEdit&>(*dialog.WidgetOf(id));
    QTest::mouseClick(&edit, Qt::LeftButton);
    edit.selectAll();
    QTest::keyClicks(&edit, QString::fromStdString(text));
}
