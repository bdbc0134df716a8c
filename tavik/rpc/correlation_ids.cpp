#include "tavik/rpc/correlation_ids.h"

#include <charconv>
#include <random>

namespace Tavik::Rpc {

namespace {

void AppendHex(std::string& text, std::uint64_t number) {
    char digits[16];
    const auto [end, error] = std::to_chars(std::begin(digits), std::end(digits), number, 16);
    text.append(digits, end);
}

} // namespace

CorrelationIds::CorrelationIds() {
    AppendHex(m_prefix, std::random_device()());
    m_prefix += '-';
}

std::string CorrelationIds::Next() {
    std::string id = m_prefix;
    AppendHex(id, m_count.fetch_add(1, std::memory_order_relaxed) + 1);
    return id;
}

} // namespace Tavik::Rpc
