#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "tests/support/Dice.h"

namespace vesk {

// Appends a number as it lies in a log.
template <class Number>
void PutNumber(std::string& bytes, Number number) {
    bytes.append(reinterpret_cast<const char*>(&number), sizeof number);
}

// How the records of a random log look. Sizes and offsets are bytes.
struct RecordLayout {
    bool isMicro = false;  // 32-bit counts
    bool hasFrame = true;
    std::uint32_t wrap = 0;    // of 32-bit counts
    std::uint32_t before = 0;  // extra data ahead of the frame number
    std::uint32_t after = 0;   // and behind it
    bool isPackets = false;    // the rest: of packets only
    std::uint32_t size = 0;    // whole record
    std::uint32_t contextAt = 0;
    std::uint32_t countAt = 0;
    std::uint32_t frameAt = 0;
};

// A stream of records: tasks and interrupts that come and go, functions that call each other,
// now and then something that no target would write.
class RandomRecords {
public:
    RandomRecords(Dice& dice, const RecordLayout& layout);
    std::string Make(int records);

    // Where each record began in what Make gave.
    const std::vector<std::int64_t>& Starts() const { return m_Starts; }

private:
    void Tick();
    std::string NextId();
    std::string NextSwitch();
    std::string NextFunction();
    std::string NextEvent();
    std::string ExtraData(std::uint32_t size);
    std::string PlainRecord(const std::string& id);
    std::string PacketRecord(const std::string& id);
    std::string Packet(int id, int sequence, std::uint32_t length, const std::string& payload);

    Dice& m_Dice;
    const RecordLayout m_Layout;
    std::vector<std::int64_t> m_Starts;
    std::uint32_t m_FrameLength;
    std::uint32_t m_LargestStep;
    int m_FunctionShare;  // percent
    int m_SwitchShare;
    int m_ZeroCounts;  // records with count 0 at the start
    bool m_IsDamaged;
    bool m_HasOddFrames;
    std::uint64_t m_Total = 0;  // counts since the start
    std::int32_t m_FirstFrame;
    std::int32_t m_Frame;
    std::uint32_t m_Count = 0;
    std::vector<std::string> m_Functions;
};

}  // namespace vesk
