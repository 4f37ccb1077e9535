// Each single bit of what decides who reaches whom on a VSC7390, turned over: is it noticed, and if not, why?

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>

#include "board/paths/FieldAccess.hpp"
#include "tests/board/paths/BitFlips.hpp"

using board::FieldAccess;
using board_test::BitFlips;
using board_test::ComparedBoard;

namespace {

#ifdef SLOW_BUILD
constexpr unsigned stepOfPorts = 5;
#else
constexpr unsigned stepOfPorts = 1;
#endif

constexpr unsigned vitessePorts = 24;
constexpr unsigned cpuPort = 24;
constexpr unsigned bitsOfVid = 12;
constexpr unsigned switchId = 2;

constexpr char const* processor = "frames for the processor leave by no port";
constexpr char const* receiverOff = "the port receives nothing";
constexpr char const* senderOff = "the port sends nothing";
constexpr char const* noVitesseFrames =
    "nobody's frames may go to the port in the VLAN, nor its own anywhere";
constexpr char const* noReceiver = "no VLAN of the port's frames has the other port";
constexpr char const* checkedAnyway = "the ports check their VLANs by themselves";
constexpr char const* learning = "what is learned makes no difference to unknown stations";
constexpr char const* noSpeaker = "no port's frames are let into the VLAN and to somebody";
constexpr char const* sameReach = "untagged frames get nowhere before nor after";
constexpr char const* neverThatVid = "no frame of the VIDs gets to the port";

class VitesseBitsTest : public testing::TestWithParam<char const*> {
protected:
    std::uint32_t get(std::string const& unit, std::string const& name, std::string const& field) const {
        return fields.get(unit, name, field);
    }

    std::uint32_t getPort(unsigned port, std::string const& name, std::string const& field) const {
        return get("port " + std::to_string(port), name, field);
    }

    /// \param rule of the bit's number and the field's new value.
    template <typename Rule>
    void tryField(BitFlips& flips, std::string const& unit, std::string const& name, std::string const& field,
                  unsigned bits, Rule const& rule) {
        std::uint32_t const value = get(unit, name, field);
        for (unsigned bit = 0; bit < bits; ++bit) {
            std::uint32_t const other = value ^ 1U << bit;
            std::string const why = rule(bit, other);
            auto const undo = fields.set(unit, name, field, other);
            bool const hasFlows = name.rfind("AGGRMSKS", 0) == 0 || (field == "Ports" && isInTrunk(bit));
            flips.check(FieldAccess::describe(unit, name, field) + " bit " + std::to_string(bit), why,
                        hasFlows);
            undo();
        }
    }

    /// Whether some addresses go to another port of a trunk.
    bool isInTrunk(unsigned port) const { return (trunks >> port & 1U) != 0; }

    std::uint32_t findTrunks() const {
        std::uint32_t ports = 0;
        for (unsigned mask = 0; mask < 16; ++mask) {
            ports |= ~get("analyser", "AGGRMSKS_" + std::to_string(mask), "Ports");
        }
        return ports;
    }

    bool sends(unsigned port) const { return chip.getPortMac(port).sends; }

    bool receives(unsigned port) const {
        return chip.getPortMac(port).receives && (get("analyser", "RECVMASK", "Ports") >> port & 1U) != 0;
    }

    bool isMember(unsigned vid, unsigned port) const {
        return (chip.getVlanEntry(vid).ports >> port & 1U) != 0;
    }

    /// Whether frames that the port gets may be of the VLAN: by their tag, or untagged.
    bool carries(unsigned port, unsigned vid) const {
        bool const isTagged = vid != 0 && getPort(port, "CAT_VLAN_MISC", "TCI_IGNORE_ENA") == 0 &&
                              getPort(port, "CAT_DROP", "TAGGED_ENA") == 0 && asked.count(vid) != 0;
        bool const isUntagged = getPort(port, "CAT_PORT_VLAN", "VID") == vid;
        return receives(port) && (isTagged || isUntagged);
    }

    bool mayEnter(unsigned port, unsigned vid) const {
        bool const isChecked =
            chip.getVlanEntry(vid).sourceCheck || (get("analyser", "VLANMASK", "Ports") >> port & 1U) != 0;
        return !isChecked || isMember(vid, port);
    }

