#include "platform/SystemMetrics.h"

#include "platform/UserInterface.h"

int GetSystemMetrics(int index) {
    return vesk::CurrentUserInterface().SystemMetric(index);
}

COLORREF GetSysColor(int index) {
    return vesk::CurrentUserInterface().SystemColor(index);
}
