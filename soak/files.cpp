#include "soak/files.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QStringList>

#include <charconv>
#include <cstring>
#include <string>

namespace plotwell::soak {
namespace {

void writeFile(const QString& path, const QByteArray& bytes)
{
    QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner);
    QFile file(path);
    if (file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        file.write(bytes);
}

std::string number(double v)
{
    char buffer[32];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, v);
    return std::string(buffer, result.ptr);
}

// A coordinate as people and programs write them: whole, with decimals, or
// in the forms at the ends of the single range.
std::string coordinate(Rng& rng, double spread)
{
    const double v = rng.range(-spread, spread);
    switch (rng.below(6)) {
        case 0:
            return std::to_string(long(v));
        case 1:
            return number(double(float(v)));
        default:
            return number(std::round(v * 100) / 100);
    }
}

std::string extreme(Rng& rng)
{
    return rng.pick<const char*>({"3.4028235e38",
                                  "-3.4028234E+38",
                                  "1e38",
                                  "2.5e38",
                                  "-2.5E+38",
                                  "1e-38",
                                  "1.4e-45",
                                  "-0",
                                  "0",
                                  "1e30",
                                  "-1e-30",
                                  "16777217",
                                  "0.1",
                                  "9.999999E+27",
                                  "1E+28",
                                  "340282346638528859811704183484516925440",
                                  "  7  ",
                                  "+5",
                                  ".5",
                                  "5."});
}

std::string colour(Rng& rng)
{
    return std::to_string(rng.below(256));
}

QByteArray labelWord(Rng& rng)
{
    static const char* const words[] = {"Bank",        "Camp Fire", "Guard_Tower", "Zone In", "to East Commonlands",
                                        "(New Label)", "Gate",      "Merchant",    "",        " padded "};
    QByteArray word = words[rng.below(int(std::size(words)))];
    if (rng.chance(0.2))
        word += char(rng.between(0x80, 0xff)); // a byte of the code page's upper half
    return word;
}

const char* lineEnd(Rng& rng, bool mixed)
{
    if (!mixed)
        return "\r\n";
    return rng.pick<const char*>({"\r\n", "\n", "\r"});
}

QByteArray plainMap(Rng& rng, int lines, int labels, double spread, bool mixedEnds)
{
    QByteArray text;
    const char* sep = rng.chance(0.5) ? "," : ", ";
    for (int i = 0; i < lines + labels; ++i) {
        std::string record;
        if (rng.below(lines + labels) < lines) {
            record = "L " + coordinate(rng, spread) + sep + coordinate(rng, spread) + sep + coordinate(rng, 300) + sep
                + coordinate(rng, spread) + sep + coordinate(rng, spread) + sep + coordinate(rng, 300) + sep
                + colour(rng) + sep + colour(rng) + sep + colour(rng);
        } else {
            record = "P " + coordinate(rng, spread) + sep + coordinate(rng, spread) + sep + coordinate(rng, 300) + sep
                + colour(rng) + sep + colour(rng) + sep + colour(rng) + sep + std::to_string(rng.between(-2, 5)) + sep;
            text += QByteArray::fromStdString(record) + labelWord(rng) + lineEnd(rng, mixedEnds);
            continue;
        }
        text += QByteArray::fromStdString(record) + lineEnd(rng, mixedEnds);
    }
    return text;
}

QByteArray largeMap(Rng& rng)
{
    QByteArray text;
    const int lines = rng.between(2100, 3500);
    const double cx = rng.range(-3000, 3000), cy = rng.range(-3000, 3000);
    for (int i = 0; i < lines; ++i) {
        const double x = cx + rng.range(-4000, 4000), y = cy + rng.range(-4000, 4000);
        const double reach = rng.chance(0.05) ? 6000 : 40;
        text +=
            QByteArray::fromStdString("L " + number(x) + "," + number(y) + ",0," + number(x + rng.range(-reach, reach))
                                      + "," + number(y + rng.range(-reach, reach)) + ",0," + colour(rng) + ",0,0\r\n");
    }
    return text + plainMap(rng, 0, rng.below(30), 4000, false);
}

QByteArray extremeMap(Rng& rng)
{
    QByteArray text;
    const int records = rng.between(1, 60);
    for (int i = 0; i < records; ++i) {
        const auto c = [&rng] { return rng.chance(0.6) ? extreme(rng) : coordinate(rng, 1e6); };
        if (rng.chance(0.7))
            text += QByteArray::fromStdString("L " + c() + "," + c() + "," + c() + "," + c() + "," + c() + "," + c()
                                              + "," + colour(rng) + "," + colour(rng) + "," + colour(rng) + "\r\n");
        else
            text += QByteArray::fromStdString("P " + c() + "," + c() + "," + c() + "," + colour(rng) + ",0,0,"
                                              + rng.pick<const char*>({"32767", "-32768", "1", "0.5", "1.5"}) + ",")
                + labelWord(rng) + "\r\n";
    }
    return text;
}

QByteArray singleLimitMap(Rng& rng)
{
    QByteArray text;
    const int lines = rng.between(2048, 3200);
    const double x = rng.range(2.3e38, 2.6e38);
    for (int i = 0; i < lines; ++i)
        text += QByteArray::fromStdString("L " + number(x) + "," + std::to_string(i) + ",0," + number(x) + ","
                                          + std::to_string(i + 1) + ",0,255,0,0\r\n");
    return text;
}

QByteArray stopsEarly(Rng& rng)
{
    QByteArray text = plainMap(rng, rng.below(40), rng.below(10), 3000, false);
    text += rng.pick<const char*>({"L 1e39,0,0,1,1,1,0,0,0\r\n", "L 1,2,3\r\n", "L 1,2,x,4,5,6,7,8,9\r\n",
                                   "L 1,2,3,4,5,6,256,0,0\r\n", "P 1,2,3,0,0,0,40000,Big\r\n", "P 1,2,3,0,0,0,1\r\n",
                                   "L nan,1,1,1,1,1,0,0,0\r\n", "L inf,1,1,1,1,1,0,0,0\r\n"});
    return text + plainMap(rng, rng.below(40), rng.below(10), 3000, false);
}

QByteArray binary(Rng& rng)
{
    QByteArray bytes(rng.between(1, 4000), '\0');
    for (char& b : bytes)
        b = char(rng.below(4) == 0 ? 0 : rng.below(256));
    if (rng.chance(0.5))
        bytes.prepend("L 1,2,3,4,5,6,7,8,9\r\n");
    return bytes;
}

QByteArray lineEnds(Rng& rng)
{
    QByteArray text = plainMap(rng, rng.below(60), rng.below(20), 2000, true);
    const char* const odd[] = {"l 1,2,3,4,5,6,7,8,9\r\n",
                               "L1,2,3,4,5,6,7,8,9\r\n",
                               " L 1,2,3,4,5,6,7,8,9\n",
                               "L 1,2,3,4,5,6,7,8,9,extra,fields\r",
                               "\r\n\r\n",
                               "# a comment\n",
                               "L  1 , 2 , 3 , 4 , 5 , 6 , 7 , 8 , 9 \r\n",
                               "P 1,2,3,4,5,6,7,a,b,c\r\n",
                               "\n\r"};
    for (int i = 0; i < 10; ++i)
        text.insert(rng.below(int(text.size()) + 1) / 1, odd[rng.below(int(std::size(odd)))]);
    return text;
}

QByteArray longLine(Rng& rng)
{
    QByteArray text = plainMap(rng, rng.below(10), 0, 1000, false);
    QByteArray line(int((1 << 20) + rng.below(1000)), 'x');
    if (rng.chance(0.5))
        std::memcpy(line.data(), "P 1,2,3,0,0,0,1,", 16); // a record that long stops the read
    return text + line + "\r\n" + plainMap(rng, rng.below(10), 1, 1000, false);
}

QByteArray utf16(Rng& rng)
{
    const QString text = QString::fromLatin1(plainMap(rng, rng.below(20), rng.below(5), 1000, false));
    QByteArray bytes("\xff\xfe", 2);
    for (const QChar c : text) {
        bytes += char(c.unicode() & 0xff);
        bytes += char(c.unicode() >> 8);
    }
    return bytes;
}

QByteArray mutated(Rng& rng)
{
    QByteArray text = plainMap(rng, rng.between(1, 40), rng.below(10), 3000, false);
    const int changes = rng.between(1, 12);
    for (int i = 0; i < changes && !text.isEmpty(); ++i) {
        const int at = rng.below(int(text.size()));
        const char byte = rng.pick<char>({',', ' ', '\r', '\n', '-', '.', 'e', 'E', '9', '\0', 'L', 'P', char(0xe9)});
        switch (rng.below(3)) {
            case 0:
                text[at] = byte;
                break;
            case 1:
                text.insert(at, byte);
                break;
            default:
                text.remove(at, rng.between(1, 5));
                break;
        }
    }
    return text;
}

QByteArray oddLabels(Rng& rng)
{
    QByteArray text;
    const int labels = rng.between(1, 30);
    for (int i = 0; i < labels; ++i) {
        QByteArray label;
        switch (rng.below(5)) {
            case 0:
                label = "Gate,North,East";
                break;
            case 1:
                for (int k = rng.between(1, 40); k > 0; --k)
                    label += char(rng.between(0x20, 0xff));
                break;
            case 2:
                label = QByteArray(rng.between(1000, 10000), 'w');
                break;
            case 3:
                label = "\tTabbed\t_under_score_ ";
                break;
            default:
                label = labelWord(rng);
                break;
        }
        text += QByteArray::fromStdString("P " + coordinate(rng, 2000) + "," + coordinate(rng, 2000) + ",0,"
                                          + colour(rng) + ",0,0,1,")
            + label + "\r\n";
    }
    return text;
}

QByteArray picture(PictureKind kind, std::uint64_t seed)
{
    Rng rng(seed);
    QImage image(rng.between(1, 300), rng.between(1, 300), QImage::Format_RGB32);
    image.fill(QColor::fromRgb(quint32(rng.bits())));
    for (int i = 0; i < 20; ++i)
        image.setPixel(rng.below(image.width()), rng.below(image.height()), quint32(rng.bits()));
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    switch (kind) {
        case PictureKind::Png:
        case PictureKind::Truncated:
            image.save(&buffer, "PNG");
            if (kind == PictureKind::Truncated)
                bytes.truncate(bytes.size() / 2);
            return bytes;
        case PictureKind::Bmp:
            image.save(&buffer, "BMP");
            return bytes;
        case PictureKind::Jpeg:
            image.save(&buffer, "JPG");
            return bytes;
        case PictureKind::Garbage:
            return binary(rng);
        case PictureKind::Empty:
            return {};
        case PictureKind::Forged: {
            // A bitmap header that claims 40000 x 40000 pixels, with no pixels behind it.
            image.save(&buffer, "BMP");
            const qint32 side = 40000;
            if (bytes.size() >= 26) {
                std::memcpy(bytes.data() + 18, &side, 4);
                std::memcpy(bytes.data() + 22, &side, 4);
            }
            return bytes;
        }
        case PictureKind::MapText:
        case PictureKind::Count:
            break;
    }
    return mapText(MapKind::Plain, seed);
}

} // namespace

