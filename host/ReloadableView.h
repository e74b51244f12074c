#pragma once

namespace vesk {

// What a view offers to the frame around it, whatever kind of view it is.
class ReloadableView {
public:
    virtual ~ReloadableView() = default;
    // Takes over the log and the settings as they are now, as if the view had just been opened.
    virtual void ReloadLog() = 0;
};

}  // namespace vesk
