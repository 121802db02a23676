// Any bytes as what a mail server, an FTP server and a logger on the network say: each dialogue ends, closes its socket
// and changes no file.
#include "fuzz_program.h"
#include "support/server_accounts.h"

using namespace harvelop;

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size)
{
    const std::string says(reinterpret_cast<const char*>(data), size);
    constexpr void (*Dialogues[])(fuzz::FuzzProgram&) = {
        [](fuzz::FuzzProgram& t) { t.heart.smtpTest.TestByUser(); },
        [](fuzz::FuzzProgram& t) { t.heart.ftpTest.TestByUser(); },
        [](fuzz::FuzzProgram& t) {
            t.Store("KR40", "10.0.0.5:3000");
            t.heart.connecting.ConnectLogger(1);
            t.heart.actions.CloseLink();
        },
    };
    for (const auto go : Dialogues) {
        fuzz::FuzzProgram t;
        t.PlugHost("mail.example", 25, says, true);
        t.PlugHost("ftp.example", 21, says, true);
        t.PlugHost("10.0.0.5", 3000, says, false);
        test::UseServers(t.heart.options);
        go(t);
        t.heart.ethernet.CloseEthernet(); // a failed login test leaves its socket to the next one: meant
        t.HoldReleased();
        fuzz::Hold(t.files.writes.empty(), "no file is written");
    }
    return 0;
}
