#pragma once

#include <libxml/xmlwriter.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace switchctl::draw {

/// Writes a picture in SVG, element by element, into a text.
class SvgWriter {
public:
    using Attributes = std::vector<std::pair<char const*, std::string>>;

    /// \throws std::bad_alloc when there is no memory, as all operations.
    SvgWriter();

    /// Begins an element; the next ones are in it until it is closed.
    void open(char const* name, Attributes const& attributes = {});
    void close();

    /// An element with nothing in it, or with a text.
    void add(char const* name, Attributes const& attributes, std::string const& text = "");

    /// Closes what is open.
    /// \return the document; nothing can be written any more.
    std::string finish();

private:
    static void require(int result);

    std::unique_ptr<xmlBuffer, decltype(&xmlBufferFree)> _buffer;
    std::unique_ptr<xmlTextWriter, decltype(&xmlFreeTextWriter)> _writer;
};

} // namespace switchctl::draw
