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
        {"M1", "", "PhysicalControl", "ForcedLink", Side::from},
        {"M1", "", "PhysicalControl", "LinkValue", Side::from},
        {"M3", "", "PortControl", "PortState", Side::from},
        {"M4", "", "PortControl", "FrameMode", Side::from},
        {"M5", "", "PortControl2", "DiscardTagged", Side::from},
        {"M5", "", "PortControl2", "DiscardUntagged", Side::from},
        {"M7", "", "PortControl2", "802.1QMode", Side::from},
        {"M7", "", "DefaultVLAN", "DefaultVID", Side::from},
        {"M9", "", "PortAssociationVector", "PAV", Side::from},
        {"M10", "", "PortControl", "PortState", Side::from},
        {"M11", "", "PortControl", "EgressFloods", Side::to},
        {"M12", "", "PortBasedVLANMap", "VLANTable", Side::from, Side::to},
        {"M13", "", "PhysicalControl", "ForcedLink", Side::to},
        {"M13", "", "PhysicalControl", "LinkValue", Side::to},
        {"M13", "", "PortControl", "PortState", Side::to},
        {"M14", "", "PortControl", "FrameMode", Side::to},
        {"M14", "", "PortControl", "EgressMode", Side::to},
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
        changeOf({"", "", "PhysicalControl", "LinkValue", Side::from}, 1),
        changeOf({"", "", "PortControl", "PortState", Side::from}, stateForwarding),
        changeOf({"", "", "PortControl2", "DiscardTagged", Side::from}, 0),
        changeOf({"", "", "PortControl2", "DiscardUntagged", Side::from}, 0),
    };
    bool const hasEntry = _chip.getVtuEntry(question.vid).has_value();
    if (hasEntry) {
        changes.push_back(membershipOf(question.from));
    }
    if (question.to) {
        changes.push_back(changeOf({"", "", "PhysicalControl", "LinkValue", Side::to}, 1));
        changes.push_back(changeOf({"", "", "PortControl", "PortState", Side::to}, stateForwarding));
        changes.push_back(changeOf({"", "", "PortControl", "EgressFloods", Side::to}, allFloods));
        changes.push_back(
            additionOf({"", "", "PortBasedVLANMap", "VLANTable", Side::from}, 1U << *question.to));
        if (hasEntry && question.to != question.from) {
            changes.push_back(membershipOf(*question.to));
        }
    }
    for (unsigned const vid : question.vids) {
        changes.push_back(changeOf({"", "", "DefaultVLAN", "DefaultVID", Side::from}, vid));
    }
    // Opens more than the others, so it comes last.
    changes.push_back(changeOf({"", "", "PortControl2", "802.1QMode", Side::from}, modeOff));
    return changes;
}

} // namespace board
