#include "log/McuJobList.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "database/TargetDatabase.h"
#include "tests/log/LogBytes.h"

namespace vesk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using Totals = std::map<std::string, std::uint64_t>;

constexpr std::uint64_t kFarAway = ~std::uint64_t{0};

// Jobs at 100, 200 and 300; the list ends at 400.
McuJobList ThreeJobs() {
    McuJobList jobs;
    jobs.Insert("A", 100, 200);
    jobs.Insert("IDLE", 200, 300);
    jobs.Insert("A", 300, 400);
    for (const McuJob& job : jobs) jobs.m_ExtraInfos.push_back({job.m_StartTime, {}, job.m_Name});
    return jobs;
}

TEST(McuJobList, AllSearchesFindTheLastElementThatStartedBefore) {
    const struct {
        const char* what;
        std::uint64_t time;
        int index;
        bool found;
    } cases[] = {
        {"before the first", 0, 0, true},
        {"the first at its own start", 100, 0, true},
        {"at a start: the one before it", 200, 0, true},
        {"just behind a start", 201, 1, true},
        {"at the last start", 300, 1, true},
        {"inside the last", 399, 2, true},
        {"at the end of the list", 400, 2, false},
        {"far behind", kFarAway, 2, false},
    };
    const McuJobList jobs = ThreeJobs();
    const std::vector<McuJob> others = jobs;
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        int job = -1, other = -1, sample = -1;
        EXPECT_EQ(jobs.Search(c.time, job), c.found);
        EXPECT_EQ(jobs.SearchOtherJob(c.time, other, &others), c.found);
        EXPECT_EQ(jobs.SearchExtraInfo(c.time, sample), c.found);
        EXPECT_THAT((std::vector{job, other, sample}), testing::Each(c.index));
    }
}

TEST(McuJobList, TheListsOwnEndDecidesInOtherVectorsToo) {
    const McuJobList jobs = ThreeJobs();
    const std::vector<McuJob> one{McuJob("X", 10, 20)};
    int index = -1;
    EXPECT_TRUE(jobs.SearchOtherJob(399, index, &one));
    EXPECT_EQ(index, 0);
    EXPECT_FALSE(jobs.SearchOtherJob(400, index, &one));
}

TEST(McuJobList, AnEmptySequenceHasNothingToFind) {
    McuJobList jobs;
    jobs.m_EndTime = 1000;
    const std::vector<McuJob> none;
    for (const std::uint64_t time : {std::uint64_t{0}, std::uint64_t{999}, kFarAway}) {
        int job = -1, other = -1, sample = -1;
        EXPECT_FALSE(jobs.Search(time, job));
        EXPECT_FALSE(jobs.SearchOtherJob(time, other, &none));
        EXPECT_FALSE(jobs.SearchExtraInfo(time, sample));
        EXPECT_THAT((std::vector{job, other, sample}), testing::Each(0));
    }
}

TEST(McuJobList, GetJobLeavesTheJobAloneWhereThereIsNone) {
    const McuJobList jobs = ThreeJobs();
    EXPECT_EQ(jobs.GetSize(), 3);
    McuJob job("before", 1, 2);
    for (const int index : {-1, 3, 1000, INT32_MIN, INT32_MAX}) {
        EXPECT_FALSE(jobs.GetJob(index, job)) << index;
        EXPECT_EQ(Told(job), "before 1-2");
    }
    EXPECT_TRUE(jobs.GetJob(2, job));
    EXPECT_EQ(Told(job), "A 300-400");
}

TEST(McuJobList, InsertKeepsTheEndTheCountsAndTheIdleTime) {
    McuJobList jobs = ThreeJobs();
    jobs.Insert("IDLE", 400, 400);  // no length
    jobs.Insert("IDLE", 500, 0);    // no end
    jobs.Insert("idle", 500, 600);
    EXPECT_EQ(jobs.m_IdleTotal, 100u);
    EXPECT_EQ(jobs.m_EndTime, 600u);
    EXPECT_EQ(jobs.m_BeginTime, 0u);
    EXPECT_THAT(jobs.m_JobNames, ElementsAre(Pair("A", 2), Pair("IDLE", 3), Pair("idle", 1)));
}

TEST(McuJobList, SegmentsAddUpPerName) {
    McuJobList jobs;
    jobs.InsertCustomJob(McuJob("b", 100, 130), 999);
    jobs.InsertCustomJob(McuJob("a", 130, 0), 150);  // no end: up to the time
    jobs.InsertCustomJob(McuJob("b", 150, 150), 157);
    EXPECT_THAT(jobs.m_CustomNames, ElementsAre(Pair("a", 20), Pair("b", 37)));
    EXPECT_THAT(jobs.m_CustomShown, ElementsAre(true, true));
    EXPECT_THAT(Told(jobs.m_CustomJobs), ElementsAre("b 100-130", "a 130-0", "b 150-150"));
}

