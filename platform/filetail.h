#pragma once

#include <QByteArray>
#include <QString>

class QFile;

namespace plotwell {

// What a program appends to a file, such as the game writing its log, read
// as it comes: only the new bytes, never the whole file (a log of a long
// play grows past 100 MB). The file is opened for each read and closed
// again, so that the writing program may delete or replace it at any time.
class FileTail {
public:
    // The most one read hands over; the rest waits for the next read.
    static constexpr qint64 kMaxRead = qint64(1) << 20;

    struct Bytes {
        QByteArray bytes;
        // The file was cut short, replaced by another or deleted and created
        // again since the last read: the bytes start at the new file's start,
        // and a line the old one left unfinished will never end. Told by the
        // file's size falling below what was read or its first bytes
        // changing, never by its time stamps: some systems (Wine among them)
        // move a file's creation time whenever it grows.
        bool restarted = false;
        // More bytes wait beyond these.
        bool more = false;
    };

    // Starts at the file's end as it is now: what it holds already is old.
    // A file that does not exist yet starts empty.
    explicit FileTail(const QString& path);

    const QString& path() const { return m_path; }
    // The bytes appended since the last read, up to maxBytes. A path that is
    // not a regular file (a folder, a pipe, a device) or cannot be read gives
    // none, and counts as missing.
    Bytes read(qint64 maxBytes = kMaxRead);

private:
    // The first bytes of the file, as far as it has been seen: another file
    // in its place starts otherwise (a game log starts with a time stamp).
    static constexpr qint64 kHeadBytes = 64;

    // Reads the file's first bytes and tells whether they are still those seen.
    bool sameStart(QFile& file);

    QString m_path;
    qint64 m_pos = 0;
    bool m_missing = false;
    QByteArray m_head;
};

} // namespace plotwell
