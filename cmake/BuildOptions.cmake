# What every target of the project is compiled with.

set(SWITCHMANAGER_SANITIZE "" CACHE STRING "Sanitizers, as for -fsanitize= (address,undefined or thread)")
option(SWITCHMANAGER_COVERAGE "Count executed lines and branches" OFF)
option(SWITCHMANAGER_FUZZ "Build what libFuzzer runs (clang only)" OFF)
option(SWITCHMANAGER_WARNINGS_AS_ERRORS "Stop at the first compiler warning" OFF)

add_library(build_options INTERFACE)
target_compile_options(build_options INTERFACE
    -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual)

if(CMAKE_CXX_COMPILER_ID MATCHES Clang)
    # The register accessors must stay replaceable by the process that loads the library.
    target_compile_options(build_options INTERFACE -fsemantic-interposition)
endif()
if(CMAKE_UNITY_BUILD)
    # A source that is included in another one is no header, and what it names may be a local name there.
    target_compile_options(build_options INTERFACE -Wno-subobject-linkage -Wno-shadow)
endif()
if(SWITCHMANAGER_WARNINGS_AS_ERRORS)
    target_compile_options(build_options INTERFACE -Werror)
endif()
if(SWITCHMANAGER_SANITIZE)
    target_compile_options(build_options INTERFACE
        -fsanitize=${SWITCHMANAGER_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(build_options INTERFACE -fsanitize=${SWITCHMANAGER_SANITIZE})
endif()
if(SWITCHMANAGER_FUZZ)
    target_compile_options(build_options INTERFACE -fsanitize=fuzzer-no-link)
endif()
if(SWITCHMANAGER_COVERAGE)
    target_compile_options(build_options INTERFACE --coverage -fprofile-update=atomic)
    target_link_options(build_options INTERFACE --coverage)
endif()
