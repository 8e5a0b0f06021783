#pragma once

#include <QFileSystemWatcher>
#include <QObject>
#include <QString>
#include <QTimer>

#include <functional>

namespace plotwell {

// Tells when a file may have changed: at once where the system reports
// changes (QFileSystemWatcher), and in any case every kPollMs, for the file
// systems that report nothing (network shares, some compatibility layers)
// and for a file deleted and created again, which the system watch loses.
// Calls come from the event loop, between other events; a call may find
// nothing new.
class FileWatch : public QObject {
public:
    static constexpr int kPollMs = 40;

    // useSystemWatch false: the timer alone.
    FileWatch(const QString& path, std::function<void()> changed, bool useSystemWatch = true);

private:
    // Watches the file again once it exists: the system watch drops a file
    // that is deleted or renamed.
    void rewatch();

    QString m_path;
    std::function<void()> m_changed;
    bool m_useSystemWatch;
    QFileSystemWatcher m_watcher;
    QTimer m_timer;
};

} // namespace plotwell
