#include <gmock/gmock.h>

#include <QBackingStore>
#include <QLabel>
#include <QMouseEvent>
#include <QScrollBar>
#include <QStyleOptionSlider>
#include <QWheelEvent>
#include <limits>
#include <random>

#include "desktop/SurfacePicture.h"
#include "platform/CPen.h"
#include "platform/CToolTipCtrl.h"
#include "platform/Keys.h"
#include "platform/RasterSurface.h"
#include "tests/desktop/FramesTest.h"

namespace vesk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ViewWidgetTest : public FramesTest {
protected:
    ViewWidgetTest() { m_View.TakeHeard(); }

    CMDIChildWnd& m_Frame = Open();
    ListeningView& m_View = ViewOf(m_Frame);
    QWidget& m_Widget = WidgetOf(m_Frame);
};

// A picture with something of everything at odd places; another seed, another picture.
void DrawScribble(CDC& dc, unsigned seed) {
    std::mt19937 random(seed);
    const auto upTo = [&](unsigned end) { return static_cast<int>(random() % end); };
    CPen pen(PS_SOLID, 1, RGB(0, 0, 200));
    CPen* former = dc.SelectObject(&pen);
    dc.SetBkMode(TRANSPARENT);
    for (int i = 0; i < 60; ++i) {
        const int x = upTo(500), y = upTo(400);
        dc.FillSolidRect(x, y, upTo(40), upTo(9), RGB(upTo(256), upTo(256), upTo(256)));
        dc.MoveTo(x, y);
        dc.LineTo(upTo(500), upTo(400));
        dc.TextOut(x + 3, y, "IRQ0x" + std::to_string(i));
    }
    dc.SelectObject(former);
}

// What the raster alone makes of it.
QImage Expected(const ListeningView& view, double scale, unsigned seed) {
    RasterSurface surface(view.m_Size, CurrentUserInterface().Glyphs(), scale);
    CDC dc(&surface);
    dc.FillSolidRect(0, 0, view.m_Size.cx, view.m_Size.cy, RGB(255, 255, 255));
    DrawScribble(dc, seed);
    return PictureOf(surface).copy();
}

// Device pixels in which two pictures differ; -1 for other sizes.
int Differences(const QImage& a, const QImage& b) {
    if (a.size() != b.size()) return -1;
    int count = 0;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x) count += a.pixel(x, y) != b.pixel(x, y);
    }
    return count;
}

// What stands in the window where the widget is, at whatever device pixel that begins.
QImage OnScreen(QWidget& widget) {
    const QWidget& window = *widget.window();
    const auto* all = dynamic_cast<const QImage*>(window.backingStore()->paintDevice());
    if (!all) return {};
    const double scale = widget.devicePixelRatioF();
    const QPointF at = QPointF(widget.mapTo(&window, QPoint(0, 0))) * scale;
    return all->copy(QRect(at.toPoint(), widget.size() * scale))
        .convertToFormat(QImage::Format_RGB32);
}

TEST_F(ViewWidgetTest, PaintsThePictureOfTheRasterPixelForPixel) {
    m_View.m_Draw = [](CDC& dc) { DrawScribble(dc, 1); };
    const QImage grabbed = m_Widget.grab().toImage().convertToFormat(QImage::Format_RGB32);
    EXPECT_EQ(grabbed, Expected(m_View, m_Widget.devicePixelRatioF(), 1));
}

TEST_F(ViewWidgetTest, PaintsPartsThatFitTheRestWhereverTheFrameStands) {
    for (const QPoint place : {QPoint(0, 0), QPoint(31, 17), QPoint(46, 33)}) {
        WindowOf(m_Frame).setGeometry(QRect(place, QSize(301, 333)));
        m_View.m_Draw = [](CDC& dc) { DrawScribble(dc, 2); };
        m_View.Invalidate();
        Settle();
        m_View.m_Painted.clear();
        for (const CRect part : {CRect{11, 7, 64, 40}, CRect{101, 33, 102, 300}}) {
            m_View.InvalidateRect(&part);
            Settle();
        }
        EXPECT_THAT(m_View.m_Painted, ElementsAre(CRect{11, 7, 64, 40}, CRect{101, 33, 102, 300}));
        const QImage expected = Expected(m_View, m_Widget.devicePixelRatioF(), 2);
        // Where the window begins within a device pixel, its last ones may be its neighbour's.
        const QRect inner = expected.rect().adjusted(0, 0, -1, -1);
        EXPECT_EQ(Differences(OnScreen(m_Widget).copy(inner), expected.copy(inner)), 0)
            << place.x();
    }
}

