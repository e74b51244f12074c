#pragma once

#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "platform/DialogUser.h"
#include "platform/UserInterface.h"

namespace vesk {

// Stands in for a person: answers by scripts given beforehand, in their order, and keeps what it
// was shown. A question without a script is cancelled and noted in m_Faults, so that nothing can
// hang; so is a dialog that its script leaves open, and every action that failed.
class HeadlessUserInterface : public UserInterface {
public:
    using DialogScript = std::function<void(DialogUser&)>;

    ~HeadlessUserInterface() override = default;

    // Answers of the questions to come.
    void OnDialog(DialogScript script) { m_DialogScripts.push_back(std::move(script)); }
    void OnFileDialog(const CString& path) { m_FileAnswers.push_back(path); }  // empty: cancel
    void OnColorDialog(COLORREF color) { m_ColorAnswers.push_back(color); }
    // Long work is cancelled when it tells for that time, counted from 1, how far it is; 0: never,
    // which needs no script.
    void OnProgress(int time) { m_ProgressAnswers.push_back(time); }
    void OnMenu(unsigned command) { m_MenuAnswers.push_back(command); }  // 0: closed again

    int ShowMessage(const Message&) override;
    void DebugText(const std::string& text) override { m_DebugTexts.push_back(text); }
    void ShowStatus(const CString& text) override { m_StatusTexts.push_back(text); }
    std::unique_ptr<ProgressDisplay> BeginProgress(const CString& what) override;
    void RunDialog(CDialog&) override;
    int RunFileDialog(CFileDialog&) override;
    int RunColorDialog(CColorDialog&) override;
    // Chooses by id; an item that is missing or disabled cannot be chosen.
    unsigned RunMenu(CMenu&, CPoint, CWnd& owner) override;

    std::vector<std::string> m_Messages;  // texts
    std::vector<Message> m_MessageBoxes;  // the same with captions and kinds
    std::vector<std::string> m_DebugTexts;
    std::vector<CString> m_StatusTexts;
    std::vector<std::string> m_Progresses;    // what was followed
    std::vector<std::string> m_DialogTitles;  // of all dialogs that were run
    std::vector<std::string> m_FileFilters;   // of all file dialogs
    std::vector<std::string> m_FileNames;     // that they proposed
    std::vector<std::string> m_Faults;

private:
    std::deque<DialogScript> m_DialogScripts;
    std::deque<CString> m_FileAnswers;
    std::deque<COLORREF> m_ColorAnswers;
    std::deque<unsigned> m_MenuAnswers;
    std::deque<int> m_ProgressAnswers;
};

}  // namespace vesk
