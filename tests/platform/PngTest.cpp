// Reads the written pictures back with a decoder of its own: chunks and their sums, the compressed
// stream, the pixels.
#include "platform/Png.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include "platform/CDC.h"
#include "platform/RasterSurface.h"
#include "tests/platform/Scene.h"

namespace vesk {
namespace {

std::uint32_t Number(const std::string& bytes, std::size_t at) {
    std::uint32_t number = 0;
    for (std::size_t i = 0; i < 4; ++i) {
        number = number << 8 | static_cast<std::uint8_t>(bytes.at(at + i));
    }
    return number;
}

std::uint32_t SumOf(const std::string& bytes) {
    std::uint32_t sum = 0xFFFFFFFF;
    for (const char byte : bytes) {
        for (int bit = 0; bit < 8; ++bit) {
            const bool odd = ((sum ^ static_cast<unsigned>(byte) >> bit) & 1) != 0;
            sum = sum >> 1 ^ (odd ? 0xEDB88320 : 0);
        }
    }
    return ~sum;
}

// Takes one fixed-code block apart.
class Inflater {
public:
    explicit Inflater(const std::string& stream) : m_Stream(stream) {}

    std::string Run() {
        EXPECT_EQ(Bits(3), 0b011u);  // last block, fixed code
        for (unsigned symbol = Symbol(); symbol != 256; symbol = Symbol()) {
            if (symbol < 256) {
                m_Out += static_cast<char>(symbol);
            } else {
                Repeat(symbol - 257);
            }
        }
        return m_Out;
    }
    std::size_t BytesRead() const { return (m_At + 7) / 8; }

private:
    unsigned Bits(int count) {
        unsigned value = 0;
        for (int i = 0; i < count; ++i, ++m_At) {
            const auto byte = static_cast<std::uint8_t>(m_Stream.at(m_At / 8));
            value |= (byte >> m_At % 8 & 1u) << i;
        }
        return value;
    }

    unsigned Code(int count, unsigned code = 0) {
        for (; count > 0; --count) code = code << 1 | Bits(1);
        return code;
    }

    unsigned Symbol() {
        const unsigned seven = Code(7);
        if (seven < 0b0011000) return 256 + seven;
        const unsigned eight = Code(1, seven);
        if (eight < 0b11000000) return eight - 0b00110000;
        if (eight < 0b11001000) return 280 + eight - 0b11000000;
        return 144 + Code(1, eight) - 0b110010000;
    }

    void Repeat(unsigned length) {
        static constexpr unsigned kLengths[] = {3,  4,  5,  6,   7,   8,   9,   10,  11, 13,
                                                15, 17, 19, 23,  27,  31,  35,  43,  51, 59,
                                                67, 83, 99, 115, 131, 163, 195, 227, 258};
        static constexpr unsigned kDistances[] = {
            1,   2,   3,   4,   5,   7,    9,    13,   17,   25,   33,   49,   65,    97,    129,
            193, 257, 385, 513, 769, 1025, 1537, 2049, 3073, 4097, 6145, 8193, 12289, 16385, 24577};
        const int lengthBits = length < 8 || length == 28 ? 0 : static_cast<int>(length) / 4 - 1;
        const unsigned count = kLengths[length] + Bits(lengthBits);
        const unsigned distance = Code(5);
        const int distanceBits = distance < 4 ? 0 : static_cast<int>(distance) / 2 - 1;
        const std::size_t back = kDistances[distance] + Bits(distanceBits);
        for (unsigned i = 0; i < count; ++i) m_Out += m_Out.at(m_Out.size() - back);
    }

    const std::string& m_Stream;
    std::size_t m_At = 0;  // in bits
    std::string m_Out;
};

class Png : public testing::Test {
protected:
    Png() { std::filesystem::create_directories(m_Folder); }
    ~Png() override { std::filesystem::remove_all(m_Folder); }

    std::string PathOf(const char* name) const { return m_Folder / name; }

    std::string Written(const RasterSurface& surface) {
        std::string error;
        EXPECT_TRUE(WritePng(surface, PathOf("picture.png"), error)) << error;
        std::ifstream file(PathOf("picture.png"), std::ios::binary);
        return (std::ostringstream() << file.rdbuf()).str();
    }

    // The data of the next chunk, whose sum must be right.
    static std::string Chunk(const std::string& bytes, std::size_t& at, const std::string& type) {
        const std::size_t size = Number(bytes, at);
        EXPECT_EQ(bytes.substr(at + 4, 4), type);
        EXPECT_EQ(SumOf(bytes.substr(at + 4, 4 + size)), Number(bytes, at + 8 + size)) << type;
        at += 12 + size;
        return bytes.substr(at - 4 - size, size);
    }

