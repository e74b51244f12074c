#include "simulator/SimulatedCounters.h"

#include <algorithm>

namespace vesk {

std::span<const std::uint32_t> SimulatedCounters::Next(std::uint32_t countsSinceLast) {
    if (m_Words.empty()) return {};
    const std::uint64_t noise = m_Random.Next();
    for (std::uint32_t i = 0; i < m_Counters; ++i) {
        m_Words[i] = countsSinceLast * (1 + i % 5) + (noise >> i & 15);
        m_Sums[i] += m_Words[i];
    }
    if (m_Words.size() > m_Counters) {
        m_BusyShare = std::clamp(m_BusyShare + noise % 5 - 2, std::uint64_t{2}, std::uint64_t{90});
        const std::uint32_t window = countsSinceLast + 1;
        std::uint32_t* words = &m_Words[m_Counters];
        words[0] = window;
        words[1] = window * m_BusyShare / 100;
        words[2] = window / 10;
        for (int i = 0; i < 2; ++i) m_Sums[m_Counters + i] += words[i + 1] * 100 / window;
    }
    return m_Words;
}

}  // namespace vesk
