#include "calls/call.hpp"

namespace simulation {

namespace {

thread_local DWORD last_error = 0;

} // namespace

void set_last_error(DWORD code) noexcept
{
    last_error = code;
}

} // namespace simulation

extern "C" DWORD GetLastError()
{
    return simulation::last_error;
}

extern "C" void SetLastError(DWORD code)
{
    simulation::last_error = code;
}
