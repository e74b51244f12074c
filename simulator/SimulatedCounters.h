#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "simulator/Random.h"

namespace vesk {

// The extra values of the simulated target's records: counters of events since the last record,
// and three words from which a ratio item yields two percentages.
class SimulatedCounters {
public:
    // ratios: the log has a ratio item behind the counters.
    SimulatedCounters(std::uint32_t counters, bool ratios, std::uint64_t seed)
        : m_Random(seed),
          m_Counters(counters),
          m_Words(counters + (ratios ? 3 : 0)),
          m_Sums(counters + (ratios ? 2 : 0)) {}

    // The words of one record, which also count for the sums. Valid until the next call.
    std::span<const std::uint32_t> Next(std::uint32_t countsSinceLast);

    // Per value that a sample has, over all records so far.
    const std::vector<std::uint64_t>& Sums() const { return m_Sums; }

private:
    Random m_Random;
    std::uint32_t m_Counters;
    std::uint32_t m_BusyShare = 50;  // percent
    std::vector<std::uint32_t> m_Words;
    std::vector<std::uint64_t> m_Sums;
};

}  // namespace vesk
