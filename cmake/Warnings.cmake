# The level that we build at. Public headers are free of warnings at it, for GCC
# and Clang, in C++17 and C++20.
if(MSVC)
  # 4702: what stands behind a call that always throws. 5041: definitions of constants that
  # GCC needs.
  set(FL_WARNINGS /W4 /permissive- /wd4702 /wd5041)
  set(FL_WARNINGS_AS_ERRORS /WX)
else()
  set(FL_WARNINGS -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wnon-virtual-dtor
      -Woverloaded-virtual -Wcast-qual -Wformat=2)
  set(FL_WARNINGS_AS_ERRORS -Werror)
endif()

# for scripts/check-headers
string(REPLACE ";" " " FL_WARNING_LINE "${FL_WARNINGS} ${FL_WARNINGS_AS_ERRORS}")
file(WRITE "${PROJECT_BINARY_DIR}/warnings.txt" "${FL_WARNING_LINE}\n")

# How our own code is compiled, wherever it stands: the library, tests, tools.
function(fl_compile_as_ours target)
  target_compile_features(${target} PRIVATE cxx_std_20)
  set_target_properties(${target} PROPERTIES CXX_EXTENSIONS OFF)
  target_compile_options(${target} PRIVATE ${FL_WARNINGS})
  if(FL_FILESYSTEM_WARNINGS_AS_ERRORS)
    target_compile_options(${target} PRIVATE ${FL_WARNINGS_AS_ERRORS})
  endif()
  if(MSVC)
    target_compile_options(${target} PRIVATE /utf-8 /EHsc)
  endif()
  target_compile_definitions(${target} PRIVATE BOOST_ALL_NO_LIB) # what is linked is told below
  if(WIN32)
    # the wide functions only, no min and max macros, Windows 10
    target_compile_definitions(${target} PRIVATE UNICODE NOMINMAX WIN32_LEAN_AND_MEAN _WIN32_WINNT=0x0A00)
  endif()
endfunction()

# What is shipped is looked at more closely: paths on which a pointer is null are only found where
# code is optimised, as tests aren't.
function(fl_look_closely target)
  if(NOT MSVC)
    target_compile_options(${target} PRIVATE -Wnull-dereference)
  endif()
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # a cast between sizes of 64 bits is one for other hosts, for which this isn't made
    target_compile_options(${target} PRIVATE -Wduplicated-cond -Wlogical-op -Wuseless-cast)
  endif()
endfunction()
