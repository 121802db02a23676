#include "servers/login_session.h"

#include "core/text_numbers.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace harvelop
{

void LoginSession::Begin()
{
    m_use.link.LinkMode = "Ethernet";
    m_use.link.LoginTest = true;
}

bool LoginSession::GivenUp() const
{
    return m_use.state.AbortWait || m_use.state.StopLinkWork || m_use.use.waiting.Ended();
}

void LoginSession::Connect(const std::string& server, const std::string& port)
{
    m_use.ethernet.OpenEthernet(server, port, "TCP");
}

bool LoginSession::Ask(const std::string& line, const std::string& marker)
{
    m_use.exchange.txtCharacterWindow.Clear();
    m_use.exchange.SendAndWait(line, {marker, 1, "\r", 1});
    return m_use.link.ResponseStatus == "PASS";
}

void LoginSession::ShowStep(int number, const std::string& rest)
{
    const std::string text = m_use.use.language.Text(number) + rest;
    m_use.use.progress.ShowProgressText(text);
    m_use.controls.SetCaption(" " + text);
}

void LoginSession::Close()
{
    m_use.ethernet.CloseEthernet();
    RestoreCaption();
}

void LoginSession::RestoreCaption()
{
    m_use.controls.SetCaption(" tallyCore Harvel Options");
}

double LoginSession::Milliseconds(std::string_view seconds)
{
    constexpr double PerSecond = 1000;
    return ToDouble(seconds).value_or(0) * PerSecond;
}

std::int16_t LoginSession::Kept(double milliseconds)
{
    using Limits = std::numeric_limits<std::int16_t>;
    return static_cast<std::int16_t>(std::clamp<double>(std::trunc(milliseconds), Limits::min(), Limits::max()));
}

} // namespace harvelop
