# SPDX-License-Identifier: Apache-2.0
# What every target of the project has in common stands here once.

add_library(kestin_options INTERFACE)
target_include_directories(kestin_options INTERFACE ${PROJECT_SOURCE_DIR})
target_compile_definitions(kestin_options INTERFACE QT_NO_CAST_FROM_ASCII QT_NO_FOREACH QT_NO_KEYWORDS
                                                    KESTIN_VERSION="${PROJECT_VERSION}")
target_compile_options(kestin_options INTERFACE -pthread -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor
                                                $<$<BOOL:${KESTIN_WERROR}>:-Werror>)
# What is shipped is small rather than unrolled, and without what nobody calls.
string(REPLACE -O3 -O2 CMAKE_CXX_FLAGS_RELEASE "${CMAKE_CXX_FLAGS_RELEASE}")
target_compile_options(kestin_options INTERFACE -ffunction-sections -fdata-sections)
target_link_options(kestin_options INTERFACE -Wl,--gc-sections)
# Optimised when it is linked, GCC 12 sees Qt's containers asking for more than there is, which they have checked.
if(CMAKE_INTERPROCEDURAL_OPTIMIZATION AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  target_link_options(kestin_options INTERFACE -Wno-alloc-size-larger-than)
endif()

# What makes a fault hard to use for an attack; tests/packaging/hardened looks for it. Only an optimiser knows the sizes
# that _FORTIFY_SOURCE wants, and a sanitizer knows better.
target_compile_options(kestin_options INTERFACE -fstack-protector-strong
  $<$<NOT:$<BOOL:$<TARGET_PROPERTY:POSITION_INDEPENDENT_CODE>>>:-fPIE>)
target_link_options(kestin_options INTERFACE -Wl,-z,relro,-z,now
  $<$<STREQUAL:$<TARGET_PROPERTY:TYPE>,EXECUTABLE>:-pie>)
if(KESTIN_SANITIZE)
  target_compile_options(kestin_options INTERFACE -fsanitize=${KESTIN_SANITIZE} -fno-omit-frame-pointer
                                                  -fno-sanitize-recover=all)
  target_link_options(kestin_options INTERFACE -fsanitize=${KESTIN_SANITIZE})
else()
  target_compile_options(kestin_options INTERFACE
    "$<$<CONFIG:Release,RelWithDebInfo,MinSizeRel>:-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=2>")
endif()

# Qt's headers are most of what a build compiles: once for the project, and once more for the tests, whose literals are
# plain. A source names what it uses all the same; scripts/lint reads it without.
set(kestin_headers
  <QtCore/QCoreApplication> <QtCore/QDateTime> <QtCore/QDir> <QtCore/QFile> <QtCore/QHash> <QtCore/QList> <QtCore/QMap>
  <QtCore/QObject> <QtCore/QSet> <QtCore/QStringList> <QtCore/QTimer> <QtCore/QVariant>
  <QtDBus/QDBusArgument> <QtDBus/QDBusConnection> <QtDBus/QDBusMessage> <QtDBus/QDBusMetaType> <QtDBus/QDBusReply>
  <algorithm> <array> <chrono> <functional> <memory> <optional>)
# A target whose headers, and those that are named, others take with kestin_precompile; these have at least its
# definitions, or GCC refuses.
function(kestin_prelude name)
  file(CONFIGURE OUTPUT prelude.cpp CONTENT "")
  add_library(${name} OBJECT EXCLUDE_FROM_ALL ${CMAKE_CURRENT_BINARY_DIR}/prelude.cpp)
  set_target_properties(${name} PROPERTIES AUTOMOC OFF)
  target_link_libraries(${name} PRIVATE kestin_options Qt6::Core)
  target_include_directories(${name} SYSTEM PRIVATE $<TARGET_PROPERTY:Qt6::DBus,INTERFACE_INCLUDE_DIRECTORIES>)
  target_precompile_headers(${name} PRIVATE ${kestin_headers} ${ARGN})
endfunction()

if(KESTIN_PRECOMPILE)
  kestin_prelude(kestin_prelude)
endif()

# What is loaded later is compiled in another way than what is linked, and GCC refuses the headers. A source includes
# what moc makes of its class, so moc's own file is empty, and reading the headers for it would take longest.
function(kestin_precompile name prelude)
  set_source_files_properties(${CMAKE_CURRENT_BINARY_DIR}/${name}_autogen/mocs_compilation.cpp
    PROPERTIES SKIP_PRECOMPILE_HEADERS ON)
  get_target_property(is_loaded ${name} POSITION_INDEPENDENT_CODE)
  if(KESTIN_PRECOMPILE AND NOT is_loaded)
    target_precompile_headers(${name} REUSE_FROM ${prelude})
  endif()
endfunction()

# A static library of one folder; includes are written from the root of the project.
function(kestin_library name)
  add_library(${name} STATIC ${ARGN})
  target_link_libraries(${name} PUBLIC $<BUILD_INTERFACE:kestin_options>)
  kestin_precompile(${name} kestin_prelude)
endfunction()

# A program, installed with the others.
function(kestin_program name)
  add_executable(${name} ${ARGN})
  target_link_libraries(${name} PRIVATE kestin_options)
  kestin_precompile(${name} kestin_prelude)
  install(TARGETS ${name} RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
endfunction()
