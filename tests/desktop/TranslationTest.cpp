#include <gmock/gmock.h>

#include <QFontMetrics>
#include <QImage>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

#include "desktop/FileDialogFilter.h"
#include "desktop/InputTranslation.h"
#include "desktop/QtGlyphs.h"
#include "desktop/QtText.h"
#include "platform/CWnd.h"
#include "platform/Keys.h"
#include "platform/RasterSurface.h"
#include "tests/desktop/DesktopTest.h"

namespace vesk {
namespace {

TEST(QtText, KeepsEveryByteOfAName) {
    const struct {
        const char* what;
        std::string bytes;
        QString text;
    } cases[] = {
        {"plain", "MAIN", "MAIN"},
        {"valid UTF-8", "\xC3\xA4rger", QString::fromUtf8("\xC3\xA4rger")},
        {"Latin-1", "\xE4rger", QString::fromUtf8("\xC3\xA4rger")},
        {"cut UTF-8", "a\xC3", QString::fromUtf8("a\xC3\x83")},
        {"byte order mark", "\xEF\xBB\xBFx", QString(QChar(0xFEFF)) + 'x'},
        {"zero inside", std::string("a\0b", 3), QString::fromLatin1("a\0b", 3)},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        EXPECT_EQ(ToQt(c.bytes), c.text);
    }
    EXPECT_EQ(FromQt(QString(QChar(0xE4))), "\xC3\xA4");
}

TEST(QtText, FindsTheTipOfACommand) {
    EXPECT_EQ(TipOf("Set marker\nSets a marker"), "Sets a marker");
    EXPECT_EQ(TipOf("&Go To ...\tCtrl+G"), "Go To ...");
}

TEST(FileDialogFilter, TurnsPairsIntoNameFilters) {
    EXPECT_EQ(NameFilters("Bin file (*.bin)|*.bin|All files (*.*)|*.*||"),
              QStringList({"Bin file (*.bin)", "All files (*)"}));
    EXPECT_EQ(NameFilters("Targets|*.json;*.elf||"), QStringList("Targets (*.json *.elf)"));
    EXPECT_EQ(NameFilters("Half a pair"), QStringList());
    EXPECT_EQ(NameFilters(""), QStringList());
}

TEST(InputTranslation, NamesKeys) {
    const struct {
        const char* what;
        int key;
        Qt::KeyboardModifiers modifiers;
        unsigned virtualKey;
    } cases[] = {
        {"letter", Qt::Key_G, Qt::ControlModifier, 'G'},
        {"digit", Qt::Key_7, Qt::NoModifier, '7'},
        {"arrow", Qt::Key_Left, Qt::NoModifier, VK_LEFT},
        {"arrow of the numeric pad", Qt::Key_Left, Qt::KeypadModifier, VK_LEFT},
        {"function key", Qt::Key_F6, Qt::ShiftModifier, VK_F6},
        {"enter of the numeric pad", Qt::Key_Enter, Qt::KeypadModifier, VK_RETURN},
        {"plus of the numeric pad", Qt::Key_Plus, Qt::KeypadModifier, VK_ADD},
        {"plus of the main row", Qt::Key_Plus, Qt::NoModifier, 0},
        {"minus of the numeric pad", Qt::Key_Minus, Qt::KeypadModifier, VK_SUBTRACT},
        {"a modifier alone", Qt::Key_Control, Qt::ControlModifier, 0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        EXPECT_EQ(VirtualKey(QKeyEvent(QEvent::KeyPress, c.key, c.modifiers)), c.virtualKey);
    }
    EXPECT_EQ(AcceleratorModifiers(Qt::ControlModifier | Qt::KeypadModifier), kControl);
    EXPECT_EQ(AcceleratorModifiers(Qt::AltModifier | Qt::ShiftModifier), kAlt + kShift);
}

TEST(InputTranslation, TakesThePixelThatThePointerIsIn) {
    EXPECT_EQ(PixelOf({50.6, 7.5}), (CPoint{50, 7}));
    EXPECT_EQ(PixelOf({-0.4, 0.0}), (CPoint{-1, 0}));
}

class QtGlyphsTest : public testing::TestWithParam<double> {};

QFont FontOf(double scale) {
    QFont font;
    font.setFamilies({"DejaVu Sans"});
    font.setPixelSize(static_cast<int>(12 * scale));
    font.setKerning(false);
    font.setHintingPreference(QFont::PreferFullHinting);
    font.setStyleStrategy(
        static_cast<QFont::StyleStrategy>(QFont::NoAntialias | QFont::PreferNoShaping));
    return font;
}

// Pairs that kern or join, ink that hangs over, and letters outside ASCII.
TEST_P(QtGlyphsTest, TextIsThatOfTheToolkitPixelForPixel) {
    const double scale = GetParam();
    const QtGlyphs glyphs;
    const QFont font = FontOf(scale);
    for (const char* text : {"AVATAR To fjf", "office ffi", "L1_IRQ0x03 {|}", "\xC4\xF6\xFC\xDF"}) {
        RasterSurface surface({200, 24}, glyphs, scale);
        surface.FillRect({0, 0, 200, 24}, 0);
        surface.Text({4, 4}, text, 0xFFFFFF);
        QImage expected(surface.DeviceWidth(), surface.DeviceHeight(), QImage::Format_RGB32);
        expected.fill(Qt::black);
        QPainter painter(&expected);
        painter.setFont(font);
        painter.setPen(Qt::white);
        const int edge = static_cast<int>(4 * scale + 0.5);
        painter.drawText(edge, edge + QFontMetrics(font).ascent(), QString::fromLatin1(text));
        painter.end();
        const QImage drawn(reinterpret_cast<const uchar*>(surface.Pixels()), surface.DeviceWidth(),
                           surface.DeviceHeight(), QImage::Format_RGB32);
        EXPECT_EQ(drawn, expected) << text;
    }
}

TEST_P(QtGlyphsTest, AWidthIsTheSumOfItsCharacters) {
    const double scale = GetParam();
    const QtGlyphs glyphs;
    const std::string text = "AVATAR To fjf office";
    int sum = 0;
    for (const char c : text) sum += glyphs.DeviceAdvance(static_cast<std::uint8_t>(c), scale);
    EXPECT_EQ(sum, QFontMetrics(FontOf(scale)).horizontalAdvance(QString::fromStdString(text)));
}

TEST_P(QtGlyphsTest, DrawingATextTwiceChangesNothing) {
    const QtGlyphs glyphs;
    RasterSurface surface({120, 20}, glyphs, GetParam());
    const auto picture = [&] {
        surface.Text({2, 2}, "MAIN ... (g&%\xE4)", 0x963C32);
        const auto pixels = static_cast<std::size_t>(surface.Stride()) * surface.DeviceHeight();
        return std::vector<std::uint32_t>(surface.Pixels(), surface.Pixels() + pixels);
    };
    const std::vector<std::uint32_t> once = picture();
    EXPECT_EQ(picture(), once);
    EXPECT_THAT(once, testing::Contains(0xFF323C96));
}

INSTANTIATE_TEST_SUITE_P(Scales, QtGlyphsTest, testing::Values(1.0, 1.5, 2.0));

}  // namespace
}  // namespace vesk