QByteArray mapText(MapKind kind, std::uint64_t seed)
{
    Rng rng(seed);
    switch (kind) {
        case MapKind::Plain:
        case MapKind::Count:
            break;
        case MapKind::Large:
            return largeMap(rng);
        case MapKind::Extreme:
            return extremeMap(rng);
        case MapKind::SingleLimit:
            return singleLimitMap(rng);
        case MapKind::StopsEarly:
            return stopsEarly(rng);
        case MapKind::Binary:
            return binary(rng);
        case MapKind::LineEnds:
            return lineEnds(rng);
        case MapKind::LongLine:
            return longLine(rng);
        case MapKind::Empty:
            return {};
        case MapKind::Utf16:
            return utf16(rng);
        case MapKind::Mutated:
            return mutated(rng);
        case MapKind::OddLabels:
            return oddLabels(rng);
    }
    return plainMap(rng, rng.below(150), rng.below(40), 5000, false);
}

QString makeFile(const QString& folder, const QString& recipe)
{
    const QStringList parts = recipe.split(QLatin1Char(' '));
    if (parts.size() < 2)
        return {};
    const QString& what = parts[0];
    const bool generated =
        what == QLatin1String("map") || what == QLatin1String("zone") || what == QLatin1String("pic");
    const int nameAt = generated ? 3 : 1;
    if (parts.size() <= nameAt)
        return {};
    const QString name = parts.mid(nameAt).join(QLatin1Char(' '));
    const QString path = QDir(folder).filePath(name);
    if (generated) {
        const int kind = parts[1].toInt();
        const std::uint64_t seed = parts[2].toULongLong();
        if (what == QLatin1String("pic")) {
            writeFile(path, picture(PictureKind(kind % int(PictureKind::Count)), seed));
            return path;
        }
        const MapKind mapKind = MapKind(kind % int(MapKind::Count));
        writeFile(path, mapText(mapKind, seed));
        if (what == QLatin1String("zone")) {
            // Some of the siblings name_1 .. name_3 beside the base file, as
            // map packs name them: often capitalised beside a lower-case base.
            const QString stem = name.endsWith(QLatin1String(".txt")) ? name.chopped(4) : name;
            for (int n = 1; n <= 3; ++n) {
                const std::uint64_t pick = mixSeed(seed, std::uint64_t(n));
                if (pick % 3 == 0)
                    continue;
                const QString sibling = pick % 2 ? stem.left(1).toUpper() + stem.mid(1) : stem;
                writeFile(QDir(folder).filePath(sibling + QStringLiteral("_%1.txt").arg(n)),
                          mapText(MapKind::Plain, mixSeed(seed, std::uint64_t(n) + 10)));
            }
        }
        return path;
    }
    if (what == QLatin1String("keep"))
        return path;
    if (what == QLatin1String("dir")) {
        QFile::remove(path);
        QDir(folder).mkpath(name);
        return path;
    }
    if (what == QLatin1String("gone"))
        return QDir(folder).filePath(QStringLiteral("missing/") + name);
    if (what == QLatin1String("ro")) {
        if (!QFile::exists(path))
            writeFile(path, "L 1,2,3,4,5,6,7,8,9\r\n");
        QFile::setPermissions(path, QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther);
        return path;
    }
    return {};
}

} // namespace plotwell::soak
