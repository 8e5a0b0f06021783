#include "platform/filewatch.h"

#include <QFileInfo>

namespace plotwell {

FileWatch::FileWatch(const QString& path, std::function<void()> changed, bool useSystemWatch)
    : m_path(path), m_changed(std::move(changed)), m_useSystemWatch(useSystemWatch)
{
    if (m_useSystemWatch) {
        // The folder tells when the file is created again.
        const QString folder = QFileInfo(path).absolutePath();
        if (QFileInfo(folder).isDir())
            m_watcher.addPath(folder);
        rewatch();
        const auto notify = [this] {
            rewatch();
            m_changed();
        };
        connect(&m_watcher, &QFileSystemWatcher::fileChanged, this, notify);
        connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, notify);
    }
    m_timer.setInterval(kPollMs);
    connect(&m_timer, &QTimer::timeout, this, [this] {
        rewatch();
        m_changed();
    });
    m_timer.start();
}

void FileWatch::rewatch()
{
    if (m_useSystemWatch && !m_watcher.files().contains(m_path) && QFileInfo(m_path).isFile())
        m_watcher.addPath(m_path);
}

} // namespace plotwell
