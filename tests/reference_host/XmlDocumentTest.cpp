#include "reference_host/XmlDocument.hpp"

#include <gtest/gtest.h>
#include <libxml/tree.h>

#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "tests/support/TemporaryFile.hpp"

using reference_host::XmlDocument;
using test_support::TemporaryFile;

namespace {

char const* const board = "<board>\n"
                          "  <switches>\n"
                          "    <switch id='0' switchModel='88e6096'>\n"
                          "      <port id='0'/><port id='1'/>\n"
                          "      <trunk id='1'><port id='1'/></trunk>\n"
                          "    </switch>\n"
                          "    <switch id='3'><port id='7'/></switch>\n"
                          "  </switches>\n"
                          "  <vlan id='5'><port portId='2'><forwardedMulticastGroup>239.1.2.3"
                          "</forwardedMulticastGroup></port></vlan>\n"
                          "</board>\n";

std::string attribute(xmlNodePtr node, char const* name) {
    std::unique_ptr<xmlChar, decltype(xmlFree)> const value(
        xmlGetProp(node, reinterpret_cast<xmlChar const*>(name)), xmlFree);
    return value ? reinterpret_cast<char const*>(value.get()) : "(absent)";
}

std::vector<std::string> ids(xmlNodeSetPtr set) {
    std::vector<std::string> result;
    for (int i = 0; set != nullptr && i < set->nodeNr; ++i) {
        result.push_back(attribute(set->nodeTab[i], "id"));
    }
    return result;
}

using Ids = std::vector<std::string>;

class XmlDocumentTest : public testing::Test {
protected:
    std::unique_ptr<XmlDocument> document = XmlDocument::fromText(board, "board.xml");
};

TEST_F(XmlDocumentTest, FindsElementsInDocumentOrder) {
    EXPECT_EQ(ids(document->find("//switches/switch")), (Ids{"0", "3"}));
    EXPECT_EQ(ids(document->find("//switch/port")), (Ids{"0", "1", "7"}));
    EXPECT_EQ(ids(document->find("//switch[@id=0]/port")), (Ids{"0", "1"}));
    EXPECT_EQ(ids(document->find("//switch[@id=3]/port")), (Ids{"7"}));
    EXPECT_EQ(ids(document->find("//vlan | //switch")), (Ids{"0", "3", "5"}));
    EXPECT_EQ(ids(document->find("//trunk/preceding-sibling::port")), (Ids{"0", "1"}));
}

TEST_F(XmlDocumentTest, GivesNodesThatCanBeLookedInto) {
    xmlNodeSetPtr const groups = document->find("//forwardedMulticastGroup");
    ASSERT_NE(groups, nullptr);
    ASSERT_EQ(groups->nodeNr, 1);
    xmlNodePtr const group = groups->nodeTab[0];
    std::unique_ptr<xmlChar, decltype(xmlFree)> const text(xmlNodeGetContent(group), xmlFree);
    EXPECT_STREQ(reinterpret_cast<char const*>(text.get()), "239.1.2.3");
    EXPECT_STREQ(reinterpret_cast<char const*>(group->parent->parent->name), "vlan");
    EXPECT_EQ(attribute(group->parent, "portId"), "2");
}

TEST_F(XmlDocumentTest, NothingSelectedIsAnEmptySetThatCanBeLookedInto) {
    for (char const* const query : {"//nothing", "//switch[@id=9]/port", "//vlan[@id=64]/port"}) {
        xmlNodeSetPtr const set = document->find(query);
        ASSERT_NE(set, nullptr) << query;
        EXPECT_EQ(set->nodeNr, 0) << query;
    }
}

TEST_F(XmlDocumentTest, ARelativeQueryStartsAtTheDocument) {
    EXPECT_EQ(ids(document->find("board/vlan")), (Ids{"5"}));
    EXPECT_EQ(document->find("switch")->nodeNr, 0);
}

TEST_F(XmlDocumentTest, AMalformedQueryGivesNullAndPrintsNothing) {
    testing::internal::CaptureStderr();
    testing::internal::CaptureStdout();
    for (char const* const query :
         {"", "//", "//switch[", "//switch[@id=]", "][", "//vlan[@id=0x64]/port", "//vlan[@id=6a]/port",
          "nofunction()", "//switch[nofunction(1)]", "$variable", "//prefix:switch", "'open", "count(1, 2)",
          "//switch[count('text')]"}) {
        EXPECT_EQ(document->find(query), nullptr) << query;
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(ids(document->find("//vlan")), (Ids{"5"}));
}

TEST_F(XmlDocumentTest, OthersOnTheThreadKeepTheirErrorHandlers) {
    struct Counter {
        static void count(void* context, char const*, ...) { ++*static_cast<int*>(context); }
    };
    int errors = 0;
    xmlSetGenericErrorFunc(&errors, &Counter::count);
    document->find("nofunction()");
    EXPECT_EQ(errors, 0);
    xmlGenericError(xmlGenericErrorContext, "an error of somebody else");
    EXPECT_EQ(errors, 1);
    xmlSetGenericErrorFunc(nullptr, nullptr);
}

TEST_F(XmlDocumentTest, AResultThatIsNoNodeSetIsNull) {
    for (char const* const query :
         {"1", "count(//switch)", "'text'", "string(//vlan/@id)", "true()", "//a = 1"}) {
        EXPECT_EQ(document->find(query), nullptr) << query;
    }
}

// Everything that a set refers to is looked at again after many other queries have allocated and
// freed memory: a set that died early has been overwritten by then, and the address sanitizer sees
// the first look at it.
TEST_F(XmlDocumentTest, SetsLiveAsLongAsTheDocument) {
    xmlNodeSetPtr const switches = document->find("//switches/switch");
    xmlNodeSetPtr const none = document->find("//nothing");
    ASSERT_EQ(switches->nodeNr, 2);
    xmlNodePtr const first = switches->nodeTab[0];
    xmlNodePtr const second = switches->nodeTab[1];
    for (int i = 0; i < 500; ++i) {
        std::string const number = std::to_string(i);
        document->find("//switch[@id=" + number + "] | //port");
        document->find("//switch[" + number);
        document->find("//port[position() < " + number + "]");
    }
    ASSERT_EQ(switches->nodeNr, 2);
    EXPECT_EQ(switches->nodeTab[0], first);
    EXPECT_EQ(switches->nodeTab[1], second);
    EXPECT_EQ(ids(switches), (Ids{"0", "3"}));
    EXPECT_EQ(none->nodeNr, 0);
}

TEST_F(XmlDocumentTest, TheSameQueryGivesTheSameSet) {
    xmlNodeSetPtr const first = document->find("//port");
    document->find("//vlan");
    EXPECT_EQ(document->find("//port"), first);
    xmlNodeSetPtr const none = document->find("//nothing");
    EXPECT_EQ(document->find("//nothing"), none);
}

TEST_F(XmlDocumentTest, AnEarlierAnswerDoesNotHideAChangeOfTheTree) {
    xmlNodeSetPtr const before = document->find("//vlan");
    ASSERT_EQ(ids(before), (Ids{"5"}));
    xmlNodePtr const added = xmlNewChild(xmlDocGetRootElement(document->getDocument()), nullptr,
                                         reinterpret_cast<xmlChar const*>("vlan"), nullptr);
    xmlNewProp(added, reinterpret_cast<xmlChar const*>("id"), reinterpret_cast<xmlChar const*>("6"));
    EXPECT_EQ(ids(document->find("//vlan")), (Ids{"5", "6"}));
    EXPECT_EQ(ids(before), (Ids{"5"}));
}

TEST_F(XmlDocumentTest, TellsItsNameAndTree) {
    EXPECT_EQ(document->getName(), "board.xml");
    EXPECT_STREQ(reinterpret_cast<char const*>(xmlDocGetRootElement(document->getDocument())->name), "board");
}

TEST_F(XmlDocumentTest, ReadsAFile) {
    TemporaryFile const file(board);
    auto const fromFile = XmlDocument::fromFile(file.path());
    EXPECT_EQ(fromFile->getName(), file.path());
    EXPECT_EQ(ids(fromFile->find("//switches/switch")), (Ids{"0", "3"}));
}

TEST_F(XmlDocumentTest, ReadsAFileLargerThanOneRead) {
    std::string text = "<switches>";
    for (int i = 0; i < 20000; ++i) {
        text += "<switch id='" + std::to_string(i) + "'/>";
    }
    TemporaryFile const file(text + "</switches>");
    EXPECT_EQ(XmlDocument::fromFile(file.path())->find("//switch")->nodeNr, 20000);
}

TEST(XmlDocumentsTest, ManyDocumentsOnManyThreads) {
    std::vector<std::thread> readers;
    for (int reader = 0; reader < 4; ++reader) {
        readers.emplace_back([] {
            for (int i = 0; i < 50; ++i) {
                auto const document = XmlDocument::fromText(board, "board.xml");
                EXPECT_EQ(ids(document->find("//switch/port")), (Ids{"0", "1", "7"}));
                EXPECT_EQ(document->find("//switch["), nullptr);
                EXPECT_THROW(XmlDocument::fromText("<a>", "a.xml"), reference_host::XmlError);
            }
        });
    }
    for (std::thread& reader : readers) {
        reader.join();
    }
}

TEST(XmlDocumentsTest, OneDocumentMayBeAskedFromSeveralThreads) {
    auto const document = XmlDocument::fromText(board, "board.xml");
    auto ask = [&document] {
        for (int i = 0; i < 200; ++i) {
            EXPECT_EQ(document->find("//switch[@id=" + std::to_string(i % 7) + "]")->nodeNr,
                      i % 7 == 0 || i % 7 == 3 ? 1 : 0);
        }
    };
    std::thread other(ask);
    ask();
    other.join();
}

} // namespace
