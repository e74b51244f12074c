#include "log/ByteSource.h"

#include <gtest/gtest.h>

#include "tests/log/LogBytes.h"

namespace vesk {
namespace {

std::string Counting(std::size_t size) {
    std::string bytes(size, '\0');
    for (std::size_t i = 0; i < size; ++i) bytes[i] = static_cast<char>(i * 7 + i / 256);
    return bytes;
}

std::string TextOf(const std::uint8_t* bytes, std::size_t size) {
    return bytes ? std::string(bytes, bytes + size) : "nothing";
}

TEST(ByteSource, SaysWhenTooFewBytesAreLeftAndKeepsThem) {
    std::string bytes = "0123456789";
    const StreamOwner stream = StreamOver(bytes);
    ByteSource source(stream.get(), 500);
    EXPECT_EQ(source.Position(), 500);
    EXPECT_EQ(TextOf(source.Take(4), 4), "0123");
    EXPECT_EQ(source.Position(), 504);
    EXPECT_EQ(source.Take(7), nullptr);
    EXPECT_EQ(source.Take(std::size_t{1} << 40), nullptr);
    EXPECT_EQ(source.Rest(), 6u);
    EXPECT_EQ(source.Position(), 504);
    EXPECT_EQ(TextOf(source.Take(6), 6), "456789");
    EXPECT_EQ(source.Rest(), 0u);
    EXPECT_EQ(source.Position(), 510);
    EXPECT_EQ(source.Take(1), nullptr);
    EXPECT_NE(source.Take(0), nullptr);
}

TEST(ByteSource, GivesWholePiecesAcrossItsBlocks) {
    std::string bytes = Counting(1000003);
    const StreamOwner stream = StreamOver(bytes);
    ByteSource source(stream.get(), 0);
    std::size_t position = 0;
    for (const std::size_t size : {1u, 100000u, 50000u, 7u, 600000u, 3u, 249992u}) {
        ASSERT_EQ(TextOf(source.Take(size), size), bytes.substr(position, size)) << position;
        position += size;
        EXPECT_EQ(source.Position(), static_cast<std::int64_t>(position));
    }
    EXPECT_EQ(source.Take(1), nullptr);
}

TEST(ByteSource, TakesWholeRecordsOnly) {
    for (const std::size_t recordBytes : {1u, 8u, 12u, 1000u, 300000u}) {
        SCOPED_TRACE(recordBytes);
        std::string bytes = Counting(1000003);
        const StreamOwner stream = StreamOver(bytes);
        ByteSource source(stream.get(), 0);
        std::string taken;
        for (auto records = source.TakeRecords(recordBytes, 20000); !records.empty();
             records = source.TakeRecords(recordBytes, 20000)) {
            ASSERT_EQ(records.size() % recordBytes, 0u);
            ASSERT_LE(records.size() / recordBytes, 20000u);
            taken.append(records.begin(), records.end());
        }
        EXPECT_EQ(source.Rest(), bytes.size() % recordBytes);
        EXPECT_EQ(taken, bytes.substr(0, bytes.size() - source.Rest()));
    }
}

TEST(ByteSource, TakesNoMoreRecordsThanAsked) {
    std::string bytes = Counting(100);
    const StreamOwner stream = StreamOver(bytes);
    ByteSource source(stream.get(), 0);
    EXPECT_TRUE(source.TakeRecords(10, 0).empty());
    EXPECT_EQ(source.TakeRecords(10, 3).size(), 30u);
    EXPECT_TRUE(source.TakeRecords(71, 1).empty());
    EXPECT_EQ(source.TakeRecords(10, ~std::uint64_t{0}).size(), 70u);
    EXPECT_TRUE(source.TakeRecords(10, 1).empty());
}

}  // namespace
}  // namespace vesk
