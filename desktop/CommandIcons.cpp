#include "desktop/CommandIcons.h"

#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>
#include <QPixmap>
#include <algorithm>

namespace vesk {

namespace {

// Pictures are drawn on a field of this size, with the theme's text colour as pen and an accent,
// which stands out on light and dark, for what fills.
constexpr double kField = 19;
constexpr QColor kAccent(0x3D, 0x8B, 0xD9);

using Draw = void (*)(QPainter&, const QBrush& accent);

void OpenFile(QPainter& p, const QBrush& accent) {
    p.drawPolyline(
        QPolygonF({{2.5, 15.5}, {2.5, 4.5}, {7, 4.5}, {8.5, 6.5}, {14.5, 6.5}, {14.5, 9}}));
    p.setBrush(accent);
    p.drawPolygon(QPolygonF({{2.5, 15.5}, {5.5, 9}, {17, 9}, {14.5, 15.5}}));
}

void Gear(QPainter& p, const QBrush& accent) {
    p.save();
    p.translate(kField / 2, kField / 2);
    for (int tooth = 0; tooth < 8; ++tooth) {
        p.drawLine(QPointF(0, -5.5), QPointF(0, -7.5));
        p.rotate(45);
    }
    p.setBrush(accent);
    p.drawEllipse(QPointF(), 5, 5);
    p.setBrush(Qt::NoBrush);
    p.drawEllipse(QPointF(), 1.8, 1.8);
    p.restore();
}

void Lens(QPainter& p) {
    p.drawEllipse(QPointF(8, 8), 5.5, 5.5);
    QPen handle = p.pen();
    handle.setWidthF(2.4);
    p.save();
    p.setPen(handle);
    p.drawLine(QPointF(12.3, 12.3), QPointF(16.3, 16.3));
    p.restore();
    p.drawLine(QPointF(5.5, 8), QPointF(10.5, 8));
}

void ZoomIn(QPainter& p, const QBrush&) {
    Lens(p);
    p.drawLine(QPointF(8, 5.5), QPointF(8, 10.5));
}

void ZoomOut(QPainter& p, const QBrush&) {
    Lens(p);
}

void Expand(QPainter& p, const QBrush&) {
    p.drawLine(QPointF(2.5, 3.5), QPointF(2.5, 15.5));
    p.drawLine(QPointF(16.5, 3.5), QPointF(16.5, 15.5));
    p.drawLine(QPointF(5, 9.5), QPointF(14, 9.5));
    p.drawPolyline(QPolygonF({{7.5, 6.5}, {4.8, 9.5}, {7.5, 12.5}}));
    p.drawPolyline(QPolygonF({{11.5, 6.5}, {14.2, 9.5}, {11.5, 12.5}}));
}

void Marker(QPainter& p, const QBrush& accent) {
    p.drawLine(QPointF(5.5, 2.5), QPointF(5.5, 16.5));
    p.setBrush(accent);
    p.drawPolygon(QPolygonF({{5.5, 3}, {15, 6.2}, {5.5, 9.5}}));
}

void Table(QPainter& p, const QBrush& accent) {
    p.fillRect(QRectF(2.5, 3.5, 14, 3.5), accent);
    p.drawRect(QRectF(2.5, 3.5, 14, 12));
    p.drawLine(QPointF(2.5, 7), QPointF(16.5, 7));
    p.drawLine(QPointF(2.5, 11.2), QPointF(16.5, 11.2));
    p.drawLine(QPointF(7.5, 3.5), QPointF(7.5, 15.5));
}

void Axes(QPainter& p) {
    p.drawPolyline(QPolygonF({{2.5, 2.5}, {2.5, 16.5}, {16.5, 16.5}}));
}

void Curve(QPainter& p, const QBrush& accent) {
    Axes(p);
    p.setPen(QPen(accent, 1.8, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p.drawPolyline(QPolygonF({{4.5, 13}, {7.5, 7.5}, {10.5, 10.5}, {13, 4.5}, {16, 6.5}}));
}

void Area(QPainter& p, const QBrush& accent) {
    p.setPen(Qt::NoPen);
    p.setBrush(accent);
    p.drawPolygon(QPolygonF({{3, 16}, {3, 11}, {7, 6.5}, {10.5, 9.5}, {16, 4}, {16, 16}}));
}

void AreaWithAxes(QPainter& p, const QBrush& accent) {
    p.save();
    Area(p, accent);
    p.restore();
    Axes(p);
}

void Info(QPainter& p, const QBrush& accent) {
    p.drawEllipse(QPointF(9.5, 9.5), 7, 7);
    p.drawLine(QPointF(9.5, 8.8), QPointF(9.5, 13));
    p.setPen(Qt::NoPen);
    p.setBrush(accent);
    p.drawEllipse(QPointF(9.5, 5.9), 1.3, 1.3);
}

void Gauge(QPainter& p, const QBrush& accent) {
    p.drawArc(QRectF(2.5, 4, 14, 14), 0, 180 * 16);
    p.drawLine(QPointF(2.5, 11), QPointF(4.5, 11));
    p.drawLine(QPointF(14.5, 11), QPointF(16.5, 11));
    p.setPen(QPen(accent, 1.8, Qt::SolidLine, Qt::RoundCap));
    p.drawLine(QPointF(9.5, 11), QPointF(12.5, 6.5));
    p.setBrush(accent);
    p.drawEllipse(QPointF(9.5, 11), 0.8, 0.8);
}

void Bars(QPainter& p, const QBrush& accent) {
    Axes(p);
    p.fillRect(QRectF(4.5, 10, 2.8, 6), accent);
    p.fillRect(QRectF(8.6, 5, 2.8, 11), accent);
    p.fillRect(QRectF(12.7, 8, 2.8, 8), accent);
}

void Square(QPainter& p, const QBrush&) {
    p.drawRoundedRect(QRectF(4.5, 4.5, 10, 10), 2, 2);
}

struct Picture {
    unsigned m_Command;
    Draw m_Draw;
};

constexpr Picture kPictures[] = {
    {40008, OpenFile}, {32774, Gear},  {2020, ZoomIn}, {32771, ZoomOut},      {40143, Expand},
    {40142, Marker},   {40141, Table}, {40184, Curve}, {40194, AreaWithAxes}, {40197, Info},
    {40424, Gauge},    {40425, Bars},  {57664, Info},
};

Draw PictureOf(unsigned command) {
    for (const Picture& picture : kPictures) {
        if (picture.m_Command == command) return picture.m_Draw;
    }
    return Square;
}

class CommandIconEngine : public QIconEngine {
public:
    explicit CommandIconEngine(Draw draw) : m_Draw(draw) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
        const bool isOff = mode == QIcon::Disabled;
        const QColor text = QGuiApplication::palette().color(
            isOff ? QPalette::Disabled : QPalette::Active, QPalette::ButtonText);
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->translate(rect.topLeft());
        const double scale = std::min(rect.width(), rect.height()) / kField;
        painter->scale(scale, scale);
        painter->setPen(QPen(text, 1.3, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        m_Draw(*painter, isOff ? text : kAccent);
        painter->restore();
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, QRect(QPoint(), size), mode, state);
        return pixmap;
    }

    QIconEngine* clone() const override { return new CommandIconEngine(*this); }

private:
    Draw m_Draw;
};

}  // namespace

QIcon CommandIcon(unsigned command) {
    return QIcon(new CommandIconEngine(PictureOf(command)));
}

}  // namespace vesk
