#include "switchctl/terminal/StandardStreams.hpp"

#include <fcntl.h>
#include <unistd.h>

#include <initializer_list>

namespace switchctl {

// Each open() takes the lowest number that is free, and a file opened the wrong way round refuses all use.
void StandardStreams::keepClosed() {
    for (int const descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (::fcntl(descriptor, F_GETFD) < 0) {
            ::open("/dev/null", descriptor == STDIN_FILENO ? O_WRONLY : O_RDONLY); // NOLINT: stays open
        }
    }
}

} // namespace switchctl