TEST(McuJobList, OtherRecordsGoToTheContainerOfTheirName) {
    McuJobList jobs;
    for (const char* name : {"b", "a", "b"}) {
        jobs.InsertSourceMark(McuJob(name, 1, 1));
        jobs.InsertHWJob(McuJob(name, 1, 2));
        jobs.InsertCustomJobCS(McuJob(name, 1, 3));
        jobs.InsertTmpCustomJobCS(McuJob(name, 1, 4));
    }
    EXPECT_THAT(Told(jobs.m_SourceMarks), ElementsAre("b 1-1", "a 1-1", "b 1-1"));
    EXPECT_THAT(jobs.m_SourceMarkNames, ElementsAre(Pair("a", 1), Pair("b", 2)));
    EXPECT_THAT(jobs.m_SourceMarkShown, ElementsAre(true, true));
    EXPECT_THAT(Told(jobs.m_HWJobs), ElementsAre("a 1-2", "b 1-2", "b 1-2"));
    EXPECT_THAT(Told(jobs.m_CustomJobsCS), ElementsAre("a 1-3", "b 1-3", "b 1-3"));
    EXPECT_THAT(Told(jobs.m_TmpCustomJobsCS), ElementsAre("a 1-4", "b 1-4", "b 1-4"));
}

// Every number that Clear resets, with its value afterwards.
template <class Visit>
void VisitNumbers(McuJobList& l, Visit visit) {
    for (auto* time : {&l.m_BeginTime, &l.m_EndTime, &l.m_IdleTotal, &l.m_StatStart, &l.m_StatEnd,
                       &l.m_UsageSample, &l.m_UsageStart, &l.m_UsageEnd, &l.m_AreaSample,
                       &l.m_AreaStart, &l.m_AreaEnd, &l.m_TstSample, &l.m_TstStart, &l.m_TstEnd,
                       &l.m_BmStart, &l.m_BmEnd, &l.m_BmTaskStart, &l.m_BmTaskEnd})
        visit(*time, 0u);
    for (auto* zero : {&l.m_ExtraInfoNum, &l.m_StatMode, &l.m_StatContextSwitch,
                       &l.m_StatDenominator, &l.m_StatDeductOverhead, &l.m_TaskOverhead,
                       &l.m_FunctionOverhead, &l.m_UsageType, &l.m_AreaType, &l.m_BmSelect,
                       &l.m_BmTaskSelect, &l.m_BmTaskMode, &l.m_BmTaskContextSwitch})
        visit(*zero, 0);
    for (auto* none :
         {&l.m_UsageStartMarker, &l.m_UsageEndMarker, &l.m_AreaStartMarker, &l.m_AreaEndMarker,
          &l.m_AreaInfoIndex, &l.m_TstStartMarker, &l.m_TstEndMarker, &l.m_BmStartMarker,
          &l.m_BmEndMarker, &l.m_BmTaskStartMarker, &l.m_BmTaskEndMarker})
        visit(*none, -1);
    for (auto* duration : {&l.m_UsageDuration, &l.m_AreaDuration, &l.m_TstDuration})
        visit(*duration, 5000);
    for (auto* unit : {&l.m_UsageUnit, &l.m_AreaUnit, &l.m_TstUnit}) visit(*unit, 2);
    visit(l.m_StatIncludeIdle, 1);
    visit(l.m_TstModes, 4);
}

template <class Visit>
void VisitContainers(McuJobList& l, Visit visit) {
    visit(l.m_CustomJobs);
    visit(l.m_CustomShown);
    visit(l.m_SourceMarks);
    visit(l.m_SourceMarkShown);
    visit(l.m_ExtraMax);
    visit(l.m_ExtraMin);
    visit(l.m_ExtraNames);
    visit(l.m_ParsingInfos);
    visit(l.m_ExtraInfos);
    visit(l.m_PDIInfos);
    for (auto* names : {&l.m_UsageTasks, &l.m_AreaTasks, &l.m_TstModules}) visit(*names);
    for (auto* infos : {&l.m_BmInfos, &l.m_BmTaskInfos}) visit(*infos);
}

