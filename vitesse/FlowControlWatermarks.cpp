#include "vitesse/FlowControlWatermarks.hpp"

#include "vitesse/WatermarkFields.hpp"

FlowControlWatermarks::FlowControlWatermarks(unsigned char first, unsigned char second)
    : _value(vsc7390::watermark::byte1.of(first) | vsc7390::watermark::byte0.of(second)) {}
