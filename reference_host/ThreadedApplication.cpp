#include "host/ThreadedApplication.hpp"

ThreadedApplication::~ThreadedApplication() = default;
