// What the chips say of ports, and what is said where they say nothing.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>
#include <sstream>

#include "StatusBench.hpp"
#include "switchctl/status/StatusJson.hpp"
#include "switchctl/status/StatusTable.hpp"

using simulation::AccessLog;
using switchctl::status::StatusJson;
using switchctl::status::StatusTable;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::IsSubsetOf;
using testing::SizeIs;

TEST(PortStatusTest, AMarvellPortHasTheLinkOfItsPhy) {
    StatusBench bench("trap-mixed", {"0.1"});
    EXPECT_EQ(bench.textOf("link"), "down");
    EXPECT_EQ(bench.textOf("megabits"), "-");
    EXPECT_EQ(bench.textOf("duplex"), "-");
    bench.getBoard().getMarvell(0).plugLink(1, 10, false);
    EXPECT_EQ(bench.textOf("link"), "up");
    EXPECT_EQ(bench.textOf("megabits"), "10");
    EXPECT_EQ(bench.textOf("duplex"), "half");
    EXPECT_EQ(bench.textOf("phy"), "0141:0c80");
}

TEST(PortStatusTest, EveryStateOfAMarvellPortHasItsName) {
    StatusBench bench("trap-mixed", {"0.1"});
    constexpr unsigned portControl = 0x04;
    char const* const names[] = {"disabled", "blocking", "learning", "forwarding"};
    for (unsigned state = 0; state < 4; ++state) {
        bench.getBoard().getMarvell(0).poke("port 1", portControl, 0x007CU | state);
        EXPECT_EQ(bench.textOf("state"), names[state]);
    }
}

TEST(PortStatusTest, VlanTagsAndModeComeFromTheRegisters) {
    StatusBench bench("trap-mixed", {"0.1"});
    auto& chip = bench.getBoard().getMarvell(0);
    chip.poke("port 1", 0x07, 0x0012);
    chip.poke("port 1", 0x04, 0x207F);
    chip.poke("port 1", 0x08, 0x0480);
    EXPECT_EQ(bench.textOf("defaultVlan"), "18 (0x12)");
    EXPECT_EQ(bench.textOf("tagging"), "tagged");
    EXPECT_EQ(bench.textOf("mode8021Q"), "fallback");
}

TEST(PortStatusTest, AForcedFlowControlCounts) {
    StatusBench bench("trap-mixed", {"0.1"});
    EXPECT_EQ(bench.textOf("flowControl"), "off");
    bench.getBoard().getMarvell(0).poke("port 1", 0x01, 0x00C3);
    EXPECT_EQ(bench.textOf("flowControl"), "on");
}

TEST(PortStatusTest, PortsWithoutPhyHaveNone) {
    StatusBench bench("trap-mixed", {"0.8"});
    EXPECT_EQ(bench.textOf("phy"), "-");
    EXPECT_THAT(bench.sampler.sample().unread, IsEmpty());
}

TEST(PortStatusTest, AVsc7390sLinkIsThatOfThePhy) {
    StatusBench bench("trap-mixed", {"3.1"});
    EXPECT_EQ(bench.textOf("link"), "down");
    bench.getBoard().getVitesse(3).plugLink(1);
    EXPECT_EQ(bench.textOf("link"), "up");
    EXPECT_EQ(bench.textOf("megabits"), "100");
    bench.getBoard().getVitesse(3).unplugPhy(1);
    EXPECT_EQ(bench.textOf("link"), "-");
    EXPECT_EQ(bench.textOf("phy"), "none");
    EXPECT_THAT(bench.sampler.sample().unread, IsEmpty());
}

TEST(PortStatusTest, MasksMakeTheStateOfAVsc7390sPort) {
    StatusBench bench("trap-mixed", {"3.1"});
    auto& chip = bench.getBoard().getVitesse(3);
    EXPECT_EQ(bench.textOf("state"), "forwarding");
    chip.poke("analyser", 0x81, 0);
    EXPECT_EQ(bench.textOf("state"), "learning");
    chip.poke("analyser", 0x0D, 0);
    EXPECT_EQ(bench.textOf("state"), "blocking");
    chip.poke("port 1", 0x00, 0);
    EXPECT_EQ(bench.textOf("state"), "disabled");
}

