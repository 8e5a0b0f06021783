#include "document/numbertext.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <optional>
#include <random>
#include <string>
#include <vector>

using namespace plotwell;

namespace {

struct SingleCase {
    const char* text;
    float value;
};

TEST(NumberText, SingleAcceptsBlanksSignFractionAndExponent)
{
    const SingleCase cases[] = {
        {"0", 0},
        {"12.5", 12.5f},
        {" 12.5", 12.5f},
        {"12.5  ", 12.5f},
        {"   -20   ", -20},
        {"+3", 3},
        {"-0.25", -0.25f},
        {".5", 0.5f},
        {"-.75", -0.75f},
        {"7.", 7},
        {"1e3", 1000},
        {"1E3", 1000},
        {"1.5E-2", 0.015f},
        {"-2.5e+2", -250},
        {"123456789", 123456789.0f},
        {"3.4028234e38", FLT_MAX},
        {"-3.4028234e38", -FLT_MAX},
        // Too small for a single: taken as zero, not refused.
        {"1e-50", 0},
        {"0.00000000000000000000000000000000000000000000000000001", 0},
    };
    for (const auto& c : cases) {
        const auto v = textToSingle(c.text);
        ASSERT_TRUE(v.has_value()) << '"' << c.text << '"';
        EXPECT_EQ(*v, c.value) << '"' << c.text << '"';
    }
}

TEST(NumberText, SingleRefusesWhatIsNotADecimalNumberInRange)
{
    const char* const refused[] = {
        "", " ", "abc", "12a", "a12", "1 2", "1e", "1e+", "e5", ".", "-", "+", "--1", "+-1", "1..2",
        "inf", "-inf", "INF", "nan", "NaN", "infinity", "0x1A", "0X10", "&H10",
        "1e39", "-1e39", "3.5e38", "1e400",
        // A large mantissa with a small negative exponent is still too large.
        "1000000000000000000000000000000000000000000000000e-5",
    };
    for (const char* text : refused)
        EXPECT_FALSE(textToSingle(text).has_value()) << '"' << text << '"';
}

// The single nearest to a decimal text, as std::from_chars finds it.
std::optional<float> nearestSingle(const std::string& text)
{
    float v = 0;
    const auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), v);
    if (ec != std::errc() || end != text.data() + text.size())
        return std::nullopt;
    return v;
}

std::string printed(const char* format, double v)
{
    char buffer[80];
    std::snprintf(buffer, sizeof buffer, format, v);
    return buffer;
}

TEST(NumberText, SingleIsTheNearestSingleToTheText)
{
    std::vector<std::string> texts;
    std::mt19937 rng(5);
    std::uniform_int_distribution<std::uint32_t> bits;
    std::uniform_int_distribution<int> digitCount(1, 22), digit(0, 9), exponent(-40, 40);
    for (int i = 0; i < 40000; ++i) {
        const std::uint32_t b = bits(rng) & 0x7fffffffu;
        float f;
        std::memcpy(&f, &b, sizeof f);
        if (!std::isfinite(f) || f == 0)
            continue;
        const float next = std::nextafter(f, FLT_MAX);
        // Texts at and around the point halfway between two singles, where a
        // quick conversion that rounds twice would go wrong.
        const double half = (double(f) + double(next)) / 2;
        for (const char* format : {"%.6g", "%.9g", "%.15g", "%.16g", "%.17g", "%.25g", "%.40g", "%.4f"})
            texts.push_back(printed(format, half));
        texts.push_back(printed("%.9g", double(f)));
        texts.push_back(printed("%.8e", double(f)));
        // Digit strings of every length with a point and an exponent.
        std::string t;
        const int n = digitCount(rng);
        for (int k = 0; k < n; ++k)
            t += char('0' + digit(rng));
        t.insert(std::size_t(digit(rng)) % (t.size() + 1), ".");
        texts.push_back(t);
        texts.push_back(t + "e" + std::to_string(exponent(rng)));
    }
    for (std::uint32_t w = 16777200; w < 16777300; ++w) {
        texts.push_back(std::to_string(w));
        texts.push_back(std::to_string(w) + ".000000001");
        texts.push_back(std::to_string(w) + "0000000e-7");
        texts.push_back("0." + std::to_string(w) + "e8");
    }

    int mismatches = 0;
    for (const std::string& text : texts) {
        const auto expected = nearestSingle(text);
        if (!expected)
            continue;
        const auto got = textToSingle(text);
        const auto negated = textToSingle("-" + text);
        if ((!got || *got != *expected || !negated || *negated != -*expected) && ++mismatches <= 10)
            ADD_FAILURE() << text << " read as " << (got ? *got : -1.0f) << " instead of " << *expected;
    }
    EXPECT_EQ(mismatches, 0);
}

struct WholeCase {
    const char* text;
    int value;
};

TEST(NumberText, ByteRoundsHalfToEvenWithinZeroTo255)
{
    const WholeCase cases[] = {
        {"0", 0}, {"255", 255}, {"12.5", 12}, {" 12.5", 12}, {"13.5", 14}, {"12.4999", 12},
        {"12.5001", 13}, {"254.5", 254}, {"255.4", 255}, {"-0.4", 0}, {"-0.5", 0}, {"2.5e1", 25},
        {" +1e2 ", 100}, {"0.5", 0}, {"1.5", 2},
    };
    for (const auto& c : cases) {
        const auto v = textToByte(c.text);
        ASSERT_TRUE(v.has_value()) << '"' << c.text << '"';
        EXPECT_EQ(*v, c.value) << '"' << c.text << '"';
    }
    for (const char* text : {"256", "-1", "255.5", "-0.6", "1000", "1e39", "abc", "", "nan", "0x10"})
        EXPECT_FALSE(textToByte(text).has_value()) << '"' << text << '"';
}

