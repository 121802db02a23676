#include "links/response_scan.h"
#include "naive_scan.h"

#include <gtest/gtest.h>
#include <ostream>
#include <random>

namespace harvelop
{

bool operator==(const MarkerMatch& a, const MarkerMatch& b)
{
    return a.start == b.start && a.end == b.end;
}

std::ostream& operator<<(std::ostream& out, const MarkerMatch& match)
{
    return out << "start " << match.start << " end " << match.end;
}

namespace test
{
namespace
{

std::optional<MarkerMatch> scanOnce(const std::string& text, const Markers& markers)
{
    ReceiveWindow window;
    window.Append(text);
    return ResponseScan(markers).Scan(window);
}

using Match = std::optional<MarkerMatch>;

TEST(ResponseScan, FindsTheEndBehindTheStart)
{
    EXPECT_EQ(scanOnce("xx<abc>yy", {"<", 1, ">", 1}), (Match{{2, 6}}));
    EXPECT_EQ(scanOnce(">x<abc", {"<", 1, ">", 1}), Match());
}

TEST(ResponseScan, StartCountOpensAtALaterStart)
{
    EXPECT_EQ(scanOnce("<a><b>", {"<", 2, ">", 1}), (Match{{3, 5}}));
    EXPECT_EQ(scanOnce("<a>b", {"<", 2, ">", 1}), Match());
}

TEST(ResponseScan, AStartThatRecursInTheReplyDoesNotDisturb)
{
    EXPECT_EQ(scanOnce("<a<b>", {"<", 1, ">", 1}), (Match{{0, 4}}));
}

TEST(ResponseScan, ResponseEndsAtSecondMarker)
{
    EXPECT_EQ(scanOnce("<a>b>c>", {"<", 1, ">", 2}), (Match{{0, 4}}));
}

TEST(ResponseScan, TheCountOfEndsIsCarriedOnFromStartToStart)
{
    // The first start sees one end, the second start sees the same one again and makes it two.
    EXPECT_EQ(scanOnce("<a<b>", {"<", 1, ">", 2}), (Match{{2, 4}}));
    // An end that came later belongs to the first start all the same.
    EXPECT_EQ(scanOnce("<a<b>>", {"<", 1, ">", 2}), (Match{{0, 5}}));
    EXPECT_EQ(scanOnce("<a<b>>", {"<", 1, ">", 4}), (Match{{2, 5}}));
    EXPECT_EQ(scanOnce("<a<b>>", {"<", 1, ">", 5}), Match());
}

TEST(ResponseScan, EqualMarkersMayOverlapButNeverCoincide)
{
    EXPECT_EQ(scanOnce("<<", {"<<", 1, "<<", 1}), Match());
    EXPECT_EQ(scanOnce("<<<", {"<<", 1, "<<", 1}), (Match{{0, 1}}));
    EXPECT_EQ(scanOnce("<<ab<<", {"<<", 1, "<<", 1}), (Match{{0, 4}}));
}

TEST(ResponseScan, CaseCounts)
{
    EXPECT_EQ(scanOnce("ok OK", {"", 1, "OK", 1}), (Match{{0, 3}}));
    EXPECT_EQ(scanOnce("ok ok", {"", 1, "OK", 1}), Match());
}

TEST(ResponseScan, AnEmptyStartMarkerMatchesAtEveryCharacter)
{
    EXPECT_EQ(scanOnce("", {"", 1, "a", 1}), Match());
    EXPECT_EQ(scanOnce("a", {"", 1, "a", 1}), Match());
    EXPECT_EQ(scanOnce("aa", {"", 1, "a", 1}), (Match{{0, 1}}));
    EXPECT_EQ(scanOnce("xxxa", {"", 3, "a", 1}), (Match{{2, 3}}));
}

TEST(ResponseScan, AnEmptyEndMarkerMatchesAtEveryLaterCharacter)
{
    EXPECT_EQ(scanOnce("<", {"<", 1, "", 1}), Match());
    EXPECT_EQ(scanOnce("<ab", {"<", 1, "", 1}), (Match{{0, 1}}));
    EXPECT_EQ(scanOnce("<ab", {"<", 1, "", 2}), (Match{{0, 2}}));
    EXPECT_EQ(scanOnce("", {"", 1, "", 1}), Match());
}

TEST(ResponseScan, CountsBelowOneAreOne)
{
    EXPECT_EQ(scanOnce("<a>b>", {"<", 0, ">", 0}), (Match{{0, 2}}));
    EXPECT_EQ(scanOnce("<a>b>", {"<", -3, ">", -3}), (Match{{0, 2}}));
}

TEST(ResponseScan, MarkersThatArriveInPiecesAreFound)
{
    ReceiveWindow window;
    ResponseScan scan({"BEGIN", 1, "END", 1});
    for (const char* piece : {"xBE", "G", "INab", "EN"}) {
        window.Append(piece);
        EXPECT_EQ(scan.Scan(window), Match());
    }
    window.Append("D");
    EXPECT_EQ(scan.Scan(window), (Match{{1, 8}}));
}

TEST(ResponseScan, StartsOverOnANewText)
{
    ReceiveWindow window;
    ResponseScan scan({"<", 1, ">", 1});
    window.Append("ab<cd");
    EXPECT_EQ(scan.Scan(window), Match());
    window.Clear();
    window.Append("wxyz>");
    EXPECT_EQ(scan.Scan(window), Match());
    window.Set("<123456789>");
    EXPECT_EQ(scan.Scan(window), (Match{{0, 10}}));
}

TEST(ResponseScan, BytesOfEveryValueAreCharacters)
{
    std::string text;
    for (int byte = 0; byte < 256; ++byte)
        text += static_cast<char>(byte);
    for (int byte = 0; byte < 254; ++byte) {
        const auto at = static_cast<size_t>(byte);
        const Markers markers{text.substr(at, 1), 1, text.substr(at + 1, 2), 1};
        EXPECT_EQ(scanOnce(text, markers), (Match{{at, at + 1}}));
    }
}

TEST(ResponseScan, LongMarkersAreComparedWhole)
{
    const std::string tail(64, 'a');
    const std::string text = "b" + tail + "c" + tail + "d" + tail;
    EXPECT_EQ(scanOnce(text, {"c" + tail, 1, "d" + tail, 1}), (Match{{65, 130}}));
    EXPECT_EQ(scanOnce(text, {"e" + tail, 1, "", 1}), Match());
    EXPECT_EQ(scanOnce(text, {tail, 2, tail, 1}), (Match{{66, 131}}));
    EXPECT_EQ(scanOnce(text, {text, 1, "", 1}), (Match{{0, 1}}));
    EXPECT_EQ(scanOnce(text, {text + "x", 1, "", 1}), Match());
}

TEST(ResponseScan, ALongEndMarkerLiesBehindTheStart)
{
    const std::string marker = "b" + std::string(64, 'a');
    EXPECT_EQ(scanOnce(marker, {"b", 1, marker, 1}), Match());
    EXPECT_EQ(scanOnce(marker + marker, {"b", 1, marker, 1}), (Match{{0, 65}}));
}

TEST(ResponseScan, FindsTheEndOfAFullWindowOfNearMisses)
{
    const std::string end = "<<x";
    ReceiveWindow window;
    ResponseScan scan({"<", 1, end, 1});
    const std::string piece(64, '<');
    while (window.Text().size() + piece.size() + end.size() < ReceiveWindow::OverflowLength) {
        window.Append(piece);
        ASSERT_EQ(scan.Scan(window), Match());
    }
    const size_t before = window.Text().size();
    window.Append(end);
    EXPECT_EQ(scan.Scan(window), (Match{{0, before}}));
}

class RandomScans
{
public:
    explicit RandomScans(unsigned seed) : m_random(seed) {}

