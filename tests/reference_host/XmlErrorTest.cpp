#include <gtest/gtest.h>

#include <string>

#include "reference_host/XmlDocument.hpp"
#include "tests/support/TemporaryFile.hpp"

using reference_host::XmlDocument;
using reference_host::XmlError;
using test_support::TemporaryFile;

namespace {

/// What reading the text says; "" when it is accepted. Fails when anything is printed.
std::string refusal(std::string const& text) {
    testing::internal::CaptureStderr();
    std::string result;
    try {
        XmlDocument::fromText(text, "board.xml");
    } catch (XmlError const& error) {
        result = error.what();
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    return result;
}

std::string fileRefusal(std::string const& path) {
    try {
        XmlDocument::fromFile(path);
    } catch (XmlError const& error) {
        return error.what();
    }
    return "";
}

std::string linePart(std::string const& message) {
    return message.substr(0, message.find(": "));
}

TEST(XmlErrorTest, NamesFileLineAndReason) {
    EXPECT_EQ(refusal("<switches>\n  <switch id='0'>\n</switches>\n"),
              "board.xml:3: Opening and ending tag mismatch: switch line 2 and switches");
    EXPECT_EQ(refusal("<switches>\n\n\n<switch id=0/>\n</switches>"),
              "board.xml:4: AttValue: \" or ' expected");
    EXPECT_EQ(refusal("<a b='1' b='2'/>"), "board.xml:1: Attribute b redefined");
}

TEST(XmlErrorTest, NamesTheFirstOfSeveralErrors) {
    EXPECT_EQ(linePart(refusal("<a>\n<b c=1/>\n<d e=2/>\n</f>\n")), "board.xml:2");
}

TEST(XmlErrorTest, RefusesWhatIsNoDocument) {
    EXPECT_EQ(refusal(""), "board.xml:1: Document is empty");
    EXPECT_EQ(linePart(refusal("\n\n just text")), "board.xml:3");
    EXPECT_EQ(linePart(refusal("<a>\n<b/>\n")), "board.xml:3");
    EXPECT_EQ(linePart(refusal("<a/>\n<b/>\n")), "board.xml:2");
    EXPECT_EQ(linePart(refusal("<a>\n\xFF\xFE</a>")), "board.xml:2");
    EXPECT_EQ(linePart(refusal(std::string("<a>\n\0</a>", 9))), "board.xml:2");
}

TEST(XmlErrorTest, AcceptsAWellFormedDocument) {
    EXPECT_EQ(refusal("<?xml version='1.0'?><!-- a board --><switches/>"), "");
    EXPECT_EQ(refusal("<!DOCTYPE board [<!ELEMENT board EMPTY>]><board/>"), "");
    EXPECT_EQ(refusal("<board name='R&amp;D &#65;'/>"), "");
}

TEST(XmlErrorTest, ReportsFilesThatCannotBeRead) {
    EXPECT_EQ(fileRefusal("/nonexistent/board.xml"), "/nonexistent/board.xml:0: No such file or directory");
    EXPECT_EQ(fileRefusal("/tmp"), "/tmp:0: Is a directory");
    EXPECT_EQ(fileRefusal("http://localhost/board.xml"),
              "http://localhost/board.xml:0: No such file or directory");
}

TEST(XmlErrorTest, ReportsErrorsInFiles) {
    TemporaryFile const file("<a>\n</b>");
    EXPECT_EQ(fileRefusal(file.path()), file.path() + ":2: Opening and ending tag mismatch: a line 1 and b");
}

TEST(XmlErrorTest, RefusesEntitiesBeforeTheyCanExpand) {
    std::string text = "<!DOCTYPE b [\n<!ENTITY a0 'ha'>\n";
    for (int i = 1; i < 20; ++i) {
        std::string const inner = "&a" + std::to_string(i - 1) + ";";
        text += "<!ENTITY a" + std::to_string(i) + " '" + inner + inner + inner + inner + "'>\n";
    }
    EXPECT_EQ(refusal(text + "]>\n<b c='&a19;'>&a19;</b>"),
              "board.xml:2: entity \"a0\": entities are not allowed");
    EXPECT_EQ(refusal("<!DOCTYPE b [\n\n<!ENTITY e SYSTEM 'file:///etc/passwd'>]><b>&e;</b>"),
              "board.xml:3: entity \"e\": entities are not allowed");
    EXPECT_EQ(refusal("<!DOCTYPE b [<!ENTITY % p SYSTEM 'http://localhost/x'>%p;]><b/>"),
              "board.xml:1: entity \"p\": entities are not allowed");
}

TEST(XmlErrorTest, DoesNotFetchAnExternalSubset) {
    EXPECT_EQ(refusal("<!DOCTYPE b SYSTEM 'http://localhost:1/board.dtd'><b/>"), "");
    EXPECT_EQ(refusal("<!DOCTYPE b SYSTEM '/nonexistent/board.dtd'><b/>"), "");
}

TEST(XmlErrorTest, KeepsTheParsersLimits) {
    std::string text;
    for (int i = 0; i < 1000; ++i) {
        text += "<a>";
    }
    EXPECT_EQ(refusal(text).rfind("board.xml:1: Excessive depth", 0), 0U);
}

} // namespace