TEST(NumberText, Int16RoundsHalfToEvenWithinTheSixteenBitRange)
{
    const WholeCase cases[] = {
        {"2", 2}, {"-1", -1}, {"12.5", 12}, {"13.5", 14}, {"-12.5", -12}, {"-13.5", -14},
        {"32767", 32767}, {"-32768", -32768}, {"32766.5", 32766}, {"-32768.5", -32768}, {" 1e4 ", 10000},
    };
    for (const auto& c : cases) {
        const auto v = textToInt16(c.text);
        ASSERT_TRUE(v.has_value()) << '"' << c.text << '"';
        EXPECT_EQ(*v, c.value) << '"' << c.text << '"';
    }
    for (const char* text : {"40000", "32768", "32767.5", "-32769", "-32768.6", "1e39", "big", ""})
        EXPECT_FALSE(textToInt16(text).has_value()) << '"' << text << '"';
}

TEST(NumberText, RoundHalfEven)
{
    const double cases[][2] = {{0.5, 0}, {1.5, 2}, {2.5, 2}, {3.5, 4}, {-0.5, 0}, {-1.5, -2},
                               {-2.5, -2}, {2.4, 2}, {2.6, 3}, {-2.6, -3}, {7, 7}};
    for (const auto& c : cases)
        EXPECT_EQ(roundHalfEven(c[0]), c[1]) << c[0];
}

struct TextCase {
    float value;
    const char* text;
};

TEST(NumberText, WriterFormHasSevenSignificantDigits)
{
    const TextCase cases[] = {
        {3, "3"},
        {12.5f, "12.5"},
        {-0.25f, "-0.25"},
        {0, "0"},
        {-0.0f, "0"},
        {0.1f, "0.1"},
        {0.0001f, "0.0001"},
        {1.5e-5f, "1.5E-05"},
        {1234567, "1234567"},
        {1e7f, "1E+07"},
        {-12345678, "-1.234568E+07"},
        {1e20f, "1E+20"},
        {-1.5e-30f, "-1.5E-30"},
        {3.14159265f, "3.141593"},
        {100, "100"},
        // Exact ties at the seventh digit round to even.
        {16777215, "1.677722E+07"},
        {12345665, "1.234566E+07"},
        {12345675, "1.234568E+07"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(singleToText(c.value), c.text) << c.text;
        char buffer[kMaxSingleText];
        EXPECT_EQ(std::string(buffer, writeSingle(buffer, c.value)), c.text) << c.text;
    }
}

// The reference for the writer's form is C's "%.7G" with "-0" written as "0".
std::string printfForm(float v)
{
    char buffer[64];
    std::snprintf(buffer, sizeof buffer, "%.7G", double(v));
    return std::strcmp(buffer, "-0") == 0 ? "0" : buffer;
}

TEST(NumberText, WriterFormMatchesPrintfOverManyValues)
{
    std::vector<float> values;
    std::mt19937 rng(7);
    // Every kind of single: random bit patterns cover tiny, huge and subnormal values.
    std::uniform_int_distribution<std::uint32_t> bits;
    while (values.size() < 100000) {
        const std::uint32_t b = bits(rng);
        float f;
        std::memcpy(&f, &b, sizeof f);
        if (std::isfinite(f))
            values.push_back(f);
    }
    // Map-like coordinates with few decimals, whole numbers and their negatives.
    std::uniform_real_distribution<float> coord(-20000, 20000);
    for (int i = 0; i < 50000; ++i) {
        const float f = std::round(coord(rng) * 10000) / 10000;
        values.push_back(f);
        values.push_back(std::round(f));
    }
    // Whole numbers of eight digits hit exact ties at the seventh digit.
    for (int n = 16777200; n <= 16777216; ++n) {
        values.push_back(float(n));
        values.push_back(-float(n));
    }
    for (int e = -45; e <= 38; ++e) {
        values.push_back(std::pow(10.0f, float(e)));
        values.push_back(-std::pow(10.0f, float(e)) * 1.5f);
    }
    values.insert(values.end(), {FLT_MAX, -FLT_MAX, FLT_MIN, FLT_TRUE_MIN, 9999999.5f, 999999.94f, 0.000099999f});

    int mismatches = 0;
    for (float v : values) {
        if (singleToText(v) != printfForm(v) && ++mismatches <= 10)
            ADD_FAILURE() << printfForm(v) << " written as " << singleToText(v);
    }
    EXPECT_EQ(mismatches, 0);
}

TEST(NumberText, LeadingNumberReadsUpToTheFirstCharacterThatDoesNotFit)
{
    struct Case {
        const char* text;
        bool blanksAnywhere;
        double value;
    };
    const Case cases[] = {
        {"12abc", false, 12},   {"  -3.5e2x", false, -350}, {"abc", false, 0},  {"", false, 0},
        {"1e", false, 1},       {"1.5.5", false, 1.5},      {"+.25", false, 0.25}, {"1 2", false, 1},
        {"1 2", true, 12},      {" -1\t0\n0 ", true, -100},
    };
    for (const auto& c : cases)
        EXPECT_EQ(leadingNumber(c.text, c.blanksAnywhere), c.value) << '"' << c.text << '"';
}

} // namespace
