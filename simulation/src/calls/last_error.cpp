#include "calls/call.hpp"

namespace fl::simulation {

namespace {

thread_local DWORD last_error = 0;

} // namespace

void set_last_error(DWORD code) noexcept
{
    last_error = code;
}

} // namespace fl::simulation

extern "C" DWORD GetLastError()
{
    return fl::simulation::last_error;
}

extern "C" void SetLastError(DWORD code)
{
    fl::simulation::last_error = code;
}
