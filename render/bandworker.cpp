#include "render/bandworker.h"

namespace plotwell {

BandWorker::BandWorker() : m_thread(QThread::create([this] { run(); }))
{
    m_thread->start();
}

BandWorker::~BandWorker()
{
    {
        std::lock_guard<std::mutex> lock(m_mutex);
        m_stop = true;
    }
    m_wake.notify_all();
    m_thread->wait();
    // The worker's last writes were made under the lock: taking it once more
    // orders them before the members go, in a way ThreadSanitizer sees as
    // well (it cannot see the order QThread::wait gives).
    const std::lock_guard<std::mutex> lock(m_mutex);
}

void BandWorker::start(float widthTwips, float heightTwips, double ratio, std::function<void(ImageSurface&)> job)
{
    {
        std::lock_guard<std::mutex> lock(m_mutex);
        m_job = std::move(job);
        m_width = widthTwips;
        m_height = heightTwips;
        m_ratio = ratio;
        m_busy = true;
    }
    m_wake.notify_all();
}

const QImage& BandWorker::finish()
{
    std::unique_lock<std::mutex> lock(m_mutex);
    m_wake.wait(lock, [this] { return !m_busy; });
    return m_surface->image();
}

void BandWorker::run()
{
    std::unique_lock<std::mutex> lock(m_mutex);
    for (;;) {
        m_wake.wait(lock, [this] { return m_busy || m_stop; });
        if (m_stop)
            break;
        const float width = m_width, height = m_height;
        const double ratio = m_ratio;
        lock.unlock();
        if (!m_surface)
            m_surface = makeImageSurface(width, height, ratio);
        else if (m_surface->width() != width || m_surface->height() != height)
            m_surface->resize(width, height);
        m_surface->setPixelRatio(ratio);
        m_job(*m_surface);
        // The painter lets go here, in this thread, before the image is read.
        m_surface->refresh();
        lock.lock();
        m_busy = false;
        m_wake.notify_all();
    }
    m_surface.reset();
}

} // namespace plotwell