    int Number(int from, int to) { return std::uniform_int_distribution<int>(from, to)(m_random); }
    std::string Text(int longest, int letters)
    {
        std::string text;
        for (int left = Number(0, longest); left > 0; --left)
            text += static_cast<char>('a' + Number(0, letters - 1));
        return text;
    }
    // Now and then markers that are longer than a machine word has bits.
    Markers SomeMarkers(int letters)
    {
        const std::string lead = Number(0, 9) == 0 ? std::string(static_cast<size_t>(Number(60, 70)), 'a') : "";
        return {lead + Text(3, letters), Number(0, 3), lead + Text(3, letters), Number(0, 3)};
    }

private:
    std::mt19937 m_random;
};

TEST(ResponseScan, NeverDiffersFromAScanFromTheFirstCharacter)
{
    RandomScans random(20);
    int matches = 0;
    int misses = 0;
    for (int round = 0; round < 30000; ++round) {
        const int letters = random.Number(1, 3);
        const Markers markers = random.SomeMarkers(letters);
        ReceiveWindow window;
        ResponseScan scan(markers);
        for (int piece = 0; piece < 8; ++piece) {
            const int what = random.Number(0, 19);
            if (what == 0)
                window.Clear();
            else if (what == 1)
                window.Set(random.Text(6, letters));
            else
                window.Append(what == 2 ? std::string(70, 'a') : random.Text(6, letters));
            // Some changes follow each other without a scan between them.
            if (random.Number(0, 3) == 0)
                continue;
            const auto wanted = NaiveScan(window.Text(), markers);
            const auto found = scan.Scan(window);
            ASSERT_EQ(found, wanted ? Match(wanted->match) : Match())
                << "'" << window.Text() << "' from '" << markers.startText << "' " << markers.startCount << " to '"
                << markers.endText << "' " << markers.endCount << " in round " << round;
            ++(found ? matches : misses);
        }
    }
    EXPECT_GT(matches, 10000);
    EXPECT_GT(misses, 10000);
}

TEST(ResponseScan, NeverDiffersForLargeCountsEither)
{
    RandomScans random(21);
    int matches = 0;
    for (int round = 0; round < 3000; ++round) {
        Markers markers = random.SomeMarkers(2);
        markers.startCount = random.Number(0, 10);
        markers.endCount = random.Number(0, 60);
        ReceiveWindow window;
        ResponseScan scan(markers);
        for (int piece = 0; piece < 8; ++piece) {
            window.Append(random.Text(6, 2));
            const auto wanted = NaiveScan(window.Text(), markers);
            ASSERT_EQ(scan.Scan(window), wanted ? Match(wanted->match) : Match());
            matches += wanted ? 1 : 0;
        }
    }
    EXPECT_GT(matches, 1000);
}

} // namespace
} // namespace test
} // namespace harvelop
