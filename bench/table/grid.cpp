#include "bench/table/grid.h"

#include <algorithm>

namespace Bench {

namespace {

/// Characters, of which some take several bytes.
std::size_t Width(const std::string& text) {
    return static_cast<std::size_t>(std::count_if(
        text.begin(), text.end(), [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U; }));
}

std::vector<std::size_t> GetWidths(const Grid& grid) {
    std::vector<std::size_t> widths;
    for (std::size_t column = 0; column < grid.heads.size(); ++column) {
        std::size_t widest = Width(grid.heads[column]);
        for (const auto& row : grid.rows) {
            widest = std::max(widest, Width(row[column]));
        }
        widths.push_back(widest);
    }
    return widths;
}

class RowPrinter {
public:
    RowPrinter(const Grid& grid, bool isMarkdown, std::ostream& out)
        : m_widths(GetWidths(grid)), m_leftColumns(grid.leftColumns), m_isMarkdown(isMarkdown), m_out(out) {}

    void Print(const std::vector<std::string>& row) const {
        std::string line = m_isMarkdown ? "|" : "";
        for (std::size_t column = 0; column < row.size(); ++column) {
            const std::string padding(m_widths[column] - Width(row[column]), ' ');
            line += column == 0 && !m_isMarkdown ? "" : m_isMarkdown ? " " : "  ";
            line += column < m_leftColumns ? row[column] + padding : padding + row[column];
            line += m_isMarkdown ? " |" : "";
        }
        line.erase(line.find_last_not_of(' ') + 1);
        m_out << line << '\n';
    }

    void PrintRule() const {
        std::string line = m_isMarkdown ? "|" : "";
        for (std::size_t column = 0; column < m_widths.size(); ++column) {
            if (m_isMarkdown) {
                const std::string dashes(m_widths[column] + 1, '-');
                line += column < m_leftColumns ? dashes + "-|" : dashes + ":|";
            } else {
                line += std::string(m_widths[column] + (column == 0 ? 0 : 2), '-');
            }
        }
        m_out << line << '\n';
    }

private:
    std::vector<std::size_t> m_widths;
    std::size_t m_leftColumns;
    bool m_isMarkdown;
    std::ostream& m_out;
};

} // namespace

void PrintGrid(const Grid& grid, bool isMarkdown, std::ostream& out) {
    const RowPrinter printer(grid, isMarkdown, out);
    printer.Print(grid.heads);
    printer.PrintRule();
    for (const auto& row : grid.rows) {
        printer.Print(row);
    }
}

} // namespace Bench
