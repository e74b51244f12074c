#include "desktop/KeySheet.h"

#include <algorithm>

#include "desktop/HostFrame.h"
#include "desktop/ViewerKeys.h"
#include "platform/CWnd.h"
#include "platform/Keys.h"
#include "resources/VeskResources.h"
#include "timeline/CMcuView.h"

namespace vesk {

namespace {

constexpr unsigned kAccelerators = 128;

struct Line {
    const char* m_Input;
    const char* m_Does;
};

// Commands that have a key and neither a menu entry nor a button.
struct NamedCommand {
    unsigned m_Id;
    const char* m_Name;
};
constexpr NamedCommand kUnnamed[] = {
    {40022, "Find next"}, {40056, "Find previous"}, {57601, "Open a log"}};

constexpr Line kMouse[] = {
    {"Left button",
     "Puts the cursor line there; on a job, function or mark of the pure outlook "
     "opens its tip"},
    {"Left button, dragged",
     "Moves the cursor line, the marker or the range handle that is "
     "under it"},
    {"Middle button, dragged", "Moves the log along"},
    {"Right button", "Opens the menu of the timeline"},
    {"Wheel", "Lanes up and down"},
    {"Shift+wheel", "Earlier and later"},
    {"Ctrl+wheel", "Zooms at the pointer"},
};

constexpr Line kLists[] = {
    {"Click, Enter", "Jumps to the row's time"},
    {"Up, Down, PgUp, PgDn, Home, End", "To another row"},
    {"Delete", "Removes the row's marker"},
};

// Nobody sends it commands.
class NoCommands : public HostCommands {
    void OnOpenLog() override {}
    void OnOpenLogWithHeader() override {}
    void OnShowInformation() override {}
    void OnCommandDone() override {}
};

bool Handles(const MessageMap* map, unsigned command) {
    for (; map; map = map->m_Base)
        for (const MessageEntry& entry : map->m_Entries)
            if (entry.m_Id == command && entry.m_Code == CN_COMMAND) return true;
    return false;
}

std::string KeyName(unsigned key) {
    constexpr struct {
        unsigned m_Key;
        const char* m_Name;
    } kNames[] = {{VK_ADD, "Num +"},     {VK_SUBTRACT, "Num -"}, {VK_LEFT, "Left"},
                  {VK_RIGHT, "Right"},   {VK_UP, "Up"},          {VK_DOWN, "Down"},
                  {VK_DELETE, "Delete"}, {VK_INSERT, "Insert"},  {VK_BACK, "Backspace"}};
    for (const auto& known : kNames)
        if (known.m_Key == key) return known.m_Name;
    if (key >= VK_F1 && key < VK_F1 + 12) return 'F' + std::to_string(key - VK_F1 + 1);
    return std::string(1, static_cast<char>(key));
}

std::string KeyText(unsigned key, bool control, bool shift, bool alt) {
    return std::string(control ? "Ctrl+" : "") + (shift ? "Shift+" : "") + (alt ? "Alt+" : "") +
           KeyName(key);
}

// Less the sign of a menu's key, the dots of a dialog, and what stands behind a tab or line end.
std::string PlainText(std::string text) {
    text.resize(std::min(text.find_first_of("\t\n"), text.size()));
    std::erase(text, '&');
    while (!text.empty() && (text.back() == '.' || text.back() == ' ')) text.pop_back();
    return text;
}

std::string CommandName(unsigned command) {
    for (const NamedCommand& named : kUnnamed)
        if (named.m_Id == command) return named.m_Name;
    const ResourceTables& tables = VeskResources();
    for (const StringEntry& entry : tables.m_Strings)
        if (entry.m_Id == command) return PlainText(entry.m_Text);
    for (const MenuTemplate& menu : tables.m_Menus)
        for (const MenuItemTemplate& item : menu.m_Items)
            if (item.m_Id == command) return PlainText(item.m_Text);
    return {};
}

std::string TableBegin(const char* title, const char* input) {
    return std::string("\n## ") + title + "\n\n| " + input + " | |\n|---|---|\n";
}

std::string TableLine(const std::string& input, const std::string& does) {
    return "| " + input + " | " + does + " |\n";
}

// Keys of commands that no one handles do nothing.
std::string CommandLines() {
    const CMcuView view;
    NoCommands commands;
    const HostFrame frame(commands);
    std::string text = TableBegin("Commands", "key");
    for (const AcceleratorTable& table : VeskResources().m_Accelerators) {
        if (table.m_Id != kAccelerators) continue;
        for (const AcceleratorEntry& entry : table.m_Entries)
            if (Handles(view.GetMessageMap(), entry.m_Command) ||
                Handles(frame.GetMessageMap(), entry.m_Command))
                text += TableLine(KeyText(entry.m_Key, entry.m_Modifiers & kControl,
                                          entry.m_Modifiers & kShift, entry.m_Modifiers & kAlt),
                                  CommandName(entry.m_Command));
    }
    for (const ViewerKey* const key : kViewerKeys) text += TableLine(key->m_Key, key->m_Does);
    return text;
}

std::string TimelineLines() {
    std::string text = TableBegin("In the timeline", "key");
    for (const CMcuView::OwnKey& key : CMcuView::OwnKeys())
        text += TableLine(KeyText(key.m_Key, key.m_Modifiers & MK_CONTROL,
                                  key.m_Modifiers & MK_SHIFT, key.m_Modifiers & MK_ALT),
                          key.m_Does);
    return text;
}

template <std::size_t kCount>
std::string Lines(const char* title, const char* input, const Line (&lines)[kCount]) {
    std::string text = TableBegin(title, input);
    for (const Line& line : lines) text += TableLine(line.m_Input, line.m_Does);
    return text;
}

}  // namespace

std::string KeySheet() {
    return "# Keys of veskview\n\n"
           "What `veskview --keys` prints: the tables by which the program itself goes.\n" +
           CommandLines() + TimelineLines() + Lines("Mouse in the timeline", "input", kMouse) +
           Lines("In the lists of search results and markers", "key", kLists);
}

}  // namespace vesk
