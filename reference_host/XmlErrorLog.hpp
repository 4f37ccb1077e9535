#pragma once

#include <libxml/parser.h>

#include <string>

namespace reference_host {

/// Keeps the reason why a document is refused: the first thing that went wrong while a parser
/// context reads it. Nothing is printed.
class XmlErrorLog {
public:
    /// Attaches itself to the context, which must not outlive it.
    explicit XmlErrorLog(xmlParserCtxtPtr context);
    XmlErrorLog(XmlErrorLog const&) = delete;
    XmlErrorLog& operator=(XmlErrorLog const&) = delete;

    /// Whether the document is to be refused.
    bool hasError() const;

    /// "LINE: REASON"; line 1 and a general reason when the parser gave none.
    std::string text() const;

private:
    // libxml2 2.12 made the error a constant; a template takes both.
    template <typename ErrorPointer> static void receive(void* context, ErrorPointer error);
    static void refuseEntity(void* context, xmlChar const* name, int type, xmlChar const* publicId,
                             xmlChar const* systemId, xmlChar* content);
    void keep(int line, std::string const& reason);

    int _line = 0;
    std::string _reason;
};

} // namespace reference_host
