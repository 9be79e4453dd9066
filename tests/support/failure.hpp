#ifndef FL_FILESYSTEM_TESTS_SUPPORT_FAILURE_HPP
#define FL_FILESYSTEM_TESTS_SUPPORT_FAILURE_HPP
// What an operation threw, as one value to compare: a wrong class, text, pathname
// or code each fail the test.

#include "support/tables.hpp"
#include "support/text.hpp"

#include <fl/filesystem/exceptions.hpp>

#include <gtest/gtest.h>

#include <boost/exception/enable_current_exception.hpp>

#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace test_support {

struct failure
{
    fl::filesystem::fsys_excp_id id{};
    std::string what;
    std::u16string path_name;
    std::vector<std::u16string> additional_path_names;
    unsigned int error_code = 0;

    friend bool operator==(failure const &, failure const &) = default;
};

/// What was thrown, if anything.
using maybe_failure = std::optional<failure>;

inline std::ostream &operator<<(std::ostream &out, failure const &shown)
{
    out << shown.what << " (" << shown.id << "), code " << shown.error_code << ", pathname {"
        << printable(shown.path_name) << "}";
    for (std::u16string const &more : shown.additional_path_names)
        out << ", also {" << printable(more) << "}";
    return out;
}

inline std::ostream &operator<<(std::ostream &out, maybe_failure const &shown)
{
    return shown ? out << *shown : out << "no failure";
}

inline failure describe(fl::filesystem::FsysExceptionBase const &exception)
{
    return {exception.get_excp_id(), exception.what(), exception.get_path_name(),
            exception.get_additional_path_names(), exception.get_error_code()};
}

/// Runs `call` and returns what it threw of the library's family, or nothing.
/// Other exceptions pass through and fail the test, and so does one that could lose its
/// fields on the way to another thread.
template <typename Call>
maybe_failure failure_of(Call call)
{
    try {
        call();
    } catch (fl::filesystem::FsysExceptionBase const &exception) {
        EXPECT_NE(dynamic_cast<boost::exception_detail::clone_base const *>(&exception), nullptr)
            << exception.what() << " was thrown as it is";
        return describe(exception);
    }
    return std::nullopt;
}

/// A row of a table: what is given, what it fails with, and why.
template <typename Given>
using failing_row = row_of<Given, failure>;

/// Plays a table: `act` throws what each row expects.
template <typename Rows, typename Act>
void expect_failures(Rows const &rows, Act act)
{
    for (auto const &row : rows)
        EXPECT_EQ(failure_of([&] { outcome_of_row(row, act); }), row.expected)
            << given_by(row) << ": " << row.why;
}

/// That `call` throws exactly this of the library's family, as one expression of the test.
#define EXPECT_FAILURE(call, ...)                                                                  \
    EXPECT_EQ(::test_support::failure_of([&] { static_cast<void>(call); }), (__VA_ARGS__))
#define ASSERT_FAILURE(call, ...)                                                                  \
    ASSERT_EQ(::test_support::failure_of([&] { static_cast<void>(call); }), (__VA_ARGS__))

namespace library = fl::filesystem;

inline failure about(library::fsys_excp_id id, char const *what, std::u16string const &path)
{
    return {id, what, path, {}, 0};
}

inline failure file_exists(std::u16string const &path)
{
    return about(library::fsys_excp_file_exists_error, "fl:filesystem:FileExistsError", path);
}

inline failure not_directory(std::u16string const &path)
{
    return about(library::fsys_excp_not_directory_error, "fl:filesystem:NotDirectoryError", path);
}

inline failure not_empty(std::u16string const &path)
{
    return about(library::fsys_excp_directory_not_empty, "fl:filesystem:DirectoryNotEmpty", path);
}

inline failure file_is_directory(std::u16string const &path)
{
    return about(library::fsys_excp_file_is_directory, "fl:filesystem:FileIsDirectory", path);
}

inline failure not_found(std::u16string const &path)
{
    return about(library::fsys_excp_path_not_found, "fl:filesystem:PathNotFound", path);
}

inline failure denied(std::u16string const &path)
{
    return about(library::fsys_excp_access_denied, "fl:filesystem:AccessDenied", path);
}

inline failure too_large(std::u16string const &path)
{
    return about(library::fsys_excp_file_name_too_large, "fl:filesystem:FileNameTooLarge", path);
}

/// As the translation of a code makes it that names nobody to blame, for one pathname or two.
inline failure system_error(unsigned int code, std::u16string const &path,
                            std::u16string const &second = {})
{
    return {library::fsys_excp_system_error, "fl:filesystem:SystemError", path, {second}, code};
}

/// An `InvalidArgument` as the library raises most of them: without a pathname.
inline failure invalid_argument(std::string const &message)
{
    return {library::fsys_excp_invalid_argument,
            "fl:filesystem:InvalidArgument: " + message,
            {},
            {},
            0};
}

inline failure empty_path()
{
    return invalid_argument("Empty Path not permitted");
}

/// What ERROR_INVALID_NAME is reported as.
inline failure bad_name()
{
    return invalid_argument("The filename, directory name, or volume label syntax is incorrect.");
}

/// A pathname that is neither a drive's nor a share's.
inline failure bad_path_type(std::u16string const &path)
{
    failure bad = invalid_argument("The path type of the given path is not valid");
    if (!path.empty())
        bad.what += ": {" + printable(path) + "}";
    bad.path_name = path;
    return bad;
}

} // namespace test_support

#endif
