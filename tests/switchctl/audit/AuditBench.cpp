#include "AuditBench.hpp"

using board::BoardAccess;
using board::ModelBringUp;
using switchctl::audit::AuditRun;
using switchctl::audit::Deviation;

AuditBench::AuditBench(std::string const& example)
    : _path(pathOf(example)), _chips(std::make_unique<board::ModelBringUp>(_path)) {}

simulation::SimulatedBoard& AuditBench::getBoard() {
    return _chips->getBoard();
}

board::ModelBringUp& AuditBench::getBringUp() {
    return *_chips;
}

std::vector<std::string> AuditBench::audit() {
    std::unique_ptr<AuditRun> run;
    {
        board::ModelBringUp expected(_path);
        run = std::make_unique<AuditRun>(expected);
    }
    board::BoardAccess board(_chips->getBoard());
    run->compare(board);
    _unread = run->getUnread();
    std::vector<std::string> lines;
    for (Deviation const& deviation : run->getDeviations()) {
        lines.push_back(deviation.getText());
    }
    return lines;
}

std::vector<std::string> const& AuditBench::getUnread() const {
    return _unread;
}

std::string AuditBench::pathOf(std::string const& example) {
    return std::string(EXAMPLES_FOLDER) + "/" + example + ".xml";
}
