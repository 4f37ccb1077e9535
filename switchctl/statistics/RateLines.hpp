#pragma once

#include <functional>
#include <nlohmann/json_fwd.hpp>
#include <ostream>
#include <string>

#include "switchctl/statistics/RateView.hpp"

namespace switchctl::statistics {

/// Rates for programs: one JSON object a line, each written at once.
class RateLines : public RateView {
public:
    /// Ends the line that it prints.
    using Printer = std::function<void(std::ostream& out, nlohmann::ordered_json const& json)>;

    /// \param out must outlive the lines.
    /// \param file the document.
    /// \param source what is read, in words.
    RateLines(std::ostream& out, Printer print, std::string file, std::string source);

    void begin(double /*seconds*/) override {}
    void show(chips::CounterSample const& before, chips::CounterSample const& after, double seconds) override;
    bool isWritten() const override { return !_out.fail(); }

private:
    std::ostream& _out;
    Printer _print;
    std::string _file;
    std::string _source;
};

} // namespace switchctl::statistics
