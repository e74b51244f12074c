#pragma once

#include "platform/CMDIFrameWnd.h"

namespace vesk {

// What the host's commands of the library's menus do.
class HostCommands {
public:
    virtual ~HostCommands() = default;
    virtual void OnOpenLog() = 0;
    virtual void OnOpenLogWithHeader() = 0;
    virtual void OnShowInformation() = 0;
    // A command has run; what is enabled may have changed.
    virtual void OnCommandDone() = 0;
};

// The library's side of the main window: frames and commands come here. Commands without an entry
// here or in a view stay disabled.
class HostFrame : public CMDIFrameWnd {
public:
    explicit HostFrame(HostCommands& commands) : m_Commands(commands) {}

    const MessageMap* GetMessageMap() const override;
    bool OnCommand(unsigned id) override;

private:
    void OnOpenLog() { m_Commands.OnOpenLog(); }
    void OnOpenLogWithHeader() { m_Commands.OnOpenLogWithHeader(); }
    void OnShowInformation() { m_Commands.OnShowInformation(); }

    HostCommands& m_Commands;
};

}  // namespace vesk