TEST(McuJobList, ClearResetsAllButTheCallbacksAndTheSplitDialog) {
    McuJobList jobs = ThreeJobs();
    jobs.InsertHWJob(McuJob("x", 1, 2));
    jobs.InsertCustomJob(McuJob("x", 1, 2), 2);
    jobs.InsertCustomJobCS(McuJob("x", 1, 2));
    jobs.InsertTmpCustomJobCS(McuJob("x", 1, 2));
    jobs.InsertSourceMark(McuJob("x", 1, 2));
    VisitNumbers(jobs, [](auto& number, auto) { number = 77; });
    VisitContainers(jobs, [](auto& container) { container.resize(5); });
    jobs.m_FileName = "old.bin";
    jobs.m_IsKaldo = true;
    jobs.m_IsTQCNT = false;
    jobs.m_SplitUnit = "64";
    jobs.m_SplitChoice = 1;
    ASSERT_TRUE(jobs.registerDBCallback(TargetDatabase::LookUpFormat, TargetDatabase::LookUpEnum));

    jobs.Clear();

    VisitNumbers(jobs, [](auto number, auto expected) { EXPECT_EQ(number, expected); });
    VisitContainers(jobs, [](const auto& container) { EXPECT_TRUE(container.empty()); });
    EXPECT_THAT(jobs, IsEmpty());
    EXPECT_THAT(jobs.m_JobNames, IsEmpty());
    EXPECT_THAT(jobs.m_CustomNames, IsEmpty());
    EXPECT_THAT(jobs.m_SourceMarkNames, IsEmpty());
    EXPECT_THAT(jobs.m_HWJobs, IsEmpty());
    EXPECT_THAT(jobs.m_CustomJobsCS, IsEmpty());
    EXPECT_THAT(jobs.m_TmpCustomJobsCS, IsEmpty());
    EXPECT_EQ(jobs.m_FileName, "");
    EXPECT_FALSE(jobs.m_IsKaldo);
    EXPECT_TRUE(jobs.m_IsTQCNT);

    EXPECT_EQ(jobs.m_SplitUnit, "64");
    EXPECT_EQ(jobs.m_SplitChoice, 1);
    EXPECT_TRUE(jobs.m_DBReady);
    EXPECT_EQ(jobs.m_GetEnumContent, &TargetDatabase::LookUpEnum);
}

TEST(McuJobList, ANewListIsLikeAClearedOne) {
    McuJobList jobs;
    VisitNumbers(jobs, [](auto number, auto expected) { EXPECT_EQ(number, expected); });
    EXPECT_FALSE(jobs.m_DBReady);
    EXPECT_TRUE(jobs.m_IsTQCNT);
    EXPECT_EQ(jobs.m_SplitUnit, "");
    EXPECT_EQ(jobs.m_SplitChoice, 0);
}

TEST(McuJobList, RegistersBothLookupsOrNone) {
    McuJobList jobs;
    EXPECT_FALSE(jobs.registerDBCallback(TargetDatabase::LookUpFormat, nullptr));
    EXPECT_FALSE(jobs.registerDBCallback(nullptr, TargetDatabase::LookUpEnum));
    EXPECT_FALSE(jobs.m_DBReady);
    EXPECT_EQ(jobs.m_GetDataFormat, nullptr);
    EXPECT_TRUE(jobs.registerDBCallback(TargetDatabase::LookUpFormat, TargetDatabase::LookUpEnum));
    EXPECT_TRUE(jobs.m_DBReady);
}

TEST(McuJobList, ACopySharesNothing) {
    McuJobList jobs = ThreeJobs();
    jobs.m_SplitUnit = "64";
    jobs.m_UsageTasks = {"A"};
    ASSERT_TRUE(jobs.registerDBCallback(TargetDatabase::LookUpFormat, TargetDatabase::LookUpEnum));
    McuJobList copy = jobs;
    EXPECT_THAT(Told(copy), Told(jobs));
    EXPECT_TRUE(copy.m_DBReady);
    EXPECT_EQ(copy.m_SplitUnit, "64");
    EXPECT_THAT(copy.m_UsageTasks, ElementsAre("A"));
    copy[0].m_Name = "changed";
    copy.Clear();
    EXPECT_THAT(Told(jobs), ElementsAre("A 100-200", "IDLE 200-300", "A 300-400"));
    EXPECT_EQ(jobs.m_JobNames.size(), 2u);
}

TEST(McuJob, IsEqualByNameStartAndEnd) {
    const McuJob job("A", 1, 2);
    McuJob other = job;
    other.m_TimeStamp = 5;
    other.m_TimeCount = 6;
    other.m_Flags = 7;
    EXPECT_EQ(job, other);
    EXPECT_FALSE(job == McuJob("B", 1, 2));
    EXPECT_FALSE(job == McuJob("A", 0, 2));
    EXPECT_FALSE(job == McuJob("A", 1, 3));
}

TEST(McuJobList, FindsTheLossOfAJob) {
    McuJobList jobs;
    EXPECT_EQ(jobs.GetPDIInfoIndex(0), -1);
    jobs.m_PDIInfos = {{"A", 1, 2}, {"B", 1, 5}, {"C", 1, 9}};
    const struct {
        std::int32_t job;
        int position;
    } cases[] = {{2, 0}, {5, 1}, {9, 2}, {1, -1}, {3, -1}, {8, -1}, {10, -1}, {INT32_MIN, -1}};
    for (const auto& c : cases) EXPECT_EQ(jobs.GetPDIInfoIndex(c.job), c.position) << c.job;
}

