#include "app/ctl_language.h"

#include "app/ctl_commands.h"

namespace harvelop
{

int WriteLanguageTemplate(std::ostream&)
{
    return CtlFailed;
}

int CheckLanguageFile(Program&, Console&, const CtlCommand&, std::ostream&)
{
    return CtlFailed;
}

} // namespace harvelop
