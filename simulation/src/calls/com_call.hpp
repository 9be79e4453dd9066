#ifndef FL_SIMULATION_CALLS_COM_CALL_HPP
#define FL_SIMULATION_CALLS_COM_CALL_HPP
// The frame of functions and methods that answer with an HRESULT.

#include "calls/call.hpp"

#include <objbase.h>

namespace fl::simulation {

/// An HRESULT stays what it is. No failure is a success, also not that with the code 0.
inline HRESULT as_failing_result(DWORD code)
{
    return code == ERROR_SUCCESS ? E_FAIL : HRESULT_FROM_WIN32(code);
}

/// Like `perform`, with an answer made of the code. The last error says nothing,
/// whatever happens: COM doesn't use it.
template <typename Body>
HRESULT perform_com(call const &made, Body body)
{
    HRESULT const answer = perform_refusing(made, as_failing_result, body);
    set_last_error(stale_last_error);
    return answer;
}

template <typename Body>
HRESULT perform_com(char const *function, LPCWSTR text, Body body)
{
    return perform_com(call{.function = function, .text = text}, body);
}

/// A fresh shell link object, by the interface that was asked for.
HRESULT make_shell_link(machine_state &machine, REFIID wanted, void **object);

} // namespace fl::simulation

#endif
