#include "platform/linesplitter.h"

namespace plotwell {

void LineSplitter::feed(const QByteArray& bytes, const std::function<void(std::string_view line)>& take)
{
    qsizetype start = 0;
    while (start < bytes.size()) {
        const qsizetype end = bytes.indexOf('\n', start);
        const qsizetype stop = end < 0 ? bytes.size() : end;
        if (!m_skipping) {
            if (m_partial.size() + (stop - start) > kMaxLine) {
                m_partial.clear();
                m_skipping = true;
            } else {
                m_partial.append(bytes.constData() + start, stop - start);
            }
        }
        if (end < 0)
            return;
        if (!m_skipping) {
            std::string_view line(m_partial.constData(), std::size_t(m_partial.size()));
            if (!line.empty() && line.back() == '\r')
                line.remove_suffix(1);
            take(line);
        }
        m_partial.clear();
        m_skipping = false;
        start = end + 1;
    }
}

void LineSplitter::reset()
{
    m_partial.clear();
    m_skipping = false;
}

} // namespace plotwell
