#include "cli/mapcommands.h"

#include "document/mapdocument.h"
#include "document/mapreader.h"
#include "document/mapwriter.h"

#include <QFileInfo>

namespace plotwell::cli {
namespace {

// The editor loads a file into a layer at the scale of the moment; layer 0 at
// scale 1 gives the same records as any other, since neither is written.
constexpr std::int16_t kLayer = 0;
constexpr float kScale = 1;

void printLine(std::FILE* out, const QString& text)
{
    const QByteArray bytes = text.toLocal8Bit();
    std::fwrite(bytes.constData(), 1, std::size_t(bytes.size()), out);
    std::fputc('\n', out);
}

QString stopText(const ReadResult& result)
{
    return QStringLiteral("stopped at line %1: %2")
        .arg(qulonglong(result.stoppedAtLine))
        .arg(QString::fromStdString(result.reason));
}

bool sameFile(const QString& a, const QString& b)
{
    const QString canonical = QFileInfo(a).canonicalFilePath();
    return !canonical.isEmpty() && canonical == QFileInfo(b).canonicalFilePath();
}

} // namespace

int checkFiles(const QStringList& paths, std::FILE* out)
{
    int status = kOk;
    for (const QString& path : paths) {
        MapDocument doc;
        const ReadResult result = readMapFile(path, doc, kLayer, kScale);
        if (!result.opened) {
            printLine(out, QStringLiteral("%1: cannot be opened: %2").arg(path, result.openError));
            status = kFailed;
            continue;
        }
        QString line = QStringLiteral("%1: %2 lines, %3 labels")
                           .arg(path)
                           .arg(qulonglong(result.linesAdded))
                           .arg(qulonglong(result.labelsAdded));
        if (result.stoppedAtLine != 0) {
            line += QStringLiteral(", ") + stopText(result);
            status = kFailed;
        }
        printLine(out, line);
    }
    std::fflush(out);
    return status;
}

int normalizeFile(const QString& in, const QString& out, std::FILE* err)
{
    MapDocument doc;
    const ReadResult read = readMapFile(in, doc, kLayer, kScale);
    if (!read.opened) {
        printLine(err, QStringLiteral("%1: cannot be opened: %2").arg(in, read.openError));
        return kFailed;
    }
    if (read.stoppedAtLine != 0) {
        printLine(err, QStringLiteral("%1: %2").arg(in, stopText(read)));
        // Writing back over the input would lose the lines that were never read.
        if (sameFile(in, out)) {
            printLine(err, QStringLiteral("%1: not rewritten, so the unread lines are kept").arg(out));
            return kFailed;
        }
    }
    const WriteResult written = writeLayerFile(out, doc, kLayer);
    if (!written.ok()) {
        printLine(err, QStringLiteral("%1: cannot be written: %2").arg(out, written.error));
        return kFailed;
    }
    return read.stoppedAtLine != 0 ? kFailed : kOk;
}

} // namespace plotwell::cli
