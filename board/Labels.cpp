#include "board/Labels.hpp"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "board/Element.hpp"
#include "board/Wording.hpp"

namespace board {

Labels::Labels(Xml& document) {
    xmlNodeSetPtr const switches = document.find("//switches/switch");
    for (int index = 0; switches != nullptr && index < switches->nodeNr; ++index) {
        xmlNodePtr const element = switches->nodeTab[index]; // NOLINT: libxml2's list
        add(placeOf(element), attribute(element, "label"));
        for (xmlNodePtr const port : children(element, "port")) {
            if (numberOr(port, "id", -1) >= 0) {
                add(placeOf(port), attribute(port, "label"));
            }
        }
    }
}

// One line of a text, between quotes.
void Labels::add(std::string const& place, std::optional<std::string> const& written) {
    std::string text = written.value_or("");
    std::replace_if(
        text.begin(), text.end(), [](unsigned char character) { return character < ' '; }, ' ');
    std::replace(text.begin(), text.end(), '"', '\'');
    if (!text.empty()) {
        _texts.emplace(place, text);
    }
}

std::string Labels::placeOf(xmlNodePtr element) {
    if (isNamed(element, "switch")) {
        return std::to_string(numberOr(element, "id", 0));
    }
    if (isNamed(element, "port") && isNamed(element->parent, "switch")) {
        return portAddress(numberOr(element->parent, "id", 0), numberOr(element, "id", -1));
    }
    bool const isMember = isNamed(element, "port") && isNamed(element->parent, "vlan");
    return isMember ? portAddress(numberOr(element, "switchId", -1), numberOr(element, "portId", -1)) : "";
}

std::optional<std::string> Labels::find(std::string const& place) const {
    auto const found = _texts.find(place);
    return found == _texts.end() ? std::nullopt : std::optional(found->second);
}

std::string Labels::after(std::string const& place) const {
    auto const label = find(place);
    return label ? " \"" + *label + "\"" : "";
}

void Labels::addTo(nlohmann::ordered_json& object, std::string const& place) const {
    if (auto const label = find(place)) {
        object["label"] = *label;
    }
}

} // namespace board
