#include "panels/list_rules.h"

#include "core/text_lines.h"
#include "panels/table_name_rules.h"

namespace harvelop
{

namespace
{

constexpr size_t LastPosition = MaxListEntries - 1; // from 0: never filled, never shown

} // namespace

AddressList AddressesIn(std::string_view text)
{
    constexpr size_t LongestText = 5000;
    text = text.substr(0, LongestText);
    AddressList addresses;
    size_t position = 0;
    for (size_t i = 0; i < text.size() && position < LastPosition; ++i) {
        if (text[i] != '\r') {
            addresses.at(position) += text[i];
            continue;
        }
        ++position;
        if (text.substr(i + 1, 1) == "\n")
            ++i;
    }
    return addresses;
}

std::string AddressText(const AddressList& addresses)
{
    std::string text;
    for (size_t position = 0; position < LastPosition; ++position)
        if (!addresses.at(position).empty())
            text.append(addresses.at(position)).append(CrLf);
    return text;
}

std::vector<std::string> ListCaptions(std::string_view model)
{
    std::vector<std::string> captions = ScheduleCaptions(model);
    captions.insert(captions.begin(), "All Schedules");
    return captions;
}

Box DeleteAllQuestion(const LanguageTables& language)
{
    return {language.Text(247) + "     ", " " + language.Text(503), BoxIcon::Exclamation, BoxButtons::YesNo};
}

} // namespace harvelop
