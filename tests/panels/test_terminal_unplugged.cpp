// What the terminal says when the device under its port goes away.
#include "platform/qt/qt_event_pump.h"
#include "platform/qt/qt_serial_control.h"
#include "support/test_program.h"
#include "terminal/frmTerminal.h"

#include <QTest>

#include <cstdlib>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

namespace harvelop::test
{
namespace
{

TEST(TerminalUnplugged, APortThatGoesAwayIsSaidInTheCaption)
{
    const int master = posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
    ASSERT_TRUE(master >= 0 && grantpt(master) == 0 && unlockpt(master) == 0);
    setenv("HARVELOP_COM1", ptsname(master), 1);
    TestProgram fakes;
    QtEventPump pump;
    QtSerialControl serial(fakes.settings);
    Program p({pump, serial, fakes.sockets, fakes.dialogs, fakes.files, fakes.settings, fakes.desktop});
    frmTerminal form(
        {p.waiting, p.language, p.options, p.store, p.state, p.link, p.forms, p.rs232, p.ethernet, p.exchange, p.end});
    form.Load();
    p.rs232.OpenComPort(1);
    ASSERT_TRUE(serial.PortOpen());
    EXPECT_FALSE(QTest::qWaitFor([&] { return form.windowTitle() != " Terminal"; }, 500));
    close(master);
    EXPECT_TRUE(QTest::qWaitFor([&] { return form.windowTitle() == " Not Connected"; }, 20000));
    EXPECT_FALSE(serial.PortOpen());
    form.close();
    EXPECT_EQ(p.link.LinkMode, "None");
    unsetenv("HARVELOP_COM1");
}

} // namespace
} // namespace harvelop::test
