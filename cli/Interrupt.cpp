#include "cli/Interrupt.h"

#include <csignal>

#include "cli/ExitCode.h"

namespace {

volatile std::sig_atomic_t interrupted = 0;

}  // namespace

void vesk::WatchForInterrupts() {
    struct sigaction action {};
    action.sa_handler = [](int) { interrupted = 1; };
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) sigaction(signal, &action, nullptr);
}

bool vesk::Interrupted() {
    return interrupted != 0;
}

void vesk::StopIfInterrupted() {
    if (Interrupted()) throw Stop(ExitCode::kInterrupted, "interrupted");
}
