#include "desktop/ProgressDialog.h"

#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QLabel>
#include <QProgressBar>
#include <QVBoxLayout>

namespace vesk {

namespace {

constexpr int kSteps = 1000;
constexpr int kMinimumWidth = 340;
constexpr int kEventInterval = 30;  // ms

}  // namespace

ProgressDialog::ProgressDialog(const QString& what, QWidget* parent, int delay)
    : QDialog(parent), m_Bar(new QProgressBar), m_Delay(delay) {
    setWindowTitle("veskview");
    setWindowModality(Qt::ApplicationModal);
    setMinimumWidth(kMinimumWidth);
    m_Bar->setRange(0, kSteps);
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Cancel);
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(new QLabel(what));
    layout->addWidget(m_Bar);
    layout->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(this, &QDialog::rejected, this, [this] { m_Cancelled = true; });
}

// The clock starts with the first piece that was done: what the user was asked before takes no
// time of the work.
bool ProgressDialog::Advance(std::int64_t done, std::int64_t total) {
    if (!m_SinceBegin.isValid()) m_SinceBegin.start();
    if (m_Cancelled || m_SinceBegin.elapsed() < m_Delay) return !m_Cancelled;
    if (m_SinceEvents.isValid() && m_SinceEvents.elapsed() < kEventInterval) return true;
    m_SinceEvents.start();
    const double share = total > 0 ? static_cast<double>(done) / static_cast<double>(total) : 0;
    m_Bar->setRange(0, total > 0 ? kSteps : 0);
    m_Bar->setValue(static_cast<int>(share * kSteps));
    show();
    QCoreApplication::processEvents();
    return !m_Cancelled;
}

}  // namespace vesk
