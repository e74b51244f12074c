#pragma once

#include <array>
#include <stack>

#include "tests/support/PlainHeader.h"

namespace vesk {

// Decodes the records of a log into a PlainLog.
class PlainDecoder {
public:
    // Without a header the few rules of the headerless stream hold.
    PlainDecoder(PlainFile&, const PlainHeader&, bool withHeader, TargetDatabase&,
                 const PlainOptions&, PlainLog&);

    // Reads from where the file stands; a record that begins exactly at end is still read.
    // False: the log's error text says what was wrong, and the log holds all that came before.
    bool Decode(std::int64_t end);

private:
    enum class Framed { kRecord, kEnd, kError };

    Framed ReadRecord();
    Framed ReadPlainRecord();
    bool ReadCount();
    bool ReadFields();
    bool ReadExtraData(std::size_t from, std::size_t to);
    void ComputeFrame();
    Framed ReadPackets();
    Framed ReadPayload(std::int8_t sequence, std::uint32_t length, std::int32_t& pieces,
                       std::uint64_t& bytes);
    void TakeLoss(std::uint32_t length);
    void TakePacketFields();
    bool FrameFell() const;

    void TakeRecord();
    void StartHere();
    bool IsIgnored() const;
    std::uint32_t RawDelta();
    std::uint64_t Delta();
    bool Dispatch();

    void EnterNext(const std::string& next);
    void CloseCallsAtLoss();
    std::string NextAfterReturn();
    std::string NextAtInterrupt();
    std::string NextTask();

    void EnterFunction(const std::string& name);
    bool LeaveFunction(const std::string& name);
    void CloseCall(const std::string& name);
    bool IsOpenCallOfCurrentJob(std::uint64_t start) const;
    void StepSegment(const std::string& next, const std::string& left);
    void StartHardwareEvent(const std::string& name);
    void EndHardwareEvent(const std::string& name);

    void StoreSample();
    void InsertSample(std::uint64_t time, const std::string& name);
    std::uint32_t PreviousWord(std::size_t offset) const;

    void Insert(const McuJob&);
    void InsertCustomJob(const McuJob&, std::uint64_t time);
    void InsertSourceMark(const McuJob&);
    bool Search(std::uint64_t time, std::size_t& index) const;
    void Finish();
    void FinishJob();

    std::string IdText() const;
    std::string NameText() const;
    McuJob JobFrom(const std::string& name, std::uint64_t start, std::uint64_t end) const;

    PlainFile& m_File;
    HeaderInfo m_Info;
    const std::vector<PlainItem>& m_Items;
    const bool m_WithHeader;
    const PlainOptions& m_Options;
    PlainLog& m_Log;
    std::map<int, std::string> m_IrqNames;
    std::map<int, std::string> m_TaskNames;
    std::string m_TickName;

    std::int64_t m_Position = 0;  // of the current record
    std::array<std::uint8_t, 4> m_Id{};
    std::uint32_t m_Count = 0;
    std::uint32_t m_Wrap = 0;
    std::int32_t m_Frame = 0;
    std::vector<std::uint8_t> m_Current;  // extra data of the record, in packets all of it
    std::vector<std::uint8_t> m_Previous;

    std::uint64_t m_Now = 0;
    std::uint32_t m_LastCount = 0;
    std::int32_t m_LastFrame = -1;
    bool m_First = true;
    bool m_LostPending = false;
    bool m_Switched = false;
    std::string m_JobName;
    std::uint64_t m_JobStart = 0;
    std::int32_t m_JobFrame = -1;
    std::uint32_t m_JobCount = 0;
    std::string m_LastTask;
    std::stack<std::string> m_IrqStack;
    std::string m_NameBefore;
    std::string m_NameAfter;
    std::uint64_t m_ExtraTime = 0;

    std::stack<std::string> m_Functions;
    std::map<std::string, int> m_Running;
    std::map<std::string, McuJob> m_OpenEvents;
    std::map<std::string, std::vector<McuJob>> m_OpenCalls;
    McuJob m_Segment{"", 0, 0};
    bool m_Entered = false;
};

// Names of interrupts 0 to 127 by number, and the tick interrupt's; may set the log's tickIRQ.
std::map<int, std::string> PlainIrqNames(TargetDatabase&, const PlainOptions&, PlainLog&,
                                         std::string& tickName);

}  // namespace vesk
