#include <QColorDialog>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>

#include "desktop/QtText.h"
#include "platform/CColorDialog.h"
#include "platform/CFileDialog.h"
#include "platform/CWnd.h"
#include "platform/SystemMetrics.h"
#include "tests/desktop/DesktopTest.h"

namespace vesk {
namespace {

class BoxesTest : public DesktopTest {
protected:
    static void Create(const QString& path) { QFile(path).open(QIODevice::WriteOnly); }

    // Types a name into a file dialog and confirms it.
    static void Confirm(QWidget& window, const QString& name) {
        auto* line = window.findChild<QLineEdit*>("fileNameEdit");
        line->setFocus();
        line->selectAll();
        QTest::keyClicks(line, name);
        QTest::keyClick(line, Qt::Key_Return);
    }

    QTemporaryDir m_Folder;
};

TEST_F(BoxesTest, AMessageIsShownPlainWithItsIconAndCaption) {
    const struct {
        unsigned type;
        const char* caption;
        QMessageBox::Icon icon;
        QString title;
    } cases[] = {
        {MB_OK, "", QMessageBox::NoIcon, "veskview"},
        {MB_ICONSTOP, "Error", QMessageBox::Critical, "Error"},
        {MB_ICONEXCLAMATION, "", QMessageBox::Warning, "veskview"},
        {MB_ICONINFORMATION, "Infomation", QMessageBox::Information, "Infomation"},
    };
    for (const auto& c : cases) {
        bool shown = false;
        m_User.SetProbe([&](QWidget& window) {
            auto& box = dynamic_cast<QMessageBox&>(window);
            EXPECT_EQ(box.text(), "<b>x</b>");
            EXPECT_EQ(box.textFormat(), Qt::PlainText);
            EXPECT_EQ(box.icon(), c.icon);
            EXPECT_EQ(box.windowTitle(), c.title);
            QTest::mouseClick(box.button(QMessageBox::Ok), Qt::LeftButton);
            shown = !box.isVisible();
        });
        EXPECT_EQ(CWnd().MessageBox("<b>x</b>", c.caption, c.type), IDOK);
        EXPECT_TRUE(shown);
    }
}

TEST_F(BoxesTest, ABoxThatTheProbeLeavesOpenIsClosed) {
    m_User.SetProbe([](QWidget&) {});
    EXPECT_EQ(AfxMessageBox("left open"), IDOK);
    CFileDialog dialog(true);
    EXPECT_EQ(dialog.DoModal(), IDCANCEL);
}

TEST_F(BoxesTest, AFileIsOpenedThroughTheFilters) {
    Create(m_Folder.filePath("log.bin"));
    const QString path = m_Folder.filePath("log.bin");
    CFileDialog dialog(true, "bin", FromQt(m_Folder.filePath("")), OFN_FILEMUSTEXIST,
                       "Bin file (*.bin)|*.bin|All files (*.*)|*.*||");
    m_User.SetProbe([&](QWidget& window) {
        EXPECT_EQ(dynamic_cast<QFileDialog&>(window).nameFilters(),
                  QStringList({"Bin file (*.bin)", "All files (*)"}));
        Confirm(window, path);
    });
    EXPECT_EQ(dialog.DoModal(), IDOK);
    EXPECT_EQ(dialog.GetPathName(), FromQt(path));
}

TEST_F(BoxesTest, AFileToSaveToGetsItsExtension) {
    CFileDialog dialog(false, "txt", nullptr, OFN_OVERWRITEPROMPT, "Text file (*.txt)|*.txt||");
    m_User.SetProbe([&](QWidget& window) { Confirm(window, m_Folder.filePath("out")); });
    EXPECT_EQ(dialog.DoModal(), IDOK);
    EXPECT_EQ(dialog.GetPathName(), FromQt(m_Folder.filePath("out.txt")));
}

TEST_F(BoxesTest, OverwritingIsAskedForOnlyIfTheCallerWantsThat) {
    Create(m_Folder.filePath("out.txt"));
    for (const unsigned flags : {OFN_OVERWRITEPROMPT, OFN_HIDEREADONLY}) {
        CFileDialog dialog(false, "txt", nullptr, flags, "Text file (*.txt)|*.txt||");
        m_User.SetProbe([&](QWidget& window) {
            const bool confirms =
                !dynamic_cast<QFileDialog&>(window).testOption(QFileDialog::DontConfirmOverwrite);
            EXPECT_EQ(confirms, flags == OFN_OVERWRITEPROMPT);
            if (!confirms) Confirm(window, m_Folder.filePath("out.txt"));
        });
        EXPECT_EQ(dialog.DoModal(), flags == OFN_OVERWRITEPROMPT ? IDCANCEL : IDOK);
    }
}

TEST_F(BoxesTest, AColorIsChosenOrKept) {
    CColorDialog dialog(RGB(10, 20, 30));
    m_User.SetProbe([](QWidget& window) {
        auto& box = dynamic_cast<QColorDialog&>(window);
        EXPECT_EQ(box.currentColor(), QColor(10, 20, 30));
        box.setCurrentColor(QColor(1, 2, 3));
        QTest::keyClick(&box, Qt::Key_Escape);
    });
    EXPECT_EQ(dialog.DoModal(), IDCANCEL);
    EXPECT_EQ(dialog.GetColor(), RGB(10, 20, 30));
    m_User.SetProbe([](QWidget& window) {
        auto& box = dynamic_cast<QColorDialog&>(window);
        box.setCurrentColor(QColor(1, 2, 3));
        QTest::keyClick(&box, Qt::Key_Return);
    });
    EXPECT_EQ(dialog.DoModal(), IDOK);
    EXPECT_EQ(dialog.GetColor(), RGB(1, 2, 3));
}

TEST_F(BoxesTest, ColorsFollowTheTheme) {
    const QPalette light = QApplication::palette();
    QApplication::setPalette(QPalette(QColor(50, 50, 50), QColor(30, 30, 30)));
    EXPECT_EQ(GetSysColor(COLOR_BTNFACE), RGB(50, 50, 50));
    EXPECT_GT(GetRValue(GetSysColor(COLOR_WINDOWTEXT)), GetRValue(GetSysColor(COLOR_WINDOW)));
    QApplication::setPalette(light);
    EXPECT_LT(GetRValue(GetSysColor(COLOR_WINDOWTEXT)), GetRValue(GetSysColor(COLOR_WINDOW)));
    EXPECT_GT(GetSystemMetrics(SM_CXVSCROLL), 4);
    EXPECT_GT(GetSystemMetrics(SM_CXSCREEN), 300);
}

}  // namespace
}  // namespace vesk
