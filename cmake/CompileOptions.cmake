# How every target of the project is compiled: warnings are errors, the exact arithmetic is kept
# (a fused multiply-add would give wrong integers), sanitizers on request.
add_library(quoril_options INTERFACE)
target_compile_options(quoril_options INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror -ffp-contract=off)
target_include_directories(quoril_options INTERFACE ${CMAKE_SOURCE_DIR}/src)

if(QUORIL_SANITIZE)
  target_compile_options(quoril_options INTERFACE
    -fsanitize=${QUORIL_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(quoril_options INTERFACE -fsanitize=${QUORIL_SANITIZE})
  # The choice of an instruction set at load time runs before a sanitizer is ready.
  target_compile_definitions(quoril_options INTERFACE QUORIL_NO_CLONES)
endif()

set(CMAKE_CXX_FLAGS_RELEASE "-O3 -DNDEBUG")
set(CMAKE_CXX_FLAGS_DEBUG "-g")
# For the sanitizers: as fast as they get, with the lines that their reports name.
set(CMAKE_CXX_FLAGS_SANITIZE "-O1 -g1")

# quoril_precompile(target header...): headers from elsewhere that most sources of a target include.
# Only for g++: what clang builds, the sanitizer round and the linter, shows that each source includes
# what it needs.
function(quoril_precompile target)
  if(CMAKE_CXX_COMPILER_ID STREQUAL GNU)
    target_precompile_headers(${target} PRIVATE ${ARGN})
  endif()
endfunction()
# quoril_precompiled_as(target other): takes what was precompiled for another target, which must be
# compiled with the same options.
function(quoril_precompiled_as target other)
  if(CMAKE_CXX_COMPILER_ID STREQUAL GNU)
    target_precompile_headers(${target} REUSE_FROM ${other})
  endif()
endfunction()
