#pragma once

#include "bench/mapgen.h"
#include "document/mapreader.h"
#include "editor/editor.h"
#include "platform/qimagesurface.h"
#include "testing/fakes.h"

#include <QBuffer>

namespace plotwell::bench {

// An editor on a real image surface of the given logical pixels, at this
// many device pixels to one, with a generated map loaded, reaching nothing
// outside the process: no dialog is ever answered.
struct BenchEditor : test::FakeServices {
    BenchEditor(int width, int height, std::size_t lines, std::size_t labels, double ratio = 1)
        : surface(float(width) * 15, float(height) * 15, ratio), editor(on(surface, settings))
    {
        pictureDialog.accept = false;
        editor.view.mapWidth = surface.width();
        editor.view.mapHeight = surface.height();
        QByteArray text = QByteArray::fromStdString(generateMapText(lines, labels));
        QBuffer buffer(&text);
        buffer.open(QIODevice::ReadOnly);
        readMapRecords(buffer, editor.doc, 0, editor.view.currentScale);
    }

    QImageSurface surface;
    MemorySettingsStore settings;
    Editor editor;
};

} // namespace plotwell::bench
