// Any bytes as what arrives, in any pieces, between any markers: a look at each piece gives what a scan from the first
// character gives, and a comma-field reader finds what stands there.
#include "hold.h"
#include "links/get_field.h"
#include "links/naive_scan.h"

#include <algorithm>

using namespace harvelop;

namespace
{

constexpr size_t LongestText = 400; // the plain scan takes the third power of it

// One byte, and so many as it says.
std::string take(std::string& input, size_t longest)
{
    if (input.empty())
        return {};
    const size_t length = std::min(static_cast<unsigned char>(input[0]) % (longest + 1), input.size() - 1);
    const std::string taken = input.substr(1, length);
    input.erase(0, 1 + length);
    return taken;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size)
{
    std::string input(reinterpret_cast<const char*>(data), std::min(size, LongestText));
    Markers markers;
    markers.startText = take(input, 3);
    markers.endText = take(input, 3);
    const std::string counts = take(input, 2);
    markers.startCount = counts.empty() ? 1 : static_cast<signed char>(counts[0]) % 6;
    markers.endCount = counts.size() < 2 ? 1 : static_cast<signed char>(counts[1]) % 6;
    if (markers.endText.empty())
        return 0; // no dialogue waits for nothing

    ReceiveWindow window;
    ResponseScan scan(markers);
    while (!input.empty()) {
        window.Append(take(input, 16));
        const auto fast = scan.Scan(window);
        const auto plain = test::NaiveScan(window.Text(), markers);
        fuzz::Hold(fast.has_value() == plain.has_value(), "both find a reply, or none");
        if (fast) {
            fuzz::Hold(fast->start == plain->match.start && fast->end == plain->match.end, "at the same place");
            break;
        }
    }
    for (int field = -1; field < 12; ++field)
        fuzz::Hold(GetField(window.Text(), field, ",;").size() <= window.Text().size(), "a field is part of its text");
    return 0;
}
