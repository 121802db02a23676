// The jobs of the KR4 family.
#include "core/text_lines.h"
#include "links/get_field.h"
#include "loading/clearing.h"
#include "settings/message_texts.h"

#include <algorithm>

namespace harvelop
{

namespace
{

constexpr const char* AllJobs = "DIRJOBS"; // in the list of jobs it stands for all of them
constexpr int MaxJobs = 1000;
constexpr int BarSteps = 10;

std::string quoted(const std::string& command, const std::string& job)
{
    return command + "\"" + job + "\"";
}

} // namespace

std::string PlainJobName(std::string_view name)
{
    std::string plain(name);
    std::erase_if(plain, [](char c) { return c == '*' || c == ' '; });
    return plain;
}

std::vector<std::string> JobNames(std::string_view listing)
{
    std::string record(listing);
    std::erase_if(record, [](char c) { return c == ' ' || c == '\n'; });
    std::ranges::replace(record, '\r', ',');
    std::vector<std::string> names;
    for (int field = 1; field <= MaxJobs; ++field) {
        std::string name = GetField(record, field);
        if (name.empty())
            break;
        names.push_back(std::move(name));
    }
    return names;
}

LangPieces JobInstructions(const std::string& logger)
{
    return {{151, " " + logger + ". "}, {152, ". \r\r"}, {153, "."}};
}

bool Clearing::allJobs() const
{
    return m_use.loading.ChosenJob == AllJobs;
}

void Clearing::clearJobs()
{
    const LanguageTables& language = m_use.use.language;
    LoadingState& loading = m_use.loading;
    const std::string question = language.Text(624) + " " + m_use.link.LinkDescription + ". " + language.Text(625) +
                                 ".    \r\r" + language.Text(626) + ".";
    if (!Confirmed(m_use, {question, BoxTitle, BoxIcon::Exclamation, BoxButtons::YesNo})) {
        m_use.use.progress.HideMessageForm();
        return;
    }
    m_use.use.progress.ShowMessageForm();
    loading.JobHasData = false;
    ShowStepFor(m_use, 1000, 343, " ...");
    GetJobList();
    if (loading.JobListEmpty) {
        loading.JobListEmpty = false;
        ShowBox(m_use, {language.Text(627) + ".     ", BoxTitle, BoxIcon::Information});
        m_use.use.progress.HideMessageForm();
        return;
    }
    m_use.use.progress.HideMessageForm();
    chooseJob();
    m_use.use.progress.ShowMessageForm();
    if (loading.JobDeleteConfirmed) {
        DeleteChosenJob();
        ShowStep(m_use, 344, " ..."); // only after it: meant
    } else {
        ShowBox(m_use, {language.Text(628) + ".     ", BoxTitle, BoxIcon::Information});
        m_use.use.progress.ShowMessageForm();
    }
    m_use.use.progress.HideMessageForm();
}

void Clearing::GetJobList()
{
    CommandExchange& exchange = m_use.exchange;
    LoadingState& loading = m_use.loading;
    exchange.SendToLogger("/r/e/m/z");
    m_use.use.waiting.WaitMs(2000);
    exchange.txtCharacterWindow.Clear();
    exchange.SendToLogger("DIRJOBS");
    m_use.use.waiting.WaitMs(2000);
    const std::string& listing = exchange.txtCharacterWindow.Text();
    loading.JobListEmpty = listing.size() < 3;
    if (loading.JobListEmpty)
        return;
    loading.JobList.Fill("");
    int entry = 0;
    for (const std::string& name : JobNames(listing))
        loading.JobList.Set(++entry, name);
}

// Until the chooser is answered. One that is closed in another way leaves no answer, not that of a former one.
void Clearing::chooseJob()
{
    constexpr double LongestLookMs = 1000;
    LoadingState& loading = m_use.loading;
    loading.JobDeleteConfirmed = false;
    if (m_use.end.Ended())
        return;
    std::vector<std::string> jobs;
    for (int entry = 1; entry <= MaxJobs && !loading.JobList.Get(entry).empty(); ++entry)
        jobs.push_back(loading.JobList.Get(entry));
    if (std::ranges::find(jobs, AllJobs) == jobs.end())
        jobs.emplace_back(AllJobs);
    JobForm* form = m_use.forms.loadJobs ? m_use.forms.loadJobs() : nullptr;
    if (!form)
        return;
    form->Show(jobs);
    while (form->IsVisible() && !m_use.end.Ended())
        m_use.use.waiting.ServeFor(LongestLookMs);
}

void Clearing::DeleteChosenJob()
{
    ShowStep(m_use, 387, " ...");
    m_use.link.DefaultTimeout = 2000; // and stays so: meant
    SendAndWaitAfresh(m_use, "CURJOB", ReplyTo(""));
    m_use.loading.CurrentJobName = PlainJobName(m_use.link.ResponseText);
    if (sendFirstDeletion())
        tellDeleted();
    else
        deleteWithData();
}

// False if the logger refuses, as there is data.
bool Clearing::sendFirstDeletion()
{
    CommandExchange& exchange = m_use.exchange;
    const LoadingState& loading = m_use.loading;
    exchange.txtCharacterWindow.Clear();
    exchange.SendToLogger("/M/E");
    if (allJobs() || loading.ChosenJob == loading.CurrentJobName)
        exchange.SendToLogger("H");
    exchange.SendToLogger(allJobs() ? "DELJOB*" : quoted("DELJOB", loading.ChosenJob));
    m_use.use.waiting.WaitMs(2000);
    return !Holds(exchange.txtCharacterWindow.Text(), "not deleted - it has data");
}

// What is told rests on the answer to "CURJOB" alone: meant.
void Clearing::tellDeleted()
{
    const LanguageTables& language = m_use.use.language;
    const std::string& job = m_use.loading.ChosenJob;
    m_use.use.progress.ShowProgressText("No Data Found"); // English in every language: meant
    m_use.use.waiting.WaitMs(1000);
    m_use.use.progress.SetProgressRange(BarSteps);
    m_use.use.progress.ShowMessageForm();
    ShowStepFor(m_use, 1000, 393, " " + job + " ...");
    m_use.use.progress.FillProgress();
    if (!Passed(m_use)) {
        const std::string title = std::string(BoxTitle) + ".     "; // dots and blanks in the title: meant
        ShowBox(m_use, {language.Text(735) + " " + job, title, BoxIcon::Critical});
        return;
    }
    // In English the last word is an entry of the language file, and so stays empty: meant.
    ShowStep(m_use, 391, " " + job + " " + (language.LangActive ? "Deleted" : language.LangText(392).value_or("")));
    ShowBox(m_use,
            {language.Text(733) + " " + job + " " + language.Text(736) + ".     ", BoxTitle, BoxIcon::Information});
}

void Clearing::deleteWithData()
{
    const LanguageTables& language = m_use.use.language;
    const std::string& job = m_use.loading.ChosenJob;
    m_use.loading.JobHasData = true;
    ShowStepFor(m_use, 1000, 388);
    const std::string question =
        (allJobs() ? language.Text(724) + " " + m_use.link.LinkDescription + ". " + language.Text(725) + ".\r\r" +
                         language.Text(726)
                   : language.Text(727) + " " + job + " " + language.Text(728) + ".\r\r" + language.Text(729)) +
        ".";
    // The option is that of messages, not of load messages: meant.
    if (m_use.options.ShowMessages &&
        ShowBox(m_use, {question, BoxTitle, BoxIcon::Exclamation, BoxButtons::YesNo}) != BoxAnswer::Yes) {
        ShowBox(m_use, {language.Text(730) + ".     ", BoxTitle, BoxIcon::Information});
        return;
    }
    m_use.use.progress.SetProgressRange(BarSteps);
    m_use.use.progress.ShowMessageForm();
    ShowStepFor(m_use, 1000, 389, " " + job + " " + language.Text(390) + " ...");
    m_use.use.progress.FillProgress();
    if (!deleteData()) {
        ShowBox(m_use, {language.Text(731) + " " + job, BoxTitle, BoxIcon::Critical});
        return;
    }
    constexpr double OneJobMs = 10000;
    if (allJobs())
        SendAndWaitAfresh(m_use, "DELJOB*", ReplyTo("done"));
    else
        SendAndWaitAfresh(m_use, quoted("DELJOB", job), ReplyTo("done"), OneJobMs);
    if (!Passed(m_use)) {
        ShowBox(m_use, {language.Text(732) + " " + job, BoxTitle, BoxIcon::Critical});
        return;
    }
    ShowStep(m_use, 391, " " + job + " " + language.Text(392));
    ShowBox(m_use,
            {language.Text(733) + " " + job + " " + language.Text(734) + ".     ", BoxTitle, BoxIcon::Information});
    m_use.use.waiting.WaitMs(1000);
}

// Of all jobs the alarms go first; only the answer of the data counts: meant.
bool Clearing::deleteData()
{
    if (allJobs()) {
        SendAndWaitAfresh(m_use, "DELALARMS*", ReplyTo("deleted"));
        SendAndWaitAfresh(m_use, "DELDATA*", ReplyTo("deleted"));
    } else {
        SendAndWaitAfresh(m_use, quoted("DELDATA", m_use.loading.ChosenJob), ReplyTo("deleted"));
    }
    return Passed(m_use);
}

} // namespace harvelop
