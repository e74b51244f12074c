#include "platform/CCmdUI.h"

#include "platform/CCmdTarget.h"

void CCmdUI::DoUpdate(CCmdTarget& target) {
    if (!target.OnCmdMsg(m_nID, CN_COMMAND, this)) Enable(false);
}
