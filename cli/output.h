#pragma once

#include "document/mapreader.h"

#include <QString>

#include <cstdio>

namespace plotwell::cli {

// One line of text in the local encoding, with a line feed.
void printLine(std::FILE* out, const QString& text);

// "PATH: N lines, M labels", followed by ", stopped at line K: REASON" when
// the read stopped at a record, and by ", holds NUL bytes (not a text file)"
// when it went through a NUL byte.
QString readSummary(const QString& path, const ReadResult& result);

// Read to the end, and text as a map file should be.
bool readCleanly(const ReadResult& result);

} // namespace plotwell::cli
