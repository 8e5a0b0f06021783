#include "cli/mapcommands.h"

#include <QCoreApplication>

#include <cstdio>

using namespace plotwell::cli;

namespace {

const char kUsageText[] =
    "usage: plotwell-map check FILE...\n"
    "       plotwell-map normalize IN OUT\n"
    "       plotwell-map stats FILE...\n"
    "       plotwell-map --help\n";

const char kHelpText[] =
    "plotwell-map reads and writes EverQuest map files with the same code as the\n"
    "Plotwell editor.\n"
    "\n"
    "  plotwell-map check FILE...\n"
    "      Reads each file as the editor loads a layer and prints one line per file:\n"
    "        FILE: N lines, M labels\n"
    "      followed by \", stopped at line K: REASON\" when the read stopped at a\n"
    "      record it could not convert (the editor keeps the records before it and\n"
    "      drops the rest), and by \", holds NUL bytes (not a text file)\" when the\n"
    "      lines read held a NUL byte, as binary files and UTF-16 text do. A record\n"
    "      line longer than 1 MiB stops the read; other lines of any length are\n"
    "      skipped. A file that cannot be opened, a folder, a pipe or a device,\n"
    "      gets \"FILE: cannot be opened: REASON\".\n"
    "      Exit status 1 when any file stopped early, held NUL bytes or could not\n"
    "      be opened, else 0.\n"
    "\n"
    "  plotwell-map normalize IN OUT\n"
    "      Reads IN as one layer, exactly as the editor would, and writes OUT exactly\n"
    "      as \"Save all layers\" writes that layer: all L records, then all P\n"
    "      records, fields joined by \",\", coordinates with at most 7 significant\n"
    "      digits, CR LF line ends. OUT is replaced only once it is completely\n"
    "      written. When IN stops early at a record it cannot convert, the records\n"
    "      read before it are written (as the editor would save them), the stop is\n"
    "      reported on stderr and the exit status is 1; if OUT is IN itself it is\n"
    "      then left untouched (also under another name that links to it), so the\n"
    "      unread lines are not lost. When IN holds NUL bytes it is not a map text\n"
    "      file and OUT is not written at all. An OUT that is read-only (its owner\n"
    "      may not write it) is not replaced, whoever runs the tool.\n"
    "      Exit status 1 when IN cannot be opened, stops early, holds NUL bytes,\n"
    "      or OUT is read-only or cannot be written (the reason goes to stderr),\n"
    "      else 0.\n"
    "\n"
    "  plotwell-map stats FILE...\n"
    "      Reads each file as check does and prints its check line, then\n"
    "        x: LOW to HIGH\n"
    "        y: LOW to HIGH\n"
    "        z: LOW to HIGH\n"
    "      over every line end and label position (x and y give the bounding box,\n"
    "      z the height range; left out when the file has no records), then one\n"
    "        colour R,G,B: N lines, M labels\n"
    "      per colour used, ordered by red, then green, then blue. Numbers are\n"
    "      written as in map files. With several files (the layer files of one\n"
    "      zone) a last block \"total: N lines, M labels\" with the same lines\n"
    "      covers them all. Detail lines start with two blanks.\n"
    "      Exit status as for check.\n"
    "\n"
    "Bad arguments print the usage on stderr and exit with status 2.\n";

int usageError(const char* problem)
{
    std::fprintf(stderr, "plotwell-map: %s\n%s", problem, kUsageText);
    return kUsage;
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    QStringList args = QCoreApplication::arguments();
    args.removeFirst();
    if (args.isEmpty())
        return usageError("no command given");

    const QString command = args.takeFirst();
    if (command == QLatin1String("--help") || command == QLatin1String("-h")) {
        std::fputs(kHelpText, stdout);
        return kOk;
    }
    if (command == QLatin1String("check")) {
        if (args.isEmpty())
            return usageError("check needs at least one file");
        return checkFiles(args, stdout);
    }
    if (command == QLatin1String("stats")) {
        if (args.isEmpty())
            return usageError("stats needs at least one file");
        return statsFiles(args, stdout);
    }
    if (command == QLatin1String("normalize")) {
        if (args.size() != 2)
            return usageError("normalize needs exactly two files, IN and OUT");
        return normalizeFile(args.at(0), args.at(1), stderr);
    }
    return usageError("unknown command");
}
