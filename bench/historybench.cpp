#include "bench/bencheditor.h"
#include "bench/benches.h"
#include "editor/edits.h"
#include "editor/mapevents.h"
#include "tools/deletion.h"
#include "view/zoom.h"

#include <QElapsedTimer>

#include <algorithm>
#include <cstdio>

namespace plotwell::bench {

// The edit history on a large map: Line clicks and Freehand steps, each a
// step, and undoing and redoing the deletion of a tenth of the lines.
int runHistoryBench(const QStringList& args)
{
    const auto lineCount = std::size_t(std::max(0LL, argValue(args, QStringLiteral("--lines"), 1000000)));
    constexpr int kRecords = 1000;

    BenchEditor bench(800, 600, lineCount, 0);
    Editor& editor = bench.editor;
    const std::size_t loaded = editor.doc.lineCount();

    // The frames the tools ask for are the frame benchmark's business.
    QElapsedTimer timer;
    toolIconClicked(editor, ToolId::Line);
    editor.tools.state.holdDrawing = true;
    mapMouseDown(editor, kLeftButton, {0, 0});
    timer.start();
    for (int i = 1; i <= kRecords; ++i)
        mapMouseDown(editor, kLeftButton, {float(i % 97) * 40, float(i % 89) * 40});
    const double lineUs = double(timer.nsecsElapsed()) / 1e3 / kRecords;
    toolIconClicked(editor, ToolId::Freehand);
    editor.tools.state.holdDrawing = true;
    mapMouseMove(editor, kLeftButton, {40, 2000});
    timer.start();
    for (int i = 2; i <= kRecords + 1; ++i)
        mapMouseMove(editor, kLeftButton, {float(i) * 40, 2000 + float(i % 2) * 40});
    const double freehandUs = double(timer.nsecsElapsed()) / 1e3 / kRecords;
    mapMouseUp(editor);

    for (std::size_t i = 0; i < editor.doc.lineCount(); i += 10)
        editor.doc.setLineSelected(i, true);
    const std::size_t before = editor.doc.lineCount();
    const std::size_t bytesBefore = editor.history.bytes();
    timer.start();
    deleteKey(editor.toolContext(), 0);
    const double deleteMs = double(timer.nsecsElapsed()) / 1e6;
    const std::size_t deleted = before - editor.doc.lineCount();
    const double bytesPerLine =
        double(editor.history.bytes() - bytesBefore) / double(std::max<std::size_t>(deleted, 1));

    timer.start();
    undoEdit(editor);
    const double undoMs = double(timer.nsecsElapsed()) / 1e6;
    const bool restored = editor.doc.lineCount() == before && editor.doc.lines()[10].selected;
    timer.start();
    redoEdit(editor);
    const double redoMs = double(timer.nsecsElapsed()) / 1e6;
    const bool redone = editor.doc.lineCount() == before - deleted;

    std::printf("lines: %zu\nsteps: %zu\n", loaded, editor.history.stepCount());
    std::printf("line_click_us: %.3f\nfreehand_step_us: %.3f\nappend_us: %.3f\n", lineUs, freehandUs,
                (lineUs + freehandUs) / 2);
    std::printf("deleted: %zu\ndelete_ms: %.2f\nundo_delete_ms: %.2f\nredo_delete_ms: %.2f\n", deleted, deleteMs,
                undoMs, redoMs);
    std::printf("history_bytes_per_deleted_line: %.1f\n", bytesPerLine);
    if (!restored || !redone) {
        std::fprintf(stderr, "undo or redo did not give back the document\n");
        return 1;
    }
    return 0;
}

} // namespace plotwell::bench