TEST_F(ViewWidgetTest, PaintsOnlyWhatIsInvalidAndNothingTwice) {
    Settle();
    m_View.m_Painted.clear();
    const CRect parts[] = {{10, 10, 20, 20}, {40, 15, 50, 30}};
    for (const CRect& part : parts) m_View.InvalidateRect(&part);
    Settle();
    EXPECT_THAT(m_View.m_Painted, ElementsAre(CRect{10, 10, 50, 30}));
    m_View.m_Painted.clear();
    m_Widget.update(5, 6, 7, 8);  // as when another window went away
    Settle();
    EXPECT_THAT(m_View.m_Painted, ElementsAre(CRect{5, 6, 12, 14}));
}

TEST_F(ViewWidgetTest, TheViewHasTheSizeOfItsWidget) {
    WindowOf(m_Frame).resize(333, 222);
    Settle();
    EXPECT_EQ(m_View.m_Size, (CSize{m_Widget.width(), m_Widget.height()}));
    EXPECT_GT(m_View.m_Size.cx, 300);
}

TEST_F(ViewWidgetTest, TheMouseIsBroughtToTheView) {
    QTest::mousePress(&m_Widget, Qt::LeftButton, Qt::ControlModifier, {20, 30});
    QTest::mouseRelease(&m_Widget, Qt::LeftButton, {}, {22, 33});
    QMouseEvent move(QEvent::MouseMove, QPointF(40.7, 50.2),
                     m_Widget.mapToGlobal(QPointF(40.7, 50.2)), Qt::NoButton, Qt::NoButton,
                     Qt::NoModifier);
    QApplication::sendEvent(&m_Widget, &move);
    EXPECT_THAT(m_View.TakeHeard(),
                ElementsAre("down 9 at 20,30", "up 0 at 22,33", "move 0 at 40,50"));
    // The second press of a double click is a press like any other.
    QTest::mouseDClick(&m_Widget, Qt::LeftButton, {}, {5, 5});
    QTest::mouseRelease(&m_Widget, Qt::LeftButton, {}, {5, 5});
    EXPECT_THAT(m_View.TakeHeard(), ElementsAre("down 1 at 5,5", "up 0 at 5,5"));
}

TEST_F(ViewWidgetTest, TheMiddleButtonIsBroughtToTheView) {
    QTest::mousePress(&m_Widget, Qt::MiddleButton, {}, {20, 30});
    QMouseEvent move(QEvent::MouseMove, QPointF(25, 31), m_Widget.mapToGlobal(QPointF(25, 31)),
                     Qt::NoButton, Qt::MiddleButton, Qt::NoModifier);
    QApplication::sendEvent(&m_Widget, &move);
    QTest::mouseRelease(&m_Widget, Qt::MiddleButton, {}, {25, 31});
    EXPECT_THAT(m_View.TakeHeard(),
                ElementsAre("middle 16 at 20,30", "move 16 at 25,31", "middle up 0 at 25,31"));
}

TEST_F(ViewWidgetTest, TheWheelIsBroughtToTheViewSidewaysLikeWithShift) {
    const auto turn = [&](QPoint delta, Qt::KeyboardModifiers modifiers) {
        QWheelEvent event(QPointF(50.7, 5), m_Widget.mapToGlobal(QPointF(50.7, 5)), {}, delta,
                          Qt::NoButton, modifiers, Qt::NoScrollPhase, false);
        QApplication::sendEvent(&m_Widget, &event);
    };
    turn({0, 120}, Qt::ControlModifier);
    turn({0, -15}, Qt::ShiftModifier);
    turn({-30, 0}, {});
    EXPECT_THAT(m_View.TakeHeard(),
                ElementsAre("wheel 120 8 at 50,5", "wheel -15 4 at 50,5", "wheel -30 4 at 50,5"));
}

TEST_F(ViewWidgetTest, TheContextMenuOpensWhenTheRightButtonComesUp) {
    QTest::mousePress(&m_Widget, Qt::RightButton, {}, {20, 30});
    EXPECT_THAT(m_View.TakeHeard(), ElementsAre("right 2 at 20,30"));
    QTest::mouseRelease(&m_Widget, Qt::RightButton, {}, {20, 30});
    EXPECT_THAT(m_View.TakeHeard(), ElementsAre("menu 0 at 20,30"));
}

TEST_F(ViewWidgetTest, KeysGoToTheViewWithTheFocus) {
    EXPECT_TRUE(m_Widget.hasFocus());
    EXPECT_EQ(CWnd::GetFocus(), &m_View);
    QTest::keyClick(&m_Widget, Qt::Key_PageDown);
    QTest::keyClick(&m_Widget, Qt::Key_Tab);
    QTest::keyClick(&m_Widget, Qt::Key_Left, Qt::AltModifier);
    QTest::keyClick(&m_Widget, Qt::Key_W, Qt::ShiftModifier | Qt::ControlModifier);
    EXPECT_THAT(m_View.TakeHeard(),
                ElementsAre("key 34 at 1,0", "key 9 at 1,0", "key 37 at 1,32", "key 87 at 1,12"));
    CMDIChildWnd& other = Open("other");
    EXPECT_EQ(CWnd::GetFocus(), &ViewOf(other));
    m_Widget.setFocus();
    EXPECT_EQ(CWnd::GetFocus(), &m_View);
}

