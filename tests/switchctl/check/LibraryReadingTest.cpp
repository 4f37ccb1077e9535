// What the checks read out of a document against what the library reads out of it, for all documents
// of all cases and for the examples.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "board/Wording.hpp"
#include "model/ManagedSwitch.hpp"
#include "model/TrunkGroup.hpp"
#include "switchctl/check/SourceMasks.hpp"
#include "tests/switchctl/check/AllCases.hpp"
#include "tests/switchctl/check/LibraryRun.hpp"

using board::BoardReading;
using switchctl::check::SourceMasks;
using Texts = std::set<std::string>;

namespace {

std::vector<std::string> allDocuments() {
    std::vector<std::string> all;
    for (CheckCase const& entry : allCases()) {
        all.push_back(entry.with);
        all.push_back(entry.without);
    }
    for (auto const& entry : std::filesystem::directory_iterator(EXAMPLES_FOLDER)) {
        if (entry.path().extension() == ".xml") {
            std::ifstream file(entry.path());
            all.emplace_back(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
        }
    }
    return all;
}

/// Whether the reading finds what ends start-up.
bool givesUp(board::BoardReading const& reading) {
    for (auto const& [id, entry] : reading.getSwitches()) {
        if (entry.found.size() > 1) {
            return true;
        }
        for (xmlNodePtr const element : reading.find("//switches/switch")) {
            std::optional<board::BoardReading::Chip> const chip = board::BoardReading::chipOf(element);
            if (board::BoardReading::switchIdOf(element) == id && chip && *chip != entry.chip) {
                return true;
            }
        }
    }
    return false;
}

std::string on(board::BoardReading::Member const& member) {
    return " to port " + board::portAddress(member.switchId, member.portId) + ".\n";
}

Texts vlanMembers(board::BoardReading const& reading) {
    Texts texts;
    for (auto const& [id, vlan] : reading.getVlans()) {
        for (board::BoardReading::Member const& member : vlan.members) {
            if (member.outcome == board::BoardReading::Outcome::added) {
                texts.insert((id == 0 ? "0" : board::hexadecimal(id)) + on(member));
            }
        }
    }
    return texts;
}

Texts groupMembers(board::BoardReading const& reading) {
    Texts texts;
    for (board::BoardReading::Group const& group : reading.getGroups()) {
        for (board::BoardReading::Member const& member : group.members) {
            if (member.outcome == board::BoardReading::Outcome::added) {
                texts.insert(group.address + on(member));
            }
        }
    }
    return texts;
}

std::set<unsigned int> trunkMembers(board::BoardReading::Switch const& owner,
                                    board::BoardReading::Trunk const& trunk) {
    std::set<unsigned int> members;
    for (xmlNodePtr const element : trunk.members) {
        for (auto const& [id, port] : owner.ports) {
            xmlChar* const text =
                xmlGetProp(element, reinterpret_cast<xmlChar const*>("id")); // NOLINT: UTF-8
            if (text != nullptr &&
                xmlStrcmp(text, reinterpret_cast<xmlChar const*>(std::to_string(id).c_str())) == 0) {
                members.insert(id);
            }
            xmlFree(text);
        }
    }
    return members;
}

std::string nameOfDocument(testing::TestParamInfo<std::string> const& info) {
    return std::to_string(info.index);
}

class LibraryReadingTest : public testing::TestWithParam<std::string> {};

TEST_P(LibraryReadingTest, HasTheSwitchesPortsAndTrunksOfTheLibrary) {
    LibraryRun run(GetParam(), LibraryRun::Chips::none);
    board::BoardReading const reading = run.getReading();
    ASSERT_EQ(run.isUp(), !givesUp(reading)) << run.getReason() << GetParam();
    if (!run.isUp()) {
        return;
    }
    ASSERT_EQ(run.getManager().getManagedSwitchesCount(), reading.getSwitches().size()) << GetParam();
    for (auto const& [id, owner] : reading.getSwitches()) {
        ManagedSwitch& managed = *run.getManager().getManagedSwitch(id);
        EXPECT_EQ(managed.getNumberOfPorts(), owner.entryCount) << GetParam();
        ASSERT_EQ(managed.getPorts().size(), owner.ports.size()) << GetParam();
        for (auto const& port : owner.ports) {
            EXPECT_EQ(managed.getPorts().count(port.first), 1U) << GetParam();
        }
        for (unsigned int key = 0; key < owner.trunks.size(); ++key) {
            std::set<unsigned int> members;
            for (auto const& [portId, port] : managed.getTrunkGroup(key)->getTrunkedPorts()) {
                if (port != nullptr) {
                    members.insert(portId);
                }
            }
            EXPECT_EQ(members, trunkMembers(owner, owner.trunks[key])) << GetParam();
        }
    }
}

TEST_P(LibraryReadingTest, HasTheMembersOfTheLibrary) {
    LibraryRun run(GetParam(), LibraryRun::Chips::none);
    if (!run.isUp()) {
        return;
    }
    board::BoardReading const reading = run.getReading();
    EXPECT_EQ(run.saysAfter("ManagedSwitchPort::addVlanPort. Add vlan:"), vlanMembers(reading)) << GetParam();
    EXPECT_EQ(run.saysAfter("ManagedSwitchPort::addMulticastFilterPort. Add MulticastFilter:"),
              groupMembers(reading))
        << GetParam();
}

TEST_P(LibraryReadingTest, HasTheSourceMasksThatTheLibraryLeaves) {
    LibraryRun run(GetParam());
    if (!run.isUp()) {
        return;
    }
    board::BoardReading const reading = run.getReading();
    for (auto const& [id, owner] : reading.getSwitches()) {
        std::vector<unsigned> const present = run.getBoard().getSwitchIds();
        bool const onBoard = std::find(present.begin(), present.end(), id) != present.end();
        if (!owner.isVitesse() || !onBoard || owner.found.empty()) {
            continue;
        }
        SourceMasks const masks(reading, owner);
        for (auto const& [from, sender] : owner.ports) {
            for (auto const& [to, receiver] : owner.ports) {
                if (from < 24 && to < 24 && from != to) {
                    bool const open =
                        (run.getBoard().getVitesse(id).peek("analyser", 0x80 + from) >> to & 1U) != 0;
                    EXPECT_EQ(masks.isOpen(from, to), open) << from << " to " << to << '\n' << GetParam();
                }
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Documents, LibraryReadingTest, testing::ValuesIn(allDocuments()), nameOfDocument);

} // namespace
