#include "desktop/RenderRun.h"

#include <QFile>
#include <cstdio>

#include "desktop/DesktopHost.h"
#include "desktop/LogSession.h"
#include "desktop/ProgramOptions.h"
#include "desktop/QtGlyphs.h"
#include "desktop/StateFile.h"
#include "desktop/UserState.h"
#include "desktop/ViewPicture.h"
#include "log/McuJobList.h"
#include "platform/CMDIChildWnd.h"
#include "platform/CMDIFrameWnd.h"
#include "platform/SystemMetrics.h"
#include "platform/UserInterface.h"
#include "timeline/CMcuView.h"

namespace vesk {

namespace {

void Say(const std::string& text) {
    std::fprintf(stderr, "veskview: %s\n", text.c_str());
}

// Nobody is there to answer: what the viewer would show in a box is printed.
class PrintingInterface : public UserInterface {
public:
    int ShowMessage(const Message& message) override {
        Say(message.m_Text.Str());
        return IDOK;
    }
    const GlyphSource& Glyphs() override { return m_Glyphs; }

private:
    QtGlyphs m_Glyphs;
};

LogSession::Listener PrintingListener() {
    return {[] { return ReadProgress(); }, [] {}, [] {}, Say, false};
}

bool Open(LogSession& session, const ProgramOptions& options) {
    const LogFiles files{options.m_Log, {}};
    return options.m_Target.empty() ? session.Open(files, PartToRead::kWhole)
                                    : session.Open(files, PartToRead::kWhole, options.m_Target);
}

// So that the picture, without the scroll bars, has the size asked for.
void SizeWindow(CSize size) {
    AfxGetMainWnd()->MDIGetActive()->MoveWindow(0, 0, size.cx + GetSystemMetrics(SM_CXVSCROLL),
                                                size.cy + GetSystemMetrics(SM_CYHSCROLL));
}

bool ShowRange(CMcuView& view, const RenderOptions& options, std::uint64_t end) {
    if (!options.m_Range) {
        view.ShowWholeLog();
        return true;
    }
    const auto [from, to] = *options.m_Range;
    if (from >= end) {
        Say("the range lies behind the log, which has " + std::to_string(end) + " QBit");
        return false;
    }
    view.m_ZoomRatio = static_cast<float>(view.m_CanvasWidth /
                                          (static_cast<double>(to - from) * view.m_BaseScale));
    view.Zoom();
    view.m_TimeOffset = from;
    view.Cal_HScrollPos();
    return true;
}

bool Write(CMcuView& view, const RenderOptions& options, std::uint64_t end) {
    SizeWindow(options.m_Size);
    view.SetOutlook(options.m_Outlook);
    view.SetTimeunit(options.m_Unit);
    std::string error;
    if (!ShowRange(view, options, end)) return false;
    if (SavePicture(view, options.m_Path, options.m_Scale, error)) return true;
    Say(error);
    return false;
}

}  // namespace

bool RenderPicture(const ProgramOptions& options) {
    const RenderOptions& render = options.m_Render;
    if (!render.m_Force && QFile::exists(QFile::decodeName(render.m_Path.c_str()))) {
        Say(render.m_Path + " is there already; --force replaces it");
        return false;
    }
    PrintingInterface user;
    const ScopedUserInterface use(user);
    DesktopHost host;
    CMDIFrameWnd main;
    UserState state;  // for the target that was chosen for the log; nothing is kept of this run
    StateFile(StateFile::DefaultPath()).Load(state);
    LogSession session(host, state, PrintingListener());
    if (!Open(session, options)) return false;
    const bool written = Write(*host.Timeline(), render, host.List().m_EndTime);
    host.CloseFrames();
    return written;
}

}  // namespace vesk
