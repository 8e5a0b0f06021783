#include "palette/palette.h"

#include "document/numbertext.h"

#include <QStringList>

#include <algorithm>
#include <cmath>
#include <optional>

namespace plotwell {
namespace {

const QString kSection = QStringLiteral("colorPresets");

QString channelText(std::uint8_t v)
{
    return QString::number(v);
}

// A part of a preset as a whole number for its swatch: rounded, a value
// above 255 counting as 255; none when it is not a number or is negative.
std::optional<std::uint8_t> swatchPart(const QString& part)
{
    const std::optional<float> v = textToSingle(part.toStdString());
    if (!v || *v < 0)
        return std::nullopt;
    return std::uint8_t(std::min(roundHalfEven(double(*v)), 255.0));
}

} // namespace

void showActiveColor(Palette& palette)
{
    const ColorRGB c = palette.activeColor;
    palette.stripCaptions = {channelText(c.r), channelText(c.g), channelText(c.b)};
}

std::uint8_t stripValue(float x)
{
    // Int rounds down, then the 101 positions map onto 0..255, halves to even.
    const double p = std::clamp(std::floor(double(x) * 100 / double(kStripWidth)), 0.0, 100.0);
    return std::uint8_t(roundHalfEven(std::clamp(p * 255 / 100, 0.0, 255.0)));
}

void loadColorPresets(Palette& palette, const SettingsStore& settings)
{
    for (int i = 0; i < kPresetCount; ++i) {
        const QStringList parts =
            settings.get(kSection, QString::number(i), QStringLiteral("0,0,0")).split(QLatin1Char(','));
        ColorRGB& preset = palette.presetColors[std::size_t(i)];
        std::uint8_t* const channels[] = {&preset.r, &preset.g, &preset.b};
        std::optional<std::uint8_t> swatch[3];
        for (int c = 0; c < 3; ++c) {
            if (c >= parts.size())
                continue;
            if (const auto v = textToByte(parts.at(c).toStdString()))
                *channels[c] = *v;
            swatch[c] = swatchPart(parts.at(c));
        }
        if (swatch[0] && swatch[1] && swatch[2])
            palette.swatchColors[std::size_t(i)] = {*swatch[0], *swatch[1], *swatch[2]};
    }
}

void saveColorPresets(const Palette& palette, SettingsStore& settings)
{
    for (int i = 0; i < kPresetCount; ++i) {
        const ColorRGB c = palette.presetColors[std::size_t(i)];
        settings.save(kSection, QString::number(i),
                      channelText(c.r) + QLatin1Char(',') + channelText(c.g) + QLatin1Char(',') + channelText(c.b));
    }
}

} // namespace plotwell
