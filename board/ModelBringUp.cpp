#include "board/ModelBringUp.hpp"

#include "board/StartUpFailure.hpp"
#include "chips/ToolError.hpp"

namespace board {

ModelBringUp::ModelBringUp(std::string const& path)
    : _path(path), _xml(reference_host::XmlDocument::fromFile(path)) {
    bringUp(*_xml);
}

ModelBringUp::ModelBringUp(Xml& document, std::string const& path, Past const& past) : _path(path) {
    bringUp(document, past);
}

void ModelBringUp::bringUp(Xml& document, Past const& past) {
    BoardSession::Options options;
    options.simulate = true;
    _document = std::make_unique<BoardReading>(document);
    _session = std::make_unique<BoardSession>(document, options);
    if (past) {
        past(getBoard());
        getBoard().getLog().clear();
    }
    StartUpMonitor::Outcome const outcome = _session->bringUp();
    if (!outcome.populated) {
        throw chips::ToolError(chips::ExitStatus::startUpFailed, startUpFailureText(_path, outcome.reason));
    }
    if (_document->getWanted().empty()) {
        throw chips::ToolError(chips::ExitStatus::startUpFailed, _path + ": no switch in the document");
    }
    if (!_session->isComplete(*_document)) {
        std::string text = _path + ": not every switch would come up";
        for (std::string const& skipped : getBoard().getSkippedSwitches()) {
            text += "\n  " + skipped;
        }
        throw chips::ToolError(chips::ExitStatus::startUpFailed, text);
    }
}

simulation::SimulatedBoard& ModelBringUp::getBoard() {
    return *_session->getBoard();
}

BoardSession::Effort const& ModelBringUp::getEffort() const {
    return _session->getEffort();
}

std::string ModelBringUp::getModel(unsigned switchId) const {
    for (BoardReading::Wanted const& entry : _document->getWanted()) {
        if (entry.id == switchId) {
            return entry.model;
        }
    }
    return "";
}

} // namespace board