TEST_F(ViewWidgetTest, AToolTipStandsWhereItIsTold) {
    CToolTipCtrl tip;
    tip.Create(&m_View);
    TOOLINFO tool;
    tool.uId = &m_View;
    tip.AddTool(tool);
    tip.UpdateTipText("<b>IRQ</b>\r\n2 ms", &m_View);
    tip.TrackPosition({120, 140});
    tip.TrackActivate(true);
    QLabel* label = nullptr;
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        if (widget->windowType() == Qt::ToolTip) label = dynamic_cast<QLabel*>(widget);
    }
    ASSERT_NE(label, nullptr);
    EXPECT_TRUE(label->isVisible());
    EXPECT_EQ(label->pos(), QPoint(120, 140));
    EXPECT_EQ(label->text(), "<b>IRQ</b>\n2 ms");
    EXPECT_EQ(label->textFormat(), Qt::PlainText);
    QTest::mouseClick(&m_Widget, Qt::LeftButton, {}, {5, 5});
    EXPECT_TRUE(label->isVisible());
    EXPECT_TRUE(m_Window.isActiveWindow());

    // At the edges of the screen, and off it.
    const QRect screen = m_Widget.screen()->availableGeometry();
    const auto place = [&] { return QRect(label->pos(), label->size()); };
    for (const CPoint at : {CPoint{-500, -20}, CPoint{5000, 5000}, CPoint{5000, 30}}) {
        tip.TrackPosition(at);
        EXPECT_TRUE(screen.contains(place())) << at.x;
    }
    const int lineWidth = label->width();
    tip.SetAnchor({400, 30});
    tip.TrackPosition({-500, 30});
    EXPECT_EQ(label->pos(), QPoint(395 - lineWidth, 30)) << "left of what it is about";

    // More than the screen can hold.
    std::string tall = std::string(5000, 'w');
    for (int i = 1; i < 1000; ++i) tall += "\r\nline " + std::to_string(i);
    tip.UpdateTipText(tall, &m_View);
    EXPECT_TRUE(screen.contains(place()));
    EXPECT_GT(label->height(), screen.height() / 2);
    EXPECT_GT(label->width(), lineWidth);
    const QStringList lines = label->text().split('\n');
    EXPECT_EQ(lines[1], "line 1");
    EXPECT_EQ(lines.last(), QString("... and %1 lines more").arg(1001 - lines.size()));

    // Another window has the focus for a while.
    QWidget other;
    other.show();
    other.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&other));
    EXPECT_FALSE(label->isVisible());
    m_Window.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&m_Window));
    EXPECT_TRUE(label->isVisible());
    tip.TrackActivate(false);
    EXPECT_FALSE(label->isVisible());
}

// A horizontal scroll bar whose view goes by tens for lines, by the page for pages, and follows
// the thumb.
class ScrollBarTest : public ViewWidgetTest {
protected:
    ScrollBarTest() {
        m_View.m_OnScroll = [this](unsigned code, int position, CScrollBar& bar) {
            if (!m_Follows) return;
            const int now = bar.GetScrollPos();
            switch (code) {
                case SB_LINELEFT:
                    bar.SetScrollPos(now - 10);
                    break;
                case SB_LINERIGHT:
                    bar.SetScrollPos(now + 10);
                    break;
                case SB_PAGELEFT:
                    bar.SetScrollPos(now - 30);
                    break;
                case SB_PAGERIGHT:
                    bar.SetScrollPos(now + 30);
                    break;
                case SB_THUMBTRACK:
                case SB_THUMBPOSITION:
                    bar.SetScrollPos(position);
                    break;
                default:
                    break;
            }
        };
        m_Bar.Create(SBS_HORZ | WS_CHILD | WS_VISIBLE, {0, 40, 300, 56}, &m_View, 1);
        SetRange(1000);
        m_Shown = m_Widget.findChild<QScrollBar*>();
    }

