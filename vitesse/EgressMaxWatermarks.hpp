#pragma once

/// How much of a port's transmit buffer each class of traffic may fill.
class EgressMaxWatermarks {
public:
    /// The limits of classes 0 to 3, 0 to 63 each.
    EgressMaxWatermarks(unsigned char class0, unsigned char class1, unsigned char class2,
                        unsigned char class3);

    /// The register as a whole.
    unsigned int value() const { return _value; }

private:
    unsigned int _value;
};
