#pragma once

#include <cstddef>
#include <ostream>
#include <string>
#include <vector>

namespace Bench {

/// Rows of text below a row of heads. The first columns stand left, the others right.
struct Grid {
    std::size_t leftColumns;
    std::vector<std::string> heads;
    std::vector<std::vector<std::string>> rows; ///< as long as `heads`
};

/// Aligned for a terminal, or as a table of Markdown.
void PrintGrid(const Grid& grid, bool isMarkdown, std::ostream& out);

} // namespace Bench
