#include <fl/filesystem/exceptions.hpp>
#include <fl/filesystem/pathname.hpp>

#include "access/absolute.hpp"
#include "pathname/native_form.hpp"
#include "pathname/path_type.hpp"
#include "platform/wide_text.hpp"
#include "support/allocations.hpp"
#include "support/names.hpp"

#include <new>

namespace fl::filesystem::detail {
namespace {

using namespace test_support;

// Longer than what a string holds without allocating.
std::u16string const tail(64, u'n');

TEST(Allocations, AreCounted)
{
    EXPECT_EQ(allocations_of([] { std::u16string const copy = tail; }), 1U);
    EXPECT_EQ(allocations_of([] { std::wstring const text(64, L'n'); }), 1U);
    EXPECT_EQ(allocations_of([] {}), 0U);
}

TEST(Allocations, NoneIsMadeForATextThatFitsOnTheStack)
{
    std::u16string const fits(259, u'a');
    EXPECT_EQ(allocations_of([&] { static_cast<void>(wide_text(fits).c_str()); }), 0U);
    std::u16string const longer(260, u'a');
    EXPECT_EQ(allocations_of([&] { static_cast<void>(wide_text(longer).c_str()); }), 1U);
}

template <typename Char>
void measure_everything(std::basic_string_view<Char> text)
{
    static_cast<void>(classify_path_type(text));
    static_cast<void>(analyse_path_root(text));
    static_cast<void>(root_path_length(text));
    static_cast<void>(element_root_length(text));
    static_cast<void>(unc_root_length(text, 2));
    static_cast<void>(skip_two_separators(text, 2));
    static_cast<void>(is_drive_at(text, 0));
    static_cast<void>(is_device_prefix_at(text, 0));
    static_cast<void>(is_long_prefix_at(text, 0));
    static_cast<void>(is_long_unc_prefix_at(text, 0));
    static_cast<void>(is_unc_prefix_at(text, 0));
    static_cast<void>(is_dot_element(text, 0, 2));
}

TEST(Allocations, NoneIsMadeForClassifyingOrMeasuring)
{
    for (char16_t const *head :
         {u"", u"\\", u"C:", uR"(C:\)", uR"(\\server\)", uR"(\\server\share\)", uR"(\\?\C:\)",
          uR"(\\?\UNC\server\share\)", uR"(\\.\)"}) {
        std::u16string const text = head + tail;
        std::wstring const wide_text = wide(text);
        EXPECT_EQ(allocations_of([&] { measure_everything<char16_t>(text); }), 0U)
            << printable(text);
        EXPECT_EQ(allocations_of([&] { get_root_path_length(text); }), 0U) << printable(text);
        EXPECT_EQ(allocations_of([&] { measure_everything<wchar_t>(wide_text); }), 0U)
            << printable(text);
    }
    EXPECT_EQ(allocations_of([] { checked_unc_root_length<wchar_t>(L"\\\\server\\share", 2); }),
              0U);
}

struct allocation_case
{
    std::u16string text;
    std::size_t expected;
    char const *why;
};

allocation_case const allocation_cases[] = {
    {uR"(C:\)" + tail, 1, "the result"},
    {u"C:/" + tail, 1, "a slash turned takes no second one"},
    {tail + u"   ", 1, "nor do trailing blanks"},
    {uR"(C:\)" + tail + u"\\", 1, "nor a trailing separator"},
    {uR"(\\?\C:\)" + tail, 1, "nor a prefix that is dropped"},
    {uR"(\\?\UNC\server\share\)" + tail, 1, "of either kind"},
    {u"//server/share/" + tail, 1, "nor a prefix in forward slashes"},
    {u"//./" + tail, 1, "of a device, too"},
    {std::u16string(64, u' '), 1, "a text of blanks is copied"},
    {uR"(C:\\)" + tail, 2, "doubled separators take one more"},
    {tail + u"//" + tail + u"//", 2, "however many there are"},
};

TEST(Allocations, OneForANativeFormAndOneMoreIfSeparatorsWereDoubled)
{
    for (auto const &row : allocation_cases) {
        std::wstring const wide_text = wide(row.text);
        EXPECT_EQ(allocations_of([&] { native_form<char16_t>(row.text); }), row.expected)
            << row.why;
        EXPECT_EQ(allocations_of([&] { native_form<wchar_t>(wide_text); }), row.expected)
            << row.why;
    }
}

// Where memory runs out, nothing is left half done.

/// Runs `call` with its first allocation failing, then its second, and so on until
/// none fails, and calls `check` after each failure. Returns how many failed.
template <typename Call, typename Check>
std::size_t fail_each_allocation(Call call, Check check)
{
    for (std::size_t nth = 1; nth < 100; ++nth) {
        bool failed = false;
        {
            failing_allocation const fault(nth);
            try {
                call();
            } catch (std::bad_alloc const &) {
                failed = true;
            }
            if (failed != fault.fired())
                break; // swallowed: the caller sees too few
        }
        if (!failed)
            return nth - 1;
        check();
    }
    return 0;
}

TEST(LackOfMemory, LeavesTheBaseOfAJoinAsItWas)
{
    std::u16string const addition = tail + u"\\" + tail;
    std::u16string base = tail;
    base.shrink_to_fit();
    std::size_t const failures = fail_each_allocation(
        [&] { concatenate_pathname(base, addition, true); }, [&] { EXPECT_EQ(base, tail); });
    EXPECT_EQ(failures, 1U) << "the room for the addition";
    EXPECT_EQ(base, tail + u"\\" + addition);
}

TEST(LackOfMemory, LeavesTheBaseOfAJoinWithATextThatIsNotInNativeForm)
{
    std::u16string const addition = tail + u"/" + tail + u"/";
    std::u16string base = tail;
    base.shrink_to_fit();
    std::size_t const failures = fail_each_allocation(
        [&] { concatenate_pathname(base, addition, true); }, [&] { EXPECT_EQ(base, tail); });
    EXPECT_EQ(failures, 2U) << "the native form of the addition, and the room for it";
    EXPECT_EQ(base, tail + u"\\" + tail + u"\\" + tail);
}

TEST(LackOfMemory, LeavesAPathnameWithItsOldExtension)
{
    std::u16string pathname = tail + u".txt";
    {
        failing_allocation const fault(1);
        EXPECT_THROW(replace_extension(pathname, tail), std::bad_alloc);
    }
    EXPECT_EQ(pathname, tail + u".txt");
}

TEST(LackOfMemory, IsNoPathnameThatCantBeJoined)
{
    upath const base(uR"(C:\)" + tail);
    upath const relative(tail);
    upath joined;
    std::size_t const failures = fail_each_allocation(
        [&] { joined = join_with_base(relative, base); }, [&] { EXPECT_TRUE(joined.empty()); });
    EXPECT_GT(failures, 1U);
    EXPECT_EQ(joined.native(), base.native() + u"\\" + tail);
}

TEST(LackOfMemory, ReplacesAnExceptionThatItKeepsFromBeingBuilt)
{
    std::size_t const failures =
        fail_each_allocation([] { AccessDenied const error(tail); }, [] {});
    EXPECT_EQ(failures, 2U) << "the identifier and the pathname";
    static_assert(noexcept(std::declval<InvalidArgument const &>().what()));
}

} // namespace
} // namespace fl::filesystem::detail
