# SPDX-License-Identifier: Apache-2.0
include(CMakeFindDependencyMacro)
find_dependency(Qt6 6.4 COMPONENTS Core DBus)
include(${CMAKE_CURRENT_LIST_DIR}/KestinTargets.cmake)
