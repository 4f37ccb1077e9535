#pragma once

#include <memory>
#include <stdexcept>
#include <string>

#include "host/Xml.hpp"

namespace reference_host {

/// A document that could not be read; what() names the file, the line and the reason.
class XmlError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// A document parsed by libxml2. Owns the tree and every node set that find() has returned.
class XmlDocument : public Xml {
public:
    /// Throws XmlError when the file cannot be read, is larger than InputFile's limit or is not well-formed.
    /// \param path "-" stands for the standard input.
    static std::unique_ptr<XmlDocument> fromFile(std::string const& path);

    /// As fromFile, from text in memory; `name` stands for the file in messages.
    static std::unique_ptr<XmlDocument> fromText(std::string const& text, std::string const& name);

    ~XmlDocument() override;
    XmlDocument(XmlDocument const&) = delete;
    XmlDocument& operator=(XmlDocument const&) = delete;

    xmlNodeSetPtr find(std::string const& xpath) override;

    /// The tree itself, for tools. As it may be changed from then on, find() walks all of it for every
    /// later query.
    xmlDocPtr getDocument() const;

    /// The file name or the name given to fromText.
    std::string const& getName() const;

private:
    struct Implementation;
    explicit XmlDocument(std::unique_ptr<Implementation> implementation);
    std::unique_ptr<Implementation> _implementation;
};

} // namespace reference_host
