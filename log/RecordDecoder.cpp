#include "log/RecordDecoder.h"

#include "log/McuJobList.h"
#include "log/Reserve.h"
#include "platform/Text.h"

namespace vesk {

RecordDecoder::RecordDecoder(const DecoderSetup& setup, McuJobList* list, const LogCensus* census)
    : m_Setup(setup),
      m_List(list),
      m_JobNames(setup.m_Names.m_TickName),
      m_Clock(setup.m_Info, setup.m_Form != LogForm::kHeaderless || setup.m_Info.m_HasFrameNo,
              setup.m_Form != LogForm::kHeaderless),
      m_Switches(list, m_JobNames),
      m_Functions(list, m_JobNames, census),
      m_Events(list, census),
      m_Sampler(list, setup.m_ExtraValues, setup.m_Extra, setup.m_Form == LogForm::kHeaderless,
                setup.m_PreviousBytes),
      m_ChecksFrames(setup.m_Form != LogForm::kHeaderless),
      m_HasSamples(setup.HasSamples()) {
    const bool isHeaderless = setup.m_Form == LogForm::kHeaderless;
    if (!isHeaderless && (setup.m_Names.m_HasTaskNumbers || setup.m_Info.m_ReturnToTask))
        m_Switches.ReturnToLastTask();
    if (!list || !census) return;
    m_JobMemory = Reserve<McuJob>(*list, census->m_Jobs);
    m_SegmentMemory = Reserve(list->m_CustomJobs, census->m_Segments);
    m_SampleMemory = Reserve(list->m_ExtraInfos, census->m_Samples);
    Reserve(list->m_SourceMarks, census->m_SourceMarks);
}

void RecordDecoder::MakeRoomFor(std::size_t records) {
    if (!m_List) return;
    ProvideFor<McuJob>(*m_List, m_JobMemory, records);
    ProvideFor(m_List->m_CustomJobs, m_SegmentMemory, records);
    ProvideFor(m_List->m_ExtraInfos, m_SampleMemory, records);
}

bool RecordDecoder::Accept(const RawRecord& record) {
    if (m_ChecksFrames && record.m_Frame < m_Clock.LastFrame()) return false;
    if (m_BeforeTime) StartAt(record);
    const IdMeaning& meaning = MeaningOf(record.m_Id);
    if (meaning.m_Kind == RecordKind::kIgnored) {
        ++m_Ignored;
        return true;
    }
    if (record.m_Count != 0) m_BeforeTime = false;
    // Counting needs to know only whether time has left 0.
    if (m_List || m_Clock.Now() == 0) m_Clock.AdvanceTo(record, m_Switches.Running()->m_IsTick);
    const JobName* charged = m_Switches.Running();
    if (meaning.m_Kind <= RecordKind::kResume) {
        if (m_Switches.LostPending()) OpenGap();
        m_Switches.Switch(meaning, record, m_Clock.Now());
    } else if (!DispatchEvent(meaning, record)) {
        ++m_UnmatchedExits;
        return true;
    }
    m_Clock.Accept(record);
    EndRecord(record, charged);
    return true;
}

const std::uint8_t* RecordDecoder::AcceptSwitches(const std::uint8_t* records,
                                                  const std::uint8_t* end,
                                                  const PlainFramer& framer) {
    if (m_BeforeTime || m_HasSamples || framer.ComputesFrames()) return records;
    const std::size_t size = framer.RecordBytes();
    // Copies of the state, which then lives in registers.
    LogClock clock = m_Clock;
    SwitchTracker::State state = m_Switches.Current();
    const std::uint8_t* bytes = records;
    for (; bytes != end; bytes += size) {
        const RawRecord record = framer.FrameSimply(bytes);
        if (m_ChecksFrames && record.m_Frame < clock.LastFrame()) break;
        const IdMeaning& meaning = m_Ids.SlotOf(record.m_Id);
        // The slot of an id that was never met is of the ignored kind.
        if (meaning.m_Kind >= RecordKind::kResume) break;
        clock.AdvanceTo(record, state.m_Running->m_IsTick);
        m_Switches.SwitchPlainly(state, meaning, record, clock.Now());
        clock.Accept(record);
    }
    if (bytes == records) return records;
    m_Clock = clock;
    m_Switches.Restore(state);
    m_Sampler.SkipTo(clock.Now());
    return bytes;
}

void RecordDecoder::Lose(std::uint32_t size) {
    m_Switches.Lose();
    m_Functions.Lose();
    if (!m_List) return;
    std::vector<PDIInfo>& losses = m_List->m_PDIInfos;
    const std::int32_t index = m_Switches.Jobs();
    if (!losses.empty() && losses.back().m_JobIndex == index)
        losses.back().m_LostSize += size;
    else
        losses.push_back({m_Switches.Running()->m_Name.Text(), size, index});
}

// The first switch after a loss: whatever was called before has ended unseen. A gap ahead of any
// job gets a length, so that it can be shown.
void RecordDecoder::OpenGap() {
    if (!m_Switches.HasJobs()) {
        constexpr std::uint64_t kGapQBits = 100;
        m_Switches.BeginGapAt(m_Clock.Now());
        m_Clock.Advance(kGapQBits);
    }
    m_Functions.EndOpenCalls(m_Clock.Now());
}

void RecordDecoder::StartAt(const RawRecord& record) {
    const bool hasFrame = m_Setup.m_Form != LogForm::kHeaderless || m_Setup.m_Info.m_HasFrameNo;
    m_Clock.StartAt(record, hasFrame);
    m_Switches.StartAt(record);
    m_Functions.StartAt(record);
    if (m_HasSamples) m_Sampler.StartAt(record.m_Bytes, m_Setup.m_Info.m_ExtraSize);
}

void RecordDecoder::EndRecord(const RawRecord& record, const JobName* charged) {
    if (m_HasSamples)
        m_Sampler.Sample(record.m_Bytes, m_Clock.Now(), charged->m_Name.Text());
    else
        m_Sampler.SkipTo(m_Clock.Now());
}

bool RecordDecoder::DispatchEvent(const IdMeaning& meaning, const RawRecord& record) {
    const std::uint64_t now = m_Clock.Now();
    switch (meaning.m_Kind) {
        case RecordKind::kFunctionEntry:
            m_Functions.Enter(*static_cast<FunctionName*>(meaning.m_Name), record, now);
            return true;
        case RecordKind::kFunctionExit:
            return m_Functions.Leave(*static_cast<FunctionName*>(meaning.m_Name), record, now,
                                     m_Switches.Running());
        case RecordKind::kSourceMark:
            m_Events.Mark(*static_cast<MarkName*>(meaning.m_Name), record, now);
            return true;
        case RecordKind::kHardwareStart:
            m_Events.Start(*static_cast<HardwareName*>(meaning.m_Name), record, now);
            return true;
        default:
            m_Events.End(*static_cast<HardwareName*>(meaning.m_Name), now);
            return true;
    }
}

void RecordDecoder::Finish() {
    m_Functions.Finish(m_Clock.Now());
    m_Events.Finish();
    constexpr std::uint64_t kLastJobQBits = 100;
    std::uint64_t end = m_Switches.JobStart() + kLastJobQBits;
    if (m_List && !m_List->m_CustomJobs.empty()) {
        const McuJob& last = m_List->m_CustomJobs.back();
        const std::uint64_t seen = std::max(last.m_StartTime, last.m_EndTime);
        if (seen > m_Switches.JobStart()) end = seen;
    }
    m_Switches.CloseLast(end);
    const std::uint64_t logEnd = m_List && !m_List->empty() ? m_List->back().m_EndTime : 0;
    m_Sampler.Finish(logEnd, m_Switches.Running()->m_Name.Text());
}

void RecordDecoder::HandOver() {
    for (const JobName& name : m_JobNames.All()) {
        if (name.m_Jobs == 0) continue;
        m_List->m_JobNames[name.m_Name.Text()] = name.m_Jobs;
        if (name.m_Name.Text() == "IDLE") m_List->m_IdleTotal = name.m_Total;
    }
    if (!m_List->empty()) m_List->m_EndTime = m_List->back().m_EndTime;
    m_List->m_CustomShown.assign(m_List->m_CustomNames.size(), true);
    m_List->m_SourceMarkShown.assign(m_List->m_SourceMarkNames.size(), true);
}

LogCensus RecordDecoder::Census() const {
    LogCensus census;
    census.m_Jobs = static_cast<std::uint64_t>(m_Switches.Jobs());
    census.m_Samples = m_Sampler.Samples();
    m_Functions.Count(census);
    m_Events.Count(census);
    return census;
}

const IdMeaning& RecordDecoder::Learn(std::uint32_t word) {
    static constexpr IdMeaning kNothing;
    const RecordId id(word);
    IdMeaning meaning;
    meaning.m_Id = word;
    meaning.m_IsUsed = true;
    meaning.m_Kind = id.Kind(m_Setup.m_Form == LogForm::kHeaderless);
    switch (meaning.m_Kind) {
        // Ids without a meaning come in any number: they are not kept.
        case RecordKind::kIgnored:
            return kNothing;
        case RecordKind::kTask:
            NameTask(meaning, id, word);
            break;
        case RecordKind::kIrq:
            NameIrq(meaning, id);
            break;
        case RecordKind::kReturn:
            meaning.m_KeepsDepth = true;
            meaning.m_Step = -1;
            break;
        case RecordKind::kResume:
            break;
        case RecordKind::kFunctionEntry:
        case RecordKind::kFunctionExit:
            meaning.m_Name = m_Functions.Intern(id.ShortName());
            break;
        case RecordKind::kSourceMark:
            meaning.m_Name = m_Events.InternMark(id.ShortName());
            break;
        case RecordKind::kHardwareStart:
        case RecordKind::kHardwareEnd:
            meaning.m_Name = m_Events.InternHardware(id.ShortName());
            break;
    }
    return m_Ids.Add(meaning);
}

void RecordDecoder::NameIrq(IdMeaning& meaning, RecordId id) {
    const auto number = static_cast<int>(id.IrqNumber());
    const auto found = m_Setup.m_Names.m_Irqs.find(number);
    JobName* name = m_JobNames.Intern(found != m_Setup.m_Names.m_Irqs.end()
                                          ? found->second
                                          : FormatText("IRQ0x%x", static_cast<unsigned>(number)));
    meaning.m_Name = name;
    meaning.m_Below = name;
    meaning.m_KeepsDepth = true;
    meaning.m_Step = 1;
}

void RecordDecoder::NameTask(IdMeaning& meaning, RecordId id, std::uint32_t word) {
    std::string text = id.TaskName();
    if (m_Setup.m_Names.m_HasTaskNumbers && m_Setup.m_Form != LogForm::kHeaderless) {
        const auto found = m_Setup.m_Names.m_Tasks.find(static_cast<int>(word));
        if (found != m_Setup.m_Names.m_Tasks.end()) text = found->second;
    }
    JobName* name = m_JobNames.Intern(text);
    meaning.m_Name = name;
    meaning.m_Below = m_Switches.Below(name);
}

}  // namespace vesk
