#include "switchctl/check/BoardSchema.hpp"

#include <libxml/parser.h>

#include <cstring>
#include <stdexcept>

#include "board/Element.hpp"

namespace switchctl::check {

namespace {

struct FreeContext {
    void operator()(xmlRelaxNGParserCtxtPtr context) const { xmlRelaxNGFreeParserCtxt(context); }
    void operator()(xmlRelaxNGValidCtxtPtr context) const { xmlRelaxNGFreeValidCtxt(context); }
};

xmlChar const* asXml(char const* text) {
    return reinterpret_cast<xmlChar const*>(text); // NOLINT: libxml2's character is unsigned
}

// libxml2 2.12 made the error a constant; a template takes both.
template <typename ErrorPointer> void keepMessage(void* messages, ErrorPointer error) {
    std::string text = error->message == nullptr ? "" : error->message;
    while (!text.empty() && text.back() == '\n') {
        text.pop_back();
    }
    static_cast<std::vector<std::string>*>(messages)->push_back(text);
}

char const* asPlain(xmlChar const* text) {
    return reinterpret_cast<char const*>(text); // NOLINT: as above
}

void removeChildren(xmlNodePtr parent) {
    while (parent->children != nullptr) {
        xmlNodePtr const child = parent->children;
        xmlUnlinkNode(child);
        xmlFreeNode(child);
    }
}

xmlNodePtr attributePattern(xmlNodePtr pattern, std::string const& name) {
    for (xmlNodePtr const candidate : board::children(pattern, "attribute")) {
        if (board::attribute(candidate, "name") == name) {
            return candidate;
        }
    }
    for (xmlNodePtr const optional : board::children(pattern, "optional")) {
        if (xmlNodePtr const found = attributePattern(optional, name)) {
            return found;
        }
    }
    return nullptr;
}

template <typename Parsed> Parsed parse(xmlDocPtr grammar) {
    std::unique_ptr<xmlRelaxNGParserCtxt, FreeContext> const context(xmlRelaxNGNewDocParserCtxt(grammar));
    Parsed schema(xmlRelaxNGParse(context.get()));
    if (!schema) {
        throw std::logic_error("the program's schema is not RELAX NG");
    }
    return schema;
}

} // namespace

BoardSchema::BoardSchema()
    : _source(xmlReadMemory(text(), static_cast<int>(std::strlen(text())), "board.rng", nullptr,
                            XML_PARSE_NONET | XML_PARSE_NOBLANKS)) {
    if (!_source) {
        throw std::logic_error("the program's schema is not well-formed");
    }
    // The parser changes what it parses.
    Document const grammar(xmlCopyDoc(_source.get(), 1));
    _schema = parse<Schema>(grammar.get());
}

BoardSchema::~BoardSchema() = default;

std::vector<std::string> BoardSchema::validate(xmlDocPtr document) const {
    return run(_schema.get(), document);
}

std::vector<std::string> BoardSchema::validate(xmlNodePtr element, std::string const& definition) const {
    xmlNodePtr const pattern = patternOf(definition);
    std::vector<std::string> faults;
    for (xmlAttrPtr entry = element->properties; entry != nullptr; entry = entry->next) {
        if (entry->ns != nullptr) {
            continue;
        }
        std::string const name = asPlain(entry->name);
        std::string const written = name + "=" + board::quotedAttribute(element, name.c_str());
        xmlNodePtr const expected = attributePattern(pattern, name);
        if (expected == nullptr) {
            faults.push_back("it knows no attribute " + name);
        } else if (!allows(pattern, expected, element)) {
            faults.push_back("it does not allow " + written);
        }
    }
    for (xmlNodePtr const required : board::children(pattern, "attribute")) {
        std::string const name = board::attribute(required, "name").value_or("");
        if (!board::attribute(element, name.c_str())) {
            faults.push_back("it requires the attribute " + name);
        }
    }
    for (xmlNodePtr const data : board::children(pattern, "data")) {
        if (!allows(pattern, data, element)) {
            faults.push_back("it does not allow the text \"" + board::content(element) + "\"");
        }
    }
    return faults;
}

xmlNodePtr BoardSchema::patternOf(std::string const& definition) const {
    for (xmlNodePtr const define : board::children(xmlDocGetRootElement(_source.get()), "define")) {
        if (board::attribute(define, "name") == definition) {
            return board::children(define, "element").at(0);
        }
    }
    throw std::logic_error("the program's schema does not define " + definition);
}

BoardSchema::Schema BoardSchema::schemaOf(xmlNodePtr pattern, xmlNodePtr content) const {
    constexpr int withAttributes = 2;
    constexpr int withAll = 1;
    Document const grammar(xmlCopyDoc(_source.get(), 1));
    xmlNodePtr const start = board::children(xmlDocGetRootElement(grammar.get()), "start").at(0);
    removeChildren(start);
    xmlNodePtr const copy = xmlDocCopyNode(pattern, grammar.get(), withAttributes);
    xmlAddChild(start, copy);
    xmlAddChild(copy, xmlDocCopyNode(content, grammar.get(), withAll));
    return parse<Schema>(grammar.get());
}

bool BoardSchema::allows(xmlNodePtr pattern, xmlNodePtr content, xmlNodePtr element) const {
    Document const alone(xmlNewDoc(asXml("1.0")));
    xmlNodePtr const copy = xmlNewNode(nullptr, element->name);
    xmlDocSetRootElement(alone.get(), copy);
    std::string const name = board::attribute(content, "name").value_or("");
    if (name.empty()) {
        xmlNodeAddContent(copy, asXml(board::content(element).c_str()));
    } else {
        xmlNewProp(copy, asXml(name.c_str()),
                   asXml(board::attribute(element, name.c_str()).value_or("").c_str()));
    }
    return run(schemaOf(pattern, content).get(), alone.get()).empty();
}

std::vector<std::string> BoardSchema::run(xmlRelaxNGPtr schema, xmlDocPtr document) {
    std::vector<std::string> messages;
    std::unique_ptr<xmlRelaxNGValidCtxt, FreeContext> const context(xmlRelaxNGNewValidCtxt(schema));
    xmlRelaxNGSetValidStructuredErrors(context.get(), keepMessage, &messages);
    bool const valid = xmlRelaxNGValidateDoc(context.get(), document) == 0;
    if (valid) {
        messages.clear();
    } else if (messages.empty()) {
        messages.emplace_back("not valid");
    }
    return messages;
}

} // namespace switchctl::check
