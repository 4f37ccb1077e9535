#pragma once

#include <libxml/tree.h>

#include <cstddef>
#include <random>
#include <string>
#include <vector>

namespace fuzz {

/// Changes a configuration document the way people do: elements that come, go and move, attributes
/// with other values, other readings of numbers. The result is well-formed.
class DocumentMutator {
public:
    explicit DocumentMutator(unsigned seed);

    /// \return the changed document; empty when the text is not a document, or the result is longer
    ///         than that.
    std::string mutate(std::string const& text, std::size_t longest);

private:
    void change(xmlDocPtr document);
    void addElement(xmlNodePtr parent);
    void setAttribute(xmlNodePtr element);
    static void removeElement(xmlNodePtr element, xmlDocPtr document);
    void copyElement(xmlNodePtr element, std::vector<xmlNodePtr> const& elements);
    void setText(xmlNodePtr element);

    std::size_t below(std::size_t count);
    std::string oneOf(std::vector<std::string> const& values);

    std::mt19937 _random;
};

} // namespace fuzz
