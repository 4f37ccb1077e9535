# GCC for the ARM920T: ARMv4T without a floating-point unit, soft-float calls. Libraries come from
# ARM920T_SYSROOT only, nothing from the building machine; scripts/target/arm920t-sysroot makes one.

set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR armv4t)
set(CMAKE_CXX_COMPILER arm-linux-gnueabi-g++)
set(CMAKE_LIBRARY_ARCHITECTURE arm-linux-gnueabi)

set(ARM920T_SYSROOT "${CMAKE_BINARY_DIR}/sysroot" CACHE PATH "Folder with the target's libraries and headers")
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES ARM920T_SYSROOT)
set(CMAKE_SYSROOT "${ARM920T_SYSROOT}")
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
set(ENV{PKG_CONFIG_DIR} "")
set(ENV{PKG_CONFIG_LIBDIR} "${ARM920T_SYSROOT}/usr/lib/arm-linux-gnueabi/pkgconfig:${ARM920T_SYSROOT}/usr/share/pkgconfig")
set(ENV{PKG_CONFIG_SYSROOT_DIR} "${ARM920T_SYSROOT}")

# Thumb code takes a quarter less room than ARM code.
set(CMAKE_CXX_FLAGS_INIT "-mcpu=arm920t -mfloat-abi=soft -mthumb -Wno-psabi")

# 64-bit atomic counters, of which the chip models have some, are calls. The library has none.
set(CMAKE_CXX_STANDARD_LIBRARIES_INIT "-Wl,--push-state,--as-needed -latomic -Wl,--pop-state")

# Debian's run-time libraries for armel are ARMv5TE, and an ARM926 is the oldest model that runs them.
find_program(ARM920T_EMULATOR qemu-arm)
if(ARM920T_EMULATOR)
    set(CMAKE_CROSSCOMPILING_EMULATOR "${ARM920T_EMULATOR};-cpu;arm926;-L;${ARM920T_SYSROOT}")
endif()
