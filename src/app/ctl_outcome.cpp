#include "app/ctl_outcome.h"

namespace harvelop
{

Outcome::Outcome(GatedDialogs& dialogs) : m_dialogs(dialogs), m_before(dialogs.OnAnswered)
{
    m_dialogs.OnAnswered = [this](const Box& box, BoxAnswer answer) {
        take(box, answer);
        if (m_before)
            m_before(box, answer);
    };
}

void Outcome::take(const Box& box, BoxAnswer answer)
{
    const bool agreed = answer == BoxAnswer::Yes || answer == BoxAnswer::Ok;
    if (box.buttons == BoxButtons::Ok) {
        (box.icon == BoxIcon::Information ? m_told : m_failed) = true;
    } else if (box.icon != BoxIcon::Question) {
        m_failed = m_failed || !agreed;
    } else {
        m_unconfirmed = m_unconfirmed || !m_told;
        m_told = m_told && !agreed;
    }
}

} // namespace harvelop
