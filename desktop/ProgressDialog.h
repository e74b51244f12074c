#pragma once

#include <QDialog>
#include <QElapsedTimer>

#include "platform/ProgressDisplay.h"

class QProgressBar;

namespace vesk {

// Shows how far long work has come, and lets the user cancel it. Comes up only once the work has
// taken a while; from then on the program's windows stay painted, and only this one takes input.
class ProgressDialog : public QDialog, public ProgressDisplay {
public:
    static constexpr int kDelay = 300;  // ms

    // The text names the work.
    ProgressDialog(const QString& what, QWidget* parent, int delay = kDelay);

    bool Advance(std::int64_t done, std::int64_t total) override;

private:
    QProgressBar* m_Bar;
    QElapsedTimer m_SinceBegin;
    QElapsedTimer m_SinceEvents;
    int m_Delay;
    bool m_Cancelled = false;
};

}  // namespace vesk
