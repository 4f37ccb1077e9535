#include "chips/Counter.hpp"

namespace chips {

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

} // namespace chips
