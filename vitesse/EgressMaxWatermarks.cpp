#include "vitesse/EgressMaxWatermarks.hpp"

#include "vitesse/WatermarkFields.hpp"

EgressMaxWatermarks::EgressMaxWatermarks(unsigned char class0, unsigned char class1, unsigned char class2,
                                         unsigned char class3)
    : _value(vsc7390::watermark::byte0.of(class0) | vsc7390::watermark::byte1.of(class1) |
             vsc7390::watermark::byte2.of(class2) | vsc7390::watermark::byte3.of(class3)) {}
