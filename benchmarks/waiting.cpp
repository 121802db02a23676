// What ten seconds of waiting for a reply that never comes cost, with the options window open.
#include "app/desktop_program.h"
#include "bench_platform.h"
#include "pty.h"

#include <QApplication>
#include <QWidget>

#include <algorithm>
#include <ctime>

using namespace harvelop;

namespace
{

constexpr double WaitMs = 10000;

double cpuMs()
{
    timespec used{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &used);
    return static_cast<double>(used.tv_sec) * 1e3 + static_cast<double>(used.tv_nsec) / 1e6;
}

} // namespace

int main(int argc, char** argv)
{
    const Pty silent;
    setenv("HARVELOP_COM1", silent.name.c_str(), 1);
    PrepareEventDispatcher();
    const QApplication app(argc, argv);
    BenchPlatform platform;
    DesktopProgram desktop(platform.All());
    desktop.Start("");
    Program& program = desktop.heart;
    program.rs232.OpenComPort(1);
    program.waiting.WaitMs(1000); // until the window is up and painted
    if (!std::ranges::any_of(QApplication::topLevelWidgets(), &QWidget::isVisible)) {
        std::cerr << "no window is open\n";
        return 1;
    }
    if (program.link.LinkMode != "ComPort") {
        std::cerr << "the port is not open\n";
        return 1;
    }

    const double before = cpuMs();
    program.exchange.SendAndWait("TEST0", {"T,", 1, "\r", 1}, WaitMs);
    const double used = cpuMs() - before;
    if (program.link.ResponseStatus != "FAIL") {
        std::cerr << "a reply came\n";
        return 1;
    }
    std::cout << "waiting_cpu_percent " << used / WaitMs * 100 << '\n';
    program.end.EndProgram();
    return 0;
}
