#include "model/TagBasedVlan.hpp"
#include "model/TagBasedVlanPort.hpp"
#include "tests/model/ModelTest.hpp"

using test_support::Lines;
using test_support::RecordingSwitch;
using test_support::TestDocument;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

constexpr unsigned int refusedIngress = 3;
constexpr unsigned int refusedEgress = 2;

class TagBasedVlanTest : public ModelTest {
protected:
    Lines add(TagBasedVlan& target, ManagedSwitchPort& port, std::string const& element) {
        TestDocument const document(element);
        log.take();
        target.addPort(port, document.root());
        return log.take();
    }

    /// The settings that an element gives to a new member.
    std::pair<unsigned int, unsigned int> settings(std::string const& element) {
        TagBasedVlan fresh(application, 0x2A);
        RecordingSwitch owner(application, 0, calls);
        TestDocument const document(element);
        fresh.addPort(owner.addPort(7), document.root());
        auto const& member = dynamic_cast<TagBasedVlanPort&>(*fresh.getVlanPorts().at(7));
        return {static_cast<unsigned int>(member.getIngressType()),
                static_cast<unsigned int>(member.getEgressType())};
    }

    TagBasedVlan vlan{application, 0x2A};
};

TEST_F(TagBasedVlanTest, KeepsWhatItWasBuiltFrom) {
    EXPECT_EQ(vlan.getId(), 0x2AU);
    EXPECT_EQ(static_cast<unsigned int>(vlan.getType()), 2U);
    EXPECT_EQ(vlan.getApplication(), &application);
    EXPECT_TRUE(vlan.getPorts().empty());
    EXPECT_EQ(log.take(), Lines{});
}

TEST_F(TagBasedVlanTest, AddsAMember) {
    auto& port = chip.addPort(7);
    EXPECT_EQ(add(vlan, port, "<port ingress='addTagIfUntagged' egress='stripTag'/>"),
              (Lines{"3|TagBasedVlanPort::TagBasedVlanPort vlan 0x2a switch 0 port 7 "
                     "ingressString:addTagIfUntagged egressString:stripTag created\n",
                     "0|ManagedSwitchPort::addVlanPort. Add vlan:0x2a to port 0.7.\n"}));
    ASSERT_EQ(vlan.getPorts().count(7), 1U);
    EXPECT_EQ(vlan.getPorts().at(7)->getVlan(), &vlan);
    EXPECT_EQ(vlan.getPorts().at(7)->getSwitchPort(), &port);
    EXPECT_EQ(&vlan.getPorts(), &vlan.getVlanPorts());
}

TEST_F(TagBasedVlanTest, KnowsTheTagSettingsOfTheDocument) {
    using Pair = std::pair<unsigned int, unsigned int>;
    EXPECT_EQ(settings("<port ingress='addTag' egress='stripTag'/>"), Pair(0, 0));
    EXPECT_EQ(settings("<port ingress='validateTag' egress='validateTag'/>"), Pair(1, 1));
    EXPECT_EQ(settings("<port ingress='addTagIfUntagged' egress='stripTag'/>"), Pair(2, 0));
    EXPECT_EQ(log.take("error"), Lines{});
}

TEST_F(TagBasedVlanTest, SettingsThatMatchNothingBecomeOnesThatChipsRefuse) {
    using Pair = std::pair<unsigned int, unsigned int>;
    EXPECT_EQ(settings("<port ingress='addTag' egress='addTag'/>"), Pair(0, refusedEgress));
    EXPECT_EQ(settings("<port ingress='stripTag' egress='stripTag'/>"), Pair(refusedIngress, 0));
    EXPECT_EQ(settings("<port ingress='AddTag' egress=''/>"), Pair(refusedIngress, refusedEgress));
    EXPECT_EQ(log.take("error"), Lines{});
}

TEST_F(TagBasedVlanTest, AMissingIngressIsReportedAndRefusedByChips) {
    EXPECT_EQ(settings("<port egress='stripTag'/>"),
              (std::pair<unsigned int, unsigned int>(refusedIngress, 0)));
    Lines const lines = log.lines();
    EXPECT_THAT(lines, testing::Contains("3|TagBasedVlanPort::TagBasedVlanPort vlan 0x2a switch 0 port 7 "
                                         "ingressString:(null) egressString:stripTag created\n"));
    EXPECT_THAT(log.take("error"), ElementsAre(AllOf(StartsWith("error|"), HasSubstr("0x2a"), HasSubstr("7"),
                                                     HasSubstr("ingress"))));
}

TEST_F(TagBasedVlanTest, AMissingEgressIsReportedAndRefusedByChips) {
    EXPECT_EQ(settings("<port ingress='addTag'/>"),
              (std::pair<unsigned int, unsigned int>(0, refusedEgress)));
    Lines const lines = log.lines();
    EXPECT_THAT(lines, testing::Contains("3|TagBasedVlanPort::TagBasedVlanPort vlan 0x2a switch 0 port 7 "
                                         "ingressString:addTag egressString:(null) created\n"));
    EXPECT_THAT(log.take("error"), ElementsAre(AllOf(StartsWith("error|"), HasSubstr("0x2a"), HasSubstr("7"),
                                                     HasSubstr("egress"))));
}

TEST_F(TagBasedVlanTest, BothSettingsMissingIsReportedTwice) {
    EXPECT_EQ(settings("<port/>"), (std::pair<unsigned int, unsigned int>(refusedIngress, refusedEgress)));
    EXPECT_EQ(log.take("error").size(), 2U);
}

TEST_F(TagBasedVlanTest, SettingTextIsNeverAFormat) {
    Lines const lines = add(vlan, chip.addPort(7), "<port ingress='%s%n' egress='%d'/>");
    EXPECT_EQ(lines[0], "3|TagBasedVlanPort::TagBasedVlanPort vlan 0x2a switch 0 port 7 "
                        "ingressString:%s%n egressString:%d created\n");
}

TEST_F(TagBasedVlanTest, DropsASecondMemberWithTheSamePortIdSilently) {
    auto& port = chip.addPort(7);
    RecordingSwitch otherChip(application, 1, calls);
    add(vlan, port, "<port ingress='addTag' egress='stripTag'/>");
    EXPECT_EQ(add(vlan, port, "<port ingress='validateTag' egress='validateTag'/>"), Lines{});
    EXPECT_EQ(add(vlan, otherChip.addPort(7), "<port/>"), Lines{});
    EXPECT_EQ(vlan.getPorts().size(), 1U);
    auto const& member = dynamic_cast<TagBasedVlanPort&>(*vlan.getPorts().at(7));
    EXPECT_EQ(member.getSwitchPort(), &port);
    EXPECT_EQ(static_cast<unsigned int>(member.getIngressType()), 0U);
}

} // namespace
