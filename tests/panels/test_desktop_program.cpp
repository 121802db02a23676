// The whole program behind its windows.
#include "app/desktop_program.h"
#include "settings/sample_loggers.h"
#include "simulator/simulated_logger.h"
#include "support/test_program.h"

#include <QApplication>
#include <QTabWidget>
#include <QWindow>

#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <set>

namespace harvelop::test
{
namespace
{

TEST(DesktopPrograms, APanelFoundByTheFirstSearchIsNotHiddenByTheOptions)
{
    TestProgram t;
    t.Installed();
    LoggerConfig config;
    config.model = "KR40";
    t.serial.Plug(3, std::make_shared<SimulatedLogger>(config), "9600");
    t.dialogs.Expect(BoxAnswer::Yes);
    DesktopProgram program({t.pump, t.serial, t.sockets, t.dialogs, t.files, t.settings, t.desktop});
    bool panelSeen = false;
    QStringList above; // what took the focus after the panel
    const QObject listening;
    QObject::connect(qApp, &QGuiApplication::focusWindowChanged, &listening, [&](QWindow* window) {
        const QString title = window ? window->title() : QString();
        if (title.contains("KR40"))
            panelSeen = true;
        else if (panelSeen)
            above << title;
    });
    std::function<void()> serve = [&] {
        QApplication::processEvents();
        t.pump.After(100, serve);
    };
    serve();
    program.Start("");
    EXPECT_TRUE(panelSeen);
    EXPECT_EQ(above, QStringList());
    EXPECT_EQ(program.heart.panels.CountVisiblePanels(), 1);
}

TEST(DesktopPrograms, AShortcutsPanelShowsItsThirdTabAndNoOther)
{
    TestProgram t;
    t.Installed();
    t.files.files[TestProgram::OptionsIni] = "AvailablePorts=0\r\nFindPorts=0\r\n";
    t.files.files[TestProgram::FoundIni] = "1tallyCoreSettings=" + RecordText(SerialLogger()) + "\r\n";
    DesktopProgram program({t.pump, t.serial, t.sockets, t.dialogs, t.files, t.settings, t.desktop});
    std::set<int> seen;
    std::function<void()> look = [&] {
        const auto* panel = dynamic_cast<frmTallyCores*>(program.heart.panels.At(1));
        if (panel && panel->isVisible())
            seen.insert(panel->findChild<QTabWidget*>("tsTallycores")->currentIndex());
        t.pump.After(10, look);
    };
    look();
    program.Start("::2");
    look();
    EXPECT_EQ(seen, std::set<int>{2});
}

} // namespace
} // namespace harvelop::test
