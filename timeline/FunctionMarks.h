#pragma once

#include <string>

#include "platform/Color.h"

class CDC;

namespace vesk {

// What lanes and strips of functions have in common. All draw with the context's pen and brush.

// Colour of a function in the document; black without a document.
COLORREF FunctionColor(const std::string& name);

// Triangles at a function's entry, pointing right, and at its exit, pointing left.
void DrawBeginMark(CDC*, int x, int axis);
void DrawEndMark(CDC*, int x, int axis);

// Levels of a lane whose base line is y.
constexpr int FunctionLow(int y) {
    return y - 5;
}
constexpr int FunctionHigh(int y) {
    return y - 15;
}
constexpr int FunctionAxis(int y) {
    return y - 10;
}

// An edge between the levels, up or down; leaves the low level's pixel alone.
void DrawFunctionEdge(CDC*, int x, int y);
void DrawFunctionLabel(CDC*, const std::string& name, int left, int y);

}  // namespace vesk
