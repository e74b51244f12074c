#include "timeline/FunctionMarks.h"

#include <array>

#include "host/VESKUIDoc.h"
#include "platform/CDC.h"

namespace vesk {

namespace {

constexpr int kMarkSize = 5;
constexpr int kLabelHeight = 15;

void DrawMark(CDC* dc, int x, int axis, int tip) {
    const std::array<CPoint, 3> corners{
        {{x + tip, axis}, {x, axis + kMarkSize}, {x, axis - kMarkSize}}};
    dc->Polygon(corners.data(), 3);
}

}  // namespace

COLORREF FunctionColor(const std::string& name) {
    if (!global_vesk_doc_ptr) return 0;
    return global_vesk_doc_ptr->m_CustomColor.Lookup(ColorKey(name));
}

void DrawBeginMark(CDC* dc, int x, int axis) {
    DrawMark(dc, x, axis, kMarkSize);
}

void DrawEndMark(CDC* dc, int x, int axis) {
    DrawMark(dc, x, axis, -kMarkSize);
}

void DrawFunctionEdge(CDC* dc, int x, int y) {
    dc->MoveTo(x, FunctionHigh(y));
    dc->LineTo(x, FunctionLow(y));
}

void DrawFunctionLabel(CDC* dc, const std::string& name, int left, int y) {
    dc->TextOut((left - dc->GetTextExtent(name).cx) / 2, y - kLabelHeight, name);
}

}  // namespace vesk
