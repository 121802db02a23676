#include "loading/program_load.h"

#include "core/text_lines.h"
#include "settings/message_texts.h"

#include <algorithm>
#include <limits>

namespace harvelop
{

void ProgramLoading::LoadProgram()
{
    LoadingState& loading = m_use.loading;
    loading.CardLoadMode = false;
    const std::string& command = m_use.state.LaunchCommand;
    if (command.empty()) {
        ChooseProgramFile();
    } else {
        const size_t blank = command.find(' ');
        loading.ProgramFileName = blank == std::string::npos ? "" : command.substr(blank + 1);
    }
    if (loading.ProgramFileName.empty())
        return;
    if (ConnectToLogger(m_use))
        SendProgramFile();
    else
        m_use.loggerControls.EnableLoggerControls();
}

void ProgramLoading::LoadCardProgram()
{
    m_use.loading.CardLoadMode = true; // a cancelled choice and a failed connection leave it set: meant
    ChooseProgramFile();
    if (m_use.loading.ProgramFileName.empty() || !ConnectToLogger(m_use))
        return;
    m_use.use.progress.ShowMessageForm();
    FindMemoryCard();
    if (!m_use.loading.CardPresent.Get(m_use.state.CurrentLogger)) {
        ShowBox(m_use, {m_use.use.language.Text(629) + " " + m_use.link.LinkDescription + ".     ", BoxTitle,
                        BoxIcon::Critical});
        return;
    }
    m_use.use.progress.HideMessageForm();
    SendProgramFile();
}

void ProgramLoading::ChooseProgramFile()
{
    LoadingState& loading = m_use.loading;
    const ChooserKind kind = loading.FlashLoadMode  ? ChooserKind::Flash
                             : loading.CardLoadMode ? ChooserKind::Card
                                                    : ChooserKind::Memory;
    m_use.use.progress.HideMessageForm();
    loading.ProgramFileName =
        m_use.use.dialogs.OpenFile(ChooserTitle(kind, m_use.link.LinkDescription), m_use.state.AppPath, "cmd");
}

LoadQuestion ProgramLoading::question() const
{
    const LoadingState& loading = m_use.loading;
    return {IsKR4(m_use), loading.CardLoadMode, loading.CardPresent.Get(m_use.state.CurrentLogger),
            m_use.link.LinkDescription, loading.ProgramFileName};
}

void ProgramLoading::SendProgramFile()
{
    LoadingState& loading = m_use.loading;
    m_use.use.progress.ShowMessageForm();
    if (!loading.CardLoadMode)
        FindMemoryCard();
    if (!confirm()) {
        loading.CardLoadMode = false;
        m_use.use.progress.HideMessageForm();
        return;
    }
    if (!CheckForData()) {
        m_use.use.progress.HideMessageForm();
        return;
    }
    prepareLogger();
    std::erase(loading.ProgramFileName, '"');
    const auto text = readFile();
    if (!text)
        return; // `CardLoadMode` stays as it was, and the program does not end: meant
    if (sendLines(*text))
        tellSent();
    finish();
}

bool ProgramLoading::confirm()
{
    if (!m_use.options.ShowLoadMessages)
        return true;
    const auto caution = CautionBox(m_use.use.language, question());
    if (!caution)
        return true;
    const bool yes = ShowBox(m_use, *caution) == BoxAnswer::Yes;
    m_use.use.progress.ShowMessageForm();
    if (!yes)
        ShowStepFor(m_use, 1000, RefusalText(question()));
    return yes;
}

void ProgramLoading::prepareLogger()
{
    CommandExchange& exchange = m_use.exchange;
    const std::string logger = " " + m_use.link.LinkDescription + " ...";
    if (m_use.loading.CardLoadMode) {
        exchange.SendToLogger("H /E");
        m_use.use.waiting.WaitMs(1000);
        exchange.SendAndWait("CPROG", ReplyTo("CPROG"));
        ShowStep(m_use, 331, logger);
    } else {
        ShowStep(m_use, 330, logger);
    }
    exchange.SendToLogger("END /E/h/M/U CSCANS CALARMS G");
    m_use.use.waiting.WaitMs(1000);
    exchange.txtCharacterWindow.Clear();
    exchange.SendAndWait("13SV", {"13SV\r\n", 1, "\r", 2});
    m_use.loading.LoggerNumberText = m_use.link.ResponseText;
    m_use.use.waiting.WaitMs(500);
    exchange.txtCharacterWindow.Clear();
}

// The file, or none, which has been told then.
std::optional<std::string> ProgramLoading::readFile()
{
    const std::string& name = m_use.loading.ProgramFileName;
    const FileText file = m_use.files.Read(name);
    const auto bytes = ProgramFileBytes(file.text);
    m_use.use.progress.SetProgressRange(bytes.value_or(0));
    const char* fault = file.state == FileState::NotFound     ? "File not found"
                        : file.state == FileState::Unreadable ? "Path/File access error"
                        : !bytes                              ? "File already open" // as a file too long is told: meant
                                                              : nullptr;
    if (!fault)
        return file.text;
    ShowBox(m_use, {fault + (" : " + name), ""});
    ShowBox(m_use, {m_use.use.language.Text(599) + ".     ", "", BoxIcon::Critical});
    return std::nullopt;
}

// False, and told, if the logger reported an error: the rest is not sent, and what it has got stays there.
bool ProgramLoading::sendLines(const std::string& text)
{
    constexpr double PaceMs = 100; // the only pacing: there is no handshake
    CommandExchange& exchange = m_use.exchange;
    const std::string lineEnd = m_use.loading.CardLoadMode ? ";" : "";
    LineReader lines(text);
    std::string_view line;
    for (int number = 1; !m_use.end.Ended() && lines.Next(line); ++number) {
        m_use.use.progress.StepProgress(static_cast<int>(line.size()));
        exchange.txtCharacterWindow.Clear();
        exchange.SendToLogger(std::string(line) + lineEnd);
        m_use.use.waiting.WaitMs(PaceMs);
        if (hasError()) {
            tellLineError(number);
            return false;
        }
    }
    m_use.use.progress.ResetProgress();
    m_use.use.waiting.WaitMs(500);
    if (m_use.loading.CardLoadMode)
        exchange.SendToLogger("\r");
    m_use.use.waiting.WaitMs(500);
    return true;
}

bool ProgramLoading::hasError()
{
    const std::string_view answer = m_use.exchange.txtCharacterWindow.Text();
    return Holds(answer, "Tallycore " + m_use.loading.LoggerNumberText + "E") || Holds(answer, "tallyCore KR400 E") ||
           Holds(answer, "Serial sensor control string error");
}

void ProgramLoading::tellLineError(int line)
{
    m_use.exchange.txtCharacterWindow.Clear();
    m_use.use.progress.HideMessageForm();
    ShowStep(m_use, 332, " " + std::to_string(line));
    ShowBox(m_use, LineErrorBox(m_use.use.language, line, m_use.loading.ProgramFileName));
}

void ProgramLoading::tellSent()
{
    const LanguageTables& language = m_use.use.language;
    ShowBox(m_use, SentBox(language, question()));
    if (!m_use.loading.CardLoadMode)
        return;
    if (ShowBox(m_use, {language.Text(606) + "     ", "", BoxIcon::Question, BoxButtons::YesNo}) != BoxAnswer::Yes)
        return;
    SendAndWaitAfresh(m_use, "RUNPROG", ReplyTo(""));
    if (Passed(m_use))
        ShowBox(m_use, {language.Text(607) + ".     ", "", BoxIcon::Information});
}

void ProgramLoading::finish()
{
    m_use.use.progress.ShowProgressText("");
    m_use.loading.CardLoadMode = false;
    m_use.use.progress.HideMessageForm();
    if (!m_use.state.LaunchCommand.empty())
        m_use.end.EndProgram();
}

void ProgramLoading::FindMemoryCard()
{
    CommandExchange& exchange = m_use.exchange;
    bool* present = m_use.loading.CardPresent.At(m_use.state.CurrentLogger);
    m_use.use.progress.ClearBar();
    m_use.use.progress.ShowMessageForm();
    ShowStep(m_use, 339, " ...");
    m_use.link.ResponseText.clear();
    exchange.SendToLogger("END");
    m_use.use.waiting.WaitMs(500);
    exchange.SendToLogger("/h/R/u/n/E/d/t");
    m_use.use.waiting.WaitMs(500);
    exchange.txtCharacterWindow.Clear();
    m_use.use.waiting.WaitMs(1000);
    exchange.SendAndWait("9SV(FF0) /U/N", ReplyTo("\r"));
    const bool found = Holds(m_use.link.ResponseText, "1");
    if (!present || (!found && !Holds(m_use.link.ResponseText, "0")))
        return;
    *present = found;
    ShowStepFor(m_use, 1000, found ? 340 : 341);
}

bool ProgramLoading::CheckForData()
{
    CommandExchange& exchange = m_use.exchange;
    const LanguageTables& language = m_use.use.language;
    const LoadQuestion asked = question();
    ShowStep(m_use, 333, " ...");
    m_use.link.ResponseText = "0";
    exchange.txtCharacterWindow.Clear();
    exchange.SendToLogger("H BEGIN");
    m_use.use.waiting.WaitMs(2000);
    if (!Holds(exchange.txtCharacterWindow.Text(), "E4")) {
        ShowStepFor(m_use, 1000, 338);
        m_use.use.progress.ShowMessageForm();
        return true;
    }
    if (m_use.options.ShowLoadMessages) {
        m_use.use.progress.HideMessageForm();
        // 354 is a text of flash programming: meant. Without a language file the words are those that fit.
        m_use.use.progress.ShowProgressText(asked.hasCard         ? language.Text(335)
                                            : language.LangActive ? language.Text(354)
                                                                  : "Data Found in Memory");
        m_use.use.waiting.WaitMs(1000);
    }
    if (!Confirmed(m_use, DataBox(language, asked, m_use.state.ClearMode)))
        return false;
    m_use.use.progress.ShowMessageForm();
    ShowStep(m_use, asked.hasCard ? 337 : 336, " ...");
    m_use.use.progress.FillProgress();
    exchange.SendToLogger("/E");
    m_use.use.waiting.WaitMs(1000);
    exchange.SendAndWait("CLEAR CDATA", {"CLEAR", 1, "CDATA", 1}); // whatever comes of it: meant
    return true;
}

std::optional<std::int16_t> ProgramFileBytes(std::string_view text)
{
    size_t total = 0;
    LineReader lines(text);
    for (std::string_view line; lines.Next(line);)
        total += line.size();
    if (total > static_cast<size_t>(std::numeric_limits<std::int16_t>::max()))
        return std::nullopt;
    return static_cast<std::int16_t>(total);
}

} // namespace harvelop
