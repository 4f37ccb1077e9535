#include "AuditBench.hpp"

using switchctl::audit::AuditedBoard;
using switchctl::audit::AuditRun;
using switchctl::audit::Deviation;
using switchctl::plan::ModelBringUp;

AuditBench::AuditBench(std::string const& example)
    : _path(pathOf(example)), _chips(std::make_unique<ModelBringUp>(_path)) {}

simulation::SimulatedBoard& AuditBench::getBoard() {
    return _chips->getBoard();
}

switchctl::plan::ModelBringUp& AuditBench::getBringUp() {
    return *_chips;
}

std::vector<std::string> AuditBench::audit() {
    std::unique_ptr<AuditRun> run;
    {
        ModelBringUp expected(_path);
        run = std::make_unique<AuditRun>(expected);
    }
    AuditedBoard board(_chips->getBoard());
    run->compare(board);
    _unread = run->getUnread();
    std::vector<std::string> lines;
    for (Deviation const& deviation : run->getDeviations()) {
        std::ostringstream line;
        deviation.print(line);
        std::string const text = line.str();
        lines.push_back(text.substr(0, text.find('\n')));
    }
    return lines;
}

std::vector<std::string> const& AuditBench::getUnread() const {
    return _unread;
}

std::string AuditBench::pathOf(std::string const& example) {
    return std::string(EXAMPLES_FOLDER) + "/" + example + ".xml";
}
