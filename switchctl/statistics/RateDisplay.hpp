#pragma once

#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "switchctl/statistics/RateView.hpp"
#include "switchctl/terminal/Colours.hpp"
#include "switchctl/terminal/Terminal.hpp"

namespace switchctl::statistics {

/// Shows what counters went on by: on a terminal in place, as far as there is room; elsewhere one round
/// after the other.
class RateDisplay : public RateView {
public:
    /// \param out must outlive the display.
    explicit RateDisplay(std::ostream& out);

    /// \param descriptor of the terminal that `out` leads to; -1 for none.
    RateDisplay(std::ostream& out, int descriptor);

    void begin(double seconds) override;
    void show(chips::CounterSample const& before, chips::CounterSample const& after, double seconds) override;
    bool isWritten() const override { return !_out.fail(); }

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
