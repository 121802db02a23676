#include "app/ctl_check.h"

#include "app/ctl_commands.h"
#include "app/ctl_json.h"
#include "app/ctl_output.h"
#include "core/text_numbers.h"
#include "panels/data_check.h"
#include "settings/language_check.h"
#include "settings/option_keys.h"

#include <algorithm>
#include <filesystem>
#include <set>

namespace harvelop
{

namespace
{

namespace fs = std::filesystem;

constexpr const char* OptionsFile = "options.ini";
constexpr const char* FoundFile = "found.ini";
constexpr const char* MarkFile = "install.ini";
constexpr std::string_view ListPrefix = "emaillist";
constexpr std::string_view ListSuffix = ".ini";

struct FileFinding {
    std::string file;
    Finding finding;
};

bool isListFile(std::string_view name)
{
    return name.size() >= ListPrefix.size() + ListSuffix.size() && name.starts_with(ListPrefix) &&
           name.ends_with(ListSuffix);
}

bool isDataFile(std::string_view name)
{
    return name == OptionsFile || name == FoundFile || name == MarkFile || isListFile(name);
}

// What a save that was cut short leaves behind: ".NAME.new", or NAME and six characters of its own.
bool isLeftover(std::string_view name)
{
    constexpr std::string_view New = ".new";
    constexpr size_t Random = 7; // with the point
    if (name.starts_with('.') && name.ends_with(New) && name.size() > New.size() + 1)
        return isDataFile(name.substr(1, name.size() - New.size() - 1));
    return name.size() > Random && name[name.size() - Random] == '.' &&
           isDataFile(name.substr(0, name.size() - Random));
}

std::vector<std::string> namesIn(const std::string& directory)
{
    std::vector<std::string> names;
    std::error_code error; // a directory that can't be listed shows no further files
    for (fs::directory_iterator entry(directory, error); !error && entry != fs::end(entry); entry.increment(error))
        names.push_back(entry->path().filename().string());
    std::ranges::sort(names);
    return names;
}

const char* wordOf(Oddity oddity)
{
    switch (oddity) {
    case Oddity::PassedOver:
        return "passed over";
    case Oddity::Changed:
        return "changed by a save";
    case Oddity::Risk:
        break;
    }
    return "risk";
}

class DirectoryCheck
{
public:
    explicit DirectoryCheck(Program& program) : m_program(program) {}

    std::vector<FileFinding> Run()
    {
        const std::string options = take(OptionsFile, CheckOptions, IsFreeOption).value_or("");
        const LoggerSurroundings surroundings = {iconsIn(options),
                                                 [this](const std::string& path) { return isSaveFolder(path); },
                                                 [this](const std::string& name) { return isProgram(name); }};
        const bool found =
            take(FoundFile, [&](const std::string& text) { return CheckLoggers(text, surroundings); }).has_value();
        if (holdsAccountPassword(options))
            checkSecrecy(OptionsFile);
        take(MarkFile, CheckInstallMark);
        checkLoggersFiles();
        const bool listsKnown = found && m_program.records.Saved(); // taken in whole
        checkLanguage(options);
        for (const std::string& name : namesIn(m_program.state.AppPath)) {
            if (listsKnown && isListFile(name) && !m_lists.contains(name))
                add(name, {0, Oddity::PassedOver, "belongs to no logger"});
            if (isLeftover(name))
                add(name, {0, Oddity::PassedOver, "is left over from a save that was interrupted"});
        }
        return m_rows;
    }

private:
    void add(const std::string& file, const Finding& finding) { m_rows.push_back({file, finding}); }

    // Checks a file and gives its text; none of one that is missing or can't be read.
    template <typename Check>
    std::optional<std::string> take(const std::string& name, const Check& check,
                                    bool (*isFree)(std::string_view line) = nullptr)
    {
        const FileText file = m_program.files.Read(m_program.state.AppPath + name);
        if (file.state == FileState::Unreadable)
            add(name, {0, Oddity::PassedOver, "can't be read"});
        if (file.state != FileState::Read)
            return std::nullopt;
        checkMode(name, fs::perms::others_write, "can be changed by others"); // a group may be the user's own
        Findings findings = check(file.text);
        const Findings bytes = CheckBytes(file.text, isFree);
        findings.insert(findings.end(), bytes.begin(), bytes.end());
        std::ranges::stable_sort(findings, {}, &Finding::line);
        if (findings.size() > MostFindings) {
            findings.resize(MostFindings + 1);
            findings.back() = {findings.back().line, Oddity::Risk, StoppedHere};
        }
        for (const Finding& finding : findings)
            add(name, finding);
        return file.text;
    }

