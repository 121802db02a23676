// Any bytes as tallysim's file: it is read, or what is wrong is told. What could be read makes loggers that take the
// same bytes as lines.
#include "hold.h"
#include "simulator/simulated_logger.h"
#include "simulator/simulation_file.h"

using namespace harvelop;

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size)
{
    const std::string text(reinterpret_cast<const char*>(data), size);
    const SimulationFile file = ReadSimulationFile(text);
    fuzz::Hold(!file.errors.empty() || !file.loggers.empty() || file.modem, "a good file simulates something");
    for (const std::string& error : file.errors)
        fuzz::Hold(!error.empty(), "an error is told");

    for (const LoggerSetup& setup : file.loggers) {
        fuzz::Hold(setup.com >= 0 && setup.com <= 16, "com ports are numbered to 16");
        fuzz::Hold(setup.tcpPort <= 65535, "so are network ports");
        SimulatedLogger logger(setup.logger);
        double now = 0;
        for (const std::string& line : {std::string("\x7f"), std::string("TEST0"), setup.logger.password, text}) {
            logger.Receive(now, line + "\r\n");
            constexpr int MostPieces = 50; // of an answer that may never end
            for (int piece = 0; piece < MostPieces && logger.NextDueMs() != SimulatedDevice::Never; ++piece) {
                now = std::max(now, logger.NextDueMs());
                logger.Transmit(now);
            }
        }
    }
    return 0;
}
