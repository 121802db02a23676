// load MODEL DEVICE FILE: how long it takes to send that program to a stored logger of that model, from the connecting
// to the report.
#include "bench_platform.h"

#include <QCoreApplication>

#include <chrono>

using namespace harvelop;

namespace
{

// The report of success is the one box that is expected.
class ReportDialogs : public TellingDialogs
{
public:
    BoxAnswer Show(const Box& box) override
    {
        reported = reported || box.icon == BoxIcon::Information;
        return box.icon == BoxIcon::Information ? BoxAnswer::Ok : TellingDialogs::Show(box);
    }
    bool reported = false;
};

LoggerRecord recordOf(const std::string& model)
{
    LoggerRecord record;
    record.LoggerModel = model;
    record.LoggerPort = "1";
    record.LoggerBaud = "9600";
    record.LoggerParity = "None";
    record.LoggerDataBits = "8";
    record.LoggerStopBits = "1";
    record.LoggerFlow = "NOFC";
    return record;
}

int run(int argc, char** argv)
{
    if (argc != 4) {
        std::cerr << "usage: load MODEL DEVICE FILE\n";
        return 2;
    }
    setenv("HARVELOP_COM1", argv[2], 1);
    PrepareEventDispatcher();
    const QCoreApplication app(argc, argv);
    BenchPlatform platform;
    ReportDialogs dialogs;
    Program program(
        {platform.pump, platform.serial, platform.sockets, dialogs, platform.files, platform.store, platform.desktop});
    program.options.ShowLoadMessages = false;
    program.state.CurrentLogger = 1;
    program.state.LaunchCommand = std::string("::1 ") + argv[3];
    *program.tables.Record(1) = recordOf(argv[1]);
    const auto begin = std::chrono::steady_clock::now();
    program.programLoading.LoadProgram();
    const std::chrono::duration<double, std::milli> took = std::chrono::steady_clock::now() - begin;
    program.connecting.ReleaseLink();
    if (!dialogs.reported) {
        std::cerr << argv[3] << " was not sent\n";
        return 1;
    }
    std::cout << "load_ms " << took.count() << '\n';
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    return run(argc, argv);
}
