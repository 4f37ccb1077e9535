#pragma once

#include <string>
#include <vector>

#include "board/BoardReading.hpp"
#include "manager/SwitchManager.hpp"

namespace switchctl::bringup {

/// The members of a VLAN or group that a document names: those that count, and the others.
struct MemberList {
    using Member = board::BoardReading::Member;

    /// Members are told apart by their port number alone, so the second of two with the same number does not
    /// count, whatever its switch. Nor does one in a VLAN with tags of which the library does not know what
    /// to do with them.
    MemberList(std::vector<Member> const& members, SwitchManager& manager, bool withTags);

    /// "0.7", with its label; of an element without a switch or port that can be read, where it stands.
    static std::string nameOf(Member const& member, board::Labels const& labels);

    /// An attribute of a member, or "none".
    static std::string tagOf(Member const& member, char const* attribute);

    std::vector<Member> counted;
    std::vector<Member> leftOut;
};

} // namespace switchctl::bringup
