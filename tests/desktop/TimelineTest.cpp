// The timeline in its real window: wheel, middle button, keys, pictures, printing.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QMdiSubWindow>
#include <QPdfWriter>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>
#include <QTimer>
#include <QWheelEvent>

#include "desktop/ProgressDialog.h"
#include "desktop/ViewPicture.h"
#include "host/CMcuChildFrame.h"
#include "host/VESKUIDoc.h"
#include "host/VESK_DLL_Shared_Data_T.h"
#include "log/McuJobList.h"
#include "tests/desktop/DeskFolder.h"
#include "tests/desktop/Viewer.h"
#include "timeline/CMcuView.h"

namespace vesk {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

class TimelineTest : public testing::Test {
protected:
    TimelineTest() {
        m_Viewer.Session().Open({Sample("pacman_packets.bin"), {}}, PartToRead::kWhole);
    }
    ~TimelineTest() override { EXPECT_THAT(m_Viewer.Unexpected(), IsEmpty()); }

    static CMcuView& View() {
        return dynamic_cast<CMcuView&>(*vesk_dll_shared_data.m_pMcuFrame->GetActiveView());
    }
    QWidget& Widget() const { return *m_Viewer.Frame()->widget(); }

    void Turn(int eighths, Qt::KeyboardModifiers modifiers, QPointF at) {
        QWheelEvent event(at, Widget().mapToGlobal(at), {}, {0, eighths}, Qt::NoButton, modifiers,
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(&Widget(), &event);
    }
    void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(&Widget(), key, modifiers);
    }
    void Drag(QPoint from, QPoint to, Qt::MouseButton button = Qt::MiddleButton) {
        QTest::mousePress(&Widget(), button, {}, from);
        QMouseEvent move(QEvent::MouseMove, to, Widget().mapToGlobal(QPointF(to)), Qt::NoButton,
                         button, Qt::NoModifier);
        QApplication::sendEvent(&Widget(), &move);
        QTest::mouseRelease(&Widget(), button, {}, to);
    }
    // The timeline's tip, if it is open.
    static const QLabel* Tip() {
        for (const QWidget* widget : QApplication::topLevelWidgets())
            if (widget->objectName() == "tip" && widget->isVisible())
                return dynamic_cast<const QLabel*>(widget);
        return nullptr;
    }
    QByteArray FileOf(const std::string& path) const {
        QFile file(QString::fromStdString(path));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    void ExpectName(const std::string& path) {
        m_Viewer.Expect([path](QWidget& window) {
            auto* const name = window.findChild<QLineEdit*>("fileNameEdit");
            name->clear();
            QTest::keyClicks(name, QString::fromStdString(path));
            QTest::keyClick(name, Qt::Key_Return);
        });
    }
    void SaveAs(const std::string& path) {
        ExpectName(path);
        m_Viewer.ClickMenu({"File", "Save picture..."});
    }

    DeskFolder m_Folder;
    Viewer m_Viewer{m_Folder / "state.json"};
};

TEST_F(TimelineTest, ControlAndWheelZoomAtThePointer) {
    Press(Qt::Key_F);
    const CMcuView& view = View();
    const int x = view.m_CanvasLeft + view.m_CanvasWidth / 3;
    const float zoom = view.m_ZoomRatio;
    const auto before = static_cast<double>(view.Scale().TimeAt(x));
    Turn(240, Qt::ControlModifier, QPointF(x, 60));
    EXPECT_GT(view.m_ZoomRatio, zoom);
    EXPECT_NEAR(static_cast<double>(view.Scale().TimeAt(x)), before, 2 / view.m_PixelsPerQbit);
}

TEST_F(TimelineTest, ShiftAndWheelScrollTimeAndTheWheelAloneLanes) {
    View().SetOutlook(OUTLOOK_RELATIVE);
    const auto time = View().m_TimeOffset;
    const int lane = View().m_LaneOffset;
    Turn(-120, Qt::ShiftModifier, QPointF(200, 60));
    EXPECT_GT(View().m_TimeOffset, time);
    EXPECT_EQ(View().m_LaneOffset, lane);
    const auto later = View().m_TimeOffset;
    Turn(120, {}, QPointF(200, 60));
    EXPECT_GT(View().m_LaneOffset, lane);
    EXPECT_EQ(View().m_TimeOffset, later);
}

TEST_F(TimelineTest, TheMiddleButtonDragsTheLogAlong) {
    Turn(-1200, Qt::ShiftModifier, QPointF(200, 60));
    const auto under = static_cast<double>(View().Scale().TimeAt(300));
    Drag({300, 100}, {260, 100});
    EXPECT_NEAR(static_cast<double>(View().Scale().TimeAt(260)), under, 2);
}

// A click into the longest job in sight.
TEST_F(TimelineTest, AClickOnAJobOpensItsTip) {
    const McuJobList& jobs = CMcuView::Jobs();
    McuJob longest;
    for (int i = View().m_JobFirst; i < View().m_JobLast; ++i) {
        const McuJob& job = jobs[static_cast<std::size_t>(i)];
        const std::uint64_t length = job.m_EndTime - job.m_StartTime;
        if (length > longest.m_EndTime - longest.m_StartTime) longest = job;
    }
    const TimeScale scale = View().Scale();
    const auto left = static_cast<int>(scale.PixelAt(longest.m_StartTime));
    // Not in the middle, where a range handle may stand.
    const QPoint at(left + 5, View().m_CanvasBottom * 5 / 8);
    QTest::mouseClick(&Widget(), Qt::LeftButton, {}, at);
    const QLabel* const tip = Tip();
    ASSERT_NE(tip, nullptr);
    EXPECT_EQ(
        tip->text().section('\n', 0, 1).toStdString(),
        "Job  = " + longest.m_Name + "\nStart = " + std::to_string(longest.m_StartTime) + " QBits");
    EXPECT_TRUE(Widget().screen()->availableGeometry().contains(QRect(tip->pos(), tip->size())));
    EXPECT_TRUE(m_Viewer.Window().isActiveWindow());
    EXPECT_EQ(View().m_CursorTime, scale.TimeAt(at.x()));
    QTest::mouseMove(&Widget(), {at.x(), 5});
    EXPECT_EQ(Tip(), nullptr);
}

TEST_F(TimelineTest, AMarkerIsDraggedByItsLabel) {
    McuMarkerMap& markers = global_vesk_doc_ptr->m_Markers;
    const TimeScale scale = View().Scale();
    markers[5] = scale.TimeAt(180);
    QTest::mouseMove(&Widget(), {180, 15});
    EXPECT_EQ(Widget().cursor().shape(), Qt::PointingHandCursor);
    Drag({180, 15}, {300, 15}, Qt::LeftButton);
    EXPECT_EQ(markers[5], scale.TimeAt(300));
    EXPECT_EQ(View().m_DragMarkerIndex, 5);
    QTest::mouseMove(&Widget(), {View().m_RangeX1, 60});
    EXPECT_EQ(Widget().cursor().shape(), Qt::SizeHorCursor);
    QTest::mouseMove(&Widget(), {View().m_RangeX1 + 20, 60});
    EXPECT_EQ(Widget().cursor().shape(), Qt::ArrowCursor);
}

TEST_F(TimelineTest, KeysZoomAndPan) {
    const float zoom = View().m_ZoomRatio;
    Press(Qt::Key_S);
    EXPECT_LT(View().m_ZoomRatio, zoom);
    Press(Qt::Key_W);
    EXPECT_EQ(View().m_ZoomRatio, zoom);
    const auto time = View().m_TimeOffset;
    Press(Qt::Key_D);
    EXPECT_GT(View().m_TimeOffset, time);
    Press(Qt::Key_A);
    EXPECT_EQ(View().m_TimeOffset, time);
    Press(Qt::Key_F);
    EXPECT_EQ(View().m_TimeOffset, 0U);
    EXPECT_GE(View().m_VisibleQbits, 483264U);
}

TEST_F(TimelineTest, ControlFFindsANameAndF3TheNextOne) {
    const McuJobList& list = CMcuView::Jobs();
    std::vector<std::uint64_t> starts;
    for (const McuJob& job : list)
        if (job.m_Name == "java") starts.push_back(job.m_StartTime);
    ASSERT_EQ(starts.size(), 5U);
    m_Viewer.ExpectDialog([](DialogWindow& dialog) {
        EXPECT_EQ(dialog.focusWidget(), dialog.WidgetOf(1340));
        QTest::keyClicks(dialog.focusWidget(), "JAVA");
        QTest::keyClick(dialog.focusWidget(), Qt::Key_Return);
    });
    Press(Qt::Key_F, Qt::ControlModifier);
    EXPECT_EQ(View().m_CursorTime, starts[0]);
    Press(Qt::Key_F3);
    EXPECT_EQ(View().m_CursorTime, starts[1]);
    Press(Qt::Key_F3, Qt::ShiftModifier);
    EXPECT_EQ(View().m_CursorTime, starts[0]);
}

TEST_F(TimelineTest, AMissIsToldInTheStatusBar) {
    View().m_FindText = "nobody";
    Press(Qt::Key_F3);
    EXPECT_THAT(m_Viewer.StatusText().toStdString(), StartsWith("\"nobody\" was not found.|"));
    View().m_FindText = "java";
    Press(Qt::Key_F3);
    EXPECT_THAT(m_Viewer.StatusText().toStdString(), StartsWith("|"));
}

TEST_F(TimelineTest, AltAndArrowsWalkThroughTheViewsShown) {
    const float zoom = View().m_ZoomRatio;
    Press(Qt::Key_F);
    const float whole = View().m_ZoomRatio;
    Press(Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(View().m_ZoomRatio, zoom);
    Press(Qt::Key_Right, Qt::AltModifier);
    EXPECT_EQ(View().m_ZoomRatio, whole);
}

TEST_F(TimelineTest, GivenKeysStayWhatTheyAre) {
    const float zoom = View().m_ZoomRatio;
    Press(Qt::Key_Plus, Qt::ControlModifier | Qt::KeypadModifier);
    EXPECT_EQ(View().m_ZoomRatio, 2 * zoom);
    Press(Qt::Key_W, Qt::ControlModifier);
    EXPECT_EQ(m_Viewer.Frames(), 0);
}

// What stands in the window, less the scroll bars, is what is saved.
TEST_F(TimelineTest, APictureIsTheWindows) {
    const std::string path = m_Folder / "a.png";
    View().SetOutlook(OUTLOOK_RELATIVE);
    SaveAs(path);
    const QImage saved = QImage(QString::fromStdString(path)).convertToFormat(QImage::Format_RGB32);
    const CSize size = PictureSize(View());
    const double scale = Widget().devicePixelRatioF();
    ASSERT_EQ(saved.size(), QSize(size.cx, size.cy) * scale);
    const QImage shown = Widget().grab().toImage().convertToFormat(QImage::Format_RGB32);
    EXPECT_EQ(saved, shown.copy(saved.rect()));
    EXPECT_THAT(m_Viewer.StatusText().toStdString(), HasSubstr("Saved " + path));
}

TEST_F(TimelineTest, APictureIsOfTheKindThatItsNameTells) {
    const std::string svg = m_Folder / "a.svg", pdf = m_Folder / "b.PDF";
    SaveAs(svg);
    SaveAs(pdf);
    EXPECT_TRUE(FileOf(svg).contains(">Job</text>"));
    EXPECT_TRUE(FileOf(pdf).startsWith("%PDF-"));
}

TEST_F(TimelineTest, APictureThatCannotBeWrittenIsToldAndHarmsNothing) {
    for (const char* const name : {"no/a.png", "no/a.svg", "no/a.pdf", "a.txt"}) {
        std::string error;
        EXPECT_FALSE(SavePicture(View(), m_Folder / name, 1, error));
        EXPECT_THAT(error, StartsWith("cannot write " + m_Folder / name + ": ")) << name;
    }
    std::string message;
    ExpectName(m_Folder / "b.txt");
    m_Viewer.ExpectMessage(message);
    m_Viewer.ClickMenu({"File", "Save picture..."});
    EXPECT_THAT(message, StartsWith("cannot write "));
}

TEST_F(TimelineTest, ATextExportCancelledInItsProgressDialogLeavesNoFile) {
    m_Viewer.User().m_ProgressDelay = 0;
    QTimer person;
    QObject::connect(&person, &QTimer::timeout, [] {
        auto* const dialog = dynamic_cast<ProgressDialog*>(QApplication::activeModalWidget());
        if (dialog) QTest::mouseClick(dialog->findChild<QPushButton*>(), Qt::LeftButton);
    });
    person.start();
    ExpectName(m_Folder / "a.txt");
    m_Viewer.ClickMenu({"Mcu", "Save to Text ..."});
    EXPECT_THAT(QDir(QString::fromStdString(m_Folder / "")).entryList({"a.txt*"}), IsEmpty());
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);

    person.stop();
    ExpectName(m_Folder / "a.txt");
    m_Viewer.ClickMenu({"Mcu", "Save to Text ..."});
    EXPECT_TRUE(FileOf(m_Folder / "a.txt").startsWith("JobName: "));
}

TEST_F(TimelineTest, ThePrintedPageIsFilledByThePicture) {
    const std::string path = m_Folder / "page.pdf";
    m_Viewer.Expect([&](QWidget& window) {
        auto& dialog = dynamic_cast<QPrintDialog&>(window);
        EXPECT_EQ(dialog.printer()->pageLayout().orientation(), QPageLayout::Landscape);
        // Without a printer the page goes to a file.
        window.findChild<QLineEdit*>("filename")->setText(QString::fromStdString(path));
        dialog.accept();
    });
    m_Viewer.ClickMenu({"File", "Print..."});
    EXPECT_TRUE(FileOf(path).startsWith("%PDF-"));
    EXPECT_GT(FileOf(path).size(), 5000);
}

TEST_F(TimelineTest, WithoutALogThereIsNothingToSaveOrPrint) {
    EXPECT_TRUE(m_Viewer.MenuEntry({"File", "Save picture..."})->isEnabled());
    m_Viewer.Session().Close();
    EXPECT_FALSE(m_Viewer.MenuEntry({"File", "Save picture..."})->isEnabled());
    EXPECT_FALSE(m_Viewer.MenuEntry({"File", "Print..."})->isEnabled());
}

}  // namespace
}  // namespace vesk
