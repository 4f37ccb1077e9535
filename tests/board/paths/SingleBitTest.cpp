// Each single bit of the tables and masks that decide who reaches whom, turned over: is it noticed?

#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "board/paths/FieldAccess.hpp"
#include "tests/board/paths/ComparedBoard.hpp"

using board::FieldAccess;
using board::PathComparison;
using board::PathLine;
using board_test::ComparedBoard;

namespace {

/// Who reaches whom in which form, in full.
std::string pathsOf(ComparedBoard const& compared) {
    std::ostringstream text;
    for (PathLine const& line :
         PathComparison(compared.intent, compared.registers, compared.frames).getPaths()) {
        text << line.key.switchId << ' ' << line.from;
        for (auto const& tags : line.frames) {
            text << ' ' << tags.describe();
        }
        for (std::size_t const destination : line.destinations) {
            text << ' ' << destination;
        }
        for (PathLine::Reach const& reach : line.reach) {
            text << ' ' << reach.to << ' ' << reach.form.describe();
        }
        text << '\n';
    }
    return text.str();
}

constexpr unsigned portsOfChip = 11;
constexpr unsigned codeOfNoMember = 3;
constexpr unsigned untaggedMember = 1;

/// The access point, whose port 7 is held down.
class SingleBitTest : public testing::Test {
protected:
    /// \param isMasked whether another register or table keeps the new value from having an effect.
    template <typename IsMasked>
    void tryField(unsigned port, std::string const& name, std::string const& field, unsigned count,
                  IsMasked const& isMasked) {
        std::string const unit = "port " + std::to_string(port);
        std::uint32_t const value = _fields.get(unit, name, field);
        for (unsigned bit = 0; bit < count; ++bit) {
            std::uint32_t const other = value ^ 1U << bit;
            auto const undo = _fields.set(unit, name, field, other);
            EXPECT_EQ(pathsOf(compared) == before, isMasked(value, other))
                << FieldAccess::describe(unit, name, field) << " " << value << " -> " << other;
            undo();
        }
    }

    bool isMember(unsigned vid, unsigned port) const {
        auto const entry = chip.getVtuEntry(vid);
        return entry && entry->memberTags.at(port) != codeOfNoMember;
    }

    bool haveVlan(unsigned one, unsigned other) const {
        for (auto const& [vid, entry] : chip.getVtu()) {
            if (isMember(vid, one) && isMember(vid, other)) {
                return true;
            }
        }
        return false;
    }

    ComparedBoard compared{ComparedBoard::example("trap-access-point")};
    simulation::Marvell88E6096TestSide& chip{compared.bringUp.getBoard().getMarvell(0)};
    std::string const before{pathsOf(compared)};

private:
    FieldAccess const _fields{chip, "88e6096"};
};

} // namespace

// A port sends to those that share a VLAN with it and have link, itself included: its own bit keeps frames
// from going back.
TEST_F(SingleBitTest, PortsThatAPortMaySendTo) {
    for (unsigned port = 0; port < portsOfChip; ++port) {
        tryField(port, "PortBasedVLANMap", "VLANTable", portsOfChip, [&](auto value, auto other) {
            unsigned to = 0;
            while (((value ^ other) >> to & 1U) == 0) {
                ++to;
            }
            return !haveVlan(port, to) || !chip.hasLink(port) || !chip.hasLink(to);
        });
    }
}

// A VID in which a secure port is no member is as good as any other.
TEST_F(SingleBitTest, VlansOfUntaggedFrames) {
    for (unsigned port = 0; port < portsOfChip; ++port) {
        tryField(port, "DefaultVLAN", "DefaultVID", 12, [&](auto value, auto other) {
            return (!isMember(value, port) && !isMember(other, port)) || !chip.hasLink(port);
        });
    }
}

// The state that the VLAN has for the port goes before all states of the port but "disabled".
TEST_F(SingleBitTest, StatesOfPorts) {
    for (unsigned port = 0; port < portsOfChip; ++port) {
        tryField(port, "PortControl", "PortState", 2,
                 [&](auto, auto other) { return other != 0 || !chip.hasLink(port); });
    }
}

TEST_F(SingleBitTest, Floods) {
    for (unsigned port = 0; port < portsOfChip; ++port) {
        bool const isReached =
            chip.hasLink(port) && (isMember(2, port) || isMember(3, port) || isMember(4, port));
        tryField(port, "PortControl", "EgressFloods", 2, [&](auto, auto) { return !isReached; });
    }
}

// All that comes to members of VLAN 2 has a tag, so that as it came is tagged.
TEST_F(SingleBitTest, MembersOfVlans) {
    for (auto const& [vid, entry] : chip.getVtu()) {
        for (unsigned port = 0; port < portsOfChip; ++port) {
            for (unsigned const bit : {1U, 2U}) {
                auto changed = entry;
                unsigned const other = changed.memberTags.at(port) ^= bit;
                chip.setVtuEntry(vid, changed);
                unsigned const tags = entry.memberTags.at(port);
                bool const isSameForm = vid == 2 && tags != codeOfNoMember && other != codeOfNoMember &&
                                        tags != untaggedMember && other != untaggedMember;
                EXPECT_EQ(pathsOf(compared) == before, isSameForm || !chip.hasLink(port))
                    << "VID " << vid << " port " << port << ": " << tags << " -> " << other;
                chip.setVtuEntry(vid, entry);
            }
        }
    }
}
