// `harvelop`: the control panel.
#include "app/desktop_program.h"
#include "app/tracing.h"
#include "panels/frmSupport.h"
#include "platform/qt/process_start.h"
#include "platform/qt/qt_data_files.h"
#include "platform/qt/qt_dialogs.h"
#include "platform/qt/qt_event_pump.h"
#include "platform/qt/qt_serial_control.h"
#include "platform/qt/qt_settings_store.h"
#include "platform/qt/qt_sockets.h"
#include "platform/qt/qt_window_desktop.h"

#include <QApplication>
#include <QIcon>

#include <iostream>
#include <string_view>

using namespace harvelop;

namespace
{

constexpr const char* Usage = R"(Usage: harvelop [COMMAND]

The control panel for data loggers. It works in the current directory; where it
can't write there, it offers a folder of your own.

  ::n              open the panel of the logger with the key ::n
  ::n PATH         load the program file at PATH into that logger
  ::n %TEXT        send TEXT to that logger
  ::n %TEXT%       the same in the terminal, which stays
  --help, --version

HARVELOP_TRACE=FILE in the environment adds all that passes on the links to FILE, without passwords.
)";

// Both are answered without a display. True if the word was one of them.
bool answered(std::string_view word)
{
    if (word == "--help" || word == "-h")
        std::cout << Usage;
    else if (word == "--version")
        std::cout << "harvelop " HARVELOP_VERSION "\n";
    else
        return false;
    return true;
}

// The words as they came, byte for byte.
std::string commandLineOf(int argc, char** argv)
{
    std::string line;
    for (int i = 1; i < argc; ++i)
        line += (i > 1 ? " " : "") + std::string(argv[i]);
    return line;
}

} // namespace

int main(int argc, char** argv)
{
    PrepareProcess();
    if (argc > 1 && answered(argv[1]))
        return 0;
    PrepareEventDispatcher();
    QApplication app(argc, argv);
    QApplication::setApplicationName("harvelop");
    QApplication::setApplicationVersion(HARVELOP_VERSION);
    QApplication::setDesktopFileName("org.harvelop.Harvelop");
    QApplication::setWindowIcon(QIcon(":/harvelop.svg"));
    MakePlaceholdersLegible();
    // The hidden main object keeps the program going, whatever windows are open.
    QApplication::setQuitOnLastWindowClosed(false);

    QtEventPump pump;
    QtSettingsStore settings;
    QtSerialControl serial(settings);
    QtSockets sockets;
    QtDialogs dialogs;
    QtDataFiles files;
    QtWindowDesktop desktop;
    Tracing tracing(TraceOfEnvironment(), "harvelop " HARVELOP_VERSION,
                    {pump, serial, sockets, dialogs, files, settings, desktop},
                    [](const std::string& text) { std::cerr << "harvelop: " << text << std::endl; });
    const Platform platform = tracing.Inside();
    DesktopProgram program(platform);
    tracing.Watch(program.heart);
    ProgramEnd& end = program.heart.end;
    end.OnEnd = [&] {
        platform.serial.ClearOutBuffer(); // closing would send it
        platform.serial.Close();
        QCoreApplication::exit(end.ExitCode());
    };
    program.Start(commandLineOf(argc, argv)); // without what Qt has taken for itself
    // An end during the start came before the event loop, which would not hear of it.
    return end.Ended() ? end.ExitCode() : QApplication::exec();
}
