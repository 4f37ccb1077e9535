#include "chips/Counter.hpp"

#include <iterator>
#include <stdexcept>

namespace chips {

namespace {

using Unit = Counter::Unit;

constexpr unsigned bitsOf88e6096Counter = 32;
constexpr unsigned bitsOf88e6096Register = 16;
constexpr unsigned bitsOfVsc7390Register = 32;

constexpr Counter inUnit(char const* name, char const* metric, Unit unit, unsigned low, char const* help,
                         std::optional<unsigned> high = std::nullopt) {
    return {name, metric, help, unit, Counter::Place::statisticsUnit, low, high, bitsOf88e6096Counter};
}

constexpr Counter inPort(char const* name, char const* metric, Unit unit, unsigned low, char const* help,
                         std::optional<unsigned> high = std::nullopt) {
    return {name, metric, help, unit, Counter::Place::portRegister, low, high, bitsOf88e6096Register};
}

constexpr Counter inMac(char const* name, char const* metric, Unit unit, unsigned address, char const* help) {
    return {
        name, metric, help, unit, Counter::Place::portRegister, address, std::nullopt, bitsOfVsc7390Register};
}

constexpr Counter countersOf88e6096[] = {
    inUnit("inGoodOctets", "in_good", Unit::bytes, 0x00, "Bytes of good frames received.", 0x01),
    inUnit("inBadOctets", "in_bad", Unit::bytes, 0x02, "Bytes of bad frames received."),
    inUnit("inUnicast", "in_unicast", Unit::frames, 0x04, "Good unicast frames received."),
    inUnit("inBroadcast", "in_broadcast", Unit::frames, 0x06, "Good broadcast frames received."),
    inUnit("inMulticast", "in_multicast", Unit::frames, 0x07, "Good multicast frames received."),
    inUnit("inPause", "in_pause", Unit::frames, 0x16, "Flow control frames received."),
    inUnit("inUndersized", "in_undersized", Unit::frames, 0x18, "Frames received that were too short."),
    inUnit("inFragments", "in_fragment", Unit::frames, 0x19,
           "Frames received that were too short and had a wrong checksum."),
    inUnit("inOversized", "in_oversized", Unit::frames, 0x1A, "Frames received that were too long."),
    inUnit("inJabber", "in_jabber", Unit::frames, 0x1B,
           "Frames received that were too long and had a wrong checksum."),
    inUnit("inRxErr", "in_receive_error", Unit::frames, 0x1C,
           "Frames during which the receiver signalled an error."),
    inUnit("inFCSErr", "in_checksum_error", Unit::frames, 0x1D, "Frames received with a wrong checksum."),
    inPort("inDiscards", "in_discarded", Unit::frames, 0x10,
           "Good frames received that there was no room to keep.", 0x11),
    inPort("inFiltered", "in_filtered", Unit::frames, 0x12,
           "Good frames received that a rule kept from being forwarded."),
    inUnit("octets64", "size_64", Unit::frames, 0x08, "Frames of 64 bytes."),
    inUnit("octets65to127", "size_65_to_127", Unit::frames, 0x09, "Frames of 65 to 127 bytes."),
    inUnit("octets128to255", "size_128_to_255", Unit::frames, 0x0A, "Frames of 128 to 255 bytes."),
    inUnit("octets256to511", "size_256_to_511", Unit::frames, 0x0B, "Frames of 256 to 511 bytes."),
    inUnit("octets512to1023", "size_512_to_1023", Unit::frames, 0x0C, "Frames of 512 to 1023 bytes."),
    inUnit("octets1024toMax", "size_1024_to_max", Unit::frames, 0x0D, "Frames of 1024 bytes and more."),
    inUnit("outOctets", "out", Unit::bytes, 0x0E, "Bytes sent.", 0x0F),
    inUnit("outUnicast", "out_unicast", Unit::frames, 0x10, "Unicast frames sent."),
    inUnit("outBroadcast", "out_broadcast", Unit::frames, 0x13, "Broadcast frames sent."),
    inUnit("outMulticast", "out_multicast", Unit::frames, 0x12, "Multicast frames sent."),
    inUnit("outPause", "out_pause", Unit::frames, 0x15, "Flow control frames sent."),
    inUnit("deferred", "deferred", Unit::frames, 0x05, "Frames that had to wait for the line."),
    inUnit("collisions", "collision", Unit::events, 0x1E, "Collisions."),
    inUnit("single", "single_collision", Unit::frames, 0x14, "Frames sent after one collision."),
    inUnit("multiple", "multiple_collision", Unit::frames, 0x17,
           "Frames sent after more than one collision."),
    inUnit("excessive", "excessive_collision", Unit::frames, 0x11,
           "Frames given up after too many collisions."),
    inUnit("late", "late_collision", Unit::events, 0x1F, "Collisions when more than 64 bytes had been sent."),
    inUnit("outFcsErr", "out_checksum_error", Unit::frames, 0x03, "Frames sent with a wrong checksum."),
    inPort("outFiltered", "out_filtered", Unit::frames, 0x13,
           "Frames that a rule kept from being sent here."),
};

constexpr Counter countersOfVsc7390[] = {
    inMac("inGoodandBadOctets", "in_good_and_bad", Unit::bytes, 0x50, "Bytes of all frames received."),
    inMac("inGoodandBadPackets", "in_good_and_bad", Unit::frames, 0x52, "All frames received."),
    inMac("inMulticastBroadCast", "in_multicast_and_broadcast", Unit::frames, 0x53,
          "Multicast and broadcast frames received."),
    inMac("inErrorPackets", "in_error", Unit::frames, 0x54, "Bad frames received."),
    inMac("inTotalDrops", "in_dropped", Unit::frames, 0x55, "Frames received that were dropped."),
    inMac("inClassifiedClass3Qos", "in_class_3", Unit::frames, 0x56, "Frames received of QoS class 3."),
    inMac("outGoodandBadOctets", "out_good_and_bad", Unit::bytes, 0x51, "Bytes of all frames sent."),
    inMac("outGoodandBadPackets", "out_good_and_bad", Unit::frames, 0x57, "All frames sent."),
    inMac("outMulticastBroadCast", "out_multicast_and_broadcast", Unit::frames, 0x58,
          "Multicast and broadcast frames sent."),
    inMac("outErrorPackets", "out_error", Unit::frames, 0x59, "Bad frames sent."),
    inMac("outTotalDrops", "out_dropped", Unit::frames, 0x5A, "Frames to be sent that were dropped."),
    inMac("outClassifiedClass3Qos", "out_class_3", Unit::frames, 0x5B, "Frames sent of QoS class 3."),
};

} // namespace

char const* Counter::getUnitName() const {
    switch (unit) {
    case Unit::bytes:
        return "bytes";
    case Unit::frames:
        return "frames";
    case Unit::events:
        break;
    }
    return "events";
}

std::string Counter::getFamily() const {
    return std::string("switch_port_") + metric + "_" + getUnitName();
}

std::vector<Counter> const& Counter::ofChip(std::string const& model) {
    static std::vector<Counter> const marvell(std::begin(countersOf88e6096), std::end(countersOf88e6096));
    static std::vector<Counter> const vitesse(std::begin(countersOfVsc7390), std::end(countersOfVsc7390));
    if (model == "88e6096") {
        return marvell;
    }
    if (model == "vsc7390") {
        return vitesse;
    }
    throw std::out_of_range("no counters of a \"" + model + "\"");
}

} // namespace chips
