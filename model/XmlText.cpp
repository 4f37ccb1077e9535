#include "model/XmlText.hpp"

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

xmlChar const* asXml(char const* text) {
    return reinterpret_cast<xmlChar const*>(text); // NOLINT: libxml2's character is unsigned
}

char const* asPlain(xmlChar const* text) {
    return reinterpret_cast<char const*>(text); // NOLINT: libxml2's character is unsigned
}

} // namespace

XmlText XmlText::attribute(xmlNode const* node, char const* name) {
    return XmlText(xmlGetProp(node, asXml(name)));
}

XmlText XmlText::content(xmlNode const* node) {
    return XmlText(xmlNodeGetContent(node));
}

bool XmlText::equals(char const* other) const {
    return isPresent() && std::strcmp(text(), other) == 0;
}

char const* XmlText::text() const {
    return isPresent() ? asPlain(_text.get()) : "";
}

char const* XmlText::printable() const {
    return isPresent() ? text() : "(null)";
}

bool XmlText::parseDecimal(int& value) const {
    return std::sscanf(text(), "%d", &value) == 1; // NOLINT: a partial number counts as one here
}

bool XmlText::parseHexadecimal(unsigned int& value) const {
    return std::sscanf(text(), "%x", &value) == 1; // NOLINT: a partial number counts as one here
}

int XmlText::toInteger(int ifAbsent) const {
    return isPresent() ? std::atoi(text()) : ifAbsent; // NOLINT: no number means 0 here
}
