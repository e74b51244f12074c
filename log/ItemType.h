#pragma once

#include <cstdint>

namespace vesk {

// Types of the items in a log's header (docs/log-format.md).
enum ItemType : std::uint32_t {
    kExtraInfoItem = 0x103,
    kTwoRatiosItem = 0x104,
    kTaskOverheadItem = 0x105,
    kFunctionOverheadItem = 0x106,
    kFirstPluginItem = 0x10006,
    kLastPluginItem = 0x1000F,
    kFrameNoField = 0x10000001,
    kContextIdField = 0x10000003,
    kMicrosecondField = 0x1000000D,
};

inline bool IsPluginItem(std::uint32_t type) {
    return type >= kFirstPluginItem && type <= kLastPluginItem;
}

// Fields of a packet record that carry no extra values.
inline bool IsKaldoField(std::uint32_t type) {
    return type >= kFrameNoField && type <= kMicrosecondField;
}

}  // namespace vesk
