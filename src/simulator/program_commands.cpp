// What each command does to the programs of a simulated logger.
#include "simulator/program_memory.h"

#include <algorithm>
#include <array>

namespace harvelop
{

namespace
{

// The codes of complaints.
constexpr int NoCard = 2;
constexpr int DataStored = 4;
constexpr int NoSuchJob = 7;

std::string accepted(std::string_view command)
{
    return std::string(command) + " accepted";
}

} // namespace

const ProgramMemory::Command* ProgramMemory::commandOf(const std::string& line) const
{
    using M = ProgramMemory;
    static constexpr auto Commands = std::to_array<Command>({
        {"H", Family::Any, &M::halt},
        {"H /E", Family::Any, &M::halt},
        {"H BEGIN", Family::Any, &M::askForData},
        {"CLEAR CDATA", Family::Any, &M::clearData},
        {"CALARMS CSCANS", Family::Any, &M::clearPrograms},
        {"END /E/h/M/U CSCANS CALARMS G", Family::Any, &M::beginProgram},
        {NumberQuestion, Family::Any, &M::tellNumber},
        {"9SV(FF0) /U/N", Family::Any, &M::tellCard},
        {"CPROG", Family::Any, &M::clearCard},
        {"RUNPROG", Family::Any, &M::runCard},
        {"DIRJOBS", Family::KR4, &M::listJobs},
        {"CURJOB", Family::KR4, &M::tellCurrentJob},
        {"DELJOB\"", Family::KR4, &M::deleteJob},
        {"DELJOB*", Family::KR4, &M::deleteAllJobs},
        {"DELDATA\"", Family::KR4, &M::deleteData},
        {"DELDATA*", Family::KR4, &M::deleteAllData},
        {"DELALARMS*", Family::KR4, &M::deleteAlarms},
        {"RUNJOBONRESET\"", Family::KR4, &M::runJobOnReset},
        {"FLASHONRESET", Family::KR4, &M::takeFlashOnReset},
        {"DELONRESET", Family::KR4, &M::forgetOnReset},
        {"DELFLASHONRESET", Family::KR4, &M::eraseFlashOnReset},
    });
    const auto found = std::ranges::find_if(Commands, [&](const Command& command) {
        const bool named = command.line.ends_with('"') && line.size() > command.line.size() && line.ends_with('"');
        const bool matches = named ? line.starts_with(command.line) : line == command.line;
        return matches && (command.family == Family::Any || m_kr4);
    });
    return found == Commands.end() ? nullptr : &*found;
}

ProgramMemory::Text ProgramMemory::halt(std::string_view)
{
    m_memory.halted = true;
    return std::nullopt;
}

ProgramMemory::Text ProgramMemory::askForData(std::string_view)
{
    m_memory.halted = true;
    return holdsData() ? Text(ErrorText(DataStored)) : std::nullopt;
}

ProgramMemory::Text ProgramMemory::clearData(std::string_view)
{
    dropAllData();
    return std::nullopt;
}

ProgramMemory::Text ProgramMemory::clearPrograms(std::string_view)
{
    m_memory.program.clear();
    return std::nullopt;
}

// Between the lines for a card it is no more than a command.
ProgramMemory::Text ProgramMemory::beginProgram(std::string_view)
{
    clearPrograms({});
    m_memory.halted = false;
    if (m_target != Target::Card) {
        m_target = Target::Memory;
        m_programLines = 0;
        m_awaitsNumberQuestion = true;
    }
    return std::nullopt;
}

ProgramMemory::Text ProgramMemory::tellNumber(std::string_view)
{
    m_awaitsNumberQuestion = false;
    return m_config.number;
}

ProgramMemory::Text ProgramMemory::tellCard(std::string_view)
{
    if (m_config.failure == Failure::CardUnreadable)
        return "?";
    return m_memory.card ? "1" : "0";
}

ProgramMemory::Text ProgramMemory::clearCard(std::string_view)
{
    if (!m_memory.card)
        return ErrorText(NoCard);
    m_memory.cardProgram.clear();
    m_target = Target::Card;
    m_programLines = 0;
    return std::nullopt;
}

ProgramMemory::Text ProgramMemory::runCard(std::string_view)
{
    if (!m_memory.card)
        return ErrorText(NoCard);
    m_memory.program = m_memory.cardProgram;
    m_memory.halted = false;
    return "Running the card program";
}

ProgramMemory::Text ProgramMemory::listJobs(std::string_view)
{
    std::string list;
    for (const Job& job : m_memory.jobs)
        list += (list.empty() ? "" : "\r\n") + std::string(job.current ? "*" : " ") + job.name;
    return list;
}

ProgramMemory::Text ProgramMemory::tellCurrentJob(std::string_view)
{
    const auto current = std::ranges::find_if(m_memory.jobs, &Job::current);
    return current == m_memory.jobs.end() ? "No current job" : "*" + current->name;
}

ProgramMemory::Text ProgramMemory::deleteJob(std::string_view name)
{
    const Job* job = jobOf(name);
    if (!job)
        return ErrorText(NoSuchJob);
    if (const char* why = keptBy(*job))
        return job->name + why;
    m_memory.jobs.erase(m_memory.jobs.begin() + (job - m_memory.jobs.data()));
    return std::string(name) + " done";
}

ProgramMemory::Text ProgramMemory::deleteAllJobs(std::string_view)
{
    std::string kept;
    std::erase_if(m_memory.jobs, [&](const Job& job) {
        const char* why = keptBy(job);
        if (why)
            kept += (kept.empty() ? "" : "\r\n") + job.name + why;
        return !why;
    });
    return kept.empty() ? "All jobs done" : kept;
}

ProgramMemory::Text ProgramMemory::deleteData(std::string_view name)
{
    Job* job = jobOf(name);
    if (!job)
        return ErrorText(NoSuchJob);
    job->hasData = false;
    return "Data of " + job->name + " deleted";
}

ProgramMemory::Text ProgramMemory::deleteAllData(std::string_view)
{
    dropAllData();
    return "All data deleted";
}

ProgramMemory::Text ProgramMemory::deleteAlarms(std::string_view)
{
    return "All alarms deleted";
}

ProgramMemory::Text ProgramMemory::runJobOnReset(std::string_view name)
{
    if (!jobOf(name))
        return ErrorText(NoSuchJob);
    m_memory.runOnReset = name;
    if (m_takesFlashByItself)
        m_memory.flashOnReset = FlashOnReset::Take;
    return accepted("RUNJOBONRESET");
}

ProgramMemory::Text ProgramMemory::takeFlashOnReset(std::string_view)
{
    m_memory.flashOnReset = FlashOnReset::Take;
    return accepted("FLASHONRESET");
}

ProgramMemory::Text ProgramMemory::forgetOnReset(std::string_view)
{
    m_memory.runOnReset.clear();
    return accepted("DELONRESET");
}

ProgramMemory::Text ProgramMemory::eraseFlashOnReset(std::string_view)
{
    m_memory.flashOnReset = FlashOnReset::Erase;
    return accepted("DELFLASHONRESET");
}

} // namespace harvelop
