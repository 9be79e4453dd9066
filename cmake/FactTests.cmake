# Makes tests out of files of facts (tests/platform/facts): fl_fact_tests(<source> <file>...) has
# <source> written, a test for each file, named after it, and anew after each change. The lines
# stand in it as literals, since tests also run where there is no source tree, and one by one,
# since compilers needn't take long ones.
#
# This file is also the script that writes such a source.
if(CMAKE_SCRIPT_MODE_FILE)
  string(REPLACE "|" ";" files "${FILES}")
  set(source "#include \"platform/facts/facts.hpp\"\n\n#include <gtest/gtest.h>\n")
  foreach(file IN LISTS files)
    get_filename_component(name "${file}" NAME)
    get_filename_component(stem "${file}" NAME_WE)
    string(SUBSTRING "${stem}" 0 1 initial)
    string(TOUPPER "${initial}" initial)
    string(SUBSTRING "${stem}" 1 -1 rest)
    file(READ "${file}" text)
    string(REPLACE "\r" "" text "${text}")
    string(REGEX REPLACE "\n$" "" text "${text}")
    string(REPLACE "\\" "\\\\" text "${text}")
    string(REPLACE "\"" "\\\"" text "${text}")
    string(REPLACE "\n" "\",\n    \"" text "${text}")
    string(APPEND source "\nstatic constexpr char const *${stem}_lines[] = {\n    \"${text}\",\n};\n\n"
      "TEST(Facts, ${initial}${rest})\n{\n"
      "    contract::facts::check(\"${name}\", ${stem}_lines);\n}\n")
  endforeach()
  file(WRITE "${OUTPUT}" "${source}")
  return()
endif()

set(FL_FACT_SCRIPT "${CMAKE_CURRENT_LIST_FILE}")

function(fl_fact_tests source)
  list(JOIN ARGN "|" files)
  add_custom_command(OUTPUT "${source}"
    COMMAND "${CMAKE_COMMAND}" "-DOUTPUT=${source}" "-DFILES=${files}" -P "${FL_FACT_SCRIPT}"
    DEPENDS ${ARGN} "${FL_FACT_SCRIPT}"
    COMMENT "Writing the tests of facts"
    VERBATIM)
endfunction()
