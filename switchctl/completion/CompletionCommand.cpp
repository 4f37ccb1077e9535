#include "switchctl/completion/CompletionCommand.hpp"

#include "switchctl/completion/CompletionScripts.hpp"
#include "switchctl/completion/ValueCandidates.hpp"

namespace switchctl::completion {

namespace {

constexpr char const* candidates = "candidates";

} // namespace

CompletionCommand::CompletionCommand(Arguments const& program)
    : Command("completion", "Print what a shell loads to complete command lines"), _program(program) {}

void CompletionCommand::declare(Arguments& arguments) {
    arguments.option("SHELL", _shell, "Whose script is printed; \"candidates\" is for the scripts")
        .oneOf({"bash", "zsh", "fish", candidates})
        .required();
    arguments.option("WORD", _line, "Of candidates: the line behind the program's name, up to the cursor");
}

std::string CompletionCommand::getHelp() const {
    return "Commands, options, files, ports of the document, registers, fields and listed values are\n"
           "completed. An installation has the scripts where the shells look for them.\n"
           "\n"
           "Examples:\n"
           "  source <(switchctl completion bash)\n"
           "  source <(switchctl completion zsh)\n"
           "  switchctl completion fish | source\n"
           "\n";
}

std::vector<Command::StatusLine> CompletionCommand::getStatuses() const {
    return {{ExitStatus::success, "printed"}, ExitStatus::usage};
}

ExitStatus CompletionCommand::perform(std::ostream& out, std::ostream& /*errors*/) const {
    if (_shell == candidates) {
        printCandidates(out);
    } else {
        out << CompletionScripts::getAll().at(_shell);
    }
    return ExitStatus::success;
}

/// The first line tells a shell whether it is to look for files itself.
void CompletionCommand::printCandidates(std::ostream& out) const {
    Expectation const expected = _program.expect(_line);
    std::string const current = _line.empty() ? "" : _line.back();
    out << (ValueCandidates::areFiles(expected.getValue()) ? "files" : "words") << '\n';
    std::vector<std::string> words = expected.getWords();
    std::string const& prefix = expected.getPrefix();
    for (std::string const& value :
         ValueCandidates(_line).get(expected.getValue(), current.substr(prefix.size()))) {
        words.push_back(prefix + value);
    }
    for (std::string const& word : words) {
        if (word.rfind(current, 0) == 0) {
            out << word << '\n';
        }
    }
}

} // namespace switchctl::completion
