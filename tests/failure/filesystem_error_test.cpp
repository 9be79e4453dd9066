// The common end of operations with two pathnames on the standard facility.

#include "failure/filesystem_error.hpp"

#include "support/calls.hpp"
#include "support/translation.hpp"

#include <algorithm>
#include <iterator>

namespace fl::filesystem::detail {
namespace {

using namespace test_support;

/// Neither of the two categories, although its codes are equivalent to the generic ones.
class look_alike final : public std::error_category
{
public:
    char const *name() const noexcept override { return "look-alike"; }
    std::string message(int) const override { return {}; }
    std::error_condition default_error_condition(int code) const noexcept override
    {
        return {code, std::generic_category()};
    }
};

look_alike const other_category;

maybe_failure report(std::error_code const &ec, upath const &first, upath const &second)
{
    return failure_of([&] { throw_on_filesystem_error(ec, first, second); });
}

std::error_code generic(int value)
{
    return {value, std::generic_category()};
}

std::error_code system(int value)
{
    return {value, std::system_category()};
}

/// With a source that is there and can be read.
bool is_about_target(unsigned int code)
{
    constexpr unsigned int codes[] = {2, 3, 5, 80, 145, 183, 206, 267};
    return std::find(std::begin(codes), std::end(codes), code) != std::end(codes);
}

TEST_ON_MACHINE(ThrowOnFilesystemErrorOfAPair, NoErrorDoesNothing)
{
    for (std::error_code const &ec :
         {std::error_code(), system(0), generic(0), std::error_code(0, other_category)})
        EXPECT_EQ(report(ec, upath(u"C:\\missing"), upath(u"C:\\to")), std::nullopt);
    EXPECT_EQ(machine.journal().size(), 0U);
}

TEST_ON_MACHINE(ThrowOnFilesystemErrorOfAPair, TheFacilitysOwnIsADirectoryNamesTheFirst)
{
    for (char16_t const *first : {u"C:\\missing", u"rel", u"", u"a/b"})
        EXPECT_EQ(report(generic(21), upath(first), upath(u"C:\\to")),
                  file_is_directory(upath(first).native()));
    EXPECT_EQ(machine.journal().size(), 0U) << "nobody is asked";
}

TEST_ON_MACHINE(ThrowOnFilesystemErrorOfAPair, TheSameNumberOfAnotherCategoryIsAWin32Code)
{
    machine.add_file(u"C:\\from");
    for (std::error_code const &ec : {system(21), std::error_code(21, other_category)})
        EXPECT_EQ(report(ec, upath(u"C:\\from"), upath(u"C:\\to")),
                  translated(21, u"C:\\from", u"C:\\to"));
}

// Also where the system's own category is equivalent to "is a directory" by another number.
TEST_ON_MACHINE(ThrowOnFilesystemErrorOfAPair, EveryCodeOfBothCategoriesIsAWin32Code)
{
    machine.add_file(u"C:\\from").keep_journal(false);
    for (int value = 1; value <= 12000; ++value) {
        unsigned int const code = static_cast<unsigned int>(value);
        auto const wanted = is_about_target(code) ? translated(code, u"C:\\to")
                                                  : translated(code, u"C:\\from", u"C:\\to");
        ASSERT_EQ(report(system(value), upath(u"C:\\from"), upath(u"C:\\to")), wanted) << value;
        if (value != 21) {
            ASSERT_EQ(report(generic(value), upath(u"C:\\from"), upath(u"C:\\to")), wanted)
                << value;
        }
    }
}

TEST_ON_MACHINE(ThrowOnFilesystemErrorOfAPair, ValuesKeepTheirBits)
{
    machine.add_file(u"C:\\from");
    EXPECT_EQ(report(system(-1), upath(u"C:\\from"), upath(u"C:\\to")),
              translated(0xFFFFFFFF, u"C:\\from", u"C:\\to"));
}

TEST_ON_MACHINE(ThrowOnFilesystemErrorOfAPair, NamesTheCallersTexts)
{
    machine.add_directory(u"C:\\work").set_current_directory(u"C:\\work").add_file(u"C:\\work\\a");
    std::u16string const overlong = uR"(..\)" + std::u16string(300, u'b');
    EXPECT_EQ(report(system(87), upath(u"a"), upath(overlong)), translated(87, u"a", overlong))
        << "neither absolute nor with a prefix";
    EXPECT_EQ(report(system(2), upath(u"no/such"), upath(u"a")), not_found(uR"(no\such)"));
    EXPECT_EQ(report(system(183), upath(u"a"), upath(u"no/such")), file_exists(uR"(no\such)"));
}

} // namespace
} // namespace fl::filesystem::detail
