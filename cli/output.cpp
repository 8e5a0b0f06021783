#include "cli/output.h"

#include "cli/mapcommands.h"

namespace plotwell::cli {

void printLine(std::FILE* out, const QString& text)
{
    const QByteArray bytes = text.toLocal8Bit();
    std::fwrite(bytes.constData(), 1, std::size_t(bytes.size()), out);
    std::fputc('\n', out);
}

QString readSummary(const QString& path, const ReadResult& result)
{
    QString line = QStringLiteral("%1: %2 lines, %3 labels")
                       .arg(path)
                       .arg(qulonglong(result.linesAdded))
                       .arg(qulonglong(result.labelsAdded));
    if (result.stoppedAtLine != 0) {
        line += QStringLiteral(", stopped at line %1: %2")
                    .arg(qulonglong(result.stoppedAtLine))
                    .arg(QString::fromStdString(result.reason));
    }
    if (result.holdsNul)
        line += QStringLiteral(", holds NUL bytes (not a text file)");
    return line;
}

bool readCleanly(const ReadResult& result)
{
    return result.complete() && !result.holdsNul;
}

std::optional<ReadResult> readReported(const QString& path, MapDocument& doc, std::FILE* out)
{
    ReadResult result = readMapFile(path, doc, kLayer, kScale);
    if (result.opened)
        return result;
    printLine(out, QStringLiteral("%1: cannot be opened: %2").arg(path, result.openError));
    return std::nullopt;
}

} // namespace plotwell::cli
