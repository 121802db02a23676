#include "simulator/program_memory.h"

#include <algorithm>
#include <utility>

namespace harvelop
{

namespace
{

constexpr std::string_view WakeUp = "Q /H/r";
constexpr std::string_view JobBegin = "BEGIN\"";
constexpr std::size_t LargestProgram = 1 << 20; // characters
constexpr std::size_t MostJobs = 1000;

constexpr int Full = 8; // codes of complaints
constexpr int BadLine = 10;

// The name behind BEGIN; empty if the line begins no job.
std::string jobNameIn(const std::string& line)
{
    const auto begin = line.find(JobBegin);
    if (begin == std::string::npos)
        return "";
    const std::string rest = line.substr(begin + JobBegin.size());
    return rest.substr(0, rest.find('"'));
}

bool endsJob(const std::string& line)
{
    return line == "END" || line.starts_with("END ") || line.ends_with(" END");
}

bool isNew(const std::string& version)
{
    return version[0] >= '5' && version[0] <= '9';
}

} // namespace

ProgramMemory::ProgramMemory(const LoggerConfig& config, const std::optional<ModelRow>& row)
    : m_config(config),
      m_kr4(row && row->IsKR4()),
      m_takesFlashByItself(row && isNew(VersionText(config, *row))),
      m_memory(config.memory)
{
}

ProgramMemory::Answer ProgramMemory::Take(const std::string& line)
{
    if (line.starts_with(WakeUp))
        EndSession();
    if (m_target == Target::Card && line.ends_with(';'))
        return {true, keep(m_memory.cardProgram, std::string_view(line).substr(0, line.size() - 1))};
    const bool isNumberQuestion = m_awaitsNumberQuestion && line == NumberQuestion;
    if (m_target == Target::Memory && !isNumberQuestion) {
        const Text complaint = keep(m_memory.program, line);
        if (!complaint)
            defineJob(line);
        return {true, complaint};
    }
    if (m_job || (m_kr4 && !jobNameIn(line).empty())) {
        defineJob(line);
        return {true, {}};
    }
    const Command* command = commandOf(line);
    if (!command)
        return {};
    std::string_view name = std::string_view(line).substr(command->line.size());
    if (!name.empty())
        name.remove_suffix(1);
    return {true, (this->*command->act)(name)};
}

void ProgramMemory::TakeBlankLine()
{
    if (m_target == Target::Card)
        m_target = Target::None;
    else if (m_target == Target::Memory)
        keep(m_memory.program, "");
    if (m_job)
        defineJob("");
}

void ProgramMemory::EndSession()
{
    m_target = Target::None;
    m_job.reset();
}

void ProgramMemory::Reset()
{
    EndSession();
    ++m_memory.resets;
    m_memory.bootstrap = false;
    m_memory.halted = false;
    if (!m_kr4) {
        m_memory.program.clear();
        m_memory.data = false;
        return;
    }
    Job* job = jobOf(m_memory.runOnReset);
    const FlashOnReset flash = std::exchange(m_memory.flashOnReset, FlashOnReset::Keep);
    if (flash == FlashOnReset::Erase)
        m_memory.flash.clear();
    if (flash == FlashOnReset::Take && job)
        m_memory.flash = job->text;
    if (job)
        makeCurrent(*job);
}

std::string ProgramMemory::ErrorText(int code) const
{
    return (m_kr4 ? "tallyCore KR400 E" : "Tallycore " + m_config.number + "E") + std::to_string(code);
}

// The complaint about the line, if there is one; then it is not kept.
ProgramMemory::Text ProgramMemory::keep(std::string& program, std::string_view line)
{
    ++m_programLines;
    m_awaitsNumberQuestion = false;
    if (m_config.failure == Failure::RejectsLine && m_programLines == m_config.rejectLine)
        return ErrorText(BadLine);
    if (m_config.failure == Failure::RejectsString && m_programLines == m_config.rejectLine)
        return "Serial sensor control string error";
    if (program.size() + line.size() >= LargestProgram)
        return ErrorText(Full);
    program.append(line).append("\n");
    return std::nullopt;
}

void ProgramMemory::defineJob(const std::string& line)
{
    if (!m_kr4)
        return;
    if (!m_job) {
        const std::string name = jobNameIn(line);
        if (name.empty() || (!jobOf(name) && m_memory.jobs.size() >= MostJobs))
            return;
        m_job = Job{.name = name};
    }
    if (m_job->text.size() + line.size() < LargestProgram)
        m_job->text += line + "\n";
    if (!endsJob(line))
        return;
    Job* job = jobOf(m_job->name);
    if (!job)
        job = &m_memory.jobs.emplace_back();
    *job = *std::exchange(m_job, std::nullopt);
    makeCurrent(*job);
}

Job* ProgramMemory::jobOf(std::string_view name)
{
    const auto found = std::ranges::find(m_memory.jobs, name, &Job::name);
    return found == m_memory.jobs.end() ? nullptr : &*found;
}

void ProgramMemory::makeCurrent(Job& job)
{
    for (Job& other : m_memory.jobs)
        other.current = false;
    job.current = true;
    m_memory.halted = false;
}

bool ProgramMemory::holdsData() const
{
    return m_memory.data || std::ranges::any_of(m_memory.jobs, &Job::hasData);
}

void ProgramMemory::dropAllData()
{
    m_memory.data = false;
    for (Job& job : m_memory.jobs)
        job.hasData = false;
}

// Why the job can't be deleted; null if it can.
const char* ProgramMemory::keptBy(const Job& job) const
{
    if (job.hasData)
        return " not deleted - it has data";
    return job.current && !m_memory.halted ? " not deleted - it is running" : nullptr;
}

} // namespace harvelop
