#pragma once

#include <QString>
#include <QStringList>

#include <cstdio>

namespace plotwell::cli {

// Exit statuses of plotwell-map.
constexpr int kOk = 0;
constexpr int kFailed = 1;
constexpr int kUsage = 2;

// One line per file: its record counts and, when the read stopped at a record
// it could not convert, where and why. kFailed when any file stopped early or
// could not be opened.
int checkFiles(const QStringList& paths, std::FILE* out);

// Reads in as one layer the way the editor loads it and writes out the way
// the editor saves that layer. Problems go to err.
int normalizeFile(const QString& in, const QString& out, std::FILE* err);

} // namespace plotwell::cli
