# Settings of every target of the project: language level, warnings as errors, sanitizers on the native target.
add_library(ProjectOptions INTERFACE)
target_compile_features(ProjectOptions INTERFACE cxx_std_20)
target_compile_options(ProjectOptions INTERFACE
  $<$<COMPILE_LANGUAGE:CXX>:-Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wnon-virtual-dtor -Woverloaded-virtual
                            -Wcast-qual -Wformat=2 -Wimplicit-fallthrough -Werror>)
target_include_directories(ProjectOptions INTERFACE ${PROJECT_SOURCE_DIR})

if(WIN32)
  # Windows 10 is the oldest system served.
  target_compile_definitions(ProjectOptions INTERFACE UNICODE _UNICODE _WIN32_WINNT=0x0A00 NOMINMAX WIN32_LEAN_AND_MEAN STRICT)
  # Reproducible binaries; the build id lets a crash dump name the exact module.
  target_link_options(ProjectOptions INTERFACE -Wl,--no-insert-timestamp -Wl,--build-id)
else()
  set(PAVISE_SANITIZERS address,undefined CACHE STRING "The sanitizers that native programs are built with, if any")
  if(PAVISE_SANITIZERS)
    # All of a program, GoogleTest included: the sanitizer for threads must see everything that they do.
    add_compile_options(-fsanitize=${PAVISE_SANITIZERS} -fno-sanitize-recover=all)
    add_link_options(-fsanitize=${PAVISE_SANITIZERS})
  endif()
endif()
