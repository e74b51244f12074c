#include "log/RecordKind.h"

#include <gtest/gtest.h>

#include "log/IdTable.h"

namespace vesk {
namespace {

std::uint32_t Id(std::uint32_t b0, std::uint32_t b1, std::uint32_t b2, std::uint32_t b3) {
    return b0 | b1 << 8 | b2 << 16 | b3 << 24;
}

TEST(RecordKind, IsTheSameInBothFormsButForResume) {
    using enum RecordKind;
    const struct {
        std::uint32_t id;
        RecordKind kind;
    } cases[] = {
        {Id('M', 'A', 'I', 'N'), kTask},        {Id(0, 0, 0, 0), kTask},
        {Id(0x7F, 0xFF, 0xFF, 0xFF), kTask},    {Id('A', 0xAA, 0xAA, 'B'), kTask},
        {Id(0x80, 0, 0, 0), kIgnored},          {Id(0x90, 1, 2, 3), kIgnored},
        {Id(0xAA, 0xAA, 0xAA, 0xAA), kReturn},  {Id(0xAA, 0x01, 0xAA, 0xAA), kReturn},
        {Id(0xAA, 0xAA, 0x01, 0xAA), kIgnored}, {Id(0x03, 0x00, 0xAA, 0xAA), kIrq},
        {Id(0xFF, 0x01, 0xAA, 0xAA), kIrq},     {Id(0x03, 0x00, 0x55, 0xAA), kIrq},
        {Id(0x83, 0x00, 0x55, 0xAA), kIgnored}, {Id(0xBB, 0xBB, 0xAA, 0xAA), kIrq},
        {Id(0xBB, 0xBB, 0xBB, 0xAA), kIgnored}, {Id(0xBB, 0xBB, 0x00, 0xBB), kIgnored},
        {Id(0xE0, 'f', 0, 0), kFunctionEntry},  {Id(0xE1, 'f', 0xAA, 0xAA), kFunctionExit},
        {Id(0xE2, 'm', 0, 0), kSourceMark},     {Id(0xE3, 'h', 0, 0), kHardwareStart},
        {Id(0xE4, 'h', 0, 0), kHardwareEnd},    {Id(0xE5, 'h', 0, 0), kIgnored},
    };
    for (const auto& c : cases) {
        for (const bool isHeaderless : {false, true})
            EXPECT_EQ(RecordId(c.id).Kind(isHeaderless), c.kind) << std::hex << c.id;
    }
    EXPECT_EQ(RecordId(0xBBBBBBBB).Kind(false), kResume);
    EXPECT_EQ(RecordId(0xBBBBBBBB).Kind(true), kIgnored);
}

TEST(RecordId, NamesEndAtTheFirstZeroByte) {
    const struct {
        std::uint32_t id;
        std::string task, shortName;
    } cases[] = {
        {Id('M', 'A', 'I', 'N'), "MAIN", "AIN"}, {Id('M', 'A', 0, 'N'), "MA", "A"},
        {Id('M', 0, 'I', 'N'), "M", ""},         {Id(0, 'A', 'I', 'N'), "", "AIN"},
        {Id('M', ' ', ' ', 0), "M  ", "  "},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(RecordId(c.id).TaskName(), c.task);
        EXPECT_EQ(RecordId(c.id).ShortName(), c.shortName);
    }
    EXPECT_EQ(RecordId(Id(0x34, 0x12, 0xAA, 0xAA)).IrqNumber(), 0x1234u);
}

TEST(IdTable, FindsEachOfManyIds) {
    IdTable table;
    EXPECT_FALSE(table.SlotOf(0).m_IsUsed);
    const auto nameOf = [](std::uint32_t i) { return reinterpret_cast<void*>(std::uintptr_t{i}); };
    constexpr std::uint32_t kIds = 5000;
    for (std::uint32_t i = 0; i < kIds; ++i) {
        IdMeaning meaning;
        meaning.m_Id = i << 16 | (i & 1);  // many share their low bits
        meaning.m_IsUsed = true;
        meaning.m_Name = nameOf(i);
        EXPECT_EQ(table.Add(meaning).m_Name, nameOf(i));
    }
    for (std::uint32_t i = 0; i < kIds; ++i) {
        const IdMeaning& meaning = table.SlotOf(i << 16 | (i & 1));
        ASSERT_TRUE(meaning.m_IsUsed) << i;
        ASSERT_EQ(meaning.m_Name, nameOf(i)) << i;
        ASSERT_FALSE(table.SlotOf(i << 16 | 2).m_IsUsed) << i;
    }
}

}  // namespace
}  // namespace vesk
