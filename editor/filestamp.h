#pragma once

#include <QDateTime>
#include <QString>

namespace plotwell {

// What a file on disk looked like when the editor last read or wrote it, to
// tell whether another program has changed it since.
struct FileStamp {
    bool known = false;
    qint64 size = 0;
    QDateTime modified;

    // The file as it is now; not known when it does not exist.
    static FileStamp of(const QString& path);
    // The file exists and is no longer what this stamp says.
    bool changedOnDisk(const QString& path) const;
};

} // namespace plotwell
