#ifndef FL_FILESYSTEM_TESTS_OPERATIONS_ACCESS_ANSWERS_HPP
#define FL_FILESYSTEM_TESTS_OPERATIONS_ACCESS_ANSWERS_HPP
// All that `access` says of one name, as one text to compare.

#include <fl/filesystem.hpp>

#include "support/names.hpp"

namespace test_support {

/// One sign for each mode from 1 to 15. `t` and `f` are answers; `N` is a `PathNotFound`
/// without a pathname, `D` an `AccessDenied` about the name, `C` the invalid character.
using signs = std::string;

// Modes with 8 ask for execution, with 4 for writing, with 2 for reading.
inline constexpr char const *can_all = "ttttttttttttttt";
inline constexpr char const *can_nothing = "fffffffffffffff";
inline constexpr char const *cannot_run = "tttttttffffffff";
inline constexpr char const *cannot_write = "tttffffttttffff";
inline constexpr char const *cannot_write_or_run = "tttffffffffffff";
inline constexpr char const *cannot_read = "tffttffttffttff";
inline constexpr char const *cannot_read_or_run = "tffttffffffffff";
// Modes that are odd ask for existence.
inline constexpr char const *is_missing = "fNfNfNfNfNfNfNf";
inline constexpr char const *is_denied = "DfDfDfDfDfDfDfD";
inline constexpr char const *has_invalid_character = "CCCCCCCCCCCCCCC";

/// What `ask` came to; `named` is what a denial is about.
template <typename Ask>
char sign_of(Ask ask, std::u16string const &named)
{
    bool answer = false;
    std::optional<failure> failed;
    try {
        failed = failure_of([&] { answer = ask(); });
    } catch (foundation::ustring::CtypeInvalidCharacter const &) {
        return 'C';
    }
    if (!failed)
        return answer ? 't' : 'f';
    if (*failed == not_found(u""))
        return 'N';
    if (*failed == denied(named))
        return 'D';
    ADD_FAILURE() << "unforeseen: " << *failed;
    return '?';
}

/// The signs of `path`, a text in native form, which both overloads agree on.
inline signs access_signs(std::u16string const &path, std::u16string const &named)
{
    signs of_text, of_path;
    for (unsigned int mode = 1; mode <= 15; ++mode) {
        using fl::filesystem::access;
        of_text += sign_of([&] { return access(path, mode); }, named);
        of_path += sign_of([&] { return access(fl::filesystem::upath(path), mode); }, named);
    }
    EXPECT_EQ(of_text, of_path) << printable(path);
    return of_text;
}

inline signs access_signs(std::u16string const &path)
{
    return access_signs(path, path);
}

} // namespace test_support

#endif
