// What a click, a hit test and a move of the mouse cost with a short and with a very long log in
// view, all of it on a canvas of 1810 pixels, with a tip that stands.
#include <benchmark/benchmark.h>

#include <functional>
#include <memory>
#include <string>

#include "host/VESK_DLL_Shared_Data_T.h"
#include "log/McuJobList.h"
#include "timeline/CMcuView.h"

namespace {

constexpr int kFunctions = 32;

// Jobs without gaps; a segment, a call and a mark for every fourth.
void ProvideLog(int jobs) {
    static int current = 0;
    if (current == jobs) return;
    current = jobs;
    McuJobList& list = *vesk_dll_shared_data.m_pJobList;
    list.Clear();
    list.reserve(static_cast<std::size_t>(jobs));
    std::uint64_t time = 0;
    for (int i = 0; i < jobs; ++i) {
        const std::uint64_t end = time + 20 + static_cast<std::uint64_t>(i) * 7919 % 400;
        list.Insert("Task" + std::to_string(i % 40), time, end);
        if (i % 4 == 0) {
            const McuJob call("f" + std::to_string(i / 4 % kFunctions), time + 3, end + 50);
            list.InsertCustomJob(call, time);
            list.InsertCustomJobCS(call);
            list.InsertSourceMark({"mk", time, time});
        }
        time = end;
    }
}

std::unique_ptr<CMcuView> WholeLog() {
    auto view = std::make_unique<CMcuView>();
    view->MoveWindow(0, 0, 1920, 1080);
    view->OnCreate();
    view->OnSize(SIZE_RESTORED, 1920, 1080);
    view->ShowWholeLog();
    return view;
}

// One step after the other at columns all over the canvas.
void Run(benchmark::State& state, const std::function<void(CMcuView&, int x)>& step) {
    ProvideLog(static_cast<int>(state.range(0)));
    const std::unique_ptr<CMcuView> view = WholeLog();
    step(*view, 500);
    int x = 0;
    for (auto _ : state) {
        x = (x + 719) % 1800;
        step(*view, 85 + x);
    }
}

void HitTests(benchmark::State& state) {
    Run(state, [](CMcuView& view, int x) {
        McuJob job;
        int index = 0;
        std::uint64_t end = 0;
        benchmark::DoNotOptimize(view.HitTest({x, 100}, 10, 80, 100, job, index));
        benchmark::DoNotOptimize(view.HitTest_CustomJob({x, 100}, 10, 80, 100, job, end));
        benchmark::DoNotOptimize(view.HitTest_SourceMark({x, 100}, 10, 80, 100, job));
    });
}

// Its text grows with what lies under the pixel.
void HitTestOfCalls(benchmark::State& state) {
    CString text;
    int lines = 0;
    Run(state, [&](CMcuView& view, int x) {
        benchmark::DoNotOptimize(view.HitTest_CustomJobCS({x, 100}, 10, 80, 100, text, lines));
    });
    state.counters["calls"] = lines / 8;
}

// Through all strips in turn.
void MouseMove(benchmark::State& state) {
    Run(state, [](CMcuView& view, int x) {
        view.m_ToolTipShown = 1;
        const int bottom = view.m_CanvasBottom;
        const int heights[] = {bottom * 3 / 5, bottom / 3, bottom * 7 / 30 - 5, 5};
        view.OnMouseMove(0, {x, heights[x % 4]});
    });
}

void Click(benchmark::State& state) {
    Run(state, [](CMcuView& view, int x) {
        view.OnLButtonDown(MK_LBUTTON, {x, view.m_CanvasBottom * 3 / 5});
        view.OnLButtonUp(0, {});
    });
}

// What is derived from the log is built here.
void FirstHitTests(benchmark::State& state) {
    ProvideLog(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        state.PauseTiming();
        std::unique_ptr<CMcuView> view = WholeLog();
        state.ResumeTiming();
        McuJob job;
        int index = 0;
        benchmark::DoNotOptimize(view->HitTest({500, 100}, 10, 80, 100, job, index));
        state.PauseTiming();
        view.reset();
        state.ResumeTiming();
    }
}

void Sizes(benchmark::internal::Benchmark* bench) {
    bench->Arg(10000)->Arg(10000000)->Unit(benchmark::kMicrosecond);
}

BENCHMARK(HitTests)->Apply(Sizes);
BENCHMARK(HitTestOfCalls)->Apply(Sizes);
BENCHMARK(MouseMove)->Apply(Sizes);
BENCHMARK(Click)->Apply(Sizes);
BENCHMARK(FirstHitTests)->Apply(Sizes)->Iterations(3);

}  // namespace

BENCHMARK_MAIN();
