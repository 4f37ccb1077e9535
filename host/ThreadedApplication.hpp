#pragma once

#include "host/Application.hpp"

class Threads;

/// An application whose parts run on threads of their own.
class ThreadedApplication : public Application {
public:
    ~ThreadedApplication() override;

    /// The registry that the library's threads join. It must outlive them.
    virtual Threads& getThreads() = 0;
};
