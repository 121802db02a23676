// Any bytes as what a modem says, and the logger behind it: calls, tests and resets end and give the port back.
#include "fuzz_program.h"

using namespace harvelop;

namespace
{

using fuzz::FuzzProgram;

void call(FuzzProgram& t)
{
    t.heart.connecting.ConnectLogger(1);
}
void testCall(FuzzProgram& t)
{
    t.heart.link.ConnectionKind = "Dialup";
    t.heart.modem.TestDialup(3, "5551234", "at&f");
}
void reset(FuzzProgram& t)
{
    t.heart.modem.ResetModem(3, "atz");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size)
{
    const std::string says(reinterpret_cast<const char*>(data), size);
    for (const auto go : {call, testCall, reset}) {
        FuzzProgram t;
        t.PlugPort(says);
        LoggerRecord record;
        record.LoggerModel = "KR200 Series 1";
        record.LoggerPort = "3";
        record.LoggerBaud = "5551234"; // the number to call, for a logger behind a modem
        record.LoggerParity = "at&f";
        record.LoggerDataBits = "9600";
        t.heart.tables.FoundLoggerStrings[0] = RecordText(record);
        t.heart.records.ParseLoggerSettings(1);
        t.heart.state.CurrentLogger = 1;
        t.heart.options.ModemTimeout = "45";
        go(t);
        t.heart.actions.CloseLink();
        t.HoldReleased();
    }
    fuzz::Hold(ConnectSpeed(says).size() <= size, "a speed comes from what the modem said");
    return 0;
}
