#include "board/paths/MarvellEvidence.hpp"

#include <fmt/format.h>

#include "board/Wording.hpp"

namespace board {

namespace {

constexpr unsigned noMember = 3;
constexpr unsigned untaggedMember = 1;
constexpr unsigned stateForwarding = 3;
constexpr unsigned allFloods = 3;
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
        {"M12", Side::from, "", "PortBasedVLANMap", "VLANTable"},
        {"M13", Side::to, "", "PortControl", "PortState"},
        {"M14", Side::to, "", "PortControl", "EgressMode"},
    };
    std::vector<Fact> facts;
    for (Row const& row : rows) {
        if (row.rule == rule) {
            facts.push_back(factOf(row));
        }
    }
    addTableFacts(rule, facts);
    return facts;
}

void MarvellEvidence::addTableFacts(std::string_view rule, std::vector<Fact>& facts) const {
    Question const& question = getQuestion();
    auto const entry = _chip.getVtuEntry(question.vid);
    std::string const name = fmt::format("VTU/VID {}", question.vid);
    if (rule == "M7") {
        facts.push_back({name, entry ? "there" : "not there"});
    }
    if (!entry) {
        return;
    }
    if (rule == "M8") {
        facts.push_back({name + ":FID", hexadecimal(entry->fid)});
        facts.push_back({name + ":SID", hexadecimal(entry->sid)});
    } else if (rule == "M12" || rule == "M14") {
        facts.push_back({fmt::format("{}:MemberTag{}", name, question.to),
                         memberCodes[entry->memberTags.at(question.to) & noMember]});
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
        changeOf({"", Side::from, "", "PortControl", "PortState"}, stateForwarding),
        changeOf({"", Side::to, "", "PortControl", "PortState"}, stateForwarding),
        changeOf({"", Side::to, "", "PortControl", "EgressFloods"}, allFloods),
        changeOf({"", Side::from, "", "PortControl2", "DiscardTagged"}, 0),
        changeOf({"", Side::from, "", "PortControl2", "DiscardUntagged"}, 0),
        additionOf({"", Side::from, "", "PortBasedVLANMap", "VLANTable"}, 1U << question.to),
    };
    if (_chip.getVtuEntry(question.vid)) {
        changes.push_back(membershipOf(question.from));
        changes.push_back(membershipOf(question.to));
    }
    for (unsigned const vid : question.vids) {
        changes.push_back(changeOf({"", Side::from, "", "DefaultVLAN", "DefaultVID"}, vid));
    }
    // Opens more than the others, so it comes last.
    changes.push_back(changeOf({"", Side::from, "", "PortControl2", "802.1QMode"}, 0));
    return changes;
}

} // namespace board
