#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <map>

#include "switchctl/check/BoardSchema.hpp"
#include "switchctl/check/DocumentCheck.hpp"

using reference_host::XmlDocument;
using switchctl::check::BoardSchema;
using switchctl::check::DocumentCheck;
using switchctl::check::Finding;
using switchctl::check::Severity;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

namespace {

using Warnings = std::vector<std::string>;

std::vector<std::string> examples() {
    std::vector<std::string> paths;
    for (auto const& entry : std::filesystem::directory_iterator(EXAMPLES_FOLDER)) {
        if (entry.path().extension() == ".xml") {
            paths.push_back(entry.path().string());
        }
    }
    return paths;
}

/// "LINE check" for each warning.
Warnings warningsOf(std::string const& name) {
    auto const document = XmlDocument::fromFile(std::string(EXAMPLES_FOLDER) + "/" + name);
    DocumentCheck const check(*document);
    Warnings warnings;
    for (Finding const& finding : check.getFindings()) {
        if (finding.severity == Severity::warning) {
            warnings.push_back(std::to_string(finding.line) + " " + finding.check);
        }
    }
    return warnings;
}

TEST(ExampleDocumentsTest, AreValidAndFreeOfErrors) {
    ASSERT_GE(examples().size(), 5U);
    BoardSchema const schema;
    for (std::string const& path : examples()) {
        auto const document = XmlDocument::fromFile(path);
        EXPECT_THAT(schema.validate(document->getDocument()), IsEmpty()) << path;
        EXPECT_EQ(DocumentCheck(*document).count(Severity::error), 0U) << path;
    }
}

TEST(ExampleDocumentsTest, TheAccessPointHasNoWarning) {
    EXPECT_THAT(warningsOf("access-point.xml"), IsEmpty());
}

TEST(ExampleDocumentsTest, TheMinimalBoardDoesNotListAllPortsAndHasATrunk) {
    EXPECT_EQ(warningsOf("minimal.xml"), (Warnings{"12 ports-beyond-count", "18 trunk-unsupported"}));
}

TEST(ExampleDocumentsTest, TheServiceSocketOfThreeSwitchesIsInNoTagBasedVlan) {
    EXPECT_EQ(warningsOf("three-switches.xml"), Warnings{"20 port-in-no-vlan"});
}

TEST(ExampleDocumentsTest, TheVideoSwitchNeedsItsHost) {
    EXPECT_EQ(warningsOf("video-switch.xml"),
              (Warnings{"12 vsc7390-open-while-restarting", "54 vsc7390-vlan-opens-no-path",
                        "92 vsc7390-port-based-overwritten"}));
}

TEST(ExampleDocumentsTest, TheMixedBoardIsOdd) {
    EXPECT_THAT(warningsOf("mixed.xml"),
                UnorderedElementsAre("20 vsc7390-beside-other-ports", "20 vsc7390-open-while-restarting",
                                     "22 port-in-no-vlan", "23 port-in-no-vlan", "48 port-in-no-vlan",
                                     "66 port-in-no-vlan", "82 port-in-no-vlan",
                                     "89 vsc7390-vlan-opens-no-path", "98 vsc7390-vlan-opens-no-path",
                                     "109 vsc7390-vlan-opens-no-path"));
}

} // namespace