TEST(PortStatusTest, AVsc7390sTagsMayLeaveOneVlanOut) {
    StatusBench bench("trap-mixed", {"3.1"});
    auto& chip = bench.getBoard().getVitesse(3);
    chip.poke("port 1", 0x24, 0x0001);
    EXPECT_EQ(bench.textOf("tagging"), "tagged");
    chip.poke("port 1", 0x24, 0x0059);
    EXPECT_EQ(bench.textOf("tagging"), "but 5");
    chip.poke("analyser", 0x05, 0);
    EXPECT_EQ(bench.textOf("mode8021Q"), "any");
    chip.poke("port 1", 0x04, 0x00020000);
    EXPECT_EQ(bench.textOf("flowControl"), "sent");
}

TEST(PortStatusTest, ErrorsAreTheSumOfTheErrorCounters) {
    StatusBench marvell("trap-mixed", {"0.1"});
    marvell.getBoard().getMarvell(0).setCounter(1, 0x1D, 3);
    marvell.getBoard().getMarvell(0).setCounter(1, 0x1F, 4);
    marvell.getBoard().getMarvell(0).setCounter(1, 0x04, 100);
    EXPECT_EQ(marvell.textOf("errors"), "7");
    EXPECT_EQ(marvell.textOf("errors"), "7") << "nothing is cleared";
    StatusBench vitesse("trap-mixed", {"3.1"});
    vitesse.getBoard().getVitesse(3).setCounter(1, 0x54, 5);
    vitesse.getBoard().getVitesse(3).setCounter(1, 0x55, 50);
    EXPECT_EQ(vitesse.textOf("errors"), "5");
}

TEST(PortStatusTest, NothingOfAChipThatIsGoneIsTakenForRead) {
    StatusBench bench("trap-mixed", {"0.1", "1.3"});
    bench.getBoard().getMarvell(0).unplug();
    auto const sample = bench.sampler.sample();
    ASSERT_THAT(sample.unread, SizeIs(1));
    EXPECT_THAT(sample.unread[0], HasSubstr("switch 0: no 88e6096 answers"));
    auto const json = StatusJson::of(sample, bench.models.getDocument(), "board.xml", "chips");
    EXPECT_THAT(json["ports"][0]["unread"], SizeIs(10));
    EXPECT_FALSE(json["ports"][0].contains("link"));
    EXPECT_THAT(json["ports"][1]["unread"], IsEmpty());
    std::ostringstream text;
    StatusTable::print(sample, bench.models.getDocument(), text);
    EXPECT_THAT(text.str(), HasSubstr("\n0.1  external unread unread unread unread unread"));
}

TEST(PortStatusTest, OneRegisterThatFailsIsUnreadAndTheOthersAreNot) {
    StatusBench bench("trap-mixed", {"0.1"});
    auto& chip = bench.getBoard().getMarvell(0);
    // The identifier of the chip comes first, then the port's status.
    chip.failAccess(2);
    auto const sample = bench.sampler.sample();
    ASSERT_THAT(sample.unread, SizeIs(1));
    EXPECT_THAT(sample.unread[0], HasSubstr("port 0.1: port 1/PortStatus could not be read"));
    EXPECT_TRUE(sample.rows[0].status.link.isUnread());
    EXPECT_TRUE(sample.rows[0].status.flowControl.isUnread());
    EXPECT_EQ(sample.rows[0].status.state.get(), "forwarding");
}

TEST(PortStatusTest, LookingChangesNoSetting) {
    StatusBench bench("trap-mixed", {});
    bench.getBoard().getMisuse().clear();
    std::size_t const before = bench.getBoard().getLog().getSize();
    bench.sampler.sample();
    std::set<std::string> written;
    for (AccessLog::Entry const& entry : bench.getBoard().getLog().getEntries(before)) {
        if (entry.kind == AccessLog::Kind::write) {
            written.insert(entry.registerName);
        }
    }
    EXPECT_THAT(written, ElementsAre("BusSetUp", "MIIMCMD", "SMIPHYCommand", "StatsOperation"));
    std::ostringstream misuse;
    bench.getBoard().getMisuse().print(misuse);
    EXPECT_EQ(misuse.str(), "");
}
