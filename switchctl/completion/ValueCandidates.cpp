#include "switchctl/completion/ValueCandidates.hpp"

#include <algorithm>
#include <array>
#include <filesystem>
#include <map>
#include <utility>

#include "board/BoardReading.hpp"
#include "board/Wording.hpp"
#include "board/faults/FaultKind.hpp"
#include "chips/ChipCatalogue.hpp"
#include "chips/ChipKinds.hpp"
#include "chips/PortSettings.hpp"
#include "chips/ToolError.hpp"
#include "reference_host/XmlDocument.hpp"

namespace switchctl::completion {

namespace {

using Words = std::vector<std::string>;
using Switches = std::map<unsigned int, board::BoardReading::Switch>;

constexpr std::array<char const*, 10> files = {
    "BOARD.xml", "OTHER.xml", "OLD.xml", "FILE", "PATH", "A", "B", "DUMP", "[=OTHER.xml]", "[=BOARD.xml]"};
constexpr char const* phyUnit = "phy ";

/// As they are typed most easily: without blanks.
std::string withoutBlanks(std::string text) {
    text.erase(std::remove(text.begin(), text.end(), ' '), text.end());
    return text;
}

/// Of the first word that is a document.
Switches switchesIn(Words const& words) {
    for (std::string const& word : words) {
        std::string const path = word.rfind("--simulate=", 0) == 0 ? word.substr(word.find('=') + 1) : word;
        std::error_code error;
        // Others might never end.
        if (!std::filesystem::is_regular_file(path, error)) {
            continue;
        }
        try {
            auto const document = reference_host::XmlDocument::fromFile(path);
            return board::BoardReading(*document).getSwitches();
        } catch (reference_host::XmlError const&) { // NOLINT(bugprone-empty-catch): another file
        }
    }
    return {};
}

/// Units first, each with its "/", and then the registers of the one that is typed.
Words registersOf(std::string const& model, std::string const& typed, bool physOnly) {
    chips::ChipCatalogue const catalogue(model);
    bool const isUnitTyped = typed.find('/') != std::string::npos;
    Words candidates;
    for (chips::RegisterLocation const& location : catalogue.getAll()) {
        bool const isPhy = location.unit.rfind(phyUnit, 0) == 0;
        if (isPhy != physOnly) {
            continue;
        }
        std::string const unit =
            withoutBlanks(isPhy ? location.unit.substr(std::string(phyUnit).size()) : location.unit);
        std::string const candidate = unit + "/" + (isUnitTyped ? location.name : "");
        if (candidates.empty() || candidates.back() != candidate) {
            candidates.push_back(candidate);
        }
    }
    return candidates;
}

Words fieldsOf(std::string const& model, std::string const& typed, bool physOnly) {
    chips::ChipCatalogue const catalogue(model);
    std::string const text = typed.substr(0, typed.find(':'));
    Words candidates;
    try {
        auto const location = catalogue.find(text, physOnly);
        if (location.description != nullptr) {
            for (simulation::Register::Field const& field : location.description->getFields()) {
                candidates.push_back(text + ":" + field.name + "=");
            }
        }
    } catch (chips::ToolError const&) { // NOLINT(bugprone-empty-catch): no such register has fields
    }
    return candidates;
}

/// What may be assigned to: a register, or a field of it.
Words assignmentsOf(std::string const& model, std::string const& typed, bool physOnly) {
    if (typed.find(':') != std::string::npos) {
        return fieldsOf(model, typed, physOnly);
    }
    Words candidates;
    for (std::string const& location : registersOf(model, typed, physOnly)) {
        if (location.back() == '/') {
            candidates.push_back(location);
        } else {
            candidates.push_back(location + "=");
            candidates.push_back(location + ":");
        }
    }
    return candidates;
}

Words withPrefix(std::string const& prefix, Words words) {
    for (std::string& word : words) {
        word.insert(0, prefix);
    }
    return words;
}

} // namespace

ValueCandidates::ValueCandidates(Words words) : _words(std::move(words)) {}

bool ValueCandidates::areFiles(std::string const& value) {
    return std::find(files.begin(), files.end(), value) != files.end();
}

Words ValueCandidates::get(std::string const& value, std::string const& typed) const {
    using Operation = Words (ValueCandidates::*)(std::string const&) const;
    static std::map<std::string, Operation> const table = {
        {"LOCATION", &ValueCandidates::getRegisters},
        {"LOCATION...", &ValueCandidates::getRegisters},
        {"ASSIGNMENT", &ValueCandidates::getAssignments},
        {"KIND[:N]", &ValueCandidates::getFaults},
        {"SETTING", &ValueCandidates::getSettings},
        {"SWITCH/LOCATION=VALUE", &ValueCandidates::getDeviations},
        {"SWITCH.PORT/COUNTER=VALUE[+STEP]", &ValueCandidates::getSeeds},
    };
    if (value == "SWITCH.PORT") {
        return getPorts();
    }
    if (value == "SWITCH|SWITCH.PORT") {
        Words candidates = getPorts();
        for (auto const& entry : switchesIn(_words)) {
            candidates.push_back(std::to_string(entry.first));
        }
        return candidates;
    }
    auto const entry = table.find(value);
    return entry == table.end() ? Words() : (this->*entry->second)(typed);
}

Words ValueCandidates::getPorts() const {
    Words ports;
    for (auto const& [switchId, owner] : switchesIn(_words)) {
        for (auto const& entry : owner.ports) {
            ports.push_back(board::portAddress(static_cast<int>(switchId), static_cast<int>(entry.first)));
        }
    }
    return ports;
}

Words ValueCandidates::getRegisters(std::string const& typed) const {
    return registersOf(getModel(), typed, has("phy"));
}

Words ValueCandidates::getAssignments(std::string const& typed) const {
    return assignmentsOf(getModel(), typed, has("phy"));
}

/// By the words before the one that is typed.
Words ValueCandidates::getSettings(std::string const& /*typed*/) const {
    return chips::PortSettings::getNext({_words.begin(), _words.end() - 1});
}

Words ValueCandidates::getDeviations(std::string const& typed) const {
    Words candidates;
    std::size_t const slash = typed.find('/');
    for (auto const& [switchId, owner] : switchesIn(_words)) {
        std::string const prefix = std::to_string(switchId) + "/";
        if (slash == std::string::npos) {
            candidates.push_back(prefix);
        } else if (typed.substr(0, slash + 1) == prefix) {
            return withPrefix(prefix,
                              assignmentsOf(owner.kind->getFacts().model, typed.substr(slash + 1), false));
        }
    }
    return candidates;
}

/// Kinds, with a ":" where N has to follow; and then the switches and ports of the document.
Words ValueCandidates::getFaults(std::string const& typed) const {
    using Argument = board::FaultKind::Argument;
    std::string const name = typed.substr(0, typed.find(':'));
    board::FaultKind const* const kind = board::FaultKind::find(name);
    Words candidates;
    if (kind == nullptr || name.size() == typed.size()) {
        for (board::FaultKind const& offered : board::FaultKind::getAll()) {
            candidates.push_back(offered.name + (offered.needsArgument() ? ":" : ""));
        }
    } else if (kind->argument == Argument::port) {
        candidates = withPrefix(name + ":", getPorts());
    } else if (kind->argument == Argument::switchId) {
        for (auto const& [switchId, owner] : switchesIn(_words)) {
            candidates.push_back(name + ":" + std::to_string(switchId));
        }
    }
    return candidates;
}

Words ValueCandidates::getSeeds(std::string const& typed) const {
    Words candidates;
    std::size_t const slash = typed.find('/');
    for (auto const& [switchId, owner] : switchesIn(_words)) {
        for (auto const& entry : owner.ports) {
            std::string const prefix =
                board::portAddress(static_cast<int>(switchId), static_cast<int>(entry.first)) + "/";
            if (slash == std::string::npos) {
                candidates.push_back(prefix);
            } else if (typed.substr(0, slash + 1) == prefix) {
                for (chips::Counter const& counter : owner.kind->getFacts().counters) {
                    candidates.push_back(prefix + counter.name + "=");
                }
            }
        }
    }
    return candidates;
}

/// Of the chip that the transport leads to.
std::string ValueCandidates::getModel() const {
    using Transport = chips::ChipKind::Transport;
    bool const isSmi = has("smi") || (has("phy") && has("--switch"));
    return chips::ChipKinds::reachedOver(isSmi ? Transport::smi : Transport::parallel).getFacts().model;
}

bool ValueCandidates::has(char const* word) const {
    return std::find(_words.begin(), _words.end(), word) != _words.end();
}

} // namespace switchctl::completion
