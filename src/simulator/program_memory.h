// The programs of a simulated logger: what it holds, and the commands that change it.
#pragma once

#include "simulator/logger_config.h"
#include "simulator/report_texts.h"

#include <optional>
#include <string>
#include <string_view>

namespace harvelop
{

// A program in internal memory is all that comes after "END /E/h/M/U CSCANS CALARMS G" and the question for the number,
// until somebody wakes the logger anew. A program on the card is all that ends in ";" after "CPROG", until an empty
// line. A job is all from BEGIN and its name in double quotes to END, wherever it comes.
class ProgramMemory
{
public:
    struct Answer {
        bool taken = false;              // the line was its business
        std::optional<std::string> text; // without the last line end; none: silence
    };

    // With no row it is one of the older family.
    ProgramMemory(const LoggerConfig& config, const std::optional<ModelRow>& row);

    Answer Take(const std::string& line);
    void TakeBlankLine();

    // Whatever was being received has come to its end.
    void EndSession();

    // Older: programs and data in internal memory are gone. KR4 family: what was told for the reset is done.
    void Reset();

    // A complaint, as a logger of this family words it.
    std::string ErrorText(int code) const;

    LoggerMemory& State() { return m_memory; }
    const LoggerMemory& State() const { return m_memory; }

private:
    using Text = std::optional<std::string>;
    static constexpr std::string_view NumberQuestion = "13SV";
    enum class Target { None, Memory, Card };
    enum class Family { Any, KR4 };
    struct Command {
        std::string_view line; // one that ends in a double quote is followed by a name and another one
        Family family;
        Text (ProgramMemory::*act)(std::string_view name);
    };

    const Command* commandOf(const std::string& line) const;
    Text keep(std::string& program, std::string_view line);
    void defineJob(const std::string& line);
    Job* jobOf(std::string_view name);
    void makeCurrent(Job& job);
    bool holdsData() const;
    void dropAllData();
    const char* keptBy(const Job& job) const;

    Text halt(std::string_view);
    Text askForData(std::string_view);
    Text clearData(std::string_view);
    Text clearPrograms(std::string_view);
    Text beginProgram(std::string_view);
    Text tellNumber(std::string_view);
    Text tellCard(std::string_view);
    Text clearCard(std::string_view);
    Text runCard(std::string_view);
    Text listJobs(std::string_view);
    Text tellCurrentJob(std::string_view);
    Text deleteJob(std::string_view name);
    Text deleteAllJobs(std::string_view);
    Text deleteData(std::string_view name);
    Text deleteAllData(std::string_view);
    Text deleteAlarms(std::string_view);
    Text runJobOnReset(std::string_view name);
    Text takeFlashOnReset(std::string_view);
    Text forgetOnReset(std::string_view);
    Text eraseFlashOnReset(std::string_view);

    const LoggerConfig m_config;
    const bool m_kr4;
    const bool m_takesFlashByItself; // by its version, for a job that is to run on reset
    LoggerMemory m_memory;
    Target m_target = Target::None;
    int m_programLines = 0;              // received for it, counted from its begin
    bool m_awaitsNumberQuestion = false; // once, before the first of them
    std::optional<Job> m_job;
};

} // namespace harvelop
