#include "simulator/Simulator.h"

#include <gtest/gtest.h>

#include <numeric>
#include <sstream>

#include "database/JsonTargetLoader.h"
#include "tests/support/LogBuilder.h"

using vesk::SimulatedForm;
using vesk::SimulatedTotal;
using vesk::SimulatedTruth;
using vesk::Simulator;
using vesk::SimulatorOptions;

namespace {

struct Case {
    const char* m_Name;
    SimulatedForm m_Form;
    bool m_IsMicroseconds;
    bool m_ComputesFrames;
    bool m_FramesGrow;  // for a reader
};

void PrintTo(const Case& c, std::ostream* out) {
    *out << c.m_Name;
}

SimulatorOptions OptionsOf(const Case& c) {
    SimulatorOptions options;
    options.m_Form = c.m_Form;
    options.m_IsMicroseconds = c.m_IsMicroseconds;
    options.m_ComputesFrames = c.m_ComputesFrames;
    return options;
}

std::string LogOf(Simulator& simulator) {
    std::string bytes;
    EXPECT_TRUE(simulator.WriteLog(vesk::SinkTo(bytes)));
    return bytes;
}

// Reads by the target description alone, as a user of the two files would.
ReadResult ReadBack(Simulator& simulator) {
    const std::string bytes = LogOf(simulator);
    std::ostringstream description;
    simulator.WriteTargetDescription(description);
    vesk::TargetDatabase database;
    std::string error;
    EXPECT_TRUE(vesk::ParseTargetJson(description.str(), database, error)) << error;
    vesk::HostValues host;
    host.m_Capability = database.m_Capability;
    return Read(bytes, database, host);
}

template <class Jobs>
void AddJobs(SimulatedTotal& total, const Jobs& jobs) {
    for (const McuJob& job : jobs) {
        ++total.m_Count;
        if (job.m_EndTime > job.m_StartTime) total.m_Qbits += job.m_EndTime - job.m_StartTime;
    }
}

SimulatedTruth::Totals TotalsOf(const std::map<std::string, std::vector<McuJob>>& byName) {
    SimulatedTruth::Totals totals;
    for (const auto& [name, jobs] : byName) AddJobs(totals[name], jobs);
    return totals;
}

SimulatedTruth::Totals TotalsOf(const std::vector<McuJob>& jobs) {
    SimulatedTruth::Totals totals;
    for (const McuJob& job : jobs) AddJobs(totals[job.m_Name], std::vector{job});
    return totals;
}

std::map<std::string, std::uint64_t> CountsOf(const std::map<std::string, int>& names) {
    return {names.begin(), names.end()};
}

std::vector<std::uint64_t> ValueSums(const McuJobList& jobs) {
    std::vector<std::uint64_t> sums(static_cast<std::size_t>(jobs.m_ExtraInfoNum));
    for (const ExtraInfoRecord& sample : jobs.m_ExtraInfos)
        for (std::size_t i = 0; i < sums.size(); ++i)
            sums[i] += static_cast<std::uint32_t>(sample.m_Values[i]);
    return sums;
}

std::uint64_t LostBytes(const McuJobList& jobs) {
    return std::accumulate(
        jobs.m_PDIInfos.begin(), jobs.m_PDIInfos.end(), std::uint64_t{0},
        [](std::uint64_t sum, const PDIInfo& info) { return sum + info.m_LostSize; });
}

std::string Text(const SimulatedTruth::Totals& totals) {
    std::ostringstream text;
    for (const auto& [name, total] : totals)
        text << name << ": " << total.m_Count << " in " << total.m_Qbits << " QBit\n";
    return text.str();
}

void ExpectTruth(const ReadResult& read, const SimulatedTruth& truth) {
    EXPECT_TRUE(read.ok);
    EXPECT_EQ(read.error, "");
    EXPECT_EQ(Text(TotalsOf(read.jobs)), Text(truth.m_Jobs));
    EXPECT_EQ(Text(TotalsOf(read.jobs.m_CustomJobsCS)), Text(truth.m_Functions));
    EXPECT_EQ(Text(TotalsOf(read.jobs.m_HWJobs)), Text(truth.m_Hardware));
    EXPECT_EQ(CountsOf(read.jobs.m_SourceMarkNames), truth.m_Marks);
    EXPECT_EQ(read.jobs.m_EndTime, truth.m_EndTime);
    EXPECT_EQ(read.jobs.m_PDIInfos.size(), truth.m_Losses);
    EXPECT_EQ(LostBytes(read.jobs), truth.m_LostBytes);
    EXPECT_EQ(ValueSums(read.jobs), truth.m_ValueSums);
    EXPECT_EQ(read.jobs.Report().m_Records, truth.m_Records);
    EXPECT_EQ(read.jobs.Report().m_UnmatchedExits, 0U);
    EXPECT_EQ(read.jobs.Report().m_LossPackets, truth.m_LossPackets);
}

class EverySimulatedForm : public testing::TestWithParam<Case> {};

}  // namespace

TEST_P(EverySimulatedForm, ReadsBackAsWhatTheTargetDid) {
    SimulatorOptions options = OptionsOf(GetParam());
    options.m_ExtraValues = 5;
    options.m_Losses = options.m_Form == SimulatedForm::kPackets;
    options.m_Records = 20000;
    for (options.m_Seed = 1; options.m_Seed <= 3; ++options.m_Seed) {
        SCOPED_TRACE(options.m_Seed);
        Simulator simulator(options);
        const ReadResult read = ReadBack(simulator);
        ExpectTruth(read, simulator.Truth());
        EXPECT_EQ(simulator.Truth().m_Records, options.m_Records);
        const bool framesGrow = read.jobs.back().m_TimeStamp > read.jobs.front().m_TimeStamp;
        EXPECT_EQ(framesGrow, GetParam().m_FramesGrow);
    }
}

