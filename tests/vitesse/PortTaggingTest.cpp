#include "tests/vitesse/PortTest.hpp"

using test_support::Access;
using test_support::Accesses;
using test_support::expectSuccess;
using test_support::Lines;
using test_support::reads;
using test_support::writes;

namespace {

using Ingress = ManagedSwitchPort::IngressTagSetting;
using Egress = ManagedSwitchPort::EgressTagSetting;

/// The five registers of ingress: all are read, then all are written.
Accesses const readOnes{reads(1, 3, 0x79, 0xFFFFFEFF), reads(1, 3, 0x7A, 0xFFFFFFFF),
                        reads(1, 3, 0x00, 0x10010442), reads(1, 3, 0x6E, 0xFFFFFFFF),
                        reads(2, 0, 0x03, 0xFDFFFFFF)};
Accesses const readBoth{reads(1, 3, 0x79, 0xFFFFFFFF), reads(1, 3, 0x7A, 0xFFFFFFFF),
                        reads(1, 3, 0x00, 0x10010442), reads(1, 3, 0x6E, 0xFFFFFFFF),
                        reads(2, 0, 0x03, 0xFDFFFFFF)};

Accesses written(unsigned int tag, unsigned int vid) {
    return {writes(1, 3, 0x79, tag), writes(1, 3, 0x7A, vid), writes(1, 3, 0x00, 0x10014442),
            writes(1, 3, 0x6E, 0xFFFFFFF9), writes(2, 0, 0x03, 0xFFFFFFFF)};
}

Accesses const addTag = readOnes + written(0xFFFFFF7F, 0xFFFFFABC);
Accesses const addTagIfUntagged = readBoth + written(0xFFFFFE7F, 0xFFFFFABC);
Accesses const validateTag = readBoth + written(0xFFFFFE7F, 0xFFFFFFFF);

Accesses const stripTag{reads(1, 3, 0x24, 0xFFFFFFFF), writes(1, 3, 0x24, 0xFFFFFFFE)};
Accesses const keepTag{reads(1, 3, 0x24, 0xFFFFFFFE), writes(1, 3, 0x24, 0xFFFFFFF7)};

class PortTaggingTest : public PortTest {
protected:
    /// Each failing write ends the operation; a read that fails is no failure.
    template <typename Operation> void expectIngress(Accesses const& table, Operation operation) {
        expectSuccess(registers, table, operation);
        expectEachFailureStops(registers, table, operation, {0, 1, 2, 3, 4});
        EXPECT_EQ(log.take(), Lines{});
    }

    /// Ends with false although the table succeeds.
    void expectFalse(Accesses const& table, unsigned int ingress, unsigned int egress) {
        registers.expect(table);
        EXPECT_FALSE(port.addPortToVlan(0x1ABC, static_cast<Ingress>(ingress), static_cast<Egress>(egress)));
        registers.verify();
    }
};

TEST_F(PortTaggingTest, AddsTags) {
    expectIngress(addTag, [&] { return port.ingressAddTag(0x1ABC); });
}

TEST_F(PortTaggingTest, AddsTagsToUntaggedFrames) {
    expectIngress(addTagIfUntagged, [&] { return port.ingressAddTagIfUntagged(0x1ABC); });
}

TEST_F(PortTaggingTest, ValidatesTagsAndKeepsThePortsVlan) {
    expectIngress(validateTag, [&] { return port.ingressValidateTag(); });
}

TEST_F(PortTaggingTest, IngressStartsFromZeroWhenNothingCanBeRead) {
    Accesses blind;
    for (Access const& read : readBoth) {
        blind.push_back(read.failing());
    }
    auto const zeros = [](unsigned int tag, unsigned int vid) {
        return Accesses{writes(1, 3, 0x79, tag), writes(1, 3, 0x7A, vid), writes(1, 3, 0x00, 0x00004000),
                        writes(1, 3, 0x6E, 0), writes(2, 0, 0x03, 0x02000000)};
    };
    expectSuccess(registers, blind + zeros(0x00000100, 0x005), [&] { return port.ingressAddTag(5); });
    expectSuccess(registers, blind + zeros(0x00000000, 0x005),
                  [&] { return port.ingressAddTagIfUntagged(5); });
    expectSuccess(registers, blind + zeros(0x00000000, 0x000), [&] { return port.ingressValidateTag(); });
}

TEST_F(PortTaggingTest, StripsTags) {
    expectSuccess(registers, stripTag, [&] { return port.egressStripTag(0x1ABC); });
    expectEachFailureStops(registers, stripTag, [&] { return port.egressStripTag(0x1ABC); }, {0});
    expectSuccess(registers, {reads(1, 3, 0x24, 0x55).failing(), writes(1, 3, 0x24, 0)},
                  [&] { return port.egressStripTag(1); });
}

TEST_F(PortTaggingTest, KeepsTags) {
    expectSuccess(registers, keepTag, [&] { return port.egressValidateTag(); });
    expectEachFailureStops(registers, keepTag, [&] { return port.egressValidateTag(); }, {0});
    expectSuccess(registers, {reads(1, 3, 0x24, 0x08), writes(1, 3, 0x24, 0x01)},
                  [&] { return port.egressValidateTag(); });
}

TEST_F(PortTaggingTest, InAVlanIngressComesBeforeEgress) {
    expectFalse(addTag + stripTag, 0, 0);
    expectFalse(validateTag + keepTag, 1, 1);
    expectFalse(addTagIfUntagged + stripTag, 2, 0);
    EXPECT_EQ(log.take(), Lines{}) << "a switch of another kind has no VLAN table";
}

TEST_F(PortTaggingTest, AFailedIngressOrEgressEndsIt) {
    Accesses failedIngress = addTag;
    failedIngress.back() = failedIngress.back().failing();
    expectFalse(failedIngress, 0, 0);
    Accesses failedEgress = addTag + stripTag;
    failedEgress.back() = failedEgress.back().failing();
    expectFalse(failedEgress, 0, 0);
}

TEST_F(PortTaggingTest, AnUnknownIngressIsReportedBeforeAnyAccess) {
    for (unsigned int const ingress : {3U, 4U, 0xFFFFFFFFU}) {
        expectFalse({}, ingress, 0);
        expectFalse({}, ingress, 2);
        EXPECT_EQ(log.take(), (Lines{"error|VitessePort::addPortToVlan IngressTagSetting not valid\n",
                                     "error|VitessePort::addPortToVlan IngressTagSetting not valid\n"}));
    }
}

TEST_F(PortTaggingTest, AnUnknownEgressIsReportedAfterTheIngressWrites) {
    for (unsigned int const egress : {2U, 3U, 0xFFFFFFFFU}) {
        expectFalse(addTag, 0, egress);
        EXPECT_EQ(log.take(), (Lines{"error|VitessePort::addPortToVlan invalid egressTag\n"}));
    }
}

TEST_F(PortTaggingTest, ASwitchOfAnotherKindHasNoTables) {
    registers.expect({});
    EXPECT_FALSE(port.addPortToVlanTable(10));
    EXPECT_FALSE(port.removePortFromVlanTable(10));
}

} // namespace
