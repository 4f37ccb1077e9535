#include "switchctl/draw/SvgWriter.hpp"

#include <new>

namespace switchctl::draw {

namespace {

xmlChar const* toXml(char const* text) {
    return reinterpret_cast<xmlChar const*>(text);
}

} // namespace

SvgWriter::SvgWriter()
    : _buffer(xmlBufferCreate(), &xmlBufferFree),
      _writer(xmlNewTextWriterMemory(_buffer.get(), 0), &xmlFreeTextWriter) {
    if (!_buffer || !_writer) {
        throw std::bad_alloc();
    }
    require(xmlTextWriterSetIndent(_writer.get(), 1));
    require(xmlTextWriterStartDocument(_writer.get(), nullptr, "UTF-8", nullptr));
}

void SvgWriter::require(int result) {
    if (result < 0) {
        throw std::bad_alloc();
    }
}

void SvgWriter::open(char const* name, Attributes const& attributes) {
    require(xmlTextWriterStartElement(_writer.get(), toXml(name)));
    for (auto const& [attribute, value] : attributes) {
        require(xmlTextWriterWriteAttribute(_writer.get(), toXml(attribute), toXml(value.c_str())));
    }
}

void SvgWriter::close() {
    require(xmlTextWriterEndElement(_writer.get()));
}

void SvgWriter::add(char const* name, Attributes const& attributes, std::string const& text) {
    open(name, attributes);
    if (!text.empty()) {
        require(xmlTextWriterWriteString(_writer.get(), toXml(text.c_str())));
    }
    close();
}

std::string SvgWriter::finish() {
    require(xmlTextWriterEndDocument(_writer.get()));
    _writer.reset();
    return reinterpret_cast<char const*>(xmlBufferContent(_buffer.get()));
}

} // namespace switchctl::draw