TEST_P(EverySimulatedForm, CanLeaveOutAllButTasksAndInterrupts) {
    SimulatorOptions options = OptionsOf(GetParam());
    options.m_Functions = options.m_Marks = options.m_Hardware = false;
    options.m_Tasks = 1;
    options.m_Records = 1000;
    Simulator simulator(options);
    const ReadResult read = ReadBack(simulator);
    ExpectTruth(read, simulator.Truth());
    EXPECT_TRUE(read.jobs.m_CustomJobs.empty());
    EXPECT_TRUE(read.jobs.m_SourceMarks.empty());
    EXPECT_TRUE(read.jobs.m_HWJobs.empty());
    EXPECT_EQ(read.jobs.m_ExtraInfoNum, 0);
}

TEST_P(EverySimulatedForm, ReadsBackHoweverShort) {
    SimulatorOptions options = OptionsOf(GetParam());
    for (options.m_Records = 1; options.m_Records < 60; ++options.m_Records) {
        SCOPED_TRACE(options.m_Records);
        Simulator simulator(options);
        ExpectTruth(ReadBack(simulator), simulator.Truth());
    }
}

// Frame numbers that the log does not carry can be computed from microseconds behind a header.
INSTANTIATE_TEST_SUITE_P(
    Simulator, EverySimulatedForm,
    testing::Values(Case{"Version1Tqcnt", SimulatedForm::kVersion1, false, false, true},
                    Case{"Version1TqcntComputed", SimulatedForm::kVersion1, false, true, false},
                    Case{"Version1Uscnt", SimulatedForm::kVersion1, true, false, true},
                    Case{"Version1UscntComputed", SimulatedForm::kVersion1, true, true, true},
                    Case{"Version2Tqcnt", SimulatedForm::kVersion2, false, false, true},
                    Case{"Version2TqcntComputed", SimulatedForm::kVersion2, false, true, false},
                    Case{"Version2Uscnt", SimulatedForm::kVersion2, true, false, true},
                    Case{"Version2UscntComputed", SimulatedForm::kVersion2, true, true, true},
                    Case{"Version3Tqcnt", SimulatedForm::kVersion3, false, false, true},
                    Case{"Version3TqcntComputed", SimulatedForm::kVersion3, false, true, false},
                    Case{"Version3Uscnt", SimulatedForm::kVersion3, true, false, true},
                    Case{"Version3UscntComputed", SimulatedForm::kVersion3, true, true, true},
                    Case{"HeaderlessTqcnt", SimulatedForm::kHeaderless, false, false, true},
                    Case{"HeaderlessTqcntComputed", SimulatedForm::kHeaderless, false, true, false},
                    Case{"HeaderlessUscnt", SimulatedForm::kHeaderless, true, false, true},
                    Case{"HeaderlessUscntComputed", SimulatedForm::kHeaderless, true, true, false},
                    Case{"Packets", SimulatedForm::kPackets, true, false, true},
                    Case{"PacketsComputed", SimulatedForm::kPackets, true, true, false}),
    [](const auto& tested) { return std::string(tested.param.m_Name); });

TEST(Simulator, LosesRecordsOfPacketLogs) {
    SimulatorOptions options;
    options.m_Form = SimulatedForm::kPackets;
    options.m_Losses = true;
    options.m_Records = 50000;
    Simulator simulator(options);
    LogOf(simulator);
    EXPECT_GT(simulator.Truth().m_Losses, 5U);
    EXPECT_GT(simulator.Truth().m_LossPackets, simulator.Truth().m_Losses);
    EXPECT_EQ(simulator.Truth().m_Jobs.at("%Lost").m_Count, simulator.Truth().m_Losses);
}

TEST(Simulator, WritesTheSameBytesForTheSameSeedOnly) {
    SimulatorOptions options;
    options.m_ExtraValues = 2;
    Simulator first(options);
    Simulator second(options);
    const std::string bytes = LogOf(first);
    EXPECT_EQ(LogOf(second), bytes);
    EXPECT_EQ(LogOf(second), bytes) << "a second log of one simulator";
    options.m_Seed = 2;
    Simulator other(options);
    EXPECT_NE(LogOf(other), bytes);
}

TEST(SimulatorOptions, SayWhatCannotBeSimulated) {
    const struct {
        const char* what;
        void (*spoil)(SimulatorOptions&);
        const char* text;
    } cases[] = {
        {"nothing wrong", [](SimulatorOptions&) {}, ""},
        {"no records", [](SimulatorOptions& o) { o.m_Records = 0; }, "at least 1 record"},
        {"no tasks", [](SimulatorOptions& o) { o.m_Tasks = 0; }, "from 1 to 64"},
        {"too many tasks", [](SimulatorOptions& o) { o.m_Tasks = 65; }, "from 1 to 64"},
        {"too many values", [](SimulatorOptions& o) { o.m_ExtraValues = 33; }, "32 extra values"},
        {"losses without packets", [](SimulatorOptions& o) { o.m_Losses = true; }, "Only packets"},
        {"losses without a task switch",
         [](SimulatorOptions& o) {
             o.m_Form = SimulatedForm::kPackets;
             o.m_Losses = true;
             o.m_Tasks = 1;
         },
         "at least 2 tasks"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        SimulatorOptions options;
        c.spoil(options);
        EXPECT_NE(options.Problem().find(c.text), std::string::npos) << options.Problem();
        EXPECT_EQ(options.Problem().empty(), *c.text == '\0');
    }
}
