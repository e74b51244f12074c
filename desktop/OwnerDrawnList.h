#pragma once

#include <QAbstractScrollArea>
#include <functional>
#include <memory>

#include "platform/Geometry.h"

class CListBox;
class QKeyEvent;

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

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent*) override;
    void mousePressEvent(QMouseEvent*) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override { mousePressEvent(event); }
    void keyPressEvent(QKeyEvent*) override;
    void resizeEvent(QResizeEvent*) override;

private:
    int FullRows() const;  // entries that fit, at least 1
    void DrawRows();

    CListBox& m_List;
    std::unique_ptr<RasterSurface> m_Surface;
};

}  // namespace vesk
