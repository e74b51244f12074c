// The parts behind the framing that can be told something without a log.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "log/EventTracker.h"
#include "log/OpenCalls.h"
#include "log/SharedName.h"
#include "tests/log/LogBytes.h"

namespace vesk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

RawRecord Stamped(std::int32_t frame, std::uint32_t count) {
    return {0, count, 0, frame, nullptr};
}

TEST(EventTracker, EndsAnEventThatStartsAgainJustBefore) {
    McuJobList list;
    EventTracker events(&list, nullptr);
    HardwareName& x = *events.InternHardware("X");
    EXPECT_EQ(&x, events.InternHardware("X"));
    events.End(x, 50);  // never started
    events.Start(x, Stamped(3, 33), 100);
    events.Start(x, Stamped(4, 44), 150);
    events.End(x, 180);
    events.End(x, 190);
    events.Start(*events.InternHardware("Y"), Stamped(5, 55), 200);
    EXPECT_THAT(Told(list.m_HWJobs), ElementsAre("X 100-149", "X 150-180"));
    EXPECT_EQ(list.m_HWJobs["X"][1].m_TimeStamp, 4);
    EXPECT_EQ(list.m_HWJobs["X"][1].m_TimeCount, 44u);
    events.Finish();
    EXPECT_THAT(Told(list.m_HWJobs), ElementsAre("X 100-149", "X 150-180", "Y 200-0"));
    LogCensus census;
    events.Count(census);
    EXPECT_THAT(census.m_HardwareEvents, ElementsAre(Pair("X", 2), Pair("Y", 1)));
}

TEST(EventTracker, CountsWithoutAListWhatItWouldStore) {
    EventTracker events(nullptr, nullptr);
    HardwareName& x = *events.InternHardware("X");
    events.Start(x, Stamped(0, 0), 100);
    events.End(x, 120);
    events.Start(x, Stamped(0, 0), 130);
    events.Mark(*events.InternMark("m"), Stamped(0, 0), 140);
    events.Finish();
    LogCensus census;
    events.Count(census);
    EXPECT_THAT(census.m_HardwareEvents, ElementsAre(Pair("X", 2)));
    EXPECT_EQ(census.m_SourceMarks, 1u);
}

TEST(EventTracker, MarksCarryTheirRecordsStamp) {
    McuJobList list;
    EventTracker events(&list, nullptr);
    events.Mark(*events.InternMark("m"), Stamped(3, 33), 100);
    events.Mark(*events.InternMark("m"), Stamped(4, 44), 200);
    events.Finish();
    EXPECT_THAT(Told(list.m_SourceMarks), ElementsAre("m 100-100", "m 200-200"));
    EXPECT_EQ(list.m_SourceMarks[1].m_TimeStamp, 4);
    EXPECT_EQ(list.m_SourceMarks[1].m_TimeCount, 44u);
    EXPECT_THAT(list.m_SourceMarkNames, ElementsAre(Pair("m", 2)));
}

// Jobs A from 10 to 20, B to 30, A to 40; then C runs.
class OpenCallsOfThreeJobs : public testing::Test {
protected:
    // Start of the call that an exit in a job of that name closes; 0 if there is none.
    std::uint64_t Take(const char* running) {
        std::uint64_t start = 0;
        return m_Calls.Take(m_Jobs, m_Names, m_Names.Intern(running), start) ? start : 0;
    }

    void Begin(std::initializer_list<std::uint64_t> starts) {
        for (const std::uint64_t start : starts) m_Calls.Begin(start);
    }

    JobNames m_Names{""};
    std::vector<McuJob> m_Jobs{McuJob("A", 10, 20), McuJob("B", 20, 30), McuJob("A", 30, 40)};
    OpenCalls m_Calls;

    void SetUp() override {
        for (const char* name : {"A", "B", "C"}) m_Names.Intern(name);
    }
};

TEST_F(OpenCallsOfThreeJobs, AnExitClosesTheNewestCallOfItsJob) {
    Begin({12, 25, 35, 38, 41, 45});
    EXPECT_EQ(Take("C"), 45u);
    EXPECT_EQ(Take("A"), 41u);  // began in the job in progress, whatever its name
    EXPECT_EQ(Take("C"), 0u);
    EXPECT_EQ(Take("A"), 38u);
    EXPECT_EQ(Take("A"), 35u);
    EXPECT_EQ(Take("A"), 12u);
    EXPECT_EQ(Take("A"), 0u);
    EXPECT_THAT(m_Calls.TakeAll(), ElementsAre(25));
}

TEST_F(OpenCallsOfThreeJobs, ACallAtTheStartOfAJobBelongsToNone) {
    Begin({10, 20, 30});
    EXPECT_EQ(Take("B"), 0u);
    EXPECT_EQ(Take("A"), 10u);  // only the first job is found at its own start
    EXPECT_EQ(Take("A"), 0u);
    EXPECT_THAT(m_Calls.TakeAll(), ElementsAre(20, 30));
    EXPECT_THAT(m_Calls.TakeAll(), IsEmpty());
}

TEST_F(OpenCallsOfThreeJobs, ACallAtTheEndOfTheLastJobIsInTheJobInProgress) {
    Begin({40});
    EXPECT_EQ(Take("C"), 40u);
}

TEST_F(OpenCallsOfThreeJobs, AllCallsComeInOrderOfTheirStarts) {
    Begin({12, 25, 35});
    EXPECT_EQ(Take("C"), 0u);
    Begin({50, 60});
    EXPECT_THAT(m_Calls.TakeAll(), ElementsAre(12, 25, 35, 50, 60));
}

TEST(SharedName, IsCopiedWholeWhateverItsLength) {
    for (const std::size_t length : {0u, 1u, 4u, 14u, 15u, 16u, 40u}) {
        const std::string text = std::string("0123456789012345678901234567890123456789", length);
        for (const std::size_t room : {0u, 4u}) {
            std::vector<McuJob> jobs;
            jobs.reserve(room);
            SharedName(text).AppendTo(jobs, 1, 2).m_Flags = 3;
            ASSERT_EQ(jobs.size(), 1u);
            EXPECT_EQ(Told(jobs[0]), text + " 1-2 /3");
        }
    }
}

}  // namespace
}  // namespace vesk
