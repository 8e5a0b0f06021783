#include "bench/mapgen.h"

#include <QFile>

#include <cstdio>
#include <fstream>
#include <random>

namespace plotwell::bench {
namespace {

class Generator {
public:
    explicit Generator(std::size_t lines, std::size_t labels) : m_lines(lines), m_labels(labels) {}

    // Appends the next records to out; false when all are written.
    bool next(std::string& out, std::size_t maxRecords)
    {
        char buf[256];
        for (std::size_t n = 0; n < maxRecords; ++n) {
            if (m_lineDone < m_lines) {
                // Walk: every 40 segments a chain starts somewhere new.
                if (m_lineDone % 40 == 0) {
                    m_x = coord(m_rng);
                    m_y = coord(m_rng);
                    m_z = height(m_rng);
                }
                const double x2 = m_x + step(m_rng), y2 = m_y + step(m_rng), z2 = m_z + rise(m_rng);
                const int c = shade(m_rng);
                const int len = std::snprintf(buf, sizeof buf, "L %.4f, %.4f, %.4f,  %.4f, %.4f, %.4f,  %d, %d, %d\n",
                                              m_x, m_y, m_z, x2, y2, z2, c, c, c);
                out.append(buf, std::size_t(len));
                m_x = x2, m_y = y2, m_z = z2;
                ++m_lineDone;
            } else if (m_labelDone < m_labels) {
                const int len =
                    std::snprintf(buf, sizeof buf, "P %.4f, %.4f, %.4f,  %d, %d, %d,  %d,  to_Zone_%zu\n", coord(m_rng),
                                  coord(m_rng), height(m_rng), 0, shade(m_rng), 0, int(m_labelDone % 4), m_labelDone);
                out.append(buf, std::size_t(len));
                ++m_labelDone;
            } else {
                return false;
            }
        }
        return true;
    }

private:
    std::size_t m_lines, m_labels;
    std::size_t m_lineDone = 0, m_labelDone = 0;
    std::mt19937 m_rng{20261122};
    std::uniform_real_distribution<double> coord{-5000, 5000};
    std::uniform_real_distribution<double> height{-500, 500};
    std::uniform_real_distribution<double> step{-60, 60};
    std::uniform_real_distribution<double> rise{-5, 5};
    std::uniform_int_distribution<int> shade{0, 255};
    double m_x = 0, m_y = 0, m_z = 0;
};

std::size_t statusField(const char* name)
{
    std::ifstream status("/proc/self/status");
    std::string key;
    while (status >> key) {
        if (key == name) {
            std::size_t kb = 0;
            status >> kb;
            return kb * 1024;
        }
        status.ignore(1 << 12, '\n');
    }
    return 0;
}

} // namespace

std::string generateMapText(std::size_t lines, std::size_t labels)
{
    std::string text;
    text.reserve((lines + labels) * 90);
    Generator gen(lines, labels);
    while (gen.next(text, 4096)) {}
    return text;
}

std::size_t writeMapFile(const QString& path, std::size_t lines, std::size_t labels)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return 0;
    Generator gen(lines, labels);
    std::string chunk;
    std::size_t total = 0;
    bool more = true;
    while (more) {
        chunk.clear();
        more = gen.next(chunk, 4096);
        file.write(chunk.data(), qint64(chunk.size()));
        total += chunk.size();
    }
    return total;
}

std::size_t residentBytes()
{
    return statusField("VmRSS:");
}

std::size_t peakResidentBytes()
{
    return statusField("VmHWM:");
}

void resetPeakResident()
{
    // Writing 5 to clear_refs resets the peak resident size (Linux).
    std::ofstream("/proc/self/clear_refs") << "5";
}

} // namespace plotwell::bench
