// The display filter in its real window: mouse, keys, colour and file dialogs.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAbstractScrollArea>
#include <QColorDialog>
#include <QFile>
#include <QLineEdit>
#include <QMdiSubWindow>
#include <QMessageBox>
#include <QScrollBar>

#include "desktop/QtText.h"
#include "host/CMcuChildFrame.h"
#include "host/VESKUIDoc.h"
#include "host/VESK_DLL_Shared_Data_T.h"
#include "platform/CDC.h"
#include "platform/RecordingSurface.h"
#include "tests/desktop/DeskFolder.h"
#include "tests/desktop/Viewer.h"
#include "timeline/CMcuFilterDlg.h"
#include "timeline/CMcuView.h"

namespace vesk {
namespace {

using testing::AllOf;
using testing::Contains;
using testing::IsEmpty;
using testing::Not;

constexpr int kTasks = 1026, kFunctions = 1027, kExport = 1978, kImport = 1977;

// The lists of the open dialog, as a person works in them.
class Lists {
public:
    explicit Lists(DialogWindow& window) : m_Window(window) {}

    CChkListBox& Of(int id) const {
        return dynamic_cast<CChkListBox&>(*m_Window.Dialog().GetDlgItem(id));
    }
    QAbstractScrollArea& Area(int id) const {
        return dynamic_cast<QAbstractScrollArea&>(*m_Window.WidgetOf(id));
    }
    int IndexOf(int id, const char* name) const { return Of(id).FindString(-1, name); }
    QString SelectedIn(int id) const {
        CString text;
        Of(id).GetText(Of(id).GetCurSel(), text);
        return ToQt(text);
    }
    bool IsOn(int id, const char* name) const {
        return Of(id).RecordAt(IndexOf(id, name))->m_Checked != 0;
    }
    // Scrolls the entry into sight and clicks it so far from its left edge, or, below 0, from its
    // right one.
    void ClickAt(int id, const char* name, int x) const {
        QAbstractScrollArea& area = Area(id);
        const int index = IndexOf(id, name);
        area.verticalScrollBar()->setValue(index - 2);
        const int y = (index - Of(id).GetTopIndex()) * Of(id).GetItemHeight() + 5;
        QWidget& viewport = *area.viewport();
        QTest::mouseClick(&viewport, Qt::LeftButton, {}, {x < 0 ? viewport.width() + x : x, y});
    }
    void Uncheck(int id, const char* name) const { ClickAt(id, name, 9); }
    void Type(int id, const QString& text) const { QTest::keyClicks(&Area(id), text); }

private:
    DialogWindow& m_Window;
};

class FilterWindowTest : public testing::Test {
protected:
    FilterWindowTest() {
        m_Viewer.Session().Open({Sample("pacman_packets.bin"), {}}, PartToRead::kWhole);
        View().SetOutlook(OUTLOOK_RELATIVE);
    }
    ~FilterWindowTest() override { EXPECT_THAT(m_Viewer.Unexpected(), IsEmpty()); }

    static CMcuView& View() {
        return dynamic_cast<CMcuView&>(*vesk_dll_shared_data.m_pMcuFrame->GetActiveView());
    }
    QImage Picture() const { return m_Viewer.Frame()->widget()->grab().toImage(); }
    // All texts of the lanes, from the lowest to the highest.
    static std::vector<std::string> Lanes() {
        CMcuView& view = View();
        view.m_LaneOffset = 0;
        RecordingSurface surface({1000, 10000});
        CDC dc(&surface);
        view.DrawJobList(&dc, view.m_CanvasLeft, 9900);
        return surface.Texts();
    }

    void Filter(std::function<void(DialogWindow&, const Lists&)> answer) {
        m_Viewer.ExpectDialog([answer](DialogWindow& window) { answer(window, Lists(window)); });
        m_Viewer.ClickMenu({"Mcu", "Filter ..."});
    }
    void ExpectName(const std::string& path) {
        m_Viewer.Expect([path](QWidget& window) {
            auto* const name = window.findChild<QLineEdit*>("fileNameEdit");
            name->clear();
            QTest::keyClicks(name, QString::fromStdString(path));
            QTest::keyClick(name, Qt::Key_Return);
        });
    }

