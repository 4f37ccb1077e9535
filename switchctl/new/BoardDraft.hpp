#pragma once

#include <map>
#include <set>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "chips/ChipKind.hpp"
#include "chips/PortAddress.hpp"

namespace switchctl::draft {

/// A board as somebody describes it, answer by answer; what a document could not hold without a warning of
/// `switchctl check` is refused.
///
/// The operations throw Refused, whose text names what is wrong with the answer, and then change nothing.
class BoardDraft {
public:
    using Refused = std::invalid_argument;
    /// Switch and port.
    using Place = std::pair<unsigned, unsigned>;
    /// Members, and whether frames have tags there.
    using Members = std::map<Place, bool>;

    /// "0=88e6096".
    void addChip(std::string const& text);
    /// "0.0".
    void setCpu(std::string const& text);
    /// "0.10=switchInterlink".
    void addLink(std::string const& text);
    /// "2=0.1,0.2,0.8t", the id decimal, "t" where frames have tags.
    void addVlan(std::string const& text);
    /// Throws Refused when something is missing.
    void requireComplete() const;

    /// The document, with comments.
    std::string getText() const;

private:
    Place parsePort(std::string const& text) const;
    chips::ChipKind::Facts const& factsOf(Place const& port) const;
    bool isVitesse(Place const& port) const;
    void requireMember(Place const& port, bool isTagged, Members const& others) const;
    bool isUntaggedElsewhere(Place const& port) const;
    std::set<unsigned> vlansOf(Place const& port) const;
    std::string getDescription(Place const& port) const;
    std::string getSwitchText(unsigned id, chips::ChipKind const& kind) const;
    std::string getVlanText(unsigned id, Members const& members, std::string const& comment) const;

    std::map<unsigned, chips::ChipKind const*> _chips;
    std::map<Place, std::string> _links;
    std::map<unsigned, Members> _vlans;
    Place _cpu{~0U, ~0U};
};

} // namespace switchctl::draft
