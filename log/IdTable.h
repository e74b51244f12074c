#pragma once

#include <cstdint>
#include <vector>

#include "log/HashSeed.h"
#include "log/RecordKind.h"

namespace vesk {

// What a record id means in the log at hand, worked out once per id. The size is a power of two, so
// that a slot is found without a multiplication.
struct alignas(32) IdMeaning {
    std::uint32_t m_Id = 0;
    bool m_IsUsed = false;  // the slot holds an id
    RecordKind m_Kind = RecordKind::kIgnored;
    bool m_KeepsDepth = false;  // tasks and interrupts: the interrupts in progress go on
    std::int8_t m_Step = 0;     // and how many more are then in progress
    void* m_Name = nullptr;     // JobName, FunctionName, MarkName or HardwareName, by kind
    void* m_Below = nullptr;    // JobName to which a later return to this level leads
};

// Record id -> meaning: a flat hash table, because every record looks its id up.
class IdTable {
public:
    IdTable() : m_Slots(kFirstSize) {}

    // The id's slot: with its meaning, or unused.
    IdMeaning& SlotOf(std::uint32_t id) {
        IdMeaning* const slots = m_Slots.data();
        auto i = static_cast<std::uint32_t>((id * m_Multiplier) >> m_Shift);
        while (slots[i].m_Id != id && slots[i].m_IsUsed) i = (i + 1) & m_Mask;
        return slots[i];
    }

    // Adds the meaning of an id that the table does not have. References into it become invalid.
    const IdMeaning& Add(const IdMeaning& meaning) {
        if (++m_Used * 8 > m_Slots.size()) Grow();
        return SlotOf(meaning.m_Id) = meaning;
    }

private:
    static constexpr std::uint32_t kFirstSize = 2048;

    void Grow() {
        std::vector<IdMeaning> old(m_Slots.size() * 2);
        old.swap(m_Slots);
        --m_Shift;
        m_Mask = static_cast<std::uint32_t>(m_Slots.size() - 1);
        for (const IdMeaning& meaning : old)
            if (meaning.m_IsUsed) SlotOf(meaning.m_Id) = meaning;
    }

    std::vector<IdMeaning> m_Slots;
    std::size_t m_Used = 0;
    std::uint32_t m_Mask = kFirstSize - 1;
    std::uint64_t m_Multiplier = HashMultiplier();
    int m_Shift = 53;  // 64 - log2 of the number of slots
};

}  // namespace vesk
