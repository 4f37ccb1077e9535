#include "switchctl/check/DocumentCheck.hpp"

#include <algorithm>

#include "board/BoardReading.hpp"
#include "board/Element.hpp"
#include "switchctl/check/CheckTable.hpp"

namespace switchctl::check {

DocumentCheck::DocumentCheck(reference_host::XmlDocument& document) {
    board::BoardReading const board(document);
    for (Check const& check : allChecks()) {
        check.run(board, [&](xmlNodePtr element, std::string const& effect, std::string const& advice) {
            Finding finding;
            finding.check = check.name;
            finding.severity = check.severity;
            finding.file = document.getName();
            finding.line = static_cast<int>(xmlGetLineNo(element));
            finding.element = board::startTag(element);
            finding.label = board.getLabels().find(board::Labels::placeOf(element)).value_or("");
            finding.effect = effect;
            finding.advice = advice;
            _findings.push_back(finding);
        });
    }
    std::stable_sort(_findings.begin(), _findings.end(),
                     [](Finding const& a, Finding const& b) { return a.line < b.line; });
}

std::size_t DocumentCheck::count(Severity severity) const {
    return static_cast<std::size_t>(
        std::count_if(_findings.begin(), _findings.end(),
                      [severity](Finding const& finding) { return finding.severity == severity; }));
}

std::optional<Severity> DocumentCheck::getWorst() const {
    std::optional<Severity> worst;
    for (Finding const& finding : _findings) {
        worst = std::max(worst, std::optional<Severity>(finding.severity));
    }
    return worst;
}

} // namespace switchctl::check
