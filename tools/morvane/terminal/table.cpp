#include "tools/morvane/terminal/table.h"

#include <algorithm>

namespace Tool {

namespace {

constexpr std::size_t kGap = 2;
/// A last column with less room than this goes below the row.
constexpr std::size_t kLeastTextWidth = 28;
constexpr std::size_t kHangingIndent = 4;

void TrimRight(std::string& line) {
    line.erase(line.find_last_not_of(' ') + 1);
}

/// The widths of the columns and how the last one is laid out.
struct Layout {
    std::size_t indent;
    std::vector<std::size_t> widths;
    std::size_t textStart; ///< where the last column begins
    std::size_t textWidth;
    bool textBelow;
};

void PrintRow(
    Output& output, const Layout& layout, const std::vector<Column>& columns, const std::vector<Cell>& row) {
    const std::size_t last = columns.size() - 1;
    std::string line(layout.indent, ' ');
    for (std::size_t i = 0; i < last; ++i) {
        const Cell& cell = row[i];
        const std::string fill(layout.widths[i] - GetDisplayWidth(cell.text), ' ');
        const std::string text = output.Paint(cell.style, cell.text);
        line += columns[i].align == Align::Right ? fill + text : text + fill;
        line.append(kGap, ' ');
    }
    const Cell& text = row[last];
    std::vector<std::string> lines = Wrap(text.text, layout.textWidth);
    if (!layout.textBelow && !lines.empty()) {
        line += output.Paint(text.style, lines.front());
        lines.erase(lines.begin());
    }
    TrimRight(line);
    output.WriteLine(line);
    for (const std::string& more : lines) {
        output.WriteLine(std::string(layout.textStart, ' ') + output.Paint(text.style, more));
    }
}

} // namespace

std::vector<std::string> Wrap(std::string_view text, std::size_t width) {
    std::vector<std::string> lines;
    std::size_t position = 0;
    while ((position = text.find_first_not_of(" \n", position)) != std::string_view::npos) {
        const std::size_t end = std::min(text.find_first_of(" \n", position), text.size());
        const std::string_view word = text.substr(position, end - position);
        position = end;
        if (!lines.empty() && GetDisplayWidth(lines.back()) + 1 + GetDisplayWidth(word) <= width) {
            lines.back() += ' ';
            lines.back() += word;
        } else {
            lines.emplace_back(word);
        }
    }
    return lines;
}

Table::Table(std::vector<Column> columns) : m_columns(std::move(columns)) {}

void Table::AddRow(std::vector<Cell> cells) {
    m_rows.push_back(std::move(cells));
}

void Table::Print(Output& output, std::size_t indent) const {
    Layout layout{indent, {}, indent, Output::kUnlimited, false};
    const std::size_t last = m_columns.size() - 1;
    for (std::size_t i = 0; i < m_columns.size(); ++i) {
        std::size_t width = GetDisplayWidth(m_columns[i].title);
        for (const auto& row : m_rows) {
            width = std::max(width, GetDisplayWidth(row[i].text));
        }
        layout.widths.push_back(width);
        layout.textStart += i < last ? width + kGap : 0;
    }
    if (output.GetWidth() != Output::kUnlimited
        && layout.textStart + layout.widths[last] > output.GetWidth()) {
        layout.textBelow = layout.textStart + kLeastTextWidth > output.GetWidth();
        if (layout.textBelow) {
            layout.textStart = indent + kHangingIndent;
        }
        layout.textWidth = output.GetWidth() - std::min(output.GetWidth() - 1, layout.textStart);
    }
    std::vector<Cell> titles;
    for (const Column& column : m_columns) {
        titles.emplace_back(column.title, Style::Faint);
    }
    if (layout.textBelow) {
        titles.back().text.clear();
    }
    PrintRow(output, layout, m_columns, titles);
    for (const auto& row : m_rows) {
        PrintRow(output, layout, m_columns, row);
    }
}

} // namespace Tool
