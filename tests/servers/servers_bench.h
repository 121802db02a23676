// The login tests against servers that say what a test has written down: a whole program on fakes, in virtual time.
#pragma once

#include "simulator/simulated_device.h"
#include "support/fake_forms.h"
#include "support/server_accounts.h"
#include "support/test_program.h"

#include <algorithm>
#include <deque>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

namespace harvelop::test
{

struct Answer {
    std::string text; // line ends included
    double afterMs = 20;
    double dripMs = 0;   // from one piece to the next; 0: all at once
    bool closes = false; // the server hangs up behind it
    size_t piece = 1;    // characters
};

// What a server answers to which line; to any other it is silent. The first key stands for the greeting.
using Script = std::map<std::string, Answer>;
constexpr const char* Greeting = "(greeting)";

inline Script With(Script script, const std::string& line, const Answer& answer)
{
    script[line] = answer;
    return script;
}
inline Script Without(Script script, const std::string& line)
{
    script.erase(line);
    return script;
}

// Of one login.
class ScriptedServer : public SimulatedDevice
{
public:
    explicit ScriptedServer(Script script) : m_script(std::move(script)) {}

    void Receive(double nowMs, std::string_view bytes) override
    {
        m_line += bytes;
        for (size_t end = m_line.find("\r\n"); end != std::string::npos; end = m_line.find("\r\n")) {
            answer(nowMs, m_line.substr(0, end));
            m_line.erase(0, end + 2);
        }
    }
    std::string Transmit(double nowMs) override
    {
        if (!std::exchange(m_greeted, true))
            answer(nowMs, Greeting);
        std::string text;
        for (; !m_due.empty() && m_due.front().ms <= nowMs && m_onLine; m_due.pop_front()) {
            text += m_due.front().text;
            m_onLine = !m_due.front().closes;
        }
        return text;
    }
    double NextDueMs() const override { return m_due.empty() ? Never : m_due.front().ms; }
    bool OnLine() const override { return m_onLine; }

private:
    struct Piece {
        double ms;
        std::string text;
        bool closes;
    };
    void answer(double nowMs, const std::string& line)
    {
        const auto found = m_script.find(line);
        if (found == m_script.end())
            return;
        const Answer& answer = found->second;
        double ms = nowMs + answer.afterMs;
        if (answer.dripMs > 0)
            for (size_t at = 0; at < answer.text.size(); at += answer.piece)
                m_due.push_back({ms += answer.dripMs, answer.text.substr(at, answer.piece), false});
        else
            m_due.push_back({ms, answer.text, false});
        m_due.back().closes = answer.closes;
    }

    Script m_script;
    std::deque<Piece> m_due;
    std::string m_line;
    bool m_greeted = false;
    bool m_onLine = true;
};

inline Script GoodMail()
{
    return {{Greeting, {"220 mail.example ESMTP\r\n"}}, {"ehlo me", {"250-mail.example\r\n250 AUTH LOGIN\r\n"}}};
}
inline Script GoodMailLogin()
{
    Script script = GoodMail();
    script["AUTH LOGIN"] = {"334 VXNlcm5hbWU6\r\n"};
    script["YWJj="] = {"334 UGFzc3dvcmQ6\r\n"}; // "abc"
    script["c2VjcmV0"] = {"235 go on\r\n"};     // "secret"
    return script;
}
inline Script GoodFTP()
{
    return {{Greeting, {"220 ready\r\n"}}, {"USER abc", {"331 password?\r\n"}}, {"PASS secret", {"230 go on\r\n"}}};
}

struct ServersBench : TestProgram {
    static constexpr const char* PanelCaption = " tallyCore Harvel Options";

    ServersBench()
    {
        UseServers(heart.options);
        heart.options.SMTPPort = "2525";
        heart.options.SMTPServerRequiresAuthentication = false;
        heart.forms.options = &panel;
        heart.progress.Loaded(&messages);
        panel.caption = PanelCaption;
    }

    void PlugMail(const Script& script)
    {
        sockets.Plug("mail.example", 2525, std::make_shared<ScriptedServer>(script));
    }
    void PlugFTP(const Script& script) { sockets.Plug("ftp.example", 21, std::make_shared<ScriptedServer>(script)); }
    void TestMail()
    {
        dialogs.Expect(BoxAnswer::Ok);
        heart.smtpTest.TestByUser();
    }
    void TestFTP()
    {
        dialogs.Expect(BoxAnswer::Ok);
        heart.ftpTest.TestByUser();
    }
    // Every number that a login test says, as "T" and the number.
    void SpeakNumbers()
    {
        std::string texts;
        for (int number = 1; number < 1000; ++number)
            texts += std::to_string(number) + ":1:9:T" + std::to_string(number) + "\r\n";
        heart.options.Language = "Test";
        files.files["Test.txt"] = texts;
        heart.language.LangActive = true;
        heart.language.LoadLanguageFile();
    }

    // What went out, from all sockets: each line as it was sent.
    std::vector<std::string> Sent() const
    {
        std::vector<std::string> sent;
        for (const std::string& step : sockets.steps)
            if (const size_t at = step.find(" send "); at != std::string::npos)
                sent.push_back(step.substr(at + 6));
        return sent;
    }
    bool SocketsClosed() const
    {
        return std::all_of(sockets.made.begin(), sockets.made.end(), [](const auto* socket) {
            return !socket || socket->State() == SocketControl::Condition::Closed;
        });
    }
    Box OnlyBox() const
    {
        EXPECT_EQ(dialogs.shown.size(), 1u);
        return dialogs.shown.empty() ? Box() : dialogs.shown.front();
    }
    // Everything that a user or a file could have been told.
    std::string Told() const
    {
        std::string all;
        for (const Box& box : dialogs.shown)
            all += box.title + "\n" + box.text + "\n";
        for (const auto* captions : {&messages.captions, &panel.captions})
            for (const std::string& caption : *captions)
                all += caption + "\n";
        for (const std::string& path : files.writes)
            all += path + "\n";
        return all;
    }

    FakeMessages messages;
    FakeOptions panel;
};

} // namespace harvelop::test
