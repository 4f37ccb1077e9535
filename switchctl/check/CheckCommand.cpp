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

ExitStatus statusOf(DocumentCheck const& check) {
    switch (check.getWorst().value_or(Severity::note)) {
    case Severity::error:
        return ExitStatus::badDocument;
    case Severity::warning:
        return ExitStatus::documentWarnings;
    default:
        return ExitStatus::success;
    }
}

} // namespace

CheckCommand::CheckCommand() : Command("check", "Say what the library will make of a board's document") {}

void CheckCommand::declare(Arguments& arguments) {
    auto const path = arguments.option("BOARD.xml", _documentPath, "Configuration document of the board");
    auto const list = arguments.flag("--list", _list, "List all checks instead").excludes(path);
    arguments.flag("--schema", _schema, "Print the RELAX NG schema instead").excludes(path).excludes(list);
    addJson(arguments);
    arguments.finally([this] {
        if (_schema && isJson()) {
            throw Arguments::Wrong("--schema: is printed as RELAX NG, not as json");
        }
        if (_documentPath.empty() && !_list && !_schema) {
            throw Arguments::Wrong("BOARD.xml is required");
        }
    });
}

std::string CheckCommand::getHelp() const {
    return "Examples:\n"
           "  switchctl check board.xml\n"
           "  switchctl check board.xml --json | jq '.findings[] | select(.severity == \"error\")'\n"
           "  switchctl check --list\n"
           "  switchctl check --schema > board.rng\n"
           "\n";
}

std::vector<Command::StatusLine> CheckCommand::getStatuses() const {
    return {
        {ExitStatus::success, "nothing was found, or notes only"},
        ExitStatus::usage,
        {ExitStatus::badDocument, "errors were found, or the document cannot be read or is not well-formed"},
        {ExitStatus::documentWarnings, "warnings were found, and no errors"}};
}

ExitStatus CheckCommand::perform(std::ostream& out, std::ostream& errors) const {
    if (_list) {
        return list(out);
    }
    if (_schema) {
        out << BoardSchema::text();
        return ExitStatus::success;
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
    if (isJson()) {
        print(out, findingsAsJson(_documentPath, check));
    } else {
        printFindings(out, _documentPath, check);
    }
    return statusOf(check);
}

ExitStatus CheckCommand::list(std::ostream& out) const {
    if (isJson()) {
        print(out, checksAsJson());
    } else {
        printChecks(out);
    }
    return ExitStatus::success;
}

ExitStatus CheckCommand::refuse(std::string const& reason, std::ostream& out, std::ostream& errors) const {
    if (isJson()) {
        print(out, {{"file", _documentPath}, {"reason", reason}});
    }
    errors << "switchctl: " << reason << '\n';
    return ExitStatus::badDocument;
}

} // namespace switchctl::check
