#include "board/Element.hpp"

#include <algorithm>
#include <memory>

#include "simulation/DocumentNumber.hpp"

namespace board {

using simulation::DocumentNumber;

namespace {

xmlChar const* asXml(char const* text) {
    return reinterpret_cast<xmlChar const*>(text); // NOLINT: libxml2's character is unsigned
}

std::string asPlain(xmlChar const* text) {
    return text == nullptr ? "" : reinterpret_cast<char const*>(text); // NOLINT: as above
}

std::optional<std::string> taken(xmlChar* text) {
    auto const release = [](xmlChar* released) { xmlFree(released); };
    std::unique_ptr<xmlChar, decltype(release)> const owned(text, release);
    return owned ? std::optional<std::string>(asPlain(owned.get())) : std::nullopt;
}

} // namespace

std::optional<std::string> attribute(xmlNodePtr element, char const* name) {
    return element == nullptr || element->type != XML_ELEMENT_NODE ? std::nullopt
                                                                   : taken(xmlGetProp(element, asXml(name)));
}

std::string quotedAttribute(xmlNodePtr element, char const* name) {
    std::optional<std::string> const text = attribute(element, name);
    return text ? "\"" + *text + "\"" : "absent";
}

std::string content(xmlNodePtr element) {
    return taken(xmlNodeGetContent(element)).value_or("");
}

bool isNamed(xmlNode const* node, char const* name) {
    return node != nullptr && node->type == XML_ELEMENT_NODE && asPlain(node->name) == name;
}

std::vector<xmlNodePtr> children(xmlNodePtr element, char const* name) {
    std::vector<xmlNodePtr> found;
    for (xmlNodePtr child = element->children; child != nullptr; child = child->next) {
        if (isNamed(child, name)) {
            found.push_back(child);
        }
    }
    return found;
}

std::string startTag(xmlNodePtr element) {
    std::string tag = "<" + asPlain(element->name);
    for (xmlAttrPtr entry = element->properties; entry != nullptr; entry = entry->next) {
        std::string const name = asPlain(entry->name);
        tag += " " + name + "=\"" + attribute(element, name.c_str()).value_or("") + "\"";
    }
    return tag + ">";
}

std::optional<int> decimalPrefix(std::string const& text) {
    std::optional<DocumentNumber> const number = DocumentNumber::decimal(text);
    return number ? std::optional<int>(number->toInt()) : std::nullopt;
}

std::optional<unsigned int> hexadecimalPrefix(std::string const& text) {
    std::optional<DocumentNumber> const number = DocumentNumber::hexadecimal(text);
    return number ? std::optional<unsigned int>(number->toUnsigned()) : std::nullopt;
}

int numberOr(xmlNodePtr element, char const* name, int otherwise) {
    return decimalPrefix(attribute(element, name).value_or("")).value_or(otherwise);
}

bool isDigits(std::string const& text) {
    return !text.empty() &&
           std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

} // namespace board
