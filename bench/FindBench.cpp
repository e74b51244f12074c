// What a search costs in a short and in a very long log: F3 and Shift+F3 for names that are
// everywhere, at both ends only, or nowhere; going to frame numbers at the log's ends; the list of
// all finds.
#include <benchmark/benchmark.h>

#include <functional>
#include <string>

#include "host/VESKUIDoc.h"
#include "host/VESK_DLL_Shared_Data_T.h"
#include "log/McuJobList.h"
#include "timeline/CMcuView.h"
#include "timeline/SearchResults.h"

namespace {

constexpr int kNames = 64;
constexpr int kJobsPerFrame = 20;
constexpr std::uint64_t kJobLength = 200;

// Jobs of 64 names in turn; the first and the last job alone are named "Ends".
void ProvideLog(int jobs) {
    static int current = 0;
    if (current == jobs) return;
    current = jobs;
    McuJobList& list = *vesk_dll_shared_data.m_pJobList;
    list.Clear();
    list.reserve(static_cast<std::size_t>(jobs));
    for (int i = 0; i < jobs; ++i) {
        const std::uint64_t start = kJobLength * static_cast<std::uint64_t>(i);
        const bool isEnd = i == 0 || i == jobs - 1;
        McuJob job(isEnd ? "Ends" : "Task" + std::to_string(i % kNames), start, start + kJobLength);
        job.m_TimeStamp = i / kJobsPerFrame;
        list.Insert(job);
    }
}

class Window {
public:
    Window() {
        m_View.MoveWindow(0, 0, 1920, 1080);
        m_View.OnCreate();
    }
    CMcuView& View() { return m_View; }

private:
    VESKUIDoc m_Document;
    CMcuView m_View;
};

using Step = std::function<void(CMcuView&, int jobs)>;

struct Case {
    const char* m_Name;
    const char* m_Text;  // searched for
    Step m_Step;
};

void ToEveryEnd(CMcuView& view, int jobs) {
    view.GoTo_FrameNo((jobs - 1) / kJobsPerFrame);
    view.GoTo_FrameNo(0);
}

const Case kCases[] = {
    {"F3 for a name that is everywhere", "Task7", [](CMcuView& view, int) { view.OnVkFind(); }},
    {"F3 for a name at both ends", "ends", [](CMcuView& view, int) { view.OnVkFind(); }},
    {"F3 for a name that is nowhere", "none", [](CMcuView& view, int) { view.OnVkFind(); }},
    {"F3 for any name", "", [](CMcuView& view, int) { view.OnVkFind(); }},
    {"Shift+F3 for a name at both ends", "ENDS", [](CMcuView& view, int) { view.OnVkFindUp(); }},
    {"frame numbers at both ends", "", ToEveryEnd},
};

void Run(benchmark::State& state, const Case& what, int jobs) {
    ProvideLog(jobs);
    Window window;
    window.View().m_FindText = what.m_Text;
    what.m_Step(window.View(), jobs);  // builds what is derived from the log
    for (auto _ : state) what.m_Step(window.View(), jobs);
}

void RunAll(benchmark::State& state, const char* name, int jobs) {
    ProvideLog(jobs);
    for (auto _ : state) {
        const vesk::SearchResults hits(
            *vesk_dll_shared_data.m_pJobList, vesk::SearchTarget::kJobs,
            [&](const std::string& other) { return !*name || other == name; });
        benchmark::DoNotOptimize(hits.Count());
    }
}

void Register(int jobs) {
    const std::string suffix = "/" + std::to_string(jobs);
    for (const Case& what : kCases)
        benchmark::RegisterBenchmark((what.m_Name + suffix).c_str(), [=, &what](
                                                                         benchmark::State& state) {
            Run(state, what, jobs);
        })->Unit(benchmark::kMicrosecond);
    for (const char* const name : {"Task7", ""})
        benchmark::RegisterBenchmark(("all finds of \"" + std::string(name) + '"' + suffix).c_str(),
                                     [=](benchmark::State& state) { RunAll(state, name, jobs); })
            ->Unit(benchmark::kMillisecond);
}

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    for (const int jobs : {10000, 1000000, 10000000}) Register(jobs);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
