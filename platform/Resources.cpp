#include "platform/Resources.h"

#include <vector>

namespace vesk {
namespace {

struct Link {
    const CDynLinkLibrary* m_Library;
    const AFX_EXTENSION_MODULE* m_Module;  // compared, never followed
    const ResourceTables* m_Tables;
};

// Made on first use, so that modules can join while static objects are still being built.
std::vector<Link>& Chain() {
    static std::vector<Link> chain;
    return chain;
}

template <class Table>
const Table* FindIn(std::span<const Table> ResourceTables::*kind, unsigned id) {
    for (auto link = Chain().rbegin(); link != Chain().rend(); ++link) {
        for (const Table& table : link->m_Tables->*kind) {
            if (table.m_Id == id) return &table;
        }
    }
    return nullptr;
}

}  // namespace

const MenuTemplate* FindMenu(unsigned id) {
    return FindIn(&ResourceTables::m_Menus, id);
}

const AcceleratorTable* FindAccelerators(unsigned id) {
    return FindIn(&ResourceTables::m_Accelerators, id);
}

const ToolBarTemplate* FindToolBar(unsigned id) {
    return FindIn(&ResourceTables::m_ToolBars, id);
}

const DialogTemplate* FindDialog(unsigned id) {
    return FindIn(&ResourceTables::m_Dialogs, id);
}

const char* FindString(unsigned id) {
    const StringEntry* entry = FindIn(&ResourceTables::m_Strings, id);
    return entry ? entry->m_Text : nullptr;
}

}  // namespace vesk

bool AfxInitExtensionModule(AFX_EXTENSION_MODULE& module, const vesk::ResourceTables* tables) {
    if (!tables) return false;
    module.pResources = tables;
    module.bInitialized = true;
    return true;
}

void AfxTermExtensionModule(AFX_EXTENSION_MODULE& module) {
    std::erase_if(vesk::Chain(), [&](const vesk::Link& link) { return link.m_Module == &module; });
    module = {};
}

CDynLinkLibrary::CDynLinkLibrary(AFX_EXTENSION_MODULE& module) {
    if (module.bInitialized) vesk::Chain().push_back({this, &module, module.pResources});
}

CDynLinkLibrary::~CDynLinkLibrary() {
    std::erase_if(vesk::Chain(), [&](const vesk::Link& link) { return link.m_Library == this; });
}
