// Compares what the reader makes of real logs with what is known of their recordings: the
// NAME.facts.json beside each NAME.bin, which was worked out without the log (samples/README.md).
// VESK_FACTS_DIR in the environment names a folder with other logs and facts to check instead.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <list>
#include <map>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "database/JsonTargetLoader.h"
#include "log/HostValues.h"
#include "log/McuJobList.h"

namespace vesk {
namespace {

using Json = nlohmann::json;

struct SampleLog {
    std::string m_Name;
    Json m_Facts;
    TargetDatabase m_Target;
    McuJobList m_List;
    std::map<int, std::string> m_IrqNames;
    bool m_Ok = false;
    std::string m_Error;

    bool CountsMicroseconds() const { return !m_List.m_IsTQCNT; }
};

void ReadSample(const std::filesystem::path& facts, SampleLog& log) {
    const std::string base = facts.string().substr(0, facts.string().size() - 11);
    log.m_Name = facts.filename().string();
    std::ifstream stream(facts);
    log.m_Facts = Json::parse(stream);
    ASSERT_TRUE(LoadTargetFromJson(base + ".target.json", log.m_Target, log.m_Error))
        << log.m_Error;

    TargetDatabase::Select(&log.m_Target);
    CurrentHostValues() = HostValues{};
    CurrentHostValues().m_Capability = log.m_Target.m_Capability;
    log.m_List.registerDBCallback(TargetDatabase::LookUpFormat, TargetDatabase::LookUpEnum);
    log.m_Ok = log.m_List.ReadFile(base + ".bin", log.m_Error);
    std::string tickName;
    log.m_List.GetIRQName(log.m_IrqNames, tickName);
    TargetDatabase::Select(nullptr);
}

class SampleFacts : public testing::Test {
protected:
    void SetUp() override {
        const char* other = std::getenv("VESK_FACTS_DIR");
        for (const auto& entry :
             std::filesystem::directory_iterator(other ? other : VESK_SAMPLES_DIR)) {
            if (!entry.path().string().ends_with(".facts.json")) continue;
            SCOPED_TRACE(entry.path());
            ReadSample(entry.path(), m_Logs.emplace_back());
        }
        ASSERT_GE(m_Logs.size(), 3U);
    }

