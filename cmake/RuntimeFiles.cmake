# What makes the folder of the binaries complete, so that it runs when copied to a Windows machine: the compiler's
# shared runtime, stripped, and the help pages.
set(runtimeFiles)

foreach(library libstdc++-6.dll libgcc_s_seh-1.dll libwinpthread-1.dll)
  execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${library}
                  OUTPUT_VARIABLE source OUTPUT_STRIP_TRAILING_WHITESPACE)
  if(NOT EXISTS ${source})
    message(FATAL_ERROR "${CMAKE_CXX_COMPILER} does not know where ${library} is")
  endif()
  set(target ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/${library})
  add_custom_command(OUTPUT ${target}
                     COMMAND ${CMAKE_COMMAND} -E make_directory ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}
                     COMMAND ${CMAKE_STRIP} --strip-unneeded -o ${target} ${source}
                     DEPENDS ${source} VERBATIM)
  list(APPEND runtimeFiles ${target})
endforeach()

file(GLOB_RECURSE helpFiles CONFIGURE_DEPENDS RELATIVE ${PROJECT_SOURCE_DIR} ${PROJECT_SOURCE_DIR}/help/*)
foreach(file ${helpFiles})
  set(target ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/${file})
  add_custom_command(OUTPUT ${target}
                     COMMAND ${CMAKE_COMMAND} -E copy ${PROJECT_SOURCE_DIR}/${file} ${target}
                     DEPENDS ${PROJECT_SOURCE_DIR}/${file} VERBATIM)
  list(APPEND runtimeFiles ${target})
endforeach()

add_custom_target(RuntimeFiles ALL DEPENDS ${runtimeFiles})
