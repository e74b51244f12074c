#pragma once

#include <QtGlobal>

namespace vesk {

// While the application object is made: if no display can be opened, the program ends with a clear
// text and exit status 1, where the toolkit would end it by a crash.
class DisplayGuard {
public:
    DisplayGuard();
    ~DisplayGuard();
    DisplayGuard(const DisplayGuard&) = delete;
    DisplayGuard& operator=(const DisplayGuard&) = delete;

private:
    QtMessageHandler m_Former;
};

}  // namespace vesk
