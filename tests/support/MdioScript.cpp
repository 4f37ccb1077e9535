#include "tests/support/MdioScript.hpp"

namespace test_support {

bool MdioScript::frameRead(unsigned int address, unsigned int registerNumber, unsigned short& value) {
    Access const* const access = _table.take(frameReads(address, registerNumber, 0));
    if (access == nullptr || access->fails) {
        return false;
    }
    value = static_cast<unsigned short>(access->value);
    return true;
}

bool MdioScript::frameWrite(unsigned int address, unsigned int registerNumber, unsigned short value) {
    Access const* const access = _table.take(frameWrites(address, registerNumber, value));
    return access != nullptr && !access->fails;
}

} // namespace test_support
