// What both login tests share: the steps of a dialogue with a server, on the exchange that talks to loggers.
#pragma once

#include "servers/server_services.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace harvelop
{

class LoginSession
{
public:
    explicit LoginSession(const ServerServices& services) : m_use(services) {}

    // From Begin to End the link is a server's, and no line that is meant for a logger goes there.
    void Begin();
    void End() { m_use.link.LoginTest = false; }

    // Begins a link to the server on a fresh socket. It stands, or not, once the greeting is awaited.
    void Connect(const std::string& server, const std::string& port);

    // Sends a line, and waits up to `DefaultTimeout` for a line that holds `marker` somewhere. What the server said
    // before is not taken for the answer.
    bool Ask(const std::string& line, const std::string& marker);

    // The user has given up or closed the options panel, or the program ends: nothing more is sent or told.
    bool GivenUp() const;

    // Names the step on the progress window and in the caption of the options panel: the text of a number, then `rest`.
    void ShowStep(int number, const std::string& rest = {});

    // Closes the socket and gives the options panel its caption back.
    void Close();
    void RestoreCaption();

    // A number of seconds in milliseconds; 0 for a text that is none.
    static double Milliseconds(std::string_view seconds);

    // `DefaultTimeout` as it is kept during a test: in 16 bits, cut to a whole number.
    static std::int16_t Kept(double milliseconds);

private:
    ServerServices m_use;
};

} // namespace harvelop
