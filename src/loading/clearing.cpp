#include "loading/clearing.h"

#include "settings/message_texts.h"

namespace harvelop
{

void Clearing::ClearPrograms()
{
    m_use.link.ResponseText = "0";
    if (IsKR4(m_use))
        clearJobs();
    else
        clearOlderPrograms();
}

void Clearing::clearOlderPrograms()
{
    const LanguageTables& language = m_use.use.language;
    const std::string logger = " " + m_use.link.LinkDescription + ".     ";
    constexpr const char* Title = "tallyCore Harvel"; // without the leading blank of the others: meant
    m_programs.FindMemoryCard();
    const std::string question = language.Text(620) + logger + "\r\r" + language.Text(621) + ".";
    if (!Confirmed(m_use, {question, BoxTitle, BoxIcon::Exclamation, BoxButtons::YesNo})) {
        m_use.use.progress.HideMessageForm();
        return;
    }
    m_use.use.progress.ShowMessageForm();
    if (!m_programs.CheckForData())
        return;
    m_use.use.waiting.WaitMs(100);
    ShowStep(m_use, 342, " ...");
    m_use.use.progress.FillProgress();
    SendAndWaitAfresh(m_use, "CALARMS CSCANS", ReplyTo("CSCANS"));
    m_use.use.waiting.WaitMs(1000);
    if (Passed(m_use))
        ShowBox(m_use, {language.Text(623) + logger, Title, BoxIcon::Information});
    else
        ShowBox(m_use, {language.Text(622) + logger, Title, BoxIcon::Critical});
}

void Clearing::ClearCardPrograms()
{
    const LanguageTables& language = m_use.use.language;
    const std::string logger = " " + m_use.link.LinkDescription + ".     ";
    const std::string question = language.Text(630) + logger + "\r\r" + language.Text(631) + ".";
    if (!Confirmed(m_use, {question, BoxTitle, BoxIcon::Exclamation, BoxButtons::YesNo})) {
        m_use.use.progress.ShowMessageForm();
        ShowStepFor(m_use, 1000, 664);
        m_use.use.progress.HideMessageForm();
        return;
    }
    m_programs.FindMemoryCard();
    if (!m_use.loading.CardPresent.Get(m_use.state.CurrentLogger)) {
        ShowBox(m_use, {language.Text(632) + logger, "", BoxIcon::Critical});
        m_use.use.progress.HideMessageForm();
        return;
    }
    ShowStep(m_use, 345, " ...");
    m_use.use.progress.FillProgress();
    m_use.exchange.SendToLogger("/E");
    m_use.use.waiting.WaitMs(1000);
    SendAndWaitAfresh(m_use, "CPROG", ReplyTo("CPROG")); // whatever comes of it: meant
    ShowBox(m_use, {language.Text(633) + ".     ", "", BoxIcon::Information});
    m_use.use.progress.HideMessageForm();
}

} // namespace harvelop
