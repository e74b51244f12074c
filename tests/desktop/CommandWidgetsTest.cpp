#include "desktop/CommandWidgets.h"

#include <gmock/gmock.h>

#include <QAction>
#include <QDialog>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>

#include "desktop/CommandIcons.h"
#include "platform/CMenu.h"
#include "platform/Keys.h"
#include "tests/desktop/FramesTest.h"

namespace vesk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

enum Command : unsigned { kPlain = 10, kDisabled2, kChecked, kRadio, kNobodys, kInner, kRenamed };

constexpr MenuItemTemplate kItems[] = {
    {0, 0, "&Log"},
    {1, kPlain, "&Go To ...\tCtrl+G"},
    {1, kDisabled2, "Disabled"},
    {1, 0, ""},
    {1, kChecked, "Checked"},
    {1, kRadio, "Radio"},
    {1, kNobodys, "Nobody's"},
    {1, kRenamed, "Old name"},
    {1, 0, "&More"},
    {2, kInner, "Inner"},
    {0, kPlain, "No pop-up"},
};
constexpr MenuTemplate kMenus[] = {{1, kItems}};
constexpr AcceleratorEntry kKeys[] = {
    {vesk::kControl, VK_ADD, kPlain},
    {vesk::kControl, 'G', kPlain},
    {vesk::kNoModifier, VK_F3, kDisabled2},
    {vesk::kControl, 'N', kNobodys},
};
constexpr AcceleratorTable kAccelerators[] = {{1, kKeys}};
constexpr unsigned kButtons[] = {kPlain, 0, kDisabled2, kChecked};
constexpr ToolBarTemplate kToolBars[] = {{1, 19, 19, kButtons}};
constexpr StringEntry kStrings[] = {{kPlain, "Go\nGoes to a time"}, {kChecked, "Checked"}};

class CommandWidgetsTest : public FramesTest {
protected:
    CommandWidgetsTest()
        : FramesTest({.m_Menus = kMenus,
                      .m_Accelerators = kAccelerators,
                      .m_ToolBars = kToolBars,
                      .m_Strings = kStrings}) {
        m_View.m_OnCommand = [this](unsigned id, CCmdUI* ui) {
            if (id == kNobodys) return false;
            if (!ui) {
                m_Run.push_back(id);
                return true;
            }
            ++m_Updates[id];
            ui->Enable(id != kDisabled2);
            if (id == kChecked) ui->SetCheck(m_IsChecked);
            if (id == kRadio) ui->SetRadio();
            if (id == kRenamed) ui->SetText("New name");
            return true;
        };
        m_Menu.LoadMenu(1);
        m_Main.LoadAccelTable(1);
    }

    static QAction* ActionOf(const QMenu& menu, unsigned command) {
        for (QAction* action : menu.actions()) {
            if (action->data().toUInt() == command) return action;
        }
        return nullptr;
    }
    static void Click(QMenu& menu, unsigned command) {
        const QPoint at = menu.actionGeometry(ActionOf(menu, command)).center();
        QTest::mouseMove(&menu, at);
        QTest::mouseClick(&menu, Qt::LeftButton, {}, at);
    }

    CMDIChildWnd& m_Frame = Open();
    ListeningView& m_View = ViewOf(m_Frame);
    QWidget& m_Widget = WidgetOf(m_Frame);
    CMenu m_Menu;
    std::vector<unsigned> m_Run;
    std::map<unsigned, int> m_Updates;
    bool m_IsChecked = true;
};

TEST_F(CommandWidgetsTest, AMenuBarHasThePopUpsOfTheMenu) {
    AddMenus(*m_Window.menuBar(), m_Menu, m_Main);
    ASSERT_EQ(m_Window.menuBar()->actions().size(), 1);
    EXPECT_EQ(m_Window.menuBar()->actions().front()->text(), "&Log");
}

