#include "switchctl/terminal/Colours.hpp"

#include "switchctl/terminal/Terminal.hpp"

namespace switchctl {

namespace {

char const* codeOf(Colours::Colour colour) {
    switch (colour) {
    case Colours::Colour::bold:
        return "\033[1m";
    case Colours::Colour::red:
        return "\033[31m";
    case Colours::Colour::green:
        return "\033[32m";
    case Colours::Colour::yellow:
        return "\033[33m";
    case Colours::Colour::cyan:
        break;
    }
    return "\033[36m";
}

constexpr char const* plain = "\033[0m";

} // namespace

Colours::Colours(std::ostream const& stream) : Colours(Terminal::descriptorOf(stream)) {}

Colours::Colours(int descriptor) : _areShown(Terminal::hasColoursAt(descriptor)) {}

std::string Colours::paint(Colour colour, std::string const& text) const {
    return _areShown ? codeOf(colour) + text + plain : text;
}

} // namespace switchctl
