#include "switchctl/new/NewCommand.hpp"

#include "board/OutputFile.hpp"

namespace switchctl::draft {

namespace {

/// What is refused of an option is an error that names it.
void takeOption(char const* option, std::function<void()> const& take) {
    try {
        take();
    } catch (BoardDraft::Refused const& error) {
        throw ToolError(ExitStatus::usage, std::string(option) + ": " + error.what());
    }
}

} // namespace

NewCommand::NewCommand(std::istream* answers)
    : Command("new", "Write the document of a board"), _answers(answers) {}

void NewCommand::declare(Arguments& arguments) {
    arguments.option("--chip", _chips, "A switch: its id and its model. May be repeated")
        .type("ID=MODEL")
        .oneEach();
    arguments.option("--cpu", _cpu, "The processor's port").type("PORT");
    arguments
        .option("--link", _links,
                "What a port is connected to, if not to an external socket. May be repeated")
        .type("PORT=KIND")
        .oneEach();
    arguments
        .option("--from-vlans", _vlans,
                "A VLAN, decimal, and its ports; \"t\" behind those whose frames have tags. May be repeated")
        .type("VLAN=PORT[t],...")
        .oneEach();
    arguments.option("-o,--output", _output, "The file to write, instead of the standard output")
        .type("FILE");
}

std::string NewCommand::getHelp() const {
    return "Without --chip, asks on a terminal; an answer that does not do is asked for again. What would\n"
           "make \"switchctl check\" warn is refused with the reason: VLANs from 10 on, since the library\n"
           "reads their ids in two ways; a VSC7390 beside other chips, and tags on one.\n"
           "\n"
           "Examples:\n"
           "  switchctl new -o board.xml\n"
           "  switchctl new --chip 0=88e6096 --cpu 0.0 --from-vlans 2=0.0t,0.1,0.2,0.8t -o board.xml\n"
           "  switchctl new --chip 2=vsc7390 --cpu 2.0 --link 2.1=smac --link 2.2=smac --from-vlans "
           "3=2.1,2.2\n"
           "\n";
}

std::vector<Command::StatusLine> NewCommand::getStatuses() const {
    return {{ExitStatus::success, "written"},
            {ExitStatus::usage, "an option is missing or does not do"},
            {ExitStatus::noPicture, "the file could not be written"}};
}

ExitStatus NewCommand::perform(std::ostream& out, std::ostream& errors) const {
    if (_chips.empty() && _answers == nullptr) {
        throw ToolError(ExitStatus::usage, "--chip: is missing, and there is no terminal to ask on");
    }
    BoardDraft const draft = _chips.empty() ? fromAnswers(errors) : fromOptions();
    board::OutputFile file(_output, out, ExitStatus::noPicture);
    file.getStream() << draft.getText();
    file.finish();
    return ExitStatus::success;
}

BoardDraft NewCommand::fromOptions() const {
    BoardDraft draft;
    for (std::string const& text : _chips) {
        takeOption("--chip", [&] { draft.addChip(text); });
    }
    if (!_cpu.empty()) {
        takeOption("--cpu", [&] { draft.setCpu(_cpu); });
    }
    for (std::string const& text : _links) {
        takeOption("--link", [&] { draft.addLink(text); });
    }
    for (std::string const& text : _vlans) {
        takeOption("--from-vlans", [&] { draft.addVlan(text); });
    }
    takeOption(_cpu.empty() ? "--cpu" : "--from-vlans", [&] { draft.requireComplete(); });
    return draft;
}

/// Questions go where complaints go, since the standard output may be the document.
BoardDraft NewCommand::fromAnswers(std::ostream& questions) const {
    BoardDraft draft;
    ask(questions, "switch, ID=MODEL (88e6096 or vsc7390), for example 0=88e6096", false,
        [&](std::string const& text) { draft.addChip(text); });
    ask(questions, "another switch, or nothing", true, [&](std::string const& text) { draft.addChip(text); });
    ask(questions, "the processor's port, for example 0.0", false,
        [&](std::string const& text) { draft.setCpu(text); });
    ask(questions, "a port that is no external socket, for example 0.10=switchInterlink, or nothing", true,
        [&](std::string const& text) { draft.addLink(text); });
    ask(questions, "a VLAN and its ports, t for tags, for example 2=0.1,0.2,0.8t, or nothing", true,
        [&](std::string const& text) { draft.addVlan(text); });
    takeOption("the answers", [&] { draft.requireComplete(); });
    return draft;
}

/// \param isMany ends with an empty answer; otherwise one that does is needed.
void NewCommand::ask(std::ostream& questions, std::string const& question, bool isMany,
                     Take const& take) const {
    for (;;) {
        questions << question << ": " << std::flush;
        std::string answer;
        if (!std::getline(*_answers, answer)) {
            throw ToolError(ExitStatus::usage, "the answers ended before the board was complete");
        }
        if (answer.empty() && isMany) {
            return;
        }
        try {
            take(answer);
            if (!isMany) {
                return;
            }
        } catch (BoardDraft::Refused const& error) {
            questions << error.what() << '\n';
        }
    }
}

} // namespace switchctl::draft
