#include "vitesse/MiscellaneousPoolControl.hpp"

#include "vitesse/WatermarkFields.hpp"

MiscellaneousPoolControl::MiscellaneousPoolControl(unsigned char first, unsigned char second,
                                                   unsigned char third, unsigned char selection,
                                                   unsigned char enable)
    : _value(vsc7390::watermark::byte3.of(first) | vsc7390::watermark::byte2.of(second) |
             vsc7390::watermark::byte1.of(third) | vsc7390::watermark::poolSelection.of(selection) |
             vsc7390::watermark::poolEnable.of(enable)) {}
