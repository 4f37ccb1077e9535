#pragma once

#include "chips/ChipCatalogue.hpp"
#include "chips/ChipKind.hpp"
#include "chips/vsc7390/WindowProbe.hpp"

namespace chips {

/// Looks for the VSC7390 of a board in its window, or at the far end of its serial line.
class VitesseExaminer {
public:
    /// All must outlive the examiner.
    VitesseExaminer(ChipKind const& kind, ChipKind::Reach const& reach, ExaminationRequest const& request);

    Examination run();

private:
    bool isOverLine() const { return !_reach.line.empty(); }
    unsigned getId() const { return _request.switches.front().id; }
    bool isGood() const { return _result.findings.empty(); }
    void add(Examination::Cause cause, std::string const& text, std::vector<std::string> const& measure);
    void refuseFurther();

    void examineWindow();
    void explainWord(std::uint32_t word);
    void examineFetch(WindowProbe& probe);
    void examineLine();
    void explainLine(std::string const& reply);
    void requireProduct(std::uint32_t word, std::string const& seen);
    void readPhys();
    bool readPhy(RegisterTransport& transport, unsigned port);

    ChipKind const& _kind;
    ChipKind::Reach const& _reach;
    ExaminationRequest const& _request;
    ChipCatalogue const _catalogue;
    Examination _result;
};

} // namespace chips
