// The program area of flash memory.
#include "loading/clearing.h"
#include "settings/message_texts.h"

namespace harvelop
{

namespace
{

constexpr const char* FlashTitle = " Harvel";
constexpr double StepMs = 500;

} // namespace

void Clearing::ClearFlash()
{
    const bool kr4 = IsKR4(m_use);
    if (!flashConfirmed(kr4))
        return;
    m_use.use.progress.ShowMessageForm();
    if (kr4)
        eraseKR4Flash();
    else
        eraseOlderFlash();
    tellFlashErased();
}

bool Clearing::flashConfirmed(bool kr4)
{
    const LanguageTables& language = m_use.use.language;
    const std::string& logger = m_use.link.LinkDescription;
    if (kr4)
        return Confirmed(
            m_use, {language.Text(637) + " " + logger + ". " + language.Text(638) + ". \r\r" + language.Text(639) + ".",
                    FlashTitle, BoxIcon::Exclamation, BoxButtons::YesNo});
    const bool translated = language.LangActive; // then the blank stands elsewhere: meant
    if (Confirmed(m_use, {language.Text(634) + " " + logger + (translated ? "." : ". ") + language.Text(635) +
                              (translated ? ". " : ".") + "\r\r" + language.Text(636) + ".",
                          BoxTitle, BoxIcon::Exclamation, BoxButtons::YesNo}))
        return true;
    m_use.use.progress.ShowMessageForm();
    ShowStepFor(m_use, 1000, 663);
    return false;
}

// At its next reset, which it is left to: meant.
void Clearing::eraseKR4Flash()
{
    ShowStep(m_use, 350, " ...");
    m_use.use.progress.FillProgress();
    SendAndWaitAfresh(m_use, "DELONRESET", ReplyTo("DELONRESET"));
    SendAndWaitAfresh(m_use, "DELFLASHONRESET", ReplyTo("DELFLASHONRESET"));
}

// In the bootstrap monitor, each step after the former one has passed.
void Clearing::eraseOlderFlash()
{
    Progress& progress = m_use.use.progress;
    m_use.link.DefaultTimeout = 4000; // and stays so after a failure: meant
    progress.SetProgressRange(11);
    ShowStep(m_use, 346, " ...");
    m_use.link.ResponseStatus.clear();
    m_use.exchange.SendToLogger("H");
    m_use.use.waiting.WaitMs(3000);
    progress.StepProgress(2);
    SendAndWaitAfresh(m_use, Bootstrap, ReplyTo("Bootstrap mode", 2));
    if (!Passed(m_use))
        return;
    m_use.use.waiting.WaitMs(StepMs);
    progress.StepProgress(2);
    SendAndWaitAfresh(m_use, "EF 60000,1", {"Erasing FLASH memory", 1, "Erase successful", 1});
    if (!Passed(m_use))
        return;
    ShowStepFor(m_use, StepMs, 347);
    progress.StepProgress(2);
    ShowStepFor(m_use, StepMs, 348, " ...");
    progress.StepProgress(2);
    SendAndWaitAfresh(m_use, "J", {"Tallycore", 1, "Done.\r", 1});
    if (!Passed(m_use))
        return;
    ShowStep(m_use, 349);
    progress.StepProgress(2);
    m_use.use.waiting.WaitMs(StepMs);
    progress.ResetProgress();
    m_use.use.waiting.WaitMs(StepMs);
    m_use.link.DefaultTimeout = 2000;
}

void Clearing::tellFlashErased()
{
    const LanguageTables& language = m_use.use.language;
    const std::string logger = " " + m_use.link.LinkDescription + ".     ";
    if (Passed(m_use)) {
        ShowBox(m_use, {language.Text(640) + logger, FlashTitle, BoxIcon::Information});
    } else {
        m_use.exchange.SendToLogger("J"); // resets it out of the bootstrap monitor
        m_use.use.waiting.WaitMs(1000);
        ShowBox(m_use, {language.Text(641) + logger + "\r\r", FlashTitle, BoxIcon::Critical});
    }
    m_use.use.progress.HideMessageForm();
}

} // namespace harvelop
