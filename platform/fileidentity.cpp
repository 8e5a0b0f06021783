#include "platform/fileidentity.h"

#include <QFile>
#include <QFileInfo>

#if defined(Q_OS_UNIX)
#include <sys/stat.h>
#endif

namespace plotwell {

bool sameFileOnDisk(const QString& a, const QString& b)
{
#if defined(Q_OS_UNIX)
    // A file is its device and inode, whatever names lead to it.
    struct stat first {};
    struct stat second {};
    if (stat(QFile::encodeName(a).constData(), &first) != 0 || stat(QFile::encodeName(b).constData(), &second) != 0)
        return false;
    return first.st_dev == second.st_dev && first.st_ino == second.st_ino;
#else
    // Where there is no inode, the paths with every link resolved stand in
    // for it: a hard link then goes unnoticed.
    const QString canonical = QFileInfo(a).canonicalFilePath();
    return !canonical.isEmpty() && canonical == QFileInfo(b).canonicalFilePath();
#endif
}

} // namespace plotwell
