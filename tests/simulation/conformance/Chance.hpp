#pragma once

#include <cstdint>
#include <initializer_list>
#include <random>

#include "tests/simulation/Frames.hpp"

namespace simulation_test {

/// What tests leave to chance: the same again for the same seed.
class Chance {
public:
    explicit Chance(unsigned seed) : _generator(seed) {}

    /// 0 to `end` - 1.
    unsigned below(unsigned end) { return static_cast<unsigned>(_generator() % end); }
    bool percent(unsigned share) { return below(100) < share; }
    template <typename Value> Value oneOf(std::initializer_list<Value> values) {
        return values.begin()[below(static_cast<unsigned>(values.size()))];
    }
    /// Bits of `mask`, each as likely 1 as 0.
    std::uint32_t bits(std::uint32_t mask) { return static_cast<std::uint32_t>(_generator()) & mask; }
    /// Bits of `mask`, most of them 1.
    std::uint32_t manyBits(std::uint32_t mask) { return bits(mask) | bits(mask) | bits(mask); }

    /// One of eight stations.
    Frames::Frame::Address station() { return Frames::stationA + below(8); }
    /// 1 to 5.
    unsigned vid() { return 1 + below(5); }

    /// A frame between them, or to groups of any kind; now and then one that no port takes.
    Frames::Frame frame() {
        Frames::Frame::Address const to =
            percent(60) ? station()
                        : oneOf<Frames::Frame::Address>({Frames::broadcast, Frames::group, Frames::ipGroup,
                                                         0x0180C2000000, 0x0180C2000021, 0x0180C2000001, 0});
        unsigned const type = percent(5) ? 0x8808 : 0x0800;
        auto frame = Frames::Frame::make(to, percent(95) ? station() : Frames::group, type);
        for (unsigned tags = oneOf({0, 0, 1, 1, 2}); tags != 0; --tags) {
            frame = Frames::tagged(frame, percent(90) ? vid() : oneOf({0, 6}), below(8));
        }
        if (percent(80)) {
            return frame;
        }
        return Frames::sized(oneOf({60, 64, 300, 1518, 1522, 1523, 1526, 1600}),
                             percent(90) ? Frames::Frame::Fcs::good : Frames::Frame::Fcs::bad, frame);
    }

private:
    std::mt19937 _generator;
};

} // namespace simulation_test
