# Compiles test files several at a time: most of the work on one is in what it includes.
#
# fl_join_sources(<variable> <name> <file>...) puts into <variable> what to compile in
# place of the files: sources in the build tree that each hold FL_TEST_FILES_AT_A_TIME of
# them. There a test's unnamed namespace is named after the file, so that tests may use the
# same words for different things; what tests share may not. Files named *_tests.cpp are
# compiled by themselves: they have definitions of their own, or include something ahead of
# the library. With -DFL_TEST_FILES_AT_A_TIME=1 each file is, as tools want it that go by
# compile_commands.json, and who changes one test again and again.
#
# This file is also the script that writes such a source.
if(CMAKE_SCRIPT_MODE_FILE)
  string(REPLACE "|" ";" files "${FILES}")
  set(joined "")
  foreach(file IN LISTS files)
    file(RELATIVE_PATH name "${TESTS_FOLDER}" "${file}")
    string(MAKE_C_IDENTIFIER "in_${name}" namespace)
    file(RELATIVE_PATH shown "${BUILD_FOLDER}" "${file}") # the same in every checkout, for caches
    file(READ "${file}" text)
    if(name MATCHES "_test\\.cpp$")
      string(REPLACE "\nnamespace {\n" "\nnamespace ${namespace} {\n" text "${text}")
    endif()
    string(APPEND joined "#line 1 \"${shown}\"\n${text}")
  endforeach()
  file(WRITE "${OUTPUT}" "${joined}")
  return()
endif()

set(FL_TEST_FILES_AT_A_TIME 40 CACHE STRING "How many test files are compiled as one")
set(FL_JOIN_SCRIPT "${CMAKE_CURRENT_LIST_FILE}")

function(fl_join_sources variable name)
  set(tests ${ARGN})
  list(FILTER tests INCLUDE REGEX "_test\\.cpp$")
  set(files ${ARGN})
  list(FILTER files EXCLUDE REGEX "_tests?\\.cpp$") # tests open namespaces, so they come last
  list(APPEND files ${tests})
  set(sources ${ARGN})
  list(FILTER sources INCLUDE REGEX "_tests\\.cpp$")
  if(FL_TEST_FILES_AT_A_TIME LESS 2)
    set(sources ${ARGN})
    set(files "")
  endif()
  list(TRANSFORM files PREPEND "${CMAKE_CURRENT_SOURCE_DIR}/" REGEX "^[^/:]+(/|$)")
  set(number 0)
  while(files)
    list(SUBLIST files 0 ${FL_TEST_FILES_AT_A_TIME} batch)
    list(REMOVE_ITEM files ${batch})
    math(EXPR number "${number} + 1")
    set(source "${CMAKE_CURRENT_BINARY_DIR}/joined/${name}_${number}.cpp")
    list(JOIN batch "|" batch_text)
    add_custom_command(OUTPUT "${source}"
      COMMAND "${CMAKE_COMMAND}" "-DOUTPUT=${source}" "-DFILES=${batch_text}"
              "-DTESTS_FOLDER=${CMAKE_CURRENT_SOURCE_DIR}" "-DBUILD_FOLDER=${CMAKE_BINARY_DIR}"
              -P "${FL_JOIN_SCRIPT}"
      DEPENDS ${batch} "${FL_JOIN_SCRIPT}"
      COMMENT "Joining ${name}_${number}.cpp"
      VERBATIM)
    list(APPEND sources "${source}")
  endwhile()
  set(${variable} ${sources} PARENT_SCOPE)
endfunction()
