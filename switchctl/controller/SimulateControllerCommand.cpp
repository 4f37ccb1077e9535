#include "switchctl/controller/SimulateControllerCommand.hpp"

#include <unistd.h>

#include <cerrno>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <system_error>

#include "board/BoardSession.hpp"
#include "board/StartUpFailure.hpp"
#include "chips/ToolError.hpp"
#include "reference_host/XmlDocument.hpp"
#include "simulation/SerialController.hpp"

namespace switchctl::controller {

using reference_host::XmlDocument;
using simulation::SimulatedBoard;

namespace {

constexpr char const* freshBoard = "<switches><switch id='0' switchModel='vsc7390'/></switches>";

/// Another name for the device while it is served.
class Link {
public:
    Link(std::string const& device, std::string const& path) : _path(path) {
        if (!_path.empty() && symlink(device.c_str(), _path.c_str()) != 0) {
            throw ToolError(ExitStatus::noHardware, _path + ": " + std::generic_category().message(errno));
        }
    }
    ~Link() {
        if (!_path.empty()) {
            unlink(_path.c_str());
        }
    }
    Link(Link const&) = delete;
    Link& operator=(Link const&) = delete;

private:
    std::string _path;
};

} // namespace

SimulateControllerCommand::SimulateControllerCommand()
    : Command("simulate-controller", "Serve a simulated VSC7390 on a serial line until interrupted") {}

void SimulateControllerCommand::declare(Arguments& arguments) {
    auto const document = arguments.option("BOARD.xml", _documentPath, "Board to bring up first");
    arguments.flag("--fresh", _fresh, "Just a VSC7390 after reset").excludes(document);
    arguments.option("--link", _link, "Make PATH a link to the line's device").type("PATH");
    _faults.addTo(arguments);
    addJson(arguments);
    arguments.finally([this] {
        if (!_fresh && _documentPath.empty()) {
            throw Arguments::Wrong("needs BOARD.xml or --fresh");
        }
    });
}

std::string SimulateControllerCommand::getHelp() const {
    return "Example:\n"
           "  switchctl simulate-controller --fresh --link /tmp/line &\n"
           "  switchctl register read serial --device /tmp/line system/CHIPID\n"
           "\n";
}

std::vector<Command::StatusLine> SimulateControllerCommand::getStatuses() const {
    return {{ExitStatus::success, "interrupted"},
            ExitStatus::usage,
            ExitStatus::badDocument,
            {ExitStatus::noHardware, "the document has no VSC7390, or PATH cannot be made"},
            {ExitStatus::startUpFailed, "the simulated board does not come up"}};
}

// Serves the line until the process is told to end (SIGINT, SIGTERM).
ExitStatus SimulateControllerCommand::perform(std::ostream& out, std::ostream& /*errors*/) const {
    EndSignals const signals;
    try {
        _fresh ? serveFresh(signals, out) : serveDocument(signals, out);
    } catch (std::out_of_range const& error) {
        throw ToolError(ExitStatus::noHardware, _documentPath + ": " + error.what());
    }
    return ExitStatus::success;
}

void SimulateControllerCommand::serveFresh(EndSignals const& signals, std::ostream& out) const {
    auto const document = XmlDocument::fromText(freshBoard, "board");
    SimulatedBoard board(*document);
    serve(board, signals, out);
}

void SimulateControllerCommand::serveDocument(EndSignals const& signals, std::ostream& out) const {
    auto const document = XmlDocument::fromFile(_documentPath);
    board::BoardSession::Options options;
    options.simulate = true;
    board::BoardSession session(*document, options);
    board::StartUpMonitor::Outcome const outcome = session.bringUp();
    if (!outcome.populated) {
        throw ToolError(ExitStatus::startUpFailed, board::startUpFailureText(_documentPath, outcome.reason));
    }
    serve(*session.getBoard(), signals, out);
}

void SimulateControllerCommand::serve(SimulatedBoard& board, EndSignals const& signals,
                                      std::ostream& out) const {
    simulation::SerialController controller(board);
    _faults.strike(board, &controller);
    Link const link(controller.getDevicePath(), _link);
    // Nobody would find a line whose name is lost.
    if (isJson()) {
        print(out, {{"device", controller.getDevicePath()}});
    } else {
        out << controller.getDevicePath() << '\n';
    }
    if (out.flush()) {
        signals.wait();
    }
}

} // namespace switchctl::controller
