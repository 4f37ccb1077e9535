#include "tests/vitesse/PortTest.hpp"

using test_support::Access;
using test_support::Accesses;
using test_support::CallLog;
using test_support::expectSuccess;
using test_support::Lines;
using test_support::reads;
using test_support::RecordingPort;
using test_support::writes;

namespace {

using Link = ManagedSwitchPort::LinkSetting;

constexpr unsigned int up = 0x10010000;
constexpr unsigned int onlyReceiving = 0x00010000;

/// The ports 0, 3, 15, 16 and 23 of a switch.
class PortSourceMaskTest : public PortTest {
protected:
    PortSourceMaskTest() {
        for (unsigned int const id : {23U, 16U, 15U, 0U}) {
            addPort(id);
        }
    }
};

TEST_F(PortSourceMaskTest, FramesMayGoToEveryOtherPortThatIsUp) {
    Accesses const table{
        reads(1, 3, 0x00, up),         reads(1, 0, 0x00, up), reads(1, 15, 0x00, onlyReceiving),
        reads(6, 0, 0x00, up),         reads(6, 7, 0x00, up), reads(2, 0, 0x43, 0x00000008),
        writes(2, 0, 0x83, 0x00810001)};
    expectSuccess(registers, table, [&] { return port.updateSourceMasks(); });
    registers.expect({table[0], table[1], table[2], table[3], table[4], table[5], table[6].failing()});
    EXPECT_FALSE(port.updateSourceMasks());
    EXPECT_EQ(log.take(), Lines{});
}

TEST_F(PortSourceMaskTest, FramesDoNotGoBackIntoTheirTrunk) {
    expectSuccess(registers,
                  {reads(1, 3, 0x00, up), reads(1, 0, 0x00, up), reads(1, 15, 0x00, up),
                   reads(6, 0, 0x00, up), reads(6, 7, 0x00, up), reads(2, 0, 0x43, 0xFF800008),
                   writes(2, 0, 0x83, 0x00018001)},
                  [&] { return port.updateSourceMasks(); });
}

TEST_F(PortSourceMaskTest, APortThatIsDownForwardsNothingAndAsksNobody) {
    expectSuccess(registers,
                  {reads(1, 3, 0x00, onlyReceiving), reads(2, 0, 0x43, 0x00000008), writes(2, 0, 0x83, 0)},
                  [&] { return port.updateSourceMasks(); });
}

TEST_F(PortSourceMaskTest, FailedReadsCountAsZero) {
    expectSuccess(registers,
                  {reads(1, 3, 0x00, up), reads(1, 0, 0x00, up).failing(), reads(1, 15, 0x00, up),
                   reads(6, 0, 0x00, up), reads(6, 7, 0x00, up), reads(2, 0, 0x43, 0xFFFFFFFF).failing(),
                   writes(2, 0, 0x83, 0x00818000)},
                  [&] { return port.updateSourceMasks(); });
    expectSuccess(registers, {reads(1, 3, 0x00, up).failing(), reads(2, 0, 0x43, 0), writes(2, 0, 0x83, 0)},
                  [&] { return port.updateSourceMasks(); });
}

TEST_F(PortSourceMaskTest, AfterALinkChangeAllPortsAreUpdatedInTheirOrder) {
    Accesses const stop{reads(1, 3, 0x00, up),          reads(2, 0, 0x10, 0x00FFFFFF),
                        writes(1, 3, 0x00, 0x10000000), writes(2, 0, 0x10, 0x00FFFFF7),
                        reads(1, 3, 0x00, 0x10000000),  writes(1, 3, 0x00, 0x00000000)};
    Access const down = reads(1, 3, 0x00, 0);
    Access const first = reads(1, 0, 0x00, up);
    Access const fifteenth = reads(1, 15, 0x00, up);
    Access const sixteenth = reads(6, 0, 0x00, up);
    Access const last = reads(6, 7, 0x00, up);
    Accesses const masks{first,
                         down,
                         fifteenth,
                         sixteenth,
                         last,
                         reads(2, 0, 0x40, 0x00000001),
                         writes(2, 0, 0x80, 0x00818000),
                         down,
                         reads(2, 0, 0x43, 0x00000008),
                         writes(2, 0, 0x83, 0x00000000),
                         fifteenth,
                         first,
                         down,
                         sixteenth,
                         last,
                         reads(2, 0, 0x4F, 0x00008000),
                         writes(2, 0, 0x8F, 0x00810001),
                         sixteenth,
                         first,
                         down,
                         fifteenth,
                         last,
                         reads(2, 0, 0x50, 0x00010000),
                         writes(2, 0, 0x90, 0x00808001),
                         last,
                         first,
                         down,
                         fifteenth,
                         sixteenth,
                         reads(2, 0, 0x57, 0x00800000),
                         writes(2, 0, 0x97, 0x00018001)};
    expectSuccess(registers, stop + masks, [&] { return port.setPort(Link::disabled); });
}

TEST_F(PortSourceMaskTest, AForeignPortIsAskedButNotUpdated) {
    owner.addPort(5);
    calls.clear();
    Accesses const start{reads(1, 3, 0x00, up),   reads(2, 0, 0x10, 0x8), writes(1, 3, 0x00, up),
                         writes(2, 0, 0x10, 0x8), reads(1, 3, 0x00, up),  writes(1, 3, 0x00, up)};
    Accesses masks;
    struct {
        unsigned int block;
        unsigned int subBlock;
        unsigned int number;
    } const others[] = {{1, 0, 0}, {1, 15, 15}, {6, 0, 16}, {6, 7, 23}};
    auto const isDown = [](unsigned int block, unsigned int subBlock, unsigned int number) {
        return Accesses{reads(block, subBlock, 0x00, 0), reads(2, 0, 0x40 + number, 0),
                        writes(2, 0, 0x80 + number, 0)};
    };
    masks = isDown(others[0].block, others[0].subBlock, others[0].number) +
            Accesses{reads(1, 3, 0x00, up),         reads(1, 0, 0x00, 0), reads(1, 15, 0x00, 0),
                     reads(6, 0, 0x00, 0),          reads(6, 7, 0x00, 0), reads(2, 0, 0x43, 0),
                     writes(2, 0, 0x83, 0x00000020)};
    for (std::size_t i = 1; i < 4; ++i) {
        masks = masks + isDown(others[i].block, others[i].subBlock, others[i].number);
    }
    expectSuccess(registers, start + masks, [&] { return port.setPort(Link::enabled); });
    EXPECT_EQ(calls, (CallLog{"0.5 portStatus"}));
}

TEST_F(PortSourceMaskTest, PortsBeyondTheChipAreNeverUp) {
    for (unsigned int const id : {24U, 35U, 256U, 0xFFFFFFFFU}) {
        addPort(id);
    }
    expectSuccess(registers,
                  {reads(1, 3, 0x00, up), reads(1, 0, 0x00, up), reads(1, 15, 0x00, up),
                   reads(6, 0, 0x00, up), reads(6, 7, 0x00, up), reads(2, 0, 0x43, 0),
                   writes(2, 0, 0x83, 0x00818001)},
                  [&] { return port.updateSourceMasks(); });
}

TEST_F(PortSourceMaskTest, APlaceWithoutAPortIsPassedOver) {
    std::pair<unsigned int, ManagedSwitchPort*> nothing(7, nullptr);
    owner.insertPort(nothing);
    expectSuccess(registers,
                  {reads(1, 3, 0x00, up), reads(1, 0, 0x00, up), reads(1, 15, 0x00, up),
                   reads(6, 0, 0x00, up), reads(6, 7, 0x00, up), reads(2, 0, 0x43, 0),
                   writes(2, 0, 0x83, 0x00818001)},
                  [&] { return port.updateSourceMasks(); });
}

TEST_F(PortSourceMaskTest, RoutesAreAddedToTheSourceMask) {
    VitessePort& upper = *dynamic_cast<VitessePort*>(owner.getPort(23));
    Accesses const table{reads(2, 0, 0x83, 0x00000001), writes(2, 0, 0x83, 0x00800001)};
    expectSuccess(registers, table, [&] { return port.portBasedVlanRouteToPort(upper); });
    expectEachFailureStops(registers, table, [&] { return port.portBasedVlanRouteToPort(upper); });
}

TEST_F(PortSourceMaskTest, SeveralRoutesAreWrittenOnce) {
    std::list<ManagedSwitchPort*> const ports{owner.getPort(0), owner.getPort(23), owner.getPort(15)};
    Accesses const table{reads(2, 0, 0x83, 0x00000010), writes(2, 0, 0x83, 0x00808011)};
    expectSuccess(registers, table, [&] { return port.portBasedVlanRouteToPort(ports); });
    expectEachFailureStops(registers, table, [&] { return port.portBasedVlanRouteToPort(ports); });
}

TEST_F(PortSourceMaskTest, NoRoutesStillReadAndWriteTheMask) {
    expectSuccess(registers, {reads(2, 0, 0x83, 0x00123456), writes(2, 0, 0x83, 0x00123456)},
                  [&] { return port.portBasedVlanRouteToPort(std::list<ManagedSwitchPort*>{}); });
}

TEST_F(PortSourceMaskTest, RoutesToNoPortOrBeyondTheMaskAddNothing) {
    VitessePort& beyond = addPort(35);
    VitessePort& numberless = addPort(0xFFFFFFFF);
    std::list<ManagedSwitchPort*> const ports{nullptr, &beyond, owner.getPort(0), &numberless, nullptr};
    expectSuccess(registers, {reads(2, 0, 0x83, 0x00000010), writes(2, 0, 0x83, 0x00000011)},
                  [&] { return port.portBasedVlanRouteToPort(ports); });
    expectSuccess(registers, {reads(2, 0, 0x83, 0x00000010), writes(2, 0, 0x83, 0x00000010)},
                  [&] { return port.portBasedVlanRouteToPort(beyond); });
}

TEST_F(PortSourceMaskTest, ARouteToAPortOfAnotherKindUsesItsNumber) {
    RecordingPort& foreign = owner.addPort(5);
    expectSuccess(registers, {reads(2, 0, 0x83, 0), writes(2, 0, 0x83, 0x00000020)},
                  [&] { return port.portBasedVlanRouteToPort(foreign); });
}

} // namespace
