#pragma once

#include <memory>
#include <set>
#include <string>
#include <vector>

#include "host/Xml.hpp"
#include "reference_host/XmlDocument.hpp"

namespace test_support {

/// A document written in the test itself, which remembers what it was asked for.
class TestDocument : public Xml {
public:
    explicit TestDocument(std::string const& text);
    ~TestDocument() override;

    xmlNodeSetPtr find(std::string const& xpath) override;

    /// From now on this query gets null, as if the host could not evaluate it.
    void answerNull(std::string const& xpath);

    /// Every query so far, in order.
    std::vector<std::string> const& queries() const { return _queries; }

    /// The outermost element.
    xmlNodePtr root() const;

private:
    std::unique_ptr<reference_host::XmlDocument> _document;
    std::set<std::string> _unanswered;
    std::vector<std::string> _queries;
};

} // namespace test_support
