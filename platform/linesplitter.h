#pragma once

#include <QByteArray>

#include <functional>
#include <string_view>

namespace plotwell {

// Cuts bytes that arrive in pieces into lines ending in LF or CR LF. The last
// line waits, however many pieces it takes, until its line end arrives.
// A line longer than kMaxLine is dropped whole, so that a file without line
// ends (or a garbled one) holds no more than that much memory.
class LineSplitter {
public:
    static constexpr int kMaxLine = 64 * 1024;

    // Hands each line that the bytes complete to take, without its line end.
    void feed(const QByteArray& bytes, const std::function<void(std::string_view line)>& take);
    // Forgets the unfinished line.
    void reset();

private:
    QByteArray m_partial;
    bool m_skipping = false; // the unfinished line is too long: dropped up to its end
};

} // namespace plotwell
