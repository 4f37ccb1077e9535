#include "switchctl/registers/OutputDiversion.hpp"

#include <iostream>

namespace switchctl {

OutputDiversion::OutputDiversion(std::ostream& elsewhere) : _before(std::cout.rdbuf(elsewhere.rdbuf())) {}

OutputDiversion::~OutputDiversion() {
    std::cout.rdbuf(_before);
}

} // namespace switchctl
