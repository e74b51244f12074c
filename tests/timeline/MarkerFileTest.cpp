#include "timeline/MarkerFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "tests/support/Dice.h"
#include "tests/support/TemporaryFile.h"

namespace vesk {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Pair;
using namespace std::string_literals;

TEST(MarkerFile, IsACountAndRecordsInOrderOfTheirKeys) {
    McuMarkerMap markers;
    markers[258] = 0x0807060504030201;
    markers[-2] = 5;
    EXPECT_EQ(MarkersToBytes(markers),
              "\2\0\0\0"
              "\xFE\xFF\xFF\xFF\5\0\0\0\0\0\0\0"
              "\2\1\0\0\1\2\3\4\5\6\7\b"s);
    EXPECT_EQ(MarkersToBytes({}), "\0\0\0\0"s);
}

TEST(MarkerFile, IsReadAsItWasWritten) {
    Dice dice(1);
    for (int i = 0; i < 50; ++i) {
        McuMarkerMap markers, read;
        for (int n = dice.Between(0, 120); n > 0; --n)
            markers[static_cast<std::int32_t>(dice.Next())] = dice.Next();
        read[7] = 7;
        const TemporaryFile file("what was there before");
        std::string error;
        EXPECT_TRUE(WriteMarkerFile(file.Path(), markers, error));
        EXPECT_TRUE(ReadMarkerFile(file.Path(), read, error));
        EXPECT_EQ(error, "");
        EXPECT_EQ(read, markers);
    }
}

TEST(MarkerFile, IsTakenAsFarAsItsRecordsAreWhole) {
    const std::string one = "\1\0\0\0\x64\0\0\0\0\0\0\0"s, two = "\2\0\0\0\xC8\0\0\0\0\0\0\0"s;
    const struct {
        std::string bytes;
        std::size_t markers;
        bool isWhole;
    } cases[] = {
        {"", 0, false},
        {"\1\0\0"s, 0, false},
        {"\2\0\0\0"s + one + two, 2, true},
        {"\2\0\0\0"s + one + two.substr(0, 11), 1, false},
        {"\1\0\0\0"s + one + two, 1, false},
        {"\2\0\0\0"s + one + one, 1, true},
        {"\xFF\xFF\xFF\x7F"s + one + two, 2, false},
        {"\xFF\xFF\xFF\xFF"s + one + two, 0, false},
        {"\0\0\0\x80"s + one, 0, false},
        {"VESK_BIN and then some more text", 2, false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::PrintToString(c.bytes));
        McuMarkerMap markers;
        markers[99] = 1;
        EXPECT_EQ(MarkersFromBytes(c.bytes, markers), c.isWhole);
        EXPECT_EQ(markers.size(), c.markers);
        EXPECT_EQ(markers.count(99), 0U);
    }
}

TEST(MarkerFile, KeepsTheFirstTimeOfAKey) {
    McuMarkerMap markers;
    EXPECT_TRUE(
        MarkersFromBytes("\2\0\0\0\1\0\0\0\5\0\0\0\0\0\0\0\1\0\0\0\6\0\0\0\0\0\0\0"s, markers));
    EXPECT_THAT(markers, ElementsAre(Pair(1, 5)));
}

TEST(MarkerFile, ThatIsForeignAndLargeIsTakenUpToALimit) {
    const TemporaryFile file("");
    std::filesystem::resize_file(file.Path(), std::uintmax_t{1} << 32);
    std::string bytes = "\xFF\xFF\xFF\x7F"s;
    for (int key = 0; key <= kMostMarkersRead; ++key)
        bytes += std::string(reinterpret_cast<const char*>(&key), 4) + "\0\0\0\0\0\0\0\0"s;
    McuMarkerMap markers;
    EXPECT_FALSE(MarkersFromBytes(bytes, markers));
    EXPECT_EQ(markers.size(), static_cast<std::size_t>(kMostMarkersRead));
    std::string error;
    EXPECT_TRUE(ReadMarkerFile(file.Path(), markers, error));
    EXPECT_THAT(error, HasSubstr("no whole marker file"));
    EXPECT_TRUE(markers.empty());
}

TEST(MarkerFile, ThatCannotBeUsedIsToldAndChangesNothing) {
    McuMarkerMap markers;
    markers[3] = 30;
    const std::string folder = std::filesystem::temp_directory_path();
    for (const std::string& path : {folder, folder + "/none/of.slam"}) {
        std::string reading, writing;
        EXPECT_FALSE(ReadMarkerFile(path, markers, reading));
        EXPECT_FALSE(WriteMarkerFile(path, markers, writing));
        EXPECT_THAT(reading, testing::StartsWith("cannot read " + path + ": "));
        EXPECT_THAT(writing, testing::StartsWith("cannot write " + path + ": "));
        EXPECT_THAT(markers, ElementsAre(Pair(3, 30)));
    }
}

}  // namespace
}  // namespace vesk
