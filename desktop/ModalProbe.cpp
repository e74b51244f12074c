#include "desktop/ModalProbe.h"

#include <QEvent>
#include <QPointer>
#include <QTimer>

namespace vesk {

namespace {

// A window that never becomes active must not wait for ever either.
constexpr int kLatestMs = 5000;

class ModalProbe : public QObject {
public:
    ModalProbe(QWidget& window, std::function<void(QWidget&)> probe)
        : QObject(&window), m_Window(window), m_Probe(std::move(probe)) {
        window.installEventFilter(this);
        QTimer::singleShot(kLatestMs, this, [this] { Run(); });
    }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::WindowActivate && watched == &m_Window) {
            QTimer::singleShot(0, this, [this] { Run(); });
        }
        return QObject::eventFilter(watched, event);
    }

private:
    void Run() {
        if (!m_Probe) return;
        const QPointer<QWidget> window(&m_Window);
        // Taken out first: the probe runs once, and may replace what it came from.
        const auto probe = std::exchange(m_Probe, nullptr);
        probe(m_Window);
        if (window && window->isVisible()) window->close();
        if (window && window->isVisible()) window->hide();
    }

    QWidget& m_Window;
    std::function<void(QWidget&)> m_Probe;
};

}  // namespace

void ProbeOnceActive(QWidget& window, std::function<void(QWidget&)> probe) {
    new ModalProbe(window, std::move(probe));
}

}  // namespace vesk
