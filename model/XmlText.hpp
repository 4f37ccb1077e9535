#pragma once

#include <libxml/tree.h>

#include <memory>

/// A text that libxml2 has copied out of the document: an attribute's value or an element's content.
/// Absent when the document does not have it.
class XmlText {
public:
    /// The value of an attribute of `node`.
    static XmlText attribute(xmlNode const* node, char const* name);

    /// The whole text within an element.
    static XmlText content(xmlNode const* node);

    bool isPresent() const { return _text != nullptr; }

    /// Exact, case-sensitive comparison. An absent text equals nothing.
    bool equals(char const* other) const;

    /// The text, empty when it is absent.
    char const* text() const;

    /// The text as a message shows it: "(null)" when it is absent.
    char const* printable() const;

    /// Reads a decimal number from the start of the text, behind blanks and a sign. One that does not fit is
    /// the nearest one that does.
    /// \return false, with `value` left alone, when there is none.
    bool parseDecimal(int& value) const;

    /// Reads a hexadecimal number, with or without "0x", from the start of the text, behind blanks and a
    /// sign. A negative one counts back from 2^32; one that does not fit, of either sign, is the largest.
    /// \return false, with `value` left alone, when there is none.
    bool parseHexadecimal(unsigned int& value) const;

    /// The decimal number at the start of the text, as parseDecimal() reads it, 0 when there is none,
    /// `ifAbsent` when the text itself is not there.
    int toInteger(int ifAbsent) const;

private:
    struct Free {
        void operator()(xmlChar* text) const { xmlFree(text); }
    };
    explicit XmlText(xmlChar* text) : _text(text) {}
    std::unique_ptr<xmlChar, Free> _text;
};
