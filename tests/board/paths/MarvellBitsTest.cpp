// Each single bit of what decides who reaches whom on an 88E6096 with 802.1Q, turned over: is it noticed, and
// if not, why?

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "board/BoardAccess.hpp"
#include "board/paths/FieldAccess.hpp"
#include "chips/ChipCatalogue.hpp"
#include "tests/board/paths/BitFlips.hpp"

using board::FieldAccess;
using board_test::BitFlips;
using board_test::ComparedBoard;

namespace {

constexpr unsigned numberOfPorts = 11;
constexpr unsigned asItCame = 0;
constexpr unsigned noMember = 3;
constexpr unsigned bitsOfId = 12;

constexpr char const* noLink = "the port has no link or is closed";
constexpr char const* alone = "nobody else in the VLAN";
constexpr char const* allTagged = "all that comes has a tag already";
constexpr char const* forcedVid = "the port takes all frames for those of its own VLAN";
constexpr char const* sameStation = "the other database has the station at the same port";
constexpr char const* noCommonVlan = "no VLAN has both ports";
constexpr char const* noVlan = "the port is a member of neither VLAN";
constexpr char const* allVlans = "the port is a member of all VLANs that anybody is in";
constexpr char const* vlanState = "the state that the VLAN has for the port goes before";
constexpr char const* noFrames = "nobody's frames get to the port";
constexpr char const* vtuForms = "the VLAN says how frames leave";
constexpr char const* anyState = "any state but 0 is that of an entry";

class MarvellBitsTest : public testing::TestWithParam<char const*> {
protected:
    /// Calls for each chip of the board.
    template <typename Try> void onEachChip(Try const& tryChip) {
        for (auto const& [id, forwarding] : compared.registers.getChips()) {
            chip = &compared.bringUp.getBoard().getMarvell(id);
            switchId = id;
            for (unsigned port = 0; port < numberOfPorts; ++port) {
                // The rules below are those of secure ports.
                ASSERT_EQ(get(port, "PortControl2", "802.1QMode"), 3U) << id << "." << port;
            }
            tryChip();
        }
    }

    std::uint32_t get(unsigned port, std::string const& name, std::string const& field) const {
        return FieldAccess(*chip, "88e6096").get("port " + std::to_string(port), name, field);
    }

    /// \param rule of the field's old and new value.
    template <typename Rule>
    void tryField(BitFlips& flips, unsigned port, std::string const& name, std::string const& field,
                  unsigned bits, Rule const& rule) const {
        std::uint32_t const value = get(port, name, field);
        for (unsigned bit = 0; bit < bits; ++bit) {
            std::uint32_t const other = value ^ 1U << bit;
            std::string const why = rule(value, other);
            FieldAccess const fields(*chip, "88e6096");
            std::string const unit = "port " + std::to_string(port);
            auto const undo = fields.set(unit, name, field, other);
            flips.check(FieldAccess::describe(unit, name, field) + " " + std::to_string(other), why);
            undo();
        }
    }

    bool isOpen(unsigned port) const {
        return chip->hasLink(port) && get(port, "PortControl", "PortState") == 3;
    }

    bool isMember(unsigned vid, unsigned port) const {
        auto const entry = chip->getVtuEntry(vid);
        return entry && entry->memberTags.at(port) != noMember;
    }

    bool maySend(unsigned from, unsigned to) const {
        return (get(from, "PortBasedVLANMap", "VLANTable") >> to & 1U) != 0;
    }

    /// Whether the port has somebody to send to in the VLAN, were it a member.
    bool hasOthers(unsigned vid, unsigned port) const {
        return anyPort([&](unsigned to) { return isMember(vid, to) && isOpen(to) && maySend(port, to); });
    }

    bool reaches(unsigned vid, unsigned from, unsigned to) const {
        return isMember(vid, from) && isMember(vid, to) && isOpen(from) && isOpen(to) && maySend(from, to);
    }

    bool isReached(unsigned port) const {
        return anyVlan(
            [&](unsigned vid) { return anyPort([&](unsigned from) { return reaches(vid, from, port); }); });
    }

    template <typename Condition> static bool anyPort(Condition const& condition) {
        unsigned port = 0;
        while (port < numberOfPorts && !condition(port)) {
            ++port;
        }
        return port < numberOfPorts;
    }

    template <typename Condition> bool anyVlan(Condition const& condition) const {
        auto const vtu = chip->getVtu();
        return std::any_of(vtu.begin(), vtu.end(), [&](auto const& entry) { return condition(entry.first); });
    }

    std::string ruleOfTags(unsigned vid, unsigned port, unsigned before, unsigned after) const {
        if (!isOpen(port)) {
            return noLink;
        }
        if (!hasOthers(vid, port)) {
            return alone;
        }
        // "Tagged" and "as it came" are the same to frames that have a tag.
        bool const isOfTagged =
            before != noMember && after != noMember && (before & after) == asItCame && (before | after) == 2;
        bool const areUntagged = anyPort([&](unsigned from) {
            return reaches(vid, from, port) && get(from, "DefaultVLAN", "DefaultVID") == vid;
        });
        return isOfTagged && !areUntagged ? allTagged : "";
    }

