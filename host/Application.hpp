#pragma once

#include "host/SystemLogInterface.hpp"

/// The host process as the library sees it: the place where messages go.
///
/// Owned by the host. It outlives every object of the library that was given a reference to it.
class Application : public SystemLogInterface {
public:
    ~Application() override;
};
