#include "identify/model_set_up.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace harvelop
{

namespace
{

constexpr ModelLook Looks[] = {
    {"KR20", 1, false},  {"KR21", 9, false},  {"KR23", 11, false}, {"KR200", 2, false}, {"KR205", 3, false},
    {"KR215", 4, false}, {"KR300", 5, false}, {"KR305", 6, false}, {"KR315", 7, false}, {"KR40", 12, true},
    {"KR41", 13, true},  {"KR45", 14, true},  {"KR400", 8, true},
};

// Models whose key is one character shorter than that of all others.
constexpr std::array<std::string_view, 3> ShortModels = {"KR20 ", "KR21 ", "KR23 "};
constexpr size_t ShortKey = 4;
constexpr size_t LongKey = 5;

} // namespace

std::string ModelKey(std::string_view model)
{
    const bool isShort = std::any_of(ShortModels.begin(), ShortModels.end(),
                                     [model](std::string_view start) { return model.starts_with(start); });
    return std::string(model.substr(0, isShort ? ShortKey : LongKey));
}

std::optional<ModelLook> LookOf(std::string_view model)
{
    const std::string key = ModelKey(model);
    const auto found =
        std::find_if(std::begin(Looks), std::end(Looks), [&key](const ModelLook& look) { return look.key == key; });
    return found == std::end(Looks) ? std::nullopt : std::optional(*found);
}

} // namespace harvelop
