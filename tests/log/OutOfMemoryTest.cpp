#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <fstream>

#include "log/HostValues.h"
#include "log/McuJobList.h"
#include "simulator/Simulator.h"
#include "tests/support/TemporaryFile.h"

namespace vesk {
namespace {

#if !defined(__SANITIZE_ADDRESS__)  // which needs all addresses for itself

std::uint64_t AddressSpaceInUse() {
    std::uint64_t pages = 0;
    std::ifstream("/proc/self/statm") >> pages;
    return pages * static_cast<std::uint64_t>(sysconf(_SC_PAGESIZE));
}

// What a read looks like from a process that may not grow by the size of its list: 0 if all is
// well, else what is not.
int ReadWithLittleMemory(const std::string& path, TargetDatabase& database) {
    TargetDatabase::Select(&database);
    CurrentHostValues().m_Capability = database.m_Capability;
    McuJobList list;
    list.registerDBCallback(TargetDatabase::LookUpFormat, TargetDatabase::LookUpEnum);
    constexpr rlim_t kRoom = rlim_t{64} << 20;
    const rlimit limit{AddressSpaceInUse() + kRoom, RLIM_INFINITY};
    if (setrlimit(RLIMIT_AS, &limit) != 0) return 1;
    std::string error;
    if (list.ReadFile(path, error)) return 2;
    if (error != "Out of memory. Please split VESK file first.") return 3;
    if (list.Report().m_Outcome != ReadOutcome::kPartial) return 4;
    std::size_t named = 0;
    for (const auto& [name, count] : list.m_JobNames) named += static_cast<std::size_t>(count);
    if (list.empty() || named != list.size()) return 5;
    return list.m_EndTime == list.back().m_EndTime ? 0 : 6;
}

TEST(OutOfMemory, KeepsTheJobsThatFitAndSaysSo) {
    SimulatorOptions options;
    options.m_Records = 2'000'000;
    options.m_Functions = options.m_Marks = options.m_Hardware = false;
    Simulator simulator(options);
    std::string bytes;
    ASSERT_TRUE(simulator.WriteLog(SinkTo(bytes)));
    const TemporaryFile file(bytes);
    TargetDatabase database = simulator.Database();
    const pid_t child = fork();
    if (child == 0) _exit(ReadWithLittleMemory(file.Path(), database));
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 0);
}

#endif

}  // namespace
}  // namespace vesk