TEST_F(CommandWidgetsTest, EachOpeningAsksHowTheCommandsAre) {
    QMenu menu;
    FillMenu(menu, *m_Menu.GetSubMenu(0), m_Main);
    EXPECT_EQ(m_Updates[kPlain], 0);
    menu.popup({50, 50});
    EXPECT_EQ(m_Updates[kPlain], 1);
    EXPECT_EQ(m_Updates[kInner], 0) << "its own menu is closed";
    EXPECT_EQ(ActionOf(menu, kPlain)->text(), "&Go To ...\tCtrl+G");
    EXPECT_TRUE(ActionOf(menu, kPlain)->shortcut().isEmpty());
    EXPECT_FALSE(ActionOf(menu, kDisabled2)->isEnabled());
    EXPECT_FALSE(ActionOf(menu, kNobodys)->isEnabled());
    EXPECT_TRUE(ActionOf(menu, kChecked)->isChecked());
    EXPECT_EQ(ActionOf(menu, kChecked)->actionGroup(), nullptr);
    EXPECT_TRUE(ActionOf(menu, kRadio)->isChecked());
    EXPECT_NE(ActionOf(menu, kRadio)->actionGroup(), nullptr);
    EXPECT_EQ(ActionOf(menu, kRenamed)->text(), "New name");
    m_IsChecked = false;
    menu.hide();
    menu.popup({50, 50});
    EXPECT_FALSE(ActionOf(menu, kChecked)->isChecked());
    EXPECT_EQ(m_Updates[kPlain], 2);
}

TEST_F(CommandWidgetsTest, AClickRunsWhatIsEnabled) {
    QMenu menu;
    FillMenu(menu, *m_Menu.GetSubMenu(0), m_Main);
    menu.popup({50, 50});
    Click(menu, kDisabled2);
    EXPECT_THAT(m_Run, IsEmpty());
    Click(menu, kPlain);
    EXPECT_THAT(m_Run, ElementsAre(kPlain));
    EXPECT_FALSE(menu.isVisible());
}

TEST_F(CommandWidgetsTest, AViewsContextMenuRunsItsCommand) {
    m_View.m_OnContextMenu = [this](CPoint screen) {
        EXPECT_TRUE(
            m_Menu.GetSubMenu(0)->TrackPopupMenu(TPM_LEFTALIGN, screen.x, screen.y, &m_View));
    };
    QPoint shownAt;
    QTimer::singleShot(0, [&] {
        auto* menu = dynamic_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_NE(menu, nullptr);
        shownAt = menu->pos();
        QAction* more = menu->actions().back();
        menu->setActiveAction(more);
        QTest::keyClick(menu, Qt::Key_Right);
        EXPECT_EQ(m_Updates[kInner], 1);
        Click(*more->menu(), kInner);
    });
    QTest::mouseClick(&m_Widget, Qt::RightButton, {}, {30, 30});
    EXPECT_THAT(m_Run, ElementsAre(kInner));
    EXPECT_EQ(shownAt, m_Widget.mapToGlobal(QPoint(30, 30)));
}

TEST_F(CommandWidgetsTest, AClosedContextMenuRunsNothing) {
    m_View.m_OnContextMenu = [this](CPoint screen) {
        EXPECT_FALSE(
            m_Menu.GetSubMenu(0)->TrackPopupMenu(TPM_LEFTALIGN, screen.x, screen.y, &m_View));
    };
    QTimer::singleShot(0,
                       [] { QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Escape); });
    QTest::mouseClick(&m_Widget, Qt::RightButton, {}, {30, 30});
    EXPECT_THAT(m_Run, IsEmpty());
}

TEST_F(CommandWidgetsTest, AToolBarOffersItsCommands) {
    QToolBar* bar = AddToolBar(m_Window, *FindToolBar(1), m_Main);
    Settle();
    ASSERT_EQ(bar->actions().size(), 4);
    EXPECT_EQ(bar->iconSize(), QSize(19, 19));
    EXPECT_TRUE(bar->actions()[1]->isSeparator());
    EXPECT_EQ(bar->actions()[0]->text(), "Go");
    EXPECT_EQ(bar->actions()[0]->toolTip(), "Goes to a time");
    EXPECT_FALSE(bar->actions()[2]->isEnabled());
    EXPECT_TRUE(bar->actions()[3]->isChecked());
    m_IsChecked = false;
    QTest::mouseClick(bar->widgetForAction(bar->actions()[0]), Qt::LeftButton);
    QTest::mouseClick(bar->widgetForAction(bar->actions()[2]), Qt::LeftButton);
    EXPECT_THAT(m_Run, ElementsAre(kPlain));
    EXPECT_FALSE(bar->actions()[3]->isChecked()) << "up to date after a command";
    m_IsChecked = true;
    UpdateToolBar(*bar, m_Main);
    EXPECT_TRUE(bar->actions()[3]->isChecked());
}

