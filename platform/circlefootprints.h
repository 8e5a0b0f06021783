#pragma once

#include <QImage>
#include <QPainter>
#include <QPen>

#include <cstdint>
#include <unordered_map>
#include <vector>

namespace plotwell {

// The pixels that QPainter paints for a filled circle, outline and inside
// apart, remembered by the circle's exact place, radius and pen. A map shows
// thousands of label markers at the same places frame after frame, and a
// circle with a pen wider than one pixel is slow to stroke; painting the
// remembered pixels gives the same picture at a fraction of the cost.
class CircleFootprints {
public:
    // A run of pixels [x0, x1) on row y, in the outline colour or the inside colour.
    struct Span {
        int y;
        int x0;
        int x1;
        bool outline;
    };

    // Circles wider than this are drawn directly: few of them are drawn and
    // they would need large footprints.
    static constexpr float kMaxRadius = 64;

    // Forgets everything; footprints hold for one image size and one device
    // pixel ratio only.
    void reset(QSize imageSize, double ratio = 1);
    // The footprint of drawEllipse(centre, radius, radius) drawn with pen
    // (its colour aside) and a solid brush on an image of the reset size and
    // ratio, antialiasing off; the centre and radius in logical pixels, the
    // spans in device pixels.
    const std::vector<Span>& footprint(QPointF centre, float radius, const QPen& pen);

private:
    struct Key {
        float x, y, r;
        double penWidth;
        friend bool operator==(const Key& a, const Key& b)
        {
            return a.x == b.x && a.y == b.y && a.r == b.r && a.penWidth == b.penWidth;
        }
    };
    struct KeyHash {
        std::size_t operator()(const Key& k) const;
    };

    std::vector<Span> measure(QPointF centre, float radius, const QPen& pen);

    static constexpr std::size_t kMaxFootprints = 1 << 16;

    QSize m_size;
    double m_ratio = 1;
    QImage m_scratch; // as large as the image, so that circles are drawn at the very same coordinates
    std::unordered_map<Key, std::vector<Span>, KeyHash> m_footprints;
};

} // namespace plotwell
