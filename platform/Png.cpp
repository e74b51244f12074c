// The picture's rows go through the simplest useful compression: a fixed Huffman code whose only
// repetitions are those of the pixel to the left and of the row above. Drawings consist of little
// else.
#include "platform/Png.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <string>
#include <utility>

#include "platform/RasterSurface.h"

namespace vesk {

namespace {

constexpr std::size_t kPixelBytes = 3;
constexpr std::size_t kShortestMatch = 3;
constexpr std::size_t kLongestMatch = 258;
constexpr std::size_t kFarthestMatch = 32768;
constexpr unsigned kEndOfBlock = 256;

std::string BigEndian(std::uint32_t value) {
    std::string bytes;
    for (int shift = 24; shift >= 0; shift -= 8) bytes += static_cast<char>(value >> shift);
    return bytes;
}

std::uint32_t Crc32(const std::string& bytes) {
    std::uint32_t crc = 0xFFFFFFFF;
    for (const char byte : bytes) {
        crc ^= static_cast<std::uint8_t>(byte);
        for (int bit = 0; bit < 8; ++bit) crc = crc >> 1 ^ ((crc & 1) != 0 ? 0xEDB88320 : 0);
    }
    return ~crc;
}

std::uint32_t Adler32(const std::string& bytes) {
    std::uint32_t low = 1;
    std::uint32_t high = 0;
    for (const char byte : bytes) {
        low = (low + static_cast<std::uint8_t>(byte)) % 65521;
        high = (high + low) % 65521;
    }
    return high << 16 | low;
}

// A deflate stream of one block with the fixed code.
class Deflater {
public:
    Deflater() { Bits(0b011, 3); }  // last block, fixed code

    void Literal(std::uint8_t byte) { Symbol(byte); }
    void Match(std::size_t length, std::size_t distance);
    std::string Finish();

private:
    // Symbols from a base upwards; each level holds as many as its extra bits tell apart.
    struct Level {
        unsigned m_Symbol;
        int m_ExtraBits;
        std::size_t m_Rest;
    };
    static Level LevelOf(std::size_t value, unsigned perLevel);

    void Bits(unsigned value, int count);
    void Code(unsigned code, int count);  // highest bit first
    void Symbol(unsigned symbol);

    std::string m_Bytes;
    std::uint64_t m_Pending = 0;
    int m_PendingBits = 0;
};

void Deflater::Bits(unsigned value, int count) {
    m_Pending |= std::uint64_t{value} << m_PendingBits;
    for (m_PendingBits += count; m_PendingBits >= 8; m_PendingBits -= 8, m_Pending >>= 8) {
        m_Bytes += static_cast<char>(m_Pending);
    }
}

void Deflater::Code(unsigned code, int count) {
    for (int bit = count - 1; bit >= 0; --bit) Bits(code >> bit & 1, 1);
}

void Deflater::Symbol(unsigned symbol) {
    if (symbol < 144) return Code(0x30 + symbol, 8);
    if (symbol < 256) return Code(0x190 + symbol - 144, 9);
    if (symbol < 280) return Code(symbol - 256, 7);
    Code(0xC0 + symbol - 280, 8);
}

// Lengths count from 3 in levels of four symbols, distances from 1 in levels of two. The first two
// levels have no extra bits.
Deflater::Level Deflater::LevelOf(std::size_t value, unsigned perLevel) {
    unsigned symbol = 0;
    int extra = 0;
    for (;; ++symbol) {
        extra = symbol < 2 * perLevel ? 0 : static_cast<int>(symbol / perLevel) - 1;
        if (value < std::size_t{1} << extra) return {symbol, extra, value};
        value -= std::size_t{1} << extra;
    }
}

void Deflater::Match(std::size_t length, std::size_t distance) {
    const Level far = LevelOf(distance - 1, 2);
    if (length == kLongestMatch) {
        Symbol(285);  // stands outside of the levels
    } else {
        const Level run = LevelOf(length - kShortestMatch, 4);
        Symbol(257 + run.m_Symbol);
        Bits(static_cast<unsigned>(run.m_Rest), run.m_ExtraBits);
    }
    Code(far.m_Symbol, 5);
    Bits(static_cast<unsigned>(far.m_Rest), far.m_ExtraBits);
}

std::string Deflater::Finish() {
    Symbol(kEndOfBlock);
    Bits(0, 7);  // completes the last byte
    return std::move(m_Bytes);
}

std::size_t MatchLength(const std::string& bytes, std::size_t at, std::size_t distance) {
    if (distance > at || distance > kFarthestMatch) return 0;
    std::size_t length = 0;
    while (length < kLongestMatch && at + length < bytes.size() &&
           bytes[at + length] == bytes[at + length - distance]) {
        ++length;
    }
    return length;
}

std::string Compress(const std::string& bytes, std::size_t rowBytes) {
    Deflater deflater;
    for (std::size_t at = 0; at < bytes.size();) {
        const std::size_t left = MatchLength(bytes, at, kPixelBytes);
        const std::size_t above = MatchLength(bytes, at, rowBytes);
        const std::size_t length = std::max(left, above);
        if (length < kShortestMatch) {
            deflater.Literal(static_cast<std::uint8_t>(bytes[at++]));
            continue;
        }
        deflater.Match(length, above > left ? rowBytes : kPixelBytes);
        at += length;
    }
    return "\x78\x01" + deflater.Finish() + BigEndian(Adler32(bytes));
}

// Rows of red, green, blue, each after a byte that says that nothing was done to it.
std::string RowsOf(const RasterSurface& surface) {
    std::string rows;
    const std::uint32_t* row = surface.Pixels();
    for (int y = 0; y < surface.DeviceHeight(); ++y, row += surface.Stride()) {
        rows += '\0';
        for (int x = 0; x < surface.DeviceWidth(); ++x) {
            for (const int shift : {16, 8, 0}) rows += static_cast<char>(row[x] >> shift);
        }
    }
    return rows;
}

std::string Chunk(const std::string& type, const std::string& data) {
    const std::string body = type + data;
    return BigEndian(static_cast<std::uint32_t>(data.size())) + body + BigEndian(Crc32(body));
}

std::string PngOf(const RasterSurface& surface) {
    const auto width = static_cast<std::uint32_t>(surface.DeviceWidth());
    const auto height = static_cast<std::uint32_t>(surface.DeviceHeight());
    const std::string format("\x08\x02\x00\x00\x00", 5);  // 8 bits, red green blue
    const std::string pixels = Compress(RowsOf(surface), width * kPixelBytes + 1);
    return "\x89PNG\r\n\x1A\n" + Chunk("IHDR", BigEndian(width) + BigEndian(height) + format) +
           Chunk("IDAT", pixels) + Chunk("IEND", "");
}

}  // namespace

bool WritePng(const RasterSurface& surface, const std::string& path, std::string& error) {
    if (surface.DeviceWidth() == 0 || surface.DeviceHeight() == 0) {
        error = "cannot write " + path + ": the picture is empty";
        return false;
    }
    const std::string temporary = path + ".part";
    std::ofstream file(temporary, std::ios::binary | std::ios::trunc);
    file << PngOf(surface);
    file.close();
    if (file && std::rename(temporary.c_str(), path.c_str()) == 0) return true;
    error = "cannot write " + path + ": " + std::strerror(errno);
    std::remove(temporary.c_str());
    return false;
}

}  // namespace vesk
