#pragma once

#include <QMainWindow>
#include <QTest>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "desktop/DesktopHost.h"
#include "desktop/DialogWindow.h"
#include "desktop/MainWindow.h"
#include "desktop/QtUserInterface.h"
#include "desktop/StateFile.h"
#include "desktop/UserState.h"

class QMdiSubWindow;

// The whole viewer in its real windows, and a person before it with mouse and keyboard. Modal
// windows get the answers given beforehand, in their order; one without an answer is closed and
// noted.
class Viewer {
public:
    using Answer = std::function<void(QWidget&)>;

    // One run of the program, with its memory in that file.
    explicit Viewer(const std::string& stateFile);
    ~Viewer();

    void Expect(Answer answer) { m_Answers.push_back(std::move(answer)); }
    void ExpectDialog(std::function<void(vesk::DialogWindow&)>);
    void ExpectMessage(std::string& text);  // acknowledged, its text kept

    // Clicks through the menus; an entry is known by its text without "&" and key.
    void ClickMenu(const std::vector<QString>& texts);
    QAction* MenuEntry(const std::vector<QString>& texts) const;
    void PressKey(int key, Qt::KeyboardModifiers);
    void Drop(const std::vector<std::string>& paths);

    // Texts in the status bar.
    QString StatusText() const;
    int Frames() const;
    QMdiSubWindow* Frame() const;

    vesk::QtUserInterface& User() { return m_User; }
    vesk::MainWindow& Window() { return *m_Window; }
    vesk::LogSession& Session() { return m_Window->Session(); }
    const vesk::UserState& State() const { return m_State; }
    const std::vector<std::string>& Unexpected() const { return m_Unexpected; }

private:
    vesk::QtUserInterface m_User;
    vesk::ScopedUserInterface m_InPlace{m_User};
    vesk::DesktopHost m_Host;
    vesk::UserState m_State;
    vesk::StateFile m_StateFile;
    std::unique_ptr<vesk::MainWindow> m_Window;
    std::deque<Answer> m_Answers;
    std::vector<std::string> m_Unexpected;
};

// A click on a control of a dialog, by its id.
void Click(vesk::DialogWindow&, int id);
// Text typed into a control in place of what it holds.
void Type(vesk::DialogWindow&, int id, const std::string& text);
