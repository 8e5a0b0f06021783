#include "platform/textcache.h"

#include "document/ansitext.h"

#include <QFontMetricsF>
#include <QGuiApplication>

#include <algorithm>

namespace plotwell {

void TextCache::setFont(float points, bool bold, const QPaintDevice* device)
{
    // Sizes a font cannot take are brought to the nearest it can.
    const float size = points >= 1 ? std::min(points, kMaxPoints) : 1.0f;
    const std::pair<float, bool> key{size, bold};
    if (m_current && key == m_currentKey)
        return;
    m_currentKey = key;
    auto [it, added] = m_fonts.try_emplace(key);
    FontEntry& entry = it->second;
    if (added) {
        entry.font = QGuiApplication::font();
        entry.font.setStyleHint(QFont::SansSerif);
        entry.font.setPointSizeF(double(key.first));
        entry.font.setBold(bold);
        entry.font.setStyleStrategy(QFont::NoAntialias);
        const QFontMetricsF metrics(entry.font, device);
        entry.lineHeight = float(metrics.height());
        entry.widestChar = float(metrics.maxWidth());
    }
    m_current = &entry;
}

const QStaticText& TextCache::text(std::string_view bytes)
{
    auto& texts = m_current->texts;
    m_key.assign(bytes.data(), bytes.size());
    auto it = texts.find(m_key);
    if (it != texts.end())
        return it->second;
    if (texts.size() >= kMaxTexts)
        texts.clear();
    QStaticText laidOut(fromAnsi(bytes));
    laidOut.setTextFormat(Qt::PlainText);
    return texts.emplace(m_key, std::move(laidOut)).first->second;
}

} // namespace plotwell
