#include "reference_host/XmlSilence.hpp"

#include <libxml/globals.h>

namespace reference_host {

namespace {

void ignoreText(void* /*context*/, char const* /*format*/, ...) {}

// libxml2 2.12 made the error a constant; a template takes both.
template <typename ErrorPointer> void ignoreError(void* /*context*/, ErrorPointer /*error*/) {}

} // namespace

XmlSilence::XmlSilence()
    : _genericError(xmlGenericError),
      _genericErrorContext(xmlGenericErrorContext),
      _structuredError(xmlStructuredError),
      _structuredErrorContext(xmlStructuredErrorContext) {
    xmlSetGenericErrorFunc(nullptr, &ignoreText);
    xmlSetStructuredErrorFunc(nullptr, &ignoreError);
}

XmlSilence::~XmlSilence() {
    xmlSetGenericErrorFunc(_genericErrorContext, _genericError);
    xmlSetStructuredErrorFunc(_structuredErrorContext, _structuredError);
}

} // namespace reference_host
