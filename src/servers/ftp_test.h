// The login test of the FTP server. Its name and password are tried on port 21 and nothing else is; the dialogue ends
// by closing the socket.
#pragma once

#include "servers/login_session.h"
#include "servers/server_services.h"

#include <cstdint>
#include <string>

namespace harvelop
{

class FTPTest
{
public:
    explicit FTPTest(const ServerServices& services) : m_use(services), m_session(services) {}

    // As started by the user: tells its steps and its result; `FTPChecked` after a good one. Restores `DefaultTimeout`.
    // Nothing is told of a test that the user gives up.
    void TestByUser();

    // Its two parts. The second is the whole test, within `DefaultTimeout` for each answer; not by the user its box of
    // a failure has another title.
    void PrepareFTPTest();
    void RunFTPTest();

private:
    void dialogue();
    void ReportFTPFailure(const std::string& text);
    void DisconnectFTP();

    ServerServices m_use;
    LoginSession m_session;
    // NOLINTBEGIN(readability-identifier-naming): as everybody calls them
    bool FTPTestByUser = false;
    std::int16_t FTPFailureCount = 0; // failures told in this test; nothing reads it
    double FTPTimeoutMs = 0;
    // NOLINTEND(readability-identifier-naming)
};

} // namespace harvelop
