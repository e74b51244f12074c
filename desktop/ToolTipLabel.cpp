#include "desktop/ToolTipLabel.h"

#include <QGuiApplication>
#include <QLabel>
#include <QPointer>
#include <QScreen>
#include <QStringList>
#include <QToolTip>
#include <QWindow>
#include <algorithm>

#include "desktop/InputTranslation.h"
#include "desktop/QtText.h"
#include "desktop/ViewWidget.h"
#include "platform/CToolTipCtrl.h"

namespace vesk {

namespace {

constexpr int kMargin = 3;
constexpr int kFrame = 1;
constexpr int kGap = 5;

class ToolTipLabel : public WindowPeer {
public:
    explicit ToolTipLabel(CToolTipCtrl& tip)
        : m_Tip(tip),
          m_Label(nullptr,
                  Qt::ToolTip | Qt::WindowTransparentForInput | Qt::WindowDoesNotAcceptFocus) {
        m_Label.setObjectName("tip");
        m_Label.setTextFormat(Qt::PlainText);
        m_Label.setAttribute(Qt::WA_ShowWithoutActivating);
        m_Label.setAttribute(Qt::WA_TransparentForMouseEvents);
        m_Label.setPalette(QToolTip::palette());
        m_Label.setFrameStyle(QFrame::Box | QFrame::Plain);
        m_Label.setLineWidth(kFrame);
        m_Label.setMargin(kMargin);
        QObject::connect(qGuiApp, &QGuiApplication::focusWindowChanged, &m_Label,
                         [this] { ShowOrHide(); });
    }

    void Changed(Aspect aspect) override {
        if (aspect == Aspect::Visible) {
            m_UserWindow = QGuiApplication::focusWindow();
            ShowOrHide();
        } else if (m_Tip.IsWindowVisible()) {
            Refresh();
        }
    }
    CPoint ScreenOrigin() const override { return PixelOf(m_Label.pos()); }

private:
    // A tip stays on top of everything: it must not lie over a dialog or another program.
    void ShowOrHide() {
        const bool isShown =
            m_Tip.IsWindowVisible() && QGuiApplication::focusWindow() == m_UserWindow;
        if (isShown) Refresh();
        m_Label.setVisible(isShown);
    }

    void Refresh() {
        const QRect area = Screen().availableGeometry();
        m_Label.setText(FittingText(area.size()));
        m_Label.resize(m_Label.sizeHint());
        // At its point, unless it would leave the screen there. Left of what it is about, it stands
        // close to that, however long a line its text would be.
        CPoint at = m_Tip.Position();
        const auto& anchor = m_Tip.Anchor();
        if (anchor && at.x < anchor->x) at.x = std::max(at.x, anchor->x - kGap - m_Label.width());
        const int right = area.right() + 1 - m_Label.width();
        const int bottom = area.bottom() + 1 - m_Label.height();
        m_Label.move(std::max(area.left(), std::min(at.x, right)),
                     std::max(area.top(), std::min(at.y, bottom)));
    }

    // The one that the owner stands on; the tip's own point may lie on none.
    const QScreen& Screen() const {
        const CWnd* const owner = m_Tip.Owner();
        const ViewWidget* const widget = owner ? ViewWidget::Of(owner->Peer()) : nullptr;
        return widget ? *widget->screen() : *QGuiApplication::primaryScreen();
    }

    // The text's own lines, each as far as the screen is wide, and as many as it is high.
    QString FittingText(const QSize& area) const {
        constexpr int kAround = 2 * (kMargin + kFrame);
        const QFontMetrics metrics(m_Label.font());
        QStringList lines = ToQt(m_Tip.GetWindowText()).remove('\r').split('\n');
        const auto most = std::max<qsizetype>(2, (area.height() - kAround) / metrics.lineSpacing());
        const qsizetype count = lines.size();
        if (count > most) {
            lines.resize(most - 1);
            lines.push_back(QString("... and %1 lines more").arg(count - (most - 1)));
        }
        for (QString& line : lines)
            line = metrics.elidedText(line, Qt::ElideRight, area.width() - kAround);
        return lines.join('\n');
    }

    CToolTipCtrl& m_Tip;
    QLabel m_Label;
    QPointer<QWindow> m_UserWindow;  // the one that had the focus when the tip opened
};

}  // namespace

std::unique_ptr<WindowPeer> MakeToolTipLabel(CToolTipCtrl& tip) {
    return std::make_unique<ToolTipLabel>(tip);
}

}  // namespace vesk
