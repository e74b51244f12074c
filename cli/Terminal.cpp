#include "cli/Terminal.h"

#include <cstdio>
#include <sstream>

#include "cli/TextEncoding.h"

namespace vesk {

int Terminal::ShowMessage(const Message& message) {
    m_Messages.push_back(message.m_Text.Str());
    Say(message.m_Text.Str());
    return IDOK;
}

void Terminal::Say(const std::string& text) {
    HideProgress();
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        line.erase(line.find_last_not_of(' ') + 1);
        std::fprintf(stderr, "vesk: %s\n", PrintableText(line).c_str());
    }
}

void Terminal::ShowProgress(const char* what, std::int64_t done, std::int64_t total) {
    using namespace std::chrono_literals;
    const Clock::time_point now = Clock::now();
    if (!m_ShowsProgress || now - m_Begin < 300ms || now - m_Drawn < 50ms) return;
    m_Drawn = now;
    m_BarShown = true;
    if (total <= 0) {
        std::fprintf(stderr, "\r%s %lld MB", what, static_cast<long long>(done >> 20));
        return;
    }
    constexpr int kLength = 40;
    const double share = static_cast<double>(done) / static_cast<double>(total);
    const int filled = share >= 1 ? kLength : static_cast<int>(share * kLength);
    std::fprintf(stderr, "\r%s [%s%s] %3.0f %%", what, std::string(filled, '#').c_str(),
                 std::string(kLength - filled, '.').c_str(), share * 100);
}

void Terminal::HideProgress() {
    if (m_BarShown) std::fputs("\r\033[K", stderr);
    m_BarShown = false;
}

}  // namespace vesk
