#include "switchctl/check/BoardSchema.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "reference_host/XmlDocument.hpp"
#include "tests/switchctl/check/Documents.hpp"

using reference_host::XmlDocument;
using switchctl::check::BoardSchema;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

namespace {

class BoardSchemaTest : public testing::Test {
protected:
    std::vector<std::string> validate(std::string const& text) {
        document = XmlDocument::fromText(text, "board.xml");
        return schema.validate(document->getDocument());
    }

    std::vector<std::string> validate(std::string const& text, std::string const& query,
                                      std::string const& definition) {
        document = XmlDocument::fromText(text, "board.xml");
        return schema.validate(document->find(query)->nodeTab[0], definition);
    }

    BoardSchema schema;
    std::unique_ptr<XmlDocument> document;
};

TEST_F(BoardSchemaTest, IsTheFileThatShips) {
    std::ifstream file(SCHEMA_FILE);
    std::string const text{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    ASSERT_FALSE(text.empty());
    EXPECT_EQ(BoardSchema::text(), text);
}

TEST_F(BoardSchemaTest, AllowsAnyRoot) {
    EXPECT_THAT(validate("<switches>" + marvell("0") + "</switches>"), IsEmpty());
    EXPECT_THAT(validate(tagBased("5", "")), IsEmpty());
    EXPECT_THAT(
        validate("<a><b><c>" + boardOf(marvell("0"), tagBased("5", member("0", "1"))) + "</c></b></a>"),
        IsEmpty());
}

TEST_F(BoardSchemaTest, AllowsElementsOfOthersAround) {
    EXPECT_THAT(validate("<host mode='x'>text<phys><port number='7'><id>3</id></port></phys>" +
                         boardOf(marvell("0")) + "</host>"),
                IsEmpty());
}

TEST_F(BoardSchemaTest, AllowsOtherNamespacesWithin) {
    EXPECT_THAT(validate("<board xmlns:x='urn:x'><switches x:a='1'><x:note>text</x:note>" +
                         marvell("0", "<x:b><x:c d='1'/></x:b>") + "</switches></board>"),
                IsEmpty());
}

TEST_F(BoardSchemaTest, RefusesTheLibrarysElementsElsewhere) {
    EXPECT_THAT(validate("<board>" + marvell("0") + "</board>"), Not(IsEmpty()));
    EXPECT_THAT(validate("<board><trunk id='1'/></board>"), Not(IsEmpty()));
    EXPECT_THAT(validate("<board>" + group("239.1.1.1") + "</board>"), Not(IsEmpty()));
    EXPECT_THAT(validate(boardOf(marvell("0", tagBased("5", "")))), Not(IsEmpty()));
    EXPECT_THAT(validate(boardOf(marvell("0", "<prot/>"))), Not(IsEmpty()));
}

TEST_F(BoardSchemaTest, NamesAttributesAtFault) {
    EXPECT_THAT(validate("<switch id='x1' model='vsc7390'/>", "//switch", "switch"),
                ElementsAre("it does not allow id=\"x1\"", "it knows no attribute model",
                            "it requires the attribute switchModel"));
    EXPECT_THAT(
        validate("<port id='1' connectedTo='ethernet' portStatus='Forwarding'/>", "//port", "switchPort"),
        ElementsAre("it does not allow connectedTo=\"ethernet\"",
                    "it does not allow portStatus=\"Forwarding\""));
    EXPECT_THAT(validate("<port switchId='0' portId='1' ingress='stripTag'/>", "//port", "vlanPort"),
                ElementsAre("it does not allow ingress=\"stripTag\""));
    EXPECT_THAT(validate("<trunk/>", "//trunk", "trunk"), ElementsAre("it requires the attribute id"));
}

TEST_F(BoardSchemaTest, LooksAtGroupAddresses) {
    for (char const* const address :
         {"223.255.255.255", "240.0.0.1", "239.256.1.1", "239.1.1", "239.1.1.1.1", ""}) {
        EXPECT_THAT(validate(group(address), "/*", "group"), Not(IsEmpty())) << address;
    }
    for (char const* const address : {"224.0.0.0", "239.255.255.255", "230.10.99.100"}) {
        EXPECT_THAT(validate(group(address), "/*", "group"), IsEmpty()) << address;
    }
}

TEST_F(BoardSchemaTest, FindsNoFaultInGoodElements) {
    EXPECT_THAT(validate(boardOf(marvell("0")), "//switch", "switch"), IsEmpty());
    EXPECT_THAT(validate(boardOf(marvell("0")), "//switch/port", "switchPort"), IsEmpty());
}

} // namespace
