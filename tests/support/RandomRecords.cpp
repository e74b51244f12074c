#include "tests/support/RandomRecords.h"

#include <algorithm>

namespace vesk {

namespace {

std::string Text(const char* four, std::size_t size) {
    return std::string(four, size);
}

std::string TaskId(Dice& dice) {
    static const std::string pool[] = {"IDLE",
                                       "IDLE",
                                       "MAIN",
                                       "L1AS",
                                       Text("L1\0\0", 4),
                                       Text("A\0BC", 4),
                                       "T\xFF\x80z",
                                       Text("\0XYZ", 4),
                                       Text("\5\0\0", 4),
                                       Text("\x12\1\0\0", 4),
                                       "%s%n",
                                       "ab\xBB\xBB"};
    return pool[dice.Below(std::size(pool))];
}

std::string ShortName(Dice& dice) {
    static const std::string pool[] = {
        "foo", "bar", "baz", Text("x\0y", 3), Text("\0\0\0", 3), "f\xF0\xAA", "\xAA\xAA\xAA"};
    return pool[dice.Below(dice.OnceIn(4) ? std::size(pool) : 3)];
}

std::string InterruptId(Dice& dice) {
    const int number =
        dice.OnceIn(5) ? dice.Of({127, 128, 200, 0x100, 0x1234, 0xE5, 0xBB}) : dice.Between(0, 5);
    std::string id{static_cast<char>(number), static_cast<char>(number >> 8), '\xAA', '\xAA'};
    if ((number & 0xFF) < 0x80 && dice.OnceIn(4)) id[2] = static_cast<char>(dice.Below(256));
    return id;
}

}  // namespace

RandomRecords::RandomRecords(Dice& dice, const RecordLayout& layout)
    : m_Dice(dice), m_Layout(layout) {
    m_FrameLength = dice.Of({5000U, 5000U, 100U, 20U, 40000U, 65535U});
    m_LargestStep = dice.Of({3U, 50U, m_FrameLength / 4, m_FrameLength * 3});
    m_FunctionShare = dice.Of({5, 30, 60});
    m_SwitchShare = dice.Of({20, 35});
    m_ZeroCounts = dice.Chance(30) ? dice.Between(1, 6) : 0;
    m_IsDamaged = dice.Chance(12);
    m_HasOddFrames = dice.Chance(50);
    m_FirstFrame = dice.OnceIn(30) ? dice.Of({0x7FFFFFF0, -1, -70000}) : dice.Between(0, 3000);
    m_Frame = m_FirstFrame;
}

std::string RandomRecords::Make(int records) {
    std::string bytes;
    for (int i = 0; i < records; ++i) {
        m_Starts.push_back(static_cast<std::int64_t>(bytes.size()));
        Tick();
        if (i < m_ZeroCounts) m_Count = 0;
        const std::string id = NextId();
        bytes += m_Layout.isPackets ? PacketRecord(id) : PlainRecord(id);
    }
    return bytes;
}

// Moves the clock on. The frame number follows the count, or is off by one now and then, as it is
// while the target's tick interrupt runs.
void RandomRecords::Tick() {
    const std::uint32_t wrap = m_Layout.isMicro ? m_Layout.wrap : m_FrameLength;
    m_Total += m_Dice.Below(m_LargestStep + 1);
    if (m_Dice.OnceIn(60)) m_Total += std::uint64_t{m_Dice.Below(6)} * m_FrameLength;
    m_Count = static_cast<std::uint32_t>(wrap == 0 ? m_Total : m_Total % wrap);
    if (m_Dice.OnceIn(300)) m_Count = static_cast<std::uint32_t>(m_Dice.Next());
    auto frame = static_cast<std::uint32_t>(m_FirstFrame);
    frame += static_cast<std::uint32_t>(m_Total / m_FrameLength);
    if (m_HasOddFrames && m_Dice.OnceIn(5)) frame += m_Dice.Of({1U, 0xFFFFFFFFU});
    m_Frame = std::max(m_Frame, static_cast<std::int32_t>(frame));
    if (m_IsDamaged && m_Dice.OnceIn(300)) m_Frame = std::max(m_Frame, 0) - m_Dice.Between(1, 3);
}

std::string RandomRecords::NextId() {
    const int throwOf100 = static_cast<int>(m_Dice.Below(100));
    if (throwOf100 < m_FunctionShare) return NextFunction();
    if (throwOf100 < m_FunctionShare + m_SwitchShare) return NextSwitch();
    if (m_Dice.Chance(60)) return NextEvent();
    if (m_Dice.Chance(70)) return NextSwitch();
    std::string id;
    PutNumber(id, static_cast<std::uint32_t>(m_Dice.Next()));
    if (m_Dice.Chance(50)) id[0] = static_cast<char>(m_Dice.Of({0x90, 0xE5, 0xAA, 0xBB, 0x7F}));
    if (m_Dice.OnceIn(4)) id = "\xBB\xBB\xBB" + id.substr(3);
    return id;
}

std::string RandomRecords::NextSwitch() {
    const std::uint32_t kind = m_Dice.Below(20);
    if (kind < 8) return TaskId(m_Dice);
    if (kind < 13) return InterruptId(m_Dice);
    if (kind < 18) return {'\xAA', static_cast<char>(m_Dice.Below(256)), '\xAA', '\xAA'};
    return kind == 18 ? "\xBB\xBB\xBB\xBB" : TaskId(m_Dice);
}

// Mostly calls that nest; some exits fit no entry.
std::string RandomRecords::NextFunction() {
    const bool isEntry = m_Dice.Below(20) + m_Functions.size() / 2 < 10;
    std::string name = ShortName(m_Dice);
    if (isEntry) {
        m_Functions.push_back(name);
    } else if (!m_Functions.empty() && m_Dice.Chance(85)) {
        name = m_Functions.back();
        m_Functions.pop_back();
    }
    return (isEntry ? '\xE0' : '\xE1') + name;
}

std::string RandomRecords::NextEvent() {
    std::string id{static_cast<char>(m_Dice.Of({0xE2, 0xE3, 0xE3, 0xE4, 0xE4}))};
    return id += ShortName(m_Dice);
}

std::string RandomRecords::ExtraData(std::uint32_t size) {
    std::string data;
    while (data.size() < size) {
        const auto any = static_cast<std::uint32_t>(m_Dice.Next());
        PutNumber(data, m_Dice.OnceIn(50) ? any : m_Dice.Below(m_Dice.Of({4U, 300U})));
    }
    data.resize(size);
    return data;
}

std::string RandomRecords::PlainRecord(const std::string& id) {
    std::string record = id;
    if (m_Layout.isMicro) {
        PutNumber(record, m_Count);
    } else {
        const bool hasBit15 = m_HasOddFrames && m_Dice.OnceIn(8);
        PutNumber(record, static_cast<std::uint16_t>(m_Count));
        PutNumber(record, static_cast<std::uint16_t>(m_FrameLength | (hasBit15 ? 0x8000 : 0)));
    }
    record += ExtraData(m_Layout.before);
    if (m_Layout.hasFrame) PutNumber(record, m_Frame);
    return record + ExtraData(m_Layout.after);
}

std::string RandomRecords::PacketRecord(const std::string& id) {
    std::string record = ExtraData(m_Layout.size);
    const auto put = [&](std::uint32_t at, const void* field) {
        if (at + 4 <= record.size()) record.replace(at, 4, static_cast<const char*>(field), 4);
    };
    put(m_Layout.contextAt, id.data());
    put(m_Layout.countAt, &m_Count);
    if (m_Layout.hasFrame) put(m_Layout.frameAt, &m_Frame);

    std::string packets;
    while (m_Dice.OnceIn(40)) {
        m_Functions.clear();
        const std::uint32_t lost = m_Dice.Below(5000);
        packets += Packet(0xC5, m_Dice.Between(-1, 3), lost, "");
    }
    if (m_Dice.OnceIn(40)) packets += Packet(0xC8, m_Dice.Of({1, -1, 7}), m_Layout.size, record);
    if (!m_IsDamaged || !m_Dice.OnceIn(200))
        return packets + Packet(0xC8, 0, m_Layout.size, record);
    switch (m_Dice.Below(3)) {
        case 0:
            return packets + Packet(0xC7, 0, m_Layout.size, record);
        case 1:
            return packets + Packet(0xC8, 0, m_Layout.size + 1, record + "x");
        default:
            record.pop_back();
            return packets + Packet(0xC8, 0, m_Layout.size - 1, record);
    }
}

std::string RandomRecords::Packet(int id, int sequence, std::uint32_t length,
                                  const std::string& payload) {
    std::string packet{static_cast<char>(id), static_cast<char>(sequence),
                       static_cast<char>(m_Dice.Below(256))};
    PutNumber(packet, length);
    return packet + payload;
}

}  // namespace vesk
