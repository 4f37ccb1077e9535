#include "tests/fuzz/DocumentTarget.hpp"

#include <sstream>
#include <stdexcept>

#include "board/BoardReading.hpp"
#include "board/BoardSession.hpp"
#include "reference_host/XmlDocument.hpp"

using board::BoardReading;
using board::BoardSession;
using chips::PortAddress;
using reference_host::XmlDocument;

namespace fuzz {

namespace {

std::unique_ptr<XmlDocument> parse(std::string const& input) {
    try {
        return XmlDocument::fromText(input, "input");
    } catch (reference_host::XmlError const&) {
        return nullptr;
    }
}

void require(bool condition, char const* what) {
    if (!condition) {
        throw std::logic_error(what);
    }
}

/// Every port that a member of the document might mean, some of which do not exist.
void askForStatistics(board::BoardSession& session, board::BoardReading const& board) {
    for (board::BoardReading::Wanted const& entry : board.getWanted()) {
        for (unsigned port : {0U, 1U, 10U, 23U, 24U, ~0U}) {
            std::ostringstream text;
            bool const isWritten = session.writeStatistics(chips::PortAddress{entry.id, port}, text);
            require(isWritten || text.str().empty(), "statistics that could not be read were written");
        }
    }
}

} // namespace

void DocumentTarget::run(std::string const& input) {
    auto const document = parse(input);
    if (document == nullptr) {
        return;
    }
    board::BoardReading const board(*document);
    board::BoardSession::Options options;
    options.simulate = true;
    board::BoardSession session(*document, options);
    auto const outcome = session.bringUp();
    require(outcome.populated || !outcome.reason.empty(), "start-up failed without a reason");
    require(!outcome.populated || session.getManager().getManagedSwitchesCount() <= board.getWanted().size(),
            "there are more switches than the document has");
    askForStatistics(session, board);
}

} // namespace fuzz
