#pragma once

#include <libxml/xpath.h>

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace reference_host {

/// Answers the common queries about a document without walking all of its tree each time, which would
/// make a document's assembly grow with the square of its VLANs:
///
///     //NAME   //NAME/CHILD   //NAME[@ATTRIBUTE=ID]   //NAME[@ATTRIBUTE=ID]/CHILD
///
/// Reads the tree once, when it is constructed; the tree must not change afterwards.
class XmlIndex {
public:
    explicit XmlIndex(xmlDocPtr document);

    /// What XPath 1.0 selects, in document order; nothing when the query has another form.
    std::optional<std::vector<xmlNodePtr>> find(std::string const& xpath);

private:
    struct Query {
        std::string name;
        std::string attribute;
        std::string id;
        std::string child;
    };

    using Elements = std::vector<xmlNodePtr>;
    using ElementsByNumber = std::map<double, Elements>;

    void add(xmlNodePtr element);
    Elements const& named(std::string const& name) const;
    std::optional<Elements> matching(Query const& query);
    ElementsByNumber const& numbered(std::string const& name, std::string const& attribute);
    Elements childrenOf(Elements const& parents, std::string const& child) const;

    static std::optional<Query> parse(std::string const& xpath);

    std::map<std::string, Elements> _byName;
    std::map<std::string, ElementsByNumber> _byAttribute;
    std::map<xmlNode const*, std::size_t> _positions;
};

} // namespace reference_host
