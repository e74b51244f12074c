#include "desktop/ViewPicture.h"

#include <QFile>
#include <QPageLayout>
#include <QPainter>
#include <QPdfWriter>
#include <QPrinter>
#include <QSaveFile>
#include <algorithm>

#include "desktop/PainterSurface.h"
#include "desktop/QtText.h"
#include "platform/CDC.h"
#include "platform/CView.h"
#include "platform/Png.h"
#include "platform/RasterSurface.h"
#include "platform/SvgSurface.h"
#include "platform/SystemMetrics.h"
#include "platform/UserInterface.h"

namespace vesk {

namespace {

constexpr double kPixelsPerInch = 96.0;
constexpr double kPointsPerInch = 72.0;

enum class PictureKind { kNone, kPng, kSvg, kPdf };

PictureKind KindOf(const std::string& path) {
    const QString name = ToQt(path).toLower();
    if (name.endsWith(".png")) return PictureKind::kPng;
    if (name.endsWith(".svg")) return PictureKind::kSvg;
    return name.endsWith(".pdf") ? PictureKind::kPdf : PictureKind::kNone;
}

// The scroll bars have no part in a picture. What is no raster is drawn on as when printing: there
// is no second picture to draw into before.
void Draw(CView& view, Surface& surface, bool prints) {
    CDC dc(&surface);
    dc.m_bPrinting = prints;
    view.OnDraw(&dc);
}

bool SavePng(CView& view, const std::string& path, double scale, std::string& error) {
    RasterSurface surface(PictureSize(view), CurrentUserInterface().Glyphs(), scale);
    Draw(view, surface, false);
    return WritePng(surface, path, error);
}

bool WriteSvg(CView& view, QIODevice& file) {
    SvgSurface surface(PictureSize(view), CurrentUserInterface().Glyphs());
    Draw(view, surface, true);
    const std::string text = surface.Document();
    return file.write(text.data(), static_cast<qint64>(text.size())) ==
           static_cast<qint64>(text.size());
}

void DrawPage(CView& view, QPainter& painter, double scale) {
    painter.scale(scale, scale);
    PainterSurface surface(painter, PictureSize(view), CurrentUserInterface().Glyphs());
    Draw(view, surface, true);
}

// A page of the picture's size.
bool WritePdf(CView& view, QIODevice& file) {
    const CSize size = PictureSize(view);
    QPdfWriter writer(&file);
    writer.setCreator("veskview");
    const QSizeF points = QSizeF(size.cx, size.cy) * (kPointsPerInch / kPixelsPerInch);
    const QPageSize page(points, QPageSize::Point, QString(), QPageSize::ExactMatch);
    writer.setPageLayout({page, QPageLayout::Portrait, QMarginsF()});
    QPainter painter;
    if (!painter.begin(&writer)) return false;
    DrawPage(view, painter, writer.resolution() / kPixelsPerInch);
    return painter.end();
}

}  // namespace

CSize PictureSize(const CView& view) {
    CRect client;
    view.GetClientRect(&client);
    return {std::max(0, client.Width() - GetSystemMetrics(SM_CXVSCROLL)),
            std::max(0, client.Height() - GetSystemMetrics(SM_CYHSCROLL))};
}

bool IsPictureName(const std::string& path) {
    return KindOf(path) != PictureKind::kNone;
}

bool SavePicture(CView& view, const std::string& path, double scale, std::string& error) {
    const PictureKind kind = KindOf(path);
    const CSize size = PictureSize(view);
    if (kind == PictureKind::kNone || size.cx == 0 || size.cy == 0) {
        error = "cannot write " + path +
                (kind == PictureKind::kNone ? ": a picture's name ends in .png, .svg or .pdf"
                                            : ": the window is too small for a picture");
        return false;
    }
    if (kind == PictureKind::kPng) return SavePng(view, path, scale, error);
    QSaveFile file(QFile::decodeName(path.c_str()));
    const bool isOpen = file.open(QIODevice::WriteOnly);
    const auto write = kind == PictureKind::kSvg ? WriteSvg : WritePdf;
    if (isOpen && write(view, file) && file.commit()) return true;
    error = "cannot write " + path + ": " + FromQt(file.errorString()).Str();
    return false;
}

bool PrintPicture(CView& view, QPrinter& printer) {
    const CSize size = PictureSize(view);
    QPainter painter;
    if (size.cx == 0 || size.cy == 0 || !painter.begin(&printer)) return false;
    const QRectF page = printer.pageRect(QPrinter::DevicePixel);
    DrawPage(view, painter, std::min(page.width() / size.cx, page.height() / size.cy));
    return painter.end();
}

}  // namespace vesk
