#include "document/numbertext.h"
#include "document/recordfields.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <optional>
#include <random>
#include <string>
#include <vector>

using namespace plotwell;

namespace {

template <typename T> std::optional<double> widen(std::optional<T> v)
{
    return v ? std::optional<double>(double(*v)) : std::nullopt;
}

TEST(NumberText, SingleReadsDecimalTextWithinTheSingleRange)
{
    const struct {
        const char* text;
        std::optional<double> value;
    } cases[] = {
        {"12.5", 12.5},
        {" 12.5", 12.5},
        {"   -20   ", -20},
        {"+3", 3},
        {"-0.25", -0.25},
        {".5", 0.5},
        {"-.75", -0.75},
        {"7.", 7},
        {"1E3", 1000},
        {"1.5E-2", double(0.015f)},
        {"-2.5e+2", -250},
        {"3.4028234e38", FLT_MAX},
        {"1e-50", 0}, // too small for a single: zero, not refused
        {"", {}},
        {" ", {}},
        {"12a", {}},
        {"a12", {}},
        {"1 2", {}},
        {"1e", {}},
        {"1e+", {}},
        {"e5", {}},
        {".", {}},
        {"-", {}},
        {"--1", {}},
        {"+-1", {}},
        {"1..2", {}},
        {"inf", {}},
        {"nan", {}},
        {"0x1A", {}},
        {"&H10", {}},
        {"1e39", {}},
        {"-3.5e38", {}},
        {"1e400", {}},
        {"0.00000000000000000001e60", {}},
        {"1000000000000000000000000000000000000000000000000e-5", {}}, // a long mantissa is still too large
    };
    for (const auto& c : cases)
        EXPECT_EQ(widen(textToSingle(c.text)), c.value) << '"' << c.text << '"';
}

// What the writer writes reads back to a single that writes the same text,
// so that saving a loaded map again changes nothing. Hardest around powers of
// ten, where 7 digits step ten times finer below than above: "1E+28" and
// "1E-38" once read back as singles that write as "9.999999E+27" and
// "9.999999E-39". (Every positive single was tried once by hand.)
TEST(NumberText, WrittenSinglesReadBackToTheSameText)
{
    for (int p = -45; p <= 38; ++p) {
        std::uint32_t power = 0;
        const float nearest = std::pow(10.f, float(p));
        std::memcpy(&power, &nearest, sizeof power);
        for (std::uint32_t bits = power > 500 ? power - 500 : 1; bits < power + 500 && bits < 0x7f800000u; ++bits) {
            float f = 0;
            std::memcpy(&f, &bits, sizeof f);
            const std::string text = singleToText(f);
            const auto alone = textToSingle(text);
            ASSERT_TRUE(alone && singleToText(*alone) == text) << text;
            const auto inPlace = RecordFields("-" + text + ",").single();
            ASSERT_TRUE(inPlace && singleToText(-*inPlace) == text) << text;
        }
    }
}

TEST(NumberText, WholeNumbersRoundHalfToEvenWithinTheirRange)
{
    const struct {
        const char* text;
        std::optional<double> byte, int16;
    } cases[] = {
        {"12.5", 12, 12},     {" 13.5", 14, 14},  {"12.5001", 13, 13},    {"254.5", 254, 254}, {"255.4", 255, 255},
        {"255.5", {}, 256},   {"-0.5", 0, 0},     {"-0.6", {}, -1},       {"2.5e1", 25, 25},   {" +1e2 ", 100, 100},
        {"-12.5", {}, -12},   {"-13.5", {}, -14}, {"32766.5", {}, 32766}, {"32767.5", {}, {}}, {"-32768.5", {}, -32768},
        {"-32768.6", {}, {}}, {"1e39", {}, {}},   {"abc", {}, {}},        {"", {}, {}},        {"0x10", {}, {}},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(widen(textToByte(c.text)), c.byte) << '"' << c.text << '"';
        EXPECT_EQ(widen(textToInt16(c.text)), c.int16) << '"' << c.text << '"';
    }
}

// Field texts of every shape a number field can take, good and bad.
const char* const kTokens[] = {
    "1",
    "-1",
    "+2.5",
    " 12.5 ",
    "13.5",
    "255",
    "256",
    "-0",
    "-0.5",
    "0.5",
    "1e3",
    "1E+3",
    "1e",
    "1e+",
    ".5",
    "5.",
    ".",
    "",
    " ",
    "inf",
    "nan",
    "0x10",
    "1 2",
    "--1",
    "12a",
    "  -20  ",
    "1e39",
    "1e-50",
    "3.4028236e38",
    "007",
    "0000000000000000000000000000255",
    "32767",
    "32768",
    "-32768.5",
    "254.5",
    "255.5",
    "12.0",
    "\t1",
    "1\t",
    "99999999999999999999",
    "-4321.1234",
    "  0.0001",
    "1.5E-05",
    "-",
    "e5",
    "1.5.5",
    "12345678901234567890123",
};

// RecordFields reads the fields where they stand; each must read exactly as
// the field cut out on its own would.
TEST(RecordFields, ReadInPlaceAsEachFieldOnItsOwn)
{
    std::mt19937 rng(3);
    for (int round = 0; round < 5000; ++round) {
        std::vector<std::string> fields(1 + rng() % 10);
        std::string text;
        for (std::size_t i = 0; i < fields.size(); ++i)
            text += (i ? "," : "") + (fields[i] = kTokens[rng() % std::size(kTokens)]);
        RecordFields read(text);
        for (std::size_t i = 0; i < fields.size(); ++i) {
            ASSERT_FALSE(read.done()) << '"' << text << '"';
            const std::string& f = fields[i];
            const std::string where = '"' + text + "\" field " + std::to_string(i);
            switch (rng() % 4) {
                case 0: {
                    const auto got = read.single(), want = textToSingle(f);
                    ASSERT_EQ(widen(got), widen(want)) << where;
                    ASSERT_TRUE(!got || std::signbit(*got) == std::signbit(*want)) << where;
                    break;
                }
                case 1:
                    ASSERT_EQ(widen(read.byte()), widen(textToByte(f))) << where;
                    break;
                case 2:
                    ASSERT_EQ(widen(read.int16()), widen(textToInt16(f))) << where;
                    break;
                default:
                    ASSERT_EQ(read.text(), f) << where;
            }
        }
        ASSERT_TRUE(read.done()) << '"' << text << '"';
        ASSERT_FALSE(read.single().has_value()) << '"' << text << '"';
    }
}

} // namespace
