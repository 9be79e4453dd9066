#ifndef FL_FILESYSTEM_TESTS_DIFFERENTIAL_FILE_STEPS_HPP
#define FL_FILESYSTEM_TESTS_DIFFERENTIAL_FILE_STEPS_HPP
// The steps that need files: contents, handles, moving, copying, enumeration.

#include "differential/step.hpp"

#include <windows.h>

#include <array>
#include <string>

namespace differential {

/// Handles that stay open from one step to another.
class handle_slots
{
public:
    handle_slots() { handles_.fill(INVALID_HANDLE_VALUE); }
    ~handle_slots() { close_all(); }
    handle_slots(handle_slots const &) = delete;
    handle_slots &operator=(handle_slots const &) = delete;

    HANDLE &operator[](std::size_t index) { return handles_[index % handles_.size()]; }
    void close_all();

private:
    std::array<HANDLE, 3> handles_;
};

/// Runs a step whose signature says that it needs files. `texts` are expanded.
std::string run_file_step(step const &one, std::vector<std::wstring> const &texts,
                          handle_slots &slots, unsigned int number);

/// How many names the file at `pathname` has.
unsigned int link_count(std::wstring const &pathname);

} // namespace differential

#endif
