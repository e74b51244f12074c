#include "desktop/InputTranslation.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QRect>
#include <cmath>

#include "platform/CWnd.h"
#include "platform/Keys.h"

namespace vesk {

namespace {

struct KeyPair {
    int m_Qt;
    unsigned m_Virtual;
};

constexpr KeyPair kKeys[] = {
    {Qt::Key_Tab, VK_TAB},       {Qt::Key_Backtab, VK_TAB},    {Qt::Key_Return, VK_RETURN},
    {Qt::Key_Enter, VK_RETURN},  {Qt::Key_Escape, VK_ESCAPE},  {Qt::Key_Space, VK_SPACE},
    {Qt::Key_PageUp, VK_PRIOR},  {Qt::Key_PageDown, VK_NEXT},  {Qt::Key_End, VK_END},
    {Qt::Key_Home, VK_HOME},     {Qt::Key_Left, VK_LEFT},      {Qt::Key_Up, VK_UP},
    {Qt::Key_Right, VK_RIGHT},   {Qt::Key_Down, VK_DOWN},      {Qt::Key_Insert, VK_INSERT},
    {Qt::Key_Delete, VK_DELETE}, {Qt::Key_Backspace, VK_BACK},
};

unsigned NumericPadKey(int key) {
    switch (key) {
        case Qt::Key_Plus:
            return VK_ADD;
        case Qt::Key_Minus:
            return VK_SUBTRACT;
        case Qt::Key_Asterisk:
            return VK_MULTIPLY;
        default:
            return 0;
    }
}

}  // namespace

unsigned VirtualKey(const QKeyEvent& event) {
    const int key = event.key();
    if ((key >= Qt::Key_A && key <= Qt::Key_Z) || (key >= Qt::Key_0 && key <= Qt::Key_9)) {
        return static_cast<unsigned>(key);
    }
    if (key >= Qt::Key_F1 && key <= Qt::Key_F24) {
        return VK_F1 + static_cast<unsigned>(key - Qt::Key_F1);
    }
    for (const KeyPair& pair : kKeys) {
        if (pair.m_Qt == key) return pair.m_Virtual;
    }
    return event.modifiers() & Qt::KeypadModifier ? NumericPadKey(key) : 0;
}

unsigned AcceleratorModifiers(Qt::KeyboardModifiers modifiers) {
    unsigned sum = kNoModifier;
    if (modifiers & Qt::ShiftModifier) sum |= kShift;
    if (modifiers & Qt::ControlModifier) sum |= kControl;
    if (modifiers & Qt::AltModifier) sum |= kAlt;
    return sum;
}

unsigned MouseFlags(Qt::MouseButtons buttons, Qt::KeyboardModifiers modifiers) {
    unsigned flags = 0;
    if (buttons & Qt::LeftButton) flags |= MK_LBUTTON;
    if (buttons & Qt::RightButton) flags |= MK_RBUTTON;
    if (buttons & Qt::MiddleButton) flags |= MK_MBUTTON;
    if (modifiers & Qt::ShiftModifier) flags |= MK_SHIFT;
    if (modifiers & Qt::ControlModifier) flags |= MK_CONTROL;
    if (modifiers & Qt::AltModifier) flags |= MK_ALT;
    return flags;
}

unsigned MouseFlags(const QMouseEvent& event) {
    return MouseFlags(event.buttons(), event.modifiers());
}

CPoint PixelOf(const QPointF& position) {
    return {static_cast<int>(std::floor(position.x())), static_cast<int>(std::floor(position.y()))};
}

CRect FromQt(const QRect& rect) {
    return {rect.x(), rect.y(), rect.x() + rect.width(), rect.y() + rect.height()};
}

QRect ToQt(const CRect& rect) {
    return {rect.left, rect.top, rect.Width(), rect.Height()};
}

}  // namespace vesk
