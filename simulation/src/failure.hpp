#ifndef FL_SIMULATION_FAILURE_HPP
#define FL_SIMULATION_FAILURE_HPP
// How a call ends early: thrown anywhere below a call, turned into the call's
// failing answer and the last error at its boundary (calls/call.hpp).

#include <windows.h>

#include <exception>

namespace fl::simulation {

class failure : public std::exception
{
public:
    explicit failure(DWORD code) noexcept : code_(code) {}
    DWORD code() const noexcept { return code_; }
    char const *what() const noexcept override { return "a simulated call failed"; }

private:
    DWORD code_;
};

} // namespace fl::simulation

#endif