TEST_F(CommandWidgetsTest, PaintsIconsInTheThemesColorForItsScale) {
    const QPalette light = QApplication::palette();
    const auto inkOf = [](unsigned command) {
        const QImage image = CommandIcon(command).pixmap(QSize(19, 19), 2.0).toImage();
        EXPECT_EQ(image.width(), 38);
        return image;
    };
    const QImage onLight = inkOf(40008);
    QApplication::setPalette(QPalette(QColor(40, 40, 40), QColor(30, 30, 30)));
    const QImage onDark = inkOf(40008);
    QApplication::setPalette(light);
    EXPECT_NE(onLight, onDark);
    const unsigned ids[] = {40008, 32774, 2020,  32771, 40143, 40142, 40141,
                            40184, 40194, 40197, 40424, 40425, 99999};
    for (const unsigned a : ids) {
        for (const unsigned b : ids) {
            EXPECT_EQ(inkOf(a) == inkOf(b), a == b) << a << " and " << b;
        }
    }
}

class AcceleratorTest : public CommandWidgetsTest {
protected:
    AcceleratorTest() {
        WatchAccelerators(m_Window, m_Main);
        m_View.TakeHeard();
    }
};

TEST_F(AcceleratorTest, KeysOfTheTableRunCommandsAndReachNoWindow) {
    QTest::keyClick(&m_Widget, Qt::Key_G, Qt::ControlModifier);
    EXPECT_THAT(m_Run, ElementsAre(kPlain));
    EXPECT_THAT(m_View.TakeHeard(), IsEmpty());
    QTest::keyClick(&m_Widget, Qt::Key_G);
    EXPECT_THAT(m_Run, ElementsAre(kPlain));
    EXPECT_THAT(m_View.TakeHeard(), ElementsAre("key 71 at 1,0"));
}

TEST_F(AcceleratorTest, TheNumericPadsPlusIsAKeyOfItsOwn) {
    QTest::keyClick(&m_Widget, Qt::Key_Plus, Qt::ControlModifier);
    EXPECT_THAT(m_Run, IsEmpty());
    QTest::keyClick(&m_Widget, Qt::Key_Plus, Qt::ControlModifier | Qt::KeypadModifier);
    EXPECT_THAT(m_Run, ElementsAre(kPlain));
}

TEST_F(AcceleratorTest, ADisabledCommandsKeyDoesNothingAndAnUnknownOneGoesOn) {
    QTest::keyClick(&m_Widget, Qt::Key_F3);
    EXPECT_THAT(m_View.TakeHeard(), IsEmpty());
    QTest::keyClick(&m_Widget, Qt::Key_N, Qt::ControlModifier);
    EXPECT_THAT(m_View.TakeHeard(), ElementsAre("key 78 at 1,8"));
    EXPECT_THAT(m_Run, IsEmpty());
}

TEST_F(AcceleratorTest, AKeyOfTheToolkitsGivesWay) {
    QAction other;
    other.setShortcut(QKeySequence("Ctrl+G"));
    bool triggered = false;
    QObject::connect(&other, &QAction::triggered, [&] { triggered = true; });
    m_Window.addAction(&other);
    QTest::keyClick(&m_Widget, Qt::Key_G, Qt::ControlModifier);
    EXPECT_FALSE(triggered);
    EXPECT_THAT(m_Run, ElementsAre(kPlain));
}

TEST_F(AcceleratorTest, DialogsAndPopUpsKeepTheirKeys) {
    QMenu menu;
    menu.addAction("x");
    menu.popup({50, 50});
    QTest::keyClick(&m_Widget, Qt::Key_G, Qt::ControlModifier);
    menu.hide();
    QDialog dialog(&m_Window);
    QLineEdit line(&dialog);
    dialog.setModal(true);
    dialog.show();
    QTest::keyClick(&line, Qt::Key_G, Qt::ControlModifier);
    QTest::keyClick(&m_Widget, Qt::Key_G, Qt::ControlModifier);
    EXPECT_THAT(m_Run, IsEmpty());
    dialog.hide();
    QTest::keyClick(&m_Widget, Qt::Key_G, Qt::ControlModifier);
    EXPECT_THAT(m_Run, ElementsAre(kPlain));
}

}  // namespace
}  // namespace vesk
