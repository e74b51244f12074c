#pragma once

#include <cstdint>

#include "platform/CMDIChildWnd.h"

// The frame around any of the library's views.
class CMcuChildFrame : public CMDIChildWnd {
public:
    // Clears the frame's member in the shared state, keeps where it stood, and ends it.
    void OnClose() override;

    // Leaves the frame its own title, which does not follow the document's.
    void OnUpdateFrameTitle(bool addToTitle) override;

    // Lets the view take over the log and the settings as they are now.
    void Reload();

    std::int32_t m_ViewKind = 0;  // host/FrameKinds.h; set by who makes the frame
};
