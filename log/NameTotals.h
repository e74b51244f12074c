#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "log/HashSeed.h"

namespace vesk {

// Sums per name over many records: a flat hash table on the text, because a walk over millions of
// jobs asks once per job.
class NameTotals {
public:
    NameTotals() : m_Slots(kFirstSize) {}

    // The name is borrowed: it must outlive the sums.
    void Add(const std::string& name, std::uint64_t amount);

    void MoveTo(std::map<std::string, std::uint64_t>& totals) const;

private:
    static constexpr std::size_t kFirstSize = 256;

    struct Slot {
        const std::string* m_Name = nullptr;
        std::uint64_t m_Total = 0;
    };

    Slot& SlotOf(const std::string& name);
    void Grow();

    std::vector<Slot> m_Slots;
    std::size_t m_Used = 0;
    std::uint64_t m_Multiplier = HashMultiplier();
};

}  // namespace vesk
