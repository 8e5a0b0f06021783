#pragma once

#include <QSize>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <cstdio>
#include <optional>

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

// "WxH", each side from 1 to the largest a picture may have; none otherwise.
std::optional<QSize> parsePictureSize(const QString& text);

// Draws the files as layers, the first as the base layer (a zone's base file
// given alone brings its _1 to _3 siblings), into a picture of the given size
// that the whole map is fitted into, as File > Export Picture... does with
// the display options at their start values; out ends in .png or .svg.
// Problems go to err. kFailed when a file cannot be opened or is no map text
// (nothing is written then), when one stops early (the picture shows what was
// read before) or when the picture cannot be fitted or written.
int renderFiles(const QStringList& files, const QString& out, QSize size, bool labels, std::FILE* err);

} // namespace plotwell::cli
