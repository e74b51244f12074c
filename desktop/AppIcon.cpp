#include "desktop/AppIcon.h"

#include <QPainter>
#include <QPixmap>

namespace vesk {

namespace {

constexpr double kDrawnSize = 64;

struct Bar {
    double m_X, m_Y, m_Width;
    QRgb m_Color;
};

// Four lanes of a timeline: one thing runs at a time.
constexpr Bar kBars[] = {
    {9, 13, 14, 0xFF4FC3F7}, {45, 13, 10, 0xFF4FC3F7}, {23, 24, 8, 0xFFFFB74D},
    {37, 24, 8, 0xFFFFB74D}, {31, 35, 6, 0xFFE57373},  {9, 46, 46, 0xFF81C784},
};
constexpr double kBarHeight = 6;

QPixmap Draw(int size) {
    QPixmap pixmap(size, size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(size / kDrawnSize, size / kDrawnSize);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0x26, 0x32, 0x38));
    painter.drawRoundedRect(QRectF(2, 2, 60, 60), 10, 10);
    for (const Bar& bar : kBars) {
        painter.setBrush(QColor::fromRgb(bar.m_Color));
        painter.drawRoundedRect(QRectF(bar.m_X, bar.m_Y, bar.m_Width, kBarHeight), 1, 1);
    }
    return pixmap;
}

}  // namespace

QIcon AppIcon() {
    QIcon icon;
    for (const int size : {16, 24, 32, 48, 64, 128}) icon.addPixmap(Draw(size));
    return icon;
}

}  // namespace vesk
