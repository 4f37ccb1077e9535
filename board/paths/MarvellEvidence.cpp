#include "board/paths/MarvellEvidence.hpp"

#include <fmt/format.h>

#include <algorithm>

#include "board/Wording.hpp"

namespace board {

namespace {

constexpr unsigned untaggedMember = 1;
constexpr unsigned stateForwarding = 3;
constexpr unsigned allFloods = 3;
constexpr unsigned modeOff = 0;
constexpr char const* stateCodes[] = {"the port's own", "blocking", "learning", "forwarding"};
constexpr char const* memberCodes[] = {"member", "member, untagged", "member, tagged", "not a member"};

} // namespace

std::vector<ChipEvidence::Fact> MarvellEvidence::getFacts(std::string_view rule) const {
    static constexpr Row rows[] = {
        {"M1", Side::from, "", "PhysicalControl", "ForcedLink"},
        {"M1", Side::from, "", "PhysicalControl", "LinkValue"},
        {"M3", Side::from, "", "PortControl", "PortState"},
        {"M4", Side::from, "", "PortControl", "FrameMode"},
        {"M5", Side::from, "", "PortControl2", "DiscardTagged"},
        {"M5", Side::from, "", "PortControl2", "DiscardUntagged"},
        {"M7", Side::from, "", "PortControl2", "802.1QMode"},
        {"M7", Side::from, "", "DefaultVLAN", "DefaultVID"},
        {"M9", Side::from, "", "PortAssociationVector", "PAV"},
        {"M10", Side::from, "", "PortControl", "PortState"},
        {"M11", Side::to, "", "PortControl", "EgressFloods"},
        {"M12", Side::from, "", "PortBasedVLANMap", "VLANTable", Side::to},
        {"M13", Side::to, "", "PhysicalControl", "ForcedLink"},
        {"M13", Side::to, "", "PhysicalControl", "LinkValue"},
        {"M13", Side::to, "", "PortControl", "PortState"},
        {"M14", Side::to, "", "PortControl", "FrameMode"},
        {"M14", Side::to, "", "PortControl", "EgressMode"},
    };
    std::vector<Fact> facts = factsOf(rule, rows);
    addTableFacts(rule, facts);
    return facts;
}

void MarvellEvidence::addTableFacts(std::string_view rule, std::vector<Fact>& facts) const {
    Question const& question = getQuestion();
    std::uint32_t const mode =
        getFields().get("port " + std::to_string(question.from), "PortControl2", "802.1QMode");
    // A port without 802.1Q mode does not ask the VTU.
    if (mode == modeOff) {
        return;
    }
    auto const entry = _chip.getVtuEntry(question.vid);
    std::string const name = fmt::format("VTU/VID {}", question.vid);
    if (rule == "M7" && !entry) {
        facts.push_back({name, "not there"});
    }
    if (!entry) {
        return;
    }
    auto const addMember = [&](unsigned port) {
        facts.push_back({fmt::format("{}:MemberTag{}", name, port), memberCodes[entry->memberTags.at(port)]});
    };
    if (rule == "M7") {
        addMember(question.from);
    } else if (rule == "M8") {
        facts.push_back({name + ":FID", fieldValue("FID", entry->fid)});
        facts.push_back({name + ":SID", fieldValue("SID", entry->sid)});
        addState(*entry, question.from, facts);
    } else if (rule == "M12" || rule == "M14") {
        std::for_each(question.exits.begin(), question.exits.end(), addMember);
    } else if (rule == "M13") {
        for (unsigned const exit : question.exits) {
            addState(*entry, exit, facts);
        }
    }
}

void MarvellEvidence::addState(VtuEntry const& entry, unsigned port, std::vector<Fact>& facts) const {
    std::string const name = fmt::format("STU/SID {}", entry.sid);
    if (auto const states = _chip.getStuEntry(entry.sid)) {
        facts.push_back({fmt::format("{}:PortState{}", name, port), stateCodes[states->portStates.at(port)]});
    } else {
        facts.push_back({name, "not there"});
    }
}

ChipEvidence::Change MarvellEvidence::membershipOf(unsigned port) const {
    unsigned const vid = getQuestion().vid;
    return {fmt::format("VTU/VID {}:MemberTag{}={}", vid, port, memberCodes[untaggedMember]),
            [this, vid, port] {
                VtuEntry const before = *_chip.getVtuEntry(vid);
                VtuEntry entry = before;
                entry.memberTags.at(port) = untaggedMember;
                _chip.setVtuEntry(vid, entry);
                return [this, vid, before] { _chip.setVtuEntry(vid, before); };
            }};
}

std::vector<ChipEvidence::Change> MarvellEvidence::getChanges() const {
    Question const& question = getQuestion();
    std::vector<Change> changes = {
        changeOf({"", Side::from, "", "PhysicalControl", "LinkValue"}, 1),
        changeOf({"", Side::from, "", "PortControl", "PortState"}, stateForwarding),
        changeOf({"", Side::from, "", "PortControl2", "DiscardTagged"}, 0),
        changeOf({"", Side::from, "", "PortControl2", "DiscardUntagged"}, 0),
    };
    bool const hasEntry = _chip.getVtuEntry(question.vid).has_value();
    if (hasEntry) {
        changes.push_back(membershipOf(question.from));
    }
    if (question.to) {
        changes.push_back(changeOf({"", Side::to, "", "PhysicalControl", "LinkValue"}, 1));
        changes.push_back(changeOf({"", Side::to, "", "PortControl", "PortState"}, stateForwarding));
        changes.push_back(changeOf({"", Side::to, "", "PortControl", "EgressFloods"}, allFloods));
        changes.push_back(
            additionOf({"", Side::from, "", "PortBasedVLANMap", "VLANTable"}, 1U << *question.to));
        if (hasEntry && question.to != question.from) {
            changes.push_back(membershipOf(*question.to));
        }
    }
    for (unsigned const vid : question.vids) {
        changes.push_back(changeOf({"", Side::from, "", "DefaultVLAN", "DefaultVID"}, vid));
    }
    // Opens more than the others, so it comes last.
    changes.push_back(changeOf({"", Side::from, "", "PortControl2", "802.1QMode"}, modeOff));
    return changes;
}

} // namespace board
