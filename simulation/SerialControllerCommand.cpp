#include "simulation/SerialControllerCommand.hpp"

#include <array>
#include <charconv>

namespace simulation {

namespace {

struct Operand {
    char const* name;
    std::uint32_t highest;
};

struct Syntax {
    char letter;
    SerialControllerCommand::Operation operation;
    std::vector<Operand> operands;
};

constexpr Operand block{"block", 15};
constexpr Operand subBlock{"sub-block", 15};
constexpr Operand address{"address", 255};
constexpr Operand value{"value", 0xFFFFFFFF};
constexpr Operand phy{"PHY", 31};
constexpr Operand phyRegister{"PHY register", 31};
constexpr Operand phyValue{"PHY value", 0xFFFF};

Syntax const* syntaxOf(char letter) {
    using Operation = SerialControllerCommand::Operation;
    static std::array<Syntax, 4> const all = {{
        {'r', Operation::readRegister, {block, subBlock, address}},
        {'w', Operation::writeRegister, {block, subBlock, address, value}},
        {'i', Operation::readPhy, {phy, phyRegister}},
        {'o', Operation::writePhy, {phy, phyRegister, phyValue}},
    }};
    for (Syntax const& syntax : all) {
        if (syntax.letter == letter) {
            return &syntax;
        }
    }
    return nullptr;
}

std::vector<std::string> wordsOf(std::string const& line) {
    std::vector<std::string> words;
    std::size_t start = 0;
    for (std::size_t blank = 0; (blank = line.find(' ', start)) != std::string::npos; start = blank + 1) {
        words.push_back(line.substr(start, blank - start));
    }
    words.push_back(line.substr(start));
    return words;
}

std::optional<std::uint32_t> decimal(std::string const& word) {
    bool const isPadded = word.size() > 1 && word.front() == '0';
    std::uint32_t number = 0;
    auto const [end, error] = std::from_chars(word.data(), word.data() + word.size(), number);
    if (word.empty() || isPadded || error != std::errc() || end != word.data() + word.size()) {
        return std::nullopt;
    }
    return number;
}

} // namespace

std::optional<SerialControllerCommand> SerialControllerCommand::parse(std::string const& line,
                                                                      std::string& reason) {
    std::vector<std::string> const words = wordsOf(line);
    Syntax const* const syntax = words.front().size() == 1 ? syntaxOf(words.front().front()) : nullptr;
    if (syntax == nullptr) {
        reason = "no such command";
        return std::nullopt;
    }
    if (words.size() != syntax->operands.size() + 1) {
        reason = "takes " + std::to_string(syntax->operands.size()) + " operands";
        return std::nullopt;
    }
    SerialControllerCommand command{syntax->operation, {}};
    for (std::size_t i = 0; i < syntax->operands.size(); ++i) {
        Operand const& operand = syntax->operands[i];
        std::optional<std::uint32_t> const number = decimal(words[i + 1]);
        if (!number || *number > operand.highest) {
            reason = std::string("the ") + operand.name + " is not a decimal number up to " +
                     std::to_string(operand.highest);
            return std::nullopt;
        }
        command.operands.push_back(*number);
    }
    return command;
}

} // namespace simulation
