#include "reference_host/XmlErrorLog.hpp"

#include <libxml/SAX2.h>

namespace reference_host {

namespace {

XmlErrorLog& logOf(void* context) {
    return *static_cast<XmlErrorLog*>(static_cast<xmlParserCtxtPtr>(context)->_private);
}

std::string withoutLineEnd(char const* message) {
    std::string text = message == nullptr ? "" : message;
    while (!text.empty() && text.back() == '\n') {
        text.pop_back();
    }
    return text;
}

} // namespace

XmlErrorLog::XmlErrorLog(xmlParserCtxtPtr context) {
    context->_private = this;
    context->sax->serror = &XmlErrorLog::receive;
    context->sax->entityDecl = &XmlErrorLog::refuseEntity;
}

bool XmlErrorLog::hasError() const {
    return _line != 0;
}

std::string XmlErrorLog::text() const {
    return hasError() ? std::to_string(_line) + ": " + _reason : "1: not a well-formed document";
}

template <typename ErrorPointer> void XmlErrorLog::receive(void* context, ErrorPointer error) {
    if (error->level == XML_ERR_FATAL) {
        logOf(context).keep(error->line, withoutLineEnd(error->message));
    }
}

// A board's configuration has no use for entities, and a few nested ones are enough to fill the
// memory of whoever reads an attribute that contains them.
void XmlErrorLog::refuseEntity(void* context, xmlChar const* name, int /*type*/, xmlChar const* /*publicId*/,
                               xmlChar const* /*systemId*/, xmlChar* /*content*/) {
    std::string const entity = reinterpret_cast<char const*>(name); // NOLINT: xmlChar is UTF-8 text
    logOf(context).keep(xmlSAX2GetLineNumber(context), "entity \"" + entity + "\": entities are not allowed");
    xmlStopParser(static_cast<xmlParserCtxtPtr>(context));
}

void XmlErrorLog::keep(int line, std::string const& reason) {
    if (!hasError()) {
        _line = line > 0 ? line : 1;
        _reason = reason;
    }
}

} // namespace reference_host
