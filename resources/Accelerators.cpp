#include "platform/Keys.h"
#include "resources/Tables.h"

namespace vesk {
namespace {

constexpr AcceleratorEntry kKeys[] = {
    // Timeline
    {kControl, VK_ADD, 2020},
    {kControl, VK_SUBTRACT, 32771},
    {kControl, 'G', 40102},
    {kControl, 'F', 57636},
    {kNoModifier, VK_F3, 40022},
    {kShift, VK_F3, 40056},
    // File
    {kControl, 'N', 57600},
    {kControl, 'O', 57601},
    {kControl, 'S', 57603},
    // Edit, each old key beside the new one
    {kControl, 'C', 57634},
    {kControl, VK_INSERT, 57634},
    {kControl, 'X', 57635},
    {kShift, VK_DELETE, 57635},
    {kControl, 'V', 57637},
    {kShift, VK_INSERT, 57637},
    {kControl, 'A', 57642},
    {kControl, 'Z', 57643},
    {kAlt, VK_BACK, 57643},
    // Panes
    {kNoModifier, VK_F6, 57680},
    {kShift, VK_F6, 57681},
    {kAlt, VK_RIGHT, 40265},
    {kAlt, VK_DOWN, 40273},
};

constexpr AcceleratorTable kTables[] = {{128, kKeys}, {358, kKeys}};

}  // namespace

std::span<const AcceleratorTable> Accelerators() {
    return kTables;
}

}  // namespace vesk