    bool maySend(unsigned from, unsigned to) const {
        return (get("analyser", "SRCMASKS_" + std::to_string(from), "Ports") >> to & 1U) != 0;
    }

    /// Whether the ports' other masks let frames of the VLAN from one to the other, were both members.
    bool mayReach(unsigned vid, unsigned from, unsigned to) const {
        return carries(from, vid) && maySend(from, to) && sends(to);
    }

    bool reaches(unsigned vid, unsigned from, unsigned to) const {
        return mayReach(vid, from, to) && mayEnter(from, vid) && isMember(vid, to);
    }

    bool isReached(unsigned vid, unsigned port) const {
        return anyPort([&](unsigned from) { return reaches(vid, from, port); });
    }

    bool isReachedAtAll(unsigned port) const {
        return anyOf(allVids(), [&](unsigned vid) {
            return anyPort(
                [&](unsigned from) { return reaches(vid, from, port) || reachesInGroup(vid, from, port); });
        });
    }

    bool reachesAnybody(unsigned vid, unsigned from) const {
        return anyPort([&](unsigned to) { return reaches(vid, from, to) || reachesInGroup(vid, from, to); });
    }

    /// By an entry of a group, which does not look at the VLAN's members.
    bool reachesInGroup(unsigned vid, unsigned from, unsigned to) const {
        return isInGroup(vid, to) && mayReach(vid, from, to) && mayEnter(from, vid);
    }

    /// Whether an entry of a group of the VLAN has the port.
    bool isInGroup(unsigned vid, unsigned port) const {
        for (auto const& [place, entry] : chip.getMacTable()) {
            if (entry.isMulticast() && entry.vid == vid && (entry.getPorts() >> port & 1U) != 0) {
                return true;
            }
        }
        return false;
    }

    bool hasOwnGroup(unsigned vid) const {
        return anyPort([&](unsigned port) { return isInGroup(vid, port); });
    }

    std::set<unsigned> allVids() const {
        std::set<unsigned> vids = asked;
        for (unsigned port = 0; port < vitessePorts; ++port) {
            vids.insert(getPort(port, "CAT_PORT_VLAN", "VID"));
        }
        return vids;
    }

    std::set<unsigned> vidsOf(unsigned port) const {
        std::set<unsigned> vids = asked;
        vids.insert(getPort(port, "CAT_PORT_VLAN", "VID"));
        return vids;
    }

    template <typename Condition> static bool anyPort(Condition const& condition) {
        unsigned port = 0;
        while (port < vitessePorts && !condition(port)) {
            ++port;
        }
        return port < vitessePorts;
    }

    template <typename Condition>
    static bool anyOf(std::set<unsigned> const& vids, Condition const& condition) {
        return std::any_of(vids.begin(), vids.end(), condition);
    }

    static std::set<unsigned> askedOf(board::AskedFrames const& frames) {
        std::set<unsigned> vids;
        for (auto const& tags : frames.getTags()) {
            if (tags.count != 0 && tags.vid != 0) {
                vids.insert(tags.vid);
            }
        }
        return vids;
    }

    ComparedBoard compared{ComparedBoard::example(GetParam())};
    simulation::Vsc7390TestSide& chip{compared.bringUp.getBoard().getVitesse(switchId)};
    FieldAccess const fields{chip, "vsc7390"};
    std::uint32_t const trunks{findTrunks()};
    std::set<unsigned> const asked{askedOf(compared.frames)};
};

} // namespace

TEST_P(VitesseBitsTest, MembersOfVlans) {
    BitFlips flips(compared);
    for (unsigned const vid : asked) {
        auto const entry = chip.getVlanEntry(vid);
        for (unsigned port = 0; port <= cpuPort; ++port) {
            std::string rule = port == cpuPort ? processor : "";
            if (rule.empty()) {
                // A member gets frames and may send them.
                bool const gets = anyPort([&](unsigned from) {
                    return mayReach(vid, from, port) && (from == port || mayEnter(from, vid));
                });
                bool const gives = anyPort([&](unsigned to) {
                    return mayReach(vid, port, to) && (isMember(vid, to) || isInGroup(vid, to));
                });
                rule = gets || gives ? "" : noVitesseFrames;
            }
            auto changed = entry;
            changed.ports ^= 1U << port;
            chip.setVlanEntry(vid, changed);
            flips.check("VID " + std::to_string(vid) + " port " + std::to_string(port), rule);
            chip.setVlanEntry(vid, entry);
        }
    }
    EXPECT_GT(flips.getNoticed(), 0U);
}

