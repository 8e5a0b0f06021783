#pragma once

#include <QFont>
#include <QStaticText>

#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

class QPaintDevice;

namespace plotwell {

// The fonts of printed text and each text laid out once per font, so that a
// frame redrawing thousands of labels does not lay them out again.
class TextCache {
public:
    static constexpr float kMaxPoints = 1000;

    // Selects the font for the following texts: the platform's default
    // sans-serif at a point size (1 to kMaxPoints), never antialiased. The device gives the dots
    // per inch the metrics are taken at.
    void setFont(float points, bool bold, const QPaintDevice* device);
    const QFont& font() const { return m_current->font; }
    // The current font's point size (as brought into range) and weight.
    float points() const { return m_currentKey.first; }
    bool bold() const { return m_currentKey.second; }
    // Bounds of any text of the current font, in pixels: the height of a line
    // and the widest character.
    float lineHeight() const { return m_current->lineHeight; }
    float widestChar() const { return m_current->widestChar; }
    // The Windows-1252 bytes decoded and laid out in the current font.
    const QStaticText& text(std::string_view bytes);

private:
    struct FontEntry {
        QFont font;
        float lineHeight = 0;
        float widestChar = 0;
        std::unordered_map<std::string, QStaticText> texts;
    };

    // A label's text, or the crosshair read-out, changes only with editing;
    // past this many texts per font the cache starts again.
    static constexpr std::size_t kMaxTexts = 1 << 15;

    std::map<std::pair<float, bool>, FontEntry> m_fonts;
    FontEntry* m_current = nullptr;
    std::pair<float, bool> m_currentKey;
    std::string m_key;
};

} // namespace plotwell
