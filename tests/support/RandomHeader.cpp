#include "tests/support/RandomHeader.h"

#include <algorithm>

namespace vesk {

namespace {

std::string EightBytes(Dice& dice) {
    static const std::string pool[] = {"CpuBusy ",           std::string("Net\0junk", 8),
                                       "a  b  c ",           "\xC4\xD6\xDC 100%",
                                       std::string(8, '\0'), "EIGHTLET"};
    return pool[dice.Below(std::size(pool))].substr(0, 8);
}

}  // namespace

RandomHeader::RandomHeader(Dice& dice, int version, std::uint32_t wrap)
    : m_Dice(dice), m_Version(version) {
    m_Layout.isPackets = version != 1 && dice.Chance(version == 3 ? 60 : 25);
    m_Layout.isMicro = m_Layout.isPackets || dice.Chance(45);
    m_Layout.wrap = wrap;
    m_Layout.hasFrame = dice.Chance(m_Layout.isPackets ? 85 : 65);
    ChooseItems();
}

std::string RandomHeader::Form() const {
    return std::string(m_Layout.isPackets ? "packets" : "plain") + ", version " +
           std::to_string(m_Version) + (m_Layout.isMicro ? ", micro" : ", tick") +
           (m_Layout.hasFrame ? "" : ", without frame numbers");
}

RandomHeader::Item RandomHeader::RandomItem() {
    switch (m_Dice.Below(10)) {
        case 0:
            return {0x105, m_Dice.OnceIn(9) ? 4U : 0U,
                    std::string(m_Dice.Of({"\x14\0", "\xF0\1"}), 2)};
        case 1:
            return {0x106, 0, std::string("\7\0\0\0", m_Dice.Of({1, 4}))};
        case 2:
            return {m_Dice.Of({0x200U, 0x7U, 0xFFFFFFFFU}), 4 * m_Dice.Below(3), ""};
        case 3:
            return {0x10006 + m_Dice.Below(10), 4 * m_Dice.Below(3), EightBytes(m_Dice)};
        case 4:
        case 5:
            return {0x104, m_Dice.OnceIn(6) ? m_Dice.Of({8U, 16U}) : 12U, ""};
        default:
            return {0x103, 4 * m_Dice.Below(4), ""};
    }
}

void RandomHeader::ChooseItems() {
    for (std::uint32_t count = m_Dice.Below(5); count > 0; --count) m_Items.push_back(RandomItem());
    if (m_Layout.isPackets || m_Dice.OnceIn(40)) {
        const std::uint32_t others = m_Dice.Below(3);
        for (std::uint32_t i = 0; i < others; ++i)
            m_Items.push_back({0x10000004 + m_Dice.Below(9), m_Dice.Of({1U, 4U}), ""});
        if (m_Layout.hasFrame) m_Items.push_back({0x10000001, 4, ""});
        if (!m_Dice.OnceIn(50)) m_Items.push_back({0x10000003, 4, ""});
        m_Items.push_back({0x1000000D, 4, ""});
        for (std::size_t i = m_Items.size(); i > 1; --i)
            std::swap(m_Items[i - 1], m_Items[m_Dice.Below(static_cast<std::uint32_t>(i))]);
    }
    PlacePacketFields();
}

void RandomHeader::PlacePacketFields() {
    std::uint32_t offset = 0;
    for (const Item& item : m_Items) {
        const bool isField = item.type >= 0x10000001 && item.type <= 0x1000000D;
        if (item.type == 0x10000001) m_Layout.frameAt = offset;
        if (item.type == 0x10000003) m_Layout.contextAt = offset;
        if (item.type == 0x1000000D) m_Layout.countAt = offset;
        if (!isField && item.type != 0x105 && item.type != 0x106)
            m_ExtraSize += item.type == 0x104 ? 12 : item.size;
        offset += item.size;
    }
    m_Layout.size = offset + (m_Dice.OnceIn(4) ? m_Dice.Below(9) : 0);
    if (m_Dice.OnceIn(40) && m_Layout.size > 4) m_Layout.size -= 4;
    m_Layout.after = m_ExtraSize;
}

std::uint32_t RandomHeader::FormatWord() {
    std::uint32_t format = m_Layout.isPackets ? 0x10000000 | m_Dice.Below(16)
                           : m_Layout.isMicro ? 2
                                              : 1;
    format |= m_Dice.Of({0U, 1U, 2U, 2U}) << 4;
    if (!m_Layout.hasFrame || (m_Layout.isPackets && m_Dice.Chance(50))) format |= 1 << 8;
    if (m_Dice.OnceIn(80)) format ^= 1U << m_Dice.Below(32);
    return format;
}

std::uint32_t RandomHeader::JobSize() {
    if (m_Layout.isPackets) return m_Layout.size;
    if (m_Version == 1) return m_Dice.OnceIn(60) ? 16 : 12;
    const std::uint32_t plain = m_Layout.hasFrame ? 12 : 8;
    return m_Dice.OnceIn(12) ? m_Dice.Of({0U, 5U, 16U, 0xFFFFFFF0U}) : plain;
}

std::string RandomHeader::ItemBlock() const {
    std::string block;
    for (const Item& item : m_Items) {
        PutNumber(block, item.type);
        PutNumber(block, item.size);
        std::string value = item.value;
        value.resize(8);
        block += value;
    }
    return block;
}

std::string RandomHeader::InitEntry(std::uint32_t tag, std::uint32_t values) {
    std::string entry, data;
    for (std::uint32_t i = 0; i < values; ++i) data += EightBytes(m_Dice);
    PutNumber(entry, tag);
    PutNumber(entry, static_cast<std::uint32_t>(data.size()));
    return entry + data;
}

std::string RandomHeader::InitBlock() {
    std::string block;
    for (const Item& item : m_Items) {
        if (m_Dice.Chance(45)) continue;
        const std::uint32_t values = item.type == 0x104 ? 2 : item.size / 4;
        block += InitEntry(item.type, m_Dice.OnceIn(8) ? m_Dice.Below(4) : values);
    }
    if (m_Dice.OnceIn(8)) {
        const std::uint32_t tag = m_Dice.Of({0x103U, 0x104U, 0x999U});
        block += InitEntry(tag, m_Dice.Below(3));
    }
    if (m_Dice.OnceIn(7)) {  // no list of names; what comes after it stays unread
        std::string entry;
        PutNumber(entry, m_Dice.Of({0x103U, 0x104U, 0x200U}));
        PutNumber(entry, 5U);
        entry += "short";
        block = m_Dice.Chance(50) ? block + entry : entry + block;
    }
    return block;
}

std::string RandomHeader::Make() {
    std::string format, sizes;
    PutNumber(format, FormatWord());
    if (!m_Layout.hasFrame && !m_Layout.isPackets) {
        PutNumber(format, m_Dice.OnceIn(20) ? 0x7FFFFFF0U : m_Dice.Below(5000));
        PutNumber(format, m_Dice.Below(m_Dice.Of({2U, 100U, 5000U})));
    }
    PutNumber(format, JobSize());
    const std::string items = ItemBlock(), init = InitBlock();
    const std::uint32_t fixedSize = m_Dice.OnceIn(10) ? m_Dice.Below(99) : 8;
    std::uint32_t itemBytes = static_cast<std::uint32_t>(items.size());
    std::uint32_t initBytes = static_cast<std::uint32_t>(init.size());
    if (m_Dice.OnceIn(80)) itemBytes += m_Dice.Of({4U, 16U});
    if (m_Dice.OnceIn(80)) initBytes += m_Dice.Of({1U, 12U, 4000U});
    PutNumber(sizes, 16 + fixedSize + itemBytes + initBytes + (m_Dice.OnceIn(100) ? 1 : 0));
    PutNumber(sizes, fixedSize);
    PutNumber(sizes, itemBytes);
    PutNumber(sizes, initBytes);
    return sizes + format + items + init;
}

}  // namespace vesk
