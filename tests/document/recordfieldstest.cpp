#include "document/numbertext.h"
#include "document/recordfields.h"

#include <gtest/gtest.h>

#include <cmath>
#include <iterator>
#include <random>
#include <string>
#include <vector>

using namespace plotwell;

namespace {

// Field texts of every shape a number field can take, good and bad.
const char* const kTokens[] = {
    "1", "-1", "+2.5", " 12.5 ", "13.5", "255", "256", "-0", "-0.5", "0.5", "1e3", "1E+3", "2.5e1", "1e", "1e+",
    ".5", "5.", ".", "", " ", "   ", "inf", "-inf", "nan", "0x10", "1 2", "--1", "+-1", "12a", "  -20  ", "1e39",
    "1e-50", "3.4028236e38", "007", "0000000000000000000000000000255", "32767", "32768", "-32768", "-32768.5",
    "254.5", "255.5", "1.0", "12.0", "\t1", "1\t", "99999999999999999999", "1e-400", "-4321.1234", " 1234.5678",
    "  0.0001", "1.5E-05", "-", "+", "e5", "1..2", "1.5.5", "12345678901234567890123", "6.5e", "255 ", " 255",
};

// The fields split on "," and converted one by one: what record text must read as.
std::vector<std::string_view> split(std::string_view text)
{
    std::vector<std::string_view> fields;
    for (;;) {
        const auto comma = text.find(',');
        fields.push_back(text.substr(0, comma));
        if (comma == std::string_view::npos)
            return fields;
        text.remove_prefix(comma + 1);
    }
}

template<typename T>
std::string show(const std::optional<T>& v)
{
    return v ? std::to_string(double(*v)) : std::string("none");
}

TEST(RecordFields, ReadInPlaceAsEachFieldOnItsOwn)
{
    std::mt19937 rng(3);
    std::uniform_int_distribution<std::size_t> token(0, std::size(kTokens) - 1);
    std::uniform_int_distribution<int> count(1, 10), kind(0, 3);
    for (int round = 0; round < 20000; ++round) {
        std::string text;
        const int n = count(rng);
        for (int i = 0; i < n; ++i)
            text += std::string(i ? "," : "") + kTokens[token(rng)];
        const auto expected = split(text);
        RecordFields fields(text);
        for (std::size_t i = 0; i < expected.size() + 1; ++i) {
            ASSERT_EQ(fields.done(), i == expected.size()) << '"' << text << '"';
            if (fields.done())
                break;
            const std::string_view field = expected[i];
            const std::string where = '"' + text + "\" field " + std::to_string(i);
            switch (kind(rng)) {
            case 0: {
                const auto got = fields.single(), want = textToSingle(field);
                ASSERT_EQ(show(got), show(want)) << where;
                if (got) {
                    ASSERT_EQ(std::signbit(*got), std::signbit(*want)) << where;
                }
                break;
            }
            case 1:
                ASSERT_EQ(show(fields.byte()), show(textToByte(field))) << where;
                break;
            case 2:
                ASSERT_EQ(show(fields.int16()), show(textToInt16(field))) << where;
                break;
            default:
                ASSERT_EQ(fields.text(), field) << where;
            }
        }
    }
}

TEST(RecordFields, NothingIsLeftAfterTheLastField)
{
    RecordFields fields("1,");
    EXPECT_EQ(fields.single(), 1.0f);
    EXPECT_FALSE(fields.done());
    EXPECT_EQ(fields.text(), "");
    EXPECT_TRUE(fields.done());
    EXPECT_FALSE(fields.single().has_value());
    EXPECT_FALSE(fields.byte().has_value());
    EXPECT_EQ(fields.text(), "");
}

} // namespace
