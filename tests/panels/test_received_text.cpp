// How received text is laid out in rows, and found again.
#include "terminal/received_text.h"

#include <gtest/gtest.h>

namespace harvelop::test
{
namespace
{

using Place = ReceivedText::Place;
using Piece = ReceivedText::Piece;

ReceivedText Received(std::string_view text, std::size_t columns = 80)
{
    ReceivedText received;
    received.SetColumns(columns);
    received.Append(text);
    return received;
}

std::string RowText(const ReceivedText& text, std::size_t row)
{
    std::string all;
    for (const Piece& piece : text.PiecesOf(row))
        all += std::string(piece.column - all.size(), ' ') + piece.text;
    return all;
}

TEST(ReceivedText, AtFirstThereIsOneEmptyRow)
{
    const ReceivedText text;
    EXPECT_EQ(text.Rows(), 1u);
    EXPECT_EQ(text.Text(), "");
    EXPECT_EQ(text.PositionAt({5, 5}), 0u);
    EXPECT_EQ(text.PlaceOf(0), (Place{0, 0}));
    EXPECT_EQ(text.Next(0), 0u);
    EXPECT_EQ(text.Previous(0), 0u);
    EXPECT_TRUE(text.PiecesOf(0).empty());
}

TEST(ReceivedText, LineEndsOfEveryKindBeginARow)
{
    const ReceivedText text = Received("a\rb\nc\r\nd\n\re");
    EXPECT_EQ(text.Rows(), 6u);
    EXPECT_EQ(RowText(text, 2), "c");
    EXPECT_EQ(RowText(text, 4), "");
    EXPECT_EQ(RowText(text, 5), "e");
    EXPECT_EQ(text.Text(), "a\nb\nc\nd\n\ne");
}

TEST(ReceivedText, ALineEndThatComesInTwoPiecesIsOne)
{
    ReceivedText text = Received("a\r");
    EXPECT_EQ(text.Rows(), 2u);
    text.Append("\nb");
    EXPECT_EQ(text.Rows(), 2u);
    EXPECT_EQ(RowText(text, 1), "b");
    EXPECT_EQ(text.Text(), "a\nb");
}

TEST(ReceivedText, LongLinesGoOnInFurtherRows)
{
    ReceivedText text = Received("abcdefgh\r\nijkl", 3);
    EXPECT_EQ(text.Rows(), 5u);
    EXPECT_EQ(RowText(text, 2), "gh");
    EXPECT_EQ(RowText(text, 3), "ijk");
    EXPECT_EQ(text.Text(), "abcdefgh\nijkl");
    text.SetColumns(4);
    EXPECT_EQ(text.Rows(), 3u);
    EXPECT_EQ(RowText(text, 1), "efgh");
    text.SetColumns(0);
    EXPECT_EQ(text.Columns(), 1u);
    EXPECT_EQ(text.Rows(), 12u);
}

TEST(ReceivedText, AFullRowHoldsItsEndAndBeginsNoOther)
{
    const ReceivedText text = Received("abc\ndef", 3);
    EXPECT_EQ(text.Rows(), 2u);
    EXPECT_EQ(text.PlaceOf(3), (Place{0, 3}));
    EXPECT_EQ(text.PlaceOf(7), (Place{1, 3}));
    EXPECT_EQ(text.PositionAt({0, 3}), 3u);
    EXPECT_EQ(text.PositionAt({0, 99}), 3u);
    EXPECT_EQ(text.PositionAt({99, 99}), 7u);
}

TEST(ReceivedText, RowsAreCountedInCharactersAndCutBetweenThem)
{
    const ReceivedText text = Received("\xC3\xA4\xE2\x82\xACx\xF0\x9F\x98\x80z", 2);
    EXPECT_EQ(text.Rows(), 3u);
    EXPECT_EQ(text.PiecesOf(0), (std::vector<Piece>{{0, "\xC3\xA4"}, {1, "\xE2\x82\xAC"}}));
    EXPECT_EQ(text.PiecesOf(1), (std::vector<Piece>{{0, "x"}, {1, "\xF0\x9F\x98\x80"}}));
    EXPECT_EQ(text.PiecesOf(2), (std::vector<Piece>{{0, "z"}}));
    EXPECT_EQ(text.PlaceOf(5), (Place{1, 0}));
    EXPECT_EQ(text.Next(0), 2u);
    EXPECT_EQ(text.Next(2), 5u);
    EXPECT_EQ(text.Previous(5), 2u);
    EXPECT_EQ(text.Previous(10), 6u);
}

TEST(ReceivedText, BytesThatAreNoCharactersTakeACellEach)
{
    const ReceivedText text = Received("\xA4\xA4x\xC3y\xFF", 80);
    EXPECT_EQ(text.PiecesOf(0),
              (std::vector<Piece>{{0, "\xA4"}, {1, "\xA4"}, {2, "x"}, {3, "\xC3"}, {4, "y"}, {5, "\xFF"}}));
    EXPECT_EQ(text.Text(), "\xA4\xA4x\xC3y\xFF");
}

TEST(ReceivedText, ACharacterThatComesInPiecesIsOne)
{
    ReceivedText text = Received("a\xE2");
    text.Append("\x82");
    text.Append("\xAC"
                "b");
    EXPECT_EQ(text.PlaceOf(text.Size()), (Place{0, 3}));
    EXPECT_EQ(text.PiecesOf(0), (std::vector<Piece>{{0, "a"}, {1, "\xE2\x82\xAC"}, {2, "b"}}));
}

TEST(ReceivedText, TabsReachToTheNextMultipleOfEight)
{
    const ReceivedText text = Received("ab\tc\td\t\te", 80);
    EXPECT_EQ(text.PiecesOf(0), (std::vector<Piece>{{0, "ab"}, {8, "c"}, {16, "d"}, {32, "e"}}));
    EXPECT_EQ(text.PositionAt({0, 8}), 3u);
    EXPECT_EQ(text.Next(2), 3u);
    EXPECT_EQ(text.Previous(3), 2u);
    EXPECT_EQ(Received("ab\tcd", 5).PiecesOf(1), (std::vector<Piece>{{3, "cd"}}));
}

TEST(ReceivedText, TheCaretGoesOverLineEndsInOneStep)
{
    const ReceivedText text = Received("a\r\nb\nc");
    EXPECT_EQ(text.Next(1), 3u);
    EXPECT_EQ(text.Previous(3), 1u);
    EXPECT_EQ(text.Next(4), 5u);
    EXPECT_EQ(text.Previous(5), 4u);
    EXPECT_EQ(text.Next(6), 6u);
}

TEST(ReceivedText, WordsAndLinesAreFound)
{
    const ReceivedText text = Received("one two\tthree\r\nfour");
    EXPECT_EQ(text.WordAt(5), (ReceivedText::Range{4, 7}));
    EXPECT_EQ(text.WordAt(13), (ReceivedText::Range{8, 13}));
    EXPECT_EQ(text.LineAt(5), (ReceivedText::Range{0, 13}));
    EXPECT_EQ(text.LineAt(16), (ReceivedText::Range{15, 19}));
}

TEST(ReceivedText, ClearedItIsAsAtFirstButForItsWidth)
{
    ReceivedText text = Received("abcdef\r", 3);
    text.Clear();
    EXPECT_EQ(text.Rows(), 1u);
    EXPECT_EQ(text.Size(), 0u);
    text.Append("\nabcd");
    EXPECT_EQ(text.Rows(), 3u);
    EXPECT_EQ(text.Text(), "\nabcd");
}

// Longer than anything that is kept in one piece, and in portions that cut characters and line ends.
TEST(ReceivedText, APlaceIsFoundAgainHoweverLongTheText)
{
    std::string all;
    for (int i = 0; i < 2000; ++i)
        all += i % 7 == 0 ? "\r\n" : i % 5 == 0 ? "\t" : i % 3 == 0 ? "\xE2\x82\xAC-" : "abc";
    all += std::string(9000, 'x') + "\xC3\xA4" + std::string(5000, 'y') + "\r\n";
    std::string shown = all;
    std::erase_if(shown, [](char byte) { return byte == '\r' || byte == '\n' || byte == '\t'; });
    for (const std::size_t portion : {1u, 4095u, 4096u, 50000u}) {
        ReceivedText text;
        text.SetColumns(33);
        for (std::size_t from = 0; from < all.size(); from += portion)
            text.Append(std::string_view(all).substr(from, portion));
        ASSERT_EQ(text.Size(), all.size());
        std::string rows;
        for (std::size_t row = 0; row < text.Rows(); ++row)
            for (const Piece& piece : text.PiecesOf(row))
                rows += piece.text;
        EXPECT_EQ(rows, shown);
        for (std::size_t at = 0; at < text.Size(); at += 101) {
            const Place place = text.PlaceOf(at);
            const std::size_t position = text.PositionAt(place);
            EXPECT_EQ(text.PlaceOf(position), place) << at;
            EXPECT_EQ(text.Previous(text.Next(position)), position) << at;
        }
    }
}

} // namespace
} // namespace harvelop::test
