#include "host/SystemLogInterface.hpp"

SystemLogInterface::~SystemLogInterface() = default;