TEST(DurationTotal, SumsWhatLiesInTheRange) {
    constexpr std::int32_t kNoOverhead = 0;
    const struct {
        const char* what;
        std::uint64_t start, end;
        std::int32_t includeIdle, deduct, overhead;
        Totals totals;
    } cases[] = {
        {"all", 0, 500, 1, 0, kNoOverhead, {{"A", 200}, {"IDLE", 100}, {"B", 50}}},
        {"without idle time", 0, 500, 0, 0, kNoOverhead, {{"A", 200}, {"B", 50}}},
        {"cut on both sides", 150, 350, 1, 0, kNoOverhead, {{"A", 100}, {"IDLE", 100}}},
        {"equal bounds", 150, 150, 1, 0, kNoOverhead, {}},
        {"bounds in the wrong order", 350, 150, 1, 0, kNoOverhead, {}},
        {"behind the end", 450, 900, 1, 0, kNoOverhead, {}},
        {"each switch costs", 100, 450, 1, 1, 10, {{"A", 180}, {"IDLE", 90}, {"B", 40}}},
        {"a cut job pays nothing", 150, 450, 1, 1, 10, {{"A", 140}, {"IDLE", 90}, {"B", 40}}},
        {"a job that costs all", 400, 450, 1, 1, 50, {{"B", 0}}},
        {"a negative cost is above all", 400, 450, 1, 1, -5, {{"B", 0}}},
        {"a cost of which no one asked", 400, 450, 1, 0, 10, {{"B", 50}}},
        {"a setting that is neither", 400, 450, 1, 2, 10, {{"B", 50}}},
    };
    McuJobList jobs = ThreeJobs();
    jobs.Insert("B", 400, 450);
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        jobs.m_StatIncludeIdle = c.includeIdle;
        jobs.m_StatDeductOverhead = c.deduct;
        jobs.m_TaskOverhead = c.overhead;
        Totals totals{{"left from before", 1}};
        jobs.DurationTotal(totals, c.start, c.end);
        EXPECT_EQ(totals, c.totals);
    }
    Totals totals{{"left from before", 1}};
    McuJobList().DurationTotal(totals, 0, 500);
    EXPECT_THAT(totals, IsEmpty());
}

TEST(DurationTotal, KeepsManyNamesApart) {
    McuJobList jobs;
    Totals expected;
    for (std::uint64_t i = 0; i < 3000; ++i) {
        const std::string name = (i % 2 ? "the same beginning " : "") + std::to_string(i % 1000);
        jobs.Insert(name, 10 * i, 10 * i + i % 10);
        if (i % 10 > 0) expected[name] += i % 10;
    }
    Totals totals;
    jobs.DurationTotal(totals, 0, 30000);
    EXPECT_EQ(totals, expected);
}

TEST(DurationTotalCustomJobCS, CutsACallIntoPiecesOfOneJob) {
    const struct {
        const char* what;
        std::uint64_t start, end;
        bool last;
        std::vector<std::string> pieces;
    } cases[] = {
        {"two pieces", 0, 500, false, {"f 100-200 /1", "f 300-400"}},
        {"two pieces of a call that ends", 150, 350, true, {"f 150-200 /1", "f 300-350 /4"}},
        {"one piece is first and last", 120, 180, true, {"f 120-180 /5"}},
        {"ahead of the first job: empty", 10, 50, true, {"f 100-100 /5"}},
        {"another job", 210, 290, true, {}},
        {"equal bounds", 150, 150, true, {}},
    };
    const McuJobList jobs = ThreeJobs();
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        std::map<std::uint64_t, McuJob> pieces{{7, McuJob("left from before", 1, 2)}};
        jobs.DurationTotalCustomJobCS(pieces, "A", "f", c.start, c.end, c.last);
        std::vector<std::string> told;
        for (const auto& [start, piece] : pieces) {
            EXPECT_EQ(start, piece.m_StartTime);
            told.push_back(Told(piece));
        }
        EXPECT_EQ(told, c.pieces);
    }
}

TEST(DurationTotalCustomJobCS, TheLastJobWithoutAnEndLastsAsLongAsTheList) {
    McuJobList jobs = ThreeJobs();
    jobs.Insert("A", 400, 0);
    jobs.m_EndTime = 470;
    std::map<std::uint64_t, McuJob> pieces;
    jobs.DurationTotalCustomJobCS(pieces, "A", "f", 350, 460, false);
    ASSERT_EQ(pieces.size(), 2u);
    EXPECT_EQ(Told(pieces[350]), "f 350-400 /1");
    EXPECT_EQ(Told(pieces[400]), "f 400-470");
}

}  // namespace
}  // namespace vesk
