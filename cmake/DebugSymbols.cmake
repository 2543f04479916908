# Keeps a binary's debug symbols apart, in out/symbols: what is rolled out stays small, and a debugger finds the symbols
# through the link that the binary carries.
function(split_debug_symbols target)
  set(folder ${PROJECT_SOURCE_DIR}/out/symbols)
  file(MAKE_DIRECTORY ${folder})
  set(symbols ${folder}/$<TARGET_FILE_NAME:${target}>.debug)
  add_custom_command(TARGET ${target} POST_BUILD
    COMMAND ${CMAKE_OBJCOPY} --only-keep-debug $<TARGET_FILE:${target}> ${symbols}
    COMMAND ${CMAKE_OBJCOPY} --strip-debug $<TARGET_FILE:${target}>
    COMMAND ${CMAKE_OBJCOPY} --add-gnu-debuglink=${symbols} $<TARGET_FILE:${target}>
    VERBATIM)
endfunction()
