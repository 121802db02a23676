#include "panels/run_rules.h"

#include "core/text_lines.h"

#include <algorithm>
#include <iterator>

namespace harvelop
{

std::string WithoutLineEnds(std::string_view command)
{
    std::string line;
    std::copy_if(command.begin(), command.end(), std::back_inserter(line), [](char c) {
        return !Holds(CrLf, {&c, 1});
    });
    return line;
}

std::string_view WhyNotStored(std::string_view text)
{
    if (Holds(text, ","))
        return "A comma can't be stored here.";
    if (text.find_first_of(CrLf) != std::string_view::npos)
        return "A line end can't be stored here.";
    return {};
}

} // namespace harvelop
