#pragma once

#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "chips/PortCounters.hpp"
#include "switchctl/terminal/Colours.hpp"
#include "switchctl/terminal/Terminal.hpp"

namespace switchctl::statistics {

/// Shows what counters went on by: on a terminal in place, as far as there is room; elsewhere one round
/// after the other.
class RateDisplay {
public:
    /// \param out must outlive the display.
    explicit RateDisplay(std::ostream& out);

    /// \param descriptor of the terminal that `out` leads to; -1 for none.
    RateDisplay(std::ostream& out, int descriptor);

    /// Says on a terminal that the first rates take that long.
    void begin(double seconds);

    /// The rates between two samples of the same ports.
    /// \param seconds between the two.
    void show(chips::CounterSample const& before, chips::CounterSample const& after, double seconds);

    /// Whether what was shown could be written.
    bool isWritten() const { return !_out.fail(); }

private:
    std::vector<std::string> getLines(chips::CounterSample const& before, chips::CounterSample const& after,
                                      double seconds) const;
    /// \return whether there is anything to tell.
    bool addPort(chips::PortCounters const& before, chips::PortCounters const& after, double seconds,
                 std::vector<std::string>& lines) const;
    void redraw(std::vector<std::string> lines, Terminal::Size const& size);

    std::ostream& _out;
    int _descriptor;
    Colours _colours;
    unsigned _rounds = 0;
};

} // namespace switchctl::statistics
