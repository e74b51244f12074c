#include "log/ExtraSampler.h"

#include <algorithm>
#include <cstring>

#include "log/LittleEndian.h"
#include "log/McuJobList.h"

namespace vesk {

ExtraSampler::ExtraSampler(McuJobList* list, int values, std::array<ByteRange, 2> extra,
                           bool isHeaderless, std::size_t previousBytes)
    : m_List(list),
      m_Values(values),
      m_Extra(extra),
      m_IsHeaderless(isHeaderless),
      m_Previous(previousBytes) {}

void ExtraSampler::StartAt(const std::uint8_t* record, std::size_t bytes) {
    if (m_IsHeaderless || !m_List) {
        Keep(record);
        return;
    }
    const std::size_t count = std::min(bytes, m_Extra[0].m_Size);
    m_Previous.resize(std::max(m_Previous.size(), count));
    std::copy_n(record + m_Extra[0].m_Offset, count, m_Previous.data());
}

void ExtraSampler::Sample(const std::uint8_t* record, std::uint64_t now,
                          const std::string& jobName) {
    if (m_Time != 0 && m_Values > 0) {
        ++m_Samples;
        if (m_List) Store(record, now, jobName);
    }
    m_Time = now;
    Keep(record);
}

void ExtraSampler::Finish(std::uint64_t endTime, const std::string& jobName) {
    ++m_Samples;
    if (m_List) Store(nullptr, endTime, jobName);
}

void ExtraSampler::Keep(const std::uint8_t* record) {
    const std::size_t bytes = m_Extra[0].m_Size + m_Extra[1].m_Size;
    if (m_Previous.size() < bytes) m_Previous.resize(bytes);
    std::uint8_t* to = m_Previous.data();
    for (const ByteRange& range : m_Extra) {
        if (range.m_Size == 0) continue;
        std::memcpy(to, record + range.m_Offset, range.m_Size);
        to += range.m_Size;
    }
}

void ExtraSampler::Store(const std::uint8_t* current, std::uint64_t now,
                         const std::string& jobName) {
    if (m_IsHeaderless) {
        m_Words.resize(m_Previous.size() / 4);
        for (std::size_t i = 0; i < m_Words.size(); ++i)
            m_Words[i] = static_cast<int>(Word32At(m_Previous.data() + 4 * i));
        m_List->StoreSample(m_Words, m_Time, jobName);
        return;
    }
    const std::uint8_t* const ended = current ? current + m_Extra[0].m_Offset : nullptr;
    m_List->StoreSample(m_Previous.data(), ended, now, m_Time, jobName);
}

}  // namespace vesk
