#include "log/McuJobList.h"

#include <algorithm>

#include "log/ItemType.h"
#include "log/JobSearch.h"
#include "log/LittleEndian.h"
#include "log/NameTotals.h"

namespace {

std::uint64_t StartOf(const McuJob& job) {
    return job.m_StartTime;
}

// Counts a name; true for a new one.
bool CountName(std::map<std::string, int>& names, const std::string& name) {
    return ++names[name] == 1;
}

std::uint32_t Unsigned(int value) {
    return static_cast<std::uint32_t>(value);
}

}  // namespace

bool McuJobList::registerDBCallback(FormatLookup formats, EnumLookup enums) {
    if (!formats || !enums) return false;
    m_GetDataFormat = formats;
    m_GetEnumContent = enums;
    m_DBReady = true;
    return true;
}

bool McuJobList::GetJob(std::int32_t index, McuJob& job) const {
    if (index < 0 || index >= GetSize()) return false;
    job = (*this)[static_cast<std::size_t>(index)];
    return true;
}

bool McuJobList::Search(std::uint64_t time, int& index) const {
    return vesk::FindBefore(*this, StartOf, time, m_EndTime, index);
}

bool McuJobList::SearchOtherJob(std::uint64_t time, int& index,
                                const std::vector<McuJob>* jobs) const {
    return vesk::FindBefore(*jobs, StartOf, time, m_EndTime, index);
}

bool McuJobList::SearchExtraInfo(std::uint64_t time, int& index) const {
    return vesk::FindBefore(
        m_ExtraInfos, [](const ExtraInfoRecord& record) { return record.m_Time; }, time, m_EndTime,
        index);
}

int McuJobList::GetPDIInfoIndex(std::int32_t jobIndex) const {
    const auto found = std::lower_bound(
        m_PDIInfos.begin(), m_PDIInfos.end(), jobIndex,
        [](const PDIInfo& loss, std::int32_t index) { return loss.m_JobIndex < index; });
    if (found == m_PDIInfos.end() || found->m_JobIndex != jobIndex) return -1;
    return static_cast<int>(found - m_PDIInfos.begin());
}

void McuJobList::DurationTotal(std::map<std::string, std::uint64_t>& totals, std::uint64_t start,
                               std::uint64_t end) const {
    totals.clear();
    if (empty() || start == end) return;
    int first = 0;
    int last = 0;
    Search(start, first);
    Search(end, last);
    // The overhead is a signed setting that is compared as an unsigned one: a negative overhead
    // is above every duration.
    const auto overhead = static_cast<std::uint64_t>(std::int64_t{m_TaskOverhead});
    vesk::NameTotals sums;
    for (int i = first; i <= last; ++i) {
        const McuJob& job = (*this)[static_cast<std::size_t>(i)];
        const std::uint64_t from = std::max(job.m_StartTime, start);
        const std::uint64_t to = std::min(job.m_EndTime, end);
        if (to <= from) continue;
        std::uint64_t duration = to - from;
        // The switch into a job that the range cuts lies outside of the range.
        if (m_StatDeductOverhead == 1 && job.m_StartTime >= start)
            duration = duration > overhead ? duration - overhead : 0;
        sums.Add(job.m_Name, duration);
    }
    sums.MoveTo(totals);
    if (m_StatIncludeIdle == 0) totals.erase("IDLE");
}

void McuJobList::DurationTotalCustomJobCS(std::map<std::uint64_t, McuJob>& pieces,
                                          std::string jobName, std::string functionName,
                                          std::uint64_t start, std::uint64_t end,
                                          bool lastOfCall) const {
    pieces.clear();
    if (empty() || start == end) return;
    int first = 0;
    int last = 0;
    Search(start, first);
    Search(end, last);
    for (int i = first; i <= last; ++i) {
        const McuJob& job = (*this)[static_cast<std::size_t>(i)];
        if (job.m_Name != jobName) continue;
        const std::uint64_t from = std::max(job.m_StartTime, start);
        std::uint64_t to = std::min(job.m_EndTime, end);
        if (to < from) to = i == GetSize() - 1 ? m_EndTime : job.m_StartTime;
        McuJob piece = job;
        piece.m_Name = functionName;
        piece.m_StartTime = from;
        piece.m_EndTime = to;
        piece.m_Flags = 0;
        pieces[from] = std::move(piece);
    }
    if (pieces.empty()) return;
    pieces.begin()->second.m_Flags = kBeganAtEntry;
    if (lastOfCall) pieces.rbegin()->second.m_Flags |= kClosedLastCall;
}

void McuJobList::Clear() {
    McuJobList fresh;
    fresh.m_GetDataFormat = m_GetDataFormat;
    fresh.m_GetEnumContent = m_GetEnumContent;
    fresh.m_DBReady = m_DBReady;
    fresh.m_SplitUnit = m_SplitUnit;
    fresh.m_SplitChoice = m_SplitChoice;
    fresh.m_RangeChooser = m_RangeChooser;
    fresh.m_Progress = m_Progress;
    // The vectors keep their memory: a log that is read again fills it anew.
    *this = fresh;
}

