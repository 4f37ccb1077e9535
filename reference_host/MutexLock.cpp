#include "host/MutexLock.hpp"

#include "host/Mutex.hpp"

MutexLock::MutexLock(Mutex& mutex) : _mutex(mutex) {
    _mutex.lock();
}

MutexLock::~MutexLock() {
    _mutex.unlock();
}
