#ifndef FL_FILESYSTEM_TESTS_PLATFORM_SHELL_LINK_HPP
#define FL_FILESYSTEM_TESTS_PLATFORM_SHELL_LINK_HPP
// COM and the shell link object, for the tests of the system's calls.

#include "platform/contract.hpp"
#include "support/shell_link.hpp"

namespace contract {

using test_support::apartment;
using test_support::code_of;
using test_support::create_link;
using test_support::shortcut;

/// Of no class and no interface.
inline constexpr GUID unknown_id = {
    0x6F1C0E52, 0x0001, 0x4002, {0x80, 0x03, 0x04, 0x05, 0x06, 0x07, 0x08, 0x09}};

/// A system code as an HRESULT.
constexpr DWORD from_win32(DWORD code)
{
    return 0x80070000 | code;
}

/// The system code that an HRESULT has from it. Any other stays.
constexpr DWORD to_win32(DWORD code)
{
    return (code & 0xFFFF0000) == from_win32(0) ? code & 0xFFFF : code;
}

inline constexpr DWORD yes = 0; // S_OK
inline constexpr DWORD no = 1;  // S_FALSE
inline constexpr DWORD garbage = 0x80004005;

} // namespace contract

#endif
