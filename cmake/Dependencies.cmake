# Header-only libraries come from Debian's packages. The cross compiler must not see /usr/include, so each library's
# own folder is linked into a private include folder.
set(dependencyIncludes ${CMAKE_BINARY_DIR}/include)
file(MAKE_DIRECTORY ${dependencyIncludes})
foreach(library fmt CLI nlohmann)
  if(NOT EXISTS /usr/include/${library})
    message(FATAL_ERROR "/usr/include/${library} is missing; run scripts/setup")
  endif()
  file(CREATE_LINK /usr/include/${library} ${dependencyIncludes}/${library} SYMBOLIC)
endforeach()
add_library(HeaderLibraries INTERFACE)
target_include_directories(HeaderLibraries SYSTEM INTERFACE ${dependencyIncludes})

if(WIN32)
  # The amalgamation that scripts/setup unpacked.
  set(sqliteSource ${PROJECT_SOURCE_DIR}/out/deps/sqlite)
  if(NOT EXISTS ${sqliteSource}/sqlite3.c)
    message(FATAL_ERROR "${sqliteSource}/sqlite3.c is missing; run scripts/setup")
  endif()
  add_library(SQLite3 STATIC ${sqliteSource}/sqlite3.c)
  target_compile_definitions(SQLite3 PRIVATE SQLITE_ENABLE_SQLLOG SQLITE_OMIT_LOAD_EXTENSION)
  target_include_directories(SQLite3 SYSTEM PUBLIC ${sqliteSource})
else()
  add_library(SQLite3 INTERFACE)
  target_link_libraries(SQLite3 INTERFACE sqlite3)
endif()

set(BUILD_GMOCK ON)
set(INSTALL_GTEST OFF)
add_subdirectory(/usr/src/googletest ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL SYSTEM)
# Optimizing it would take longer than all that it does in the tests.
target_compile_options(gtest PRIVATE -O0 -g0)
target_compile_options(gmock PRIVATE -O0 -g0)
