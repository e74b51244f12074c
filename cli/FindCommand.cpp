#include "cli/FindCommand.h"

#include <algorithm>

#include "cli/ListCommands.h"
#include "cli/WantedNames.h"
#include "log/McuJobList.h"

namespace vesk {

namespace {

constexpr Column::Audience kPeople = Column::Audience::kPeople;

std::vector<Column> FindColumns(const McuJobList&) {
    return {
        {"start"},    {"end"}, {"start/ms", 12, kPeople}, {"length/us", 10, kPeople}, {"duration"},
        {"frame", 8}, {"name"}};
}

void WriteHit(TableWriter& table, const McuJob& record, std::uint64_t end) {
    const std::uint64_t duration = end - record.m_StartTime;
    table.Number(record.m_StartTime).Number(record.m_EndTime);
    table.Milliseconds(record.m_StartTime).Microseconds(duration);
    table.Number(duration).Number(record.m_TimeStamp).Name(record.m_Name).EndRow();
}

void WriteTasks(WantedNames& names, const McuJobList& list, const RecordFilter& filter,
                TableWriter& table) {
    names.Choose(list.m_JobNames);
    for (std::size_t i = 0; i < list.size(); ++i) {
        const std::uint64_t end = EndOf(list, i, list.m_EndTime);
        if (names.Has(list[i].m_Name) && filter.WantsTime(list[i].m_StartTime, end))
            WriteHit(table, list[i], end);
    }
}

// Of several functions in one order.
void WriteCalls(WantedNames& names, const McuJobList& list, const RecordFilter& filter,
                TableWriter& table) {
    struct Hit {
        const McuJob* m_Call;
        std::uint64_t m_End;
    };
    std::vector<Hit> hits;
    names.Choose(list.m_CustomJobsCS);
    for (const auto& [name, calls] : list.m_CustomJobsCS) {
        for (std::size_t i = 0; names.Has(name) && i < calls.size(); ++i) {
            const std::uint64_t end = EndOf(calls, i, list.m_EndTime);
            if (filter.WantsTime(calls[i].m_StartTime, end)) hits.push_back({&calls[i], end});
        }
    }
    std::stable_sort(hits.begin(), hits.end(), [](const Hit& a, const Hit& b) {
        return a.m_Call->m_StartTime < b.m_Call->m_StartTime;
    });
    for (const Hit& hit : hits) WriteHit(table, *hit.m_Call, hit.m_End);
}

void WriteMarks(WantedNames& names, const McuJobList& list, const RecordFilter& filter,
                TableWriter& table) {
    names.Choose(list.m_SourceMarkNames);
    for (const McuJob& mark : list.m_SourceMarks)
        if (names.Has(mark.m_Name) && filter.WantsTime(mark.m_StartTime, mark.m_StartTime))
            WriteHit(table, mark, mark.m_StartTime);
}

}  // namespace

ExitCode RunFind(const Options& options, Terminal& terminal) {
    const FindOptions& find = options.m_Find;
    const auto& name = find.m_Task ? find.m_Task : find.m_Function ? find.m_Function : find.m_Label;
    const auto write = find.m_Task ? WriteTasks : find.m_Function ? WriteCalls : WriteMarks;
    WantedNames names(name.value_or(""), find.m_IsRegex);
    const auto writeRows = [&](const McuJobList& list, const RecordFilter& filter,
                               TableWriter& table) { write(names, list, filter, table); };
    return RunList(options, terminal, {FindColumns, writeRows});
}

}  // namespace vesk
