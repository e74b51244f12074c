#include "desktop/HostFrame.h"

namespace vesk {

const MessageMap* HostFrame::GetMessageMap() const {
    static constexpr MessageEntry entries[] = {
        Command<&HostFrame::OnOpenLog>(32777),
        Command<&HostFrame::OnOpenLog>(40008),
        Command<&HostFrame::OnOpenLog>(57601),  // the accelerator's
        Command<&HostFrame::OnOpenLogWithHeader>(32778),
        Command<&HostFrame::OnShowInformation>(57664),
    };
    static constexpr MessageMap map{nullptr, entries};
    return &map;
}

bool HostFrame::OnCommand(unsigned id) {
    const bool handled = CMDIFrameWnd::OnCommand(id);
    m_Commands.OnCommandDone();
    return handled;
}

}  // namespace vesk
