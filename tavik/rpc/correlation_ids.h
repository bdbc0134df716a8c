#pragma once

#include <atomic>
#include <cstdint>
#include <string>

namespace Tavik::Rpc {

/// Correlation identifiers: unlike in every process, and cheap. From any thread.
class CorrelationIds {
public:
    CorrelationIds();
    std::string Next();

private:
    std::string m_prefix;
    std::atomic<std::uint64_t> m_count = 0;
};

} // namespace Tavik::Rpc
