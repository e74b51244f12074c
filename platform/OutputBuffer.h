#pragma once

#include <charconv>
#include <concepts>
#include <cstddef>
#include <functional>
#include <memory>
#include <string_view>

namespace vesk {

// Bytes on their way to a file descriptor, collected into large writes. After a write that failed
// nothing more goes out: the first error stays until somebody asks for it.
class OutputBuffer {
public:
    // Called before each write with 0, and after one that failed with the system's error number.
    // It may throw, which ends the work that writes.
    using Watcher = std::function<void(int error)>;

    // The descriptor is borrowed.
    explicit OutputBuffer(int descriptor, Watcher watcher = {});

    void Put(char c) {
        if (m_Used == kSize) Flush();
        m_Bytes[m_Used++] = c;
    }
    void Put(std::string_view text) {
        if (text.size() > kSize - m_Used) return PutInParts(text);
        text.copy(m_Bytes.get() + m_Used, text.size());
        m_Used += text.size();
    }

    // A byte of a log, as the UTF-8 of the character of that number.
    void PutLatin1(char c) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x80) return Put(c);
        Put(static_cast<char>(0xC0 | byte >> 6));
        Put(static_cast<char>(0x80 | (byte & 0x3F)));
    }

    // In decimal digits.
    template <std::integral Integer>
    void PutNumber(Integer number) {
        if (kSize - m_Used < kLongestNumber) Flush();
        char* const begin = m_Bytes.get() + m_Used;
        m_Used += static_cast<std::size_t>(
            std::to_chars(begin, begin + kLongestNumber, number).ptr - begin);
    }

    // Writes what was collected; false if that, or an earlier write, failed.
    bool Flush();

    // The system's number of the first error, or 0.
    int Error() const { return m_Error; }

private:
    void PutInParts(std::string_view text);
    void Write();

    static constexpr std::size_t kSize = std::size_t{1} << 18;
    static constexpr std::size_t kLongestNumber = 24;

    int m_Descriptor;
    Watcher m_Watcher;
    std::unique_ptr<char[]> m_Bytes;
    std::size_t m_Used = 0;
    int m_Error = 0;
};

}  // namespace vesk
