#pragma once

#include <QAbstractScrollArea>
#include <QElapsedTimer>
#include <QString>
#include <functional>
#include <memory>

#include "platform/Geometry.h"

class CListBox;
class QKeyEvent;
class QPainter;

namespace vesk {

class RasterSurface;

// Shows a list box whose entries are drawn by their owner, on the list's own raster. Scrolls by
// whole entries; the list's top index is the scroll bar's position.
class OwnerDrawnList : public QAbstractScrollArea {
public:
    OwnerDrawnList(QWidget& parent, CListBox& list);
    ~OwnerDrawnList() override;

    // The list's entries, selection or top changed.
    void Refresh();

    std::function<void(unsigned flags, CPoint)> m_OnPress;
    std::function<void(int index)> m_OnSelect;  // by the keyboard
    std::function<void(unsigned key)> m_OnKey;  // VK_... of a key that does not move the selection

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent*) override;
    void mousePressEvent(QMouseEvent*) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override { mousePressEvent(event); }
    void keyPressEvent(QKeyEvent*) override;
    void resizeEvent(QResizeEvent*) override;
    void focusInEvent(QFocusEvent*) override { viewport()->update(); }
    void focusOutEvent(QFocusEvent*) override { viewport()->update(); }

private:
    void Select(int row);
    void OtherKey(QKeyEvent&);
    void JumpTo(const QString& typed);
    int FullRows() const;  // entries that fit, at least 1
    void DrawRows();
    void DrawFocus(QPainter&);

    CListBox& m_List;
    std::unique_ptr<RasterSurface> m_Surface;
    QString m_Typed;  // the beginning of a name, in one go
    QElapsedTimer m_SinceTyped;
};

}  // namespace vesk
