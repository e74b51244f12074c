#include "tests/support/PlainDecoder.h"

#include <algorithm>
#include <cstring>

#include "platform/Text.h"

namespace vesk {

namespace {

std::map<int, std::string> TaskNames(TargetDatabase& database) {
    std::map<int, std::string> names;
    if (const EnumContent* tasks = database.FindEnum("module_type"))
        for (const auto& [name, value] : tasks->Entries()) names.emplace(value, name);
    return names;
}

std::string WithoutAffixes(std::string name) {
    if (name.starts_with("Enum_")) name.erase(0, 5);
    if (name.ends_with("_CODE")) name.erase(name.size() - 5);
    return name;
}

}  // namespace

std::map<int, std::string> PlainIrqNames(TargetDatabase& database, const PlainOptions& options,
                                         PlainLog& log, std::string& tickName) {
    std::map<int, std::string> names;
    for (int i = 0; i < 128; ++i) names[i] = FormatText("IRQ0x%02x", static_cast<unsigned>(i));
    if (const EnumContent* codes = database.FindEnum("Irq_Code_Def_Enum")) {
        int end = 0;
        codes->GetValue("Enum_IRQ_Code_End", end);
        for (int i = 0; i < end && i < 128; ++i) {
            std::string name;
            if (codes->GetName(i, name)) names[i] = WithoutAffixes(name);
        }
        int tick = 0;
        if (!options.capability.LogsMicroseconds() && codes->GetValue("Enum_IRQ_CTIRQ1_CODE", tick))
            log.tickIRQ = tick;
    }
    if (names.count(log.tickIRQ)) tickName = names[log.tickIRQ];
    return names;
}

PlainDecoder::PlainDecoder(PlainFile& file, const PlainHeader& header, bool withHeader,
                           TargetDatabase& database, const PlainOptions& options, PlainLog& log)
    : m_File(file),
      m_Info(header.m_Info),
      m_Items(header.m_Items),
      m_WithHeader(withHeader),
      m_Options(options),
      m_Log(log) {
    m_IrqNames = PlainIrqNames(database, options, log, m_TickName);
    m_TaskNames = TaskNames(database);
    m_Log.extraInfoNum = static_cast<std::int32_t>(m_Log.extraNames.size());
    m_Wrap = m_Info.m_Wrap;
    m_Segment.m_TimeStamp = -1;
    // A record in packets that is longer than the file never comes; what it would hold stays 0.
    const std::uint64_t fileSize = static_cast<std::uint64_t>(file.Size());
    const std::size_t size =
        m_Info.m_IsKaldo ? std::min<std::uint64_t>(m_Info.m_JobSize, fileSize) : m_Info.m_ExtraSize;
    m_Current.assign(size, 0);
    m_Previous.assign(size, 0);
}

bool PlainDecoder::Decode(std::int64_t end) {
    Framed framed = Framed::kRecord;
    while (framed == Framed::kRecord) {
        m_Switched = false;
        m_Position = m_File.Position();
        if (m_Position > end) break;
        framed = ReadRecord();
        if (framed == Framed::kRecord && FrameFell()) {
            m_Log.error += FormatText(
                "Failed to parse the raw data to get correct time information.                 "
                "              \nCurrrent file position: %lld, job's size: %d, last_timestamp: "
                "0x%X, timestamp: 0x%X",
                static_cast<long long>(m_Position), static_cast<int>(m_Info.m_JobSize),
                static_cast<unsigned>(m_LastFrame), static_cast<unsigned>(m_Frame));
            framed = Framed::kError;
        }
        if (framed == Framed::kRecord) TakeRecord();
    }
    Finish();
    return framed != Framed::kError;
}

bool PlainDecoder::FrameFell() const {
    return m_WithHeader && m_Frame < m_LastFrame;
}

// --- Framing -----------------------------------------------------------------------------------

PlainDecoder::Framed PlainDecoder::ReadRecord() {
    return m_Info.m_IsKaldo ? ReadPackets() : ReadPlainRecord();
}

PlainDecoder::Framed PlainDecoder::ReadPlainRecord() {
    return m_File.Bytes(m_Id.data(), 4) && ReadCount() && ReadFields() ? Framed::kRecord
                                                                       : Framed::kEnd;
}

bool PlainDecoder::ReadCount() {
    if (!m_Info.m_IsTQCNT) return m_File.Field(m_Count);
    std::uint16_t count = 0, frameLength = 0;
    if (!m_File.Field(count) || !m_File.Field(frameLength)) return false;
    m_Count = count;
    m_Wrap = frameLength;
    return true;
}

bool PlainDecoder::ReadFields() {
    const std::size_t before = m_WithHeader ? 0 : m_Info.m_FrameNoOffset - 8;
    if (!ReadExtraData(0, before)) return false;
    if (m_Info.m_HasFrameNo) {
        if (!m_File.Field(m_Frame)) return false;
    } else if (m_WithHeader) {
        ComputeFrame();
    }
    return ReadExtraData(before, m_Current.size());
}

bool PlainDecoder::ReadExtraData(std::size_t from, std::size_t to) {
    for (std::size_t i = from; i < to; i += 4)
        if (!m_File.Bytes(&m_Current[i], std::min<std::size_t>(4, to - i))) return false;
    return true;
}

void PlainDecoder::ComputeFrame() {
    std::uint32_t& base = m_Info.m_FrameBaseCount;
    const std::uint32_t ratio = m_Info.m_TimeStampRatio;
    if (m_First) m_Frame = static_cast<std::int32_t>(m_Info.m_FirstFrameNo);
    const std::uint32_t x = m_Count >= base ? m_Count - base : m_Wrap - base + m_Count;
    const std::uint32_t q = ratio == 0 ? 0 : x / ratio;
    m_Frame = static_cast<std::int32_t>(static_cast<std::uint32_t>(m_Frame) + q);
    base += q * ratio;
    if (m_Wrap != 0) base %= m_Wrap;
}

PlainDecoder::Framed PlainDecoder::ReadPackets() {
    std::int32_t pieces = 0;
    std::uint64_t bytes = 0;
    while (pieces < m_Info.m_PacketsPerJob) {
        std::uint8_t id = 0, unused = 0;
        std::int8_t sequence = 0;
        std::uint32_t length = 0;
        if (!m_File.Field(id) || !m_File.Field(sequence) || !m_File.Field(unused) ||
            !m_File.Field(length))
            return Framed::kEnd;
        if (id == 0xC5) {
            TakeLoss(length);
            pieces = 0;
            bytes = 0;
        } else if (id != 0xC8) {
            m_Log.error += "Incorrect Kaldo VESK file. Incorrect packet id.";
            return Framed::kError;
        } else {
            const Framed framed = ReadPayload(sequence, length, pieces, bytes);
            if (framed != Framed::kRecord) return framed;
        }
    }
    if (bytes != m_Info.m_JobSize) {
        m_Log.error += FormatText("Incorrect VESK data. Header job size: %d, record size: %d",
                                  static_cast<int>(m_Info.m_JobSize), static_cast<int>(bytes));
        return Framed::kError;
    }
    TakePacketFields();
    return Framed::kRecord;
}

PlainDecoder::Framed PlainDecoder::ReadPayload(std::int8_t sequence, std::uint32_t length,
                                               std::int32_t& pieces, std::uint64_t& bytes) {
    if (bytes + length > m_Info.m_JobSize) {
        m_Log.error += "Incorrect Kaldo VESK file. Incorrect packet length.";
        return Framed::kError;
    }
    if (bytes + length > m_Current.size()) return Framed::kEnd;  // longer than the file
    if (!m_File.Bytes(m_Current.data() + bytes, length)) return Framed::kEnd;
    if (sequence == pieces) {
        ++pieces;
        bytes += length;
    } else {
        pieces = 0;
        bytes = 0;
    }
    return Framed::kRecord;
}

void PlainDecoder::TakeLoss(std::uint32_t length) {
    m_LostPending = true;
    const auto jobs = static_cast<std::int32_t>(m_Log.jobs.size());
    if (!m_Log.pdi.empty() && m_Log.pdi.back().m_JobIndex == jobs)
        m_Log.pdi.back().m_LostSize += length;
    else
        m_Log.pdi.push_back({m_JobName, length, jobs});
    m_IrqStack = {};
    m_Functions = {};
    m_Running.clear();
}

void PlainDecoder::TakePacketFields() {
    const std::uint8_t* record = m_Current.data();
    std::memcpy(m_Id.data(), record + m_Info.m_ContextIdOffset, 4);
    std::memcpy(&m_Count, record + m_Info.m_KaldoCountOffset, 4);
    m_Frame = 0;
    if (m_Info.m_HasKaldoFrameNo) std::memcpy(&m_Frame, record + m_Info.m_KaldoFrameOffset, 4);
}

// --- Time and dispatch -------------------------------------------------------------------------

void PlainDecoder::TakeRecord() {
    if (m_First) StartHere();
    if (IsIgnored()) return;
    if (m_First && m_Count != 0) m_First = false;
    m_Now += Delta();
    if (!Dispatch()) return;
    m_LastCount = m_Count;
    m_LastFrame = m_Frame;
    StoreSample();
}

void PlainDecoder::StartHere() {
    m_LastCount = m_Count == 0 ? 0 : m_Count - 1;
    if (m_WithHeader || m_Info.m_HasFrameNo) m_LastFrame = m_Frame;
    m_JobFrame = m_Frame;
    m_Segment.m_TimeStamp = m_Frame;
    const std::size_t size = std::min<std::size_t>(m_Info.m_ExtraSize, m_Previous.size());
    std::copy_n(m_Current.begin(), size, m_Previous.begin());
}

bool PlainDecoder::IsIgnored() const {
    const auto [b0, b1, b2, b3] = m_Id;
    if (b0 >= 0xE0 && b0 <= 0xE4) return false;
    if (m_WithHeader && b0 == 0xBB && b1 == 0xBB && b2 == 0xBB) return b3 != 0xBB;
    if (b2 == 0xAA && b3 == 0xAA) return false;
    return b0 >= 0x80;
}

std::uint32_t PlainDecoder::RawDelta() {
    const bool isFrameKnown = m_WithHeader || m_Info.m_HasFrameNo;
    if (m_Info.m_FrameBased == 0 || m_Frame <= m_LastFrame || !isFrameKnown) {
        if (m_Count >= m_LastCount) return m_Count - m_LastCount;
        return m_Wrap - m_LastCount + m_Count;
    }
    std::uint32_t frames =
        static_cast<std::uint32_t>(m_Frame) - static_cast<std::uint32_t>(m_LastFrame);
    if (m_JobName == m_TickName) {
        if (m_WithHeader && (m_Wrap & 0x8000) != 0) {
            m_Wrap &= ~0x8000U;
            frames -= 1;
        }
        if (m_Count >= m_LastCount) frames -= 1;
    }
    return frames * m_Wrap - m_LastCount + m_Count;
}

std::uint64_t PlainDecoder::Delta() {
    const std::uint32_t delta = RawDelta();
    if (m_Info.m_IsTQCNT) return delta;
    const double quotient = delta / static_cast<double>(m_Info.m_Ratio);
    return static_cast<std::uint32_t>(static_cast<std::uint64_t>(quotient));
}

// False: the record ends there and then.
bool PlainDecoder::Dispatch() {
    const auto [b0, b1, b2, b3] = m_Id;
    if (b0 == 0xE0) {
        EnterFunction(NameText());
    } else if (b0 == 0xE1) {
        return LeaveFunction(NameText());
    } else if (b0 == 0xE2) {
        InsertSourceMark(JobFrom(NameText(), m_Now, m_Now));
    } else if (b0 == 0xE3) {
        StartHardwareEvent(NameText());
    } else if (b0 == 0xE4) {
        EndHardwareEvent(NameText());
    } else {
        m_Switched = true;
        std::string outgoing = m_JobName;
        if (m_LostPending) {
            outgoing = "%Lost";
            CloseCallsAtLoss();
        }
        const bool isReturn = b0 == 0xAA && b2 == 0xAA && b3 == 0xAA;
        const bool isInterrupt = !isReturn && b3 == 0xAA && (b2 == 0xAA || b0 < 0x80);
        const std::string next = isReturn      ? NextAfterReturn()
                                 : isInterrupt ? NextAtInterrupt()
                                               : NextTask();
        if (m_JobStart != 0 && !outgoing.empty()) {
            McuJob job(outgoing, m_JobStart, m_Now);
            job.m_TimeStamp = m_JobFrame;
            job.m_TimeCount = m_JobCount;
            Insert(job);
        }
        EnterNext(next);
    }
    return true;
}

// --- Tasks and interrupts ----------------------------------------------------------------------

void PlainDecoder::CloseCallsAtLoss() {
    m_LostPending = false;
    if (m_Log.jobs.empty()) {
        m_JobStart = m_Now;
        m_Now += 100;
    }
    for (auto& [name, calls] : m_OpenCalls)
        for (McuJob& call : calls) {
            call.m_EndTime = m_Now;
            m_Log.customJobsCS[name].push_back(call);
        }
    m_OpenCalls.clear();
}

std::string PlainDecoder::NextAfterReturn() {
    if (!m_IrqStack.empty()) m_IrqStack.pop();
    if (!m_IrqStack.empty()) return m_IrqStack.top();
    if (!m_WithHeader) return "";
    if (m_Options.capability.HasTaskNumbers() || m_Info.m_ReturnToTask) return m_LastTask;
    return "";
}

std::string PlainDecoder::NextAtInterrupt() {
    const int number = m_Id[1] * 256 + m_Id[0];
    const auto found = m_IrqNames.find(number);
    m_IrqStack.push(found != m_IrqNames.end()
                        ? found->second
                        : FormatText("IRQ0x%x", static_cast<unsigned>(number)));
    return m_IrqStack.top();
}

std::string PlainDecoder::NextTask() {
    m_IrqStack = {};
    if (!m_WithHeader) return IdText();
    if (m_Id[0] == 0xBB) return m_LastTask;
    m_LastTask = IdText();
    if (m_Options.capability.HasTaskNumbers()) {
        std::int32_t number = 0;
        std::memcpy(&number, m_Id.data(), 4);
        const auto found = m_TaskNames.find(number);
        if (found != m_TaskNames.end()) m_LastTask = found->second;
    }
    return m_LastTask;
}

void PlainDecoder::EnterNext(const std::string& next) {
    m_NameAfter = next;
    m_NameBefore = m_JobName;
    m_JobStart = m_Now;
    m_JobName = next;
    m_JobCount = m_Count;
    m_JobFrame = m_Frame;
}

// --- Functions and hardware events -------------------------------------------------------------

void PlainDecoder::EnterFunction(const std::string& name) {
    McuJob call(name, m_Now, 0);
    call.m_Flags = 1;
    m_OpenCalls[name].push_back(call);
    m_Entered = true;
    m_Functions.push(name);
    m_Running[name] += 1;
    StepSegment(name, "");
}

bool PlainDecoder::LeaveFunction(const std::string& name) {
    CloseCall(name);
    m_Entered = false;
    if (!m_Functions.empty()) {
        if (m_Functions.top() != name) return false;
        m_Functions.pop();
        if (m_Running.count(name)) m_Running[name] -= 1;
    }
    StepSegment(m_Functions.empty() ? "" : m_Functions.top(), name);
    return true;
}

void PlainDecoder::CloseCall(const std::string& name) {
    const auto open = m_OpenCalls.find(name);
    if (open == m_OpenCalls.end()) return;
    std::vector<McuJob>& calls = open->second;
    for (std::size_t i = calls.size(); i-- > 0;) {
        if (calls[i].m_EndTime != 0 || !IsOpenCallOfCurrentJob(calls[i].m_StartTime)) continue;
        McuJob closed(calls[i].m_Name, calls[i].m_StartTime, m_Now);
        closed.m_Flags = calls[i].m_Flags | 4;
        m_Log.customJobsCS[name].push_back(closed);
        calls.erase(calls.begin() + static_cast<std::ptrdiff_t>(i));
        return;
    }
}

bool PlainDecoder::IsOpenCallOfCurrentJob(std::uint64_t start) const {
    std::size_t index = 0;
    if (!Search(start, index)) return m_Log.jobs.empty() || start >= m_Log.jobs.back().m_EndTime;
    const McuJob& job = m_Log.jobs[index];
    return start >= job.m_StartTime && start < job.m_EndTime && job.m_Name == m_JobName;
}

// left: the function of an exit record; nothing for an entry.
void PlainDecoder::StepSegment(const std::string& next, const std::string& left) {
    if (m_Segment.m_StartTime != 0 && !m_Segment.m_Name.empty()) {
        McuJob job = m_Segment;
        if (!m_Entered && job.m_Name == left) {
            job.m_Flags |= 2;
            job.m_EndTime = m_Now;
            if (m_Running.count(left) && m_Running[left] <= 0) job.m_Flags |= 4;
        }
        InsertCustomJob(job, m_Now);
    }
    m_Segment = JobFrom(next, m_Now, 0);
    m_Segment.m_Flags = m_Entered ? 1 : 0;
}

void PlainDecoder::StartHardwareEvent(const std::string& name) {
    const auto open = m_OpenEvents.find(name);
    if (open != m_OpenEvents.end()) {
        open->second.m_EndTime = m_Now - 1;
        m_Log.hwJobs[name].push_back(open->second);
    }
    m_OpenEvents[name] = JobFrom(name, m_Now, 0);
}

void PlainDecoder::EndHardwareEvent(const std::string& name) {
    const auto open = m_OpenEvents.find(name);
    if (open == m_OpenEvents.end()) return;
    open->second.m_EndTime = m_Now;
    m_Log.hwJobs[name].push_back(open->second);
    m_OpenEvents.erase(open);
}

// --- Samples of the extra values ---------------------------------------------------------------

void PlainDecoder::StoreSample() {
    if (m_ExtraTime != 0 && m_Log.extraInfoNum > 0)
        InsertSample(m_ExtraTime, m_Switched ? m_NameBefore : m_NameAfter);
    m_ExtraTime = m_Now;
    m_Previous.swap(m_Current);
}

void PlainDecoder::InsertSample(std::uint64_t time, const std::string& name) {
    std::vector<int> values;
    for (const PlainItem& item : m_Items) {
        if (!item.valid) continue;
        if (item.type == 0x103)
            for (std::uint32_t i = 0; i < item.infoNum; ++i)
                values.push_back(static_cast<int>(PreviousWord(item.offset + 4 * i)));
        if (item.type == 0x104)
            for (std::size_t i = 4; i <= 8; i += 4) {
                const std::uint32_t whole = PreviousWord(item.offset);
                const std::uint32_t part = PreviousWord(item.offset + i);
                values.push_back(whole == 0 ? 0 : static_cast<int>(part * 100 / whole));
            }
    }
    for (std::size_t i = 0; i < values.size(); ++i) {
        const auto value = static_cast<unsigned>(values[i]);
        if (static_cast<unsigned>(m_Log.extraMax[i]) < value) m_Log.extraMax[i] = values[i];
        if (static_cast<unsigned>(m_Log.extraMin[i]) > value) m_Log.extraMin[i] = values[i];
    }
    m_Log.extraInfos.push_back({time, values, name});
}

std::uint32_t PlainDecoder::PreviousWord(std::size_t offset) const {
    std::uint32_t word = 0;
    if (offset + 4 <= m_Previous.size()) std::memcpy(&word, &m_Previous[offset], 4);
    return word;
}

// --- The list ----------------------------------------------------------------------------------

void PlainDecoder::Insert(const McuJob& job) {
    m_Log.jobs.push_back(job);
    m_Log.endTime = job.m_EndTime;
    m_Log.jobNames[job.m_Name] += 1;
    if (job.m_EndTime > job.m_StartTime && job.m_Name == "IDLE")
        m_Log.idleTotal += job.m_EndTime - job.m_StartTime;
}

void PlainDecoder::InsertCustomJob(const McuJob& job, std::uint64_t time) {
    m_Log.customJobs.push_back(job);
    const bool isEnded = job.m_EndTime > job.m_StartTime;
    m_Log.customNames[job.m_Name] += (isEnded ? job.m_EndTime : time) - job.m_StartTime;
}

void PlainDecoder::InsertSourceMark(const McuJob& job) {
    m_Log.sourceMarks.push_back(job);
    m_Log.sourceMarkNames[job.m_Name] += 1;
}

bool PlainDecoder::Search(std::uint64_t time, std::size_t& index) const {
    index = 0;
    if (m_Log.jobs.empty()) return false;
    const auto found =
        std::lower_bound(m_Log.jobs.begin(), m_Log.jobs.end(), time,
                         [](const McuJob& job, std::uint64_t t) { return job.m_StartTime < t; });
    if (found == m_Log.jobs.end()) {
        index = m_Log.jobs.size() - 1;
        return time < m_Log.endTime;
    }
    if (found != m_Log.jobs.begin())
        index = static_cast<std::size_t>(found - m_Log.jobs.begin()) - 1;
    return true;
}

void PlainDecoder::Finish() {
    if (!m_Segment.m_Name.empty()) InsertCustomJob(m_Segment, m_Now);
    for (const auto& [name, calls] : m_OpenCalls)
        for (const McuJob& call : calls) m_Log.customJobsCS[name].push_back(call);
    for (auto& [name, calls] : m_Log.customJobsCS)
        std::sort(calls.begin(), calls.end(),
                  [](const McuJob& a, const McuJob& b) { return a.m_StartTime < b.m_StartTime; });
    for (const auto& [name, event] : m_OpenEvents) m_Log.hwJobs[name].push_back(event);
    FinishJob();
    InsertSample(m_ExtraTime, m_JobName);
}

void PlainDecoder::FinishJob() {
    if (m_JobName.empty()) return;
    McuJob job(m_JobName, m_JobStart, m_JobStart + 100);
    job.m_TimeStamp = m_JobFrame;
    job.m_TimeCount = m_JobCount;
    if (!m_Log.customJobs.empty()) {
        const McuJob& last = m_Log.customJobs.back();
        const std::uint64_t end = std::max(last.m_StartTime, last.m_EndTime);
        if (end > m_JobStart) job.m_EndTime = end;
    }
    Insert(job);
}

// --- Texts -------------------------------------------------------------------------------------

std::string PlainDecoder::IdText() const {
    const char* text = reinterpret_cast<const char*>(m_Id.data());
    return std::string(text, strnlen(text, 4));
}

std::string PlainDecoder::NameText() const {
    const char* text = reinterpret_cast<const char*>(m_Id.data()) + 1;
    return std::string(text, strnlen(text, 3));
}

// A job of the current record.
McuJob PlainDecoder::JobFrom(const std::string& name, std::uint64_t start,
                             std::uint64_t end) const {
    McuJob job(name, start, end);
    job.m_TimeStamp = m_Frame;
    job.m_TimeCount = m_Count;
    return job;
}

}  // namespace vesk
