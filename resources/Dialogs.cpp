#include "platform/UserInterface.h"
#include "resources/Tables.h"

namespace vesk {

namespace {

using enum ControlKind;
constexpr int kDialog = -1;  // the dialog's own grid
constexpr int kNoId = -1;

constexpr int kLogGroup = 0;
constexpr int kHeaderGroup = 3;
constexpr ControlTemplate kNoHeader[] = {
    {Group, kNoId, "Load Vesk file without header", kDialog, 0, 0, 1, 3},
    {Edit, 1000, "", kLogGroup, 0, 0, 1, 1},
    {Button, 1002, "...", kLogGroup, 0, 1, 1, 1},
    {Group, kNoId, "Use header of Vesk file", kDialog, 1, 0, 1, 3},
    {Edit, 1819, "", kHeaderGroup, 0, 0, 1, 1},
    {Button, 1003, "...", kHeaderGroup, 0, 1, 1, 1},
    {Button, IDOK, "&OK", kDialog, 2, 1, 1, 1, kDefault},
    {Button, IDCANCEL, "&Cancel", kDialog, 2, 2, 1, 1},
};

constexpr int kFileGroup = 2;
constexpr int kSettingGroup = 6;
constexpr int kResultGroup = 11;
constexpr ControlTemplate kSplitFile[] = {
    {Button, IDOK, "OK", kDialog, 3, 1, 1, 1, kDefault},
    {Button, IDCANCEL, "Cancel", kDialog, 3, 2, 1, 1},
    {Group, kNoId, "Vesk file", kDialog, 0, 0, 1, 3},
    {Label, 1820, "<VESK File>", kFileGroup, 0, 0, 1, 2, kWordWrap},
    {Label, kNoId, "Size (KB):", kFileGroup, 1, 0, 1, 1},
    {Label, 1822, "<size>", kFileGroup, 1, 1, 1, 1},
    {Group, kNoId, "Split setting", kDialog, 1, 0, 1, 3},
    {Radio, 1823, "Parse the whole file", kSettingGroup, 0, 0, 1, 3, kGroupStart},
    {Radio, 1824, "Parse a small unit of the file.  Unit size (KB): ", kSettingGroup, 1, 0, 1, 1},
    {Edit, 1821, "", kSettingGroup, 1, 1, 1, 1},
    {Button, 1418, "Split", kSettingGroup, 1, 2, 1, 1},
    {Group, kNoId, "Split result", kDialog, 2, 0, 1, 3},
    {ListBox, 1825, "", kResultGroup, 1, 0, 1, 1},
    {Label, kNoId, "Choose an interval (start timestamp ~ end timestamp) to parse:", kResultGroup,
     0, 0, 1, 1},
};

constexpr ControlTemplate kGoto[] = {
    {Edit, 1168, "", kDialog, 0, 0, 1, 4, kDigitsOnly},
    {Radio, 1017, "QBit", kDialog, 1, 0, 1, 1, kGroupStart},
    {Radio, 1018, "L1 TimeStamp", kDialog, 1, 1, 1, 1},
    {Button, IDOK, "OK", kDialog, 2, 2, 1, 1, kDefault},
    {Button, IDCANCEL, "Cancel", kDialog, 2, 3, 1, 1},
};

constexpr ControlTemplate kMarkerPair[] = {
    {Label, kNoId, "Start time:", kDialog, 0, 0, 1, 1},
    {DropList, 1015, "", kDialog, 0, 1, 1, 3},
    {Label, kNoId, "End time:", kDialog, 1, 0, 1, 1},
    {DropList, 1016, "", kDialog, 1, 1, 1, 3},
    {Check, 1169, "Include 'IDLE' ?", kDialog, 2, 0, 1, 4},
    {Button, IDOK, "OK", kDialog, 3, 2, 1, 1, kDefault},
    {Button, IDCANCEL, "Cancel", kDialog, 3, 3, 1, 1},
};

constexpr int kTargetGroup = 1;
constexpr int kDirectionGroup = 5;
constexpr ControlTemplate kFind[] = {
    {Edit, 1340, "", kDialog, 0, 0, 1, 4},
    {Group, kNoId, "Search target", kDialog, 1, 0, 1, 4},
    {Radio, 1017, "Task name", kTargetGroup, 0, 0, 1, 1, kGroupStart},
    {Radio, 1018, "Function name", kTargetGroup, 0, 1, 1, 1},
    {Radio, 1210, "Label", kTargetGroup, 0, 2, 1, 1},
    {Group, kNoId, "Direction", kDialog, 2, 0, 1, 4},
    {Radio, 1019, "Up", kDirectionGroup, 0, 0, 1, 1, kGroupStart},
    {Radio, 1020, "Down", kDirectionGroup, 0, 1, 1, 1},
    {Label, kNoId, "p.s. If the input is NULL, it means find exactly the next one.", kDialog, 3, 0,
     1, 4},
    {Button, IDOK, "OK", kDialog, 4, 2, 1, 1, kDefault},
    {Button, IDCANCEL, "Cancel", kDialog, 4, 3, 1, 1},
};

constexpr const char* kAllOn = "All O&n";
constexpr const char* kAllOff = "All O&ff";
constexpr int kTasksGroup = 0;
constexpr int kFunctionsGroup = 4;
constexpr int kExtraGroup = 8;
constexpr int kLabelsGroup = 12;
constexpr int kHardwareGroup = 16;
constexpr ControlTemplate kFilter[] = {
    {Group, kNoId, "Display tasks", kDialog, 0, 0, 1, 1},
    {ListBox, 1026, "", kTasksGroup, 0, 0, 1, 2, kOwnerDrawn},
    {Button, 3, kAllOn, kTasksGroup, 1, 0, 1, 1},
    {Button, 4, kAllOff, kTasksGroup, 1, 1, 1, 1},
    {Group, kNoId, "Functions", kDialog, 0, 1, 1, 1},
    {ListBox, 1027, "", kFunctionsGroup, 0, 0, 1, 2, kOwnerDrawn},
    {Button, 5, kAllOn, kFunctionsGroup, 1, 0, 1, 1},
    {Button, 6, kAllOff, kFunctionsGroup, 1, 1, 1, 1},
    {Group, kNoId, "Extra/Monitor info", kDialog, 0, 2, 1, 1},
    {ListBox, 1028, "", kExtraGroup, 0, 0, 1, 2, kOwnerDrawn},
    {Button, 7, kAllOn, kExtraGroup, 1, 0, 1, 1},
    {Button, 8, kAllOff, kExtraGroup, 1, 1, 1, 1},
    {Group, kNoId, "Labels", kDialog, 0, 3, 1, 1},
    {ListBox, 1029, "", kLabelsGroup, 0, 0, 1, 2, kOwnerDrawn},
    {Button, 9, kAllOn, kLabelsGroup, 1, 0, 1, 1},
    {Button, 10, kAllOff, kLabelsGroup, 1, 1, 1, 1},
    {Group, kNoId, "HW event", kDialog, 0, 4, 1, 1},
    {ListBox, 1030, "", kHardwareGroup, 0, 0, 1, 1},
    {Button, 1978, "Export", kDialog, 1, 0, 1, 1},
    {Button, 1977, "Import", kDialog, 1, 1, 1, 1},
    {Button, IDOK, "OK", kDialog, 1, 3, 1, 1, kDefault},
    {Button, IDCANCEL, "Cancel", kDialog, 1, 4, 1, 1},
};

constexpr DialogTemplate kDialogs[] = {
    {201, "Go To ...", kGoto},
    {202, "Filter", kFilter},
    {204, "", kMarkerPair},
    {235, "Find ...", kFind},
    {312, "Display Vesk With Another Header File", kNoHeader},
    {345, "Split  Vesk File", kSplitFile},
};

}  // namespace

std::span<const DialogTemplate> Dialogs() {
    return kDialogs;
}

}  // namespace vesk
