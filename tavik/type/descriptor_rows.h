#pragma once

#include <cstddef>
#include <span>

namespace Tavik {

/// The rows of a list that ends with a row whose name is null, without that row. None for null.
template <class Row>
std::span<const Row> GetRows(const Row* rows) {
    std::size_t count = 0;
    while (rows != nullptr && rows[count].name != nullptr) {
        ++count;
    }
    return {rows, count};
}

} // namespace Tavik
