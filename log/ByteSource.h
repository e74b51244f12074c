#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <span>
#include <vector>

namespace vesk {

// The bytes of a stream from its current position on, read in large blocks. The only place that
// decides whether enough bytes are there: every read says so. Memory grows with the bytes that
// the stream really has, never with what a file claims.
class ByteSource {
public:
    // The stream is borrowed; position is where it stands, bytes from the start of the file.
    ByteSource(std::FILE* stream, std::int64_t position) : m_Stream(stream), m_End(position) {}

    // The next count bytes, or null if the stream ends before. Valid until the next call.
    const std::uint8_t* Take(std::size_t count) {
        if (m_Size - m_Begin < count && !Fill(count)) return nullptr;
        const std::uint8_t* bytes = m_Block.data() + m_Begin;
        m_Begin += count;
        return bytes;
    }

    // As many whole records as are at hand, at least one and at most `most`; empty if the stream
    // ends before a whole record. Valid until the next call.
    std::span<const std::uint8_t> TakeRecords(std::size_t recordBytes, std::uint64_t most);

    // File position of the next byte that was not taken.
    std::int64_t Position() const { return m_End - static_cast<std::int64_t>(m_Size - m_Begin); }

    // Bytes that are left at the end of the stream, too few for what was asked last.
    std::size_t Rest() const { return m_Size - m_Begin; }

private:
    bool Fill(std::size_t count);

    std::FILE* m_Stream;
    std::int64_t m_End;  // file position behind the block
    std::vector<std::uint8_t> m_Block;
    std::size_t m_Begin = 0;  // of what was not taken
    std::size_t m_Size = 0;   // of what was read into the block
};

}  // namespace vesk