void McuJobList::Insert(const McuJob& job) {
    push_back(job);
    m_EndTime = job.m_EndTime;
    CountName(m_JobNames, job.m_Name);
    if (job.m_EndTime > job.m_StartTime && job.m_Name == "IDLE")
        m_IdleTotal += job.m_EndTime - job.m_StartTime;
}

void McuJobList::Insert(std::string name, std::uint64_t start, std::uint64_t end) {
    Insert(McuJob(std::move(name), start, end));
}

void McuJobList::InsertHWJob(const McuJob& job) {
    m_HWJobs[job.m_Name].push_back(job);
}

void McuJobList::InsertCustomJob(const McuJob& job, std::uint64_t time) {
    m_CustomJobs.push_back(job);
    const bool hasEnd = job.m_EndTime > job.m_StartTime;
    const std::uint64_t duration = (hasEnd ? job.m_EndTime : time) - job.m_StartTime;
    const auto [entry, isNew] = m_CustomNames.try_emplace(job.m_Name, 0);
    entry->second += duration;
    if (isNew) m_CustomShown.push_back(true);
}

void McuJobList::InsertTmpCustomJobCS(const McuJob& job) {
    m_TmpCustomJobsCS[job.m_Name].push_back(job);
}

void McuJobList::InsertCustomJobCS(const McuJob& job) {
    m_CustomJobsCS[job.m_Name].push_back(job);
}

void McuJobList::InsertSourceMark(const McuJob& job) {
    m_SourceMarks.push_back(job);
    if (CountName(m_SourceMarkNames, job.m_Name)) m_SourceMarkShown.push_back(true);
}

void McuJobList::InsertExtraInfo(char* previous, char* current, std::uint64_t time,
                                 std::uint64_t lastTime, std::string& name) {
    StoreSample(reinterpret_cast<const std::uint8_t*>(previous),
                reinterpret_cast<const std::uint8_t*>(current), time, lastTime, name);
}

void McuJobList::InsertExtraInfo(std::vector<int>& values, std::uint64_t time, std::string& name) {
    StoreSample(values, time, name);
}

void McuJobList::StoreSample(const std::uint8_t* previous, const std::uint8_t* current,
                             std::uint64_t time, std::uint64_t lastTime, const std::string& name) {
    ExtraInfoRecord& record = m_ExtraInfos.emplace_back();
    record.m_Time = lastTime;
    record.m_Name = name;
    record.m_Values.resize(static_cast<std::size_t>(m_ExtraInfoNum));
    const auto duration = static_cast<std::uint32_t>(time - lastTime);
    int* values = record.m_Values.data();
    for (const ExtraParsingInfo& info : m_ParsingInfos) {
        if (!info.m_Valid) continue;
        const std::uint8_t* data = previous + info.m_Offset;
        if (info.m_Type == vesk::kExtraInfoItem) {
            for (std::uint32_t i = 0; i < info.m_InfoNum; ++i)
                values[i] = static_cast<int>(vesk::Word32At(data + 4 * i));
        } else if (info.m_Type == vesk::kTwoRatiosItem) {
            const std::uint32_t whole = vesk::Word32At(data);
            for (std::uint32_t i = 0; i < info.m_InfoNum; ++i)
                values[i] = whole == 0
                                ? 0
                                : static_cast<int>(vesk::Word32At(data + 4 + 4 * i) * 100 / whole);
        } else if (info.m_InfoNum > 0) {
            const std::uint32_t* parsed = m_IsKaldo
                                              ? info.m_ParsingInfoKaldo(previous, current, duration)
                                              : info.m_ParsingInfo(data, duration);
            for (std::uint32_t i = 0; parsed && i < info.m_InfoNum; ++i)
                values[i] = static_cast<int>(parsed[i]);
        }
        values += info.m_InfoNum;
    }
    WidenExtraRange(record.m_Values);
}

void McuJobList::StoreSample(const std::vector<int>& values, std::uint64_t time,
                             const std::string& name) {
    ExtraInfoRecord& record = m_ExtraInfos.emplace_back();
    record.m_Time = time;
    record.m_Name = name;
    const auto count = static_cast<std::size_t>(m_ExtraInfoNum);
    record.m_Values.assign(values.begin(), values.begin() + static_cast<std::ptrdiff_t>(
                                                                std::min(count, values.size())));
    record.m_Values.resize(count);
    WidenExtraRange(record.m_Values);
}

void McuJobList::WidenExtraRange(const std::vector<int>& values) {
    for (std::size_t i = 0; i < values.size(); ++i) {
        if (Unsigned(m_ExtraMax[i]) < Unsigned(values[i])) m_ExtraMax[i] = values[i];
        if (Unsigned(m_ExtraMin[i]) > Unsigned(values[i])) m_ExtraMin[i] = values[i];
    }
}
