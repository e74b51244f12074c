#include "log/SplitDialogChooser.h"

#include "log/CMcuSplitFileDlg.h"
#include "platform/UserInterface.h"

namespace vesk {

RangeChoice SplitDialogChooser::Choose(const RangeRequest& request) {
    HeaderInfo info = request.m_Info;
    CMcuSplitFileDlg dialog(request, info, m_Parent);
    RangeChoice choice;
    choice.m_Accepted = dialog.DoModal() == IDOK;
    if (!choice.m_Accepted) return choice;
    choice.m_HasInterval = true;
    choice.m_Interval = {dialog.m_OutStart, dialog.m_OutEnd, info.m_FirstFrameNo,
                         info.m_FrameBaseCount};
    choice.m_UnitText = dialog.m_UnitText.Str();
    choice.m_SplitMode = dialog.m_SplitMode;
    return choice;
}

}  // namespace vesk
