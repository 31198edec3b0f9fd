#include <MelkarCommon/support/numbers.h>
#include <MelkarCommon/support/support.h>

#include <gtest/gtest.h>

#include <climits>
#include <clocale>
#include <cmath>
#include <cstdlib>
#include <sstream>
#include <string>
#include <tuple>

namespace {

TEST(Numbers, AsInTheCLocale) {
    std::istringstream texts("12.5|12,5| \n-3.25e2kg|+7|+-7|-+7|.5|5.|-.5e-1|e5|1e|1e+||-|inf|-INFINITY|1e999|1e-999|"
                             "4e-320|0x1F|-0x1p-2|0x|0xg|1x5|abc|9007199254740993|0.1");
    for (std::string text; std::getline(texts, text, '|');)
        EXPECT_EQ(melkar::ToDouble(text.c_str()), std::atof(text.c_str())) << text;
    EXPECT_TRUE(std::isnan(melkar::ToDouble("nan")));
    EXPECT_EQ(melkar::ToDouble(nullptr), 0);
}

TEST(Numbers, WhateverTheLocaleOfTheHost) {
    ASSERT_NE(std::setlocale(LC_ALL, "de_DE.UTF-8"), nullptr);
    CString text;
    text.Format("%.1f", 0.5);
    EXPECT_EQ(text, "0.5");
    EXPECT_EQ(melkar::ToDouble("0x1.8"), 1.5); // the slow way, too
    EXPECT_EQ(melkar::ToDouble("1.5"), 1.5);
    EXPECT_EQ(melkar::FormatFixed(1.5, 1), "1.5");
    std::setlocale(LC_ALL, "C");
}

TEST(Numbers, Decimals) {
    for (const auto& [number, decimals, text] : {std::tuple{"-0.9", 0, "0"},
                                                 {"0.125", 2, "0.12"},
                                                 {"-0.001", 2, "-0.00"},
                                                 {"1e10", 0, "2147483647"},
                                                 {"inf", 1, "inf"},
                                                 {nullptr, 0, "0"},
                                                 {"1", 999, "1.000000000000000000000000000000"}})
        EXPECT_EQ(getDecimalNumber(number, decimals), text);
    const std::tuple<double, int, const char*> whole[] = {
        {12, 0, "12"},
        {12, 2, "12.00"},
        {12.5, 0, "12"},
        {0, 0, "0"},
        {-0.0, 0, "-0"},
        {-3, 0, "-3"},
        {1e15, 0, "1000000000000000"},
    };
    for (const auto& [value, decimals, text] : whole)
        EXPECT_EQ(melkar::FormatFixed(value, decimals), text) << value;
    EXPECT_EQ(melkar::FormatFixed(-1e308, 30).GetLength(), 1 + 309 + 1 + 30);
}

TEST(Numbers, ProductQuotients) {
    const int cases[][4] = {
        {5, 1, 2, 3},         {-5, 1, 2, -3},
        {5, -1, -2, 3},       {5, 1, -2, -3},
        {1, 1, 0, -1},        {INT_MAX, INT_MAX, INT_MAX, INT_MAX},
        {INT_MAX, 2, 1, -1},  {INT_MIN, 1, 1, INT_MIN},
        {INT_MIN, 1, -1, -1}, {INT_MIN, INT_MIN, INT_MIN, INT_MIN},
    };
    for (const auto& [number, numerator, denominator, result] : cases)
        EXPECT_EQ(MulDiv(number, numerator, denominator), result) << number << " " << numerator;
    EXPECT_EQ(ChartMulDiv(-4, 96, 72), 15);
}

TEST(ByteString, PartsAreCutToWhatIsThere) {
    const CString text("abcdef");
    EXPECT_EQ(text.Mid(-3, 2), "ab");
    EXPECT_EQ(text.Mid(4, INT_MAX), "ef");
    EXPECT_EQ(CString("abc", 99), "abc");
    EXPECT_EQ(CString("abc", -1), "");
    EXPECT_EQ(text.Find("a", 99), -1);
    EXPECT_EQ(text.Find(nullptr), -1);
}

} // namespace
