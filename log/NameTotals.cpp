#include "log/NameTotals.h"

#include <algorithm>
#include <cstring>

namespace vesk {

namespace {

// Names are short: the first eight bytes and the length tell most of them apart.
std::size_t HashOf(const std::string& name, std::uint64_t multiplier) {
    std::uint64_t first = 0;
    if (name.size() <= 8) {
        for (const char c : name) first = first << 8 | static_cast<std::uint8_t>(c);
    } else {
        for (const char c : name) first = first * 31 + static_cast<std::uint8_t>(c);
    }
    return static_cast<std::size_t>(((first ^ name.size() << 56) * multiplier) >> 32);
}

}  // namespace

void NameTotals::Add(const std::string& name, std::uint64_t amount) {
    Slot& slot = SlotOf(name);
    if (slot.m_Name) {
        slot.m_Total += amount;
        return;
    }
    slot = {&name, amount};
    if (++m_Used * 2 > m_Slots.size()) Grow();
}

void NameTotals::MoveTo(std::map<std::string, std::uint64_t>& totals) const {
    for (const Slot& slot : m_Slots)
        if (slot.m_Name) totals[*slot.m_Name] += slot.m_Total;
}

NameTotals::Slot& NameTotals::SlotOf(const std::string& name) {
    const std::size_t mask = m_Slots.size() - 1;
    std::size_t i = HashOf(name, m_Multiplier) & mask;
    while (m_Slots[i].m_Name && *m_Slots[i].m_Name != name) i = (i + 1) & mask;
    return m_Slots[i];
}

void NameTotals::Grow() {
    std::vector<Slot> old(m_Slots.size() * 2);
    old.swap(m_Slots);
    for (const Slot& slot : old)
        if (slot.m_Name) SlotOf(*slot.m_Name) = slot;
}

}  // namespace vesk
