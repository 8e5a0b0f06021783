#pragma once

#include "platform/imagesurface.h"

#include <QThread>

#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>

namespace plotwell {

// A thread of its own with a drawing surface of its own, for one band of a
// picture. The surface is made, drawn on and destroyed in that thread only:
// text laid out for a surface belongs to the fonts of the thread that laid
// it out, which go when the thread ends. It is a QThread, so that Qt lets go
// of what it keeps for the thread (its fonts among them) as the thread ends,
// in that thread: a thread Qt did not start is cleaned up later by a watcher
// of Qt's on Windows, which can still be at it while the program exits.
class BandWorker {
public:
    BandWorker();
    ~BandWorker();
    BandWorker(const BandWorker&) = delete;
    BandWorker& operator=(const BandWorker&) = delete;

    // Runs job on the worker's surface, made at this size and device pixel
    // ratio when there is none.
    void start(float widthTwips, float heightTwips, double ratio, std::function<void(ImageSurface&)> job);
    // Waits for the job; then the surface's image may be read until the next start.
    const QImage& finish();

private:
    void run();

    std::mutex m_mutex;
    std::condition_variable m_wake;
    std::function<void(ImageSurface&)> m_job;
    float m_width = 0;
    float m_height = 0;
    double m_ratio = 1;
    bool m_busy = false;
    bool m_stop = false;
    std::unique_ptr<ImageSurface> m_surface; // touched by the worker's thread only while busy
    std::unique_ptr<QThread> m_thread; // last: it starts once the rest is made
};

} // namespace plotwell
