#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "log/EventTracker.h"
#include "log/ExtraSampler.h"
#include "log/FunctionTracker.h"
#include "log/IdTable.h"
#include "log/JobNames.h"
#include "log/LogCensus.h"
#include "log/LogClock.h"
#include "log/NameTables.h"
#include "log/PlainFramer.h"
#include "log/RawRecord.h"
#include "log/ReadReport.h"
#include "log/SwitchTracker.h"
#include "platform/MemoryAhead.h"

class McuJobList;

namespace vesk {

// What a decoder needs to know of a log beside its records.
struct DecoderSetup {
    HeaderInfo m_Info;
    LogForm m_Form = LogForm::kHeaderless;
    NameTables m_Names;
    int m_ExtraValues = 0;
    std::array<ByteRange, 2> m_Extra;  // where they lie in a record
    std::size_t m_PreviousBytes = 0;   // see ExtraSampler
    std::uint32_t m_ExtraBefore = 0;   // bytes of them ahead of the frame number, headerless

    // Records carry what a sample needs.
    bool HasSamples() const { return m_Extra[0].m_Size + m_Extra[1].m_Size > 0; }
    // Frame numbers come from the counts.
    bool ComputesFrames() const { return m_Form == LogForm::kWithHeader && !m_Info.m_HasFrameNo; }
};

// Turns framed records into the contents of a list: time first, then by kind to the trackers.
// Without a list everything is only counted, with the very same outcome.
class RecordDecoder {
public:
    // All borrowed. The census, if any, says how much room the list will need.
    RecordDecoder(const DecoderSetup&, McuJobList* list, const LogCensus* census);

    // At most so many records follow before the next call: has the memory for them provided.
    void MakeRoomFor(std::size_t records);

    // False: the record makes no sense after the one before it, and decoding ends.
    bool Accept(const RawRecord& record);

    // Accepts task and interrupt records one after the other, as far as nothing but those comes
    // and they carry no extra values. Returns the first record that is left.
    const std::uint8_t* AcceptSwitches(const std::uint8_t* records, const std::uint8_t* end,
                                       const PlainFramer& framer);

    // The target dropped data between two records.
    void Lose(std::uint32_t size);

    // Stores what is still open at the end of the log.
    void Finish();

    // Hands names and totals over to the list; also where memory ran out before the end.
    void HandOver();

    // Time has not begun to move: no record with a non-zero count was accepted.
    bool IsBeforeTime() const { return m_BeforeTime; }
    std::int32_t LastFrame() const { return m_Clock.LastFrame(); }

    LogCensus Census() const;
    std::uint64_t IgnoredRecords() const { return m_Ignored; }
    std::uint64_t UnmatchedExits() const { return m_UnmatchedExits; }

private:
    const IdMeaning& MeaningOf(std::uint32_t id);
    [[gnu::cold]] const IdMeaning& Learn(std::uint32_t id);
    void NameIrq(IdMeaning&, RecordId);
    void NameTask(IdMeaning&, RecordId, std::uint32_t id);
    [[gnu::cold]] void StartAt(const RawRecord&);
    [[gnu::cold]] void OpenGap();
    bool DispatchEvent(const IdMeaning&, const RawRecord&);
    void EndRecord(const RawRecord&, const JobName* charged);

    const DecoderSetup& m_Setup;
    McuJobList* m_List;
    JobNames m_JobNames;
    IdTable m_Ids;
    LogClock m_Clock;
    SwitchTracker m_Switches;
    FunctionTracker m_Functions;
    EventTracker m_Events;
    ExtraSampler m_Sampler;
    MemoryAhead m_JobMemory;
    MemoryAhead m_SegmentMemory;
    MemoryAhead m_SampleMemory;
    bool m_BeforeTime = true;
    bool m_ChecksFrames;
    bool m_HasSamples;  // records carry extra values
    std::uint64_t m_Ignored = 0;
    std::uint64_t m_UnmatchedExits = 0;
};

inline const IdMeaning& RecordDecoder::MeaningOf(std::uint32_t id) {
    const IdMeaning& meaning = m_Ids.SlotOf(id);
    return meaning.m_IsUsed ? meaning : Learn(id);
}

}  // namespace vesk
