#pragma once

#include "platform/CWnd.h"

// A text, or the frame and title of a group, which the user does not change.
class CStatic : public CWnd {
public:
    bool m_IsGroup = false;
};
