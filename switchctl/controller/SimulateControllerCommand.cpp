#include "switchctl/controller/SimulateControllerCommand.hpp"

#include <unistd.h>

#include <cerrno>
#include <stdexcept>
#include <system_error>

#include "board/BoardSession.hpp"
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
            throw chips::ToolError(chips::ExitStatus::noHardware,
                                   _path + ": " + std::generic_category().message(errno));
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

SimulateControllerCommand::SimulateControllerCommand(CLI::App& program)
    : _command(program.add_subcommand("simulate-controller",
                                      "Serve a simulated VSC7390 on a serial line until interrupted")) {
    CLI::Option* const document = _command->add_option("BOARD.xml", _documentPath, "Board to bring up first");
    _command->add_flag("--fresh", _fresh, "Just a VSC7390 after reset")->excludes(document);
    _command->add_option("--link", _link, "Make PATH a link to the line's device")->type_name("PATH");
    _command->final_callback([this] {
        if (!_fresh && _documentPath.empty()) {
            throw CLI::ValidationError("simulate-controller", "needs BOARD.xml or --fresh");
        }
    });
    _command->footer("Example:\n"
                     "  switchctl simulate-controller --fresh --link /tmp/line &\n"
                     "  switchctl register read serial --device /tmp/line system/CHIPID\n");
}

bool SimulateControllerCommand::isChosen() const {
    return _command->parsed();
}

chips::ExitStatus SimulateControllerCommand::run(std::ostream& out, std::ostream& errors) const {
    EndSignals const signals;
    try {
        _fresh ? serveFresh(signals, out) : serveDocument(signals, out);
    } catch (chips::ToolError const& error) {
        errors << "switchctl: " << error.what() << '\n';
        return error.getStatus();
    } catch (reference_host::XmlError const& error) {
        errors << "switchctl: " << error.what() << '\n';
        return chips::ExitStatus::badDocument;
    } catch (std::out_of_range const& error) {
        errors << "switchctl: " << _documentPath << ": " << error.what() << '\n';
        return chips::ExitStatus::noHardware;
    }
    return chips::ExitStatus::success;
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
        throw chips::ToolError(chips::ExitStatus::startUpFailed,
                               _documentPath + ": start-up failed: " + outcome.reason);
    }
    serve(*session.getBoard(), signals, out);
}

void SimulateControllerCommand::serve(SimulatedBoard& board, EndSignals const& signals,
                                      std::ostream& out) const {
    simulation::SerialController const controller(board);
    Link const link(controller.getDevicePath(), _link);
    out << controller.getDevicePath() << std::endl;
    signals.wait();
}

} // namespace switchctl::controller
