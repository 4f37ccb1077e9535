// `switchctl doctor` of simulated boards with each fault there is: which cause it names, and of whom.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cctype>
#include <nlohmann/json.hpp>
#include <set>
#include <string>
#include <vector>

#include "board/faults/FaultKind.hpp"
#include "switchctl/doctor/DoctorCommand.hpp"
#include "tests/support/CommandRun.hpp"

using board::FaultKind;
using chips::ExitStatus;
using nlohmann::json;
using switchctl::doctor::DoctorCommand;
using test_support::CommandRun;

namespace {

using Words = std::vector<std::string>;

/// 88E6096 chips at 0, 1 and 2, and a VSC7390 with id 3.
constexpr char const* mixedBoard = EXAMPLES_FOLDER "/trap-mixed.xml";
/// A VSC7390 with id 2.
constexpr char const* videoBoard = EXAMPLES_FOLDER "/trap-video-switch.xml";

struct Fault {
    std::string text;
    /// "SWITCH CAUSE" of each finding, "all CAUSE" for a whole bus; none where the chips answer.
    Words findings;
    Words options;
    char const* document = mixedBoard;
};

void PrintTo(Fault const& fault, std::ostream* out) {
    for (char const character : fault.text + (fault.options.empty() ? "" : fault.options.front())) {
        *out << (std::isalnum(static_cast<unsigned char>(character)) != 0 ? character : '_');
    }
}

Words const writes = {"--allow-writes"};
Words const line = {"--serial"};
Words const lineAndWrites = {"--serial", "--allow-writes"};

/// The accesses: two set the management clock, each frame of a read has four, and registers 2, 3 and 0 are
/// read twice each.
std::vector<Fault> const faults = {
    {"access-fails", {"all access fails", "3 access fails"}, {}},
    {"access-fails:100", {"all access fails", "3 access fails"}, {}},
    {"all-zeros", {"all all zeros", "3 all zeros"}, {}},
    {"all-ones", {"all all ones", "3 all ones"}, {}},
    // A wrong lowest bit is none of the VSC7390's product number.
    {"bit-flipped", {"all master stuck"}, {}},
    {"access-fails-once:10", {"all access fails"}, {}},
    {"all-zeros-once:6", {"all unsteady"}, {}},
    {"all-ones-once:22", {"all unsteady"}, {}},
    {"bit-flipped-once:22", {"all unsteady"}, {}},
    {"slow:1000", {}, {}},
    {"mdio-stuck", {"all master stuck"}, {}},
    {"mdio-stuck:40", {"all master stuck"}, {}},
    {"mdio-low", {"all all zeros"}, {}},
    {"mdio-high", {"all all ones"}, {}},
    {"unplugged:1", {"1 nothing there"}, {}},
    {"unplugged:1", {"1 nothing there"}, writes},
    {"unplugged:3", {"3 all ones"}, {}},
    {"other-id:0", {}, {}},
    {"other-id:0", {"0 other chip"}, writes},
    {"other-id:3", {"3 other chip"}, {}},
    {"other-id:2", {"2 other chip"}, line, videoBoard},
    {"other-address:0", {"0 other address"}, {}},
    {"single-chip:0", {"0 wrong strap"}, {}},
    {"cpu-strap:2", {}, {}},
    {"cpu-strap:2", {"2 wrong strap"}, writes},
    {"bytes-turned:3", {"3 byte order"}, {}},
    {"bytes-turned:3", {"3 byte order"}, writes},
    {"register-fails:0", {"0 chip stuck"}, {}},
    {"register-fails:3", {"3 access fails"}, {}},
    {"phy-absent:3.8", {}, {}},
    {"phy-absent:3.8", {"3 PHY absent"}, writes},
    {"phy-absent:2.20", {"2 PHY absent"}, lineAndWrites, videoBoard},
    {"smi-stuck:1", {"1 chip stuck"}, {}},
    {"phy-unit-stuck:1", {}, {}},
    {"phy-unit-stuck:1", {"1 chip stuck"}, writes},
    {"fetch-stuck:3", {"3 chip stuck"}, {}},
    {"mii-stuck:3", {}, {}},
    {"mii-stuck:3", {"3 chip stuck"}, writes},
    // Tables and counters are nothing that a chip answers with.
    {"vtu-stuck:0", {}, writes},
    {"atu-stuck:0", {}, writes},
    {"statistics-stuck:0", {}, writes},
    {"vlan-table-stuck:3", {}, writes},
    {"mac-table-stuck:3", {}, writes},
    {"arbiter-stuck:3", {}, writes},
    {"serial-silent", {"2 line silent"}, line, videoBoard},
    {"serial-garbled", {"2 line garbled"}, line, videoBoard},
    {"serial-short:3", {"2 line garbled"}, line, videoBoard},
    {"serial-long", {"2 unsteady"}, line, videoBoard},
    {"all-ones", {"2 all ones"}, line, videoBoard},
};

class DoctorFaultsTest : public testing::TestWithParam<Fault> {
protected:
    static CommandRun run(Words const& more) {
        Words words = {"doctor", GetParam().document, "--simulate", "--fault", GetParam().text};
        words.insert(words.end(), GetParam().options.begin(), GetParam().options.end());
        words.insert(words.end(), more.begin(), more.end());
        return CommandRun::of<DoctorCommand>(words, std::string("/nonexistent/mem"));
    }
};

Words findingsOf(json const& document) {
    Words found;
    for (json const& finding : document.at("findings")) {
        json const& id = finding.at("switch");
        found.push_back((id.is_null() ? "all" : std::to_string(id.get<unsigned>())) + " " +
                        finding.at("cause").get<std::string>());
        EXPECT_FALSE(finding.at("measure").empty()) << found.back();
    }
    return found;
}

} // namespace

TEST_P(DoctorFaultsTest, TheCauseIsNamed) {
    CommandRun const result = run({"--json"});
    json const document = json::parse(result.out);
    EXPECT_EQ(findingsOf(document), GetParam().findings) << result.out;
    bool const isWell = GetParam().findings.empty();
    ExitStatus const well = GetParam().options == writes ? ExitStatus::success : ExitStatus::notLookedAt;
    EXPECT_EQ(result.status, isWell ? well : ExitStatus::switchMissing) << result.errors;
    for (json const& entry : document.at("switches")) {
        std::string const id = std::to_string(entry.at("id").get<unsigned>());
        bool isFound = false;
        for (std::string const& finding : GetParam().findings) {
            isFound = isFound || finding.rfind(id + " ", 0) == 0;
        }
        EXPECT_EQ(entry.at("answers") == false, isFound) << entry;
    }
}

INSTANTIATE_TEST_SUITE_P(Faults, DoctorFaultsTest, testing::ValuesIn(faults));

TEST(DoctorFaultsTest, EachKindIsTried) {
    std::set<std::string> tried;
    for (Fault const& fault : faults) {
        tried.insert(fault.text.substr(0, fault.text.find(':')));
    }
    for (FaultKind const& kind : FaultKind::getAll()) {
        EXPECT_EQ(tried.count(kind.name), 1U) << kind.name;
    }
}