    ComparedBoard compared{ComparedBoard::example(GetParam())};
    simulation::Marvell88E6096TestSide* chip = nullptr;
    unsigned switchId = 0;
};

} // namespace

TEST_P(MarvellBitsTest, MembersOfVlans) {
    BitFlips flips(compared);
    onEachChip([&] {
        for (auto const& [vid, entry] : chip->getVtu()) {
            for (unsigned port = 0; port < numberOfPorts; ++port) {
                for (unsigned const bit : {1U, 2U}) {
                    unsigned const before = entry.memberTags.at(port);
                    std::string const rule = ruleOfTags(vid, port, before, before ^ bit);
                    auto changed = entry;
                    changed.memberTags.at(port) ^= bit;
                    chip->setVtuEntry(vid, changed);
                    flips.check("VID " + std::to_string(vid) + " port " + std::to_string(port) + " tags " +
                                    std::to_string(before ^ bit),
                                rule);
                    chip->setVtuEntry(vid, entry);
                }
            }
        }
    });
    EXPECT_GT(flips.getNoticed(), 0U);
}

TEST_P(MarvellBitsTest, ModesOfPorts) {
    BitFlips flips(compared);
    onEachChip([&] {
        for (unsigned port = 0; port < numberOfPorts; ++port) {
            bool const hasForeign =
                anyVlan([&](unsigned vid) { return !isMember(vid, port) && hasOthers(vid, port); });
            tryField(flips, port, "PortControl2", "802.1QMode", 2, [&](auto, auto) {
                bool const isForced = get(port, "DefaultVLAN", "ForceDefaultVID") != 0;
                return !isOpen(port) ? noLink : isForced ? forcedVid : hasForeign ? "" : allVlans;
            });
        }
    });
    EXPECT_GT(flips.getNoticed(), 0U);
}

TEST_P(MarvellBitsTest, PortsThatAPortMaySendTo) {
    BitFlips flips(compared);
    onEachChip([&] {
        for (unsigned port = 0; port < numberOfPorts; ++port) {
            tryField(flips, port, "PortBasedVLANMap", "VLANTable", numberOfPorts,
                     [&](auto before, auto after) {
                         unsigned to = 0;
                         while (((before ^ after) >> to & 1U) == 0) {
                             ++to;
                         }
                         bool const haveVlan =
                             anyVlan([&](unsigned vid) { return isMember(vid, port) && isMember(vid, to); });
                         return !isOpen(port) || !isOpen(to) ? noLink : haveVlan ? "" : noCommonVlan;
                     });
        }
    });
    EXPECT_GT(flips.getNoticed(), 0U);
}

TEST_P(MarvellBitsTest, VlansOfUntaggedFrames) {
    BitFlips flips(compared);
    onEachChip([&] {
        for (unsigned port = 0; port < numberOfPorts; ++port) {
            tryField(flips, port, "DefaultVLAN", "DefaultVID", bitsOfId, [&](auto before, auto after) {
                if (!isOpen(port)) {
                    return noLink;
                }
                if (!isMember(before, port) && !isMember(after, port)) {
                    return noVlan;
                }
                bool const matters = (isMember(before, port) && hasOthers(before, port)) ||
                                     (isMember(after, port) && hasOthers(after, port));
                return matters ? "" : alone;
            });
        }
    });
    EXPECT_GT(flips.getNoticed(), 0U);
}

TEST_P(MarvellBitsTest, StatesOfPorts) {
    BitFlips flips(compared);
    onEachChip([&] {
        for (unsigned port = 0; port < numberOfPorts; ++port) {
            bool const isInUse =
                anyVlan([&](unsigned vid) { return isMember(vid, port) && hasOthers(vid, port); });
            tryField(flips, port, "PortControl", "PortState", 2, [&](auto before, auto after) {
                return !chip->hasLink(port)        ? noLink
                       : !isInUse                  ? alone
                       : before != 0 && after != 0 ? vlanState
                                                   : "";
            });
        }
    });
}

TEST_P(MarvellBitsTest, Floods) {
    BitFlips flips(compared);
    onEachChip([&] {
        for (unsigned port = 0; port < numberOfPorts; ++port) {
            tryField(flips, port, "PortControl", "EgressFloods", 2,
                     [&](auto, auto) { return isReached(port) ? "" : noFrames; });
        }
    });
    EXPECT_GT(flips.getNoticed(), 0U);
}

TEST_P(MarvellBitsTest, FormsThatVlansDoNotTell) {
    BitFlips flips(compared);
    onEachChip([&] {
        for (unsigned port = 0; port < numberOfPorts; ++port) {
            tryField(flips, port, "PortControl", "EgressMode", 2, [](auto, auto) { return vtuForms; });
        }
    });
}

