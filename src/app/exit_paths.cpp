#include "app/exit_paths.h"

namespace harvelop
{

void UnloadTaskbar(Program& program)
{
    SerialControl& port = program.rs232.MSComm1;
    const auto listen = [&](int threshold) {
        if (program.link.LinkMode == "ComPort") {
            port.RThreshold(threshold);
            port.ClearInBuffer();
        }
    };
    listen(0);
    program.waiting.WaitMs(500);
    if (!program.link.LoginTest) // a server is told nothing
        program.exchange.SendToLogger("Q /H/r\r\n");
    program.waiting.WaitMs(500);
    listen(1);
    program.ethernet.CloseEthernet();
}

void mpopExit_Click(Program& program)
{
    program.store.SaveOptions();
    UnloadTaskbar(program);
    program.end.EndProgram();
}

} // namespace harvelop
