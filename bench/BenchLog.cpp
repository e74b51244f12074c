#include "bench/BenchLog.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>

#include "log/HostValues.h"
#include "simulator/Simulator.h"

namespace vesk {

namespace {

constexpr std::uint64_t kPlainRecords = 10'000'000;
constexpr std::uint64_t kOtherRecords = 2'000'000;

std::string Beside(const std::string& path) {
    return std::filesystem::path(path).replace_extension(".target.json").string();
}

[[noreturn]] void GiveUp(const std::string& text) {
    std::fprintf(stderr, "%s\n", text.c_str());
    std::exit(1);
}

double Seconds(const timeval& time) {
    return static_cast<double>(time.tv_sec) + 1e-6 * static_cast<double>(time.tv_usec);
}

}  // namespace

SimulatorOptions OnlySwitches() {
    SimulatorOptions options;
    options.m_Form = SimulatedForm::kVersion2;
    options.m_Records = kPlainRecords;
    options.m_Tasks = 48;
    options.m_Functions = options.m_Marks = options.m_Hardware = false;
    return options;
}

SimulatorOptions MicrosecondsWithExtraValues() {
    SimulatorOptions options = OnlySwitches();
    options.m_IsMicroseconds = true;
    options.m_Records = kOtherRecords;
    options.m_ExtraValues = 4;
    return options;
}

SimulatorOptions Packets() {
    SimulatorOptions options;
    options.m_Form = SimulatedForm::kPackets;
    options.m_Records = kOtherRecords;
    options.m_Losses = true;
    return options;
}

SimulatorOptions Functions() {
    SimulatorOptions options;
    options.m_Form = SimulatedForm::kVersion2;
    options.m_Records = kOtherRecords;
    options.m_Marks = options.m_Hardware = false;
    return options;
}

BenchLog::BenchLog(const std::string& name, const SimulatorOptions& options)
    : m_Path((std::filesystem::temp_directory_path() /
              ("vesk_bench_" + std::to_string(getpid()) + "_" + name + ".bin"))
                 .string()) {
    Simulator simulator(options);
    std::ofstream file(m_Path, std::ios::binary);
    if (!simulator.WriteLog(SinkTo(file)) || !file.flush()) GiveUp("cannot write " + m_Path);
    std::ofstream description(Beside(m_Path));
    simulator.WriteTargetDescription(description);
    m_Database = simulator.Database();
    for (const auto& job : simulator.Truth().m_Jobs) m_Jobs += job.second.m_Count;
}

BenchLog::~BenchLog() {
    std::error_code error;
    std::filesystem::remove(m_Path, error);
    std::filesystem::remove(Beside(m_Path), error);
}

void BenchLog::ReadInto(McuJobList& list) {
    TargetDatabase::Select(&m_Database);
    CurrentHostValues().m_Capability = m_Database.m_Capability;
    list.registerDBCallback(TargetDatabase::LookUpFormat, TargetDatabase::LookUpEnum);
    std::string error;
    if (!list.ReadFile(m_Path, error)) GiveUp("cannot read the simulated log: " + error);
}

double ProcessorTime() {
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

ProgramCost RunProgram(const std::string& path, const std::string& argument1,
                       const std::string& argument2) {
    std::string texts[] = {path, argument1, argument2};
    char* arguments[] = {texts[0].data(), texts[1].data(),
                         argument2.empty() ? nullptr : texts[2].data(), nullptr};
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t child = 0;
    const int failed = posix_spawn(&child, path.c_str(), &actions, nullptr, arguments, environ);
    posix_spawn_file_actions_destroy(&actions);
    int status = 0;
    rusage usage{};
    if (failed != 0 || wait4(child, &status, 0, &usage) != child || status != 0)
        GiveUp("cannot run " + path);
    return {Seconds(usage.ru_utime) + Seconds(usage.ru_stime), usage.ru_maxrss};
}

}  // namespace vesk
