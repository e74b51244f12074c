#include "desktop/RowList.h"

#include <QHeaderView>
#include <QHelpEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStandardItemModel>
#include <QToolTip>
#include <algorithm>
#include <utility>

namespace vesk {

namespace {

constexpr int kMargin = 6;  // left and right of a text
constexpr int kGap = 4;     // between the lines of rows

}  // namespace

RowList::RowList(const std::vector<Column>& columns, QWidget* parent)
    : QAbstractScrollArea(parent), m_Header(new QHeaderView(Qt::Horizontal, this)) {
    setFocusPolicy(Qt::StrongFocus);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    MakeHeader(columns);
    SetRows(0, {});
}

void RowList::MakeHeader(const std::vector<Column>& columns) {
    auto* const titles = new QStandardItemModel(0, static_cast<int>(columns.size()), this);
    m_Header->setModel(titles);
    m_Header->setHighlightSections(false);
    m_Header->setMinimumSectionSize(40);
    for (int i = 0; i < titles->columnCount(); ++i) {
        const Column& column = columns[static_cast<std::size_t>(i)];
        m_IsNumber.push_back(column.m_IsNumber);
        titles->setHeaderData(i, Qt::Horizontal, column.m_Title);
        const int side = column.m_IsNumber ? Qt::AlignRight : Qt::AlignLeft;
        titles->setHeaderData(i, Qt::Horizontal, int(side | Qt::AlignVCenter),
                              Qt::TextAlignmentRole);
        const bool isRest = column.m_Widest.isEmpty();
        const int text = std::max(fontMetrics().horizontalAdvance(column.m_Widest),
                                  fontMetrics().horizontalAdvance(column.m_Title));
        m_Header->setSectionResizeMode(i, isRest ? QHeaderView::Stretch : QHeaderView::Interactive);
        if (!isRest) m_Header->resizeSection(i, text + 2 * kMargin + kGap);
    }
    connect(m_Header, &QHeaderView::sectionResized, viewport(), [this] { Arrange(); });
}

void RowList::SetRows(int count, Text text) {
    m_Count = count;
    m_Text = std::move(text);
    m_Current = -1;
    Arrange();
}

void RowList::SetNote(const QString& note) {
    if (note == m_Note) return;
    m_Note = note;
    viewport()->update();
}

void RowList::SetCurrent(int row) {
    m_Current = row >= 0 && row < m_Count ? row : -1;
    QScrollBar& bar = *verticalScrollBar();
    if (m_Current >= 0)
        bar.setValue(std::clamp(bar.value(), m_Current - FullRows() + 1, m_Current));
    viewport()->update();
}

// --- Place ---------------------------------------------------------------------------------------

// The vertical bar counts rows, the horizontal one pixels.
void RowList::Arrange() {
    const int height = m_Header->sizeHint().height();
    setViewportMargins(0, height, 0, 0);
    const QRect room = viewport()->geometry();
    m_Header->setGeometry(room.left(), room.top() - height, room.width(), height);
    verticalScrollBar()->setRange(0, std::max(0, m_Count - FullRows()));
    verticalScrollBar()->setPageStep(FullRows());
    horizontalScrollBar()->setRange(0, std::max(0, m_Header->length() - room.width()));
    horizontalScrollBar()->setPageStep(room.width());
    m_Header->setOffset(horizontalScrollBar()->value());
    viewport()->update();
}

// Every column as wide as it asked for, the rest of the room as wide as a name.
QSize RowList::sizeHint() const {
    constexpr int kRows = 9;
    int width = verticalScrollBar()->sizeHint().width() + 2 * frameWidth();
    for (int i = 0; i < m_Header->count(); ++i) {
        const bool isRest = m_Header->sectionResizeMode(i) == QHeaderView::Stretch;
        width += isRest ? fontMetrics().horizontalAdvance("frame 00000, 0000000000") + 2 * kMargin
                        : m_Header->sectionSize(i);
    }
    return {width, m_Header->sizeHint().height() + kRows * RowHeight()};
}

int RowList::RowHeight() const {
    return fontMetrics().height() + kGap;
}

int RowList::FullRows() const {
    return std::max(1, viewport()->height() / RowHeight());
}

QRect RowList::RowRect(int row) const {
    const int top = (row - verticalScrollBar()->value()) * RowHeight();
    return {0, top, viewport()->width(), RowHeight()};
}

QRect RowList::CellRect(int row, int column) const {
    const QRect line = RowRect(row);
    return {m_Header->sectionViewportPosition(column), line.top(), m_Header->sectionSize(column),
            line.height()};
}

int RowList::RowAt(int y) const {
    const int row = verticalScrollBar()->value() + y / RowHeight();
    return y >= 0 && row < m_Count ? row : -1;
}

void RowList::resizeEvent(QResizeEvent*) {
    Arrange();
}

void RowList::scrollContentsBy(int, int) {
    m_Header->setOffset(horizontalScrollBar()->value());
    viewport()->update();
}

void RowList::changeEvent(QEvent* event) {
    QAbstractScrollArea::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) Arrange();
}

