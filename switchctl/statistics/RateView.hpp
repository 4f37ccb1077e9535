#pragma once

#include "chips/PortCounters.hpp"

namespace switchctl::statistics {

/// What a watch shows its rates on.
class RateView {
public:
    virtual ~RateView() = default;

    /// Says that the first rates take that long, where somebody looks.
    virtual void begin(double seconds) = 0;

    /// The rates between two samples of the same ports.
    /// \param seconds between the two.
    virtual void show(chips::CounterSample const& before, chips::CounterSample const& after,
                      double seconds) = 0;

    /// Whether what was shown could be written.
    virtual bool isWritten() const = 0;
};

} // namespace switchctl::statistics
