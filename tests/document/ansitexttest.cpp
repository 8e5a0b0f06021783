#include "document/ansitext.h"

#include <gtest/gtest.h>

using namespace plotwell;

namespace {

TEST(AnsiText, BytesDecodeByTheWindows1252TableAndEveryByteSurvivesTheRoundTrip)
{
    const struct {
        unsigned char byte;
        char16_t unicode;
    } cases[] = {{0x41, u'A'},   {0x80, 0x20AC}, {0x8A, 0x0160}, {0x91, 0x2018}, {0x99, 0x2122}, {0x9F, 0x0178},
                 {0x81, 0x0081}, {0x9D, 0x009D}, {0xA0, 0x00A0}, {0xE9, 0x00E9}, {0xFF, 0x00FF}, {0x00, 0x0000}};
    for (const auto& c : cases) {
        const char byte = char(c.byte);
        const QString text = fromAnsi(std::string_view(&byte, 1));
        ASSERT_EQ(text.size(), 1);
        EXPECT_EQ(text.at(0).unicode(), c.unicode) << int(c.byte);
    }
    std::string all;
    for (int b = 0; b < 256; ++b)
        all += char(b);
    EXPECT_EQ(toAnsi(fromAnsi(all)), all);
}

TEST(AnsiText, CharactersWithoutAByteBecomeOneQuestionMark)
{
    const struct {
        QString text;
        const char* bytes;
    } cases[] = {
        {QString(QChar(0x0080)), "?"}, // a C1 control: its byte stands for the euro sign
        {QString(QChar(0x009F)), "?"},
        {QString(QChar(0x00A0)), "\xa0"},
        {QString(QChar(0x0100)), "?"},
        {QStringLiteral("a\U0001F600b"), "a?b"}, // outside the basic plane: one character
        {QStringLiteral("a\U0001F600"), "a?"},
        {QStringLiteral("a") + QChar(0xD83D), "a?"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(toAnsi(c.text), c.bytes) << c.text.toStdString();
}

} // namespace
