#include "cli/mapcommands.h"
#include "render/pictureframe.h"

#include <QCoreApplication>
#include <QGuiApplication>

#include <cstdio>
#include <cstring>
#include <memory>

#if defined(Q_OS_WIN)
#include <fcntl.h>
#include <io.h>
#endif

using namespace plotwell::cli;

namespace {

const char kUsageText[] =
    "usage: plotwell-map check FILE...\n"
    "       plotwell-map normalize IN OUT\n"
    "       plotwell-map stats FILE...\n"
    "       plotwell-map render FILE... -o OUT.png|OUT.svg [--size WxH] [--no-labels]\n"
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
    "  plotwell-map render FILE... -o OUT.png|OUT.svg [--size WxH] [--no-labels]\n"
    "      Draws the files as the layers of one map, the first as the base layer\n"
    "      (at most four), as the editor draws them, and writes the whole map\n"
    "      fitted into a picture of W by H pixels (default 2048x2048, each side\n"
    "      1 to 32768): a PNG image, or an SVG drawing whose lines are lines and\n"
    "      whose labels are text, by OUT's extension. A zone's base file given\n"
    "      alone, such as zone.txt, brings zone_1.txt to zone_3.txt beside it, as\n"
    "      opening it in the editor does. --no-labels leaves the labels out. No\n"
    "      display is needed. OUT is replaced only once it is completely written.\n"
    "      Exit status 1, with the reason on stderr, when a file cannot be opened\n"
    "      or holds NUL bytes (nothing is written), when a file stops early at a\n"
    "      record (the records before it are drawn), when the map shows nothing or\n"
    "      lies at one point, or when OUT cannot be written; else 0.\n"
    "\n"
    "Bad arguments print the usage on stderr and exit with status 2.\n";

int usageError(const char* problem)
{
    std::fprintf(stderr, "plotwell-map: %s\n%s", problem, kUsageText);
    return kUsage;
}

int render(QStringList args)
{
    QStringList files;
    QString out;
    QSize size(2048, 2048);
    bool labels = true;
    while (!args.isEmpty()) {
        const QString arg = args.takeFirst();
        if (arg == QLatin1String("-o") || arg == QLatin1String("--size")) {
            if (args.isEmpty())
                return usageError(arg == QLatin1String("-o") ? "-o needs a file" : "--size needs WxH");
            const QString value = args.takeFirst();
            if (arg == QLatin1String("-o")) {
                out = value;
                continue;
            }
            const std::optional<QSize> parsed = parsePictureSize(value);
            if (!parsed)
                return usageError("--size takes WxH, each side from 1 to 32768 pixels");
            size = *parsed;
        } else if (arg == QLatin1String("--no-labels")) {
            labels = false;
        } else if (arg.startsWith(QLatin1Char('-')) && arg.size() > 1) {
            return usageError("render takes only -o, --size and --no-labels");
        } else {
            files << arg;
        }
    }
    if (files.isEmpty() || files.size() > 4)
        return usageError("render needs one to four map files");
    if (out.isEmpty())
        return usageError("render needs -o OUT.png or -o OUT.svg");
    if (!plotwell::pictureFormatOf(out))
        return usageError("the picture's name must end in .png or .svg");
    return renderFiles(files, out, size, labels, stderr);
}

} // namespace

int main(int argc, char** argv)
{
#if defined(Q_OS_WIN)
    // Lines end in a line feed alone, as everywhere else, so that the
    // answers are the same bytes on every system (text mode would put a
    // carriage return before each).
    _setmode(_fileno(stdout), _O_BINARY);
    _setmode(_fileno(stderr), _O_BINARY);
#endif
    // Pictures are drawn with fonts but need no display: render runs on a
    // platform that opens no window, the other commands on no platform at
    // all. Windows' own platform opens none unless asked and reaches the
    // system's fonts, which the offscreen one does not find there; it is set
    // here, since a variable set for the program may not reach it (Wine
    // passes none of Qt's).
    std::unique_ptr<QCoreApplication> app;
    if (argc > 1 && std::strcmp(argv[1], "render") == 0) {
#if defined(Q_OS_WIN)
        qputenv("QT_QPA_PLATFORM", "windows");
#else
        qputenv("QT_QPA_PLATFORM", "offscreen");
#endif
        app = std::make_unique<QGuiApplication>(argc, argv);
    } else {
        app = std::make_unique<QCoreApplication>(argc, argv);
    }
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
    if (command == QLatin1String("render"))
        return render(args);
    return usageError("unknown command");
}
