#include "core/frmTaskbar.h"

#include <QAction>
#include <QMenu>

#include <gtest/gtest.h>

namespace harvelop
{
namespace
{

class Taskbar : public testing::Test
{
protected:
    int served = 0;
    int shown = 0;
    int exited = 0;
    frmTaskbar taskbar{{[this] { ++served; }, [this] { ++shown; }, [this] { ++exited; }}};
};

TEST_F(Taskbar, MenuHasItsTwoEntries)
{
    EXPECT_EQ(taskbar.mpopupSys().title(), "&Systray");
    EXPECT_EQ(taskbar.mpopupSys().actions(), (QList<QAction*>{taskbar.mpopOptions, taskbar.mpopExit}));
    EXPECT_EQ(taskbar.mpopOptions->text(), "Options");
    EXPECT_EQ(taskbar.mpopExit->text(), "Exit");
}

TEST_F(Taskbar, EntriesDoTheirWork)
{
    taskbar.mpopOptions->trigger();
    EXPECT_EQ(shown, 1);
    EXPECT_EQ(exited, 0);
    taskbar.mpopExit->trigger();
    EXPECT_EQ(exited, 1);
}

TEST_F(Taskbar, RightButtonPopsUpTheMenu)
{
    taskbar.Form_MouseMove(516, frmTaskbar::Pixels);
    EXPECT_EQ(served, 1);
    EXPECT_TRUE(taskbar.mpopupSys().isVisible());
}

TEST_F(Taskbar, RightButtonInTwipsPopsUpTheMenu)
{
    taskbar.Form_MouseMove(516 * 1440.0 / taskbar.mpopupSys().logicalDpiX(), frmTaskbar::Twips);
    EXPECT_TRUE(taskbar.mpopupSys().isVisible());
}

TEST_F(Taskbar, OtherNotificationsDoNothing)
{
    taskbar.Form_MouseMove(516, frmTaskbar::Twips);
    taskbar.Form_MouseMove(513, frmTaskbar::Pixels);
    EXPECT_EQ(served, 2);
    EXPECT_FALSE(taskbar.mpopupSys().isVisible());
}

} // namespace
} // namespace harvelop
