#pragma once

class Mutex;

/// Holds a Mutex from construction to destruction.
class MutexLock {
public:
    explicit MutexLock(Mutex& mutex);
    ~MutexLock();
    MutexLock(MutexLock const&) = delete;
    MutexLock& operator=(MutexLock const&) = delete;

private:
    Mutex& _mutex;
};
