#include "tests/support/qtprinters.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>

#include "tests/support/files.h"

#include <gtest/gtest.h>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace {

struct ToolRun {
    int status = -1;
    QByteArray out, err;
};

ToolRun plotwellMap(const QStringList& args)
{
    QProcess process;
    process.start(QStringLiteral(PLOTWELL_MAP_EXE), args);
    if (!process.waitForFinished(30000) || process.exitStatus() != QProcess::NormalExit)
        return {};
    return {process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError()};
}

class PlotwellMap : public ::testing::Test {
protected:
    QTemporaryDir dir;

    QString path(const char* name) const { return QDir::toNativeSeparators(dir.filePath(QLatin1String(name))); }
    QString write(const char* name, const QByteArray& bytes) const
    {
        return plotwell::test::writeBytes(path(name), bytes);
    }
    static QByteArray read(const QString& name) { return plotwell::test::fileBytes(name); }
};

// Blanks after commas, LF and lone CR line ends, skipped lines, labels before lines.
const QByteArray kGoodMap =
    "P 1, 2, 3,  0, 0, 255,  2,  Camp Fire\n"
    "L 10.5, -20, 0,  30, 40, 0,  255, 0, 0\r"
    "l 1,2,3,4,5,6,7,8,9\r\n"
    "\n"
    "L 1.23456789,2e8,-0,0.00001,5,6,7,8,9,extra\r\n";

TEST_F(PlotwellMap, CheckReportsEachFileAndWhereItStopped)
{
    const QString good = write("good.txt", kGoodMap);
    const QString bad =
        write("bad.txt", "L 1,2,3,4,5,6,7,8,9\r\n\r\nP 1,2,3,4,5,6,7,x\r\nL 1,2,x,4,5,6,7,8,9\r\nL 1\r\n");
    EXPECT_EQ(plotwellMap({"check", good}).status, 0);
    const ToolRun all = plotwellMap({"check", good, bad});
    EXPECT_EQ(all.status, 1);
    EXPECT_EQ(all.out,
              (good + ": 2 lines, 1 labels\n" + bad
               + ": 1 lines, 1 labels, stopped at line 4: third field is not a single-precision number\n")
                  .toLocal8Bit());
}

TEST_F(PlotwellMap, NormalizeWritesTheFileAsTheEditorSavesIt)
{
    const QString in = write("in.txt", kGoodMap);
    const ToolRun run = plotwellMap({"normalize", in, path("out.txt")});
    EXPECT_EQ(run.status, 0) << run.err.toStdString();
    EXPECT_TRUE(run.err.isEmpty());
    EXPECT_EQ(read(path("out.txt")),
              "L 10.5,-20,0,30,40,0,255,0,0\r\nL 1.234568,2E+08,0,1E-05,5,6,7,8,9\r\nP 1,2,3,0,0,255,2,Camp_Fire\r\n");
}

TEST_F(PlotwellMap, NormalizeFailsWhenItCannotReadAllOrWrite)
{
    const QByteArray text = "L 1,2,3,4,5,6,7,8,9\r\nL 1,2,3\r\nL 5,5,5,5,5,5,5,5,5\r\n";
    const QString in = write("in.txt", text);
    const ToolRun stops = plotwellMap({"normalize", in, path("out.txt")});
    EXPECT_EQ(stops.status, 1);
    EXPECT_TRUE(stops.err.contains("stopped at line 2: fewer than nine fields")) << stops.err.toStdString();
    EXPECT_EQ(read(path("out.txt")), "L 1,2,3,4,5,6,7,8,9\r\n") << "what was read is written";
    // Written over itself it would lose the unread lines, so it is left alone,
    // under its own name or another that links to it.
    EXPECT_EQ(plotwellMap({"normalize", in, in}).status, 1);
    EXPECT_EQ(read(in), text);
#ifdef Q_OS_UNIX
    ASSERT_EQ(link(QFile::encodeName(in).constData(), QFile::encodeName(path("link.txt")).constData()), 0);
    EXPECT_EQ(plotwellMap({"normalize", in, path("link.txt")}).status, 1);
    EXPECT_EQ(read(path("link.txt")), text);
#endif
    // A file its owner may not write is not replaced, not even by root.
    const QString locked = write("locked.txt", "L 9,9,9,9,9,9,9,9,9\r\n");
    ASSERT_TRUE(QFile::setPermissions(locked, QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther));
    const ToolRun readOnly = plotwellMap({"normalize", write("good.txt", kGoodMap), locked});
    EXPECT_EQ(readOnly.status, 1);
    EXPECT_TRUE(readOnly.err.contains("read-only")) << readOnly.err.toStdString();
    EXPECT_EQ(read(locked), "L 9,9,9,9,9,9,9,9,9\r\n");

    const ToolRun noOutput = plotwellMap({"normalize", in, path("missing/out.txt")});
    EXPECT_EQ(noOutput.status, 1);
    EXPECT_TRUE(noOutput.err.contains("cannot be written")) << noOutput.err.toStdString();
}

