#include "tests/support/WordScript.hpp"

namespace test_support {

bool WordScript::read(unsigned int offset, unsigned int& value) {
    Access const* const access = _table.take(gets(offset, 0));
    if (access == nullptr || access->fails) {
        return false;
    }
    value = access->value;
    return true;
}

bool WordScript::write(unsigned int offset, unsigned int value) {
    Access const* const access = _table.take(sets(offset, value));
    return access != nullptr && !access->fails;
}

} // namespace test_support
