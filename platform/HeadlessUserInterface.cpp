#include "platform/HeadlessUserInterface.h"

#include <optional>

#include "platform/CColorDialog.h"
#include "platform/CFileDialog.h"
#include "platform/CMenu.h"
#include "platform/CWnd.h"
#include "platform/Text.h"

namespace vesk {
namespace {

template <class T>
std::optional<T> TakeFirst(std::deque<T>& answers) {
    if (answers.empty()) return std::nullopt;
    std::optional<T> first(std::move(answers.front()));
    answers.pop_front();
    return first;
}

// Brings a menu up to date as it is when a person opens it, and all the pop-ups below it.
void Open(CMenu& menu, unsigned position, CWnd& owner) {
    owner.OnInitMenuPopup(&menu, position, false);
    menu.UpdateItems(owner);
    unsigned below = 0;
    for (MenuItem& item : menu.Items()) {
        if (item.m_Popup) Open(*item.m_Popup, below, owner);
        ++below;
    }
}

class ScriptedProgress : public ProgressDisplay {
public:
    explicit ScriptedProgress(int cancelledAt) : m_CancelledAt(cancelledAt) {}

    bool Advance(std::int64_t, std::int64_t) override { return ++m_Times != m_CancelledAt; }

private:
    int m_CancelledAt;
    int m_Times = 0;
};

}  // namespace

int HeadlessUserInterface::ShowMessage(const Message& message) {
    m_Messages.push_back(message.m_Text.Str());
    m_MessageBoxes.push_back(message);
    return IDOK;
}

std::unique_ptr<ProgressDisplay> HeadlessUserInterface::BeginProgress(const CString& what) {
    m_Progresses.push_back(what.Str());
    return std::make_unique<ScriptedProgress>(TakeFirst(m_ProgressAnswers).value_or(0));
}

void HeadlessUserInterface::RunDialog(CDialog& dialog) {
    const std::string title = dialog.GetWindowText().Str();
    m_DialogTitles.push_back(title);
    if (const std::optional<DialogScript> script = TakeFirst(m_DialogScripts)) {
        DialogUser user(dialog);
        (*script)(user);
        m_Faults.insert(m_Faults.end(), user.Faults().begin(), user.Faults().end());
        if (dialog.HasEnded()) return;
        m_Faults.push_back("dialog left open: " + title);
    } else {
        m_Faults.push_back("unexpected dialog: " + title);
    }
    dialog.Close();
}

int HeadlessUserInterface::RunFileDialog(CFileDialog& dialog) {
    m_FileFilters.push_back(dialog.m_Filter.Str());
    m_FileNames.push_back(dialog.m_Path.Str());
    const std::optional<CString> path = TakeFirst(m_FileAnswers);
    if (!path) m_Faults.push_back("unexpected file dialog: " + dialog.m_Filter.Str());
    if (!path || path->IsEmpty()) return IDCANCEL;
    dialog.m_Path = *path;
    return IDOK;
}

int HeadlessUserInterface::RunColorDialog(CColorDialog& dialog) {
    const std::optional<COLORREF> color = TakeFirst(m_ColorAnswers);
    if (!color) {
        m_Faults.push_back("unexpected color dialog");
        return IDCANCEL;
    }
    dialog.m_Color = *color;
    return IDOK;
}

unsigned HeadlessUserInterface::RunMenu(CMenu& menu, CPoint, CWnd& owner) {
    Open(menu, 0, owner);
    const std::optional<unsigned> command = TakeFirst(m_MenuAnswers);
    if (!command) m_Faults.push_back("unexpected menu");
    if (!command || *command == 0) return 0;
    const MenuItem* item = menu.Find(*command);
    if (item && item->m_State.m_Enabled) return *command;
    m_Faults.push_back(
        FormatText("menu command %u is %s", *command, item ? "disabled" : "missing"));
    return 0;
}

}  // namespace vesk
