#include "editor/gameloc.h"

#include "document/numbertext.h"

#include <array>

namespace plotwell {

namespace {

// The game's message in a log line, after its time stamp when there is one;
// none when a stamp is begun and not ended.
std::optional<std::string_view> messageOf(std::string_view line)
{
    // The time stamp ends at the first "]".
    if (!line.empty() && line.front() == '[') {
        const auto close = line.find(']');
        if (close == std::string_view::npos)
            return std::nullopt;
        line.remove_prefix(close + 1);
        if (line.empty() || line.front() != ' ')
            return std::nullopt;
        line.remove_prefix(1);
    }
    return line;
}

bool startsWith(std::string_view text, std::string_view start)
{
    return text.substr(0, start.size()) == start;
}

} // namespace

bool isZoneEntryLine(std::string_view line)
{
    const auto message = messageOf(line);
    constexpr std::string_view kEntered = "You have entered ";
    return message && startsWith(*message, kEntered) && message->size() > kEntered.size()
        && !startsWith(message->substr(kEntered.size()), "an area ");
}

std::optional<MapPoint> parseLocLine(std::string_view line)
{
    const auto message = messageOf(line);
    if (!message)
        return std::nullopt;
    line = *message;
    constexpr std::string_view kMessage = "Your Location is ";
    if (!startsWith(line, kMessage))
        return std::nullopt;
    line.remove_prefix(kMessage.size());

    std::array<float, 3> v{};
    for (std::size_t i = 0; i < v.size(); ++i) {
        const auto comma = line.find(',');
        if ((comma == std::string_view::npos) != (i == v.size() - 1))
            return std::nullopt; // fewer or more than three numbers
        const auto number = textToSingle(line.substr(0, comma));
        if (!number)
            return std::nullopt;
        v[i] = *number;
        line.remove_prefix(comma == std::string_view::npos ? line.size() : comma + 1);
    }
    MapPoint p;
    p.x = -v[1];
    p.y = -v[0];
    p.z = v[2];
    return p;
}

} // namespace plotwell
