#pragma once

#include <QString>
#include <QStringList>

#include <cstdint>
#include <cstdio>

namespace plotwell::cli {

// The editor loads a file into a layer at the scale of the moment; layer 0 at
// scale 1 gives the same records as any other, since neither is written.
constexpr std::int16_t kLayer = 0;
constexpr float kScale = 1;

// Exit statuses of plotwell-map.
constexpr int kOk = 0;
constexpr int kFailed = 1;
constexpr int kUsage = 2;

// One line per file: its record counts and, when the read stopped at a record
// it could not convert, where and why, and whether it held NUL bytes.
// kFailed when any file stopped early, held NUL bytes or could not be opened.
int checkFiles(const QStringList& paths, std::FILE* out);

// Reads in as one layer the way the editor loads it and writes out the way
// the editor saves that layer. Problems go to err. An input that holds NUL
// bytes is not a map text file, and nothing is written for it; a read-only
// output is not replaced.
int normalizeFile(const QString& in, const QString& out, std::FILE* err);

// For each file, the check line, then the range of x, y and z over every
// point and the records of each colour; then the same for all files
// together when there are several. The status is that of checkFiles.
int statsFiles(const QStringList& paths, std::FILE* out);

} // namespace plotwell::cli
