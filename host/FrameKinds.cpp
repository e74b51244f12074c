#include "host/FrameKinds.h"

#include <algorithm>

namespace vesk {

const FrameKind& FrameKindOf(std::int32_t viewKind) {
    const auto kind = std::find_if(kFrameKinds.begin(), kFrameKinds.end(),
                                   [=](const FrameKind& k) { return k.m_ViewKind == viewKind; });
    return kind == kFrameKinds.end() ? kFrameKinds.front() : *kind;
}

const FrameKind* FindFrameKindByKey(std::int32_t windowKey) {
    const auto kind = std::find_if(kFrameKinds.begin(), kFrameKinds.end(),
                                   [=](const FrameKind& k) { return k.m_WindowKey == windowKey; });
    return kind == kFrameKinds.end() ? nullptr : &*kind;
}

}  // namespace vesk
