#include "desktop/OwnerDrawnList.h"

#include <QApplication>
#include <QImage>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>

#include "desktop/InputTranslation.h"
#include "desktop/QtText.h"
#include "desktop/SurfacePicture.h"
#include "platform/CDC.h"
#include "platform/CListBox.h"
#include "platform/Keys.h"
#include "platform/RasterSurface.h"
#include "platform/SystemMetrics.h"
#include "platform/UserInterface.h"

namespace vesk {

OwnerDrawnList::OwnerDrawnList(QWidget& parent, CListBox& list)
    : QAbstractScrollArea(&parent), m_List(list) {
    setFocusPolicy(Qt::StrongFocus);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
    connect(verticalScrollBar(), &QScrollBar::valueChanged, this, [this](int top) {
        m_List.SetTopIndex(top);
        viewport()->update();
    });
}

OwnerDrawnList::~OwnerDrawnList() = default;

int OwnerDrawnList::FullRows() const {
    return std::max(1, viewport()->height() / std::max(1, m_List.GetItemHeight()));
}

void OwnerDrawnList::Refresh() {
    const int top = m_List.GetTopIndex();
    verticalScrollBar()->setPageStep(FullRows());
    verticalScrollBar()->setRange(0, std::max(0, m_List.GetCount() - FullRows()));
    verticalScrollBar()->setValue(top);
    m_List.SetTopIndex(verticalScrollBar()->value());
    viewport()->update();
}

void OwnerDrawnList::resizeEvent(QResizeEvent*) {
    m_List.PeerMoved(FromQt(viewport()->rect()), SW_SHOWNORMAL);
    Refresh();
}

QSize OwnerDrawnList::sizeHint() const {
    return {fontMetrics().averageCharWidth() * 32, m_List.GetItemHeight() * 16 + 2 * frameWidth()};
}

void OwnerDrawnList::paintEvent(QPaintEvent*) {
    const CSize size{viewport()->width(), viewport()->height()};
    const double scale = viewport()->devicePixelRatioF();
    if (!m_Surface) {
        m_Surface = std::make_unique<RasterSurface>(size, CurrentUserInterface().Glyphs(), scale);
    } else {
        m_Surface->Resize(size, scale);
    }
    DrawRows();
    QPainter painter(viewport());
    painter.drawImage(QPoint(0, 0), PictureOf(*m_Surface));
    if (hasFocus()) DrawFocus(painter);
}

// Of several lists, the one that gets the keys.
void OwnerDrawnList::DrawFocus(QPainter& painter) {
    painter.setPen(palette().color(QPalette::Highlight));
    painter.drawRect(viewport()->rect().adjusted(0, 0, -1, -1));
}

void OwnerDrawnList::DrawRows() {
    CDC dc(m_Surface.get());
    const CSize size = m_Surface->Size();
    dc.FillSolidRect(0, 0, size.cx, size.cy, GetSysColor(COLOR_WINDOW));
    const int end = std::min(m_List.GetCount(), m_List.GetTopIndex() + FullRows() + 1);
    for (int row = m_List.GetTopIndex(); row < end; ++row) {
        DRAWITEMSTRUCT item;
        item.itemID = row;
        if (m_List.GetSel(row)) item.itemState |= ODS_SELECTED;
        if (!m_List.IsWindowEnabled()) item.itemState |= ODS_DISABLED;
        item.hDC = &dc;
        const int top = (row - m_List.GetTopIndex()) * m_List.GetItemHeight();
        item.rcItem = {0, top, size.cx, top + m_List.GetItemHeight()};
        item.itemData = m_List.GetItemData(row);
        m_List.DrawItem(&item);
    }
}

void OwnerDrawnList::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton)
        m_OnPress(MouseFlags(*event), PixelOf(event->position()));
}

void OwnerDrawnList::keyPressEvent(QKeyEvent* event) {
    const int last = m_List.GetCount() - 1;
    int row = m_List.GetCurSel();
    switch (event->key()) {
        case Qt::Key_Up:
            --row;
            break;
        case Qt::Key_Down:
            ++row;
            break;
        case Qt::Key_PageUp:
            row -= FullRows();
            break;
        case Qt::Key_PageDown:
            row += FullRows();
            break;
        case Qt::Key_Home:
            row = 0;
            break;
        case Qt::Key_End:
            row = last;
            break;
        default:
            return OtherKey(*event);
    }
    Select(row);
}

void OwnerDrawnList::Select(int row) {
    const int last = m_List.GetCount() - 1;
    if (last < 0) return;
    row = std::clamp(row, 0, last);
    m_OnSelect(row);
    const int top = std::clamp(m_List.GetTopIndex(), row - FullRows() + 1, row);
    verticalScrollBar()->setValue(top);
}

// Letters and digits lead to names, all other keys are the list's own.
void OwnerDrawnList::OtherKey(QKeyEvent& event) {
    const bool isCommand = (event.modifiers() & (Qt::ControlModifier | Qt::AltModifier)) != 0;
    const QString text = event.text();
    if (!isCommand && !text.isEmpty() && text[0].isPrint() && !text[0].isSpace()) {
        JumpTo(text);
    } else if (!isCommand && event.key() == Qt::Key_Space) {
        m_OnKey(VK_SPACE);
    } else {
        event.ignore();
    }
}

// The same character again and again goes from one name that begins with it to the next.
void OwnerDrawnList::JumpTo(const QString& typed) {
    if (!m_SinceTyped.isValid() || m_SinceTyped.hasExpired(QApplication::keyboardInputInterval()))
        m_Typed.clear();
    m_SinceTyped.start();
    m_Typed += typed;
    const bool isOne = m_Typed.count(m_Typed[0]) == m_Typed.size();
    const int from = m_List.GetCurSel() - (isOne ? 0 : 1);
    const int row = m_List.FindString(from, FromQt(isOne ? m_Typed.left(1) : m_Typed));
    if (row != LB_ERR) Select(row);
}

}  // namespace vesk
