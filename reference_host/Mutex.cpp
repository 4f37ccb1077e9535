#include "host/Mutex.hpp"

#include <mutex>

struct Mutex::Implementation {
    explicit Implementation(std::string const& mutexName) : name(mutexName) {}

    std::string name;
    std::recursive_mutex mutex;
};

Mutex::Mutex(std::string const& name) : _implementation(std::make_unique<Implementation>(name)) {}

Mutex::~Mutex() = default;

void Mutex::lock() {
    _implementation->mutex.lock();
}

void Mutex::unlock() {
    _implementation->mutex.unlock();
}

std::string const& Mutex::getName() const {
    return _implementation->name;
}
