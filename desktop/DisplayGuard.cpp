#include "desktop/DisplayGuard.h"

#include <unistd.h>

#include <QString>
#include <cstdio>

namespace vesk {

namespace {

constexpr const char* kNoDisplay =
    "veskview: no display can be opened.\n"
    "Please run it in a graphical session, or name one by DISPLAY or WAYLAND_DISPLAY.\n"
    "Without a display, 'veskview --render OUT.png LOG' writes a picture of the timeline, and\n"
    "'vesk info LOG' tells what is in a log.\n";

// Everything that the toolkit has to say on its way to a fatal message is a matter of the display.
void EndOnFatal(QtMsgType type, const QMessageLogContext&, const QString&) {
    if (type != QtFatalMsg) return;
    std::fputs(kNoDisplay, stderr);
    std::fflush(stderr);
    _exit(1);
}

}  // namespace

DisplayGuard::DisplayGuard() : m_Former(qInstallMessageHandler(EndOnFatal)) {}

DisplayGuard::~DisplayGuard() {
    qInstallMessageHandler(m_Former);
}

}  // namespace vesk
