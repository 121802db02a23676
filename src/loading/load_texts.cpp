#include "loading/load_texts.h"

#include "settings/message_texts.h"

namespace harvelop
{

namespace
{

constexpr const char* Blank = "\r\r"; // a blank line in a box

// " : ", the file and the demand for an answer.
std::string fileAndDemand(const LanguageTables& language, int fileText, const std::string& file, int demandText,
                          const std::string& end)
{
    return Blank + language.Text(fileText) + " : " + Blank + file + Blank + language.Text(demandText) + end;
}

std::string kr4Caution(const LanguageTables& language, const LoadQuestion& question)
{
    std::string text = language.Text(593) + " " + question.logger + ".";
    // The translated form tells how the file must be framed; that it takes 595 twice, and never 596, is meant.
    if (language.LangActive)
        text +=
            " " + language.Text(594) + " BEGIN\"Jobname\" " + language.Text(595) + " END " + language.Text(595) + ".";
    return text + fileAndDemand(language, 597, question.file, 598, ".     ");
}

std::string memoryCaution(const LanguageTables& language, const LoadQuestion& question)
{
    // The note is an entry of the language file alone: without one it is its full stop, which is meant.
    const std::string cardNote = question.hasCard ? language.LangText(583).value_or("") + "." : "";
    return language.Text(585) + " " + question.logger + ". " + language.Text(586) + ". " + cardNote +
           fileAndDemand(language, 587, question.file, 588, ".     ");
}

std::string cardCaution(const LanguageTables& language, const LoadQuestion& question)
{
    return language.Text(589) + " " + question.logger + ". " + language.Text(590) + "." +
           fileAndDemand(language, 591, question.file, 592, ".");
}

} // namespace

std::optional<Box> CautionBox(const LanguageTables& language, const LoadQuestion& question)
{
    if (question.kr4 && question.card)
        return std::nullopt;
    const auto& text = question.kr4 ? kr4Caution : question.card ? cardCaution : memoryCaution;
    return Box{text(language, question), BoxTitle, BoxIcon::Information, BoxButtons::YesNo};
}

int RefusalText(const LoadQuestion& question)
{
    return question.kr4 ? 329 : question.card ? 328 : 327;
}

Box DataBox(const LanguageTables& language, const LoadQuestion& question, bool clearing)
{
    const int first = question.hasCard ? (clearing ? 617 : 614) : (clearing ? 611 : 608);
    const std::string begin =
        language.Text(first) + " " + question.logger + ". " + language.Text(first + 1) + ". " + Blank;
    // The last line of the most frequent case has no English words: it stays a lone full stop, which is meant.
    const std::string end = first == 608 && !language.LangActive ? " ." : language.Text(first + 2) + ".";
    return {begin + end, BoxTitle, BoxIcon::Exclamation, BoxButtons::YesNo};
}

Box LineErrorBox(const LanguageTables& language, int line, const std::string& file)
{
    return {language.Text(600) + " " + std::to_string(line) + ". " + language.Text(601) + "." + Blank +
                language.Text(602) + " : " + Blank + file,
            "", BoxIcon::Critical};
}

Box SentBox(const LanguageTables& language, const LoadQuestion& question)
{
    if (question.card)
        return {language.Text(605) + " " + question.logger + ".     ", "", BoxIcon::Information};
    return {language.Text(603) + " " + question.logger + (language.LangActive ? " " : " and started running") +
                ".     ",
            "", BoxIcon::Information};
}

std::string ChooserTitle(ChooserKind kind, const std::string& logger)
{
    const char* target = kind == ChooserKind::Flash  ? "to Flash in the "
                         : kind == ChooserKind::Card ? "to the Card in the "
                                                     : "to the ";
    return " Choose a Program to Send " + (target + logger) + " ...";
}

} // namespace harvelop
