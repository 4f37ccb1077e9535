// `--fault` of the verbs that simulate: each lives with it, and tells it.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "board/faults/FaultKind.hpp"
#include "tests/support/ChildProcess.hpp"
#include "tests/support/Examples.hpp"

using nlohmann::json;
using test_support::minimal;
using testing::HasSubstr;

namespace {

using Words = std::vector<std::string>;

ChildProcess withFault(Words words, std::string const& fault) {
    words.insert(words.end(), {"--fault", fault});
    return ChildProcess::runSwitchctl(words);
}

constexpr int usage = 2;
constexpr int startUpFailed = 5;
constexpr int noStatistics = 6;
constexpr int registerFailed = 8;
constexpr int switchMissing = 1;

} // namespace

TEST(FaultsOfVerbsTest, AnAuditDoesNotCompareADeadBus) {
    ChildProcess const child = withFault({"audit", minimal, "--simulate"}, "unplugged:0");
    EXPECT_EQ(child.status, registerFailed);
    EXPECT_THAT(child.out, HasSubstr("not read: switch 0"));
}

TEST(FaultsOfVerbsTest, CountersOfADeadBusAreUnread) {
    EXPECT_EQ(withFault({"statistics", minimal, "--simulate", "--json"}, "mdio-high").status, noStatistics);
}

TEST(FaultsOfVerbsTest, ALiveBoardIsNotReadOverADeadBus) {
    EXPECT_EQ(withFault({"paths", minimal, "--live", "--simulate"}, "all-zeros").status, registerFailed);
    EXPECT_EQ(
        withFault({"explain", minimal, "0.1", "to", "0.0", "--live", "--simulate"}, "unplugged:0").status,
        registerFailed);
}

TEST(FaultsOfVerbsTest, ARegisterIsNotReadWithoutItsChip) {
    Words const read = {"register", "read", "smi", "--switch", "0", "--simulate", "port0/SwitchIdentifier"};
    EXPECT_EQ(withFault(read, "smi-stuck:0").status, registerFailed);
    EXPECT_EQ(withFault(read, "smi-stuck:1").status, usage);
    Words const serial = {"register", "read", "serial", "--simulate", "system/CHIPID"};
    EXPECT_EQ(withFault(serial, "serial-short").status, registerFailed);
    // A product number of its own, by what the chip says.
    EXPECT_THAT(withFault(read, "other-id:0").out, HasSubstr("0x0990"));
}

TEST(FaultsOfVerbsTest, ABringUpMeetsTheFaultFromTheStart) {
    ChildProcess const child = withFault({"bring-up", minimal, "--simulate"}, "unplugged:0");
    EXPECT_THAT(child.status, testing::AnyOf(startUpFailed, switchMissing)) << child.errors;
    EXPECT_EQ(withFault({"bring-up", minimal, "--simulate"}, "unplugged:9").status, usage);
}

TEST(FaultsOfVerbsTest, AFaultNeedsASimulation) {
    for (Words const& words : {Words{"bring-up", minimal}, {"audit", minimal}, {"doctor", minimal}}) {
        EXPECT_EQ(withFault(words, "all-ones").status, usage) << words.front();
    }
}

TEST(FaultsOfVerbsTest, AllAreListed) {
    std::string const text = ChildProcess::runSwitchctl({"faults"}).out;
    json const listed = json::parse(ChildProcess::runSwitchctl({"faults", "--json"}).out).at("faults");
    ASSERT_EQ(listed.size(), board::FaultKind::getAll().size());
    for (std::size_t place = 0; place < listed.size(); ++place) {
        board::FaultKind const& kind = board::FaultKind::getAll()[place];
        EXPECT_EQ(listed[place].at("name"), kind.name);
        EXPECT_THAT(text, HasSubstr(kind.name));
        EXPECT_THAT(text, HasSubstr(kind.effect));
    }
}
