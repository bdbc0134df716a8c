#include "tavik/value/text_buffer.h"

namespace Tavik {

void TextBuffer::Grow(std::size_t count) {
    // Strings fill what they grow by, so spare room is taken in pieces that stay in the cache. How much is
    // allocated is the string's matter, which doubles it; a short text may need no more than it has.
    constexpr std::size_t kLeast = 256;
    constexpr std::size_t kMost = 4096;
    const auto written = static_cast<std::size_t>(m_next - m_out.data());
    const std::size_t needed = written + count;
    const std::size_t wanted = needed + std::clamp(written, kLeast, kMost);
    m_out.resize(needed <= m_out.capacity() ? std::min(wanted, m_out.capacity()) : wanted);
    m_next = m_out.data() + written;
    m_end = m_out.data() + m_out.size();
}

} // namespace Tavik