    // The passwords of the loggers and their lists.
    void checkLoggersFiles()
    {
        m_program.records.LoadFoundLoggers();
        bool password = false;
        for (int number = 1; number <= MaxLoggers; ++number) {
            if (!m_program.tables.Holds(number))
                continue;
            const LoggerRecord& record = *m_program.tables.Record(number);
            password = password || !record.LoggerPassword.empty();
            const std::string name =
                std::string(ListPrefix) + ListNumber(record.LoggerIconKey) + std::string(ListSuffix);
            if (m_lists.insert(name).second)
                take(name, [&](const std::string& text) { return CheckDeliveryList(text, record.LoggerModel); });
        }
        if (password)
            checkSecrecy(FoundFile);
    }

    void checkLanguage(const std::string& options)
    {
        const auto used = FindOptionLine(options, "UseLangFile");
        if (!used || !ToBoolean(used->value).value_or(false))
            return;
        const auto language = FindOptionLine(options, "Language");
        const std::string name = (language && !language->value.empty() ? language->value : "English") + ".txt";
        const FileText file = m_program.files.Read(m_program.state.AppPath + name);
        if (file.state != FileState::Read) {
            add(OptionsFile,
                {used->number, Oddity::Risk, "the language file can't be read: the program would not start"});
            return;
        }
        for (const LanguageFinding& finding : CheckLanguage(file.text))
            add(name, {finding.line, Oddity::Risk, finding.text});
    }

    void checkMode(const std::string& name, fs::perms odd, const char* what)
    {
        std::error_code error; // a file that is not there has no mode
        const fs::perms mode = fs::status(m_program.state.AppPath + name, error).permissions();
        if (!error && (mode & odd) != fs::perms::none)
            add(name, {0, Oddity::Risk, what});
    }

    void checkSecrecy(const char* name)
    {
        checkMode(name, fs::perms::group_read | fs::perms::others_read, "holds a password and can be read by others");
    }

    static bool holdsAccountPassword(const std::string& options)
    {
        return std::ranges::any_of(SavedOptionKeys(), [&](const OptionKey& row) {
            const auto line = row.key.ends_with("Password") && row.key.find("Remember") == std::string_view::npos
                                  ? FindOptionLine(options, row.key)
                                  : std::nullopt;
            return line && !line->value.empty();
        });
    }

    static std::optional<double> iconsIn(const std::string& options)
    {
        const auto line = FindOptionLine(options, "Icons");
        return line ? ToDouble(line->value) : std::nullopt;
    }

    bool isSaveFolder(const std::string& path) const
    {
        if (path == StandardSaveFolder(m_program.state.DriveRoot))
            return true;       // made when it is needed
        std::error_code error; // one that can't be looked at is none
        return fs::is_directory(path, error);
    }

    // As a whole, or its first word; a path, or a name in the directory or on the user's PATH.
    bool isProgram(const std::string& text) const
    {
        const auto isThere = [this](const std::string& name) {
            std::error_code error;
            const fs::path path = fs::path(m_program.state.AppPath) / name; // an absolute name replaces the directory
            return fs::is_regular_file(path, error) || !m_program.desktop.ProgramOnPath(name).empty();
        };
        return isThere(text) || isThere(text.substr(0, text.find(' ')));
    }

    Program& m_program;
    std::vector<FileFinding> m_rows;
    std::set<std::string> m_lists; // the files of the loggers' delivery lists
};

} // namespace

std::string FindingLine(const std::string& file, int line, const std::string& text)
{
    return Printable(file + (line > 0 ? ":" + std::to_string(line) : "") + ": " + text) + "\n";
}

int CheckDirectory(Program& program, const CtlCommand& command, std::ostream& out)
{
    program.files.ChangeNothing();
    const auto rows = DirectoryCheck(program).Run();
    if (command.json) {
        ordered_json all = ordered_json::array();
        for (const FileFinding& row : rows)
            all.push_back({{"file", row.file},
                           {"line", row.finding.line},
                           {"kind", wordOf(row.finding.oddity)},
                           {"text", row.finding.text}});
        out << JsonText(all);
    } else {
        for (const FileFinding& row : rows)
            out << FindingLine(row.file, row.finding.line, row.finding.text);
    }
    return rows.empty() ? CtlDone : CtlFailed;
}

} // namespace harvelop
