#include "reference_host/XmlIndex.hpp"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <memory>
#include <regex>

#include "reference_host/XmlSilence.hpp"

namespace reference_host {

namespace {

std::string nameOf(xmlNode const& node) {
    return reinterpret_cast<char const*>(node.name); // NOLINT: libxml2's characters
}

bool isElement(xmlNode const& node) {
    // A name without prefix in a query means elements outside of all namespaces.
    return node.type == XML_ELEMENT_NODE && node.ns == nullptr;
}

/// The next node of the tree in document order, elements' contents included.
xmlNodePtr nextOf(xmlNodePtr node) {
    if (node->type == XML_ELEMENT_NODE && node->children != nullptr) {
        return node->children;
    }
    while (node != nullptr && node->next == nullptr) {
        node = node->parent;
    }
    return node == nullptr ? nullptr : node->next;
}

/// The number that a literal stands for, by libxml2's own reading: "1e3" is one, "1a" is none.
std::optional<double> numberOf(std::string const& literal) {
    XmlSilence const silence;
    std::unique_ptr<xmlXPathContext, void (*)(xmlXPathContextPtr)> const context(xmlXPathNewContext(nullptr),
                                                                                 xmlXPathFreeContext);
    std::unique_ptr<xmlXPathObject, void (*)(xmlXPathObjectPtr)> const object(
        xmlXPathEval(reinterpret_cast<xmlChar const*>(literal.c_str()), context.get()), // NOLINT
        xmlXPathFreeObject);
    if (object == nullptr || object->type != XPATH_NUMBER) {
        return std::nullopt;
    }
    return object->floatval;
}

} // namespace

XmlIndex::XmlIndex(xmlDocPtr document) {
    for (xmlNodePtr node = document->children; node != nullptr; node = nextOf(node)) {
        if (isElement(*node)) {
            add(node);
        }
    }
}

void XmlIndex::add(xmlNodePtr element) {
    _positions.emplace(element, _positions.size());
    _byName[nameOf(*element)].push_back(element);
}

std::optional<std::vector<xmlNodePtr>> XmlIndex::find(std::string const& xpath) {
    std::optional<Query> const query = parse(xpath);
    if (!query) {
        return std::nullopt;
    }
    std::optional<Elements> elements = query->attribute.empty() ? named(query->name) : matching(*query);
    if (elements && !query->child.empty()) {
        return childrenOf(*elements, query->child);
    }
    return elements;
}

std::optional<XmlIndex::Query> XmlIndex::parse(std::string const& xpath) {
    static std::regex const form(R"(//([A-Za-z]+)(?:\[@([A-Za-z]+)=([0-9A-Za-z]+)\])?(?:/([A-Za-z]+))?)");
    std::smatch match;
    if (!std::regex_match(xpath, match, form)) {
        return std::nullopt;
    }
    return Query{match[1], match[2], match[3], match[4]};
}

XmlIndex::Elements const& XmlIndex::named(std::string const& name) const {
    static Elements const none;
    auto const found = _byName.find(name);
    return found == _byName.end() ? none : found->second;
}

std::optional<XmlIndex::Elements> XmlIndex::matching(Query const& query) {
    if (std::isdigit(static_cast<unsigned char>(query.id.front())) == 0) {
        // A word means a child element of that name, whose text the attribute has to equal.
        return named(query.id).empty() ? std::optional<Elements>(Elements()) : std::nullopt;
    }
    std::optional<double> const number = numberOf(query.id);
    if (!number) {
        return std::nullopt;
    }
    ElementsByNumber const& elements = numbered(query.name, query.attribute);
    auto const found = elements.find(*number);
    return found == elements.end() ? Elements() : found->second;
}

XmlIndex::ElementsByNumber const& XmlIndex::numbered(std::string const& name, std::string const& attribute) {
    auto const [entry, isNew] = _byAttribute.try_emplace(name + "/@" + attribute);
    if (!isNew) {
        return entry->second;
    }
    for (xmlNodePtr const element : named(name)) {
        xmlAttrPtr const found =
            xmlHasNsProp(element, reinterpret_cast<xmlChar const*>(attribute.c_str()), nullptr); // NOLINT
        if (found != nullptr && found->type == XML_ATTRIBUTE_NODE) {
            double const number = xmlXPathCastNodeToNumber(reinterpret_cast<xmlNodePtr>(found)); // NOLINT
            if (!std::isnan(number)) {
                entry->second[number].push_back(element);
            }
        }
    }
    return entry->second;
}

XmlIndex::Elements XmlIndex::childrenOf(Elements const& parents, std::string const& child) const {
    Elements children;
    for (xmlNodePtr const parent : parents) {
        for (xmlNodePtr node = parent->children; node != nullptr; node = node->next) {
            if (isElement(*node) && nameOf(*node) == child) {
                children.push_back(node);
            }
        }
    }
    // Elements of one name may stand inside of each other.
    std::sort(children.begin(), children.end(), [this](xmlNodePtr first, xmlNodePtr second) {
        return _positions.at(first) < _positions.at(second);
    });
    return children;
}

} // namespace reference_host
