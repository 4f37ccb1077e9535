#pragma once

#include <stdexcept>
#include <string>

namespace switchctl::draw {

/// Graphviz's program `dot`, run as a child.
class Graphviz {
public:
    /// Why there is no picture.
    class Error : public std::runtime_error {
    public:
        using std::runtime_error::runtime_error;
    };

    /// \param program name or path of the program.
    explicit Graphviz(std::string program = "dot");

    /// \return the graph as a picture.
    /// \param format "svg", or what else the program knows.
    /// Throws Error.
    std::string render(std::string const& graph, std::string const& format) const;

private:
    std::string _program;
};

} // namespace switchctl::draw
