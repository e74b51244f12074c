#include "timeline/LaneInk.h"

#include <algorithm>

#include "platform/CDC.h"
#include "timeline/FunctionMarks.h"
#include "timeline/WaveLane.h"

namespace vesk {

namespace {

constexpr int kEdge = FunctionLow(0) - FunctionHigh(0);

}  // namespace

LaneInk::LaneInk(CDC* dc, int y, std::uint32_t color)
    : m_DC(dc), m_Y(y), m_Color(color), m_LinesAreAreas(LinesAreAreas(*dc)) {}

void LaneInk::Edge(int x) {
    if (m_LinesAreAreas && x < INT32_MAX) {
        Add(m_Edges, FunctionHigh(m_Y), kEdge, x, x + 1);
    } else {
        DrawFunctionEdge(m_DC, x, m_Y);
    }
}

void LaneInk::High(int from, int to) {
    Level(m_High, FunctionHigh(m_Y), from, to);
}

void LaneInk::Low(int from, int to) {
    Level(m_Low, FunctionLow(m_Y), from, to);
}

void LaneInk::Finish() {
    Draw(m_Edges, FunctionHigh(m_Y), kEdge);
    Draw(m_High, FunctionHigh(m_Y), 1);
    Draw(m_Low, FunctionLow(m_Y), 1);
}

// A line to the left covers other pixels than one to the right.
void LaneInk::Level(Run& run, int y, int from, int to) {
    if (m_LinesAreAreas && from <= to) {
        Add(run, y, 1, from, to);
    } else {
        m_DC->MoveTo(from, y);
        m_DC->LineTo(to, y);
    }
}

void LaneInk::Add(Run& run, int y, int height, int from, int to) {
    if (from == to) return;
    if (from > run.m_To || to < run.m_From) {
        Draw(run, y, height);
        run = {from, to};
    } else {
        run = {std::min(run.m_From, from), std::max(run.m_To, to)};
    }
}

void LaneInk::Draw(Run& run, int y, int height) {
    if (run.m_From != run.m_To)
        m_DC->FillSolidRect(run.m_From, y, run.m_To - run.m_From, height, m_Color);
    run = {};
}

}  // namespace vesk
