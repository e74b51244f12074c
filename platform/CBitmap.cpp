#include "platform/CBitmap.h"

#include "platform/CDC.h"
#include "platform/Surface.h"

CBitmap::CBitmap() = default;
CBitmap::~CBitmap() = default;

bool CBitmap::CreateCompatibleBitmap(CDC* dc, int width, int height) {
    const vesk::Surface* model = dc ? dc->GetModel() : nullptr;
    m_Surface = model ? model->MakeCompatible({width, height}) : nullptr;
    return m_Surface != nullptr;
}

bool CBitmap::DeleteObject() {
    const bool existed = m_Surface != nullptr;
    m_Surface.reset();
    return existed;
}
