#include "document/filestamp.h"

#include "document/mapreader.h"

#include <QFileInfo>

namespace plotwell {

FileStamp FileStamp::of(const QString& path)
{
    const QFileInfo info(path);
    if (!info.exists())
        return {};
    return {true, info.size(), info.lastModified()};
}

void FileStamp::noteRead(const ReadResult& result)
{
    if (!known)
        return;
    stoppedAtLine = result.opened ? result.stoppedAtLine : 1;
    holdsNul = result.holdsNul;
}

bool FileStamp::changedOnDisk(const QString& path) const
{
    if (!known)
        return false;
    const FileStamp now = of(path);
    return now.known && (now.size != size || now.modified != modified);
}

} // namespace plotwell