TEST_P(VitesseBitsTest, OptionsOfVlans) {
    BitFlips flips(compared);
    for (unsigned const vid : asked) {
        auto const entry = chip.getVlanEntry(vid);
        bool const isUsed = anyPort([&](unsigned from) { return reachesAnybody(vid, from); });
        auto const tryEntry = [&](auto const& change, std::string const& rule) {
            auto changed = entry;
            change(changed);
            chip.setVlanEntry(vid, changed);
            flips.check("VID " + std::to_string(vid), rule);
            chip.setVlanEntry(vid, entry);
        };
        tryEntry([](auto& changed) { changed.sourceCheck = !changed.sourceCheck; }, checkedAnyway);
        tryEntry([](auto& changed) { changed.learnDisabled = !changed.learnDisabled; }, learning);
        tryEntry([](auto& changed) { changed.mirror = !changed.mirror; }, isUsed ? "" : noSpeaker);
    }
}

TEST_P(VitesseBitsTest, SourceMasks) {
    BitFlips flips(compared);
    for (unsigned from = 0; from < vitessePorts; from += stepOfPorts) {
        tryField(flips, "analyser", "SRCMASKS_" + std::to_string(from), "Ports", cpuPort + 1,
                 [&](unsigned to, auto) {
                     if (to == cpuPort) {
                         return processor;
                     }
                     if (!receives(from)) {
                         return receiverOff;
                     }
                     if (!sends(to)) {
                         return senderOff;
                     }
                     bool const matters = anyOf(vidsOf(from), [&](unsigned vid) {
                         return carries(from, vid) && mayEnter(from, vid) &&
                                (isMember(vid, to) || isInGroup(vid, to));
                     });
                     return matters ? "" : noReceiver;
                 });
    }
    EXPECT_GT(flips.getNoticed(), 0U);
}

TEST_P(VitesseBitsTest, CopiesOfPorts) {
    BitFlips flips(compared);
    for (unsigned from = 0; from < vitessePorts; ++from) {
        bool const isHeard = anyOf(vidsOf(from), [&](unsigned vid) { return reachesAnybody(vid, from); });
        for (char const* const field : {"CPU_COPY", "MIRROR"}) {
            tryField(flips, "analyser", "SRCMASKS_" + std::to_string(from), field, 1, [&](auto, auto) {
                return isHeard ? "" : receives(from) ? noReceiver : receiverOff;
            });
        }
    }
    EXPECT_GT(flips.getNoticed(), 0U);
}

TEST_P(VitesseBitsTest, VlansOfUntaggedFrames) {
    BitFlips flips(compared);
    for (unsigned port = 0; port < vitessePorts; port += stepOfPorts) {
        std::string const unit = "port " + std::to_string(port);
        std::uint32_t const before = getPort(port, "CAT_PORT_VLAN", "VID");
        auto const reachOf = [&](unsigned vid) {
            std::set<unsigned> reached;
            for (unsigned to = 0; to < vitessePorts; ++to) {
                if (maySend(port, to) && sends(to) && mayEnter(port, vid) && isMember(vid, to)) {
                    reached.insert(to);
                }
            }
            return reached;
        };
        tryField(flips, unit, "CAT_PORT_VLAN", "VID", bitsOfVid, [&](auto, unsigned after) {
            if (!receives(port)) {
                return receiverOff;
            }
            return hasOwnGroup(before) || hasOwnGroup(after) || reachOf(before) != reachOf(after) ? ""
                                                                                                  : sameReach;
        });
    }
    EXPECT_GT(flips.getNoticed(), 0U);
}

// Each mask is that of some addresses: which ones, the chip may choose, so that many are asked.
TEST_P(VitesseBitsTest, AggregationMasks) {
    std::set<unsigned> used;
    for (unsigned port = 0; port < vitessePorts; ++port) {
        if (isReachedAtAll(port)) {
            used.insert(port);
        }
    }
    BitFlips flips(compared);
    for (unsigned mask = 0; mask < 16; mask += stepOfPorts) {
        tryField(flips, "analyser", "AGGRMSKS_" + std::to_string(mask), "Ports", cpuPort + 1,
                 [&](unsigned port, auto) {
                     return port == cpuPort         ? processor
                            : used.count(port) != 0 ? ""
                            : sends(port)           ? neverThatVid
                                                    : senderOff;
                 });
    }
    EXPECT_GT(flips.getNoticed(), 0U);
}

