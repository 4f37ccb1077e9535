#include "chips/Examination.hpp"

#include <stdexcept>

namespace chips {

std::string Examination::nameOf(Cause cause) {
    switch (cause) {
    case Cause::masterStuck:
        return "master stuck";
    case Cause::accessFails:
        return "access fails";
    case Cause::allOnes:
        return "all ones";
    case Cause::allZeros:
        return "all zeros";
    case Cause::unsteady:
        return "unsteady";
    case Cause::nothingThere:
        return "nothing there";
    case Cause::otherAddress:
        return "other address";
    case Cause::otherChip:
        return "other chip";
    case Cause::wrongStrap:
        return "wrong strap";
    case Cause::byteOrder:
        return "byte order";
    case Cause::chipStuck:
        return "chip stuck";
    case Cause::phyAbsent:
        return "PHY absent";
    case Cause::lineSilent:
        return "line silent";
    case Cause::lineGarbled:
        return "line garbled";
    case Cause::noPlace:
        return "no place";
    }
    throw std::logic_error("a cause without a name");
}

} // namespace chips
