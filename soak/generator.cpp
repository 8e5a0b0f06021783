#include "soak/generator.h"

#include "document/ansitext.h"
#include "soak/files.h"
#include "soak/programsteps.h"
#include "soak/stepkinds.h"
#include "soak/world.h"
#include "view/viewkeys.h"
#include "view/zoom.h"

#include <cmath>

namespace plotwell::soak {
namespace {

// File names the steps share, so that a file saved by one step is loaded by
// another and zones find their siblings.
const char* const kMapNames[] = {"a.txt",      "b.txt",          "zone.txt",           "zone_1.txt",
                                 "zone_2.txt", "with space.txt", "\xc3\xbcnicode.txt", "layer.txt"};

QString mapName(Rng& rng)
{
    return QString::fromUtf8(kMapNames[rng.below(int(std::size(kMapNames)))]);
}

// A character of any kind: plain, of the map's code page, far beyond it, a
// lone half of a surrogate pair, a line break, a comma.
QString randomCharacter(Rng& rng)
{
    switch (rng.below(10)) {
        case 0:
            return QString(QChar(char16_t(rng.between(0x80, 0xff))));
        case 1:
            return QString(QChar(char16_t(rng.between(0x100, 0xd7ff))));
        case 2:
            return QString(QChar(char16_t(rng.between(0xd800, 0xdfff))));
        case 3: {
            const char32_t c = char32_t(rng.between(0x10000, 0x10ffff));
            return QString::fromUcs4(&c, 1);
        }
        case 4:
            return rng.pick<QString>({QStringLiteral("\r"), QStringLiteral("\n"), QStringLiteral("\r\n"),
                                      QStringLiteral(","), QStringLiteral(" "), QStringLiteral("\t"),
                                      QStringLiteral("\u2028"), QString(QChar(0))});
        default:
            return QString(QChar(char16_t(rng.between(0x20, 0x7e))));
    }
}

} // namespace

Step Generator::next()
{
    if (!m_planned.empty()) {
        Step step = std::move(m_planned.front());
        m_planned.pop_front();
        return step;
    }
    int total = 0;
    for (const StepKind& kind : stepKinds())
        total += kind.weight;
    int at = rng.below(total);
    for (const StepKind& kind : stepKinds()) {
        if (at < kind.weight) {
            Step step = kind.make(*this);
            // Taken back at once, now and then, after whatever it brings.
            if (oftenUndone(step, world()) && rng.chance(0.15)) {
                for (Step& undo : undoRun(*this))
                    plan(std::move(undo));
            }
            return step;
        }
        at -= kind.weight;
    }
    return stepKinds().front().make(*this);
}

Step Generator::nestedStep()
{
    for (;;) {
        const StepKind& kind = stepKinds()[std::size_t(rng.below(int(stepKinds().size())))];
        if (!kind.nestable || kind.weight == 0)
            continue;
        // What it plans would run after the outer step, not inside it.
        const std::size_t planned = m_planned.size();
        Step step = kind.make(*this);
        m_planned.resize(planned);
        step.nested = true;
        return step;
    }
}

SurfacePoint Generator::point()
{
    const View& view = world().editor.view;
    const MapDocument& doc = world().editor.doc;
    switch (rng.below(10)) {
        case 0:
        case 1:
        case 2: {
            // On a record, or just beside it.
            const std::size_t records = doc.lineCount() + doc.labelCount();
            if (records == 0)
                break;
            const std::size_t i = std::size_t(rng.bits() % records);
            const MapPoint& p = i < doc.lineCount() ? (rng.chance(0.5) ? doc.lines()[i].p1 : doc.lines()[i].p2)
                                                    : doc.labels()[i - doc.lineCount()].pos;
            const MapPoint s = toSurfacePoint(view, p);
            const float jitter = float(rng.pick<double>({0, 1, 15, 45}));
            const SurfacePoint near{s.sx + float(rng.range(-jitter, jitter)), s.sy + float(rng.range(-jitter, jitter))};
            if (std::isfinite(near.x) && std::isfinite(near.y))
                return near;
            break;
        }
        case 3: {
            // Far outside the map: as far as a screen reaches while a drag
            // leaves the window, and now and then as far as a single reaches.
            const auto far = [this] {
                return rng.chance(0.9) ? float(rng.range(-200000, 200000))
                                       : float(rng.pick<double>({-3e38, 3e38, -1e30, 1e30}));
            };
            return {far(), rng.chance(0.5) ? far() : float(rng.range(0, view.mapHeight))};
        }
        case 4:
            return {float(rng.pick<double>({0, view.mapWidth})), float(rng.pick<double>({0, view.mapHeight}))};
        default:
            break;
    }
    return {float(rng.range(-200, view.mapWidth + 200)), float(rng.range(-200, view.mapHeight + 200))};
}

int Generator::pressButton()
{
    return rng.pick<int>({kLeftButton, kLeftButton, kLeftButton, kRightButton, kMiddleButton});
}

int Generator::heldButtons()
{
    if (rng.chance(0.8))
        return rng.pick<int>({0, 0, kLeftButton, kLeftButton, kRightButton});
    return rng.between(3, 7);
}

QString Generator::caption()
{
    switch (rng.below(12)) {
        case 0:
            return QStringLiteral("(New Label)");
        case 1:
            return rng.pick<QString>({QStringLiteral("(nEW lABEL)"), QString(), QStringLiteral("   "),
                                      QStringLiteral("Gate,North"), QStringLiteral("Guard Tower\nLevel 2"),
                                      QStringLiteral("Bank\r\n"), QStringLiteral("\nBank")});
        case 2: {
            // 40,000 characters of one kind or of many.
            const QString one = randomCharacter(rng);
            QString text;
            for (int i = 0; i < 40000; i += int(one.size()))
                text += rng.chance(0.001) ? randomCharacter(rng) : one;
            return text;
        }
        case 3:
        case 4:
        case 5: {
            QString text;
            for (int i = rng.between(1, 30); i > 0; --i)
                text += randomCharacter(rng);
            return text;
        }
        default:
            return rng.pick<QString>({QStringLiteral("North Gate"), QStringLiteral("Bank"), QStringLiteral("Zone In"),
                                      QStringLiteral("  Old  Bank "), QStringLiteral("Stra\u00dfe \u2603")});
    }
}

QString Generator::typedNumber()
{
    switch (rng.below(4)) {
        case 0:
            return QString::number(rng.between(-300, 600));
        case 1:
            return QString::number(rng.range(-1e6, 1e6), 'g', 12);
        default:
            return rng.pick<QString>({QString(),
                                      QStringLiteral("NaN"),
                                      QStringLiteral("nan"),
                                      QStringLiteral("inf"),
                                      QStringLiteral("-inf"),
                                      QStringLiteral("1e999"),
                                      QStringLiteral("-1e999"),
                                      QStringLiteral("1e-999"),
                                      QStringLiteral("3.4028236e38"),
                                      QStringLiteral("7abc"),
                                      QStringLiteral("abc"),
                                      QStringLiteral(" 1 2 8 "),
                                      QStringLiteral("255.5"),
                                      QStringLiteral("12.5"),
                                      QStringLiteral("-0"),
                                      QStringLiteral("0x10"),
                                      QStringLiteral("1,5"),
                                      QStringLiteral("\u0661\u0662"),
                                      QStringLiteral("+"),
                                      QStringLiteral("."),
                                      QStringLiteral("1e"),
                                      QStringLiteral("99999999999999999999999")});
    }
}

QString Generator::typedLocation()
{
    if (rng.chance(0.3))
        return world().editor.view.readout.loc.mid(5); // as copied by the Crosshair, without "Loc: "
    const QString a = typedNumber();
    const QString b = typedNumber();
    return rng.pick<QString>({a + QStringLiteral(" , ") + b, a + QLatin1Char(',') + b, a, QStringLiteral(","),
                              QStringLiteral("Loc: ") + a + QStringLiteral(" , ") + b, QStringLiteral("NaN , 1e999"),
                              QStringLiteral("1e38 , -1e38")});
}

QString Generator::keyword()
{
    const MapDocument& doc = world().editor.doc;
    if (doc.labelCount() > 0 && rng.chance(0.5)) {
        const QString text = fromAnsi(doc.labels()[std::size_t(rng.bits() % doc.labelCount())].text);
        const int from = text.isEmpty() ? 0 : rng.below(int(text.size()));
        return text.mid(from, rng.between(1, 6));
    }
    return rng.pick<QString>({QStringLiteral("bank"), QString(), QStringLiteral("_"), QStringLiteral("GATE"),
                              QStringLiteral("\u00fc"), randomCharacter(rng)});
}

QString Generator::mapRecipe()
{
    const int kind = rng.below(int(MapKind::Count));
    const QString seed = QString::number(rng.bits() >> 1);
    switch (rng.below(12)) {
        case 0:
            return QStringLiteral("keep ") + mapName(rng);
        case 1:
            return QStringLiteral("dir ") + mapName(rng);
        case 2:
            return QStringLiteral("gone ") + mapName(rng);
        case 3:
            return QString();
        case 4:
            return QStringLiteral("zone %1 %2 zone.txt").arg(kind).arg(seed);
        default:
            return QStringLiteral("map %1 %2 ").arg(kind).arg(seed) + mapName(rng);
    }
}

QString Generator::pictureRecipe()
{
    if (rng.chance(0.1))
        return rng.pick<QString>({QString(), QStringLiteral("dir pic.png"), QStringLiteral("gone pic.png")});
    return QStringLiteral("pic %1 %2 ").arg(rng.below(8)).arg(rng.bits() >> 1)
        + rng.pick<QString>({QStringLiteral("pic.png"), QStringLiteral("pic.jpg"), QStringLiteral("pic.bmp"),
                             QStringLiteral("pic.gif")});
}

QString Generator::saveAnswer()
{
    switch (rng.below(8)) {
        case 0:
            return QString();
        case 1:
            return QStringLiteral("dir ") + mapName(rng);
        case 2:
            return QStringLiteral("gone ") + mapName(rng);
        case 3:
            return QStringLiteral("ro ") + mapName(rng);
        default:
            return QStringLiteral("keep ") + mapName(rng);
    }
}

} // namespace plotwell::soak
