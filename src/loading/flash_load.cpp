#include "loading/flash_load.h"

#include "core/text_lines.h"
#include "loading/flash_texts.h"
#include "loading/program_cleaner.h"
#include "settings/message_texts.h"

namespace harvelop
{

namespace
{

constexpr const char* FlashTitle = " Harvel";
constexpr double StepMs = 500;

} // namespace

void FlashLoading::LoadFlashProgram()
{
    LoadingState& loading = m_use.loading;
    loading.FlashLoadMode = true;
    m_programs.ChooseProgramFile();
    loading.ProgramFileShown = loading.ProgramFileName;
    if (!loading.ProgramFileName.empty() && ConnectToLogger(m_use)) {
        if (!IsKR4(m_use)) {
            CleanProgramFile();
            CheckFlashSize();
            RunImgbuild();
            RunObjcopy();
            RunRecnorm();
        }
        SendFlashRecords();
    }
    loading.FlashLoadMode = false;
}

// Leaves the cleaned program in "temp"; after a failure the program as chosen, or nothing if it can't be read, so that
// an old one is never taken for it.
void FlashLoading::CleanProgramFile()
{
    LoadingState& loading = m_use.loading;
    DataFiles& files = m_use.files;
    const FileText chosen = files.Read(loading.ProgramFileName);
    std::optional<std::string> program;
    if (chosen.state != FileState::Read || !files.Replace(pathOf("temp"), chosen.text))
        files.Remove(pathOf("temp"));
    else
        program = CleanProgram(chosen.text, loading.CleanedProgramSize);
    const bool cleaned =
        program && files.Replace(pathOf("cleantemp"), *program) && files.Replace(pathOf("temp"), *program);
    files.Remove(pathOf("cleantemp"));
    if (cleaned)
        loading.ProgramFileName = "temp";
    else
        ShowBox(m_use, {m_use.use.language.Text(642) + ".     ", FlashTitle, BoxIcon::Critical});
}

// It only reports: what follows is done all the same, which is meant.
void FlashLoading::CheckFlashSize()
{
    constexpr int FlashSize = 4090;
    if (m_use.loading.CleanedProgramSize <= FlashSize)
        return;
    ShowBox(m_use, {TooLargeText(m_use.use.language, m_use.loading.ProgramFileShown), FlashTitle, BoxIcon::Critical});
    ShowStepFor(m_use, 1000, 351);
}

void FlashLoading::RunImgbuild()
{
    runConverter("imgbuild.exe", {"temp", "temp.bin"}, 645);
}

void FlashLoading::RunObjcopy()
{
    runConverter("objcopy.exe", {"--change-addresses=0x60000", "-I", "binary", "-O", "srec", "temp.bin", "temp.sre"},
                 646);
}

void FlashLoading::RunRecnorm()
{
    runConverter("recnorm.exe", {"temp.sre"}, 647);
}

// `fault` is the number of the text for one that can't be started. Of the three only objcopy may also lie on the PATH.
void FlashLoading::runConverter(const std::string& name, const std::vector<std::string>& arguments, int fault)
{
    Desktop& desktop = m_use.desktop;
    const std::string& directory = m_use.state.AppPath;
    if (m_use.end.Ended())
        return;
    if (!desktop.StartProgram(directory + name, arguments, directory) &&
        (name != "objcopy.exe" || !desktop.StartProgram(desktop.ProgramOnPath("objcopy"), arguments, directory)))
        ShowBox(m_use, {m_use.use.language.Text(fault) + ".     ", FlashTitle, BoxIcon::Critical});
    m_use.use.waiting.WaitMs(StepMs);
}

void FlashLoading::SendFlashRecords()
{
    const bool kr4 = IsKR4(m_use);
    m_use.link.ResponseText = "0";
    if (!confirmed(kr4))
        return;
    m_use.use.progress.ShowMessageForm();
    if (!(kr4 ? sendText() : sendImage()))
        tellFault();
    if (!kr4)
        for (const char* file : {"temp", "temp.bin", "temp.sre"})
            m_use.files.Remove(pathOf(file));
    m_use.use.waiting.WaitMs(StepMs);
}

// A refusal leaves the temporary files: meant.
bool FlashLoading::confirmed(bool kr4)
{
    const std::string text =
        FlashCaution(m_use.use.language, kr4, m_use.link.LinkDescription, m_use.loading.ProgramFileShown);
    if (Confirmed(m_use, {text, FlashTitle, BoxIcon::Exclamation, BoxButtons::YesNo}))
        return true;
    if (kr4)
        m_use.use.progress.HideMessageForm();
    else
        m_use.use.progress.ShowMessageForm();
    ShowStepFor(m_use, 1000, kr4 ? 360 : 352);
    return false;
}

// Makes the file's size the bar's range; 0 if it can't be read.
void FlashLoading::setRange(const std::string& path)
{
    m_use.use.progress.SetProgressRange(ProgramFileBytes(m_use.files.Read(path).text).value_or(0));
}

// To the bootstrap monitor of an older logger. Only the last answer decides what the user is told: meant. False if
// there is no image; the flash memory has been erased by then.
bool FlashLoading::sendImage()
{
    CommandExchange& exchange = m_use.exchange;
    const LanguageTables& language = m_use.use.language;
    const std::string logger = " " + m_use.link.LinkDescription;
    setRange(pathOf("temp.sre"));
    SendAndWaitAfresh(m_use, Bootstrap, ReplyTo("Bootstrap mode", 2));
    ShowStepFor(m_use, StepMs, 353, " ...");
    SendAndWaitAfresh(m_use, "EF 60000,1", {"Erasing FLASH memory", 1, "Erase successful\r", 1});
    ShowStepFor(m_use, StepMs, 354);
    ShowStepFor(m_use, StepMs, 355, logger);
    const FileText records = m_use.files.Read(pathOf("temp.sre"));
    if (records.state != FileState::Read)
        return false;
    LineReader lines(records.text);
    for (std::string_view line; !m_use.end.Ended() && lines.Next(line);) {
        exchange.SendToLogger(std::string(line));
        m_use.use.progress.StepProgress(static_cast<int>(line.size()));
    }
    m_use.use.progress.ResetProgress();
    ShowStepFor(m_use, StepMs, 356, logger);
    ShowStepFor(m_use, StepMs, 357, " ...");
    m_use.link.DefaultTimeout = 5000;
    SendAndWaitAfresh(m_use, "J", {"Tallycore", 1, "Done.\r", 1});
    ShowStepFor(m_use, StepMs, 358);
    if (!Passed(m_use))
        return true;
    ShowStep(m_use, 359);
    ShowBox(m_use,
            {language.Text(652) + logger + " " + language.Text(653) + ".     ", FlashTitle, BoxIcon::Information});
    return true;
}

// To a logger of the KR4 family, which runs the job at its next reset. False if the file can't be read.
bool FlashLoading::sendText()
{
    CommandExchange& exchange = m_use.exchange;
    const std::string logger = " " + m_use.link.LinkDescription;
    setRange(m_use.loading.ProgramFileName);
    ShowStepFor(m_use, StepMs, 361, logger);
    const FileText program = m_use.files.Read(m_use.loading.ProgramFileName);
    if (program.state != FileState::Read)
        return false;
    const std::string job = sendLinesToJob(program.text);
    exchange.SendToLogger("H");
    m_use.use.waiting.WaitMs(1000);
    SendAndWaitAfresh(m_use, "RUNJOBONRESET\"" + job + "\"", ReplyTo("RUNJOBONRESET"));
    const LoggerRecord* record = m_use.tables.Record(m_use.state.CurrentLogger);
    if (!record || NeedsFlashOnReset(record->LoggerVersion))
        SendAndWaitAfresh(m_use, "FLASHONRESET", ReplyTo("FLASHONRESET"));
    if (Passed(m_use)) {
        ShowStepFor(m_use, StepMs, 362, logger);
        ShowStep(m_use, 363);
        // English in every language: meant.
        ShowBox(m_use,
                {"Program successfully sent to Flash in the" + logger + ".     ", FlashTitle, BoxIcon::Information});
    }
    offerReset();
    return true;
}

// Gives the name of the job, which may be empty. The fourth blank line, wherever it stands, ends the program.
std::string FlashLoading::sendLinesToJob(const std::string& text)
{
    constexpr int BlankLines = 3;
    std::optional<std::string> job;
    int blanks = 0;
    m_use.use.progress.ClearBar();
    LineReader lines(text);
    for (std::string_view line; !m_use.end.Ended() && lines.Next(line);) {
        if (!job)
            job = JobNameOf(line);
        if (line.empty() && ++blanks > BlankLines)
            break;
        m_use.exchange.SendToLogger(std::string(line));
        m_use.use.progress.StepProgress(static_cast<int>(line.size()));
    }
    m_use.use.progress.ResetProgress();
    return job.value_or("");
}

void FlashLoading::offerReset()
{
    const LanguageTables& language = m_use.use.language;
    if (ShowBox(m_use, {language.Text(660) + " ?     ", FlashTitle, BoxIcon::Question, BoxButtons::YesNo}) !=
        BoxAnswer::Yes)
        return;
    ShowStepFor(m_use, StepMs, 364, " ...");
    m_use.link.DefaultTimeout = 10000;
    m_use.exchange.SendToLogger("SINGLEPUSH");
    ShowStepFor(m_use, StepMs, 365);
    ShowBox(m_use, {language.Text(661) + ".     ", BoxTitle, BoxIcon::Information});
}

void FlashLoading::tellFault()
{
    m_use.exchange.SendToLogger("J");
    m_use.use.waiting.WaitMs(1000);
    ShowBox(m_use, {m_use.use.language.Text(662) + "\r", BoxTitle, BoxIcon::Critical});
}

} // namespace harvelop
