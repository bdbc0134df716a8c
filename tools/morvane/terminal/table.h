#pragma once

#include "tools/morvane/terminal/display_width.h"
#include "tools/morvane/terminal/output.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Tool {

/// The lines of a text that is broken between words; a word longer than `width` stays whole.
std::vector<std::string> Wrap(std::string_view text, std::size_t width);

struct Cell {
    Cell(std::string cellText, Style cellStyle = Style::Plain)
        : text(std::move(cellText)), style(cellStyle) {}

    Cell(const char* cellText, Style cellStyle = Style::Plain) : text(cellText), style(cellStyle) {}

    std::string text;
    Style style;
};

enum class Align { Left, Right };

struct Column {
    const char* title;
    Align align = Align::Left;
};

/// Rows under a heading, as wide as their longest cells. The last column is broken into lines at a terminal;
/// where it has no room at all it goes below the row.
class Table {
public:
    explicit Table(std::vector<Column> columns);

    /// Adds a row with one cell a column.
    void AddRow(std::vector<Cell> cells);

    bool IsEmpty() const { return m_rows.empty(); }

    /// Writes the table with `indent` spaces in front of every line.
    void Print(Output& output, std::size_t indent = 0) const;

private:
    std::vector<Column> m_columns;
    std::vector<std::vector<Cell>> m_rows;
};

} // namespace Tool
