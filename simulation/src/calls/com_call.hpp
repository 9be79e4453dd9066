#ifndef FL_SIMULATION_CALLS_COM_CALL_HPP
#define FL_SIMULATION_CALLS_COM_CALL_HPP
// The frame of functions and methods that answer with an HRESULT.

#include "calls/call.hpp"

#include <objbase.h>

namespace simulation {

/// Like `perform`. The answer is made of the code: an HRESULT stays what it is. The
/// last error says nothing, whatever happens: COM doesn't use it.
template <typename Body>
HRESULT perform_com(char const *function, LPCWSTR text, Body body)
{
    HRESULT const answer = perform_refusing(function, text, HRESULT_FROM_WIN32, body);
    set_last_error(stale_last_error);
    return answer;
}

/// A fresh shell link object, by the interface that was asked for.
HRESULT make_shell_link(machine_state &machine, REFIID wanted, void **object);

} // namespace simulation

#endif
