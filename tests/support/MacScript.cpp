#include "tests/support/MacScript.hpp"

namespace test_support {

bool MacScript::read(unsigned int offset, unsigned int& value) {
    Access const* const access = _table.take(gets(offset, 0));
    if (access == nullptr || access->fails) {
        return false;
    }
    value = access->value;
    return true;
}

bool MacScript::write(unsigned int offset, unsigned int value) {
    Access const* const access = _table.take(sets(offset, value));
    return access != nullptr && !access->fails;
}

} // namespace test_support
