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
using testing::Not;
using testing::UnorderedElementsAre;

namespace {

using Findings = std::vector<std::string>;

std::vector<std::string> examples() {
    std::vector<std::string> paths;
    for (auto const& entry : std::filesystem::directory_iterator(EXAMPLES_FOLDER)) {
        if (entry.path().extension() == ".xml") {
            paths.push_back(entry.path().string());
        }
    }
    return paths;
}

/// "LINE check" for each finding of that severity.
Findings findingsOf(std::string const& name, Severity severity) {
    auto const document = XmlDocument::fromFile(std::string(EXAMPLES_FOLDER) + "/" + name);
    DocumentCheck const check(*document);
    Findings findings;
    for (Finding const& finding : check.getFindings()) {
        if (finding.severity == severity) {
            findings.push_back(std::to_string(finding.line) + " " + finding.check);
        }
    }
    return findings;
}

Findings warningsOf(std::string const& name) {
    return findingsOf(name, Severity::warning);
}

TEST(ExampleDocumentsTest, AreValid) {
    ASSERT_GE(examples().size(), 7U);
    BoardSchema const schema;
    for (std::string const& path : examples()) {
        auto const document = XmlDocument::fromFile(path);
        EXPECT_THAT(schema.validate(document->getDocument()), IsEmpty()) << path;
    }
}

TEST(ExampleDocumentsTest, ThoseToBeginWithHaveNotesOnly) {
    for (char const* const name : {"home-gateway.xml", "video-rooms.xml"}) {
        EXPECT_THAT(findingsOf(name, Severity::error), IsEmpty()) << name;
        EXPECT_THAT(findingsOf(name, Severity::warning), IsEmpty()) << name;
        EXPECT_THAT(findingsOf(name, Severity::note), Not(IsEmpty())) << name;
    }
}

TEST(ExampleDocumentsTest, ErrorsAreTrapsOfTheirBoards) {
    EXPECT_EQ(findingsOf("trap-minimal.xml", Severity::error), Findings{"12 88e6096-port-unlisted"});
    EXPECT_THAT(findingsOf("trap-access-point.xml", Severity::error), IsEmpty());
    EXPECT_THAT(findingsOf("trap-three-switches.xml", Severity::error), IsEmpty());
    EXPECT_EQ(findingsOf("trap-video-switch.xml", Severity::error), Findings{"12 vsc7390-vlan-hopping"});
    EXPECT_EQ(findingsOf("trap-mixed.xml", Severity::error), Findings{"20 vsc7390-vlan-hopping"});
}

TEST(ExampleDocumentsTest, TwoPortsOfTheAccessPointForwardThoughTheyAreNotTo) {
    EXPECT_EQ(warningsOf("trap-access-point.xml"),
              (Findings{"23 88e6096-status-does-not-hold", "38 88e6096-status-does-not-hold"}));
}

TEST(ExampleDocumentsTest, TheMinimalBoardDoesNotListAllPortsAndHasATrunk) {
    EXPECT_EQ(warningsOf("trap-minimal.xml"), (Findings{"12 ports-beyond-count", "18 trunk-unsupported"}));
}

TEST(ExampleDocumentsTest, TheServiceSocketOfThreeSwitchesIsInNoTagBasedVlan) {
    EXPECT_EQ(warningsOf("trap-three-switches.xml"), Findings{"20 port-in-no-vlan"});
}

TEST(ExampleDocumentsTest, TheVideoSwitchNeedsItsHost) {
    EXPECT_EQ(warningsOf("trap-video-switch.xml"),
              (Findings{"12 vsc7390-trunk-loops-while-restarting", "54 vsc7390-vlan-opens-no-path",
                        "92 vsc7390-port-based-overwritten"}));
}

TEST(ExampleDocumentsTest, TheMixedBoardIsOdd) {
    EXPECT_THAT(warningsOf("trap-mixed.xml"),
                UnorderedElementsAre("20 vsc7390-beside-other-ports", "22 port-in-no-vlan",
                                     "23 port-in-no-vlan", "48 port-in-no-vlan", "66 port-in-no-vlan",
                                     "82 port-in-no-vlan", "89 vsc7390-vlan-opens-no-path",
                                     "98 vsc7390-vlan-opens-no-path", "109 vsc7390-vlan-opens-no-path"));
}

} // namespace
