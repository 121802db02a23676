// Emptying a logger: its programs, its jobs, its memory card, its flash memory.
#pragma once

#include "loading/loading_services.h"
#include "loading/program_load.h"

#include <string>
#include <string_view>
#include <vector>

namespace harvelop
{

// All of it works on the connected logger; the caller locks the controls and closes the link. What it sets
// `DefaultTimeout` to may stay so.
class Clearing
{
public:
    Clearing(const LoadingServices& services, ProgramLoading& programs) : m_use(services), m_programs(programs) {}

    // KR4 family: one job or all of them, picked by the user. Older: all programs in internal memory.
    void ClearPrograms();

    // All programs on the memory card.
    void ClearCardPrograms();

    // The program area of flash memory.
    void ClearFlash();

    // Asks the logger for its jobs: `JobList`, `JobListEmpty`.
    void GetJobList();

    // Deletes `ChosenJob`, or all jobs if that is "DIRJOBS", after a question with their data.
    void DeleteChosenJob();

private:
    void clearJobs();
    void chooseJob();
    void clearOlderPrograms();

    bool sendFirstDeletion();
    void tellDeleted();
    void deleteWithData();
    bool deleteData();

    bool flashConfirmed(bool kr4);
    void eraseKR4Flash();
    void eraseOlderFlash();
    void tellFlashErased();

    bool allJobs() const; // are to be deleted

    LoadingServices m_use;
    ProgramLoading& m_programs;
};

// The names in a listing: one a line, without blanks, up to the first empty one, 500 at most.
std::vector<std::string> JobNames(std::string_view listing);

// A job's name without the star of the running job, and without blanks.
std::string PlainJobName(std::string_view name);

// What the job chooser explains, in texts by number.
LangPieces JobInstructions(const std::string& logger);

} // namespace harvelop
