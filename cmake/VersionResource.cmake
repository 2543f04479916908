set(versionTemplate ${CMAKE_CURRENT_LIST_DIR}/Version.rc.in)

# Writes the version resource of a binary for its resource script to take in with #include "Version.rc". The numbers
# are the project's.
#   target       the binary's target
#   fileName     the name of the file that it becomes
#   description  what Windows shows as the file's description
function(add_version_resource target fileName description)
  set(versionFileName ${fileName})
  set(versionDescription ${description})
  get_filename_component(versionInternalName ${fileName} NAME_WLE)
  get_target_property(type ${target} TYPE)
  if(type STREQUAL "EXECUTABLE")
    set(versionFileType VFT_APP)
  else()
    set(versionFileType VFT_DLL)
  endif()
  set(folder ${CMAKE_CURRENT_BINARY_DIR}/${target}Version)
  configure_file(${versionTemplate} ${folder}/Version.rc @ONLY)
  target_include_directories(${target} PRIVATE $<$<COMPILE_LANGUAGE:RC>:${folder}>)
endfunction()