    std::list<SampleLog> m_Logs;
};

double QBitsOf(const Json& microseconds) {
    return microseconds.get<double>() * 13 / 12;
}

// A QBit of rounding is allowed at both ends of every piece of a span. A log that counts
// microseconds drops the remainder of each conversion, so up to a QBit less per interval.
void ExpectSpan(const SampleLog& log, const Json& microseconds, std::uint64_t qbits,
                std::uint64_t pieces, std::uint64_t intervals) {
    const double ends = 2.0 * static_cast<double>(pieces);
    const double dropped = log.CountsMicroseconds() ? static_cast<double>(intervals) : 0.0;
    EXPECT_LE(static_cast<double>(qbits), QBitsOf(microseconds) + ends);
    EXPECT_GE(static_cast<double>(qbits), QBitsOf(microseconds) - ends - dropped);
}

// Records that end an interval behind `from` and not behind `to`.
std::uint64_t IntervalsWithin(const McuJobList& list, std::uint64_t from, std::uint64_t to) {
    const auto behind = [&](std::uint64_t time) {
        return std::upper_bound(
            list.m_ExtraInfos.begin(), list.m_ExtraInfos.end(), time,
            [](std::uint64_t t, const ExtraInfoRecord& sample) { return t < sample.m_Time; });
    };
    return to > from ? static_cast<std::uint64_t>(behind(to) - behind(from)) : 0;
}

// The first record of a log stands at QBit 1.
void ExpectTime(const SampleLog& log, const Json& microseconds, std::uint64_t qbits) {
    ASSERT_GE(qbits, 1U);
    ExpectSpan(log, microseconds, qbits - 1, 1, IntervalsWithin(log.m_List, 0, qbits));
}

std::uint64_t LengthOf(const McuJob& job) {
    return job.m_EndTime > job.m_StartTime ? job.m_EndTime - job.m_StartTime : 0;
}

struct Total {
    int m_Count = 0;
    std::uint64_t m_QBits = 0;
};

// Jobs per name, without the last one of the log, which has no end in the recording.
std::map<std::string, Total> TotalsByName(const McuJobList& list) {
    std::map<std::string, Total> totals;
    for (auto job = list.begin(); job + 1 < list.end(); ++job) {
        Total& total = totals[job->m_Name];
        ++total.m_Count;
        total.m_QBits += LengthOf(*job);
    }
    return totals;
}

int CountOf(const Json& records, const char* kind) {
    return records.value(kind, 0);
}

TEST_F(SampleFacts, EveryRecordIsReadAndTheUnknownOnesAreCounted) {
    for (const SampleLog& log : m_Logs) {
        SCOPED_TRACE(log.m_Name);
        const ReadReport& report = log.m_List.Report();
        const Json& records = log.m_Facts["records"];
        EXPECT_TRUE(log.m_Ok);
        EXPECT_EQ(log.m_Error, "");
        EXPECT_EQ(report.m_Outcome, ReadOutcome::kComplete);
        EXPECT_EQ(report.m_Records + report.m_LossPackets, records["total"]);
        EXPECT_EQ(report.m_LossPackets, CountOf(records, "loss"));
        EXPECT_EQ(report.m_IgnoredRecords, CountOf(records, "other"));
        EXPECT_EQ(report.m_Records - report.m_IgnoredRecords, log.m_Facts["accepted_records"]);
        EXPECT_EQ(report.m_RangeEnd, log.m_Facts["bytes"]);
        EXPECT_EQ(report.m_CutOffBytes, 0U);
        EXPECT_EQ(report.m_DroppedPackets, 0U);
    }
}

TEST_F(SampleFacts, TheFormIsTheOneThatTheFactsName) {
    const std::map<LogForm, const char*> beginnings = {{LogForm::kHeaderless, "no header"},
                                                       {LogForm::kWithHeader, "header"},
                                                       {LogForm::kPackets, "packets"}};
    for (const SampleLog& log : m_Logs) {
        SCOPED_TRACE(log.m_Name);
        const std::string form = log.m_Facts["form"];
        EXPECT_TRUE(form.starts_with(beginnings.at(log.m_List.Report().m_Form))) << form;
        EXPECT_EQ(log.CountsMicroseconds(), form.find("32-bit microsecond") != form.npos);
    }
}

TEST_F(SampleFacts, TimeRunsFromTheFirstRecordToTheLast) {
    for (const SampleLog& log : m_Logs) {
        SCOPED_TRACE(log.m_Name);
        const Json& facts = log.m_Facts;
        ExpectTime(log, facts["first_us"], log.m_List.front().m_StartTime);
        ExpectTime(log, facts["last_us"], log.m_List.m_ExtraInfos.back().m_Time);
        const double ahead = facts["last_us"].get<double>() - facts.value("clock_ahead_us", 0.0);
        EXPECT_NEAR(facts["recording_span_us"], ahead, 0.001);
        EXPECT_EQ(log.m_List.Report().m_UnmatchedExits, facts.value("exits_out_of_order", 0U));
    }
}

TEST_F(SampleFacts, JobsHaveTheRecordingsCountsAndTimes) {
    for (const SampleLog& log : m_Logs) {
        SCOPED_TRACE(log.m_Name);
        const Json& jobs = log.m_Facts["jobs"];
        const std::map<std::string, Total> totals = TotalsByName(log.m_List);
        EXPECT_EQ(log.m_List.GetSize(), jobs["stored"]);
        EXPECT_EQ(totals.size(), jobs["by_name"].size());
        for (const auto& [name, fact] : jobs["by_name"].items()) {
            SCOPED_TRACE(name);
            ASSERT_TRUE(totals.contains(name));
            const Total& total = totals.at(name);
            EXPECT_EQ(total.m_Count, fact["count"]);
            ExpectSpan(log, fact["total_us"], total.m_QBits, fact["count"], fact["intervals"]);
        }
        EXPECT_EQ(log.m_List.back().m_Name, jobs["last"]["name"]);
        ExpectTime(log, jobs["last"]["start_us"], log.m_List.back().m_StartTime);
    }
}

TEST_F(SampleFacts, TheListCountsJobsPerNameAndIdleTimeLikeTheJobsThemselves) {
    for (const SampleLog& log : m_Logs) {
        SCOPED_TRACE(log.m_Name);
        const McuJobList& list = log.m_List;
        std::map<std::string, int> counts;
        std::uint64_t idle = 0;
        for (const McuJob& job : list) {
            ++counts[job.m_Name];
            if (job.m_Name == "IDLE") idle += LengthOf(job);
        }
        EXPECT_EQ(list.m_JobNames, counts);
        EXPECT_EQ(list.m_IdleTotal, idle);
        EXPECT_EQ(list.m_EndTime, list.back().m_EndTime);
    }
}

TEST_F(SampleFacts, InterruptsAreNamedByTheirCodes) {
    for (const SampleLog& log : m_Logs) {
        SCOPED_TRACE(log.m_Name);
        const std::map<std::string, Total> totals = TotalsByName(log.m_List);
        int entries = 0;
        for (const auto& [code, fact] : log.m_Facts["irqs"]["by_code"].items()) {
            SCOPED_TRACE(code);
            const std::string name = fact["name"];
            EXPECT_EQ(log.m_IrqNames.at(std::stoi(code)), name);
            ASSERT_TRUE(totals.contains(name));
            EXPECT_EQ(totals.at(name).m_Count, fact["pieces"]);
            const std::uint64_t intervals = log.m_Facts["jobs"]["by_name"][name]["intervals"];
            ExpectSpan(log, fact["total_us"], totals.at(name).m_QBits, fact["pieces"], intervals);
            entries += fact["entries"].get<int>();
        }
        EXPECT_EQ(entries, log.m_Facts["irqs"]["entries"]);
        EXPECT_EQ(entries, CountOf(log.m_Facts["records"], "irq"));
    }
}

// How the calls of one function ended.
struct Calls {
    int m_Entries = 0;
    int m_Closed = 0;  // by the exit record
    int m_ClosedByLoss = 0;
    int m_Open = 0;
};

Calls CallsOf(const McuJobList& list, const std::string& function) {
    Calls calls;
    for (const McuJob& call : list.m_CustomJobsCS.at(function)) {
        ++calls.m_Entries;
        if (call.m_EndTime == 0) {
            ++calls.m_Open;
        } else {
            ++(call.m_Flags & kClosedLastCall ? calls.m_Closed : calls.m_ClosedByLoss);
        }
    }
    return calls;
}

TEST_F(SampleFacts, CallsEndAsTheRecordingSays) {
    for (const SampleLog& log : m_Logs) {
        SCOPED_TRACE(log.m_Name);
        EXPECT_EQ(log.m_List.m_CustomJobsCS.size(), log.m_Facts["functions"].size());
        for (const auto& [name, fact] : log.m_Facts["functions"].items()) {
            SCOPED_TRACE(name);
            ASSERT_TRUE(log.m_List.m_CustomJobsCS.contains(name));
            const Calls calls = CallsOf(log.m_List, name);
            // Rounding can put a call that begins at the edge of its job outside of it.
            const int edge = fact["of_these_at_edge"];
            EXPECT_EQ(calls.m_Entries, fact["entries"]);
            EXPECT_NEAR(calls.m_Closed, fact["closed"].get<int>(), edge);
            EXPECT_NEAR(calls.m_ClosedByLoss, fact["closed_by_loss"].get<int>(), edge);
            EXPECT_NEAR(calls.m_Open, fact["open_at_end"].get<int>(), edge);
        }
    }
}

// The uninterrupted pieces in which a function was the innermost one.
struct Segments {
    int m_Pieces = 0;
    int m_Entered = 0;
    int m_Left = 0;
    std::uint64_t m_Intervals = 0;
};

std::map<std::string, Segments> SegmentsByName(const McuJobList& list) {
    std::map<std::string, Segments> result;
    const std::vector<McuJob>& all = list.m_CustomJobs;
    for (std::size_t i = 0; i < all.size(); ++i) {
        Segments& segments = result[all[i].m_Name];
        ++segments.m_Pieces;
        segments.m_Entered += all[i].m_Flags & kBeganAtEntry ? 1 : 0;
        segments.m_Left += all[i].m_Flags & kEndedAtExit ? 1 : 0;
        std::uint64_t end = all[i].m_EndTime;
        if (end == 0) end = i + 1 < all.size() ? all[i + 1].m_StartTime : list.m_EndTime;
        segments.m_Intervals += IntervalsWithin(list, all[i].m_StartTime, end);
    }
    return result;
}

TEST_F(SampleFacts, FunctionsAreInnermostAsLongAsInTheRecording) {
    for (const SampleLog& log : m_Logs) {
        SCOPED_TRACE(log.m_Name);
        std::map<std::string, Segments> segments = SegmentsByName(log.m_List);
        int left = 0;
        int exits = 0;
        for (const auto& [name, fact] : log.m_Facts["functions"].items()) {
            SCOPED_TRACE(name);
            ASSERT_TRUE(log.m_List.m_CustomNames.contains(name));
            const Segments& own = segments[name];
            EXPECT_EQ(own.m_Pieces, fact["pieces"]);
            EXPECT_EQ(own.m_Entered, fact["entries"]);
            EXPECT_LE(own.m_Left, fact["exits"]);
            ExpectSpan(log, fact["top_us"], log.m_List.m_CustomNames.at(name), fact["pieces"],
                       own.m_Intervals);
            left += own.m_Left;
            exits += fact["exits"].get<int>();
        }
        EXPECT_EQ(exits, CountOf(log.m_Facts["records"], "leave"));
        // Behind a loss the function stack is empty, and exits of lost entries leave nothing.
        if (!log.m_List.m_PDIInfos.empty()) continue;
        EXPECT_EQ(exits - left, log.m_Facts.value("exits_out_of_order", 0));
    }
}

TEST_F(SampleFacts, MarksHaveTheRecordingsNumbers) {
    for (const SampleLog& log : m_Logs) {
        SCOPED_TRACE(log.m_Name);
        EXPECT_EQ(Json(log.m_List.m_SourceMarkNames), log.m_Facts["marks"]);
        EXPECT_EQ(log.m_List.m_SourceMarks.size(), CountOf(log.m_Facts["records"], "mark"));
    }
}

TEST_F(SampleFacts, HardwareEventsStartEndAndRestartAsInTheRecording) {
    for (const SampleLog& log : m_Logs) {
        SCOPED_TRACE(log.m_Name);
        EXPECT_EQ(log.m_List.m_HWJobs.size(), log.m_Facts["hardware"].size());
        for (const auto& [name, fact] : log.m_Facts["hardware"].items()) {
            SCOPED_TRACE(name);
            ASSERT_TRUE(log.m_List.m_HWJobs.contains(name));
            int restarts = 0;
            int open = 0;
            std::uint64_t total = 0;
            std::uint64_t intervals = 0;
            std::uint64_t previousEnd = 0;
            for (const McuJob& event : log.m_List.m_HWJobs.at(name)) {
                if (previousEnd != 0 && event.m_StartTime == previousEnd + 1) ++restarts;
                if (event.m_EndTime == 0) ++open;
                total += LengthOf(event);
                intervals += IntervalsWithin(log.m_List, event.m_StartTime, event.m_EndTime);
                previousEnd = event.m_EndTime;
            }
            const int starts = static_cast<int>(log.m_List.m_HWJobs.at(name).size());
            EXPECT_EQ(starts, fact["starts"]);
            EXPECT_EQ(restarts, fact["restarts"]);
            EXPECT_EQ(open, fact["open_at_end"]);
            EXPECT_EQ(starts - restarts - open, fact["ends"]);
            ExpectSpan(log, fact["total_us"], total, starts, intervals);
        }
    }
}

struct Series {
    std::uint32_t m_Min = ~0U;
    std::uint32_t m_Max = 0;
    std::uint32_t m_Last = 0;
    double m_Average = 0;   // over time, up to the last record
    double m_Rounding = 0;  // by how much the rounding of times may move the average
};

Series SeriesOf(const SampleLog& log, std::size_t value) {
    const std::vector<ExtraInfoRecord>& samples = log.m_List.m_ExtraInfos;
    const double span = static_cast<double>(samples.back().m_Time - samples.front().m_Time);
    Series series;
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const auto now = static_cast<std::uint32_t>(samples[i].m_Values[value]);
        series.m_Min = std::min(series.m_Min, now);
        series.m_Max = std::max(series.m_Max, now);
        const bool changed = i > 0 && now != series.m_Last;
        if (changed || log.CountsMicroseconds()) {
            series.m_Rounding += 2.0 * std::max(now, series.m_Last) / span;
        }
        series.m_Last = now;
        if (i + 1 == samples.size()) break;
        const auto length = static_cast<double>(samples[i + 1].m_Time - samples[i].m_Time);
        series.m_Average += now * length / span;
    }
    return series;
}

TEST_F(SampleFacts, ExtraValuesFollowTheRecording) {
    for (const SampleLog& log : m_Logs) {
        SCOPED_TRACE(log.m_Name);
        const McuJobList& list = log.m_List;
        const Json& facts = log.m_Facts.value("extra", Json::object());
        EXPECT_EQ(list.m_ExtraInfos.size(), log.m_Facts.value("samples", 1U));
        ASSERT_EQ(list.m_ExtraNames.size(), facts.size());
        for (std::size_t i = 0; i < list.m_ExtraNames.size(); ++i) {
            const std::string& name = list.m_ExtraNames[i].Str();
            SCOPED_TRACE(name);
            ASSERT_TRUE(facts.contains(name));
            const Json& fact = facts[name];
            const Series series = SeriesOf(log, i);
            EXPECT_EQ(series.m_Min, fact["min"]);
            EXPECT_EQ(series.m_Max, fact["max"]);
            EXPECT_EQ(series.m_Last, fact["last"]);
            EXPECT_NEAR(series.m_Average, fact["time_average"], series.m_Rounding + 0.0001);
            // A percentage begins with its whole range, 0 to 100.
            EXPECT_EQ(list.m_ExtraMin[i], fact["min"]);
            EXPECT_TRUE(list.m_ExtraMax[i] == fact["max"] || list.m_ExtraMax[i] == 100);
        }
    }
}

TEST_F(SampleFacts, LossesStandAtTheirPlaceAmongTheJobs) {
    for (const SampleLog& log : m_Logs) {
        SCOPED_TRACE(log.m_Name);
        const McuJobList& list = log.m_List;
        const Json& losses = log.m_Facts.value("losses", Json::array());
        ASSERT_EQ(list.m_PDIInfos.size(), losses.size());
        int packets = 0;
        for (std::size_t i = 0; i < losses.size(); ++i) {
            SCOPED_TRACE(i);
            const PDIInfo& loss = list.m_PDIInfos[i];
            EXPECT_EQ(loss.m_Name, losses[i]["running"]);
            EXPECT_EQ(loss.m_LostSize, losses[i]["bytes"]);
            ASSERT_EQ(loss.m_JobIndex, losses[i]["job_index"]);
            EXPECT_EQ(list.GetPDIInfoIndex(loss.m_JobIndex), static_cast<int>(i));
            const McuJob& gap = list.at(static_cast<std::size_t>(loss.m_JobIndex));
            EXPECT_EQ(gap.m_Name, "%Lost");
            EXPECT_GE(QBitsOf(losses[i]["at_us"]) + 2, static_cast<double>(gap.m_StartTime));
            packets += losses[i]["packets"].get<int>();
        }
        EXPECT_EQ(packets, static_cast<int>(list.Report().m_LossPackets));
    }
}

}  // namespace
}  // namespace vesk
