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

} // namespace harvelop
