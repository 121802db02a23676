#include "app/ctl_language.h"

#include "app/ctl_check.h"
#include "app/ctl_commands.h"
#include "app/ctl_json.h"
#include "settings/language_check.h"
#include "settings/language_template.h"

namespace harvelop
{

int WriteLanguageTemplate(std::ostream& out)
{
    out << LanguageTemplate();
    return CtlDone;
}

int CheckLanguageFile(Program& program, Console& console, const CtlCommand& command, std::ostream& out)
{
    const FileText file = program.files.Read(command.file);
    if (file.state != FileState::Read) {
        console.Line(file.state == FileState::NotFound ? "There is no file " + command.file + "."
                                                       : "The file " + command.file + " can't be read.");
        return CtlFailed;
    }
    const auto findings = CheckLanguage(file.text);
    if (command.json) {
        ordered_json all = ordered_json::array();
        for (const LanguageFinding& finding : findings)
            all.push_back({{"file", command.file}, {"line", finding.line}, {"text", finding.text}});
        out << JsonText(all);
    } else {
        for (const LanguageFinding& finding : findings)
            out << FindingLine(command.file, finding.line, finding.text);
    }
    return findings.empty() ? CtlDone : CtlFailed;
}

} // namespace harvelop
