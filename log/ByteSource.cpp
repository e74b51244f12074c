#include "log/ByteSource.h"

#include <algorithm>
#include <cstring>

namespace vesk {

namespace {

// Large enough that a read costs little per record, small enough to stay in the second-level
// cache between the read and the decoding.
constexpr std::size_t kBlockBytes = std::size_t{1} << 17;

}  // namespace

std::span<const std::uint8_t> ByteSource::TakeRecords(std::size_t recordBytes, std::uint64_t most) {
    if (most == 0) return {};
    if (m_Size - m_Begin < recordBytes && !Fill(recordBytes)) return {};
    const std::uint64_t whole = std::min<std::uint64_t>((m_Size - m_Begin) / recordBytes, most);
    const std::size_t bytes = static_cast<std::size_t>(whole) * recordBytes;
    const std::span<const std::uint8_t> records(m_Block.data() + m_Begin, bytes);
    m_Begin += bytes;
    return records;
}

bool ByteSource::Fill(std::size_t count) {
    if (m_Begin > 0) std::memmove(m_Block.data(), m_Block.data() + m_Begin, m_Size - m_Begin);
    m_Size -= m_Begin;
    m_Begin = 0;
    while (m_Size < count) {
        if (m_Size == m_Block.size()) m_Block.resize(std::max(kBlockBytes, m_Block.size() * 2));
        const std::size_t got =
            std::fread(m_Block.data() + m_Size, 1, m_Block.size() - m_Size, m_Stream);
        if (got == 0) return false;
        m_Size += got;
        m_End += static_cast<std::int64_t>(got);
    }
    return true;
}

}  // namespace vesk