    DeskFolder m_Folder;
    Viewer m_Viewer{m_Folder / "state.json"};
};

TEST_F(FilterWindowTest, TwoLanesFilteredOffAreGoneFromThePicture) {
    EXPECT_THAT(Lanes(), AllOf(Contains("java"), Contains("pacm")));
    const QImage before = Picture();
    Filter([](DialogWindow& window, const Lists& lists) {
        lists.Uncheck(kTasks, "java");
        lists.Uncheck(kTasks, "pacm");
        Click(window, IDOK);
    });
    EXPECT_THAT(Lanes(), AllOf(Not(Contains("java")), Not(Contains("pacm")), Contains("sudo")));
    const QImage filtered = Picture();
    EXPECT_NE(filtered, before);
    Filter([](DialogWindow& window, const Lists& lists) {
        lists.Uncheck(kTasks, "sudo");
        Click(window, IDCANCEL);
    });
    EXPECT_EQ(Picture(), filtered);
    Filter([](DialogWindow& window, const Lists& lists) {
        EXPECT_FALSE(lists.IsOn(kTasks, "java"));
        Click(window, 3);
        Click(window, IDOK);
    });
    EXPECT_EQ(Picture(), before);
}

TEST_F(FilterWindowTest, AColorIsChosenByAClickOnItsSquare) {
    Filter([this](DialogWindow& window, const Lists& lists) {
        m_Viewer.Expect([](QWidget& box) {
            auto& dialog = dynamic_cast<QColorDialog&>(box);
            EXPECT_NE(dynamic_cast<DialogWindow*>(dialog.parentWidget()), nullptr);
            dialog.setCurrentColor(QColor(1, 2, 3));
            dialog.accept();
        });
        lists.ClickAt(kTasks, "sudo", -8);
        EXPECT_TRUE(lists.IsOn(kTasks, "sudo"));
        const QWidget& viewport = *lists.Area(kTasks).viewport();
        const QImage picture = lists.Area(kTasks).viewport()->grab().toImage();
        const int y = (lists.Of(kTasks).GetCurSel() - lists.Of(kTasks).GetTopIndex()) *
                          lists.Of(kTasks).GetItemHeight() +
                      8;
        const double scale = picture.devicePixelRatio();
        EXPECT_EQ(picture.pixelColor(static_cast<int>((viewport.width() - 8) * scale),
                                     static_cast<int>(y * scale)),
                  QColor(1, 2, 3));
        Click(window, IDOK);
    });
    EXPECT_EQ(global_vesk_doc_ptr->m_JobColor.Lookup(ColorKey("sudo")), RGB(1, 2, 3));
}

TEST_F(FilterWindowTest, AFilterGoesOutAndComesIn) {
    const std::string path = m_Folder / "quiet.txt";
    Filter([&](DialogWindow& window, const Lists& lists) {
        lists.Uncheck(kTasks, "java");
        lists.Uncheck(kFunctions, "wa4");
        ExpectName(path.substr(0, path.size() - 4));
        Click(window, kExport);
        Click(window, IDCANCEL);
    });
    EXPECT_TRUE(QFile::exists(QString::fromStdString(path))) << "it gets its extension";
    EXPECT_THAT(Lanes(), AllOf(Contains("java"), Contains("wa4")));
    std::string message;
    Filter([&](DialogWindow& window, const Lists& lists) {
        ExpectName(Sample("pacman_packets.bin"));
        m_Viewer.ExpectMessage(message);
        Click(window, kImport);
        EXPECT_TRUE(lists.IsOn(kTasks, "java"));
        ExpectName(path);
        Click(window, kImport);
        EXPECT_FALSE(lists.IsOn(kTasks, "java"));
        Click(window, IDOK);
    });
    EXPECT_EQ(message, "Incorrect VESK filter file.");
    EXPECT_THAT(Lanes(), AllOf(Not(Contains("java")), Not(Contains("wa4")), Contains("sudo")));
}

TEST_F(FilterWindowTest, KeysSelectToggleAndJumpToNames) {
    Filter([](DialogWindow& window, const Lists& lists) {
        EXPECT_TRUE(lists.Area(kTasks).hasFocus());
        QTest::keyClick(&lists.Area(kTasks), Qt::Key_Down);
        EXPECT_EQ(lists.Of(kTasks).GetCurSel(), 0);
        lists.Type(kTasks, "SuD");
        EXPECT_EQ(lists.SelectedIn(kTasks), "sudo");
        const int top = lists.Of(kTasks).GetTopIndex();
        EXPECT_LE(top, lists.Of(kTasks).GetCurSel());
        lists.Type(kTasks, " ");
        EXPECT_FALSE(lists.IsOn(kTasks, "sudo"));
        lists.Type(kTasks, " ");
        EXPECT_TRUE(lists.IsOn(kTasks, "sudo"));
        QTest::keyClick(&lists.Area(kTasks), Qt::Key_Home);
        QTest::qWait(QApplication::keyboardInputInterval() + 50);
        QStringList found;
        for (int i = 0; i < 3; ++i) {
            lists.Type(kTasks, "l");
            found << lists.SelectedIn(kTasks);
        }
        EXPECT_EQ(found, QStringList({"lttg", "lttn", "lttg"}));
        lists.Type(kTasks, "~");
        EXPECT_EQ(lists.SelectedIn(kTasks), "lttg") << "no such name";
        QTest::keyClick(&window, Qt::Key_Escape);
    });
    EXPECT_THAT(Lanes(), Contains("sudo"));
}

}  // namespace
}  // namespace vesk
