#pragma once

#include <libxml/xmlerror.h>

namespace reference_host {

/// Keeps libxml2 from printing on the calling thread while it lives.
class XmlSilence {
public:
    XmlSilence();
    ~XmlSilence();
    XmlSilence(XmlSilence const&) = delete;
    XmlSilence& operator=(XmlSilence const&) = delete;

private:
    xmlGenericErrorFunc _genericError;
    void* _genericErrorContext;
    xmlStructuredErrorFunc _structuredError;
    void* _structuredErrorContext;
};

} // namespace reference_host
