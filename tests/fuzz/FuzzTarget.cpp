#include "tests/fuzz/FuzzTarget.hpp"

#include <stdexcept>

#include "tests/fuzz/DocumentTarget.hpp"
#include "tests/fuzz/MulticastAddressTarget.hpp"
#include "tests/fuzz/ReaderTarget.hpp"
#include "tests/fuzz/SerialReplyTarget.hpp"

namespace fuzz {

std::vector<FuzzTarget> const& FuzzTarget::getAll() {
    static std::vector<FuzzTarget> const targets = {
        {"document", &DocumentTarget::run, true},
        {"multicast", &MulticastAddressTarget::run, false},
        {"serial", &SerialReplyTarget::run, false},
        {"readers", &ReaderTarget::run, false},
    };
    return targets;
}

FuzzTarget const& FuzzTarget::find(std::string const& name) {
    for (FuzzTarget const& target : getAll()) {
        if (target.name == name) {
            return target;
        }
    }
    throw std::out_of_range("no target is called " + name);
}

} // namespace fuzz
