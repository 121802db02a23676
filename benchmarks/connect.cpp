// connect MODEL PLACE: how long it takes to reach a stored logger of that model, at a device or at HOST:PORT.
#include "bench_platform.h"

#include <QCoreApplication>

#include <chrono>

using namespace harvelop;

namespace
{

LoggerRecord recordOf(const std::string& model, const std::string& place)
{
    LoggerRecord record;
    record.LoggerModel = model;
    record.LoggerTimeout = "5";
    const std::size_t colon = place.find(':');
    if (colon != std::string::npos) {
        record.LoggerPort = place;
        record.LoggerHost = place.substr(0, colon);
        record.LoggerTcpPort = place.substr(colon + 1);
        return record;
    }
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
    if (argc != 3) {
        std::cerr << "usage: connect MODEL PLACE\n";
        return 2;
    }
    setenv("HARVELOP_COM1", argv[2], 1);
    PrepareEventDispatcher();
    const QCoreApplication app(argc, argv);
    BenchPlatform platform;
    Program program(platform.All());
    program.options.ShowMessages = false;
    program.state.CurrentLogger = 1;
    *program.tables.Record(1) = recordOf(argv[1], argv[2]);
    const auto begin = std::chrono::steady_clock::now();
    program.connecting.ConnectLogger(1);
    const std::chrono::duration<double, std::milli> took = std::chrono::steady_clock::now() - begin;
    const bool reached = program.link.LinkConnected;
    program.connecting.ReleaseLink();
    if (!reached) {
        std::cerr << "no " << argv[1] << " answers at " << argv[2] << '\n';
        return 1;
    }
    std::cout << "connect_ms " << took.count() << '\n';
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    return run(argc, argv);
}
