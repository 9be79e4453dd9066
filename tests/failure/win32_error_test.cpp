#include "failure/win32_error.hpp"

#include "failure/filesystem_error.hpp"

#include "support/names.hpp"

#include <set>

namespace fl::filesystem::detail {
namespace {

using namespace test_support;
using test_support::failure;

struct code_case
{
    unsigned int code;
    failure expected;
};

// What a code becomes for the pathname `\\?\C:\a`: it stays as it was handed over.
std::u16string const path = uR"(\\?\C:\a)";

code_case const code_cases[] = {
    {2, not_found(path)},
    {3, not_found(path)},
    {5, denied(path)},
    {80, file_exists(path)},
    {123, invalid_argument("The filename, directory name, or volume label syntax is incorrect.")},
    {145, not_empty(path)},
    {161, invalid_argument("The specified path is invalid.")},
    {183, file_exists(path)},
    {206, too_large(u"")},
    {267, not_directory(path)},
    {1920, denied(path)},
    {4390, invalid_argument("The file or directory is not a reparse point.")},
};

TEST(ThrowWin32Exception, CodesWithAClassOfTheirOwnDropTheSecondPathname)
{
    for (auto const &row : code_cases) {
        EXPECT_EQ(failure_of([&] { throw_win32_exception(row.code, LR"(\\?\C:\a)"); }),
                  row.expected)
            << row.code;
        EXPECT_EQ(failure_of([&] { throw_win32_exception(row.code, LR"(\\?\C:\a)", L"b"); }),
                  row.expected)
            << row.code;
    }
}

TEST(ThrowWin32Exception, EveryOtherCodeIsASystemErrorWithBothPathnames)
{
    std::set<unsigned int> own;
    for (auto const &row : code_cases)
        own.insert(row.code);
    for (unsigned int code = 0; code < 16000; ++code) {
        if (own.count(code) != 0)
            continue;
        ASSERT_EQ(failure_of([&] { throw_win32_exception(code, LR"(\\?\C:\a)"); }),
                  system_error(code, path))
            << "one additional pathname, empty";
        ASSERT_EQ(failure_of([&] { throw_win32_exception(code, LR"(\\?\C:\a)", L"b"); }),
                  system_error(code, path, u"b"));
    }
    EXPECT_EQ(
        failure_of([&] { throw_win32_exception(0xFFFFFFFF, L"", L""); }),
        (failure{fsys_excp_system_error, "fl:filesystem:SystemError", u"", {u""}, 0xFFFFFFFF}));
}

TEST(ThrowWin32Exception, PathNotFoundOfAnOverlongPathname)
{
    auto const thrown = [](std::size_t first, std::size_t second) {
        return failure_of([&] {
            throw_win32_exception(3, std::wstring(first, L'a'), std::wstring(second, L'b'));
        });
    };
    auto const a = [](std::size_t size) { return std::u16string(size, u'a'); };
    auto const b = [](std::size_t size) { return std::u16string(size, u'b'); };
    EXPECT_EQ(thrown(32766, 0), not_found(a(32766)));
    EXPECT_EQ(thrown(32767, 0), not_found(a(32767)));
    EXPECT_EQ(thrown(32768, 0), too_large(a(32768)));
    EXPECT_EQ(thrown(10, 32767), not_found(a(10)));
    EXPECT_EQ(thrown(10, 32768), too_large(b(32768)));
    EXPECT_EQ(thrown(10, 40000), too_large(b(40000)));
    EXPECT_EQ(thrown(40000, 40000), too_large(a(40000))) << "of equal length, the first";
    EXPECT_EQ(thrown(40000, 40001), too_large(b(40001))) << "the longer one";
    EXPECT_EQ(thrown(40001, 40000), too_large(a(40001)));
}

TEST(ThrowWin32Exception, OtherCodesDontLookAtTheLength)
{
    std::wstring const overlong(40000, L'a');
    EXPECT_EQ(failure_of([&] { throw_win32_exception(2, overlong); }),
              not_found(std::u16string(40000, u'a')));
    EXPECT_EQ(failure_of([&] { throw_win32_exception(206, overlong); }), too_large(u""));
}

TEST(ThrowOnFilesystemError, ReturnsWithoutAnError)
{
    EXPECT_EQ(failure_of([] { throw_on_filesystem_error(std::error_code(), upath(u"a")); }),
              std::nullopt);
    EXPECT_EQ(failure_of([] {
                  throw_on_filesystem_error(std::error_code(0, std::system_category()),
                                            std::nullopt);
              }),
              std::nullopt);
}

TEST(ThrowOnFilesystemError, NamesThePathAsItStands)
{
    std::error_code const ec(5, std::system_category());
    EXPECT_EQ(failure_of([&] { throw_on_filesystem_error(ec, upath(u"rel\\x")); }),
              denied(u"rel\\x"));
    EXPECT_EQ(failure_of([&] { throw_on_filesystem_error(ec, std::nullopt); }), denied(u""));
}

TEST(ThrowOnFilesystemError, TakesTheValueWhateverItsCategory)
{
    failure const expected{fsys_excp_system_error, "fl:filesystem:SystemError", u"a", {u""}, 21};
    for (std::error_category const *category : {&std::generic_category(), &std::system_category()})
        EXPECT_EQ(failure_of([&] {
                      throw_on_filesystem_error(std::error_code(21, *category), upath(u"a"));
                  }),
                  expected)
            << "a directory with one path is not told apart";
    EXPECT_EQ(failure_of([&] {
                  throw_on_filesystem_error(std::error_code(2, std::generic_category()),
                                            upath(u"a"));
              }),
              not_found(u"a"));
}

} // namespace
} // namespace fl::filesystem::detail
