#ifndef FL_FILESYSTEM_TESTS_PLATFORM_LINKS_HPP
#define FL_FILESYSTEM_TESTS_PLATFORM_LINKS_HPP
// Links and reparse data for the tests of the system's calls.

#include "platform/opened.hpp"
#include "support/link_data.hpp"

#include <winioctl.h>

namespace contract {

using test_support::mount_point_tag;
using test_support::symlink_tag;
using namespace test_support::link_data;

inline constexpr DWORD strange_tag = 0x00000042; // no tag of Microsoft, so it has a GUID

/// Data of a tag that the system doesn't know: header, a GUID of sixteen bytes, content.
inline bytes strange_data(DWORD tag, unsigned char guid, bytes const &content)
{
    bytes data = with_header(tag, content);
    data.insert(data.begin() + 8, 16, guid);
    return data;
}

/// Opened for its reparse data: the entry itself, whatever it leads to.
class reparse_point : public opened
{
public:
    explicit reparse_point(std::wstring const &name, DWORD access = GENERIC_WRITE)
        : opened(name, access, share_all, FILE_FLAG_OPEN_REPARSE_POINT)
    {
    }
    DWORD control(DWORD operation, bytes const &data)
    {
        bytes copy = data;
        return outcome_of([&] {
            DWORD count = 0;
            DWORD const size = static_cast<DWORD>(copy.size());
            void *const input = copy.empty() ? nullptr : copy.data();
            return ::DeviceIoControl(get(), operation, input, size, nullptr, 0, &count, nullptr) !=
                   0;
        });
    }
    /// Its data goes to `result`, which has room for `room` bytes.
    DWORD read(bytes &result, DWORD room = 16384)
    {
        result.assign(room, 0xEE);
        DWORD count = 0;
        DWORD const outcome = outcome_of([&] {
            return ::DeviceIoControl(get(), FSCTL_GET_REPARSE_POINT, nullptr, 0, result.data(),
                                     room, &count, nullptr) != 0;
        });
        result.resize(count);
        return outcome;
    }
};

inline DWORD set_reparse_data(std::wstring const &name, bytes const &data)
{
    return reparse_point(name).control(FSCTL_SET_REPARSE_POINT, data);
}

inline bytes reparse_data(std::wstring const &name)
{
    bytes data;
    EXPECT_EQ(reparse_point(name, FILE_READ_EA).read(data), success);
    return data;
}

inline DWORD make_symlink(std::wstring const &link, std::wstring const &target, DWORD flags)
{
    return outcome_of(
        [&] { return ::CreateSymbolicLinkW(link.c_str(), target.c_str(), flags) != FALSE; });
}

/// See `workspace::has_symbolic_links`.
inline bool has_symlinks()
{
    return workspace().has_symbolic_links();
}

/// Whether there is reparse data: who can make a junction can set it.
inline bool has_reparse_data()
{
    return workspace().has_junctions();
}

} // namespace contract

#endif
