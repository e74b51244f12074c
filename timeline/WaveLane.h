#pragma once

#include <cstdint>

#include "timeline/RecordOrder.h"
#include "timeline/TimeScale.h"

class CDC;

namespace vesk {

// Whether straight lines on a context cover whole logical pixels, so that neighbouring ones make
// an area: on pixels, at a whole scale.
bool LinesAreAreas(const CDC&);

// Draws the square wave of one lane, left to right, with the context's pen: low between records,
// high while one runs, with edges where they begin and end. Lengths and edges that meet are drawn
// as one where the surface makes no difference between the two. Lines may come out later than
// they are told; Finish ends the lane. Borrows the context.
class WaveLane {
public:
    // The low level lies at y. The pen's colour is needed where edges are drawn as areas.
    WaveLane(CDC*, const TimeScale&, int left, int right, int y, std::uint32_t color);

    // A record of the lane, from its visible start to its effective end. False, and nothing is
    // drawn, if its start lies beyond 31 bits of pixels: nothing more can be seen.
    bool High(std::uint64_t start, std::uint64_t end);
    void HighAt(int x, std::int64_t width);  // pixels
    // Some other record, up to its end.
    void Low(std::uint64_t end);
    // A moment of the lane, an edge up without a length.
    bool Tick(std::uint64_t time);
    void TickAt(int x);
    // Records of a simple column, the last one left out; edges tells whether one is of the lane.
    void Column(int x, bool edges) {
        LowTo(x);
        if (edges) ColumnEdges(x);
    }
    // Low, up to a pixel.
    void LowTo(int x) {
        if (x < m_X) LowBackTo(x);
        m_X = x;
    }
    void Finish();

private:
    void LowBackTo(int x);
    void ColumnEdges(int x);
    void DrawLow();
    void Edges(int x);
    void DrawEdges();
    void Line(int x1, int y1, int x2, int y2);

    CDC* m_DC;
    const TimeScale m_Scale;
    const int m_Left;
    const int m_Right;
    const int m_LowY;
    const int m_HighY;
    const std::uint32_t m_Color;
    bool m_EdgesAreAreas;
    int m_X;              // where the lane has been drawn to
    int m_LowFrom;        // low level not drawn yet, up to m_X
    int m_EdgesFrom = 0;  // full edges not drawn yet, in every column up to m_EdgesTo
    int m_EdgesTo = 0;
};

}  // namespace vesk
