#include "AuditBench.hpp"

using board::AuditRun;
using board::BoardAccess;
using board::Deviation;
using board::ModelBringUp;

AuditBench::AuditBench(std::string const& example)
    : _path(pathOf(example)), _chips(std::make_unique<board::ModelBringUp>(_path)) {}

simulation::SimulatedBoard& AuditBench::getBoard() {
    return _chips->getBoard();
}

board::ModelBringUp& AuditBench::getBringUp() {
    return *_chips;
}

std::vector<std::string> AuditBench::audit() {
    {
        board::ModelBringUp expected(_path);
        _run = std::make_unique<AuditRun>(expected, board::ChipScope::Extent::everything);
    }
    board::BoardAccess board(_chips->getBoard());
    _run->compare(board);
    std::vector<std::string> lines;
    for (Deviation const& deviation : _run->getDeviations()) {
        lines.push_back(deviation.getText());
    }
    return lines;
}

std::vector<std::string> const& AuditBench::getUnread() const {
    return _run->getUnread();
}

std::string AuditBench::pathOf(std::string const& example) {
    return std::string(EXAMPLES_FOLDER) + "/" + example + ".xml";
}
