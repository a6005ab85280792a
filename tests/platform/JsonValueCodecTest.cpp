// The settings file's JSON: typed round trips, and malformed text that must give nothing.
#include "common/JsonValueCodec.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

namespace zd {
namespace {

TEST(JsonValueCodec, RoundTripKeepsEveryType) {
    ValueDictionary document{
        {"flag", true},
        {"off", false},
        {"integer", -42},
        {"largest", std::numeric_limits<std::int64_t>::max()},
        {"whole double", 3.0},
        {"fraction", 0.1},
        {"tiny", 1e-300},
        {"text", "2880 \u00d7 1800 \u2014 \u201cquoted\u201d \"and\" \\ back\nslash\t\x01"},
        {"empty text", ""},
        {"list", ValueArray{"en", 1, 2.5, false, ValueArray{}, ValueDictionary{}}},
        {"nested", ValueDictionary{{"inner", ValueArray{ValueDictionary{{"deep", "yes"}}}}}},
    };
    auto text = JsonValueCodec::encode(Value(document));
    auto decoded = JsonValueCodec::decode(text);
    ASSERT_TRUE(decoded.has_value()) << text;
    EXPECT_EQ(*decoded, Value(document)) << text;
    EXPECT_TRUE(decoded->find("whole double")->isDouble());
    EXPECT_TRUE(decoded->find("integer")->isInteger());
}

TEST(JsonValueCodec, ReadsEscapesAndNumbersOfOtherWriters) {
    auto decoded = JsonValueCodec::decode(
        "\xEF\xBB\xBF { \"a\" : \"\\u00d7\\ud83d\\ude00\\/\", \"b\": 1E3, \"c\": -0, \"d\": "
        "123456789012345678901234567890, \"e\": null, \"a\": \"last wins\" }");
    ASSERT_TRUE(decoded.has_value());
    EXPECT_EQ(*decoded->find("a"), Value("last wins"));
    EXPECT_EQ(*decoded->find("b"), Value(1000.0));
    EXPECT_EQ(*decoded->find("c"), Value(0));
    EXPECT_TRUE(decoded->find("d")->isDouble());
    EXPECT_TRUE(decoded->find("e")->isNull());
    EXPECT_EQ(JsonValueCodec::decode("\"\\u00d7\\ud83d\\ude00\""), Value("\u00d7\U0001F600"));
}

class MalformedJson : public testing::TestWithParam<std::string> {};

TEST_P(MalformedJson, GivesNothing) {
    EXPECT_EQ(JsonValueCodec::decode(GetParam()), std::nullopt);
}

INSTANTIATE_TEST_SUITE_P(
    JsonValueCodec, MalformedJson,
    testing::Values("", "   ", "{", "{\"a\": 1", "{\"a\":}", "{\"a\" 1}", "{a: 1}", "[1,]", "[1 2]",
                    "{\"a\": 1} trailing", "{\"a\": 1}{}", "01", "1.", "-", "1e", "+1", "tru",
                    "\"unterminated", "\"bad \\x escape\"", "\"\\ud800\"", "\"\\udc00\"",
                    "\"\\u12\"", std::string("\"raw\ncontrol\""), "1e999", std::string(100000, '['),
                    std::string(5000, '[') + std::string(5000, ']')));

}  // namespace
}  // namespace zd
