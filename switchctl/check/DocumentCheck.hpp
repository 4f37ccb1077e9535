#pragma once

#include <optional>
#include <vector>

#include "reference_host/XmlDocument.hpp"
#include "switchctl/check/Finding.hpp"

namespace switchctl::check {

/// Everything that the checks find in one document.
class DocumentCheck {
public:
    /// Runs all checks.
    explicit DocumentCheck(reference_host::XmlDocument& document);

    /// By line; of one line, in the order of the table of checks.
    std::vector<Finding> const& getFindings() const { return _findings; }

    std::size_t count(Severity severity) const;

    /// Nothing when there is no finding.
    std::optional<Severity> getWorst() const;

private:
    std::vector<Finding> _findings;
};

} // namespace switchctl::check
