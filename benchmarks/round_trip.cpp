// round_trip pty|tcp: the round trip of a command over a pseudo terminal or a network link: through the whole exchange,
// and by bare write, poll and read. Both take turns against one and the same responder, which is a process of its own.
#include "bench_platform.h"
#include "loopback.h"
#include "pty.h"

#include <QCoreApplication>

#include <algorithm>
#include <array>
#include <chrono>
#include <csignal>
#include <poll.h>
#include <sys/prctl.h>
#include <vector>

using namespace harvelop;

namespace
{

constexpr int Turns = 60;
constexpr int RoundsATurn = 50;
constexpr std::string_view Command = "TEST0\r\n";
constexpr std::string_view Reply = "T,TEST REPORT 0000:52,5 5.20\r";

// Answers each line on either link until it is ended.
[[noreturn]] void respond(const std::array<int, 2>& links)
{
    std::array<pollfd, 2> waits = {{{links[0], POLLIN, 0}, {links[1], POLLIN, 0}}};
    std::array<char, 256> bytes{};
    while (poll(waits.data(), waits.size(), -1) > 0) {
        for (const pollfd& wait : waits) {
            const ssize_t got = wait.revents & POLLIN ? read(wait.fd, bytes.data(), bytes.size()) : 0;
            for (ssize_t i = 0; i < got; ++i)
                if (bytes[static_cast<size_t>(i)] == '\n' && write(wait.fd, Reply.data(), Reply.size()) < 0)
                    _exit(1);
        }
    }
    _exit(1);
}

bool bareRound(int handle)
{
    if (write(handle, Command.data(), Command.size()) != static_cast<ssize_t>(Command.size()))
        return false;
    std::string text;
    std::array<char, 2048> bytes{};
    pollfd wait = {handle, POLLIN, 0};
    while (poll(&wait, 1, 5000) > 0) {
        const ssize_t got = read(handle, bytes.data(), bytes.size());
        if (got <= 0)
            return false;
        text.append(bytes.data(), static_cast<size_t>(got));
        const size_t start = text.find("T,");
        if (start != std::string::npos && text.find('\r', start) != std::string::npos)
            return true;
    }
    return false;
}

bool exchangeRound(Program& program)
{
    program.exchange.txtCharacterWindow.Clear();
    program.exchange.SendAndWait("TEST0", {"T,", 1, "\r", 1}, 5000);
    return program.link.ResponseStatus == "PASS";
}

template <typename Round> bool measure(std::vector<double>& microseconds, Round round)
{
    for (int i = 0; i < RoundsATurn; ++i) {
        const auto begin = std::chrono::steady_clock::now();
        if (!round())
            return false;
        const std::chrono::duration<double, std::micro> took = std::chrono::steady_clock::now() - begin;
        microseconds.push_back(took.count());
    }
    return true;
}

double quantile(std::vector<double> values, double share)
{
    const auto at = static_cast<ptrdiff_t>(share * static_cast<double>(values.size() - 1));
    std::nth_element(values.begin(), values.begin() + at, values.end());
    return values[static_cast<size_t>(at)];
}

// Forks the responder; `links` gives its ends of the two, the bare one first.
template <typename Links> pid_t startResponder(Links links)
{
    const pid_t responder = fork();
    if (responder != 0)
        return responder;
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    respond(links());
}

int run(int argc, char** argv)
{
    const bool overTcp = argc == 2 && std::string_view(argv[1]) == "tcp";
    const Pty forBare;
    const Pty forExchange;
    const Listener listener;
    const int bare = overTcp ? listener.Connect() : OpenRaw(forBare.name);
    const int keptOpen = OpenRaw(forExchange.name);
    const pid_t responder = startResponder([&] {
        return overTcp ? std::array{listener.Accept(), listener.Accept()}
                       : std::array{forBare.master, forExchange.master};
    });

    setenv("HARVELOP_COM1", forExchange.name.c_str(), 1);
    PrepareEventDispatcher();
    const QCoreApplication app(argc, argv);
    BenchPlatform platform;
    Program program(platform.All());
    if (overTcp) {
        program.ethernet.OpenEthernet("127.0.0.1", listener.Port(), "TCP");
        program.connecting.WaitForEthernet();
    } else {
        program.rs232.SetComSettings("115200", "N", "8", "1", "NOFC");
        program.rs232.OpenComPort(1);
    }

    std::vector<double> bareTimes;
    std::vector<double> exchangeTimes;
    bool good = overTcp ? program.link.EthernetConnected : program.link.LinkMode == "ComPort";
    for (int turn = 0; good && turn <= Turns; ++turn) {
        if (turn == 1) { // the first turn warms up
            bareTimes.clear();
            exchangeTimes.clear();
        }
        good = measure(bareTimes, [&] { return bareRound(bare); }) &&
               measure(exchangeTimes, [&] { return exchangeRound(program); });
    }
    program.rs232.CloseLink();
    program.ethernet.CloseEthernet();
    kill(responder, SIGTERM);
    close(bare);
    close(keptOpen);
    if (!good) {
        std::cerr << "a reply did not come\n";
        return 1;
    }
    std::cout << "bare_median_us " << quantile(bareTimes, 0.5) << "\nbare_p99_us " << quantile(bareTimes, 0.99)
              << "\nexchange_median_us " << quantile(exchangeTimes, 0.5) << "\nexchange_p99_us "
              << quantile(exchangeTimes, 0.99) << '\n';
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    return run(argc, argv);
}
