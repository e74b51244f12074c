#pragma once

#include <cstdint>

class CDC;

namespace vesk {

// What a function's lane is made of, all in one colour, so that the order in which it is drawn does
// not show: pieces that meet are drawn as one where the surface makes no difference between the
// two. They may come out later than they are told; Finish draws what is left. Borrows the context,
// which has the pen.
class LaneInk {
public:
    // The lane's base line is y.
    LaneInk(CDC*, int y, std::uint32_t color);

    // An edge between the levels; leaves the low level's pixel alone.
    void Edge(int x);
    // A level from one place to another, which is left out.
    void High(int from, int to);
    void Low(int from, int to);
    void Finish();

private:
    struct Run {
        int m_From = 0;
        int m_To = 0;
    };

    void Level(Run&, int y, int from, int to);
    void Add(Run&, int y, int height, int from, int to);
    void Draw(Run&, int y, int height);

    CDC* m_DC;
    const int m_Y;
    const std::uint32_t m_Color;
    const bool m_LinesAreAreas;
    Run m_Edges;
    Run m_High;
    Run m_Low;
};

}  // namespace vesk