TEST_F(PlotwellMap, StatsGivesRangesAndColoursPerFileAndForAllTogether)
{
    const QString zone = write("zone.txt",
                               "L -10.5,20,0,30.25,40,-7,0,0,255\r\n"
                               "L 1,2,3,4,5,6,255,0,0\r\n"
                               "P 1e5,2,1.5e-05,255,0,0,2,Camp\r\n");
    const QString empty = write("zone_1.txt", "# nothing here\r\n");
    const QString two = write("zone_2.txt", "P -3,-4,-5,255,0,0,1,Bank\nP 0,0,0,0,0,0,1,Door\n");
    const ToolRun one = plotwellMap({"stats", zone});
    EXPECT_EQ(one.status, 0) << one.err.toStdString();
    EXPECT_EQ(one.out,
              (zone
               + ": 2 lines, 1 labels\n"
                 "  x: -10.5 to 100000\n"
                 "  y: 2 to 40\n"
                 "  z: -7 to 6\n"
                 "  colour 0,0,255: 1 lines, 0 labels\n"
                 "  colour 255,0,0: 1 lines, 1 labels\n")
                  .toLocal8Bit());

    const ToolRun all = plotwellMap({"stats", zone, empty, two});
    EXPECT_EQ(all.status, 0) << all.err.toStdString();
    EXPECT_TRUE(all.out.endsWith((empty + ": 0 lines, 0 labels\n" + two
                                  + ": 0 lines, 2 labels\n"
                                    "  x: -3 to 0\n"
                                    "  y: -4 to 0\n"
                                    "  z: -5 to 0\n"
                                    "  colour 0,0,0: 0 lines, 1 labels\n"
                                    "  colour 255,0,0: 0 lines, 1 labels\n"
                                    "total: 2 lines, 3 labels\n"
                                    "  x: -10.5 to 100000\n"
                                    "  y: -4 to 40\n"
                                    "  z: -7 to 6\n"
                                    "  colour 0,0,0: 0 lines, 1 labels\n"
                                    "  colour 0,0,255: 1 lines, 0 labels\n"
                                    "  colour 255,0,0: 1 lines, 2 labels\n")
                                     .toLocal8Bit()))
        << all.out.toStdString();
}

// Whatever the file, each command ends with a message and a status, and
// nothing is written from a file that is not a map.
TEST_F(PlotwellMap, HostileFilesGetAMessageAndAStatus)
{
    const QString binary = write("picture.txt", QByteArray("\x89PNG\r\n\x1a\n\0\0\0\rIHDR", 16));
    const QString stops = write("stops.txt", "L 1,2,3,4,5,6,7,8,9\r\nL 1,2\r\n\0");
    const QString fifo = path("fifo");
    QList<std::pair<QString, QByteArray>> cases{
        {dir.path(), ": cannot be opened: it is a folder, not a file"},
        {binary, ": 0 lines, 0 labels, holds NUL bytes (not a text file)"},
        {stops, ": 1 lines, 0 labels, stopped at line 2: fewer than nine fields"},
        {path("missing.txt"), ": cannot be opened: " + plotwell::test::openErrorOf(path("missing.txt")).toLocal8Bit()},
    };
#ifdef Q_OS_UNIX
    ASSERT_EQ(mkfifo(QFile::encodeName(fifo).constData(), 0600), 0);
    cases.append({fifo, ": cannot be opened: it is not a regular file (a pipe, a device or a socket)"});
#endif
    for (const auto& [file, message] : cases) {
        for (const char* command : {"check", "stats"}) {
            const ToolRun run = plotwellMap({command, file});
            EXPECT_EQ(run.status, 1) << command << " " << file.toStdString();
            EXPECT_TRUE(run.out.startsWith(file.toLocal8Bit() + message)) << run.out.toStdString();
        }
        const ToolRun normalize = plotwellMap({"normalize", file, path("out.txt")});
        EXPECT_EQ(normalize.status, 1) << file.toStdString();
        EXPECT_TRUE(normalize.err.startsWith(file.toLocal8Bit() + message)) << normalize.err.toStdString();
        EXPECT_EQ(QFile::exists(path("out.txt")), file == stops) << "only the records of a map are written";
        QFile::remove(path("out.txt"));
    }
    EXPECT_EQ(read(binary), QByteArray("\x89PNG\r\n\x1a\n\0\0\0\rIHDR", 16));
}

