// Reads logs made of chance by the reader and by the plain one, and compares every figure. They
// share nothing but the records that they fill, so what both say is hardly a slip of either.
// VESK_SEEDS in the environment sets the number of logs, VESK_FIRST_SEED where they begin.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <string>
#include <tuple>
#include <vector>

#include "log/HostValues.h"
#include "log/McuJobList.h"
#include "platform/HeadlessUserInterface.h"
#include "platform/Text.h"
#include "tests/support/PlainReader.h"
#include "tests/support/RandomLog.h"
#include "tests/support/TemporaryFile.h"

namespace vesk {
namespace {

class GivenInterval : public RangeChooser {
public:
    explicit GivenInterval(const SplitInterval& interval) : m_Interval(interval) {}
    RangeChoice Choose(const RangeRequest&) override {
        RangeChoice choice;
        choice.m_HasInterval = true;
        choice.m_Interval = m_Interval;
        return choice;
    }

private:
    SplitInterval m_Interval;
};

// A random log on disk, read both ways.
class BothReaders {
public:
    explicit BothReaders(const RandomLog& log)
        : m_Random(log), m_Header(log.headerFile), m_Records(log.bytes) {}

    PlainLog ReadPlain() {
        if (m_Random.headerFile.empty())
            return ReadPlainly(m_Records.Path(), m_Random.database, m_Random.options);
        return ReadPlainlyWithHeader(m_Header.Path(), m_Records.Path(), m_Random.database,
                                     m_Random.options);
    }

    PlainLog ReadFast() {
        HeadlessUserInterface boxes;
        ScopedUserInterface scope(boxes);
        TargetDatabase::Select(&m_Random.database);
        LiveHostValues host = CurrentHostValues();
        host.m_Capability = m_Random.options.capability;
        host.m_TickIRQ = m_Random.options.tickIRQ;
        host.m_FeatureLevel = m_Random.options.featureLevel;
        GivenInterval interval(m_Random.options.interval.value_or(SplitInterval{}));
        if (m_Random.options.interval) m_List.SetRangeChooser(&interval);
        m_List.registerDBCallback(TargetDatabase::LookUpFormat, TargetDatabase::LookUpEnum);
        PlainLog log;
        log.ok = m_Random.headerFile.empty() ? m_List.ReadFile(m_Records.Path(), log.error)
                                             : m_List.ReadFileWithAnotherHeader(
                                                   m_Header.Path(), m_Records.Path(), log.error);
        log.tickIRQ = host.m_TickIRQ;
        log.messages = boxes.m_Messages;
        m_List.SetRangeChooser(nullptr);
        host = HostValues{};
        TargetDatabase::Select(nullptr);
        Take(log);
        return log;
    }

    const McuJobList& List() const { return m_List; }

private:
    void Take(PlainLog& log) const {
        log.fileName = m_List.m_FileName.Str();
        log.jobs.assign(m_List.begin(), m_List.end());
        log.jobNames = m_List.m_JobNames;
        log.endTime = m_List.m_EndTime;
        log.idleTotal = m_List.m_IdleTotal;
        log.customJobs = m_List.m_CustomJobs;
        log.customNames = m_List.m_CustomNames;
        log.customJobsCS = m_List.m_CustomJobsCS;
        log.sourceMarks = m_List.m_SourceMarks;
        log.sourceMarkNames = m_List.m_SourceMarkNames;
        log.hwJobs = m_List.m_HWJobs;
        log.extraInfoNum = m_List.m_ExtraInfoNum;
        for (const CString& name : m_List.m_ExtraNames) log.extraNames.push_back(name.Str());
        log.extraMax = m_List.m_ExtraMax;
        log.extraMin = m_List.m_ExtraMin;
        log.extraInfos = m_List.m_ExtraInfos;
        log.pdi = m_List.m_PDIInfos;
        log.isTQCNT = m_List.m_IsTQCNT;
        log.isKaldo = m_List.m_IsKaldo;
        log.taskOverhead = m_List.m_TaskOverhead;
        log.functionOverhead = m_List.m_FunctionOverhead;
    }

    RandomLog m_Random;
    TemporaryFile m_Header;
    TemporaryFile m_Records;
    McuJobList m_List;
};

// A log told in lines, so that the first line that differs tells what went wrong.
class Lines {
public:
    explicit Lines(const PlainLog& log) {
        Add("result", std::to_string(log.ok), log.error);
        Add("file", log.fileName);
        for (const std::string& message : log.messages) Add("message", message);
        Add("header", Numbers({log.isTQCNT, log.isKaldo, log.taskOverhead, log.functionOverhead,
                               log.tickIRQ, log.extraInfoNum}));
        AddExtraValues(log);
        AddJobs("job", log.jobs);
        AddNames("jobs of", log.jobNames);
        Add("end and idle", std::to_string(log.endTime), std::to_string(log.idleTotal));
        AddJobs("segment", log.customJobs);
        AddNames("time of", log.customNames);
        for (auto calls : log.customJobsCS) {  // calls of one start have no order
            std::sort(calls.second.begin(), calls.second.end(), IsBefore);
            AddJobs("call, " + calls.first, calls.second);
        }
        AddJobs("mark", log.sourceMarks);
        AddNames("marks of", log.sourceMarkNames);
        for (const auto& [name, events] : log.hwJobs) AddJobs("event, " + name, events);
        for (const PDIInfo& loss : log.pdi)
            Add("loss", loss.m_Name, Numbers({loss.m_LostSize, loss.m_JobIndex}));
    }

