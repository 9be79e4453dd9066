#ifndef FL_FILESYSTEM_TESTS_PLATFORM_LINKS_HPP
#define FL_FILESYSTEM_TESTS_PLATFORM_LINKS_HPP
// Links and reparse data for the tests of the system's calls. Reparse data is built
// and read by the offsets of its bytes.

#include "platform/opened.hpp"

#include <winioctl.h>

#include <vector>

namespace contract {

inline constexpr DWORD symlink_tag = 0xA000000C;
inline constexpr DWORD mount_point_tag = 0xA0000003;
inline constexpr DWORD strange_tag = 0x00000042; // no tag of Microsoft, so it has a GUID

using bytes = std::vector<unsigned char>;

/// A number of `count` bytes, the lowest first.
inline void append(bytes &data, unsigned long value, int count)
{
    for (int i = 0; i < count; ++i)
        data.push_back(static_cast<unsigned char>(value >> (8 * i) & 0xFF));
}

inline unsigned long number_at(bytes const &data, std::size_t offset, std::size_t count)
{
    unsigned long value = 0;
    for (std::size_t i = 0; i < count; ++i)
        value |= static_cast<unsigned long>(data.at(offset + i)) << (8 * i);
    return value;
}

inline void append_text(bytes &data, std::wstring const &text)
{
    for (wchar_t const unit : text)
        append(data, static_cast<unsigned long>(unit), 2);
}

/// The text that the two numbers at `offset` describe: its offset from `start` and its size.
inline std::u16string text_at(bytes const &data, std::size_t offset, std::size_t start)
{
    std::u16string text;
    std::size_t const first = start + number_at(data, offset, 2);
    std::size_t const size = number_at(data, offset + 2, 2);
    for (std::size_t at = first; at < first + size; at += 2)
        text.push_back(static_cast<char16_t>(number_at(data, at, 2)));
    return text;
}

inline bytes with_header(DWORD tag, bytes const &body)
{
    bytes data;
    append(data, tag, 4);
    append(data, static_cast<unsigned long>(body.size()), 2);
    append(data, 0, 2);
    data.insert(data.end(), body.begin(), body.end());
    return data;
}

/// What makes an empty directory a junction to `target`, an absolute pathname.
inline bytes junction_data(std::wstring const &target)
{
    std::wstring const name = LR"(\??\)" + target;
    bytes body;
    append(body, 0, 2);
    append(body, static_cast<unsigned long>(2 * name.size()), 2);
    append(body, static_cast<unsigned long>(2 * name.size() + 2), 2);
    append(body, static_cast<unsigned long>(2 * target.size()), 2);
    append_text(body, name + L'\0' + target + L'\0');
    return with_header(mount_point_tag, body);
}

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

/// Whether symbolic links can be made here. Wine 8 says that it did, but makes none; on
/// Windows the caller may lack the right.
inline bool has_symlinks()
{
    static bool const has = [] {
        workspace space;
        std::wstring const link = in(space, L"link");
        make_symlink(link, L"target", SYMBOLIC_LINK_FLAG_ALLOW_UNPRIVILEGED_CREATE);
        DWORD const attributes = ::GetFileAttributesW(link.c_str());
        return attributes != INVALID_FILE_ATTRIBUTES &&
               (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
    }();
    return has;
}

/// Whether there is reparse data. Wine 8 answers 50 to those who set it.
inline bool has_reparse_data()
{
    static bool const has = [] {
        workspace space;
        space.make_directory(space.path(u"dir"));
        return set_reparse_data(in(space, L"dir"), junction_data(LR"(C:\)")) == success;
    }();
    return has;
}

} // namespace contract

#endif
