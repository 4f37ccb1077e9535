#pragma once

#include <libxml/tree.h>

#include <map>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>

#include "host/Xml.hpp"

namespace board {

/// The names that a document gives to switches and ports, for people: the library does not look at them.
///
/// A place is a switch, "0", or a port, "0.8". Of two elements with one number the first one's label counts.
class Labels {
public:
    /// The document is not needed afterwards.
    explicit Labels(Xml& document);

    /// Nothing when the place has none.
    std::optional<std::string> find(std::string const& place) const;

    /// What stands behind the place's number in a text: ` "uplink"` with a blank, or nothing.
    std::string after(std::string const& place) const;

    /// The place with its label: `0.8 "uplink"`.
    std::string nameOf(std::string const& place) const { return place + after(place); }

    /// A member "label" of the object, where the place has one.
    void addTo(nlohmann::ordered_json& object, std::string const& place) const;

    /// Of a switch, a port of one or a member of a VLAN; empty for other elements.
    static std::string placeOf(xmlNodePtr element);

    /// By place.
    std::map<std::string, std::string> const& getAll() const { return _texts; }

private:
    void add(std::string const& place, std::optional<std::string> const& written);

    std::map<std::string, std::string> _texts;
};

} // namespace board
