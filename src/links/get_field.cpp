#include "links/get_field.h"

namespace harvelop
{

std::string GetField(std::string_view record, int fieldNumber, std::string_view delimiters)
{
    constexpr size_t MaxRecord = 10000;
    constexpr int MaxField = 500;
    if (record.empty() || record.size() > MaxRecord || fieldNumber < 1 || fieldNumber > MaxField)
        return {};
    if (delimiters.empty())
        delimiters = ",";
    for (int i = 1; i < fieldNumber; ++i) {
        const size_t end = record.find_first_of(delimiters);
        if (end == std::string_view::npos)
            return {};
        record.remove_prefix(end + 1);
    }
    return std::string(record.substr(0, record.find_first_of(delimiters)));
}

} // namespace harvelop
