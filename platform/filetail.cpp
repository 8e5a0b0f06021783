#include "platform/filetail.h"

#include <QFile>
#include <QFileInfo>

namespace plotwell {
namespace {

// Not opened otherwise: opening a pipe waits until something writes to it,
// and a device such as /dev/zero never ends.
bool isReadableFile(const QFileInfo& info)
{
    return info.exists() && info.isFile();
}

} // namespace

FileTail::FileTail(const QString& path) : m_path(path)
{
    const QFileInfo info(path);
    m_missing = !isReadableFile(info);
    if (m_missing)
        return;
    m_pos = info.size();
    QFile file(path);
    if (file.open(QIODevice::ReadOnly))
        m_head = file.read(kHeadBytes);
}

bool FileTail::sameStart(QFile& file)
{
    const QByteArray head = file.read(kHeadBytes);
    if (!head.startsWith(m_head))
        return false;
    m_head = head; // a short file's start grows with it
    return true;
}

FileTail::Bytes FileTail::read(qint64 maxBytes)
{
    Bytes out;
    const QFileInfo info(m_path);
    if (!isReadableFile(info)) {
        m_missing = true;
        return out;
    }
    QFile file(m_path);
    if (!file.open(QIODevice::ReadOnly))
        return out;
    // A file seen missing, one shorter than what was read of it or one that
    // starts otherwise is another file now: read from its start.
    const qint64 size = file.size();
    if (m_missing || size < m_pos || !sameStart(file)) {
        out.restarted = true;
        m_pos = 0;
        m_missing = false;
        m_head.clear();
        file.seek(0);
        sameStart(file);
    }
    if (size == m_pos || !file.seek(m_pos))
        return out;
    out.bytes = file.read(maxBytes);
    m_pos += out.bytes.size();
    out.more = file.size() > m_pos;
    return out;
}

} // namespace plotwell
