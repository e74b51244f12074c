#include "platform/CCmdTarget.h"

#include "platform/CCmdUI.h"

namespace {

const vesk::MessageEntry* FindEntry(const vesk::MessageMap* map, unsigned id, int code) {
    for (; map; map = map->m_Base) {
        for (const vesk::MessageEntry& entry : map->m_Entries) {
            if (entry.m_Id == id && entry.m_Code == code) return &entry;
        }
    }
    return nullptr;
}

}  // namespace

bool CCmdTarget::OnCmdMsg(unsigned id, int code, CCmdUI* ui) {
    const vesk::MessageEntry* entry = FindEntry(GetMessageMap(), id, code);
    if (!entry) return false;
    if (!ui) {
        entry->m_Run(*this);  // which may end this target
    } else if (entry->m_Update) {
        entry->m_Update(*this, *ui);
    } else {
        ui->Enable();
    }
    return true;
}
