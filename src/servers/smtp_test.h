// The login test of the mail server: the beginning of a mail dialogue. No mail is sent, and the dialogue ends by
// closing the socket.
#pragma once

#include "servers/login_session.h"
#include "servers/server_services.h"

#include <cstdint>
#include <string>

namespace harvelop
{

class SMTPTest
{
public:
    explicit SMTPTest(const ServerServices& services) : m_use(services), m_session(services) {}

    // As started by the user: tells its steps and its result; `SMTPChecked` after a good one. Leaves `DefaultTimeout`
    // at 5000 ms. Nothing is told of a test that the user gives up. After a failure the socket stays as it is, but is
    // no longer the link.
    void TestByUser();

    // The whole test. Not by the user it tells no steps and no success, and leaves the socket of a good one, too.
    void RunSMTPTest();

private:
    void dialogue();
    bool logIn();
    void ReportSMTPFailure(const std::string& text);
    void ReportSMTPSuccess();
    void DisconnectSMTP();
    void showStep(int number, const std::string& rest = {});

    ServerServices m_use;
    LoginSession m_session;
    // NOLINTBEGIN(readability-identifier-naming): as everybody calls them
    bool SMTPTestByUser = false;       // steps and success are told
    std::int16_t SMTPFailureCount = 0; // failures told in this test
    std::int16_t SMTPSavedTimeout = 0; // `DefaultTimeout` before the test
    double SMTPTimeoutMs = 0;
    // NOLINTEND(readability-identifier-naming)
};

} // namespace harvelop
