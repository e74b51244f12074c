#pragma once

#include <cstdint>
#include <span>

// What menus, accelerators, tool bars, dialogs and strings are made from: constant tables by id.
// Several modules hang their tables into one chain, and whoever needs a table finds it there by
// its id.
namespace vesk {

// Menus are written as a flat list in which level says how deep an item stands. An item whose
// followers stand deeper is a pop-up; one without text and id is a separator.
struct MenuItemTemplate {
    int m_Level;
    unsigned m_Id;  // 0 for pop-ups and separators
    const char* m_Text;
};
struct MenuTemplate {
    unsigned m_Id;
    std::span<const MenuItemTemplate> m_Items;
};

enum AcceleratorModifier : std::uint8_t { kNoModifier = 0, kShift = 1, kControl = 2, kAlt = 4 };
struct AcceleratorEntry {
    unsigned m_Modifiers;  // a sum of AcceleratorModifier
    unsigned m_Key;        // VK_...
    unsigned m_Command;
};
struct AcceleratorTable {
    unsigned m_Id;
    std::span<const AcceleratorEntry> m_Entries;
};

// A tool bar's commands from left to right; 0 is a separator. Buttons are so many pixels large.
struct ToolBarTemplate {
    unsigned m_Id;
    int m_ButtonWidth, m_ButtonHeight;
    std::span<const unsigned> m_Commands;
};

struct StringEntry {
    unsigned m_Id;
    const char* m_Text;
};

enum class ControlKind : std::uint8_t {
    Label,  // static text
    Group,  // frame with a title around other controls
    Button,
    Radio,
    Check,
    Edit,
    DropList,  // combo box of which an entry is chosen, none typed
    ListBox,
    ListControl,  // rows in columns with a header
};

// Flags of a control.
enum ControlFlag : unsigned {
    kGroupStart = 1,   // a radio button that begins a new choice
    kDefault = 2,      // pressed by Return
    kDigitsOnly = 4,   // edit
    kMultiSelect = 8,  // list
    kSorted = 16,      // list and combo box
    kOwnerDrawn = 32,  // list
    kHidden = 64,
    kDisabled = 128,
    kReadOnly = 256,  // edit
    kWordWrap = 512,  // label of several lines
};

// A control and its cell in the grid of its group, or, with group -1, of the dialog. Controls
// stand in tab order. A group is named by its position in the table and comes before its members.
struct ControlTemplate {
    ControlKind m_Kind;
    int m_Id;  // -1: never asked for
    const char* m_Text;
    int m_Group;
    int m_Row, m_Column, m_RowSpan, m_ColumnSpan;
    unsigned m_Flags = 0;
};
struct DialogTemplate {
    unsigned m_Id;
    const char* m_Title;
    std::span<const ControlTemplate> m_Controls;
};

// The tables of one module.
struct ResourceTables {
    std::span<const MenuTemplate> m_Menus = {};
    std::span<const AcceleratorTable> m_Accelerators = {};
    std::span<const ToolBarTemplate> m_ToolBars = {};
    std::span<const DialogTemplate> m_Dialogs = {};
    std::span<const StringEntry> m_Strings = {};
};

// Looked up along the chain, the module that joined last first; null if no module has it.
const MenuTemplate* FindMenu(unsigned id);
const AcceleratorTable* FindAccelerators(unsigned id);
const ToolBarTemplate* FindToolBar(unsigned id);
const DialogTemplate* FindDialog(unsigned id);
const char* FindString(unsigned id);

}  // namespace vesk

// A module that extends the application. Initialising it fails without tables; ending it takes
// its tables out of the chain.
struct AFX_EXTENSION_MODULE {
    bool bInitialized = false;
    const vesk::ResourceTables* pResources = nullptr;
};
bool AfxInitExtensionModule(AFX_EXTENSION_MODULE&, const vesk::ResourceTables*);
void AfxTermExtensionModule(AFX_EXTENSION_MODULE&);

// Joins an initialised module's tables to the chain, for as long as both live. Several may join
// and leave in any order.
class CDynLinkLibrary {
public:
    explicit CDynLinkLibrary(AFX_EXTENSION_MODULE&);
    ~CDynLinkLibrary();
    CDynLinkLibrary(const CDynLinkLibrary&) = delete;
    CDynLinkLibrary& operator=(const CDynLinkLibrary&) = delete;
};
