# Compiles test files several at a time: most of the work on one is in what it includes.
#
# fl_join_sources(<variable> <name> <file>...) puts into <variable> what to compile in
# place of the files: sources in the build tree that each hold FL_TEST_FILES_AT_A_TIME of
# them. There a file's unnamed namespace is named after the file, so that files may use the
# same words for different things. With -DFL_TEST_FILES_AT_A_TIME=1 each is compiled by
# itself, as tools want it that go by compile_commands.json.
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
    string(REPLACE "\nnamespace {\n" "\nnamespace ${namespace} {\n" text "${text}")
    string(APPEND joined "#line 1 \"${shown}\"\n${text}")
  endforeach()
  file(WRITE "${OUTPUT}" "${joined}")
  return()
endif()

set(FL_TEST_FILES_AT_A_TIME 16 CACHE STRING "How many test files are compiled as one")
set(FL_JOIN_SCRIPT "${CMAKE_CURRENT_LIST_FILE}")

function(fl_join_sources variable name)
  set(files ${ARGN})
  list(FILTER files INCLUDE REGEX "_test\\.cpp$")
  set(sources ${ARGN})
  list(FILTER sources EXCLUDE REGEX "_test\\.cpp$") # what tests share is compiled by itself
  set(number 0)
  list(TRANSFORM files REPLACE "^([^/:]+/)" "${CMAKE_CURRENT_SOURCE_DIR}/\\1")
  if(FL_TEST_FILES_AT_A_TIME LESS 2)
    list(APPEND sources ${files})
    set(files "")
  endif()
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
