// What almost every module works with.
#pragma once

#include "core/progress.h"
#include "core/waiting.h"
#include "platform/dialogs.h"
#include "settings/language_tables.h"

namespace harvelop
{

struct Essentials {
    Waiting& waiting;
    Progress& progress;
    Dialogs& dialogs;
    LanguageTables& language;
};

// Shows a box in place of the progress window, with an open `frmAddTallyCore` behind it.
inline BoxAnswer ShowInFront(const Essentials& use, const Box& box)
{
    use.progress.HideMessageForm();
    use.progress.ClearTopmost();
    const BoxAnswer answer = use.dialogs.Show(box);
    use.progress.SetTopmost();
    return answer;
}

} // namespace harvelop