    // Empty if there is no difference.
    std::string DifferenceFrom(const Lines& other) const {
        const auto [mine, theirs] = std::mismatch(m_Lines.begin(), m_Lines.end(),
                                                  other.m_Lines.begin(), other.m_Lines.end());
        if (mine == m_Lines.end() && theirs == other.m_Lines.end()) return "";
        const auto text = [](auto line, auto end) {
            return line == end ? "nothing" : testing::PrintToString(*line);
        };
        return text(mine, m_Lines.end()) + " instead of " + text(theirs, other.m_Lines.end());
    }

private:
    static bool IsBefore(const McuJob& a, const McuJob& b) {
        return std::tie(a.m_StartTime, a.m_EndTime, a.m_Flags) <
               std::tie(b.m_StartTime, b.m_EndTime, b.m_Flags);
    }

    static std::string Numbers(const std::vector<std::int64_t>& numbers) {
        std::string text;
        for (const std::int64_t number : numbers) text += std::to_string(number) + " ";
        return text;
    }

    void Add(const std::string& what, const std::string& text, const std::string& more = "") {
        m_Lines.push_back(what + ": " + text + " | " + more);
    }

    void AddJobs(const std::string& what, const std::vector<McuJob>& jobs) {
        for (std::size_t i = 0; i < jobs.size(); ++i) {
            const McuJob& job = jobs[i];
            const std::string text = FormatText(
                "%llu to %llu, frame %d, count %u, flags %d",
                static_cast<unsigned long long>(job.m_StartTime),
                static_cast<unsigned long long>(job.m_EndTime), static_cast<int>(job.m_TimeStamp),
                static_cast<unsigned>(job.m_TimeCount), static_cast<int>(job.m_Flags));
            Add(what + " " + std::to_string(i), job.m_Name, text);
        }
    }

    template <class Number>
    void AddNames(const std::string& what, const std::map<std::string, Number>& names) {
        for (const auto& [name, number] : names) Add(what, name, std::to_string(number));
    }

    void AddExtraValues(const PlainLog& log) {
        for (const std::string& name : log.extraNames) Add("extra value", name);
        Add("greatest", Numbers({log.extraMax.begin(), log.extraMax.end()}));
        Add("smallest", Numbers({log.extraMin.begin(), log.extraMin.end()}));
        for (const ExtraInfoRecord& sample : log.extraInfos)
            Add("sample " + std::to_string(sample.m_Time), sample.m_Name,
                Numbers({sample.m_Values.begin(), sample.m_Values.end()}));
    }

    std::vector<std::string> m_Lines;
};

void ExpectSettled(const McuJobList& list) {
    EXPECT_EQ(list.m_CustomShown, std::vector<bool>(list.m_CustomNames.size(), true));
    EXPECT_EQ(list.m_SourceMarkShown, std::vector<bool>(list.m_SourceMarkNames.size(), true));
    EXPECT_TRUE(list.m_ParsingInfos.empty());
    for (const auto& [name, calls] : list.m_TmpCustomJobsCS) EXPECT_TRUE(calls.empty()) << name;
    if (list.Report().m_Outcome != ReadOutcome::kComplete &&
        list.Report().m_Outcome != ReadOutcome::kPartial)
        return;
    EXPECT_EQ(list.capacity(), list.size());
    EXPECT_EQ(list.m_CustomJobs.capacity(), list.m_CustomJobs.size());
    EXPECT_EQ(list.m_ExtraInfos.capacity(), list.m_ExtraInfos.size());
}

std::uint64_t NumberFromEnvironment(const char* name, std::uint64_t otherwise) {
    const char* text = std::getenv(name);
    return text ? std::strtoull(text, nullptr, 10) : otherwise;
}

void KeepLog(std::uint64_t seed, const RandomLog& log) {
    const std::string base = testing::TempDir() + "differential_" + std::to_string(seed);
    std::ofstream(base + ".bin", std::ios::binary) << log.bytes;
    if (!log.headerFile.empty())
        std::ofstream(base + ".header.bin", std::ios::binary) << log.headerFile;
}

// Small logs end soon after what went wrong; the few long ones are there for the reader's buffers.
int RecordsFor(std::uint64_t seed) {
    return seed % 100 == 99 ? 60000 : static_cast<int>(20 + seed * 37 % 700);
}

TEST(Differential, BothReadersAgreeOnRandomLogs) {
    const std::uint64_t first = NumberFromEnvironment("VESK_FIRST_SEED", 0);
    const std::uint64_t seeds = NumberFromEnvironment("VESK_SEEDS", 400);
    int complete = 0, differing = 0;
    for (std::uint64_t seed = first; seed < first + seeds && differing < 10; ++seed) {
        const RandomLog log = MakeRandomLog(seed, RecordsFor(seed));
        SCOPED_TRACE("seed " + std::to_string(seed) + ": " + log.form);
        BothReaders readers(log);
        const PlainLog fast = readers.ReadFast();
        complete += fast.ok ? 1 : 0;
        ExpectSettled(readers.List());
        const std::string difference = Lines(fast).DifferenceFrom(Lines(readers.ReadPlain()));
        if (difference.empty()) continue;
        ADD_FAILURE() << difference;
        KeepLog(seed, log);
        ++differing;
    }
    // The comparison is worth little unless most of the logs are read to their end.
    EXPECT_GE(complete * 10, static_cast<int>(seeds) * 6);
}

}  // namespace
}  // namespace vesk
