// Sending a program to a logger: a text file of commands is typed into it line by line, and after each line its answer
// is searched for an error. To the internal memory, where the program runs as it is received, or to a memory card.
#pragma once

#include "loading/load_texts.h"
#include "loading/loading_services.h"

#include <string>

namespace harvelop
{

// The caller locks the controls and closes the link. A file is read whole before its first line goes out: one that is
// changed or removed meanwhile is sent as it was.
class ProgramLoading
{
public:
    explicit ProgramLoading(const LoadingServices& services) : m_use(services) {}

    // To the internal memory: from the choice of the file, or the file named on the command line, to the report.
    void LoadProgram();

    // To the memory card, with all that `LoadProgram` asks.
    void LoadCardProgram();

    // Leaves what the user chooses in `ProgramFileName`; empty: cancelled.
    void ChooseProgramFile();

    // For the connected logger: asks, gets rid of stored data, sends, reports. With `CardLoadMode` to the card. The
    // program may have ended when it returns.
    void SendProgramFile();

    // Whether to go on: no data stands in the way, or the user gave it up and it has been erased.
    bool CheckForData();

    // Looks for a memory card: `CardPresent`. An answer that tells neither leaves it as it was.
    void FindMemoryCard();

private:
    LoadQuestion question() const;
    bool confirm();
    void prepareLogger();
    std::optional<std::string> readFile();
    bool sendLines(const std::string& text);
    bool hasError();
    void tellLineError(int line);
    void tellSent();
    void finish();

    LoadingServices m_use;
};

// The lengths of all lines, line ends not counted; none above 32,767, which no program that is sent may reach.
std::optional<std::int16_t> ProgramFileBytes(std::string_view text);

} // namespace harvelop
