#include "tests/support/TestDocument.hpp"

namespace test_support {

TestDocument::TestDocument(std::string const& text)
    : _document(reference_host::XmlDocument::fromText(text, "test document")) {}

TestDocument::~TestDocument() = default;

xmlNodeSetPtr TestDocument::find(std::string const& xpath) {
    _queries.push_back(xpath);
    return _unanswered.count(xpath) != 0 ? nullptr : _document->find(xpath);
}

void TestDocument::answerNull(std::string const& xpath) {
    _unanswered.insert(xpath);
}

xmlNodePtr TestDocument::root() const {
    return xmlDocGetRootElement(_document->getDocument());
}

} // namespace test_support
