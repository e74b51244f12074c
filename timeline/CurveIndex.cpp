#include "timeline/CurveIndex.h"

#include "log/McuJobList.h"

namespace vesk {

CurveIndex::CurveIndex(const McuJobList& list)
    : m_Values(static_cast<std::size_t>(std::max(0, list.m_ExtraInfoNum))) {
    AddSamples(list);
    while (m_Values > 0 && m_Levels.back().size() / m_Values > kFanOut) AddLevel();
}

// The sample behind a stretch belongs to it, too: the last step leads there.
void CurveIndex::AddSamples(const McuJobList& list) {
    const std::vector<ExtraInfoRecord>& samples = list.m_ExtraInfos;
    std::vector<Range>& ranges = m_Levels.emplace_back();
    m_Blocks.Reserve(samples.size());
    m_SampleTimes.reserve(samples.size());
    m_SampleValues.resize(samples.size() * m_Values);
    ranges.resize((samples.size() + kLeaf - 1) / kLeaf * m_Values);
    std::uint64_t before = 0;
    for (std::size_t i = 0; i < samples.size(); ++i) {
        m_Blocks.Add(samples[i].m_Time);
        m_SampleTimes.push_back(samples[i].m_Time);
        if (samples[i].m_Time < before) m_IsAscending = false;
        before = samples[i].m_Time;
        const std::vector<int>& values = samples[i].m_Values;
        Range* range = &ranges[i / kLeaf * m_Values];
        for (std::size_t j = 0; j < m_Values; ++j) {
            const auto value = static_cast<std::uint32_t>(j < values.size() ? values[j] : 0);
            m_SampleValues[i * m_Values + j] = value;
            range[j].Widen({value, value});
            if (i % kLeaf == 0 && i > 0) (range - m_Values)[j].Widen({value, value});
        }
    }
}

CurveIndex::Range CurveIndex::RangeOfAll(int value) const {
    Range all;
    const std::vector<Range>& top = m_Levels.back();
    for (auto i = static_cast<std::size_t>(value); i < top.size(); i += m_Values) all.Widen(top[i]);
    return all;
}

void CurveIndex::AddLevel() {
    const std::vector<Range>& below = m_Levels.back();
    const std::size_t stretches = below.size() / m_Values;
    std::vector<Range> ranges((stretches + kFanOut - 1) / kFanOut * m_Values);
    for (std::size_t i = 0; i < below.size(); ++i)
        ranges[i / m_Values / kFanOut * m_Values + i % m_Values].Widen(below[i]);
    m_Levels.push_back(std::move(ranges));
}

}  // namespace vesk
