#pragma once

#include <QByteArray>
#include <QIODevice>

#include <algorithm>
#include <cstring>

namespace plotwell::test {

// A sequential device that hands out head, then `fill` copies of one byte,
// then tail, at most `step` bytes a read, without holding the filler. It
// remembers the most bytes any read asked for: the reader asks for the room
// left in its buffer, so that is how large the buffer grew. After the tail
// it fails instead of ending when told to.
class GeneratedDevice : public QIODevice {
public:
    GeneratedDevice(QByteArray head, qint64 fill, char byte, QByteArray tail, qint64 step = qint64(1) << 40)
        : m_head(std::move(head)), m_fill(fill), m_byte(byte), m_tail(std::move(tail)), m_step(step)
    {
        open(ReadOnly | Unbuffered);
    }
    bool isSequential() const override { return true; }
    qint64 largestRead() const { return m_largestRead; }
    void failAtEnd() { m_failAtEnd = true; }

protected:
    qint64 readData(char* out, qint64 max) override
    {
        m_largestRead = std::max(m_largestRead, max);
        max = std::min(max, m_step);
        qint64 n = 0;
        n += copy(out, max, m_head, 0);
        if (n < max && m_at >= m_head.size() && m_at < m_head.size() + m_fill) {
            const qint64 k = std::min(max - n, m_head.size() + m_fill - m_at);
            std::memset(out + n, m_byte, std::size_t(k));
            m_at += k;
            n += k;
        }
        n += copy(out + n, max - n, m_tail, m_head.size() + m_fill);
        if (n == 0 && m_failAtEnd) {
            setErrorString(QStringLiteral("Input/output error"));
            return -1;
        }
        return n;
    }
    qint64 writeData(const char*, qint64) override { return -1; }

private:
    // Copies from part, which starts at offset from in the whole stream.
    qint64 copy(char* out, qint64 max, const QByteArray& part, qint64 from)
    {
        if (m_at < from || m_at >= from + part.size())
            return 0;
        const qint64 k = std::min(max, from + part.size() - m_at);
        std::memcpy(out, part.constData() + (m_at - from), std::size_t(k));
        m_at += k;
        return k;
    }

    QByteArray m_head;
    qint64 m_fill;
    char m_byte;
    QByteArray m_tail;
    qint64 m_step;
    qint64 m_at = 0;
    qint64 m_largestRead = 0;
    bool m_failAtEnd = false;
};

} // namespace plotwell::test
