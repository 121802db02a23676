#include "settings/message_texts.h"

#include "settings/message_boxes.h"
#include "settings/message_captions.h"
#include "settings/message_panel_captions.h"
#include "settings/message_steps.h"

#include <algorithm>
#include <array>
#include <span>

namespace harvelop
{

namespace
{

// In the order of their numbers.
constexpr std::array<std::span<const MessageText>, 4> Tables = {CaptionTexts, StepTexts, BoxTexts, PanelTexts};

// Strictly rising through all of them: sorted, and no number twice.
constexpr bool sorted()
{
    int last = 0;
    for (const auto& table : Tables)
        for (const MessageText& text : table) {
            if (text.number <= last)
                return false;
            last = text.number;
        }
    return last <= 1000;
}
static_assert(sorted(), "the texts are looked up by binary search: keep them sorted by number, from 1 to 1000");

} // namespace

std::string_view EnglishText(int number)
{
    for (const auto& table : Tables) {
        const auto found = std::ranges::lower_bound(table, number, {}, &MessageText::number);
        if (found != table.end())
            return found->number == number ? found->english : std::string_view();
    }
    return {};
}

std::vector<int> TextNumbers()
{
    std::vector<int> numbers;
    for (const auto& table : Tables)
        for (const MessageText& text : table)
            numbers.push_back(text.number);
    return numbers;
}

} // namespace harvelop
