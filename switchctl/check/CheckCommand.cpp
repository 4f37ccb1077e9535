#include "switchctl/check/CheckCommand.hpp"

#include <memory>
#include <nlohmann/json.hpp>
#include <optional>

#include "reference_host/XmlDocument.hpp"
#include "switchctl/check/BoardSchema.hpp"
#include "switchctl/check/CheckReport.hpp"
#include "switchctl/check/DocumentCheck.hpp"
#include "switchctl/terminal/Progress.hpp"

namespace switchctl::check {

using reference_host::XmlDocument;

namespace {

chips::ExitStatus statusOf(DocumentCheck const& check) {
    switch (check.getWorst().value_or(Severity::note)) {
    case Severity::error:
        return chips::ExitStatus::badDocument;
    case Severity::warning:
        return chips::ExitStatus::documentWarnings;
    default:
        return chips::ExitStatus::success;
    }
}

std::string footer() {
    return "Examples:\n"
           "  switchctl check board.xml\n"
           "  switchctl check board.xml --json | jq '.findings[] | select(.severity == \"error\")'\n"
           "  switchctl check --list\n"
           "  switchctl check --schema > board.rng\n"
           "\n" +
           chips::checkExitStatusHelp();
}

} // namespace

CheckCommand::CheckCommand(CLI::App& program)
    : _command(program.add_subcommand("check", "Say what the library will make of a board's document")) {
    CLI::Option* const path =
        _command->add_option("BOARD.xml", _documentPath, "Configuration document of the board");
    CLI::Option* const list = _command->add_flag("--list", _list, "List all checks instead")->excludes(path);
    CLI::Option* const schema = _command->add_flag("--schema", _schema, "Print the RELAX NG schema instead")
                                    ->excludes(path)
                                    ->excludes(list);
    CLI::Option* const json = _command->add_flag("--json", _json, "Print JSON");
    schema->excludes(json);
    _command->footer(footer());
    _command->final_callback([this] {
        if (_documentPath.empty() && !_list && !_schema) {
            throw CLI::RequiredError("BOARD.xml");
        }
    });
}

bool CheckCommand::isChosen() const {
    return _command->parsed();
}

chips::ExitStatus CheckCommand::run(std::ostream& out, std::ostream& errors) const {
    if (_list) {
        return list(out);
    }
    if (_schema) {
        out << BoardSchema::text();
        return chips::ExitStatus::success;
    }
    std::unique_ptr<XmlDocument> document;
    try {
        document = XmlDocument::fromFile(_documentPath);
    } catch (reference_host::XmlError const& error) {
        return refuse(error.what(), out, errors);
    }
    std::optional<Progress> progress(std::in_place, errors, "checking " + _documentPath);
    DocumentCheck const check(*document);
    progress.reset();
    if (_json) {
        printFindingsAsJson(out, _documentPath, check);
    } else {
        printFindings(out, _documentPath, check);
    }
    return statusOf(check);
}

chips::ExitStatus CheckCommand::list(std::ostream& out) const {
    if (_json) {
        printChecksAsJson(out);
    } else {
        printChecks(out);
    }
    return chips::ExitStatus::success;
}

chips::ExitStatus CheckCommand::refuse(std::string const& reason, std::ostream& out,
                                       std::ostream& errors) const {
    if (_json) {
        nlohmann::ordered_json const json{{"file", _documentPath}, {"reason", reason}};
        out << json.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace) << '\n';
    }
    errors << "switchctl: " << reason << '\n';
    return chips::ExitStatus::badDocument;
}

} // namespace switchctl::check
