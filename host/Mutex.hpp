#pragma once

#include <memory>
#include <string>

/// A named mutual exclusion lock. The thread that holds it may take it again.
class Mutex {
public:
    explicit Mutex(std::string const& name);
    ~Mutex();
    Mutex(Mutex const&) = delete;
    Mutex& operator=(Mutex const&) = delete;

    void lock();
    void unlock();
    std::string const& getName() const;

private:
    struct Implementation;
    std::unique_ptr<Implementation> _implementation;
};
