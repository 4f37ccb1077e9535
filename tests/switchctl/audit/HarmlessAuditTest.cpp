// What an audit does to the chips that it reads.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>
#include <sstream>

#include "AuditBench.hpp"
#include "simulation/88e6096/Marvell88E6096TestSide.hpp"
#include "simulation/AccessLog.hpp"
#include "simulation/vsc7390/Vsc7390TestSide.hpp"

using simulation::AccessLog;
using testing::IsEmpty;

namespace {

/// Registers that no frame ever meets: what is written there only says what to read.
std::set<std::string> const stagingRegisters = {
    "VTUSID",   "VTUVID",     "VTUOperation", "SMIPHYCommand", "SMIPHYData", "MACACCESS",
    "MACTINDX", "VLANACCESS", "VLANTIDX",     "MIIMCMD",       "BusSetUp",
};

using Contents = std::map<std::string, std::uint32_t>;

/// All registers of a chip but those.
Contents contentsOf(simulation::ChipTestSide const& chip) {
    Contents contents;
    for (simulation::RegisterFile const* const unit : chip.getUnits()) {
        for (auto const& [address, description] : unit->getTable().getRegisters()) {
            std::string const& name = description.getName();
            bool const isStaged = name.compare(0, 7, "VTUData") == 0 || name == "VTUFID" ||
                                  name == "MACHDATA" || name == "MACLDATA" || name == "IndirectData" ||
                                  name == "IndirectStatus" || name == "MIIMDATA";
            if (stagingRegisters.count(name) == 0 && !isStaged) {
                contents[unit->getName() + "/" + name] = unit->peek(address);
            }
        }
    }
    return contents;
}

class HarmlessAuditTest : public testing::TestWithParam<char const*> {};

} // namespace

TEST_P(HarmlessAuditTest, WritesToStagingAndCommandRegistersOnly) {
    AuditBench bench(GetParam());
    std::size_t const before = bench.getBoard().getLog().getSize();
    ASSERT_THAT(bench.audit(), IsEmpty());
    unsigned reads = 0;
    for (AccessLog::Entry const& entry : bench.getBoard().getLog().getEntries(before)) {
        if (entry.kind == AccessLog::Kind::read) {
            ++reads;
        } else {
            EXPECT_EQ(stagingRegisters.count(entry.registerName), 1U) << AccessLog::line(entry);
        }
    }
    EXPECT_GT(reads, 10U);
}

TEST_P(HarmlessAuditTest, LeavesRegistersAndTablesAsTheyAre) {
    AuditBench bench(GetParam());
    std::vector<Contents> before;
    for (unsigned const id : bench.getBoard().getSwitchIds()) {
        before.push_back(contentsOf(bench.getBoard().getChip(id)));
    }
    ASSERT_THAT(bench.audit(), IsEmpty());
    ASSERT_THAT(bench.audit(), IsEmpty());
    std::size_t index = 0;
    for (unsigned const id : bench.getBoard().getSwitchIds()) {
        EXPECT_EQ(contentsOf(bench.getBoard().getChip(id)), before[index++]) << "switch " << id;
    }
    EXPECT_GT(index, 0U);
}

TEST_P(HarmlessAuditTest, MisusesNoChip) {
    AuditBench bench(GetParam());
    bench.getBoard().getMisuse().clear();
    ASSERT_THAT(bench.audit(), IsEmpty());
    std::ostringstream misuse;
    bench.getBoard().getMisuse().print(misuse);
    EXPECT_EQ(misuse.str(), "");
}

INSTANTIATE_TEST_SUITE_P(Examples, HarmlessAuditTest,
                         testing::Values("home-gateway", "video-rooms", "trap-minimal", "trap-access-point",
                                         "trap-three-switches", "trap-video-switch", "trap-mixed"));