    void SetRange(int max) {
        const SCROLLINFO info{.fMask = SIF_ALL, .nMin = 0, .nMax = max, .nPage = 30, .nPos = 100};
        m_Bar.SetScrollInfo(&info);
    }
    QRect PartOf(QStyle::SubControl part) const {
        QStyleOptionSlider option;
        option.initFrom(m_Shown);
        option.orientation = Qt::Horizontal;
        option.minimum = m_Shown->minimum();
        option.maximum = m_Shown->maximum();
        option.pageStep = m_Shown->pageStep();
        option.sliderPosition = m_Shown->sliderPosition();
        option.state |= QStyle::State_Horizontal;
        return m_Shown->style()->subControlRect(QStyle::CC_ScrollBar, &option, part, m_Shown);
    }
    void Click(QStyle::SubControl part) const {
        QTest::mouseClick(m_Shown, Qt::LeftButton, {}, PartOf(part).center());
    }
    void Drag(int pixels) const {
        const QPoint from = PartOf(QStyle::SC_ScrollBarSlider).center();
        QTest::mousePress(m_Shown, Qt::LeftButton, {}, from);
        QTest::mouseMove(m_Shown, from + QPoint(pixels, 0));
        QTest::mouseRelease(m_Shown, Qt::LeftButton, {}, from + QPoint(pixels, 0));
    }

    CScrollBar m_Bar;
    QScrollBar* m_Shown = nullptr;
    bool m_Follows = true;
};

TEST_F(ScrollBarTest, StandsWhereTheViewPutItAndShowsItsState) {
    ASSERT_NE(m_Shown, nullptr);
    EXPECT_EQ(m_Shown->geometry(), QRect(0, 40, 300, 16));
    EXPECT_TRUE(m_Shown->isVisible());
    EXPECT_EQ(m_Shown->maximum(), 971) << "the greatest position, not the range's end";
    EXPECT_EQ(m_Shown->pageStep(), 30);
    EXPECT_EQ(m_Shown->value(), 100);
    m_Bar.MoveWindow(10, 50, 200, 16);
    EXPECT_EQ(m_Shown->geometry(), QRect(10, 50, 200, 16));
    m_Bar.EnableWindow(false);
    EXPECT_FALSE(m_Shown->isEnabled());
    m_Bar.ShowWindow(SW_HIDE);
    EXPECT_FALSE(m_Shown->isVisible());
}

TEST_F(ScrollBarTest, TheViewMovesTheThumb) {
    Click(QStyle::SC_ScrollBarAddLine);
    EXPECT_EQ(m_Shown->value(), 110);
    Click(QStyle::SC_ScrollBarSubPage);
    EXPECT_EQ(m_Shown->value(), 80);
    m_Follows = false;
    Click(QStyle::SC_ScrollBarAddLine);
    Click(QStyle::SC_ScrollBarAddPage);
    Drag(50);
    EXPECT_EQ(m_Shown->value(), 80);
    EXPECT_EQ(m_Shown->sliderPosition(), 80);
}

TEST_F(ScrollBarTest, AnEndlessRangeCanBeDraggedToItsLastPosition) {
    SetRange(std::numeric_limits<int>::max());
    EXPECT_EQ(m_Shown->maximum(), 2147483618);
    Drag(1000);
    EXPECT_EQ(m_Bar.GetScrollPos(), 2147483618);
    EXPECT_THAT(m_View.TakeHeard(), ElementsAre("scroll 5 at 2147483618,0",
                                                "scroll 4 at 2147483618,0", "scroll 8 at 0,0"));
}

TEST_F(ScrollBarTest, ANotchOfTheWheelIsThreeLines) {
    const auto turn = [&](int eighths) {
        QWheelEvent event(QPointF(50, 5), m_Shown->mapToGlobal(QPointF(50, 5)), {}, {0, eighths},
                          Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(m_Shown, &event);
    };
    turn(-120);
    EXPECT_EQ(m_Bar.GetScrollPos(), 130);
    turn(60);
    EXPECT_EQ(m_Bar.GetScrollPos(), 130) << "half a notch";
    turn(60);
    EXPECT_EQ(m_Bar.GetScrollPos(), 100);
}

TEST_F(ScrollBarTest, NeitherTakesTheFocusNorOpensAMenu) {
    m_View.TakeHeard();
    QTest::mouseClick(m_Shown, Qt::RightButton, {}, {50, 5});
    EXPECT_THAT(m_View.TakeHeard(), IsEmpty());
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
    EXPECT_TRUE(m_Widget.hasFocus());
}

TEST_F(ScrollBarTest, AWideRangeOfNegativeNumbersIsShown) {
    const SCROLLINFO info{.fMask = SIF_ALL,
                          .nMin = std::numeric_limits<int>::min(),
                          .nMax = std::numeric_limits<int>::max(),
                          .nPage = 1U << 31,
                          .nPos = 7};
    m_Bar.SetScrollInfo(&info);
    EXPECT_EQ(m_Shown->minimum(), std::numeric_limits<int>::min());
    EXPECT_EQ(m_Shown->maximum(), 0);
    EXPECT_EQ(m_Shown->value(), 0);
}

}  // namespace
}  // namespace vesk