// The station that frames to "an unknown one" are for is known, so that they go by the mask of its port.
TEST_P(VitesseBitsTest, DestinationMasks) {
    auto const station = board::RegisterPaths::frameOf(board::FrameKind()).getDestination();
    BitFlips flips(compared);
    for (unsigned at = 0; at < vitessePorts; at += stepOfPorts) {
        auto const vid = std::find_if(asked.begin(), asked.end(),
                                      [&](unsigned candidate) { return isReached(candidate, at); });
        if (vid == asked.end()) {
            continue;
        }
        simulation::Vsc7390TestSide::MacEntry entry;
        entry.mac = station;
        entry.vid = *vid;
        entry.destination = at;
        entry.locked = true;
        unsigned const row = chip.getRow(station, *vid);
        chip.setMacEntry(row, 0, entry);
        flips.restart();
        tryField(flips, "analyser", "DSTMASKS_" + std::to_string(at), "Ports", cpuPort + 1,
                 [&](unsigned port, auto) {
                     return port == cpuPort ? processor : isReached(*vid, port) ? "" : noVitesseFrames;
                 });
        chip.removeMacEntry(row, 0);
    }
    EXPECT_GT(flips.getNoticed(), 0U);
}

TEST_P(VitesseBitsTest, PortsOfGroups) {
    constexpr unsigned bitsOfAddress = 24;
    BitFlips flips(compared);
    for (auto const& [place, entry] : chip.getMacTable()) {
        for (unsigned port = 0; port < vitessePorts; ++port) {
            unsigned const vid = entry.vid;
            bool const matters =
                anyPort([&](unsigned from) { return mayReach(vid, from, port) && mayEnter(from, vid); });
            auto changed = entry;
            changed.mac ^= std::uint64_t{1} << (bitsOfAddress + port);
            chip.setMacEntry(place.first, place.second, changed);
            flips.check("group of VID " + std::to_string(vid) + " port " + std::to_string(port),
                        matters ? "" : noVitesseFrames, isInTrunk(port));
            chip.setMacEntry(place.first, place.second, entry);
        }
    }
    EXPECT_GT(flips.getNoticed(), 0U);
}

TEST_P(VitesseBitsTest, OptionsOfTags) {
    BitFlips flips(compared);
    for (unsigned port = 0; port < vitessePorts; ++port) {
        std::string const unit = "port " + std::to_string(port);
        unsigned const own = getPort(port, "CAT_PORT_VLAN", "VID");
        bool const ignoresTags = getPort(port, "CAT_VLAN_MISC", "TCI_IGNORE_ENA") != 0;
        char const* const deaf = receives(port) ? noReceiver : receiverOff;
        bool const isTaggedHeard =
            anyOf(asked, [&](unsigned vid) { return reachesAnybody(ignoresTags ? own : vid, port); });
        ASSERT_EQ(getPort(port, "TXUPDCFG", "TX_UNTAGGED_VID_ENA"), 0U);
        tryField(flips, unit, "CAT_DROP", "TAGGED_ENA", 1,
                 [&](auto, auto) { return isTaggedHeard ? "" : deaf; });
        tryField(flips, unit, "CAT_DROP", "UNTAGGED_ENA", 1,
                 [&](auto, auto) { return reachesAnybody(own, port) ? "" : deaf; });
        tryField(flips, unit, "TXUPDCFG", "TX_INSERT_TAG", 1, [&](auto, auto) {
            return isReachedAtAll(port) ? "" : sends(port) ? neverThatVid : senderOff;
        });
    }
    EXPECT_GT(flips.getNoticed(), 0U);
}

INSTANTIATE_TEST_SUITE_P(Examples, VitesseBitsTest, testing::Values("video-rooms", "trap-video-switch"),
                         [](auto const& example) {
                             std::string name = example.param;
                             std::replace(name.begin(), name.end(), '-', '_');
                             return name;
                         });
