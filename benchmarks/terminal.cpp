// How the terminal takes in text that comes as fast as a network link carries it: twice 10 MB from a process of its
// own, through socket, exchange and window, the second while the first is shown already.
#include "bench_platform.h"
#include "loopback.h"
#include "terminal/frmReceivePane.h"
#include "terminal/frmTerminal.h"

#include <QApplication>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <sys/prctl.h>

using namespace harvelop;

namespace
{

using Clock = std::chrono::steady_clock;
constexpr std::size_t Portion = 10'000'000; // bytes

double msSince(Clock::time_point begin)
{
    return std::chrono::duration<double, std::milli>(Clock::now() - begin).count();
}

std::string portion()
{
    std::string text;
    for (int line = 0; text.size() < Portion; ++line) {
        const std::string number = std::to_string(line);
        text += number + " a line as a logger sends it, 21.75 degC 1013.2 hPa 58 %RH" +
                std::string(15 - number.size(), '.') + "\r\n";
    }
    return text;
}

// Sends the text for each line that it receives.
[[noreturn]] void serve(const Listener& listener, const std::string& text)
{
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    const int client = listener.Accept();
    char asked = 0;
    while (read(client, &asked, 1) == 1) {
        std::size_t sent = asked == '\n' ? 0 : text.size();
        while (sent < text.size()) {
            const ssize_t written = write(client, text.data() + sent, text.size() - sent);
            if (written <= 0)
                _exit(1);
            sent += static_cast<std::size_t>(written);
        }
    }
    _exit(0);
}

// Notes the longest time between two paints.
class PaintWatch : public QObject
{
public:
    explicit PaintWatch(QWidget& widget) { widget.installEventFilter(this); }

    void Begin()
    {
        m_last = Clock::now();
        m_longestMs = 0;
        m_paints = 0;
    }
    double LongestMs() const { return m_longestMs; }
    int Paints() const { return m_paints; }

    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::Paint) {
            m_longestMs = std::max(m_longestMs, msSince(m_last));
            m_last = Clock::now();
            ++m_paints;
        }
        return false;
    }

private:
    Clock::time_point m_last;
    double m_longestMs = 0;
    int m_paints = 0;
};

// Serves events until `done`; false if it takes too long.
template <typename Done> bool serveUntil(Program& program, Done done)
{
    constexpr double LongestMs = 120'000;
    const auto begin = Clock::now();
    while (!done()) {
        if (msSince(begin) > LongestMs)
            return false;
        program.waiting.ServeFor(100);
    }
    return true;
}

int run(int argc, char** argv)
{
    const std::string text = portion();
    const Listener listener;
    const pid_t server = fork();
    if (server == 0)
        serve(listener, text);

    PrepareEventDispatcher();
    const QApplication app(argc, argv);
    BenchPlatform platform;
    Program program(platform.All());
    program.state.AppPath = "./";
    frmTerminal terminal({program.waiting, program.language, program.options, program.store, program.state,
                          program.link, program.forms, program.rs232, program.ethernet, program.exchange, program.end});
    terminal.Load();
    auto& pane = *terminal.findChild<ReceivePane*>("txtReceive");
    PaintWatch watch(*pane.viewport());
    program.link.ConnectionKind = "Ethernet";
    program.ethernet.OpenEthernet("127.0.0.1", listener.Port(), "TCP");
    bool good = serveUntil(program, [&] { return program.link.EthernetConnected; });
    program.waiting.WaitMs(1000);

    std::size_t expected = 0;
    for (const char* name : {"first", "second"}) {
        expected += text.size();
        const auto begin = Clock::now();
        watch.Begin();
        program.exchange.SendToLogger("");
        good = good && serveUntil(program, [&] { return pane.Received().Size() >= expected; });
        const int painted = watch.Paints();
        good = good && serveUntil(program, [&] { return watch.Paints() > painted; });
        std::cout << name << "_ms " << msSince(begin) << '\n'
                  << name << "_gap_ms " << watch.LongestMs() << '\n'
                  << name << "_paints " << watch.Paints() << '\n';
    }
    QString all = QString::fromStdString(text + text).remove('\r');
    if (!good || pane.Text() != all) {
        std::cerr << "not everything was shown\n";
        return 1;
    }
    std::cout << "bytes " << text.size() << '\n';
    kill(server, SIGTERM);
    program.end.EndProgram();
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    return run(argc, argv);
}
