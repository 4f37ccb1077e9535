#pragma once

#include <condition_variable>
#include <mutex>

/// Something that threads wait at until another one opens it.
class Gate {
public:
    void open() {
        std::lock_guard<std::mutex> const lock(_mutex);
        _open = true;
        _changed.notify_all();
    }

    void pass() {
        std::unique_lock<std::mutex> lock(_mutex);
        _changed.wait(lock, [this] { return _open; });
    }

private:
    std::mutex _mutex;
    std::condition_variable _changed;
    bool _open = false;
};
