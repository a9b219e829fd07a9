# SPDX-License-Identifier: Apache-2.0
# 32-bit ARM (Debian's armhf): the compiler of Debian 12, and the headers and libraries that scripts/arm puts into
# build/sysroot-armhf. The programs are run by emulation where a build has to run them.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR arm)
set(CMAKE_LIBRARY_ARCHITECTURE arm-linux-gnueabihf)
set(CMAKE_CXX_COMPILER ${CMAKE_LIBRARY_ARCHITECTURE}-g++)
# No notes on code of GCC before 7.1, of which nothing here is. What GCC 12 takes for uses after a delete is the `this`
# that destructors return on ARM.
set(CMAKE_CXX_FLAGS_INIT "-Wno-psabi -Wno-use-after-free")

get_filename_component(CMAKE_SYSROOT ${CMAKE_CURRENT_LIST_DIR}/../build/sysroot-armhf ABSOLUTE)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
set(ENV{PKG_CONFIG_SYSROOT_DIR} ${CMAKE_SYSROOT})
set(ENV{PKG_CONFIG_LIBDIR} ${CMAKE_SYSROOT}/usr/lib/${CMAKE_LIBRARY_ARCHITECTURE}/pkgconfig:${CMAKE_SYSROOT}/usr/share/pkgconfig)

# moc and what else runs while building is that of the building machine.
set(QT_HOST_PATH /usr)
file(GLOB QT_HOST_PATH_CMAKE_DIR /usr/lib/*-linux-gnu/cmake/Qt6HostInfo)
get_filename_component(QT_HOST_PATH_CMAKE_DIR "${QT_HOST_PATH_CMAKE_DIR}" DIRECTORY)

set(CMAKE_CROSSCOMPILING_EMULATOR qemu-arm-static;-L;${CMAKE_SYSROOT})
