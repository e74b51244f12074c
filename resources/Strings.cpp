#include "resources/Tables.h"

namespace vesk {
namespace {

// Of a command: what it does, and, behind the line end, its tip.
constexpr StringEntry kStrings[] = {
    {2020, "Zoom in\nZoom in"},
    {32771, "Zoom out\nZoom out"},
    {32774, "Enable, Disable VESK\nConfig Vesk"},
    {40008, "Load Files\nLoad Vesk file (*.bin)"},
    {40142, "Set marker\nSet marker"},
    {40143, "Expand\nExpand specified time duration to full screen"},
};

}  // namespace

std::span<const StringEntry> Strings() {
    return kStrings;
}

}  // namespace vesk
