#include "editor/picturecommands.h"
#include "platform/twips.h"
#include "render/pictureframe.h"
#include "soak/files.h"
#include "soak/generator.h"
#include "soak/programsteps.h"
#include "soak/world.h"

#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>

#include <algorithm>
#include <tuple>

namespace plotwell::soak {
namespace {

// A picture takes the longer the more pixels it has: the soak draws at most
// so many, to stay quick.
constexpr double kMostPixels = 300000;

int pictureSide(Generator& g)
{
    return g.rng.pick<int>({0, 1, 2, 33, 300, 700, 2048, 32768, 32769, 100000, -7, 2147483647});
}

bool possibleSide(int side)
{
    return side >= 1 && side <= kMaxPictureSide;
}

// What a folder holds, to tell what an export changed in it.
struct Entry {
    QString path;
    qint64 size = 0;
    qint64 modified = 0;
    bool folder = false;
    bool operator==(const Entry& o) const
    {
        return std::tie(path, size, modified, folder) == std::tie(o.path, o.size, o.modified, o.folder);
    }
};

std::vector<Entry> listing(const QString& folder)
{
    std::vector<Entry> entries;
    QDirIterator it(folder, QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System,
                    QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QFileInfo info(it.next());
        entries.push_back({info.absoluteFilePath(), info.isDir() ? 0 : info.size(),
                           info.lastModified().toMSecsSinceEpoch(), info.isDir()});
    }
    std::sort(entries.begin(), entries.end(), [](const Entry& a, const Entry& b) { return a.path < b.path; });
    return entries;
}

std::vector<Entry> without(std::vector<Entry> entries, const QString& path)
{
    const QString absolute = QFileInfo(path).absoluteFilePath();
    entries.erase(std::remove_if(entries.begin(), entries.end(), [&](const Entry& e) { return e.path == absolute; }),
                  entries.end());
    return entries;
}

// Whether the file holds a whole picture of its kind, of the size asked for
// when one was.
std::optional<std::string> wholePicture(const QString& path, QSize size)
{
    const std::optional<PictureFormat> format = pictureFormatOf(path);
    if (!QFileInfo(path).isFile() || !format)
        return "no picture file is there";
    if (*format == PictureFormat::Png) {
        QImageReader reader(path, "png");
        const QImage image = reader.read();
        if (image.isNull())
            return "the PNG cannot be read: " + reader.errorString().toStdString();
        if (size.isValid() && image.size() != size)
            return "the PNG has " + std::to_string(image.width()) + " x " + std::to_string(image.height()) + " pixels";
        return std::nullopt;
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return "the SVG cannot be read";
    const QByteArray text = file.readAll();
    if (!text.startsWith("<?xml") || !text.trimmed().endsWith("</svg>"))
        return "the SVG is not whole";
    return std::nullopt;
}

std::string entryText(const Entry& e)
{
    return shortText(e.path) + (e.folder ? " (a folder)" : " (" + std::to_string(e.size) + " bytes)");
}

// What differs between two listings, for a message.
std::string firstChange(const std::vector<Entry>& before, const std::vector<Entry>& after)
{
    for (std::size_t i = 0; i < std::max(before.size(), after.size()); ++i) {
        if (i >= before.size())
            return entryText(after[i]) + " appeared";
        if (i >= after.size() || before[i].path != after[i].path)
            return entryText(before[i]) + " is gone or another file appeared";
        if (!(before[i] == after[i]))
            return entryText(before[i]) + " changed";
    }
    return {};
}

} // namespace

Step makeExport(Generator& g)
{
    // Where the file dialog points: new names and old, an extension in any
    // case, none at all, another one, a folder, a missing folder, a file
    // that cannot be written, or a cancel.
    const QString target = g.rng.pick<QString>(
        {QStringLiteral("keep picture.png"), QStringLiteral("keep picture.svg"), QStringLiteral("keep Map Picture.PNG"),
         QStringLiteral("keep drawing.Svg"), QStringLiteral("keep \u00fcnicode.svg"), QStringLiteral("keep picture"),
         QStringLiteral("keep .png"), QStringLiteral("keep picture.jpg"), QStringLiteral("keep a.txt"),
         QStringLiteral("keep zone.txt"), QStringLiteral("dir picture.png"), QStringLiteral("gone picture.svg"),
         QStringLiteral("ro picture.png"), QStringLiteral("ro drawing.svg"), QString()});
    return Step{"export",
                {double(g.rng.chance(0.9)), double(g.rng.chance(0.7)), double(pictureSide(g)), double(pictureSide(g)),
                 double(g.rng.chance(0.5)), double(g.rng.chance(0.5))},
                {target}};
}

namespace {

// The options as the dialog answers them, with the pixels to draw kept few:
// the file's name decides the format (the dialog's choice only when the name
// has no extension), and pixels are drawn for a PNG and for an SVG with the
// underlay in it. A large whole map becomes a long thin strip; a large view
// is written as an SVG without the underlay.
PictureOptions boundedOptions(const Step& s, const View& view, QString& target)
{
    PictureOptions options;
    options.area = s.whole(1) != 0 ? PictureArea::WholeMap : PictureArea::CurrentView;
    options.size = QSize(s.whole(2), s.whole(3));
    options.format = s.whole(4) != 0 ? PictureFormat::Svg : PictureFormat::Png;
    options.underlay = s.whole(5) != 0;
    const QString name = target.section(QLatin1Char(' '), 1);
    const bool png = pictureFormatOf(name) == PictureFormat::Png
        || (QFileInfo(name).suffix().isEmpty() && options.format == PictureFormat::Png);
    if (!png && !options.underlay)
        return options;
    const int width = options.size.width();
    const int height = options.size.height();
    if (options.area == PictureArea::WholeMap && possibleSide(width) && possibleSide(height)
        && double(width) * height > kMostPixels)
        options.size.setHeight(std::max(1, int(kMostPixels / width)));
    if (options.area == PictureArea::CurrentView && double(px(view.mapWidth)) * px(view.mapHeight) > kMostPixels) {
        target = QStringLiteral("keep large view.svg");
        options.underlay = false;
    }
    return options;
}

} // namespace

void runExport(World& w, const Step& s)
{
    QString target = s.text(0);
    PictureOptions& options = w.pictureDialog.options;
    options = boundedOptions(s, w.editor.view, target);
    // The target as it is when the file dialog shows it.
    makeFile(w.folder, target);
    const std::vector<Entry> before = listing(w.folder);
    const std::size_t messages = w.dialogs.messages.size();
    w.fileDialog.chosenFiles.clear();
    w.answers = {target};
    w.pictureDialog.accept = s.whole(0) != 0;
    exportPictureFromMenu(w.editor);
    w.pictureDialog.accept = false;

    // Either a message told why nothing was written and the folder is as it
    // was, or the chosen file, with the format's extension when it had none,
    // holds a whole picture and nothing else changed.
    QString written;
    if (w.dialogs.messages.size() == messages && !w.fileDialog.chosenFiles.isEmpty()) {
        written = w.fileDialog.chosenFiles.last();
        if (QFileInfo(written).suffix().isEmpty())
            written += options.format == PictureFormat::Png ? QStringLiteral(".png") : QStringLiteral(".svg");
        const QSize size = options.area == PictureArea::WholeMap ? options.size : QSize();
        if (auto broken = wholePicture(written, size)) {
            w.fault = "export: no message, and at " + shortText(written) + " " + *broken;
            return;
        }
    }
    const std::vector<Entry> after = without(listing(w.folder), written);
    if (!(without(before, written) == after))
        w.fault = "export: " + std::string(written.isEmpty() ? "nothing was exported, yet " : "beside the picture, ")
            + firstChange(without(before, written), after);
}

} // namespace plotwell::soak
