#pragma once

#include "document/filestamp.h"
#include "document/maprecords.h"

#include <QDateTime>
#include <QString>

#include <memory>
#include <vector>

class QLockFile;

namespace plotwell {

class MapDocument;

// A recovery copy of a layer: the layer's records in the map text format,
// and beside them which layer they belong to and the file it had.
struct RecoveryCopy {
    std::int16_t layer = 0;
    QString file; // the layer's file; empty when it had none
    FileStamp stamp; // that file as it was last read or written
    QString records; // path of the copy of the records
    QDateTime written;
};

// The copies of one run of the program, in a folder of the run's own that a
// lock file beside it guards while the run holds it.
class RecoveryFolder {
public:
    // Takes the run folder at path when no running program holds it.
    static std::unique_ptr<RecoveryFolder> claim(const QString& path);
    ~RecoveryFolder();

    QString path() const { return m_path; }
    // Writes the copy of a layer, each file replaced only once it is whole;
    // false when it could not be written.
    bool write(const MapDocument& doc, std::int16_t layer, const QString& file, const FileStamp& stamp);
    void remove(std::int16_t layer);
    // The copies the folder holds; those that cannot be read are left out.
    std::vector<RecoveryCopy> copies() const;
    // Removes the folder with its copies.
    void removeAll();
    // Removes the folder when it holds nothing.
    void removeIfEmpty();

private:
    RecoveryFolder(QString path, std::unique_ptr<QLockFile> lock);

    QString m_path;
    std::unique_ptr<QLockFile> m_lock;
};

} // namespace plotwell
