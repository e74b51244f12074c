// What painting costs: primitives of the kinds that a timeline consists of, on a full screen.
#include <benchmark/benchmark.h>

#include <string>

#include "platform/CBitmap.h"
#include "platform/CDC.h"
#include "platform/CPen.h"
#include "platform/RasterSurface.h"

namespace {

constexpr CSize kScreen{1920, 1080};
constexpr int kRowHeight = 20;

const vesk::FixedGlyphs kGlyphs;

// The argument is the scale in hundredths.
vesk::RasterSurface Screen(const benchmark::State& state) {
    return {kScreen, kGlyphs, static_cast<double>(state.range(0)) / 100};
}

void Fills(benchmark::State& state) {
    vesk::RasterSurface surface = Screen(state);
    CDC dc(&surface);
    for (auto _ : state) {
        for (int i = 0; i < 100000; ++i) {
            dc.FillSolidRect(i % kScreen.cx, 300, 1 + i % 3, 270, static_cast<COLORREF>(i));
        }
    }
    state.SetItemsProcessed(state.iterations() * 100000);
}

// 30 square waves of 2000 jobs each.
void Waves(benchmark::State& state) {
    vesk::RasterSurface surface = Screen(state);
    CDC dc(&surface);
    for (auto _ : state) {
        for (int lane = 0; lane < 30; ++lane) {
            const int y = 50 + lane * kRowHeight;
            dc.MoveTo(0, y);
            for (int i = 0; i < 2000; ++i) {
                const int x = i * kScreen.cx / 2000;
                if (i % 30 == lane) dc.LineTo(x, y - 10);
                dc.LineTo(x + 1, y);
            }
        }
    }
    state.SetItemsProcessed(state.iterations() * 60000);
}

void DottedBoundaries(benchmark::State& state) {
    vesk::RasterSurface surface = Screen(state);
    CDC dc(&surface);
    CPen dots(PS_DOT, 1, 0xB4B4B4);
    dc.SelectObject(&dots);
    for (auto _ : state) {
        for (int x = 0; x < kScreen.cx; x += 2) {
            dc.MoveTo(x, 30);
            dc.LineTo(x, 900);
        }
    }
    state.SetItemsProcessed(state.iterations() * kScreen.cx / 2);
}

void Marks(benchmark::State& state) {
    vesk::RasterSurface surface = Screen(state);
    CDC dc(&surface);
    for (auto _ : state) {
        for (int i = 0; i < 10000; ++i) {
            const int x = i % kScreen.cx;
            const CPoint corners[] = {{x, 210}, {x - 2, 200}, {x + 2, 200}};
            dc.Polygon(corners, 3);
        }
    }
    state.SetItemsProcessed(state.iterations() * 10000);
}

void Names(benchmark::State& state) {
    vesk::RasterSurface surface = Screen(state);
    CDC dc(&surface);
    dc.SetBkMode(TRANSPARENT);
    const std::string name = "MainTask";
    for (auto _ : state) {
        for (int i = 0; i < 2000; ++i) {
            dc.TextOut(i * 13 % kScreen.cx, i * 7 % kScreen.cy, name);
            benchmark::DoNotOptimize(dc.GetTextExtent(name));
        }
    }
    state.SetItemsProcessed(state.iterations() * 2000);
}

// What every paint pays: a bitmap of the screen's size, its ground, and the copy to the screen.
void DoubleBuffer(benchmark::State& state) {
    vesk::RasterSurface surface = Screen(state);
    CDC screen(&surface);
    for (auto _ : state) {
        CBitmap picture;
        CDC memory;
        memory.CreateCompatibleDC(&screen);
        picture.CreateCompatibleBitmap(&screen, kScreen.cx, kScreen.cy);
        memory.SelectObject(&picture);
        memory.FillSolidRect(0, 0, kScreen.cx, kScreen.cy, 0xFFFFFF);
        screen.BitBlt(0, 0, kScreen.cx, kScreen.cy, &memory, 0, 0);
    }
}

BENCHMARK(Fills)->Arg(100)->Arg(150)->Arg(200)->Unit(benchmark::kMillisecond);
BENCHMARK(Waves)->Arg(100)->Arg(150)->Arg(200)->Unit(benchmark::kMillisecond);
BENCHMARK(DottedBoundaries)->Arg(100)->Arg(200)->Unit(benchmark::kMillisecond);
BENCHMARK(Marks)->Arg(100)->Arg(200)->Unit(benchmark::kMillisecond);
BENCHMARK(Names)->Arg(100)->Arg(200)->Unit(benchmark::kMillisecond);
BENCHMARK(DoubleBuffer)->Arg(100)->Arg(150)->Arg(200)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
