#include "calls/call.hpp"

namespace fl::simulation {

namespace {

/// A name may begin with `=`, as those of the current directories of drives do, but
/// have none further on.
void check_variable_name(std::u16string_view name)
{
    if (name.empty() || name.find(u'=', 1) != std::u16string_view::npos)
        throw failure(ERROR_INVALID_PARAMETER);
}

} // namespace

} // namespace fl::simulation

extern "C" DWORD GetEnvironmentVariableW(LPCWSTR name, LPWSTR buffer, DWORD room)
{
    using namespace fl::simulation;
    call const made{
        .function = "GetEnvironmentVariableW", .text = name, .room = room, .pathnames = 0};
    return perform(made, DWORD{0}, [&](machine_state &machine) {
        auto const value = machine.running.variables.find(from_wide(name));
        if (!value)
            throw failure(ERROR_ENVVAR_NOT_FOUND);
        return hand_over(*value, room, buffer);
    });
}

extern "C" BOOL SetEnvironmentVariableW(LPCWSTR name, LPCWSTR value)
{
    using namespace fl::simulation;
    call const made{
        .function = "SetEnvironmentVariableW", .text = name, .second_text = value, .pathnames = 0};
    return perform(made, BOOL{FALSE}, [&](machine_state &machine) {
        std::u16string const variable = from_wide(name);
        check_variable_name(variable);
        if (value == nullptr)
            machine.running.variables.remove(variable);
        else
            machine.running.variables.set(variable, from_wide(value));
        return BOOL{TRUE};
    });
}
