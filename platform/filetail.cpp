#include "platform/filetail.h"

#include <QFile>
#include <QFileInfo>

namespace plotwell {
namespace {

// Not opened otherwise: opening a pipe waits until something writes to it,
// and a device such as /dev/zero never ends.
bool isReadableFile(const QFileInfo& info) { return info.exists() && info.isFile(); }

} // namespace

FileTail::FileTail(const QString& path) : m_path(path)
{
    const QFileInfo info(path);
    m_missing = !isReadableFile(info);
    if (!m_missing) {
        m_pos = info.size();
        m_born = info.birthTime();
    }
}

FileTail::Bytes FileTail::read(qint64 maxBytes)
{
    Bytes out;
    const QFileInfo info(m_path);
    if (!isReadableFile(info)) {
        m_missing = true;
        return out;
    }
    // A file seen missing, one whose creation time changed, or one shorter
    // than what was read of it is another file now: read from its start.
    const QDateTime born = info.birthTime();
    if (m_missing || born != m_born || info.size() < m_pos) {
        out.restarted = true;
        m_pos = 0;
        m_missing = false;
        m_born = born;
    }
    if (info.size() == m_pos)
        return out;
    QFile file(m_path);
    if (!file.open(QIODevice::ReadOnly) || !file.seek(m_pos))
        return out;
    out.bytes = file.read(maxBytes);
    m_pos += out.bytes.size();
    out.more = file.size() > m_pos;
    return out;
}

} // namespace plotwell
