#include "reference_host/XmlIndex.hpp"

#include <gtest/gtest.h>
#include <libxml/parser.h>
#include <libxml/xpathInternals.h>

#include <memory>
#include <string>
#include <vector>

#include "reference_host/XmlSilence.hpp"

using reference_host::XmlIndex;

namespace {

using Nodes = std::vector<xmlNodePtr>;

/// Beside the index, libxml2's own answers.
class XmlIndexTest : public testing::Test {
protected:
    explicit XmlIndexTest(std::string const& text = board)
        : document(xmlReadMemory(text.c_str(), static_cast<int>(text.size()), "test", nullptr, 0),
                   xmlFreeDoc),
          index(document.get()) {}

    Nodes evaluated(std::string const& xpath) const {
        reference_host::XmlSilence const silence;
        std::unique_ptr<xmlXPathContext, void (*)(xmlXPathContextPtr)> const context(
            xmlXPathNewContext(document.get()), xmlXPathFreeContext);
        std::unique_ptr<xmlXPathObject, void (*)(xmlXPathObjectPtr)> const object(
            xmlXPathEval(reinterpret_cast<xmlChar const*>(xpath.c_str()), context.get()), xmlXPathFreeObject);
        if (object == nullptr || object->nodesetval == nullptr) {
            return {};
        }
        xmlXPathNodeSetSort(object->nodesetval);
        return Nodes(object->nodesetval->nodeTab, object->nodesetval->nodeTab + object->nodesetval->nodeNr);
    }

    void expectSame(std::string const& xpath, std::size_t count) {
        auto const found = index.find(xpath);
        ASSERT_TRUE(found.has_value()) << xpath;
        EXPECT_EQ(*found, evaluated(xpath)) << xpath;
        EXPECT_EQ(found->size(), count) << xpath;
    }

    static constexpr char const* board =
        "<!DOCTYPE board [<!ENTITY more \"<vlan id='5'/>\">]>"
        "<board xmlns:x='urn:x'>"
        "<switches><switch id='0'><port id='1'/><port id='2'/><trunk id='1'><port id='1'/></trunk></switch>"
        "<switch id=' 1 '><port id='1'/></switch></switches>"
        "<vlan id='5'><vlan id='5.0'><port portId='1'/></vlan><port portId='2'/></vlan>"
        "<vlan id='0x5'><port/></vlan><vlan id='1000'/><vlan id='1a'/><vlan id='-5'/><vlan id=''/><vlan/>"
        "<x:vlan id='5'><port/></x:vlan><vlan x:id='5'/><vlan id='&#53;'/><vlan "
        "id='ff'><e>ff</e><e>7</e></vlan>"
        "<deep xmlns='urn:d'><vlan id='5'/></deep>&more;<!-- <vlan id='5'/> -->"
        "</board>";

    std::unique_ptr<xmlDoc, void (*)(xmlDocPtr)> document;
    XmlIndex index;
};

TEST_F(XmlIndexTest, FindsByName) {
    expectSame("//switch", 2);
    expectSame("//vlan", 11);
    expectSame("//nothing", 0);
}

TEST_F(XmlIndexTest, FindsChildrenOfAName) {
    expectSame("//switches/switch", 2);
    expectSame("//switch/port", 3);
    expectSame("//vlan/port", 3);
    expectSame("//board/port", 0);
}

TEST_F(XmlIndexTest, FindsByNumber) {
    expectSame("//vlan[@id=5]", 3);
    expectSame("//vlan[@id=05]", 3);
    expectSame("//vlan[@id=6]", 0);
    expectSame("//switch[@id=1]", 1);
    expectSame("//switch[@id=4294967295]", 0);
    expectSame("//nothing[@id=1]", 0);
}

TEST_F(XmlIndexTest, FindsChildrenInDocumentOrder) {
    expectSame("//vlan[@id=5]/port", 2);
    expectSame("//switch[@id=0]/trunk", 1);
    expectSame("//trunk[@id=1]/port", 1);
}

TEST_F(XmlIndexTest, TakesExponentsAsXPathDoes) {
    expectSame("//vlan[@id=1e3]", 1);
    expectSame("//vlan[@id=5e0]", 3);
    expectSame("//vlan[@id=5e]", 3);
}

TEST_F(XmlIndexTest, AWordIsTheNameOfAnElement) {
    expectSame("//vlan[@id=ff]", 0);
    expectSame("//vlan[@id=ff]/port", 0);
    EXPECT_FALSE(index.find("//vlan[@id=e]").has_value());
    EXPECT_EQ(evaluated("//vlan[@id=e]").size(), 1U);
}

TEST_F(XmlIndexTest, LeavesTheRestToLibxml2) {
    for (char const* const xpath :
         {"//vlan[@id=1a]", "//vlan[@id=5", "//vlan[@id='5']", "/board", "//*", "vlan", "//vlan[1]",
          "//x:vlan", "//vlan[@id=5]/port/x", "", "//vlan[@id=-5]", "//vlan[@id=5.0]", "count(//vlan)"}) {
        EXPECT_FALSE(index.find(xpath).has_value()) << xpath;
    }
}

/// Every id there can be, against all of libxml2.
TEST_F(XmlIndexTest, AgreesForAllVlans) {
    std::string text = "<board>";
    constexpr unsigned numberOfVlans = 300;
    for (unsigned id = 0; id < numberOfVlans; ++id) {
        text += "<vlan id='" + std::to_string(id) + "'><port/></vlan>";
    }
    text += "</board>";
    document.reset(xmlReadMemory(text.c_str(), static_cast<int>(text.size()), "test", nullptr, 0));
    index = XmlIndex(document.get());
    char xpath[40];
    std::size_t found = 0;
    for (unsigned id = 0; id < numberOfVlans; ++id) {
        std::snprintf(xpath, sizeof xpath, "//vlan[@id=%x]/port", id);
        auto const nodes = index.find(xpath);
        Nodes const expected = evaluated(xpath);
        EXPECT_EQ(nodes.value_or(Nodes()), expected) << xpath;
        found += expected.size();
    }
    EXPECT_GT(found, 100U);
}

} // namespace
