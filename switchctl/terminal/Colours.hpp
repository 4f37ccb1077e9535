#pragma once

#include <ostream>
#include <string>

namespace switchctl {

/// Colours for text, on terminals that are to have them; elsewhere the text alone.
class Colours {
public:
    enum class Colour { bold, red, green, yellow, cyan };

    /// For what is written to that stream.
    explicit Colours(std::ostream const& stream);

    /// For what is written to that file descriptor.
    explicit Colours(int descriptor);

    std::string paint(Colour colour, std::string const& text) const;

private:
    bool _areShown;
};

} // namespace switchctl
