#pragma once

#include "platform/imagesurface.h"
#include "render/bandworker.h"
#include "render/maprenderer.h"

#include <memory>
#include <vector>

namespace plotwell {

// Paints the picture of the map (underlay, lines and labels, each record as
// if unselected) on every core. The rows of the picture are cut into one
// band per core; the first band is drawn on the target surface itself, each
// other one into an image of the full size of its own, with only the records
// that can reach into it, each drawn whole, and copied into the target.
// Drawn whole, a record gives inside the band the very pixels that drawing
// the whole image gives; a clip rectangle or a band-sized image would not,
// since lines are cut at their edges before they are rasterised.
class BandPainter {
public:
    // bands 0: one per core, up to four.
    explicit BandPainter(int bands = 0);

    // What every band starts from: the surface's size, device pixel ratio,
    // background and pen width.
    struct Start {
        float widthTwips;
        float heightTwips;
        double ratio;
        ColorRGB background;
        int penWidth;
    };

    // Paints the whole picture on target, of the size and ratio of start.
    void paintWhole(ImageSurface& target, const FrameSource& source, const Start& start);
    // Paints again the parts of the picture on target in these boxes of device pixels.
    void paintParts(ImageSurface& target, const FrameSource& source, const Start& start,
                    const std::vector<QRect>& parts);

private:
    void addWorkers(std::size_t count);
    // Paints a part on the surface of this thread, made when first needed.
    void paintOwnPart(const FrameSource& source, const Start& start, const QRect& part);

    int m_bands;
    // The bands after the first, and the parts of paintParts after the first, made when first needed.
    std::vector<std::unique_ptr<BandWorker>> m_workers;
    std::unique_ptr<ImageSurface> m_own;
};

} // namespace plotwell
