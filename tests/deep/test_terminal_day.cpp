// A terminal that stands open for a day, past midnight, on a logger that never falls silent.
#include "deep/bench.h"
#include "terminal/received_text.h"

#include <algorithm>
#include <cmath>

namespace harvelop::test
{

namespace
{

constexpr double DayMs = 24.0 * 3600 * 1000;
constexpr double HourMs = 3600 * 1000.0;
constexpr size_t MostUnread = 65500; // characters that a closed terminal's copy keeps

double linesASecond()
{
    return IsDeep() ? 2 : 0.1;
}

// Says numbered lines and repeats each line that it gets between two of them.
class Chatters : public SimulatedDevice
{
public:
    static std::string Line(long number)
    {
        const std::string digits = std::to_string(number);
        return "2026 325 1200 13.42 7.1 22.53 " + std::string(8 - digits.size(), '0') + digits + "\r\n";
    }
    void Receive(double, std::string_view bytes) override { m_echo += bytes; }
    std::string Transmit(double nowMs) override
    {
        std::string text = std::exchange(m_echo, {});
        for (; m_dueMs <= nowMs; m_dueMs += m_pauseMs)
            text += Line(lines++);
        return text;
    }
    double NextDueMs() const override { return m_dueMs; }

    long lines = 0;

private:
    const double m_pauseMs = 1000 / linesASecond();
    double m_dueMs = 0;
    std::string m_echo;
};

// Checks what it is shown, line by line, and keeps as much of it as the pane does.
class ReadingTerminal : public TerminalForm
{
public:
    void SetCaption(const std::string&) override {}
    void Append(const std::string& text) override
    {
        pane.Append(text);
        m_rest += text;
        for (size_t end = m_rest.find("\r\n"); end != std::string::npos; end = m_rest.find("\r\n")) {
            take(m_rest.substr(0, end + 2));
            m_rest.erase(0, end + 2);
        }
    }
    void ClearReceived() override { ++cleared; }
    void Close() override {}

    ReceivedText pane;
    long lines = 0;  // of the logger's own, each the next one
    long echoes = 0; // of those that were sent
    long wrong = 0;  // anything else
    int cleared = 0;

private:
    void take(const std::string& line)
    {
        if (line == Chatters::Line(lines))
            ++lines;
        else if (line == "STATUS\r\n")
            ++echoes;
        else
            ++wrong;
    }
    std::string m_rest;
};

struct DayBench : DeepBench {
    DayBench()
    {
        StoreSerial("KR200 Series 3");
        serial.Plug(Port, logger, "9600");
        heart.forms.terminal = &reader;
        heart.rs232.SetComSettings("9600", "N", "8", "1", "SWFC");
        heart.rs232.OpenComPort(Port);
        heart.exchange.SendToLogger("STATUS"); // the fake line hears what the logger says by itself from here on
    }
    // Sends a line each hour; `look` after every ten seconds.
    void Pass(double ms, const std::function<void()>& look)
    {
        constexpr double LookMs = 10000;
        for (double passed = 0; passed < ms; passed += LookMs) {
            if (passed > 0 && std::fmod(passed, HourMs) == 0) {
                heart.exchange.SendToLogger("STATUS");
                ++sent;
            }
            heart.waiting.WaitMs(LookMs);
            look();
        }
    }

    std::shared_ptr<Chatters> logger = std::make_shared<Chatters>();
    ReadingTerminal reader;
    long sent = 1;
};

} // namespace

TEST(TerminalDay, NothingIsLostOrOutOfOrderAndNothingPilesUp)
{
    DayBench t;
    t.heart.state.TerminalOpen = true;
    const double begin = t.heart.waiting.Timer();
    double latest = begin;
    bool midnight = false;
    size_t unread = 0;
    size_t window = 0;
    t.Pass(DayMs, [&] {
        midnight = midnight || t.heart.waiting.Timer() < latest;
        latest = t.heart.waiting.Timer();
        unread = std::max(unread, t.heart.exchange.txtTerminal.Unseen().size());
        window = std::max(window, t.heart.exchange.txtCharacterWindow.Text().size());
    });
    EXPECT_TRUE(midnight);
    EXPECT_NEAR(t.pump.NowMs(), DayMs, HourMs / 60);
    EXPECT_GT(static_cast<double>(t.reader.lines), DayMs / 1000 * linesASecond() * 0.99);
    EXPECT_GE(t.reader.lines, t.logger->lines - 1);
    EXPECT_EQ(t.reader.echoes, t.sent);
    EXPECT_EQ(t.reader.wrong, 0);
    EXPECT_EQ(t.reader.cleared, 0);
    EXPECT_EQ(unread, 0u);
    EXPECT_LT(window, ReceiveWindow::OverflowLength);
    EXPECT_GT(t.heart.exchange.txtCharacterWindow.WindowClearCount, 0);
    EXPECT_GE(t.reader.pane.Size(), static_cast<size_t>(t.reader.lines) * Chatters::Line(0).size());
    EXPECT_TRUE(t.serial.PortOpen());
}

TEST(TerminalDay, AClosedTerminalsCopyKeepsTheEndOnly)
{
    DayBench t;
    size_t most = 0;
    t.Pass(DayMs, [&] { most = std::max(most, t.heart.exchange.txtTerminal.Unseen().size()); });
    EXPECT_EQ(most, MostUnread);
    EXPECT_TRUE(t.heart.exchange.txtTerminal.Unseen().ends_with(Chatters::Line(t.logger->lines - 1)));
}

TEST(TerminalDay, AnAnswerAcrossMidnightIsFound)
{
    for (const double beforeMs : {1.0, 10.0, 1000.0, 4999.0}) {
        TestProgram t;
        t.Installed();
        const double untilMidnightMs = DayMs - t.heart.waiting.Timer() * 1000;
        t.serial.Plug(3, Logger("KR40", "", "5.06.0001"), "9600");
        t.heart.rs232.SetComSettings("9600", "N", "8", "1", "SWFC");
        t.heart.rs232.OpenComPort(3);
        t.heart.waiting.WaitMs(untilMidnightMs - beforeMs - (t.pump.NowMs()));
        t.pump.After(beforeMs + 100, [&] { t.heart.exchange.SendToLogger("TEST0"); });
        t.heart.exchange.SendAndWait("", {"T,", 1, "\r", 1});
        EXPECT_EQ(t.heart.link.ResponseStatus, "PASS") << beforeMs;
        EXPECT_LT(t.heart.waiting.Timer(), 3600) << beforeMs;
    }
}

} // namespace harvelop::test
