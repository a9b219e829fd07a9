# SPDX-License-Identifier: Apache-2.0
# What every target of the project has in common stands here once.

add_library(kestin_options INTERFACE)
target_include_directories(kestin_options INTERFACE ${PROJECT_SOURCE_DIR})
target_compile_definitions(kestin_options INTERFACE QT_NO_CAST_FROM_ASCII QT_NO_FOREACH QT_NO_KEYWORDS
                                                    KESTIN_VERSION="${PROJECT_VERSION}")
target_compile_options(kestin_options INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor
                                                $<$<BOOL:${KESTIN_WERROR}>:-Werror>)
if(KESTIN_SANITIZE)
  target_compile_options(kestin_options INTERFACE -fsanitize=${KESTIN_SANITIZE} -fno-omit-frame-pointer
                                                  -fno-sanitize-recover=all)
  target_link_options(kestin_options INTERFACE -fsanitize=${KESTIN_SANITIZE})
endif()

# A static library of one folder; includes are written from the root of the project.
function(kestin_library name)
  add_library(${name} STATIC ${ARGN})
  target_link_libraries(${name} PUBLIC kestin_options)
endfunction()

# A program, installed with the others.
function(kestin_program name)
  add_executable(${name} ${ARGN})
  target_link_libraries(${name} PRIVATE kestin_options)
  install(TARGETS ${name} RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
endfunction()
