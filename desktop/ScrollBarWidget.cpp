#include "desktop/ScrollBarWidget.h"

#include <QPointer>
#include <QSignalBlocker>
#include <QWheelEvent>
#include <algorithm>
#include <limits>

#include "desktop/InputTranslation.h"
#include "platform/CScrollBar.h"

namespace vesk {

namespace {

constexpr int kNotch = 120;  // eighths of a degree
constexpr int kLinesPerNotch = 3;

}  // namespace

class ScrollBarWidget::Peer : public WindowPeer {
public:
    explicit Peer(ScrollBarWidget& widget) : m_Widget(&widget) {}
    ~Peer() override {
        if (!m_Widget) return;
        m_Widget->m_Bar = nullptr;
        m_Widget->hide();
        m_Widget->deleteLater();
    }

    void Changed(Aspect aspect) override {
        if (!m_Widget) return;
        const CScrollBar& bar = *m_Widget->m_Bar;
        if (aspect == Aspect::Position) m_Widget->ShowPlace();
        if (aspect == Aspect::Scroll) m_Widget->ShowPosition();
        if (aspect == Aspect::Enabled) m_Widget->setEnabled(bar.IsWindowEnabled());
        if (aspect == Aspect::Visible) m_Widget->setVisible(bar.IsWindowVisible());
    }

private:
    QPointer<ScrollBarWidget> m_Widget;
};

std::unique_ptr<WindowPeer> ScrollBarWidget::Make(QWidget& parent, CScrollBar& bar) {
    auto* widget = new ScrollBarWidget(parent, bar);
    return std::make_unique<Peer>(*widget);
}

ScrollBarWidget::ScrollBarWidget(QWidget& parent, CScrollBar& bar)
    : QScrollBar(bar.IsVertical() ? Qt::Vertical : Qt::Horizontal, &parent), m_Bar(&bar) {
    setFocusPolicy(Qt::NoFocus);
    // Neither the toolkit's own menu, nor the view's.
    setContextMenuPolicy(Qt::PreventContextMenu);
    setCursor(Qt::ArrowCursor);
    ShowPlace();
    ShowPosition();
    setEnabled(bar.IsWindowEnabled());
    setVisible(bar.IsWindowVisible());
    connect(this, &QAbstractSlider::actionTriggered, this,
            [this](int action) { OnAction(action); });
    connect(this, &QAbstractSlider::sliderReleased, this, [this] {
        Act(SB_THUMBPOSITION);
        Act(SB_ENDSCROLL);
        setSliderPosition(value());
    });
}

void ScrollBarWidget::ShowPlace() {
    CRect place;
    m_Bar->GetWindowRect(&place);
    setGeometry(ToQt(place));
}

void ScrollBarWidget::ShowPosition() {
    const QSignalBlocker quiet(this);
    SCROLLINFO info;
    m_Bar->GetScrollInfo(&info, SIF_RANGE | SIF_PAGE | SIF_POS);
    setRange(info.nMin, m_Bar->GetScrollLimit());
    constexpr unsigned kMost = std::numeric_limits<int>::max();
    setPageStep(static_cast<int>(std::min(info.nPage, kMost)));
    setValue(info.nPos);
}

void ScrollBarWidget::Act(unsigned code) {
    if (m_Bar) m_Bar->Act(code, sliderPosition());
}

// The toolkit has moved the slider already; it goes back to where the view's scroll bar stands.
void ScrollBarWidget::OnAction(int action) {
    switch (action) {
        case SliderSingleStepAdd:
            Act(SB_LINEDOWN);
            break;
        case SliderSingleStepSub:
            Act(SB_LINEUP);
            break;
        case SliderPageStepAdd:
            Act(SB_PAGEDOWN);
            break;
        case SliderPageStepSub:
            Act(SB_PAGEUP);
            break;
        case SliderToMinimum:
            Act(SB_TOP);
            break;
        case SliderToMaximum:
            Act(SB_BOTTOM);
            break;
        case SliderMove:
            Act(SB_THUMBTRACK);
            break;
        default:
            return;
    }
    setSliderPosition(value());
}

void ScrollBarWidget::wheelEvent(QWheelEvent* event) {
    const QPoint turn = event->angleDelta();
    m_WheelRest += turn.y() != 0 ? turn.y() : turn.x();
    const int notches = m_WheelRest / kNotch;
    m_WheelRest -= notches * kNotch;
    const unsigned code = notches > 0 ? SB_LINEUP : SB_LINEDOWN;
    for (int i = 0; i < std::abs(notches) * kLinesPerNotch; ++i) Act(code);
    event->accept();
}

}  // namespace vesk
