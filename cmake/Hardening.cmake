# What makes a fault in a program harder to misuse, as far as it costs nothing: the linker's part
# for GCC and Clang, and for MSVC the targets of calls, too, which the system then checks.
#
# Others of GCC's for Windows aren't had. -fstack-protector needs a DLL more beside ours, or,
# linked into it, loads Windows' cryptography while the DLL itself is being loaded. Stacks are
# probed page by page anyway. -mguard=cf is Clang's, from 17 on, and wants a runtime made for it.
function(fl_harden target)
  if(MSVC)
    target_compile_options(${target} PRIVATE /guard:cf)
    target_link_options(${target} PRIVATE /guard:cf)
    if(CMAKE_CXX_COMPILER_ARCHITECTURE_ID STREQUAL "x64")
      target_link_options(${target} PRIVATE /CETCOMPAT) # returns are checked by the processor
    endif()
  elseif(MINGW)
    # loaded anywhere, above 4 GiB, too, and no data is run; binutils before 2.36 want to be told
    target_link_options(${target} PRIVATE
      "LINKER:--dynamicbase" "LINKER:--high-entropy-va" "LINKER:--nxcompat")
  endif()
endfunction()
