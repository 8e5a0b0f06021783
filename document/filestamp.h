#pragma once

#include <QDateTime>
#include <QString>

#include <cstddef>

namespace plotwell {

struct ReadResult;

// What a file on disk looked like when the editor last read or wrote it, and
// how much of it the editor holds: saving over a file that another program
// has changed since, or that the editor read only in part, would lose what
// the editor never saw.
struct FileStamp {
    bool known = false;
    qint64 size = 0;
    QDateTime modified;
    // The text line (from 1) where reading stopped, the editor holding only
    // the records before it; 0 when the file was read to its end.
    std::size_t stoppedAtLine = 0;
    // The file held NUL bytes: most likely not a map text file at all.
    bool holdsNul = false;

    // The file as it is now; not known when it does not exist.
    static FileStamp of(const QString& path);
    // Takes note of how a read of the file ended. A file that exists and
    // could not be read at all stopped at its first line.
    void noteRead(const ReadResult& result);
    // The file exists and is no longer what this stamp says.
    bool changedOnDisk(const QString& path) const;
    // The editor holds all that the file held, as far as it knows.
    bool readWhole() const { return stoppedAtLine == 0 && !holdsNul; }

    friend bool operator==(const FileStamp& a, const FileStamp& b)
    {
        return a.known == b.known && a.size == b.size && a.modified == b.modified && a.stoppedAtLine == b.stoppedAtLine
            && a.holdsNul == b.holdsNul;
    }
    friend bool operator!=(const FileStamp& a, const FileStamp& b) { return !(a == b); }
};

} // namespace plotwell
