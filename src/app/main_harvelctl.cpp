// `harvelctl`: the program without a display.
#include "app/ctl_commands.h"
#include "app/ctl_json.h"
#include "app/tracing.h"
#include "platform/qt/process_start.h"
#include "platform/qt/qt_data_files.h"
#include "platform/qt/qt_desktop.h"
#include "platform/qt/qt_event_pump.h"
#include "platform/qt/qt_interrupt.h"
#include "platform/qt/qt_line_input.h"
#include "platform/qt/qt_serial_control.h"
#include "platform/qt/qt_settings_store.h"
#include "platform/qt/qt_sockets.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

#include <filesystem>
#include <iostream>
#include <optional>
#include <unistd.h>

using namespace harvelop;

int main(int argc, char** argv)
{
    PrepareProcess();
    const auto parsed = ParseCtlArguments({argv + 1, argv + argc});
    if (const auto* error = std::get_if<std::string>(&parsed)) {
        std::cerr << "harvelctl: " << *error << "\nTry 'harvelctl --help'.\n";
        return CtlUsageError;
    }
    CtlCommand command = *std::get_if<CtlCommand>(&parsed);
    std::error_code unknown;
    if (!command.file.empty())
        command.file = std::filesystem::absolute(command.file, unknown).string();
    Console console;
    const QFileInfo directory(QString::fromStdString(command.directory));
    if (!directory.isDir()) {
        console.Line("There is no directory " + command.directory + ".");
        if (command.json)
            PrintJson(command, console, false, {}, std::cout);
        return CtlFailed;
    }
    PrepareEventDispatcher();
    QCoreApplication app(argc, argv);
    QtEventPump pump;
    QtSettingsStore settings;
    QtSerialControl serial(settings);
    QtSockets sockets;
    ConsoleDialogs dialogs(console, command.yes, command.password, command.file);
    QtDataFiles files;
    QtDesktop desktop;
    const bool reaches = ReachesLoggers(command.verb);
    const std::string trace = command.trace.empty() ? TraceOfEnvironment() : command.trace;
    Tracing tracing(reaches ? trace : "", "harvelctl " HARVELOP_VERSION,
                    {pump, serial, sockets, dialogs, files, settings, desktop},
                    [&console](const std::string& text) { console.Line(text); });
    Program program(tracing.Inside());
    tracing.Watch(program);
    QtLineInput input(STDIN_FILENO);
    std::optional<QtInterrupt> interrupt;
    if (reaches)
        interrupt.emplace([&program, &console] {
            console.Line("Interrupted.");
            InterruptCtl(program);
        });
    const std::string path = directory.canonicalFilePath().toStdString();
    const int code = RunCtlCommand(program, console, command, path, std::cout, &input);
    std::cout.flush();
    return std::cout && !program.end.Ended() ? code : CtlFailed;
}
