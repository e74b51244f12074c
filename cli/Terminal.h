#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

#include "platform/UserInterface.h"

namespace vesk {

// The person at standard error: messages, and a progress bar if it is a terminal.
class Terminal : public UserInterface {
public:
    // A message of the library; they are kept too.
    int ShowMessage(const Message&) override;

    // A text of ours, which may have several lines.
    void Say(const std::string& text);

    // Draws the bar, from the second on that work takes long enough to wonder. A total of 0 is an
    // unknown one.
    void ShowProgress(const char* what, std::int64_t done, std::int64_t total);
    void HideProgress();

    bool m_ShowsProgress = false;  // set once the options are known
    std::vector<std::string> m_Messages;

private:
    using Clock = std::chrono::steady_clock;

    Clock::time_point m_Begin = Clock::now();
    Clock::time_point m_Drawn;
    bool m_BarShown = false;
};

}  // namespace vesk
