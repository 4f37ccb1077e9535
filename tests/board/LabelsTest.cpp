#include "board/Labels.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "tests/support/TestDocument.hpp"

using board::Labels;

namespace {

constexpr char const* text =
    "<board><switches><switch id='7' switchModel='88e6096' label='rack'>"
    "<port id='1' label='a &quot;b&quot;&#10;c'/><port id='2' label=''/><port id='3'/>"
    "<port label='nowhere'/><port id='1' label='second'/></switch></switches>"
    "<vlan id='5'><port switchId='7' portId='1' label='of no port'/></vlan></board>";

TEST(LabelsTest, AreOfSwitchesAndOfPortsWithANumber) {
    test_support::TestDocument document{text};
    using All = std::map<std::string, std::string>;
    EXPECT_EQ(Labels(document).getAll(), (All{{"7", "rack"}, {"7.1", "a 'b' c"}}));
}

TEST(LabelsTest, StandBehindTheNumber) {
    test_support::TestDocument document{text};
    Labels const labels(document);
    EXPECT_EQ(labels.nameOf("7.1"), "7.1 \"a 'b' c\"");
    EXPECT_EQ(labels.nameOf("7.2"), "7.2");
    EXPECT_EQ(labels.after("7"), " \"rack\"");
    EXPECT_EQ(labels.after("8"), "");
}

TEST(LabelsTest, AreAMemberOfJsonWhereThereIsOne) {
    test_support::TestDocument document{text};
    Labels const labels(document);
    nlohmann::ordered_json object{{"port", 2}};
    labels.addTo(object, "7.2");
    EXPECT_EQ(object.dump(), R"({"port":2})");
    labels.addTo(object, "7");
    EXPECT_EQ(object.dump(), R"({"port":2,"label":"rack"})");
}

TEST(LabelsTest, AMemberOfAVlanIsThePortThatItNames) {
    test_support::TestDocument document{text};
    EXPECT_EQ(Labels::placeOf(document.find("//vlan/port")->nodeTab[0]), "7.1");
    EXPECT_EQ(Labels::placeOf(document.find("//vlan")->nodeTab[0]), "");
}

} // namespace