// Each render ends with a status; a picture is written only when it can be
// whole, and a zone's base file brings its siblings.
TEST_F(PlotwellMap, RenderWritesAPictureOrTellsWhyNot)
{
    const QString zone = write("zone.txt", "L 0,0,0,100,50,0,0,0,255\r\nP 10,10,0,0,0,0,1,Camp\r\n");
    write("Zone_1.txt", "P 50,25,0,255,0,0,1,Bank\r\n"); // the game ignores the case of names
    const QString point = write("point.txt", "L 5,5,0,5,5,0,0,0,0\r\n");
    const QString stops = write("stops.txt", "L 0,0,0,9,9,0,0,0,0\r\nL 1\r\n");
    const struct {
        QStringList args;
        int status;
        const char* written; // the picture, or empty when none
        const char* says; // part of stderr
    } cases[] = {
        {{zone, "-o", path("a.svg")}, 0, "a.svg", ""},
        {{zone, "-o", path("b.png"), "--size", "300x200"}, 0, "b.png", ""},
        {{"--no-labels", zone, "-o", path("c.SVG")}, 0, "c.SVG", ""},
        {{stops, "-o", path("d.png")}, 1, "d.png", "stopped at line 2"},
        {{point, "-o", path("e.png")}, 1, "", "lies at one point"},
        {{path("none.txt"), "-o", path("f.png")}, 1, "", "cannot be opened"},
        {{zone, "-o", path("missing/g.png")}, 1, "", "cannot be written"},
        {{zone, "-o", path("h.jpg")}, 2, "", "must end in .png or .svg"},
        {{zone, "-o", path("i.png"), "--size", "0x10"}, 2, "", "--size"},
        {{zone, "-o", path("j.png"), "--size", "32769x10"}, 2, "", "--size"},
        {{zone}, 2, "", "-o"},
    };
    for (const auto& c : cases) {
        const std::string name = c.args.join(' ').toStdString();
        const QStringList before = QDir(dir.path()).entryList(QDir::Files);
        const ToolRun run = plotwellMap(QStringList{"render"} + c.args);
        EXPECT_EQ(run.status, c.status) << name << "\n" << run.err.toStdString();
        EXPECT_TRUE(run.err.contains(c.says)) << name << "\n" << run.err.toStdString();
        QStringList added = QDir(dir.path()).entryList(QDir::Files);
        for (const QString& file : before)
            added.removeOne(file);
        EXPECT_EQ(added, *c.written ? QStringList{c.written} : QStringList{}) << name;
    }
    EXPECT_EQ(QImage(path("b.png")).size(), QSize(300, 200));
    const QByteArray svg = read(path("a.svg"));
    EXPECT_TRUE(svg.contains(">Camp</text>") && svg.contains(">Bank</text>")) << "the base layer and layer 1";
    EXPECT_TRUE(svg.contains("inkscape:label=\"zone.txt\"") && svg.contains("inkscape:label=\"Zone_1.txt\""))
        << "each layer a group named after its file";
    EXPECT_FALSE(read(path("c.SVG")).contains("<text"));
}

TEST_F(PlotwellMap, BadArgumentsGetTheUsage)
{
    const QString file = path("a.txt");
    for (const QStringList& args : QList<QStringList>{
             {}, {"check"}, {"stats"}, {"normalize", file}, {"normalize", file, file, file}, {"convert", file}}) {
        const ToolRun run = plotwellMap(args);
        EXPECT_EQ(run.status, 2) << args.join(' ').toStdString();
        EXPECT_TRUE(run.err.contains("usage: plotwell-map") && run.out.isEmpty()) << args.join(' ').toStdString();
    }
    const ToolRun help = plotwellMap({"--help"});
    EXPECT_EQ(help.status, 0);
    EXPECT_TRUE(help.out.contains("check FILE...") && help.out.contains("normalize IN OUT")
                && help.out.contains("stats FILE..."));
}

} // namespace
