#ifndef FL_FILESYSTEM_SRC_PLATFORM_FOUND_ENTRY_HPP
#define FL_FILESYSTEM_SRC_PLATFORM_FOUND_ENTRY_HPP
// What searches of directories stand at.

#include "platform/owned_handle.hpp"

#include <windows.h>

#include <string>
#include <string_view>

namespace fl::filesystem::detail {

/// An entry of the directory at hand, or the code with which its search ended. A tree has a
/// search for each level and this record once, which is larger than all else that they need.
class found_entry
{
public:
    /// Begins to list what matches `pattern`. Empty, with the code, if it can't.
    find_handle begin(std::wstring const &pattern, DWORD flags)
    {
        HANDLE const raw = ::FindFirstFileExW(pattern.c_str(), FindExInfoBasic, &data_,
                                              FindExSearchNameMatch, nullptr, flags);
        DWORD const code = ::GetLastError();
        find_handle search(raw);
        stand(static_cast<bool>(search), code);
        return search;
    }

    /// Goes on to the next one of `search`. Returns whether there is one.
    bool advance(find_handle const &search)
    {
        bool const is_there = ::FindNextFileW(search.get(), &data_) != FALSE;
        stand(is_there, ::GetLastError());
        return is_there;
    }

    /// Stands at nothing, for this reason.
    void end(DWORD code) { stand(false, code); }

    bool is_there() const { return is_there_; }
    DWORD end_code() const { return end_code_; } ///< why none is there, as the system told it
    WIN32_FIND_DATAW const &data() const { return data_; }
    std::wstring_view name() const { return data_.cFileName; }
    DWORD attributes() const { return data_.dwFileAttributes; }

private:
    void stand(bool is_there, DWORD code)
    {
        is_there_ = is_there;
        end_code_ = is_there ? DWORD{ERROR_SUCCESS} : code;
    }

    WIN32_FIND_DATAW data_ = {};
    bool is_there_ = false;
    DWORD end_code_ = ERROR_SUCCESS;
};

} // namespace fl::filesystem::detail

#endif
