// The text export of jobs against what it cannot do without: a bare loop of std::to_chars and
// memcpy that puts the same bytes into a buffer and hands it on. Each iteration times both sides,
// one after the other, so that the ratio stands for one moment of the machine. Counters: ns and
// bare_ns per job, ratio of the two.
//
//   ExportBench --benchmark_repetitions=7 --benchmark_report_aggregates_only=true

#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <unistd.h>

#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <string>
#include <vector>

#include "log/McuJobList.h"
#include "platform/OutputBuffer.h"
#include "timeline/TextExport.h"

namespace vesk {
namespace {

constexpr std::size_t kBlock = std::size_t{1} << 18;
constexpr std::size_t kLongestJob = 256;  // bytes of text

double ProcessorTime() {
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

// Names, times and counters of the usual lengths, the same on every machine.
McuJobList JobsOf(std::int64_t count) {
    McuJobList list;
    list.reserve(static_cast<std::size_t>(count));
    std::uint64_t time = 0;
    std::uint32_t state = 1;
    for (std::int64_t i = 0; i < count; ++i) {
        state = state * 1664525 + 1013904223;
        const std::uint32_t name = state >> 26;
        const std::uint64_t end = time + 20 + (state >> 8) % 400;
        McuJob& job = list.emplace_back((name < 40 ? "Task" : "IRQ0x") + std::to_string(name % 40),
                                        time, end);
        job.m_TimeStamp = static_cast<std::int32_t>(time / 5000);
        job.m_TimeCount = static_cast<std::uint32_t>(time);
        time = end;
    }
    list.m_EndTime = time;
    return list;
}

// --- The bare loop -------------------------------------------------------------------------------

template <std::size_t Size>
char* Append(char* to, const char (&text)[Size]) {
    std::memcpy(to, text, Size - 1);
    return to + Size - 1;
}

template <class Integer>
char* AppendNumber(char* to, Integer number) {
    return std::to_chars(to, to + 24, number).ptr;
}

char* AppendJob(char* to, const McuJob& job) {
    to = Append(to, "JobName: ");
    std::memcpy(to, job.m_Name.data(), job.m_Name.size());
    to = Append(to + job.m_Name.size(), "\n    FrameNo: ");
    to = Append(AppendNumber(to, job.m_TimeStamp), ",  TQCNT: ");
    to = Append(AppendNumber(to, job.m_TimeCount), ",  Start: ");
    to = Append(AppendNumber(to, static_cast<std::int64_t>(job.m_StartTime)), ",  End: ");
    return Append(AppendNumber(to, static_cast<std::int64_t>(job.m_EndTime)), "\n");
}

std::int64_t WriteBarely(const McuJobList& list, int file) {
    std::vector<char> block(kBlock);
    std::int64_t bytes = 0;
    char* to = block.data();
    const auto flush = [&] {
        const ssize_t written =
            write(file, block.data(), static_cast<std::size_t>(to - block.data()));
        bytes += written;
        to = block.data();
    };
    for (const McuJob& job : list) {
        if (static_cast<std::size_t>(to - block.data()) > kBlock - kLongestJob) flush();
        to = AppendJob(to, job);
    }
    to = Append(to, "\n");
    flush();
    return bytes;
}

// --- Both ----------------------------------------------------------------------------------------

// Ends the program where the two do not write the same.
void CheckSameBytes(const McuJobList& list) {
    std::string texts[2];
    for (int side = 0; side < 2; ++side) {
        std::FILE* const file = std::tmpfile();
        OutputBuffer out(fileno(file));
        if (side == 0)
            WriteBarely(list, fileno(file));
        else if (!WriteJobText(list, out, {}) || !out.Flush())
            std::abort();
        std::fseek(file, 0, SEEK_END);
        texts[side].resize(static_cast<std::size_t>(std::ftell(file)));
        std::rewind(file);
        if (std::fread(texts[side].data(), 1, texts[side].size(), file) != texts[side].size())
            std::abort();
        std::fclose(file);
    }
    if (texts[0] == texts[1]) return;
    std::fputs("the bare loop writes something else\n", stderr);
    std::exit(1);
}

void Text(benchmark::State& state) {
    CheckSameBytes(JobsOf(1000));
    const McuJobList list = JobsOf(state.range(0));
    const int file = open("/dev/null", O_WRONLY);
    double exported = 0, bare = 0;
    std::int64_t bytes = 0;
    for (auto _ : state) {
        const double start = ProcessorTime();
        bytes += WriteBarely(list, file);
        const double between = ProcessorTime();
        OutputBuffer out(file);
        if (!WriteJobText(list, out, [](std::int64_t, std::int64_t) { return true; }) ||
            !out.Flush())
            std::abort();
        const double end = ProcessorTime();
        bare += between - start;
        exported += end - between;
        state.SetIterationTime(end - between);
    }
    close(file);
    const double jobs = static_cast<double>(state.range(0) * state.iterations());
    state.SetBytesProcessed(bytes);
    state.counters["ns"] = 1e9 * exported / jobs;
    state.counters["bare_ns"] = 1e9 * bare / jobs;
    state.counters["ratio"] = exported / bare;
}

BENCHMARK(Text)->Arg(10000)->Arg(10000000)->UseManualTime()->Iterations(1);

}  // namespace
}  // namespace vesk

BENCHMARK_MAIN();
