#include <gtest/gtest.h>

#include "model/XmlNodes.hpp"
#include "model/XmlText.hpp"
#include "tests/support/TestDocument.hpp"

using test_support::TestDocument;

namespace {

XmlText attribute(char const* value) {
    TestDocument const document(std::string("<a v='") + value + "'/>");
    return XmlText::attribute(document.root(), "v");
}

TEST(XmlText, AnAbsentAttributeEqualsNothingAndPrintsAsNull) {
    TestDocument const document("<a/>");
    XmlText const text = XmlText::attribute(document.root(), "v");
    EXPECT_FALSE(text.isPresent());
    EXPECT_FALSE(text.equals(""));
    EXPECT_STREQ(text.text(), "");
    EXPECT_STREQ(text.printable(), "(null)");
}

TEST(XmlText, ComparesExactly) {
    EXPECT_TRUE(attribute("vlan").isPresent());
    EXPECT_TRUE(attribute("vlan").equals("vlan"));
    EXPECT_FALSE(attribute("vlan").equals("Vlan"));
    EXPECT_FALSE(attribute("vlan ").equals("vlan"));
    EXPECT_TRUE(attribute("").equals(""));
    EXPECT_STREQ(attribute("vlan").printable(), "vlan");
}

TEST(XmlText, ReadsTheWholeContentOfAnElement) {
    TestDocument const document("<a>239.<b>1</b>.2.3 </a>");
    EXPECT_STREQ(XmlText::content(document.root()).text(), "239.1.2.3 ");
    TestDocument const empty("<a/>");
    EXPECT_STREQ(XmlText::content(empty.root()).text(), "");
}

TEST(XmlText, ParsesDecimalNumbersFromTheStart) {
    std::pair<char const*, int> const cases[] = {{"0", 0}, {"12", 12}, {" 12x", 12}, {"-3", -3}, {"0x10", 0}};
    for (auto const& expected : cases) {
        int value = 99;
        EXPECT_TRUE(attribute(expected.first).parseDecimal(value)) << expected.first;
        EXPECT_EQ(value, expected.second) << expected.first;
    }
}

TEST(XmlText, LeavesTheValueAloneWhenThereIsNoNumber) {
    for (auto const* text : {"", "x1", "-", " "}) {
        int decimal = 99;
        EXPECT_FALSE(attribute(text).parseDecimal(decimal)) << text;
        EXPECT_EQ(decimal, 99) << text;
        unsigned int hexadecimal = 99;
        EXPECT_FALSE(attribute(text).parseHexadecimal(hexadecimal)) << text;
        EXPECT_EQ(hexadecimal, 99U) << text;
    }
    TestDocument const document("<a/>");
    int value = 99;
    unsigned int hexadecimal = 99;
    EXPECT_FALSE(XmlText::attribute(document.root(), "v").parseDecimal(value));
    EXPECT_FALSE(XmlText::attribute(document.root(), "v").parseHexadecimal(hexadecimal));
    EXPECT_EQ(value, 99);
    EXPECT_EQ(hexadecimal, 99U);
}

TEST(XmlText, ParsesHexadecimalNumbersWithOrWithoutPrefix) {
    std::pair<char const*, unsigned int> const cases[] = {
        {"10", 0x10}, {"0x10", 0x10}, {"ABC", 0xABC}, {"abcx", 0xABC}, {"0XfF", 0xFF}};
    for (auto const& expected : cases) {
        unsigned int value = 99;
        EXPECT_TRUE(attribute(expected.first).parseHexadecimal(value)) << expected.first;
        EXPECT_EQ(value, expected.second) << expected.first;
    }
}

TEST(XmlText, TakesOneSignBehindBlanks) {
    struct Row {
        char const* text;
        int decimal;
        unsigned int hexadecimal;
    };
    for (Row const& row : {Row{" +5", 5, 5}, Row{"&#9;&#10;&#13; -5 ", -5, 0xFFFFFFFB}, Row{"+0x1f", 0, 0x1F},
                           Row{"-0x1", 0, 0xFFFFFFFF}, Row{"0x", 0, 0}, Row{"-0Xg", 0, 0}, Row{"0x-5", 0, 0},
                           Row{"00x5", 0, 0}, Row{"0000000000000000000000000017", 17, 0x17}}) {
        int decimal = 99;
        EXPECT_TRUE(attribute(row.text).parseDecimal(decimal)) << row.text;
        EXPECT_EQ(decimal, row.decimal) << row.text;
        EXPECT_EQ(attribute(row.text).toInteger(-1), row.decimal) << row.text;
        unsigned int hexadecimal = 99;
        EXPECT_TRUE(attribute(row.text).parseHexadecimal(hexadecimal)) << row.text;
        EXPECT_EQ(hexadecimal, row.hexadecimal) << row.text;
    }
    for (auto const* text : {"+-5", "--5", "- 5", "+"}) {
        int decimal = 99;
        EXPECT_FALSE(attribute(text).parseDecimal(decimal)) << text;
        EXPECT_EQ(attribute(text).toInteger(-1), 0) << text;
        unsigned int hexadecimal = 99;
        EXPECT_FALSE(attribute(text).parseHexadecimal(hexadecimal)) << text;
    }
}

TEST(XmlText, DecimalNumbersThatDoNotFitAreTheNearestThatDo) {
    constexpr int largest = 2147483647;
    constexpr int smallest = -largest - 1;
    std::pair<char const*, int> const cases[] = {{"2147483646", largest - 1},
                                                 {"2147483647", largest},
                                                 {"2147483648", largest},
                                                 {"4294967295", largest},
                                                 {"4294967296x", largest},
                                                 {"9223372036854775808", largest},
                                                 {"18446744073709551616", largest},
                                                 {"100000000000000000000000000000", largest},
                                                 {"-2147483647", smallest + 1},
                                                 {"-2147483648", smallest},
                                                 {"-2147483649", smallest},
                                                 {"-4294967297", smallest},
                                                 {"-18446744073709551617", smallest},
                                                 {"-100000000000000000000000000000", smallest}};
    for (auto const& expected : cases) {
        int value = 99;
        EXPECT_TRUE(attribute(expected.first).parseDecimal(value)) << expected.first;
        EXPECT_EQ(value, expected.second) << expected.first;
        EXPECT_EQ(attribute(expected.first).toInteger(-1), expected.second) << expected.first;
    }
}

TEST(XmlText, HexadecimalNumbersThatDoNotFitAreTheLargest) {
    std::pair<char const*, unsigned int> const cases[] = {
        {"7fffffff", 0x7FFFFFFF},          {"80000000", 0x80000000},
        {"ffffffff", 0xFFFFFFFF},          {"100000000", 0xFFFFFFFF},
        {"0x100000005", 0xFFFFFFFF},       {"ffffffffffffffff", 0xFFFFFFFF},
        {"10000000000000005", 0xFFFFFFFF}, {"-ffffffff", 1},
        {"-100000005", 0xFFFFFFFF},        {"-10000000000000005", 0xFFFFFFFF}};
    for (auto const& expected : cases) {
        unsigned int value = 99;
        EXPECT_TRUE(attribute(expected.first).parseHexadecimal(value)) << expected.first;
        EXPECT_EQ(value, expected.second) << expected.first;
    }
}

TEST(XmlText, IntegersWithoutADigitAreZeroAndAbsentOnesAreWhatTheCallerSays) {
    EXPECT_EQ(attribute("17").toInteger(-1), 17);
    EXPECT_EQ(attribute("17 ports").toInteger(-1), 17);
    EXPECT_EQ(attribute("seventeen").toInteger(-1), 0);
    EXPECT_EQ(attribute("").toInteger(-1), 0);
    TestDocument const document("<a/>");
    EXPECT_EQ(XmlText::attribute(document.root(), "v").toInteger(-1), -1);
}

TEST(XmlNodes, AQueryWithoutAResultHasNoNodes) {
    XmlNodes const none(nullptr);
    EXPECT_EQ(none.count(), 0);
    EXPECT_EQ(none.begin(), none.end());
    TestDocument document("<a><b/><b/></a>");
    XmlNodes const nothing(document.find("//c"));
    EXPECT_EQ(nothing.count(), 0);
    EXPECT_EQ(nothing.begin(), nothing.end());
}

TEST(XmlNodes, WalksNodesInDocumentOrder) {
    TestDocument document("<a><b v='1'/><c><b v='2'/></c></a>");
    std::string seen;
    for (auto* const node : XmlNodes(document.find("//b"))) {
        seen += XmlText::attribute(node, "v").text();
    }
    EXPECT_EQ(seen, "12");
}

} // namespace
