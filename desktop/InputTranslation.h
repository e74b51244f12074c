#pragma once

#include <Qt>

#include "platform/Geometry.h"

class QKeyEvent;
class QMouseEvent;
class QPointF;
class QRect;

namespace vesk {

// From the toolkit's input to what handlers and accelerators expect.

// VK_... of a key, 0 for one that has no such name. The numeric pad's plus, minus and star are
// keys of their own, those of the main row have none.
unsigned VirtualKey(const QKeyEvent&);
unsigned AcceleratorModifiers(Qt::KeyboardModifiers);  // a sum of vesk::AcceleratorModifier

// MK_... of what is held down.
unsigned MouseFlags(Qt::MouseButtons, Qt::KeyboardModifiers);
unsigned MouseFlags(const QMouseEvent&);

// The pixel that a position lies in. Rounding would hit the next one on fractional scales.
CPoint PixelOf(const QPointF&);

CRect FromQt(const QRect&);
QRect ToQt(const CRect&);

}  // namespace vesk
