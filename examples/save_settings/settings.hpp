#ifndef SETTINGS_HPP
#define SETTINGS_HPP
// Settings that are never lost: what is tested in faults.cpp.

#include <windows.h>

#include <string>
#include <string_view>

/// Replaces the file `name` by one with `text`. Returns 0, or the system's code; then the file is
/// what it was, and nothing else is left.
DWORD save_settings(std::wstring const &name, std::string_view text);

#endif
