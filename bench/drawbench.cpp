#include "bench/bencheditor.h"
#include "bench/benches.h"
#include "editor/mapevents.h"
#include "tools/deletion.h"
#include "view/zoom.h"

#include <QElapsedTimer>

#include <algorithm>
#include <cstdio>

namespace plotwell::bench {

int runDrawBench(const QStringList& args)
{
    const auto lineCount = std::size_t(std::max(0LL, argValue(args, QStringLiteral("--lines"), 1000000)));
    constexpr int kRecords = 1000;

    BenchEditor bench(800, 600, lineCount, 0);
    Editor& editor = bench.editor;
    const std::size_t loaded = editor.doc.lineCount();
    // The frame each added line asks for is the frame benchmark's business:
    // held here, so that only the tools' own work is timed.
    editor.tools.state.holdDrawing = true;

    QElapsedTimer timer;
    toolIconClicked(editor, ToolId::Line);
    editor.tools.state.holdDrawing = true;
    timer.start();
    for (int i = 0; i <= kRecords; ++i)
        mapMouseDown(editor, kLeftButton, {float(i % 97) * 40, float(i % 89) * 40});
    const double lineUs = double(timer.nsecsElapsed()) / 1e3 / kRecords;

    toolIconClicked(editor, ToolId::Freehand);
    timer.start();
    for (int i = 1; i <= kRecords + 1; ++i) {
        // Steps of 40 world units, each far enough to add a line.
        mapMouseMove(editor, kLeftButton, {float(i) * 40, 2000 + float(i % 2) * 40});
        editor.tools.state.holdDrawing = true;
    }
    const double freehandUs = double(timer.nsecsElapsed()) / 1e3 / kRecords;
    mapMouseUp(editor);
    const std::size_t added = editor.doc.lineCount() - loaded;

    for (std::size_t i = 0; i < editor.doc.lineCount(); i += 10)
        editor.doc.setLineSelected(i, true);
    const std::size_t before = editor.doc.lineCount();
    timer.start();
    deleteKey(editor.toolContext(), 0);
    const double deleteMs = double(timer.nsecsElapsed()) / 1e6;

    std::printf("lines: %zu\nlines_added: %zu\n", loaded, added);
    std::printf("line_click_us: %.3f\nfreehand_step_us: %.3f\nappend_us: %.3f\n", lineUs, freehandUs,
                (lineUs + freehandUs) / 2);
    std::printf("deleted: %zu\ndelete_ms: %.2f\n", before - editor.doc.lineCount(), deleteMs);
    return 0;
}

} // namespace plotwell::bench
