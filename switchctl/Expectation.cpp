#include "switchctl/Expectation.hpp"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <regex>

namespace switchctl {

namespace {

bool takesValue(CLI::Option const& option) {
    return option.get_expected_min() > 0;
}

bool takesMany(CLI::Option const& option) {
    return option.get_items_expected_max() > 1 && option.get_allow_extra_args();
}

bool isOption(std::string const& word) {
    return word.size() > 1 && word[0] == '-';
}

/// The values that the parser's text about an option lists: "TEXT:{svg,png}", "N:UINT in [0 - 4]".
std::vector<std::string> listedIn(std::string const& type) {
    constexpr int most = 32;
    std::vector<std::string> values;
    std::smatch found;
    if (std::regex_search(type, found, std::regex(R"(\{(.*)\}$)"))) {
        std::string const list = found[1];
        values = CLI::detail::split(list, ',');
    } else if (std::regex_search(type, found, std::regex(R"(UINT in \[([0-9]{1,2}) - ([0-9]{1,2})\]$)"))) {
        int const lowest = std::stoi(found[1]);
        for (int value = lowest; value <= std::stoi(found[2]) && value < lowest + most; ++value) {
            values.push_back(std::to_string(value));
        }
    }
    return values;
}

} // namespace

Expectation::Expectation(CLI::App& program, std::vector<std::string> words) : _command(&program) {
    bool const isHelp = words.size() > 1 && words.front() == "help";
    if (isHelp) {
        words.erase(words.begin());
    }
    for (std::size_t index = 0; index + 1 < words.size(); ++index) {
        follow(words[index]);
    }
    if (isHelp) {
        addCommands();
    } else {
        finish(words.empty() ? "" : words.back());
    }
}

void Expectation::follow(std::string const& word) {
    if (_open != nullptr && !(takesMany(*_open) && isOption(word))) {
        _open = takesMany(*_open) ? _open : nullptr;
        return;
    }
    _open = nullptr;
    if (isOption(word)) {
        CLI::Option const* const option = findOption(word);
        _open = option != nullptr && takesValue(*option) ? option : nullptr;
        return;
    }
    auto const next = _command->get_subcommands([&](CLI::App const* app) { return app->get_name() == word; });
    if (next.empty()) {
        ++_positionals;
    } else {
        _command = next.front();
        _positionals = 0;
    }
}

void Expectation::finish(std::string const& current) {
    std::size_t const equals = current.find('=');
    bool const beginsOption = !current.empty() && current[0] == '-';
    CLI::Option const* const positional = getPositional();
    if (_open != nullptr && !(takesMany(*_open) && isOption(current))) {
        expectValueOf(*_open);
    } else if (isOption(current) && equals != std::string::npos) {
        CLI::Option const* const option = findOption(current.substr(0, equals));
        if (option != nullptr) {
            _prefix = current.substr(0, equals + 1);
            expectValueOf(*option);
        }
    } else if (!beginsOption && !_command->get_subcommands(nullptr).empty()) {
        addCommands();
    } else if (!beginsOption && positional != nullptr) {
        expectValueOf(*positional);
    } else {
        addOptions();
    }
}

void Expectation::addCommands() {
    for (CLI::App const* const command : _command->get_subcommands(nullptr)) {
        _words.push_back(command->get_name());
    }
}

void Expectation::addOptions() {
    for (CLI::Option const* const option : _command->get_options()) {
        for (std::string const& name : option->get_lnames()) {
            _words.push_back("--" + name);
        }
    }
}

void Expectation::expectValueOf(CLI::Option const& option) {
    std::string const type = option.get_type_name();
    auto const values = listedIn(type);
    for (std::string const& value : values) {
        _words.push_back(_prefix + value);
    }
    if (values.empty()) {
        _value = option.get_positional() ? option.get_name(true) : type;
    }
}

CLI::Option* Expectation::findOption(std::string const& name) const {
    auto const options =
        _command->get_options([&](CLI::Option const* option) { return option->check_name(name); });
    return options.empty() ? nullptr : options.front();
}

/// The one that the next value goes to; the last may take all that follow.
CLI::Option* Expectation::getPositional() const {
    auto const all =
        _command->get_options([](CLI::Option const* option) { return option->get_positional(); });
    if (_positionals < all.size()) {
        return all[_positionals];
    }
    return !all.empty() && takesMany(*all.back()) ? all.back() : nullptr;
}

} // namespace switchctl
