#pragma once

/// When a port's receive buffer asks the other side to pause, and when to go on.
class FlowControlWatermarks {
public:
    /// \param first 0 to 63, the upper field of the register; \param second likewise, the lower one.
    FlowControlWatermarks(unsigned char first, unsigned char second);

    /// The register as a whole.
    unsigned int value() const { return _value; }

private:
    unsigned int _value;
};
