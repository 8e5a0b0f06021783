#include "cli/mapcommands.h"

#include "cli/output.h"
#include "document/mapdocument.h"
#include "document/mapreader.h"
#include "document/mapwriter.h"
#include "platform/fileidentity.h"

#include <QFileInfo>

namespace plotwell::cli {
namespace {

// A file whose owner may not write it is kept from changes on purpose. Root
// may replace it all the same, and the new file would be writable, so it is
// refused whoever runs the tool.
bool readOnly(const QString& path)
{
    const QFileInfo info(path);
    return info.exists() && !info.permission(QFileDevice::WriteOwner);
}

} // namespace

int checkFiles(const QStringList& paths, std::FILE* out)
{
    int status = kOk;
    for (const QString& path : paths) {
        MapDocument doc;
        const auto result = readReported(path, doc, out);
        if (result)
            printLine(out, readSummary(path, *result));
        if (!result || !readCleanly(*result))
            status = kFailed;
    }
    std::fflush(out);
    return status;
}

int normalizeFile(const QString& in, const QString& out, std::FILE* err)
{
    MapDocument doc;
    const auto result = readReported(in, doc, err);
    if (!result)
        return kFailed;
    const ReadResult& read = *result;
    if (read.holdsNul) {
        // Most likely not a map at all: writing it would keep only its records.
        printLine(err, readSummary(in, read));
        printLine(err, QStringLiteral("%1: not written, since %2 does not look like a map text file").arg(out, in));
        return kFailed;
    }
    if (read.stoppedAtLine != 0) {
        printLine(err, readSummary(in, read));
        // Writing back over the input would lose the lines that were never read.
        if (sameFileOnDisk(in, out)) {
            printLine(err, QStringLiteral("%1: not rewritten, so the unread lines are kept").arg(out));
            return kFailed;
        }
    }
    if (readOnly(out)) {
        printLine(err, QStringLiteral("%1: not replaced, since it is read-only").arg(out));
        return kFailed;
    }
    const WriteResult written = writeLayerFile(out, doc, kLayer);
    if (!written.ok()) {
        printLine(err, QStringLiteral("%1: cannot be written: %2").arg(out, written.error));
        return kFailed;
    }
    return read.stoppedAtLine != 0 ? kFailed : kOk;
}

} // namespace plotwell::cli
