#include <dlfcn.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "simulator/RecordIds.h"
#include "tests/log/LogBytes.h"
#include "tests/support/LogBuilder.h"

namespace vesk {
namespace {

using testing::IsEmpty;

constexpr std::int64_t kStep = std::int64_t{4} << 20;  // bytes between two calls

struct Call {
    std::int64_t done, total;
};

// 7 MB of tasks and marks, which are counted before they are stored.
std::string MakeTasksAndMarks() {
    std::string bytes;
    for (std::uint32_t i = 0; i < 600000; ++i)
        bytes += Words({i % 2 ? record::Mark("m") : record::Task("T"), 5000U << 16 | i % 5000, 0});
    return LogBuilder().WithHeader(3).Raw(bytes).Bytes();
}

const std::string& TasksAndMarks() {
    static const std::string bytes = MakeTasksAndMarks();
    return bytes;
}

// A read that is cancelled at its n-th call, from 0; -1 for never.
struct FollowedRead {
    FollowedRead(const std::string& bytes, int cancelAt, RangeChooser* chooser = nullptr)
        : m_Read(::Read(bytes, {}, {}, [&](McuJobList& jobs) {
              jobs.SetRangeChooser(chooser);
              jobs.SetProgress([this, cancelAt](std::int64_t done, std::int64_t total) {
                  m_Calls.push_back({done, total});
                  return static_cast<int>(m_Calls.size()) - 1 != cancelAt;
              });
          })) {}

    std::vector<Call> m_Calls;
    ReadResult m_Read;
};

void ExpectSteadyProgress(const std::vector<Call>& calls, std::int64_t total) {
    std::int64_t before = 0;
    for (const Call& call : calls) {
        EXPECT_EQ(call.total, total);
        EXPECT_GE(call.done, before);
        EXPECT_LE(call.done - before, kStep + kStep / 2);
        before = call.done;
    }
    EXPECT_LE(before, total);
    EXPECT_GT(before, total - kStep - kStep / 2);
}

TEST(Progress, GoesSteadilyTowardsTheTotal) {
    const FollowedRead read(TasksAndMarks(), -1);
    EXPECT_TRUE(read.m_Read.ok) << read.m_Read.error;
    EXPECT_GE(read.m_Calls.size(), 4u);
    ExpectSteadyProgress(read.m_Calls,
                         2 * (static_cast<std::int64_t>(TasksAndMarks().size()) - 1036));
}

// The read takes one record more than the unit holds.
TEST(Progress, DoesNotPassTheTotalOfAUnit) {
    UnitChooser first(4096, 0);
    const FollowedRead read(TasksAndMarks(), -1, &first);
    EXPECT_TRUE(read.m_Read.ok) << first.m_Error;
    const ReadReport& report = read.m_Read.jobs.Report();
    ExpectSteadyProgress(read.m_Calls, 2 * (report.m_RangeEnd - report.m_RangeStart));
}

TEST(Progress, CancelLeavesAClearedListWithoutAText) {
    const FollowedRead whole(TasksAndMarks(), -1);
    const int calls = static_cast<int>(whole.m_Calls.size());
    for (int cancelAt = 0; cancelAt < calls; ++cancelAt) {
        SCOPED_TRACE(cancelAt);
        const FollowedRead cancelled(TasksAndMarks(), cancelAt);
        const McuJobList& jobs = cancelled.m_Read.jobs;
        EXPECT_FALSE(cancelled.m_Read.ok);
        EXPECT_EQ(cancelled.m_Read.error, "");
        EXPECT_EQ(cancelled.m_Calls.size(), static_cast<std::size_t>(cancelAt) + 1);
        EXPECT_EQ(jobs.Report().m_Outcome, ReadOutcome::kCancelled);
        EXPECT_THAT(jobs, IsEmpty());
        EXPECT_THAT(jobs.m_JobNames, IsEmpty());
        EXPECT_THAT(jobs.m_SourceMarks, IsEmpty());
        EXPECT_THAT(jobs.m_SourceMarkNames, IsEmpty());
        EXPECT_THAT(jobs.m_ExtraInfos, IsEmpty());
        EXPECT_EQ(jobs.m_EndTime, 0u);
    }
}

bool IsExampleLoaded() {
    void* library = dlopen(McuJobList().GetParsingDllPath("EXAMPLE"), RTLD_LAZY | RTLD_NOLOAD);
    if (library) dlclose(library);
    return library != nullptr;
}

TEST(Progress, CancelReleasesThePlugins) {
    const LogBuilder log = LogBuilder()
                               .WithHeader(1)
                               .Extra(HeaderItem::Plugin(0x10006, 8, "EXAMPLE"))
                               .Task("A", 100)
                               .Task("B", 200);
    for (int cancelAt = 0; cancelAt < 3; ++cancelAt) {
        SCOPED_TRACE(cancelAt);
        int call = 0;
        bool wasLoaded = false;
        const ReadResult read = Read(log, [&](McuJobList& jobs) {
            jobs.SetProgress([&](std::int64_t, std::int64_t) {
                wasLoaded = IsExampleLoaded();
                return call++ != cancelAt;
            });
        });
        EXPECT_EQ(read.ok, cancelAt == 2);  // two passes, one call each
        EXPECT_TRUE(wasLoaded);
        EXPECT_FALSE(IsExampleLoaded());
        EXPECT_THAT(read.jobs.m_ParsingInfos, IsEmpty());
    }
}

}  // namespace
}  // namespace vesk
