#pragma once

#include <map>
#include <string>

namespace vesk {

// Names of a target's interrupts and tasks by number.
struct NameTables {
    std::map<int, std::string> m_Irqs;
    std::string m_TickName;
    bool m_HasTaskNumbers = false;  // task records carry numbers
    std::map<int, std::string> m_Tasks;
};

}  // namespace vesk
