#pragma once

#include <libxml/xpath.h>

/// The nodes that a query selected, for a range-based loop. A query without a result has none.
class XmlNodes {
public:
    /// `nodes` may be null; it stays the document's.
    explicit XmlNodes(xmlNodeSetPtr nodes) : _nodes(nodes) {}

    int count() const { return _nodes == nullptr ? 0 : _nodes->nodeNr; }
    xmlNodePtr* begin() const { return _nodes == nullptr ? nullptr : _nodes->nodeTab; }
    xmlNodePtr* end() const { return count() == 0 ? begin() : begin() + count(); }

private:
    xmlNodeSetPtr _nodes;
};
