#pragma once

#include "platform/CBitmap.h"
#include "platform/CDC.h"

// The double buffer that views paint through: draws into an off-screen picture of the target's
// clip box, filled with the target's background, and copies it to the target when it goes. While
// printing, and on surfaces that have no off-screen pictures, it draws straight through. The
// target is borrowed, and not to be drawn on meanwhile.
class CMemoryDC : public CDC {
public:
    explicit CMemoryDC(CDC* target);
    ~CMemoryDC() override;

private:
    CBitmap m_bitmap;
    CBitmap* m_oldBitmap = nullptr;
    CDC* m_pDC;
    CRect m_rect;  // what is painted, in logical coordinates
    bool m_bMemDC;
};
