#include "platform/Keys.h"

namespace vesk {

unsigned FindCommand(const AcceleratorTable& table, unsigned key, unsigned modifiers) {
    for (const AcceleratorEntry& entry : table.m_Entries) {
        if (entry.m_Key == key && entry.m_Modifiers == modifiers) return entry.m_Command;
    }
    return 0;
}

}  // namespace vesk
