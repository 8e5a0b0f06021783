#include "soak/step.h"

#include <charconv>
#include <cstdio>

namespace plotwell::soak {
namespace {

void appendEscaped(std::string& out, const QString& text, int max)
{
    out += '"';
    for (qsizetype i = 0; i < text.size() && i < max; ++i) {
        const char16_t c = text.at(i).unicode();
        if (c == '"' || c == '\\') {
            out += '\\';
            out += char(c);
        } else if (c >= 0x20 && c < 0x7f) {
            out += char(c);
        } else {
            char code[8];
            std::snprintf(code, sizeof code, "\\u%04x", unsigned(c));
            out += code;
        }
    }
    if (text.size() > max)
        out += "...";
    out += '"';
}

int hexDigit(char c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    return -1;
}

// A quoted text starting at line[at]; at moves past its closing quote.
std::optional<QString> readQuoted(std::string_view line, std::size_t& at)
{
    QString text;
    for (++at; at < line.size(); ++at) {
        const char c = line[at];
        if (c == '"') {
            ++at;
            return text;
        }
        if (c != '\\') {
            text += QChar(char16_t(c));
            continue;
        }
        if (++at >= line.size())
            return std::nullopt;
        if (line[at] != 'u') {
            text += QChar(char16_t(line[at]));
            continue;
        }
        if (at + 4 >= line.size())
            return std::nullopt;
        unsigned code = 0;
        for (int k = 1; k <= 4; ++k) {
            const int digit = hexDigit(line[at + std::size_t(k)]);
            if (digit < 0)
                return std::nullopt;
            code = code * 16 + unsigned(digit);
        }
        text += QChar(char16_t(code));
        at += 4;
    }
    return std::nullopt;
}

} // namespace

std::string stepLine(const Step& step)
{
    std::string line = step.nested ? ">" : "";
    line += step.kind;
    for (const double v : step.numbers) {
        char buffer[32];
        // The shortest text that reads back as exactly this number.
        const auto result = std::to_chars(buffer, buffer + sizeof buffer, v);
        line += ' ';
        line.append(buffer, result.ptr);
    }
    for (const QString& text : step.texts) {
        line += ' ';
        appendEscaped(line, text, int(text.size()));
    }
    return line;
}

std::optional<Step> parseStepLine(std::string_view line)
{
    Step step;
    std::size_t at = 0;
    if (at < line.size() && line[at] == '>') {
        step.nested = true;
        ++at;
    }
    while (at < line.size() && line[at] != ' ')
        step.kind += line[at++];
    if (step.kind.empty())
        return std::nullopt;
    while (at < line.size()) {
        if (line[at] == ' ') {
            ++at;
            continue;
        }
        if (line[at] == '"') {
            auto text = readQuoted(line, at);
            if (!text)
                return std::nullopt;
            step.texts.push_back(*text);
            continue;
        }
        if (!step.texts.empty())
            return std::nullopt; // numbers come before texts
        double v = 0;
        const auto result = std::from_chars(line.data() + at, line.data() + line.size(), v);
        if (result.ec != std::errc())
            return std::nullopt;
        step.numbers.push_back(v);
        at = std::size_t(result.ptr - line.data());
    }
    return step;
}

std::string shortText(const QString& text, int max)
{
    std::string out;
    appendEscaped(out, text, max);
    return out;
}

} // namespace plotwell::soak
