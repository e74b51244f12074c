#pragma once

#include <memory>

#include "platform/CObject.h"

class CDC;

namespace vesk {
class Surface;
}

// A picture that a memory context draws into, of the kind that the context it is made for has.
class CBitmap : public CObject {
public:
    CBitmap();
    ~CBitmap() override;
    // Size in logical pixels. False if it is not positive or too large.
    bool CreateCompatibleBitmap(CDC*, int width, int height);
    bool DeleteObject();
    vesk::Surface* GetSurface() const { return m_Surface.get(); }

private:
    std::unique_ptr<vesk::Surface> m_Surface;
};
