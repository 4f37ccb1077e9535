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

    /// Writes the graph as a picture.
    /// \param format "svg", or what else the program knows.
    /// Throws Error; the file is then left as it was, or not there.
    void render(std::string const& graph, std::string const& format, std::string const& path) const;

private:
    std::string _program;
};

} // namespace switchctl::draw
