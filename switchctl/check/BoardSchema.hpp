#pragma once

#include <libxml/relaxng.h>
#include <libxml/tree.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace switchctl::check {

/// The RELAX NG schema of configuration documents, built into the program from board.rng.
class BoardSchema {
public:
    BoardSchema();
    ~BoardSchema();
    BoardSchema(BoardSchema const&) = delete;
    BoardSchema& operator=(BoardSchema const&) = delete;

    /// The schema's text.
    static char const* text();

    /// What is wrong with the whole document, in the validator's words; empty when it is valid.
    std::vector<std::string> validate(xmlDocPtr document) const;

    /// What is wrong with one element's attributes and text by a definition of the schema, such as
    /// "switchPort". The elements in it are not looked at.
    std::vector<std::string> validate(xmlNodePtr element, std::string const& definition) const;

private:
    struct Freeing {
        void operator()(xmlRelaxNGPtr schema) const { xmlRelaxNGFree(schema); }
        void operator()(xmlDocPtr document) const { xmlFreeDoc(document); }
    };
    using Schema = std::unique_ptr<xmlRelaxNG, Freeing>;
    using Document = std::unique_ptr<xmlDoc, Freeing>;

    /// The element pattern of a definition.
    xmlNodePtr patternOf(std::string const& definition) const;

    /// A schema of which documents consist of one element with nothing but what `content` describes.
    Schema schemaOf(xmlNodePtr pattern, xmlNodePtr content) const;

    /// \param content the pattern of one attribute, or of the text.
    bool allows(xmlNodePtr pattern, xmlNodePtr content, xmlNodePtr element) const;

    static std::vector<std::string> run(xmlRelaxNGPtr schema, xmlDocPtr document);

    Document _source;
    Schema _schema;
};

} // namespace switchctl::check
