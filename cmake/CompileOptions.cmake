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
set(CMAKE_CXX_FLAGS_DEBUG "-g") # and the optimisation that a preset asks for
