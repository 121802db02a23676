// What the receive pane holds: a text that only grows, laid out in rows of a width that can change.
#pragma once

#include <cstddef>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

namespace harvelop
{

// Counts the cells of a row of fixed-pitch characters, byte by byte. Each UTF-8 character takes one, and so does each
// byte that is part of none; a tab reaches to the next multiple of 8.
class CellCounter
{
public:
    std::size_t Take(char byte); // how many cells it adds: none if it goes on a character
    std::size_t Cells() const { return m_cells; }

private:
    std::size_t m_cells = 0;
    int m_owed = 0; // bytes that the latest character still lacks
};

// Keeps every byte as it came. Line ends may be CR, LF or both; a line that is wider than a row goes on in further
// rows. Taking text in costs the same however much is there already, a look-up hardly more; only another width looks at
// every line once. Positions are counted in bytes from 0; rows and columns from 0.
class ReceivedText
{
public:
    struct Place {
        std::size_t row = 0;
        std::size_t column = 0;
        bool operator==(const Place&) const = default;
    };
    struct Range {
        std::size_t from = 0;
        std::size_t to = 0; // behind the last
        bool operator==(const Range&) const = default;
    };
    // What stands in one stretch of a row: printable ASCII, or one other character. Tabs are gaps.
    struct Piece {
        std::size_t column = 0;
        std::string text;
        bool operator==(const Piece&) const = default;
    };

    void Append(std::string_view text);
    void Clear(); // the width stays

    std::size_t Columns() const { return m_columns; }
    void SetColumns(std::size_t columns); // of a row; at least 1

    std::size_t Size() const { return m_size; } // bytes
    std::size_t Rows() const;                   // at least 1

    // Between positions and places. A column behind a row's last character stands for its end, a row behind the last
    // for the last.
    std::size_t PositionAt(Place place) const;
    Place PlaceOf(std::size_t position) const;

    // One character on; a line end counts as one.
    std::size_t Next(std::size_t position) const;
    std::size_t Previous(std::size_t position) const;

    Range WordAt(std::size_t position) const; // what stands between blanks
    Range LineAt(std::size_t position) const; // without its end

    std::vector<Piece> PiecesOf(std::size_t row) const;

    // The text of a range; every line end is LF.
    std::string Text(Range range) const;
    std::string Text() const { return Text({0, m_size}); }

private:
    struct Line {
        std::size_t start = 0;
        std::size_t cells = 0;
        std::size_t firstRow = 0;
    };
    struct Chunk {
        CellCounter before; // the cells of the chunk's first line that stand in front of it
        std::string bytes;
    };
    static constexpr std::size_t ChunkSize = 4096;

    void layOut(std::string_view text);
    std::size_t rowsOf(const Line& line) const;
    std::size_t lineOf(std::size_t position) const;
    std::size_t lineOfRow(std::size_t row) const;
    std::size_t endOf(std::size_t line) const;
    std::size_t cellOf(std::size_t line, std::size_t position) const;
    std::size_t positionOf(std::size_t line, std::size_t cell) const;
    char at(std::size_t position) const { return m_chunks[position / ChunkSize].bytes[position % ChunkSize]; }

    std::size_t m_columns = 80;
    std::size_t m_size = 0;
    std::deque<Chunk> m_chunks;
    std::deque<Line> m_lines = {Line()};
    CellCounter m_counter; // of the last line
    bool m_afterCr = false;
};

} // namespace harvelop
