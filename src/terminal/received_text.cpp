#include "terminal/received_text.h"

#include <algorithm>

namespace harvelop
{

namespace
{

bool isFollower(unsigned char byte)
{
    return (byte & 0xC0U) == 0x80U;
}

// How many bytes follow the first one of a character.
int followersOf(unsigned char first)
{
    return first >= 0xF0U ? 3 : first >= 0xE0U ? 2 : first >= 0xC0U ? 1 : 0;
}

bool isPrintable(char byte)
{
    return byte >= ' ' && byte <= '~';
}

bool isBlank(char byte)
{
    return byte == ' ' || byte == '\t';
}

} // namespace

std::size_t CellCounter::Take(char byte)
{
    constexpr std::size_t TabWidth = 8;
    const auto code = static_cast<unsigned char>(byte);
    if (m_owed > 0 && isFollower(code)) {
        --m_owed;
        return 0;
    }
    m_owed = followersOf(code);
    const std::size_t added = byte == '\t' ? TabWidth - m_cells % TabWidth : 1;
    m_cells += added;
    return added;
}

void ReceivedText::Append(std::string_view text)
{
    while (!text.empty()) {
        if (m_chunks.empty() || m_chunks.back().bytes.size() == ChunkSize) {
            m_chunks.push_back({m_counter, {}});
            m_chunks.back().bytes.reserve(ChunkSize);
        }
        std::string& bytes = m_chunks.back().bytes;
        const std::string_view part = text.substr(0, ChunkSize - bytes.size());
        bytes += part;
        layOut(part);
        text.remove_prefix(part.size());
    }
}

void ReceivedText::layOut(std::string_view text)
{
    for (const char byte : text) {
        ++m_size;
        const bool secondOfTwo = m_afterCr && byte == '\n';
        m_afterCr = byte == '\r';
        if (secondOfTwo) {
            m_lines.back().start = m_size;
        } else if (byte == '\r' || byte == '\n') {
            Line& ended = m_lines.back();
            ended.cells = m_counter.Cells();
            m_counter = {};
            m_lines.push_back({m_size, 0, ended.firstRow + rowsOf(ended)});
        } else {
            m_counter.Take(byte);
        }
    }
    m_lines.back().cells = m_counter.Cells();
}

void ReceivedText::Clear()
{
    m_size = 0;
    m_chunks.clear();
    m_lines = {Line()};
    m_counter = {};
    m_afterCr = false;
}

void ReceivedText::SetColumns(std::size_t columns)
{
    columns = std::max<std::size_t>(columns, 1);
    if (columns == m_columns)
        return;
    m_columns = columns;
    std::size_t row = 0;
    for (Line& line : m_lines) {
        line.firstRow = row;
        row += rowsOf(line);
    }
}

std::size_t ReceivedText::rowsOf(const Line& line) const
{
    return line.cells <= m_columns ? 1 : (line.cells + m_columns - 1) / m_columns;
}

std::size_t ReceivedText::Rows() const
{
    return m_lines.back().firstRow + rowsOf(m_lines.back());
}

std::size_t ReceivedText::lineOf(std::size_t position) const
{
    const auto behind = std::ranges::upper_bound(m_lines, position, {}, &Line::start);
    return static_cast<std::size_t>(behind - m_lines.begin()) - 1;
}

std::size_t ReceivedText::lineOfRow(std::size_t row) const
{
    const auto behind = std::ranges::upper_bound(m_lines, row, {}, &Line::firstRow);
    return static_cast<std::size_t>(behind - m_lines.begin()) - 1;
}

// In front of its line end.
std::size_t ReceivedText::endOf(std::size_t line) const
{
    if (line + 1 == m_lines.size())
        return m_size;
    const std::size_t start = m_lines[line].start;
    const std::size_t next = m_lines[line + 1].start;
    const bool two = next - start >= 2 && at(next - 1) == '\n' && at(next - 2) == '\r';
    return next - (two ? 2 : 1);
}

std::size_t ReceivedText::cellOf(std::size_t line, std::size_t position) const
{
    std::size_t from = m_lines[line].start;
    CellCounter counter;
    const std::size_t to = std::clamp(position, from, endOf(line));
    if (const std::size_t chunk = to / ChunkSize; chunk < m_chunks.size() && chunk * ChunkSize > from) {
        from = chunk * ChunkSize;
        counter = m_chunks[chunk].before;
    }
    for (; from < to; ++from)
        counter.Take(at(from));
    return counter.Cells();
}

// The first character that stands in that cell or behind it; the line's end if there is none.
std::size_t ReceivedText::positionOf(std::size_t line, std::size_t cell) const
{
    std::size_t position = m_lines[line].start;
    const std::size_t end = endOf(line);
    CellCounter counter;
    const auto first = m_chunks.begin() + static_cast<std::ptrdiff_t>(position / ChunkSize);
    if (end / ChunkSize > position / ChunkSize) {
        const std::size_t last = std::min(end / ChunkSize, m_chunks.size() - 1);
        const auto behind = std::partition_point(first + 1, m_chunks.begin() + static_cast<std::ptrdiff_t>(last) + 1,
                                                 [cell](const Chunk& chunk) { return chunk.before.Cells() <= cell; });
        if (behind - 1 > first) {
            position = static_cast<std::size_t>(behind - 1 - m_chunks.begin()) * ChunkSize;
            counter = (behind - 1)->before;
        }
    }
    for (; position < end; ++position) {
        const bool reached = counter.Cells() >= cell;
        if (counter.Take(at(position)) > 0 && reached)
            break;
    }
    return position;
}

std::size_t ReceivedText::PositionAt(Place place) const
{
    const std::size_t row = std::min(place.row, Rows() - 1);
    const std::size_t line = lineOfRow(row);
    return positionOf(line, (row - m_lines[line].firstRow) * m_columns + std::min(place.column, m_columns));
}

ReceivedText::Place ReceivedText::PlaceOf(std::size_t position) const
{
    const std::size_t index = lineOf(position);
    const Line& line = m_lines[index];
    const std::size_t cell = cellOf(index, position);
    const std::size_t row = std::min(cell / m_columns, rowsOf(line) - 1); // the end of a full row stands in it
    return {line.firstRow + row, cell - row * m_columns};
}

std::size_t ReceivedText::Next(std::size_t position) const
{
    const std::size_t line = lineOf(position);
    if (position < endOf(line))
        return positionOf(line, cellOf(line, position) + 1);
    return line + 1 < m_lines.size() ? m_lines[line + 1].start : m_size;
}

std::size_t ReceivedText::Previous(std::size_t position) const
{
    const std::size_t line = lineOf(position);
    const std::size_t start = m_lines[line].start;
    if (position <= start)
        return line > 0 ? endOf(line - 1) : 0;
    std::size_t before = std::min(position, endOf(line) + 1) - 1;
    while (before > start && cellOf(line, before) == cellOf(line, before + 1))
        --before;
    return before;
}

ReceivedText::Range ReceivedText::WordAt(std::size_t position) const
{
    const auto [start, end] = LineAt(position);
    Range word = {std::clamp(position, start, end), std::clamp(position, start, end)};
    while (word.from > start && !isBlank(at(word.from - 1)))
        --word.from;
    while (word.to < end && !isBlank(at(word.to)))
        ++word.to;
    return word;
}

ReceivedText::Range ReceivedText::LineAt(std::size_t position) const
{
    const std::size_t line = lineOf(position);
    return {m_lines[line].start, endOf(line)};
}

std::vector<ReceivedText::Piece> ReceivedText::PiecesOf(std::size_t row) const
{
    std::vector<Piece> pieces;
    if (row >= Rows())
        return pieces;
    const std::size_t line = lineOfRow(row);
    const std::size_t firstCell = (row - m_lines[line].firstRow) * m_columns;
    const std::size_t to = positionOf(line, firstCell + m_columns);
    std::size_t from = positionOf(line, firstCell);
    std::size_t column = cellOf(line, from) - firstCell;
    bool runs = false;
    for (CellCounter counter; from < to; ++from) {
        const char byte = at(from);
        if (byte == '\t') {
            // Only the counter of the whole line knows how far it reaches.
            column = cellOf(line, from + 1) - firstCell;
            counter = {};
            runs = false;
            continue;
        }
        const bool printable = isPrintable(byte);
        const std::size_t added = counter.Take(byte);
        if (added > 0 && !(runs && printable))
            pieces.push_back({column, {}});
        pieces.back().text += byte;
        column += added;
        runs = printable;
    }
    return pieces;
}

std::string ReceivedText::Text(Range range) const
{
    std::string text;
    const std::size_t to = std::min(range.to, m_size);
    text.reserve(to - std::min(range.from, to));
    for (std::size_t position = range.from; position < to; ++position) {
        const char byte = at(position);
        const bool secondOfTwo = byte == '\n' && position > 0 && at(position - 1) == '\r';
        if (!secondOfTwo)
            text += byte == '\r' ? '\n' : byte;
    }
    return text;
}

} // namespace harvelop
