#pragma once

#include "platform/CString.h"

class CCmdTarget;

namespace vesk {

// How a command looks wherever it is offered: menu item, tool button.
struct CommandState {
    CString m_Text;
    bool m_Enabled = true;
    bool m_Checked = false;
    bool m_Radio = false;  // the check is that of one choice of several
};

}  // namespace vesk

// Handed to update handlers; changes the look of one command.
class CCmdUI {
public:
    CCmdUI(unsigned id, vesk::CommandState& state) : m_nID(id), m_State(state) {}

    void Enable(bool on = true) { m_State.m_Enabled = on; }
    void SetCheck(int check = 1) { m_State.m_Checked = check != 0; }
    void SetRadio(bool on = true) { m_State.m_Checked = m_State.m_Radio = on; }
    void SetText(const CString& text) { m_State.m_Text = text; }

    // Asks target for the command's state; a command that nobody handles is disabled.
    void DoUpdate(CCmdTarget& target);

    unsigned m_nID;

private:
    vesk::CommandState& m_State;
};
