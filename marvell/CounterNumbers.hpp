#pragma once

/// The numbers of the 88E6096's captured counters, 32 bits each.
namespace counter_numbers {

enum CounterNumber : unsigned short {
    inGoodOctetsLow = 0x00,
    inGoodOctetsHigh = 0x01,
    inBadOctets = 0x02,
    outFcsErr = 0x03,
    inUnicast = 0x04,
    deferred = 0x05,
    inBroadcast = 0x06,
    inMulticast = 0x07,
    octets64 = 0x08,
    octets65To127 = 0x09,
    octets128To255 = 0x0A,
    octets256To511 = 0x0B,
    octets512To1023 = 0x0C,
    octets1024ToMax = 0x0D,
    outOctetsLow = 0x0E,
    outOctetsHigh = 0x0F,
    outUnicast = 0x10,
    excessive = 0x11,
    outMulticast = 0x12,
    outBroadcast = 0x13,
    single = 0x14,
    outPause = 0x15,
    inPause = 0x16,
    multiple = 0x17,
    inUndersize = 0x18,
    inFragments = 0x19,
    inOversize = 0x1A,
    inJabber = 0x1B,
    inRxErr = 0x1C,
    inFcsErr = 0x1D,
    collisions = 0x1E,
    late = 0x1F,
};

} // namespace counter_numbers
