#include "timeline/CMemoryDC.h"

#include "platform/Surface.h"

namespace {

// A page, unlike a screen, keeps no pictures beside it.
bool HasPictures(const CDC& target) {
    const vesk::Surface* model = target.GetModel();
    return !model || model->MakeCompatible({1, 1});
}

bool DrawsOffScreen(const CDC& target) {
    return !target.IsPrinting() && HasPictures(target);
}

}  // namespace

CMemoryDC::CMemoryDC(CDC* target)
    : CDC(DrawsOffScreen(*target) ? nullptr : target->GetSurface()),
      m_pDC(target),
      m_bMemDC(!GetSurface()) {
    const CPoint origin = target->GetWindowOrg();
    target->GetClipBox(&m_rect);
    if (m_bMemDC) {
        CreateCompatibleDC(target);
        if (m_bitmap.CreateCompatibleBitmap(target, m_rect.Width(), m_rect.Height()))
            m_oldBitmap = SelectObject(&m_bitmap);
        SetWindowOrg(m_rect.left, m_rect.top);
    } else {
        // The surface knows one origin and one clip: they go back to the target's as they are.
        m_bPrinting = target->m_bPrinting;
        SetWindowOrg(origin.x, origin.y);
        SetClipBox(m_rect);
    }
    FillSolidRect(m_rect, target->GetBkColor());
}

CMemoryDC::~CMemoryDC() {
    if (!m_bMemDC) return;
    m_pDC->BitBlt(m_rect.left, m_rect.top, m_rect.Width(), m_rect.Height(), this, m_rect.left,
                  m_rect.top, SRCCOPY);
    SelectObject(m_oldBitmap);
}
