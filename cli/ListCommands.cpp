#include "cli/ListCommands.h"

#include <algorithm>

#include "cli/LogOpener.h"

namespace vesk {

namespace {

constexpr Column::Audience kPeople = Column::Audience::kPeople;

// --- Jobs, segments, calls and hardware events -------------------------------------------------

std::vector<Column> TimeColumns() {
    return {{"start"}, {"end"}, {"start/ms", 12, kPeople}, {"length/us", 10, kPeople}};
}

std::vector<Column> TimeColumnsAnd(std::vector<Column> more) {
    std::vector<Column> columns = TimeColumns();
    columns.insert(columns.end(), more.begin(), more.end());
    return columns;
}

std::vector<Column> JobColumns(const McuJobList&) {
    std::vector<Column> columns = TimeColumnsAnd({{"frame", 8}, {"count", 10}, {"name"}});
    columns.insert(columns.begin(), {"index", 8});
    return columns;
}

std::vector<Column> FunctionColumns(const McuJobList&) {
    return TimeColumnsAnd({{"frame", 8}, {"count", 10}, {"flags", 5}, {"name"}});
}

std::vector<Column> HardwareColumns(const McuJobList&) {
    return TimeColumnsAnd({{"frame", 8}, {"count", 10}, {"name"}});
}

void WriteTimes(TableWriter& table, const McuJob& record, std::uint64_t end) {
    table.Number(record.m_StartTime).Number(record.m_EndTime);
    table.Milliseconds(record.m_StartTime).Microseconds(end - record.m_StartTime);
}

// Calls writeRow for each record that the filter lets through, with its index and its end.
template <class WriteRow>
void ForEachWanted(const McuJobList& list, const std::vector<McuJob>& records,
                   const RecordFilter& filter, WriteRow writeRow) {
    for (std::size_t i = 0; i < records.size(); ++i) {
        const std::uint64_t end = EndOf(records, i, list.m_EndTime);
        if (filter.Wants(records[i].m_Name, records[i].m_StartTime, end)) writeRow(i, end);
    }
}

void WriteJobRows(const McuJobList& list, const RecordFilter& filter, TableWriter& table) {
    ForEachWanted(list, list, filter, [&](std::size_t index, std::uint64_t end) {
        const McuJob& job = list[index];
        table.Number(index);
        WriteTimes(table, job, end);
        table.Number(job.m_TimeStamp).Number(job.m_TimeCount).Name(job.m_Name).EndRow();
    });
}

void WriteFunctionRows(const McuJobList& list, const std::vector<McuJob>& records,
                       const RecordFilter& filter, TableWriter& table) {
    ForEachWanted(list, records, filter, [&](std::size_t index, std::uint64_t end) {
        const McuJob& record = records[index];
        WriteTimes(table, record, end);
        table.Number(record.m_TimeStamp).Number(record.m_TimeCount);
        table.Number(record.m_Flags).Name(record.m_Name).EndRow();
    });
}

void WriteSegmentRows(const McuJobList& list, const RecordFilter& filter, TableWriter& table) {
    WriteFunctionRows(list, list.m_CustomJobs, filter, table);
}

void WriteCallRows(const McuJobList& list, const RecordFilter& filter, TableWriter& table) {
    for (const auto& [name, calls] : list.m_CustomJobsCS)
        WriteFunctionRows(list, calls, filter, table);
}

void WriteHardwareRows(const McuJobList& list, const RecordFilter& filter, TableWriter& table) {
    for (const auto& [name, events] : list.m_HWJobs)
        ForEachWanted(list, events, filter, [&](std::size_t index, std::uint64_t end) {
            const McuJob& event = events[index];
            WriteTimes(table, event, end);
            table.Number(event.m_TimeStamp).Number(event.m_TimeCount).Name(event.m_Name).EndRow();
        });
}

// --- Marks -------------------------------------------------------------------------------------

std::vector<Column> MarkColumns(const McuJobList&) {
    return {{"time"}, {"time/ms", 12, kPeople}, {"frame", 8}, {"count", 10}, {"name"}};
}

void WriteMarkRows(const McuJobList& list, const RecordFilter& filter, TableWriter& table) {
    for (const McuJob& mark : list.m_SourceMarks) {
        if (!filter.Wants(mark.m_Name, mark.m_StartTime, mark.m_StartTime)) continue;
        table.Number(mark.m_StartTime).Milliseconds(mark.m_StartTime);
        table.Number(mark.m_TimeStamp).Number(mark.m_TimeCount).Name(mark.m_Name).EndRow();
    }
}

// --- Samples of the extra values ---------------------------------------------------------------

// The log names its values as it likes; a column's name is there once.
std::string UnusedName(const std::vector<Column>& columns, const std::string& wanted) {
    const auto isUsed = [&](const std::string& name) {
        return std::any_of(columns.begin(), columns.end(),
                           [&](const Column& column) { return column.m_Name == name; });
    };
    std::string name = wanted;
    for (int number = 2; isUsed(name); ++number) name = wanted + '#' + std::to_string(number);
    return name;
}

std::vector<Column> SampleColumns(const McuJobList& list) {
    std::vector<Column> columns = {{"name"}, {"time"}, {"time/ms", 12, kPeople}};
    for (const CString& name : list.m_ExtraNames)
        columns.push_back({UnusedName(columns, name.Str())});
    std::rotate(columns.begin(), columns.begin() + 1, columns.end());
    return columns;
}

// A log without extra values has one sample all the same, which shows nothing.
void WriteSampleRows(const McuJobList& list, const RecordFilter& filter, TableWriter& table) {
    const std::vector<ExtraInfoRecord>& samples = list.m_ExtraInfos;
    for (std::size_t i = 0; i < samples.size() && list.m_ExtraInfoNum > 0; ++i) {
        const ExtraInfoRecord& sample = samples[i];
        const std::uint64_t end = i + 1 < samples.size() ? samples[i + 1].m_Time : list.m_EndTime;
        if (!filter.Wants(sample.m_Name, sample.m_Time, end)) continue;
        table.Number(sample.m_Time).Milliseconds(sample.m_Time);
        for (const int value : sample.m_Values) table.Number(static_cast<std::uint32_t>(value));
        table.Name(sample.m_Name).EndRow();
    }
}

// --- Losses ------------------------------------------------------------------------------------

std::vector<Column> LossColumns(const McuJobList&) {
    return TimeColumnsAnd({{"lost", 10}, {"job", 8}, {"name"}});
}

// A loss that nothing follows has no job for its gap; it lies at the log's end.
void WriteLossRows(const McuJobList& list, const RecordFilter& filter, TableWriter& table) {
    const McuJob logEnd({}, list.m_EndTime, list.m_EndTime);
    for (const PDIInfo& loss : list.m_PDIInfos) {
        const auto index = static_cast<std::size_t>(loss.m_JobIndex);
        const bool hasGap = index < list.size() && list[index].m_Name == "%Lost";
        const McuJob& gap = hasGap ? list[index] : logEnd;
        const std::uint64_t end = hasGap ? EndOf(list, index, list.m_EndTime) : list.m_EndTime;
        if (!filter.Wants(loss.m_Name, gap.m_StartTime, end)) continue;
        WriteTimes(table, gap, end);
        table.Number(loss.m_LostSize).Number(loss.m_JobIndex).Name(loss.m_Name).EndRow();
    }
}

}  // namespace

ExitCode RunList(const Options& options, Terminal& terminal, const Listing& listing) {
    OutputFile out(options.m_Output.m_Path, options.m_Output.WhatToDoWithFiles());
    LogOpener log(options.m_Input, terminal);
    const ExitCode code = log.Read();
    log.Explain();
    if (code == ExitCode::kRefused) return code;
    TableWriter table(out.Buffer(), options.m_Format, listing.m_Columns(log.List()));
    listing.m_WriteRows(log.List(), RecordFilter(options.m_Filter), table);
    table.Finish();
    out.Commit();
    const bool nothing = code == ExitCode::kComplete && table.Rows() == 0;
    return nothing ? ExitCode::kNothingMatched : code;
}

ExitCode RunJobs(const Options& options, Terminal& terminal) {
    return RunList(options, terminal, {JobColumns, WriteJobRows});
}

ExitCode RunCalls(const Options& options, Terminal& terminal) {
    return RunList(options, terminal, {FunctionColumns, WriteCallRows});
}

ExitCode RunSegments(const Options& options, Terminal& terminal) {
    return RunList(options, terminal, {FunctionColumns, WriteSegmentRows});
}

ExitCode RunMarks(const Options& options, Terminal& terminal) {
    return RunList(options, terminal, {MarkColumns, WriteMarkRows});
}

ExitCode RunHardware(const Options& options, Terminal& terminal) {
    return RunList(options, terminal, {HardwareColumns, WriteHardwareRows});
}

ExitCode RunSamples(const Options& options, Terminal& terminal) {
    return RunList(options, terminal, {SampleColumns, WriteSampleRows});
}

ExitCode RunLosses(const Options& options, Terminal& terminal) {
    return RunList(options, terminal, {LossColumns, WriteLossRows});
}

}  // namespace vesk
