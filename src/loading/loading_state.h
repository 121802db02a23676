// The state of all work that puts programs into a logger or takes them out. One of each in the program, as one logger
// is worked on at a time.
#pragma once

#include "core/bounded_table.h"

#include <cstdint>
#include <string>

namespace harvelop
{

struct LoadingState {
    // The file.
    std::string ProgramFileName;         // full path of the file to send, as chosen or named; empty: none was chosen
    std::string ProgramFileShown;        // flash: the path as boxes show it, also after the file has been cleaned
    std::int16_t CleanedProgramSize = 0; // characters that the cleaner has written; never reset: meant
    bool CardLoadMode = false;           // the program goes to the memory card; one cancelled choice leaves it set
    bool FlashLoadMode = false;          // the file chooser serves flash programming

    // The logger.
    BoundedTable<bool, 0, 50> CardPresent; // index number: a memory card was seen in that logger
    std::string LoggerNumberText;          // what it answered to "13SV"

    // Jobs of the KR4 family.
    BoundedTable<std::string, 0, 1000> JobList; // entries 1 to 1000: their names, the current one with its star
    bool JobListEmpty = false;                  // the last listing found none, and that has not been told yet
    bool JobDeleteConfirmed = false;            // `frmDelJob` ended with its Delete button
    std::string ChosenJob;                      // picked there, without star and blanks; "DIRJOBS" stands for all
    std::string CurrentJobName;                 // the running one, without star and blanks
    bool JobHasData = false;                    // the logger refused to delete a job because it holds data
};

} // namespace harvelop
