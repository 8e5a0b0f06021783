#include "editor/recoverycopies.h"

#include "document/mapwriter.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLockFile>
#include <QSaveFile>

namespace plotwell {
namespace {

QString recordsName(int layer)
{
    return QStringLiteral("layer%1.txt").arg(layer);
}
QString aboutName(int layer)
{
    return QStringLiteral("layer%1.json").arg(layer);
}

QByteArray aboutText(std::int16_t layer, const QString& file, const FileStamp& stamp)
{
    QJsonObject about{{QStringLiteral("layer"), layer}, {QStringLiteral("file"), file}};
    if (stamp.known) {
        about.insert(QStringLiteral("fileSize"), double(stamp.size));
        about.insert(QStringLiteral("fileModified"), stamp.modified.toUTC().toString(Qt::ISODateWithMs));
        about.insert(QStringLiteral("stoppedAtLine"), double(stamp.stoppedAtLine));
        about.insert(QStringLiteral("holdsNul"), stamp.holdsNul);
    }
    return QJsonDocument(about).toJson();
}

} // namespace

RecoveryFolder::RecoveryFolder(QString path, std::unique_ptr<QLockFile> lock)
    : m_path(std::move(path)), m_lock(std::move(lock))
{
}

RecoveryFolder::~RecoveryFolder() = default;

std::unique_ptr<RecoveryFolder> RecoveryFolder::claim(const QString& path)
{
    auto lock = std::make_unique<QLockFile>(path + QStringLiteral(".lock"));
    // A lock is stale only when the program that took it no longer runs,
    // however long ago it was taken.
    lock->setStaleLockTime(0);
    if (!lock->tryLock(0))
        return nullptr;
    return std::unique_ptr<RecoveryFolder>(new RecoveryFolder(path, std::move(lock)));
}

bool RecoveryFolder::write(const MapDocument& doc, std::int16_t layer, const QString& file, const FileStamp& stamp)
{
    if (!QDir().mkpath(m_path))
        return false;
    const QDir dir(m_path);
    if (!writeLayerFile(dir.filePath(recordsName(layer)), doc, layer).ok())
        return false;
    QSaveFile about(dir.filePath(aboutName(layer)));
    return about.open(QIODevice::WriteOnly) && about.write(aboutText(layer, file, stamp)) >= 0 && about.commit();
}

void RecoveryFolder::remove(std::int16_t layer)
{
    // The description goes first: records without it are no copy.
    const QDir dir(m_path);
    QFile::remove(dir.filePath(aboutName(layer)));
    QFile::remove(dir.filePath(recordsName(layer)));
}

std::vector<RecoveryCopy> RecoveryFolder::copies() const
{
    std::vector<RecoveryCopy> found;
    const QDir dir(m_path);
    for (std::int16_t layer = 0; layer < kLayerCount; ++layer) {
        QFile about(dir.filePath(aboutName(layer)));
        const QString records = dir.filePath(recordsName(layer));
        if (!QFileInfo(records).isFile() || about.size() > 65536 || !about.open(QIODevice::ReadOnly))
            continue;
        const QJsonObject json = QJsonDocument::fromJson(about.readAll()).object();
        if (json.value(QStringLiteral("layer")).toInt(-1) != layer)
            continue;
        RecoveryCopy copy{
            layer, json.value(QStringLiteral("file")).toString(), {}, records, QFileInfo(about).lastModified()};
        const QDateTime modified =
            QDateTime::fromString(json.value(QStringLiteral("fileModified")).toString(), Qt::ISODateWithMs);
        if (modified.isValid()) {
            copy.stamp = {true, qint64(json.value(QStringLiteral("fileSize")).toDouble()), modified};
            // What the layer held of its file is guarded as before the program ended.
            const double stopped = json.value(QStringLiteral("stoppedAtLine")).toDouble();
            copy.stamp.stoppedAtLine = stopped >= 1 && stopped < 1e15 ? std::size_t(stopped) : 0;
            copy.stamp.holdsNul = json.value(QStringLiteral("holdsNul")).toBool();
        }
        found.push_back(copy);
    }
    return found;
}

void RecoveryFolder::removeAll()
{
    QDir(m_path).removeRecursively();
}

void RecoveryFolder::removeIfEmpty()
{
    QDir().rmdir(m_path);
}

} // namespace plotwell