    // What a reader of the file sees must be the surface's pixels.
    static void ExpectShows(const std::string& bytes, const RasterSurface& surface) {
        std::size_t at = 8;
        EXPECT_EQ(bytes.substr(0, at), "\x89PNG\r\n\x1A\n");
        const std::string header = Chunk(bytes, at, "IHDR");
        ASSERT_EQ(Number(header, 0), static_cast<std::uint32_t>(surface.DeviceWidth()));
        ASSERT_EQ(Number(header, 4), static_cast<std::uint32_t>(surface.DeviceHeight()));
        EXPECT_EQ(header.substr(8), std::string("\x08\x02\0\0\0", 5));
        const std::string stream = Chunk(bytes, at, "IDAT");
        Chunk(bytes, at, "IEND");
        EXPECT_EQ(at, bytes.size());
        ExpectPixels(stream, surface);
    }

    static void ExpectPixels(const std::string& stream, const RasterSurface& surface) {
        EXPECT_EQ(stream.substr(0, 2), "\x78\x01");
        const std::string body = stream.substr(2);
        Inflater inflater(body);
        const std::string rows = inflater.Run();
        ASSERT_EQ(inflater.BytesRead() + 4, body.size());
        EXPECT_EQ(Number(body, body.size() - 4), CheckSum(rows));
        std::string expected;
        for (int y = 0; y < surface.DeviceHeight(); ++y) {
            expected += '\0';
            for (int x = 0; x < surface.DeviceWidth(); ++x) {
                const COLORREF color = surface.PixelAt(x, y);
                expected += static_cast<char>(GetRValue(color));
                expected += static_cast<char>(GetGValue(color));
                expected += static_cast<char>(GetBValue(color));
            }
        }
        EXPECT_TRUE(rows == expected) << "other pixels than drawn";
    }

    static std::uint32_t CheckSum(const std::string& bytes) {
        std::uint64_t low = 1;
        std::uint64_t high = 0;
        for (const char byte : bytes) high += low += static_cast<std::uint8_t>(byte);
        return static_cast<std::uint32_t>(high % 65521 << 16 | low % 65521);
    }

    const std::filesystem::path m_Folder =
        std::filesystem::path(testing::TempDir()) /
        (std::string("png.") + testing::UnitTest::GetInstance()->current_test_info()->name());
    FixedGlyphs m_Glyphs;
};

TEST_F(Png, HoldsThePixelsThatWereDrawn) {
    for (const CSize size :
         {CSize{1, 1}, CSize{2, 3}, CSize{120, 90}, CSize{700, 90}, CSize{11000, 2}}) {
        for (const double scale : {1.0, 1.25}) {
            RasterSurface surface(size, m_Glyphs, scale);
            CDC dc(&surface);
            DrawScene(dc, 7);
            dc.SetWindowOrg(1, 1);  // rows may now be longer than they are wide
            ExpectShows(Written(surface), surface);
        }
    }
}

TEST_F(Png, HoldsPicturesWithoutAnyRepetition) {
    RasterSurface surface({90, 90}, m_Glyphs);
    for (int i = 0; i < 8100; ++i) {
        const auto color = static_cast<COLORREF>(i * 2654435761u >> 7);
        surface.FillRect({i % 90, i / 90, i % 90 + 1, i / 90 + 1}, color & 0xFFFFFF);
    }
    ExpectShows(Written(surface), surface);
}

TEST_F(Png, IsSmallForDrawings) {
    const RasterSurface surface({1000, 1000}, m_Glyphs);
    EXPECT_LT(Written(surface).size(), 25000u);
}

TEST_F(Png, RefusesWithAReasonAndLeavesNothingBehind) {
    std::string error;
    EXPECT_FALSE(WritePng(RasterSurface({0, 0}, m_Glyphs), PathOf("empty.png"), error));
    EXPECT_EQ(error, "cannot write " + PathOf("empty.png") + ": the picture is empty");
    EXPECT_FALSE(WritePng(RasterSurface({2, 2}, m_Glyphs), PathOf("none/a.png"), error));
    EXPECT_EQ(error, "cannot write " + PathOf("none/a.png") + ": No such file or directory");
    std::filesystem::create_directory(PathOf("folder"));
    EXPECT_FALSE(WritePng(RasterSurface({2, 2}, m_Glyphs), PathOf("folder"), error));
    EXPECT_FALSE(std::filesystem::exists(PathOf("folder.part")));
}

}  // namespace
}  // namespace vesk
