#pragma once

/// How a port shares the chip's buffer pool.
class MiscellaneousPoolControl {
public:
    /// \param first, second, third 0 to 63, the fields of the upper three bytes.
    /// \param selection 0 to 15.
    /// \param enable 0 or 1.
    MiscellaneousPoolControl(unsigned char first, unsigned char second, unsigned char third,
                             unsigned char selection, unsigned char enable);

    /// The register as a whole.
    unsigned int value() const { return _value; }

private:
    unsigned int _value;
};
