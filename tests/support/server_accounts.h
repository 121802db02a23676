// The accounts that scripted servers know.
#pragma once

#include "settings/options.h"

namespace harvelop::test
{

inline void UseServers(Options& options)
{
    options.SMTPServerName = "mail.example";
    options.SMTPPort = "25";
    options.FTPServername = "ftp.example";
    options.SMTPTimeout = options.FTPTimeout = "5";
    options.SMTPServerRequiresAuthentication = true;
    options.SMTPAuthenticationType = "LOGIN";
    options.SMTPUserName = options.FTPUserName = "abc";
    options.SMTPPassword = options.FTPPassword = "secret";
}

} // namespace harvelop::test
