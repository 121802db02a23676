#include "identify/model_table.h"

#include "core/text_lines.h"

#include <algorithm>
#include <iterator>

namespace harvelop
{

namespace
{

// The trailing blank keeps a KR400 from being taken for a KR40.
constexpr NamedModel NamedModels[] = {
    {"tallyCore 40 ", "KR40", "tallyCore 40 Version ", 27},
    {"tallyCore 41 ", "KR41", "tallyCore 41 Version ", 27},
    {"tallyCore 45 ", "KR45", "tallyCore 45 Version ", 27},
    {"tallyCore 400 ", "KR400", "tallyCore 400 Version ", 22},
};

struct Signature {
    std::string_view code;
    SignedModel stands;
};

// In the order in which they are looked for. The irregular rows are meant: they are what these loggers answer.
constexpr Signature Signatures[] = {
    {":51,4", {"KR20", "1"}},
    {":514,4", {"KR20 with a Display", "1"}},
    {":52,4", {"KR200", "1"}},
    {":526,4", {"KR200 with a XBM", "1"}},
    {":5266,4", {"KR200 with 2 XBMs", "1"}},
    {":53,4", {"KR205", "1"}},
    {":536,4", {"KR205 with a XBM", "1"}},
    {":5366,4", {"KR205 with a 2 XBMs", "1"}}, // "a 2" is meant
    {":553,4", {"KR215", "1"}},
    {":5536,4", {"KR215 with a XBM", "1"}},
    {":55366,4", {"KR215 with 2 XBMs", "1"}},
    {":524,4", {"KR300", "1"}},
    {":5246,4", {"KR300 with a XBM", "1"}},
    {":52466,4", {"KR300 with 2 XBMs", "1"}},
    {":534,4", {"KR305", "1"}},
    {":5346,4", {"KR305 with a XBM", "1"}},
    {":53466,4", {"KR305 with 2 XBMs", "1"}},
    {":5534,4", {"KR315", "1"}},
    {":55346,4", {"KR315 with a XBM", "1"}},
    {":5534664", {"KR315 with 2 XBMs", "1"}}, // without a comma

    {":51,5", {"KR20", "2"}},
    {":514,5", {"KR20 with Display", "2"}}, // without the article
    {":52,5", {"KR200", "2"}},
    {":5266,5", {"KR200 with a XBM", "2"}}, // this code and the next are exchanged
    {":526,5", {"KR200 with 2 XBMs", "2"}},
    {":53,5", {"KR205", "2"}},
    {":536,5", {"KR205 with a XBM", "2"}},
    {":5366,5", {"KR205 with 2 XBMs", "2"}},
    {":553,5", {"KR215", "2"}},
    {":5536,5", {"KR215 with a XBM", "2"}},
    {":55366,5", {"KR215 with 2 XBMs", "2"}},
    {":524,5", {"KR300", "2"}},
    {":5246,5", {"KR300 with a XBM", "2"}},
    {":52466,5", {"KR300 with 2 XBMs", "2"}},
    {":534,5", {"KR305", "2"}},
    {":5346,5", {"KR305 with a XBM", "2"}},
    {":53466,5", {"KR305 with 2 XBMs", "2"}},
    {":5534,5", {"KR315", "2"}},
    {":55346,5", {"KR315 with a XBM", "2"}},
    {":553466,5", {"KR315 with 2 XBMs", "2"}},

    {":51,7", {"KR20", "3"}},
    {":514,7", {"KR20 with a Display", "3"}},
    {":57,7", {"KR21", "3"}},
    {":574,7", {"KR21 with a Display", "3"}},
    {":59,7", {"KR23", "3"}},
    {":594,7", {"KR23 with a Display", "3"}},
    {":52,7", {"KR200", "3"}},
    {":526,7", {"KR200 with a XBM", "3"}},
    {":5266,7", {"KR200 with 2 XBMs", "3"}},
    {":53,7", {"KR205", "3"}},
    {":536,7", {"KR205 with a XBM", "3"}},
    {":5366,7", {"KR205 with 2 XBMs", "3"}},
    {":553,7", {"KR215", "3"}},
    {":5536,7", {"KR215 with a XBM", "3"}},
    {":55366,7", {"KR215 with 2 XBMs", "3"}},
    {":524,7", {"KR300", "3"}},
    {":5246,7", {"KR300 with a XBM", "3"}},
    {":52466,7", {"KR300 with 2 XBMs", "3"}},
    {":534,7", {"KR305", "3"}},
    {":5346,7", {"KR305 with a XBM", "3"}},
    {":53466,7", {"KR305 with 2 XBMs", "3"}},
    {":5534,7", {"KR315", "3"}},
    {":55346,7", {"KR315 with a XBM", "3"}},
    {":553466,7", {"KR315 with 2 XBMs", "3"}},
};
static_assert(std::size(Signatures) == 64);

} // namespace

std::optional<NamedModel> ModelByName(std::string_view reply)
{
    const auto found = std::find_if(std::begin(NamedModels), std::end(NamedModels), [reply](const NamedModel& model) {
        return HoldsIgnoringCase(reply, model.announcement);
    });
    return found == std::end(NamedModels) ? std::nullopt : std::optional(*found);
}

std::optional<SignedModel> ModelBySignature(std::string_view report)
{
    const auto found = std::find_if(std::begin(Signatures), std::end(Signatures),
                                    [report](const Signature& signature) { return Holds(report, signature.code); });
    return found == std::end(Signatures) ? std::nullopt : std::optional(found->stands);
}

} // namespace harvelop
