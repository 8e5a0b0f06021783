#pragma once

#include "document/colorrgb.h"
#include "editor/editor.h"
#include "render/maprenderer.h"
#include "tests/support/recordingsurface.h"

#include <cstdio>
#include <stdexcept>
#include <string>
#include <vector>

namespace plotwell::test {

constexpr ColorRGB kBlue{0, 0, 255};

// Appends a line record through the document's own record text; its index.
inline std::size_t addTestLine(Editor& editor, float x1, float y1, float z1, float x2, float y2, float z2,
                               ColorRGB colour, std::int16_t layer = 0)
{
    char text[256];
    std::snprintf(text, sizeof text, "%.9g,%.9g,%.9g,%.9g,%.9g,%.9g,%d,%d,%d", double(x1), double(y1), double(z1),
                  double(x2), double(y2), double(z2), colour.r, colour.g, colour.b);
    if (const auto error = editor.doc.addLine(text, layer, editor.view.currentScale))
        throw std::runtime_error(*error);
    return editor.doc.lineCount() - 1;
}

inline std::size_t addTestLabel(Editor& editor, float x, float y, float z, ColorRGB colour, const std::string& name,
                                std::int16_t layer = 0, int size = 1)
{
    char text[256];
    std::snprintf(text, sizeof text, "%.9g,%.9g,%.9g,%d,%d,%d,%d,%s", double(x), double(y), double(z), colour.r,
                  colour.g, colour.b, size, name.c_str());
    if (const auto error = editor.doc.addLabel(text, layer, editor.view.currentScale))
        throw std::runtime_error(*error);
    return editor.doc.labelCount() - 1;
}

using Op = RecordingSurface::Op;

// The operations of the recorded calls, in order.
inline std::vector<Op> opsOf(const RecordingSurface& surface)
{
    std::vector<Op> ops;
    for (const auto& call : surface.calls)
        ops.push_back(call.op);
    return ops;
}

} // namespace plotwell::test
