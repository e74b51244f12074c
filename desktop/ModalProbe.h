#pragma once

#include <QWidget>
#include <functional>

namespace vesk {

// Has a probe work in a window that is about to be run, once the window is shown and active, with
// focus and shortcuts alive. The probe's work done, the window is closed if it still stands, so
// that nothing can hang. Owned by the window.
void ProbeOnceActive(QWidget& window, std::function<void(QWidget&)> probe);

}  // namespace vesk
