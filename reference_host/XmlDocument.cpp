#include "reference_host/XmlDocument.hpp"

#include <libxml/parser.h>
#include <libxml/xpathInternals.h>

#include <algorithm>
#include <limits>
#include <map>
#include <mutex>
#include <utility>
#include <vector>

#include "reference_host/InputFile.hpp"
#include "reference_host/XmlErrorLog.hpp"
#include "reference_host/XmlIndex.hpp"
#include "reference_host/XmlSilence.hpp"

namespace reference_host {

namespace {

struct Freeing {
    void operator()(xmlParserCtxtPtr context) const { xmlFreeParserCtxt(context); }
    void operator()(xmlDocPtr document) const { xmlFreeDoc(document); }
    void operator()(xmlXPathContextPtr context) const { xmlXPathFreeContext(context); }
    void operator()(xmlXPathObjectPtr object) const { xmlXPathFreeObject(object); }
};

using ParserContext = std::unique_ptr<xmlParserCtxt, Freeing>;
using Document = std::unique_ptr<xmlDoc, Freeing>;
using XPathContext = std::unique_ptr<xmlXPathContext, Freeing>;
using XPathObject = std::unique_ptr<xmlXPathObject, Freeing>;

void initialiseLibrary() {
    static bool const initialised = (xmlInitParser(), true);
    static_cast<void>(initialised);
}

Document parsed(std::string const& text, std::string const& name) {
    if (text.size() > static_cast<std::size_t>(std::numeric_limits<int>::max())) {
        throw XmlError(name + ":0: larger than any configuration document");
    }
    initialiseLibrary();
    ParserContext const context(xmlNewParserCtxt());
    if (!context) {
        throw std::bad_alloc();
    }
    XmlErrorLog const errors(context.get());
    // No network, and no option that substitutes entities or lifts the parser's limits.
    Document document(xmlCtxtReadMemory(context.get(), text.data(), static_cast<int>(text.size()),
                                        name.c_str(), nullptr, XML_PARSE_NONET));
    if (!document || errors.hasError()) {
        throw XmlError(name + ":" + errors.text());
    }
    return document;
}

bool haveSameNodes(xmlNodeSet const& a, xmlNodeSet const& b) {
    return a.nodeNr == b.nodeNr && std::equal(a.nodeTab, a.nodeTab + a.nodeNr, b.nodeTab);
}

} // namespace

struct XmlDocument::Implementation {
    XPathObject select(std::string const& xpath);
    XPathObject lookUp(std::string const& xpath);
    XPathObject evaluate(std::string const& xpath) const;

    std::string name;
    // The sets refer to nodes of the tree, so they must go first.
    Document document;
    std::mutex mutex;
    /// What each query has given so far. More than one set for a query only if a tool has changed
    /// the tree in between.
    std::map<std::string, std::vector<XPathObject>> results;
    /// Made for the first query, unless somebody had the tree in hand before and may change it.
    std::unique_ptr<XmlIndex> index;
    bool isTreeOutOfHand = false;
};

XPathObject XmlDocument::Implementation::select(std::string const& xpath) {
    XPathObject result = lookUp(xpath);
    return result ? std::move(result) : evaluate(xpath);
}

XPathObject XmlDocument::Implementation::lookUp(std::string const& xpath) {
    if (isTreeOutOfHand) {
        return nullptr;
    }
    if (!index) {
        index = std::make_unique<XmlIndex>(document.get());
    }
    auto const nodes = index->find(xpath);
    if (!nodes) {
        return nullptr;
    }
    XPathObject object(xmlXPathNewNodeSet(nullptr));
    if (!object || object->nodesetval == nullptr) {
        throw std::bad_alloc();
    }
    for (xmlNodePtr const node : *nodes) {
        if (xmlXPathNodeSetAddUnique(object->nodesetval, node) != 0) {
            throw std::bad_alloc();
        }
    }
    return object;
}

/// The node set that the expression selects; null when it is malformed or gives something else.
XPathObject XmlDocument::Implementation::evaluate(std::string const& xpath) const {
    XmlSilence const silence;
    XPathContext const context(xmlXPathNewContext(document.get()));
    if (!context) {
        return nullptr;
    }
    context->node = reinterpret_cast<xmlNodePtr>(document.get()); // NOLINT: a document is a node
    XPathObject object(xmlXPathEvalExpression(reinterpret_cast<xmlChar const*>(xpath.c_str()),
                                              context.get())); // NOLINT: UTF-8 text
    if (!object || object->type != XPATH_NODESET) {
        return nullptr;
    }
    // libxml2 has two spellings of an empty set; callers get the one that they can look into.
    if (object->nodesetval == nullptr) {
        object->nodesetval = xmlXPathNodeSetCreate(nullptr);
    }
    xmlXPathNodeSetSort(object->nodesetval);
    return object->nodesetval == nullptr ? nullptr : std::move(object);
}

XmlDocument::XmlDocument(std::unique_ptr<Implementation> implementation)
    : _implementation(std::move(implementation)) {}

XmlDocument::~XmlDocument() = default;

std::unique_ptr<XmlDocument> XmlDocument::fromFile(std::string const& path) {
    std::string content;
    try {
        content = InputFile::read(path);
    } catch (InputFile::Error const& error) {
        throw XmlError(path + ":0: " + error.what());
    }
    return fromText(content, path);
}

std::unique_ptr<XmlDocument> XmlDocument::fromText(std::string const& text, std::string const& name) {
    auto implementation = std::make_unique<Implementation>();
    implementation->name = name;
    implementation->document = parsed(text, name);
    return std::unique_ptr<XmlDocument>(new XmlDocument(std::move(implementation)));
}

xmlNodeSetPtr XmlDocument::find(std::string const& xpath) {
    std::lock_guard<std::mutex> const lock(_implementation->mutex);
    XPathObject result = _implementation->select(xpath);
    if (!result) {
        return nullptr;
    }
    std::vector<XPathObject>& known = _implementation->results[xpath];
    for (XPathObject const& earlier : known) {
        if (haveSameNodes(*earlier->nodesetval, *result->nodesetval)) {
            return earlier->nodesetval;
        }
    }
    known.push_back(std::move(result));
    return known.back()->nodesetval;
}

xmlDocPtr XmlDocument::getDocument() const {
    std::lock_guard<std::mutex> const lock(_implementation->mutex);
    _implementation->isTreeOutOfHand = true;
    return _implementation->document.get();
}

std::string const& XmlDocument::getName() const {
    return _implementation->name;
}

} // namespace reference_host