// The current row tells whether it has the keys.
void RowList::focusInEvent(QFocusEvent*) {
    viewport()->update();
}

void RowList::focusOutEvent(QFocusEvent*) {
    viewport()->update();
}

// --- Painting ------------------------------------------------------------------------------------

void RowList::paintEvent(QPaintEvent* event) {
    QPainter painter(viewport());
    painter.fillRect(event->rect(), palette().base());
    if (m_Count == 0) {
        painter.setPen(palette().color(QPalette::Text));
        const QRect room = viewport()->rect().adjusted(kMargin, kMargin, -kMargin, -kMargin);
        painter.drawText(room, Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap, m_Note);
        return;
    }
    const int last = std::min(m_Count - 1, RowAt(0) + viewport()->height() / RowHeight() + 1);
    for (int row = RowAt(0); row <= last; ++row) PaintRow(painter, row);
}

void RowList::PaintRow(QPainter& painter, int row) const {
    const bool isCurrent = row == m_Current;
    const auto group = hasFocus() ? QPalette::Active : QPalette::Inactive;
    if (isCurrent) painter.fillRect(RowRect(row), palette().brush(group, QPalette::Highlight));
    painter.setPen(palette().color(group, isCurrent ? QPalette::HighlightedText : QPalette::Text));
    for (int column = 0; column < m_Header->count(); ++column) {
        const QRect cell = CellRect(row, column).adjusted(kMargin, 0, -kMargin, 0);
        const bool isNumber = m_IsNumber[static_cast<std::size_t>(column)];
        const QString text =
            fontMetrics().elidedText(m_Text(row, column), Qt::ElideRight, cell.width());
        painter.drawText(
            cell,
            Qt::TextSingleLine | Qt::AlignVCenter | (isNumber ? Qt::AlignRight : Qt::AlignLeft),
            text);
    }
}

// --- Input ---------------------------------------------------------------------------------------

void RowList::mousePressEvent(QMouseEvent* event) {
    const int row = RowAt(event->position().toPoint().y());
    if (event->button() != Qt::LeftButton || row < 0) return;
    SetCurrent(row);
    if (m_OnChosen) m_OnChosen(row);
}

void RowList::keyPressEvent(QKeyEvent* event) {
    const struct {
        int m_Key;
        int m_Row;
    } kWays[] = {{Qt::Key_Up, m_Current - 1},
                 {Qt::Key_Down, m_Current + 1},
                 {Qt::Key_PageUp, m_Current - FullRows()},
                 {Qt::Key_PageDown, m_Current + FullRows()},
                 {Qt::Key_Home, 0},
                 {Qt::Key_End, m_Count - 1}};
    for (const auto& way : kWays)
        if (way.m_Key == event->key() && m_Count > 0)
            return SetCurrent(std::clamp(way.m_Row, 0, m_Count - 1));
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    const auto& act = isEnter ? m_OnChosen : m_OnDelete;
    if ((!isEnter && event->key() != Qt::Key_Delete) || !act || m_Current < 0)
        return QAbstractScrollArea::keyPressEvent(event);
    act(m_Current);
}

bool RowList::viewportEvent(QEvent* event) {
    if (event->type() != QEvent::ToolTip) return QAbstractScrollArea::viewportEvent(event);
    ShowTip(*static_cast<QHelpEvent*>(event));
    return true;
}

// The whole text where a cell shows a part of it.
void RowList::ShowTip(const QHelpEvent& event) {
    const int row = RowAt(event.pos().y());
    const int column = m_Header->logicalIndexAt(event.pos().x());
    if (row < 0 || column < 0) return QToolTip::hideText();
    const QString text = m_Text(row, column);
    const bool fits =
        fontMetrics().horizontalAdvance(text) <= CellRect(row, column).width() - 2 * kMargin;
    if (fits) return QToolTip::hideText();
    QToolTip::showText(event.globalPos(), text.toHtmlEscaped(), viewport());
}

}  // namespace vesk
