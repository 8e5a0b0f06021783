#pragma once

#include "document/mapreader.h"

#include <QString>

#include <cstdio>
#include <optional>

namespace plotwell::cli {

// One line of text in the local encoding, with a line feed.
void printLine(std::FILE* out, const QString& text);

// "PATH: N lines, M labels", followed by ", stopped at line K: REASON" when
// the read stopped at a record, and by ", holds NUL bytes (not a text file)"
// when it went through a NUL byte.
QString readSummary(const QString& path, const ReadResult& result);

// Read to the end, and text as a map file should be.
bool readCleanly(const ReadResult& result);

// Reads a file as one layer, the way the editor loads it. A file that cannot
// be opened is reported on out and gives no result.
std::optional<ReadResult> readReported(const QString& path, MapDocument& doc, std::FILE* out);

} // namespace plotwell::cli
