#include "desktop/ViewWidget.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>

#include "desktop/InputTranslation.h"
#include "desktop/ScrollBarWidget.h"
#include "desktop/SurfacePicture.h"
#include "platform/CDC.h"
#include "platform/CScrollBar.h"
#include "platform/CView.h"
#include "platform/RasterSurface.h"
#include "platform/UserInterface.h"

namespace vesk {

class ViewWidget::Peer : public WindowPeer {
public:
    explicit Peer(ViewWidget& widget) : m_Widget(&widget) {}
    ~Peer() override {
        if (m_Widget) m_Widget->m_View = nullptr;
    }

    ViewWidget* Widget() const { return m_Widget; }

    void Changed(Aspect aspect) override {
        if (!m_Widget) return;
        if (aspect == Aspect::Focus) m_Widget->setFocus();
        if (aspect == Aspect::Enabled) m_Widget->setEnabled(m_Widget->m_View->IsWindowEnabled());
    }
    void Invalidated(const CRect& rect) override {
        if (m_Widget && !m_Widget->m_IsPainting) m_Widget->update(ToQt(rect));
    }
    CPoint ScreenOrigin() const override {
        return m_Widget ? PixelOf(m_Widget->mapToGlobal(QPointF(0, 0))) : CPoint();
    }

private:
    QPointer<ViewWidget> m_Widget;
};

namespace {

Qt::CursorShape CursorOf(PointerShape shape) {
    switch (shape) {
        case PointerShape::Hand:
            return Qt::PointingHandCursor;
        case PointerShape::SizeHorizontal:
            return Qt::SizeHorCursor;
        default:
            return Qt::ArrowCursor;
    }
}

}  // namespace

ViewWidget::ViewWidget(QWidget& parent, CView& view) : QWidget(&parent), m_View(&view) {
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    view.SetPeer(std::make_unique<Peer>(*this));
    for (CWnd* child : view.Children()) {
        auto* bar = dynamic_cast<CScrollBar*>(child);
        if (bar && !bar->Peer()) bar->SetPeer(MakeScrollBar(*bar));
    }
}

ViewWidget::~ViewWidget() = default;

std::unique_ptr<WindowPeer> ViewWidget::MakeScrollBar(CScrollBar& bar) {
    return ScrollBarWidget::Make(*this, bar);
}

ViewWidget* ViewWidget::Of(const WindowPeer* peer) {
    const auto* own = dynamic_cast<const Peer*>(peer);
    return own ? own->Widget() : nullptr;
}

void ViewWidget::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    if (!m_View) return painter.fillRect(event->rect(), palette().base());
    const CSize size{width(), height()};
    const double scale = devicePixelRatioF();
    CRect exposed = FromQt(event->rect());
    if (!m_Surface) {
        m_Surface = std::make_unique<RasterSurface>(size, CurrentUserInterface().Glyphs(), scale);
    }
    if (m_Surface->Size() != size || m_Surface->Scale() != scale) exposed = FromQt(rect());
    m_Surface->Resize(size, scale);

    m_IsPainting = true;
    m_View->InvalidateRect(&exposed);
    CDC dc(m_Surface.get());
    m_View->Paint(dc);
    m_IsPainting = false;
    painter.drawImage(QPoint(0, 0), PictureOf(*m_Surface));
}

void ViewWidget::mousePressEvent(QMouseEvent* event) {
    if (!m_View) return;
    if (event->button() == Qt::LeftButton) {
        m_View->OnLButtonDown(MouseFlags(*event), PixelOf(event->position()));
    } else if (event->button() == Qt::RightButton) {
        m_View->OnRButtonDown(MouseFlags(*event), PixelOf(event->position()));
    } else if (event->button() == Qt::MiddleButton) {
        m_View->OnMButtonDown(MouseFlags(*event), PixelOf(event->position()));
    }
    ShowPointer(*event);
}

// The context menu opens when the button comes up, so that its first click is a new one.
void ViewWidget::mouseReleaseEvent(QMouseEvent* event) {
    if (!m_View) return;
    if (event->button() == Qt::LeftButton) {
        m_View->OnLButtonUp(MouseFlags(*event), PixelOf(event->position()));
    } else if (event->button() == Qt::MiddleButton) {
        m_View->OnMButtonUp(MouseFlags(*event), PixelOf(event->position()));
    } else if (event->button() == Qt::RightButton && rect().contains(event->position().toPoint())) {
        return OpenContextMenu(event->globalPosition());
    }
    ShowPointer(*event);
}

void ViewWidget::mouseMoveEvent(QMouseEvent* event) {
    if (m_View) m_View->OnMouseMove(MouseFlags(*event), PixelOf(event->position()));
    ShowPointer(*event);
}

void ViewWidget::ShowPointer(const QMouseEvent& event) {
    if (!m_View) return;
    const Qt::CursorShape shape = CursorOf(m_View->PointerAt(PixelOf(event.position())));
    if (cursor().shape() != shape) setCursor(shape);
}

// What is turned sideways, by a touchpad or a second wheel, is turned with Shift for the view.
void ViewWidget::wheelEvent(QWheelEvent* event) {
    if (!m_View) return;
    const unsigned flags = MouseFlags(event->buttons(), event->modifiers());
    const QPoint turn = event->angleDelta();
    const CPoint at = PixelOf(event->position());
    if (turn.y() != 0) m_View->OnMouseWheel(flags, turn.y(), at);
    if (m_View && turn.x() != 0) m_View->OnMouseWheel(flags | MK_SHIFT, turn.x(), at);
    event->accept();
}

void ViewWidget::contextMenuEvent(QContextMenuEvent* event) {
    if (event->reason() == QContextMenuEvent::Keyboard) OpenContextMenu(event->globalPos());
}

void ViewWidget::OpenContextMenu(const QPointF& global) {
    if (m_View) m_View->OnContextMenu(m_View, PixelOf(global));
}

// Tab is a key of the view's, not a step to another widget.
bool ViewWidget::event(QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        keyPressEvent(static_cast<QKeyEvent*>(event));
        return event->isAccepted();
    }
    return QWidget::event(event);
}

void ViewWidget::keyPressEvent(QKeyEvent* event) {
    const unsigned key = VirtualKey(*event);
    if (m_View && key != 0) {
        m_View->OnKeyDown(key, static_cast<unsigned>(event->count()),
                          MouseFlags({}, event->modifiers()));
    } else {
        event->ignore();
    }
}

void ViewWidget::focusInEvent(QFocusEvent*) {
    if (m_View) m_View->PeerFocused();
}

}  // namespace vesk