// Each mask is that of some addresses: which ones, the chip may choose, so that many are asked.
TEST_P(MarvellBitsTest, TrunkMasks) {
    constexpr unsigned masks = 8;
    constexpr unsigned firstBitOfNumber = 12;
    constexpr std::uint32_t update = 0x8000;
    constexpr std::uint32_t allPorts = 0x7FF;
    BitFlips flips(compared);
    chips::ChipCatalogue const catalogue("88e6096");
    auto const location = catalogue.find("global 2/TrunkMask");
    onEachChip([&] {
        board::BoardAccess access(compared.bringUp.getBoard());
        auto const way = access.connect(switchId, "88e6096");
        for (unsigned mask = 0; mask < masks; ++mask) {
            std::uint32_t const whole = update | mask << firstBitOfNumber | allPorts;
            for (unsigned port = 0; port < numberOfPorts; ++port) {
                way->write(location, whole ^ 1U << port);
                flips.check("TrunkMask " + std::to_string(mask) + " port " + std::to_string(port),
                            isReached(port) ? "" : noFrames, true);
            }
            way->write(location, whole);
        }
    });
    EXPECT_GT(flips.getNoticed(), 0U);
}

/// A station that all frames to "an unknown one" are for, known in each VLAN at one of its ports.
class MarvellAddressBitsTest : public MarvellBitsTest {
protected:
    static constexpr unsigned isStatic = 0x8;

    static std::uint64_t station() {
        return board::RegisterPaths::frameOf(board::FrameKind()).getDestination();
    }

    static std::uint32_t dataOf(std::uint32_t ports, std::uint32_t state) { return ports << 4 | state; }

    /// The highest port that gets frames of the VLAN; none when there is none.
    int portOf(unsigned vid) const {
        int port = numberOfPorts - 1;
        while (port >= 0 &&
               !anyPort([&](unsigned from) { return reaches(vid, from, static_cast<unsigned>(port)); })) {
            --port;
        }
        return port;
    }

    /// Whether the database of another VLAN leads to the same port.
    bool areAlike(unsigned vid, unsigned fid) const {
        return chip->getAtuEntry(chip->getVtuEntry(vid)->fid, station()) == chip->getAtuEntry(fid, station());
    }

    void plant() {
        for (auto const& [vid, entry] : chip->getVtu()) {
            if (portOf(vid) >= 0) {
                chip->setAtuEntry(entry.fid, station(), dataOf(1U << portOf(vid), isStatic));
            }
        }
    }
};

TEST_P(MarvellAddressBitsTest, DatabasesOfVlans) {
    onEachChip([&] { plant(); });
    BitFlips flips(compared);
    onEachChip([&] {
        for (auto const& [vid, entry] : chip->getVtu()) {
            for (unsigned bit = 0; bit < bitsOfId; ++bit) {
                auto changed = entry;
                changed.fid ^= 1U << bit;
                std::string const rule = portOf(vid) < 0              ? alone
                                         : areAlike(vid, changed.fid) ? sameStation
                                                                      : "";
                chip->setVtuEntry(vid, changed);
                flips.check("VID " + std::to_string(vid) + " FID " + std::to_string(changed.fid), rule);
                chip->setVtuEntry(vid, entry);
            }
        }
    });
    EXPECT_GT(flips.getNoticed(), 0U);
}

TEST_P(MarvellAddressBitsTest, EntriesOfAddresses) {
    onEachChip([&] { plant(); });
    BitFlips flips(compared);
    onEachChip([&] {
        for (auto const& [vid, entry] : chip->getVtu()) {
            std::uint32_t const data = chip->getAtuEntry(entry.fid, station());
            if (data == 0) {
                continue;
            }
            std::string const name = "FID " + std::to_string(entry.fid) + " data bit ";
            for (unsigned bit = 0; bit < 4; ++bit) {
                chip->setAtuEntry(entry.fid, station(), data ^ 1U << bit);
                flips.check(name + std::to_string(bit), 1U << bit == isStatic ? "" : anyState);
                chip->setAtuEntry(entry.fid, station(), data);
            }
            for (unsigned port = 0; port < numberOfPorts; ++port) {
                bool const matters = anyPort([&](unsigned from) { return reaches(vid, from, port); });
                chip->setAtuEntry(entry.fid, station(), data ^ dataOf(1U << port, 0));
                flips.check(name + std::to_string(port + 4), matters ? "" : noFrames);
                chip->setAtuEntry(entry.fid, station(), data);
            }
        }
    });
    EXPECT_GT(flips.getNoticed(), 0U);
}

INSTANTIATE_TEST_SUITE_P(Examples, MarvellBitsTest, testing::Values("home-gateway", "trap-three-switches"),
                         [](auto const& example) {
                             std::string name = example.param;
                             std::replace(name.begin(), name.end(), '-', '_');
                             return name;
                         });
INSTANTIATE_TEST_SUITE_P(Examples, MarvellAddressBitsTest,
                         testing::Values("home-gateway", "trap-three-switches"), [](auto const& example) {
                             std::string name = example.param;
                             std::replace(name.begin(), name.end(), '-', '_');
                             return name;
                         });
