#pragma once

#include <QDialog>
#include <QElapsedTimer>
#include <cstdint>

class QProgressBar;

namespace vesk {

// Shows how far a read has come, and lets the user cancel it. Comes up only once the read has
// taken a while; from then on the program's windows stay painted, and only this one takes input.
class ReadProgressDialog : public QDialog {
public:
    static constexpr int kDelay = 300;  // ms

    explicit ReadProgressDialog(QWidget* parent, int delay = kDelay);

    // To be called over and over while the read works. False once the user has cancelled.
    bool Advance(std::int64_t done, std::int64_t total);

private:
    QProgressBar* m_Bar;
    QElapsedTimer m_SinceBegin;
    QElapsedTimer m_SinceEvents;
    int m_Delay;
    bool m_Cancelled = false;
};

}  // namespace vesk
