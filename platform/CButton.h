#pragma once

#include <vector>

#include "platform/CWnd.h"

namespace vesk {
enum class ButtonKind : unsigned char { Push, Radio, Check };
}

// A push button, radio button or check box.
class CButton : public CWnd {
public:
    int GetCheck() const { return m_Check; }
    void SetCheck(int check);

    // What the user's press does: a check box changes, a radio button becomes the one of its
    // choice that is set, and the parent gets BN_CLICKED. Nothing if disabled or hidden.
    void Click();

    vesk::ButtonKind m_Kind = vesk::ButtonKind::Push;
    bool m_GroupStart = false;  // begins a choice among radio buttons

private:
    int m_Check = 0;
};

namespace vesk {

// The choice that a radio button belongs to: from the one that begins it up to the next one that
// begins another, in the order of the parent's children, whatever stands between them.
std::vector<CButton*> ChoiceOf(CButton&);

}  // namespace vesk
