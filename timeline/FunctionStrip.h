#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/Color.h"
#include "timeline/TimeScale.h"

class CDC;

namespace vesk {

// A piece of a function's execution on the strip of all functions.
struct FunctionBlock {
    int m_Function = 0;  // a small number that stands for the name
    const std::string* m_Name = nullptr;
    std::uint64_t m_Start = 0;  // not before the left edge
    std::uint64_t m_End = 0;
    bool m_BeginMark = false;  // shown where there is room
    bool m_EndMark = false;
};

// Paints blocks with their marks and names. Looks a name's colour up and measures it once. Leaves
// pen and brush as they were. Borrows the context.
class FunctionStrip {
public:
    FunctionStrip(CDC*, const TimeScale&, int right, int height, int y);

    // False, and nothing is drawn, if the block lies beyond what can be seen.
    bool Draw(const FunctionBlock&);
    // What a block without a pixel of its own leaves behind, at x: the dots of its name.
    void DrawDots(int function, const std::string& name, int x);
    // Whether the text of a block is no more than its dots, so that they cover those of others.
    bool HasOnlyDots(const FunctionBlock&);
    // Whether a block without a pixel of its own leaves anything.
    bool HasDots(int function, const std::string& name) {
        return LookOf(function, name).m_TextWidth > 0;
    }

private:
    struct Look {
        bool m_IsKnown = false;
        COLORREF m_Color = 0;
        int m_TextWidth = 0;
        int m_LeastWidth = 0;  // below it no letter stands before the dots

        bool HasOnlyDots(int width) const { return width < m_TextWidth && width < m_LeastWidth; }
    };

    int WidthOf(const FunctionBlock&, int x) const;
    const Look& LookOf(int function, const std::string& name);
    void DrawMarks(const FunctionBlock&, COLORREF, int x, int width);
    void DrawText(const Look&, const std::string& name, int x, int width);

    CDC* m_DC;
    const TimeScale m_Scale;
    const int m_Right;
    const int m_Height;
    const int m_Y;
    std::vector<Look> m_Looks;  // by function
};

}  // namespace vesk
