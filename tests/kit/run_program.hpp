#ifndef FL_FILESYSTEM_TESTS_KIT_RUN_PROGRAM_HPP
#define FL_FILESYSTEM_TESTS_KIT_RUN_PROGRAM_HPP
// Runs one program to its end and keeps what it prints.

#include <windows.h>

#include <string>

namespace kit {

struct finished
{
    std::string printed;
    DWORD code = 0; ///< its exit code, or why it couldn't be started
    bool began = false;
    bool was_ended = false; ///< it took too long
    int seconds = 0;

    /// Whether it came to an end of its own, and to a good one.
    bool is_well() const { return began && !was_ended && code == 0; }
    /// What became of it, for people; empty if all is well.
    std::string trouble() const;
};

/// `command` is the program and its arguments, as one line. The program stands in `folder`, where
/// its output is kept as well for as long as it runs.
finished run_program(std::wstring const &command, std::wstring const &folder);

} // namespace kit

#endif
