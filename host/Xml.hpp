#pragma once

#include <libxml/xpath.h>

#include <string>

/// A configuration document that the host has parsed.
class Xml {
public:
    virtual ~Xml();

    /// The nodes that an XPath 1.0 expression selects, in document order, or null when the
    /// expression is malformed or selects nothing that is a node set.
    ///
    /// The set and its nodes belong to the document and stay valid and unchanged as long as the
    /// document lives; the caller frees neither. Each manager asks from one thread, its management thread;
    /// managers that share a document may ask at the same time.
    virtual xmlNodeSetPtr find(std::string const& xpath) = 0;
};
