// What the leak check of a test program is told not to report: the switch manager's multicast
// groups live until the process ends.
extern "C" char const* __lsan_default_suppressions(); // NOLINT: the sanitizer's name

extern "C" __attribute__((visibility("default"))) char const* __lsan_default_suppressions() { // NOLINT
    return "leak:SwitchManager::addMulticastGroup\n";
}
