#include <condition_variable>
#include <iostream>
#include <mutex>

#include "manager/SwitchManager.hpp"
#include "reference_host/DeviceMemory.hpp"
#include "reference_host/HostApplication.hpp"
#include "reference_host/StreamLog.hpp"
#include "reference_host/XmlDocument.hpp"

int main(int argc, char** argv) try {
    reference_host::StreamLog log(std::cerr);
    reference_host::DeviceMemory memory; // the board's registers, through /dev/mem
    reference_host::HostApplication application(log, memory);
    auto const document = reference_host::XmlDocument::fromFile(argc > 1 ? argv[1] : "board.xml");

    SwitchManager manager(application, *document, false, false);
    std::vector<std::function<void()>> phyCallbacks;
    manager.phyInterfaceParsedCallbackfunctions(phyCallbacks);

    std::mutex mutex;
    std::condition_variable populated;
    bool ready = false;
    std::vector<std::function<void()>> populatedCallbacks{[&] {
        std::lock_guard<std::mutex> const lock(mutex);
        ready = true;
        populated.notify_one();
    }};
    manager.start(populatedCallbacks);
    phyCallbacks.front()(); // the host's PHY interfaces are set up

    std::unique_lock<std::mutex> lock(mutex);
    populated.wait(lock, [&] { return ready; });
    std::cout << manager.getManagedSwitchesCount() << " switches are up\n";

    application.getThreads().endEventLoops(); // before the manager goes
} catch (std::exception const& error) {
    std::cerr << error.what() << '\n';
    return 1;
}
