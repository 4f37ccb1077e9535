#include "tests/fuzz/DocumentMutator.hpp"

#include <libxml/parser.h>

#include <memory>

namespace fuzz {

namespace {

std::vector<std::string> const elementNames = {"switches", "switch", "port",
                                               "trunk",    "vlan",   "forwardedMulticastGroup"};

std::vector<std::string> const numbers = {
    "0",  "1",    "2",  "3",    "5",     "9",     "10",         "11",         "15",  "16",  "23", "24",
    "31", "32",   "0x", "0x10", "1a",    "1e",    "5e3",        "e",          " 7",  "7 ",  "-1", "+4",
    "",   "4094", "4k", "ff",   "65535", "65536", "2147483648", "4294967295", "007", "0.5", "1 2"};

std::vector<std::string> const addresses = {
    "239.1.2.3",    "239.129.2.3", "224.0.0.1", "239.1.2",   "239.1.2.3.4.5.6.7", "999.999.999.999",
    "239.-1.-2.-3", "a.b.c.d",     "",          "239 1 2 3", "4294967296.1.1.1",  "239.1.2.3x"};

/// What an attribute may have for a value: what it should, and what it should not.
struct Attribute {
    char const* name;
    std::vector<std::string> values;
};

std::vector<Attribute> const attributes = {
    {"id", numbers},
    {"switchId", numbers},
    {"portId", numbers},
    {"atuAgeTime", numbers},
    {"switchModel", {"88e6096", "vsc7390", "88E6096", "", "vsc7395"}},
    {"connectedTo", {"external", "smac", "hmac", "cpu", "dsp", "switchInterlink", "", "SMAC"}},
    {"portStatus", {"disabled", "listening", "learning", "forwarding", "", "blocked"}},
    {"typeOfVlan", {"tagBasedVlan", "portBasedVlan", ""}},
    {"ingress", {"addTag", "validateTag", "addTagIfUntagged", ""}},
    {"egress", {"stripTag", "validateTag", ""}},
};

xmlChar const* xml(std::string const& text) {
    return reinterpret_cast<xmlChar const*>(text.c_str()); // NOLINT: libxml2's characters
}

void collect(xmlNodePtr node, std::vector<xmlNodePtr>& elements) {
    for (; node != nullptr; node = node->next) {
        if (node->type == XML_ELEMENT_NODE) {
            elements.push_back(node);
            collect(node->children, elements);
        }
    }
}

std::string textOf(xmlDocPtr document) {
    xmlChar* text = nullptr;
    int length = 0;
    xmlDocDumpMemory(document, &text, &length);
    std::string result(reinterpret_cast<char const*>(text), static_cast<std::size_t>(length)); // NOLINT
    xmlFree(text);
    return result;
}

} // namespace

DocumentMutator::DocumentMutator(unsigned seed) : _random(seed) {}

std::string DocumentMutator::mutate(std::string const& text, std::size_t longest) {
    std::unique_ptr<xmlDoc, void (*)(xmlDocPtr)> const document(
        xmlReadMemory(text.data(), static_cast<int>(text.size()), "input", nullptr,
                      XML_PARSE_NOERROR | XML_PARSE_NOWARNING | XML_PARSE_NONET),
        xmlFreeDoc);
    if (document == nullptr || xmlDocGetRootElement(document.get()) == nullptr) {
        return "";
    }
    for (std::size_t changes = 1 + below(4); changes > 0; --changes) {
        change(document.get());
    }
    std::string const result = textOf(document.get());
    return result.size() > longest ? "" : result;
}

void DocumentMutator::change(xmlDocPtr document) {
    std::vector<xmlNodePtr> elements;
    collect(xmlDocGetRootElement(document), elements);
    xmlNodePtr const element = elements[below(elements.size())];
    switch (below(6)) {
    case 0:
        return addElement(element);
    case 1:
        return copyElement(element, elements);
    case 2:
        return removeElement(element, document);
    case 3:
        return setText(element);
    default:
        return setAttribute(element);
    }
}

void DocumentMutator::addElement(xmlNodePtr parent) {
    xmlNodePtr const element = xmlNewChild(parent, nullptr, xml(oneOf(elementNames)), nullptr);
    for (std::size_t count = below(4); count > 0; --count) {
        setAttribute(element);
    }
}

void DocumentMutator::setAttribute(xmlNodePtr element) {
    Attribute const& attribute = attributes[below(attributes.size())];
    if (below(8) == 0) {
        xmlUnsetProp(element, xml(attribute.name));
    } else {
        xmlSetProp(element, xml(attribute.name), xml(oneOf(attribute.values)));
    }
}

void DocumentMutator::removeElement(xmlNodePtr element, xmlDocPtr document) {
    if (element != xmlDocGetRootElement(document)) {
        xmlUnlinkNode(element);
        xmlFreeNode(element);
    }
}

void DocumentMutator::copyElement(xmlNodePtr element, std::vector<xmlNodePtr> const& elements) {
    xmlNodePtr const copy = xmlCopyNode(element, 1);
    xmlAddChild(elements[below(elements.size())], copy);
}

void DocumentMutator::setText(xmlNodePtr element) {
    if (xmlStrEqual(element->name, xml("forwardedMulticastGroup")) != 0) {
        xmlNodeSetContent(element, xml(oneOf(addresses)));
    }
}

std::size_t DocumentMutator::below(std::size_t count) {
    return std::uniform_int_distribution<std::size_t>(0, count - 1)(_random);
}

std::string DocumentMutator::oneOf(std::vector<std::string> const& values) {
    return values[below(values.size())];
}

} // namespace fuzz
