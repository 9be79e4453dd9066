// Walks through pathnames with links, which only the simulated machine can make at will.

#include "access/link_chain.hpp"

#include "access/walking.hpp"
#include "support/calls.hpp"

#include <winioctl.h>

#include <functional>

namespace fl::filesystem::detail {
namespace {

using namespace test_support;
using simulation::fault;
using simulation::symbolic_link_data;
using test_support::failure;
using windows::path_type_enum;

constexpr auto classify = path_type_enum(0);

/// A symbolic link with exactly this text, which is what people see, too.
void add_link(simulated_machine &machine, std::u16string_view path, std::u16string_view text,
              flavour is = flavour::directory)
{
    machine.add_reparse_point(path, DWORD{IO_REPARSE_TAG_SYMLINK},
                              symbolic_link_data(text, text, 0), is);
}

std::wstring walked(std::wstring const &path, path_type_enum type = classify)
{
    return resolve_link_chain(path, type);
}

maybe_failure failed_walk(std::wstring const &path, path_type_enum type = classify)
{
    return failure_of([&] { resolve_link_chain(path, type); });
}

/// Two drives and a share with the same directories, and a file on each; the process
/// stands in C:\work.
void add_disks(simulated_machine &machine)
{
    machine.add_drive(u'D').add_share(u"s", u"h").map_drive(u'X', u"s", u"h");
    for (std::u16string const root : {u"C:", u"D:", u"\\\\s\\h"}) {
        machine.add_directory(root + uR"(\a\x\y)");
        machine.add_directory(root + uR"(\d\x\y)");
        machine.add_directory(root + uR"(\x\y)");
        machine.add_directory(root + uR"(\work\x\y)");
        machine.add_file(root + uR"(\f)");
    }
    machine.set_current_directory(u"C:\\work");
}

// Where a walk begins.

constexpr row_of_two<wchar_t const *, path_type_enum, wchar_t const *> start_cases[] = {
    {LR"(C:\)", windows::PATH_TYPE_DRIVE_ABSOLUTE, LR"(\\?\C:\)", "a root keeps its separator"},
    {LR"(C:\x)", windows::PATH_TYPE_DRIVE_ABSOLUTE, LR"(\\?\C:\x)", "a drive gets the prefix"},
    {LR"(C:\x\)", windows::PATH_TYPE_DRIVE_ABSOLUTE, LR"(\\?\C:\x)", "and loses what it ends in"},
    {LR"(c:\x\y)", windows::PATH_TYPE_DRIVE_ABSOLUTE, LR"(\\?\c:\x\y)", "letters stay"},
    {LR"(\\s\h)", windows::PATH_TYPE_UNC, LR"(\\?\UNC\s\h)", "as it is"},
    {LR"(\\s\h\)", windows::PATH_TYPE_UNC, LR"(\\?\UNC\s\h\)", "a root keeps its separator"},
    {LR"(\\s\h\x)", windows::PATH_TYPE_UNC, LR"(\\?\UNC\s\h\x)", "behind a share"},
    {LR"(//s\h\x)", windows::PATH_TYPE_UNC, LR"(\\?\UNC\s\h\x)", "whichever separators"},
    {LR"(\\?\C:\)", windows::PATH_TYPE_LONG_DRIVE_ABSOLUTE, LR"(\\?\C:\)", "a root"},
    {LR"(\\?\C:\x)", windows::PATH_TYPE_LONG_DRIVE_ABSOLUTE, LR"(\\?\C:\x)", "as it is"},
    {LR"(\\?\C:\x\)", windows::PATH_TYPE_LONG_DRIVE_ABSOLUTE, LR"(\\?\C:\x)", "without the end"},
    {LR"(\\?\C:\\x\\\y\\)", windows::PATH_TYPE_LONG_DRIVE_ABSOLUTE, LR"(\\?\C:\x\y)",
     "single separators come out"},
    {LR"(\\?\UNC\s\h)", windows::PATH_TYPE_LONG_UNC, LR"(\\?\UNC\s\h)", "as it is"},
    {LR"(\\?\UNC\s\h\)", windows::PATH_TYPE_LONG_UNC, LR"(\\?\UNC\s\h\)", "a root"},
    {LR"(\\?\unc\s\h\x\)", windows::PATH_TYPE_LONG_UNC, LR"(\\?\unc\s\h\x)", "letters stay"},
};

TEST_ON_MACHINE(ResolveLinkChain, BeginsWithTheRoot)
{
    add_disks(machine);
    expect_rows(start_cases, [](auto path, auto) { return walked(path); });
    expect_rows(start_cases, [](auto path, auto type) { return walked(path, type); });
}

TEST_ON_MACHINE(ResolveLinkChain, AsksNobodyAboutARoot)
{
    for (wchar_t const *path : {LR"(C:\)", LR"(Q:\)", LR"(\\?\C:\)", LR"(\\s\h)", LR"(\\s\h\)",
                                LR"(\\?\UNC\s\h)", LR"(\\?\UNC\s\h\)"})
        walked(path);
    EXPECT_EQ(calls(machine), lines{});
}

TEST_ON_MACHINE(ResolveLinkChain, RefusesRootsThatSayNotWhere)
{
    auto const no_type = invalid_argument("Invalid Path Type");
    auto const no_share = invalid_argument("UNC root path length can not be zero");
    row_of_two<wchar_t const *, path_type_enum, failure> const cases[] = {
        {LR"(\x)", classify, nowhere(), "on the current drive"},
        {L"C:", classify, nowhere(), "on the drive's current directory"},
        {L"C:x", classify, nowhere(), "on the drive's current directory"},
        {LR"(\\?\C:)", classify, nowhere(), "a prefix that nothing expands"},
        {LR"(\\?\C:x)", classify, nowhere(), "a prefix that nothing expands"},
        {LR"(\\s\h)", windows::PATH_TYPE_UNC_NO_ROOT, nowhere(), "by the type that is told"},
        {LR"(\\?\UNC\s\h)", windows::PATH_TYPE_LONG_UNC_NO_ROOT, nowhere(), "by the type"},
        {LR"(C:\x)", windows::PATH_TYPE_ROOTED, nowhere(), "by the type"},
        {LR"(C:\x)", windows::PATH_TYPE_DRIVE_RELATIVE, nowhere(), "by the type"},
        {LR"(C:\x)", windows::PATH_TYPE_LONG_DRIVE_RELATIVE, nowhere(), "by the type"},
        {L"", classify, no_type, "nothing"},
        {L"x", classify, no_type, "relative"},
        {L"/x", classify, no_type, "relative, by its slash"},
        {LR"(\\s)", classify, no_type, "no share"},
        {LR"(\\?\x)", classify, no_type, "no drive"},
        {LR"(\\?\UNC\s)", classify, no_type, "no share"},
        {LR"(\\.\COM1)", classify, no_type, "a device"},
        {LR"(C:\x)", windows::PATH_TYPE_RELATIVE, no_type, "by the type"},
        {LR"(C:\x)", windows::PATH_TYPE_DEVICE, no_type, "by the type"},
        {LR"(\\s)", windows::PATH_TYPE_UNC, no_share, "a type that isn't its own"},
        {LR"(\\?\UNC\s)", windows::PATH_TYPE_LONG_UNC, no_share, "a type that isn't its own"},
    };
    expect_rows(cases, [](auto path, auto type) { return failed_walk(path, type); });
    EXPECT_EQ(calls(machine), lines{});
}

TEST_ON_MACHINE(ResolveLinkChain, StaysInsideATextThatIsShorterThanItsType)
{
    EXPECT_EQ(walked(L"C:", windows::PATH_TYPE_DRIVE_ABSOLUTE), LR"(\\?\C:)");
    EXPECT_EQ(walked(LR"(\\?\C)", windows::PATH_TYPE_LONG_DRIVE_ABSOLUTE), LR"(\\?\C)");
}

// Dots, without a link in sight.

constexpr text_row<wchar_t> dots_cases[] = {
    {LR"(\\?\C:\a\..\x)", LR"(\\?\C:\x)", "one up and down again"},
    {LR"(\\?\C:\a\..)", LR"(\\?\C:\)", "up to the root, which keeps its separator"},
    {LR"(\\?\C:\a\..\)", LR"(\\?\C:\)", "up to the root, which keeps its separator"},
    {LR"(\\?\C:\..)", LR"(\\?\C:\)", "there is nothing above a root"},
    {LR"(\\?\C:\..\)", LR"(\\?\C:\)", "there is nothing above a root"},
    {LR"(\\?\C:\..\..\..\x)", LR"(\\?\C:\x)", "there is nothing above a root"},
    {LR"(\\?\C:\.)", LR"(\\?\C:\)", "the root itself"},
    {LR"(\\?\C:\.\)", LR"(\\?\C:\)", "the root itself"},
    {LR"(\\?\C:\.\.\x)", LR"(\\?\C:\x)", "the root itself"},
    {LR"(\\?\C:\a\.)", LR"(\\?\C:\a)", "the directory itself"},
    {LR"(\\?\C:\a\.\x)", LR"(\\?\C:\a\x)", "the directory itself"},
    {LR"(\\?\C:\a\x\..)", LR"(\\?\C:\a)", "one up"},
    {LR"(\\?\C:\a\x\..\)", LR"(\\?\C:\a)", "one up"},
    {LR"(\\?\C:\a\x\y\..\..)", LR"(\\?\C:\a)", "two up"},
    {LR"(\\?\C:\a\x\y\..\..\..\..\..)", LR"(\\?\C:\)", "more than there are"},
    {LR"(\\?\C:\a\\..\x)", LR"(\\?\C:\x)", "empty elements are none"},
    {LR"(\\?\C:\a\..\\\x)", LR"(\\?\C:\x)", "empty elements are none"},
    {LR"(\\?\C:\...\a)", nullptr, "three are a name"},
    {LR"(C:\a\..\x)", LR"(\\?\C:\x)", "from a bare drive"},
    {LR"(C:\..)", LR"(\\?\C:\)", "from a bare drive"},
    {LR"(C:\a\..)", LR"(\\?\C:\)", "from a bare drive"},
    {LR"(\\?\UNC\s\h\a\..\x)", LR"(\\?\UNC\s\h\x)", "on a share"},
    {LR"(\\?\UNC\s\h\a\..)", LR"(\\?\UNC\s\h\)", "up to the root, which keeps its separator"},
    {LR"(\\?\UNC\s\h\a\..\)", LR"(\\?\UNC\s\h\)", "up to the root, which keeps its separator"},
    {LR"(\\?\UNC\s\h\..)", LR"(\\?\UNC\s\h\)", "there is nothing above a share"},
    {LR"(\\?\UNC\s\h\..\..\x)", LR"(\\?\UNC\s\h\x)", "there is nothing above a share"},
    {LR"(\\?\UNC\s\h\.)", LR"(\\?\UNC\s\h\)", "the root itself"},
    {LR"(\\?\UNC\s\h\a\x\..)", LR"(\\?\UNC\s\h\a)", "one up"},
    {LR"(X:\a\..\x)", LR"(\\?\X:\x)", "on a mapped drive"},
    {LR"(X:\a\..)", LR"(\\?\X:\)", "on a mapped drive"},
    {LR"(\\s\h\a\x\..\x)", LR"(\\?\UNC\s\h\a\x)", "deep enough below a bare share"},
    {LR"(\\s\h\work\..\x)", LR"(\\?\UNC\s\h\x)", "and from a name that isn't one unit long"},
};

TEST_ON_MACHINE(ResolveLinkChain, AppliesDots)
{
    add_disks(machine);
    for (auto const &row : dots_cases) {
        std::string const shown = printable(units(row.text)) + ": " + row.why;
        if (row.expected == nullptr)
            EXPECT_EQ(failed_walk(row.text), not_found(units(row.text))) << shown;
        else
            EXPECT_EQ(walked(row.text), row.expected) << shown;
    }
}

// A walk from a bare server pathname counts the two separators ahead of the server in its
// root, which the long form hasn't: what looks like the root lies two units behind it.
TEST_ON_MACHINE(ResolveLinkChain, TakesTwoUnitsTooManyForTheRootOfABareShare)
{
    using namespace std::string_literals;
    add_disks(machine);
    EXPECT_EQ(walked(LR"(\\s\h\a\..\x)"), LR"(\\?\UNC\s\h\a\x)") << "`a` counts as root";
    EXPECT_EQ(walked(LR"(\\s\h\a\..\..\x)"), LR"(\\?\UNC\s\h\a\x)") << "however often";
    EXPECT_EQ(walked(LR"(\\s\h\a\..)"), LR"(\\?\UNC\s\h\a)") << "at the end, too";
    EXPECT_EQ(walked(LR"(\\s\h\a\x\..)"), LR"(\\?\UNC\s\h\a)")
        << "what is below it goes by the true separators, then it is the root";
    EXPECT_EQ(walked(LR"(\\s\h\..)"), LR"(\\?\UNC\s\h\)" + std::wstring(2, L'\0'))
        << "two units of the empty buffer";
    EXPECT_EQ(walked(LR"(\\s\h\work\..)"), LR"(\\?\UNC\s\h\wo)") << "two units of what stood there";
    EXPECT_EQ(walked(LR"(\\s\h\work\..\..)"), LR"(\\?\UNC\s\h\wo)") << "from above, too";
    EXPECT_EQ(walked(LR"(\\s\h\work\x\..)"), LR"(\\?\UNC\s\h\work)") << "below there it isn't";
    EXPECT_EQ(failed_walk(LR"(\\s\h\..\x)"), system_error(67, uR"(\\?\UNC\s\x)"))
        << "ahead of the units nothing holds the share";
    // by a link it comes to have its root
    add_link(machine, uR"(\\s\h\l)", uR"(\\s\h\a)");
    EXPECT_EQ(walked(LR"(\\s\h\l\..\x)"), LR"(\\?\UNC\s\h\x)");
    EXPECT_EQ(walked(LR"(\\s\h\l\..)"), LR"(\\?\UNC\s\h\)");
    EXPECT_EQ(walked(LR"(\\s\h\l\..\..)"), LR"(\\?\UNC\s\h\)");
}

TEST_ON_MACHINE(ResolveLinkChain, ARootedLinkBelowABareShareNeverEnds)
{
    add_disks(machine);
    add_link(machine, uR"(\\s\h\l)", uR"(\x)");
    // two units behind the root lies the link's own name, and a NUL ends what the system sees
    EXPECT_EQ(failed_walk(LR"(\\s\h\l)"),
              too_many_links(std::u16string(uR"(\\?\UNC\s\h\l)") + char16_t{0} + u'x'));
    EXPECT_EQ(walked(LR"(\\?\UNC\s\h\l)"), LR"(\\?\UNC\s\h\x)") << "the long form knows its root";
}

// What isn't there, and what isn't a directory.

TEST_ON_MACHINE(ResolveLinkChain, NeedsADirectoryForDots)
{
    add_disks(machine);
    add_link(machine, uR"(C:\lf)", uR"(C:\f)", flavour::file);
    for (wchar_t const *path :
         {LR"(\\?\C:\f\..)", LR"(\\?\C:\f\.)", LR"(\\?\C:\f\..\x)", LR"(\\?\C:\f\.\x)",
          LR"(\\?\C:\f\..\)", LR"(C:\a\..\f\..)", LR"(\\?\UNC\s\h\f\..)", LR"(\\s\h\f\..\x)",
          LR"(X:\f\..)", LR"(\\?\C:\lf\..)", LR"(\\?\C:\lf\.)", LR"(\\?\C:\f\\..)"})
        EXPECT_EQ(failed_walk(path), nowhere()) << printable(units(path));
}

struct missing_case
{
    wchar_t const *path;
    wchar_t const *expected; // null: not found
    char16_t const *named;
    char const *why;
};

constexpr missing_case missing_cases[] = {
    {LR"(\\?\C:\no)", nullptr, uR"(\\?\C:\no)", "the last element"},
    {LR"(\\?\C:\no\no)", nullptr, uR"(\\?\C:\no\no)", "the last one tells"},
    {LR"(\\?\C:\f\no)", nullptr, uR"(\\?\C:\f\no)", "below a file"},
    {LR"(\\?\Q:\no)", nullptr, uR"(\\?\Q:\no)", "on no drive"},
    {LR"(\\?\C:\no\)", LR"(\\?\C:\no)", nullptr, "with a separator it isn't the last"},
    {LR"(\\?\C:\no\no\\)", LR"(\\?\C:\no\no)", nullptr, "with a separator it isn't the last"},
    {LR"(\\?\C:\no\..)", nullptr, uR"(\\?\C:\no)", "what dots need is asked for"},
    {LR"(\\?\C:\no\.\x)", nullptr, uR"(\\?\C:\no)", "what dots need is asked for"},
    {LR"(\\?\C:\no\no\..\..\x)", nullptr, uR"(\\?\C:\no\no)", "what dots need is asked for"},
    {LR"(\\?\C:\f\no\..)", nullptr, uR"(\\?\C:\f\no)", "what dots need is asked for"},
    {LR"(\\?\Q:\..)", nullptr, uR"(\\?\Q:\)", "a root keeps its separator here"},
    {LR"(\\?\C:\l\no)", nullptr, uR"(\\?\D:\x\no)", "named as far as it was walked"},
    {LR"(\\?\C:\ln)", nullptr, uR"(\\?\D:\no)", "a link to nothing"},
    {LR"(\\?\C:\ln\no\)", LR"(\\?\D:\no\no)", nullptr, "below a link to nothing"},
};

TEST_ON_MACHINE(ResolveLinkChain, TellsWhatIsMissingAtTheEndOnly)
{
    add_disks(machine);
    add_link(machine, u"C:\\l", uR"(D:\x)");
    add_link(machine, u"C:\\ln", uR"(D:\no)");
    for (auto const &row : missing_cases) {
        std::string const shown = printable(units(row.path)) + ": " + row.why;
        if (row.expected == nullptr)
            EXPECT_EQ(failed_walk(row.path), not_found(row.named)) << shown;
        else
            EXPECT_EQ(walked(row.path), row.expected) << shown;
    }
}

TEST_ON_MACHINE(ResolveLinkChain, TellsOtherCodesOfTheLastElement)
{
    add_disks(machine);
    EXPECT_EQ(failed_walk(LR"(\\no\h\x)"), system_error(53, uR"(\\?\UNC\no\h\x)"));
    EXPECT_EQ(failed_walk(LR"(\\s\no\x)"), system_error(67, uR"(\\?\UNC\s\no\x)"));
    auto const fault = machine.fail_every_call_on_name("GetFileAttributesExW", uR"(C:\a\x)", 5);
    EXPECT_EQ(failed_walk(LR"(\\?\C:\a\x)"), denied(uR"(\\?\C:\a\x)"));
    EXPECT_EQ(walked(LR"(\\?\C:\a\x\y)"), LR"(\\?\C:\a\x\y)") << "not of one in the middle";
    EXPECT_EQ(failed_walk(LR"(\\?\C:\a\x\..)"), denied(uR"(\\?\C:\a\x)")) << "unless dots ask";
    EXPECT_EQ(failed_walk(LR"(\\?\C:\a\x\.\y)"), denied(uR"(\\?\C:\a\x)")) << "unless dots ask";
}

// What links say. The link is in C:\d, and the same text is told by each kind of link.

struct target_case
{
    char16_t const *text;
    wchar_t const *tail;
    wchar_t const *expected;
    char const *why;
};

constexpr target_case target_cases[] = {
    // relative
    {u"x", L"", LR"(\\?\C:\d\x)", "from the link's directory"},
    {u"x", LR"(\y)", LR"(\\?\C:\d\x\y)", "with what stood behind it"},
    {u"x", LR"(\)", LR"(\\?\C:\d\x)", "with what stood behind it"},
    {u"x", LR"(\\y)", LR"(\\?\C:\d\x\y)", "with what stood behind it"},
    {u"x\\", L"", LR"(\\?\C:\d\x)", "a separator at the end goes"},
    {u"x\\", LR"(\y)", LR"(\\?\C:\d\x\y)", "a separator at the end goes"},
    {u"x\\\\", L"", LR"(\\?\C:\d\x)", "two go"},
    {u"x\\\\\\", LR"(\y)", LR"(\\?\C:\d\x\y)", "all go"},
    {uR"(x\\\y)", L"", LR"(\\?\C:\d\x\y)", "one separator for each run"},
    {uR"(..\x)", L"", LR"(\\?\C:\x)", "out of the link's directory"},
    {uR"(..\x)", LR"(\y)", LR"(\\?\C:\x\y)", "out of the link's directory"},
    {uR"(..\a)", LR"(\..\x)", LR"(\\?\C:\x)", "and the tail's dots from there"},
    {u".", L"", LR"(\\?\C:\d)", "the link's directory"},
    {u".", LR"(\x)", LR"(\\?\C:\d\x)", "the link's directory"},
    {u"..", L"", LR"(\\?\C:\)", "the root"},
    {u"..", LR"(\..\x)", LR"(\\?\C:\x)", "the root"},
    {uR"(..\..\..\x)", L"", LR"(\\?\C:\x)", "nothing is above the root"},
    {uR"(x\.\..\x\y)", LR"(\..)", LR"(\\?\C:\d\x)", "any dots"},
    // on the drive
    {uR"(\x)", L"", LR"(\\?\C:\x)", "from the root"},
    {uR"(\x)", LR"(\y)", LR"(\\?\C:\x\y)", "from the root"},
    {uR"(\x\)", LR"(\y)", LR"(\\?\C:\x\y)", "a separator at the end goes"},
    {uR"(\)", L"", LR"(\\?\C:\)", "the root"},
    {uR"(\)", LR"(\)", LR"(\\?\C:\)", "the root"},
    {uR"(\)", LR"(\x)", LR"(\\?\C:\x)", "the root"},
    {uR"(\..\x)", L"", LR"(\\?\C:\x)", "nothing is above the root"},
    {uR"(\.)", L"", LR"(\\?\C:\)", "the root itself"},
    {uR"(\a\..)", L"", LR"(\\?\C:\)", "the root keeps its separator"},
    // drives
    {uR"(D:\x)", L"", LR"(\\?\D:\x)", "another drive"},
    {uR"(D:\x)", LR"(\y)", LR"(\\?\D:\x\y)", "another drive"},
    {uR"(D:\x\)", LR"(\y)", LR"(\\?\D:\x\y)", "a separator at the end goes"},
    {uR"(D:\x\\)", L"", LR"(\\?\D:\x)", "two go"},
    {uR"(D:\x\\)", LR"(\y)", LR"(\\?\D:\x\y)", "but one stays ahead of the tail"},
    {uR"(D:\\x)", LR"(\\y)", LR"(\\?\D:\x\y)", "one separator for each run"},
    {uR"(c:\x)", L"", LR"(\\?\c:\x)", "letters as the link has them"},
    {uR"(C:\x)", LR"(\..)", LR"(\\?\C:\)", "the root keeps its separator"},
    {uR"(D:\..\x)", L"", LR"(\\?\D:\x)", "nothing is above the root"},
    {uR"(D:\\)", L"", LR"(\\?\D:\)", "the root, and nothing is asked there"},
    {uR"(D:\\)", LR"(\)", LR"(\\?\D:\)", "the root"},
    {uR"(D:\\)", LR"(\x)", LR"(\\?\D:\x)", "below the root"},
    {uR"(D:\\)", LR"(\..\x)", LR"(\\?\D:\x)", "nothing is above the root"},
    {uR"(C:\)", L"", LR"(\\?\C:\work)", "without its separator that is the drive's directory"},
    {uR"(C:\)", LR"(\x)", LR"(\\?\C:\work\x)", "without its separator, the drive's directory"},
    {uR"(D:\)", L"", LR"(\\?\D:\)", "where the root is the drive's directory"},
    {uR"(D:\)", LR"(\x)", LR"(\\?\D:\x)", "where the root is the drive's directory"},
    {u"C:", L"", LR"(\\?\C:\work)", "the drive's directory"},
    {u"C:", LR"(\x)", LR"(\\?\C:\work\x)", "the drive's directory"},
    {u"C:x", L"", LR"(\\?\C:\work\x)", "below the drive's directory"},
    {u"C:x\\", LR"(\y)", LR"(\\?\C:\work\x\y)", "below the drive's directory"},
    {uR"(C:..\x)", L"", LR"(\\?\C:\x)", "out of the drive's directory"},
    {uR"(C:.\x\\y)", L"", LR"(\\?\C:\work\x\y)", "out of the drive's directory"},
    {u"D:x", LR"(\y)", LR"(\\?\D:\x\y)", "where the root is the drive's directory"},
    // shares
    {uR"(\\s\h\x)", L"", LR"(\\?\UNC\s\h\x)", "a share"},
    {uR"(\\s\h\x)", LR"(\y)", LR"(\\?\UNC\s\h\x\y)", "a share"},
    {uR"(\\s\h\x\\)", LR"(\y)", LR"(\\?\UNC\s\h\x\y)", "one separator ahead of the tail"},
    {uR"(\\s\\h\\x)", LR"(\\y)", LR"(\\?\UNC\s\h\x\y)", "one separator for each run"},
    {uR"(\\s\h)", L"", LR"(\\?\UNC\s\h)", "as the link has it"},
    {uR"(\\s\h\)", L"", LR"(\\?\UNC\s\h)", "without its last separator"},
    {uR"(\\s\h\\)", L"", LR"(\\?\UNC\s\h\)", "without its last separator"},
    {uR"(\\s\h)", LR"(\)", LR"(\\?\UNC\s\h\)", "the root"},
    {uR"(\\s\h)", LR"(\x)", LR"(\\?\UNC\s\h\x)", "below the root"},
    {uR"(\\s\h\\)", LR"(\x)", LR"(\\?\UNC\s\h\x)", "below the root"},
    {uR"(\\s\h\\)", LR"(\)", LR"(\\?\UNC\s\h\)", "the root"},
    {uR"(\\s\h)", LR"(\..\..\x)", LR"(\\?\UNC\s\h\x)", "nothing is above the root"},
    {uR"(\\s\h)", LR"(\x\..)", LR"(\\?\UNC\s\h\)", "the root keeps its separator"},
    {uR"(\\s\h\a)", LR"(\..)", LR"(\\?\UNC\s\h\)", "the root keeps its separator"},
    {uR"(\\s\h\a)", LR"(\..\x)", LR"(\\?\UNC\s\h\x)", "the root is as long as it is"},
    {uR"(\\s\h\x\y\..)", L"", LR"(\\?\UNC\s\h\x)", "any dots"},
    // drives with the prefix
    {uR"(\\?\D:\x)", L"", LR"(\\?\D:\x)", "another drive"},
    {uR"(\\?\D:\x)", LR"(\y)", LR"(\\?\D:\x\y)", "another drive"},
    {uR"(\\?\D:\x\\)", LR"(\y)", LR"(\\?\D:\x\y)", "one separator ahead of the tail"},
    {uR"(\\?\D:\x\\)", L"", LR"(\\?\D:\x)", "none at the end"},
    {uR"(\\?\D:\\)", L"", LR"(\\?\D:\)", "the root"},
    {uR"(\\?\D:\\)", LR"(\x)", LR"(\\?\D:\x)", "the root"},
    {uR"(\\?\D:\\)", LR"(\)", LR"(\\?\D:\)", "the root"},
    {uR"(\\?\D:\a\..\x)", LR"(\..)", LR"(\\?\D:\)", "the root keeps its separator"},
    // an expansion loses the prefix, and seven units are taken for the root all the same
    {uR"(\\?\C:)", L"", LR"(C:\work)", "the drive's directory, by chance of seven units"},
    {uR"(\\?\C:\)", L"", LR"(C:\work)", "without its separator, the drive's directory"},
    {uR"(\\?\C:)", LR"(\x)", LR"(C:\work\x)", "below the drive's directory"},
    {uR"(\\?\C:x)", L"", LR"(C:\work\x)", "below the drive's directory"},
    {uR"(\\?\C:x)", LR"(\y)", LR"(C:\work\x\y)", "below the drive's directory"},
    {uR"(\\?\C:..\x)", L"", LR"(C:\x)", "out of the drive's directory"},
    {uR"(\\?\D:)", L"", LR"(D:\)", "a root that is shorter than seven units"},
    {uR"(\\?\D:)", LR"(\x)", LR"(D:\x)", "a root that is shorter than seven units"},
    {uR"(\\?\D:\)", LR"(\x)", LR"(D:\x)", "a root that is shorter than seven units"},
    {uR"(\\?\D:x)", L"", LR"(D:\x)", "a root that is shorter than seven units"},
    {uR"(\\?\D:x)", LR"(\y)", LR"(D:\x\y)", "a root that is shorter than seven units"},
    // shares with the prefix
    {uR"(\\?\UNC\s\h\x)", L"", LR"(\\?\UNC\s\h\x)", "a share"},
    {uR"(\\?\UNC\s\h\x)", LR"(\y)", LR"(\\?\UNC\s\h\x\y)", "a share"},
    {uR"(\\?\UNC\s\h\x\\)", LR"(\y)", LR"(\\?\UNC\s\h\x\y)", "one separator ahead of the tail"},
    {uR"(\\?\unc\s\h\x)", L"", LR"(\\?\unc\s\h\x)", "letters as the link has them"},
    {uR"(\\?\UNC\s\h)", L"", LR"(\\?\UNC\s\h)", "as the link has it"},
    {uR"(\\?\UNC\s\h\)", L"", LR"(\\?\UNC\s\h)", "without its last separator"},
    {uR"(\\?\UNC\s\h\\)", L"", LR"(\\?\UNC\s\h\)", "the root keeps its separator"},
    {uR"(\\?\UNC\s\h)", LR"(\)", LR"(\\?\UNC\s\h\)", "the root"},
    {uR"(\\?\UNC\s\h)", LR"(\x)", LR"(\\?\UNC\s\h\x)", "below the root"},
    {uR"(\\?\UNC\s\h\\)", LR"(\x)", LR"(\\?\UNC\s\h\x)", "below the root"},
    {uR"(\\?\UNC\s\h)", LR"(\a\..\..\x)", LR"(\\?\UNC\s\h\x)", "nothing is above the root"},
    {uR"(\\?\UNC\s\h)", LR"(\a\..)", LR"(\\?\UNC\s\h\)", "the root keeps its separator"},
};

/// A way to put a text at `C:\d\` and a name.
struct kind_of_link
{
    char const *name;
    std::u16string file;
    std::function<void(simulated_machine &, std::u16string const &, std::u16string const &)> add;
};

std::vector<kind_of_link> kinds_of_links()
{
    return {
        {"symbolic link", u"l",
         [](auto &machine, auto const &path, auto const &text) { add_link(machine, path, text); }},
        {"relative symbolic link", u"r",
         [](auto &machine, auto const &path, auto const &text) {
             machine.add_reparse_point(path, DWORD{IO_REPARSE_TAG_SYMLINK},
                                       symbolic_link_data(text, text, 1), flavour::directory);
         }},
        {"junction", u"j",
         [](auto &machine, auto const &path, auto const &text) {
             machine.add_junction(path, uR"(\??\C:\elsewhere)", text);
         }},
        {"shortcut", u"k.lnk",
         [](auto &machine, auto const &path, auto const &text) {
             machine.add_shortcut(path, text);
         }},
    };
}

TEST_ON_MACHINE(ResolveLinkChain, FollowsWhatLinksSay)
{
    for (auto const &kind : kinds_of_links())
        for (auto const &row : target_cases) {
            if (kind.file == u"k.lnk" && std::u16string_view(row.text).starts_with(uR"(\\?\)"))
                continue; // the shell looks for the target first, by that very text
            simulated_machine fresh;
            add_disks(fresh);
            std::u16string const path = uR"(C:\d\)" + kind.file;
            kind.add(fresh, path, row.text);
            std::string const shown = kind.name + (" " + printable(row.text)) + " with " +
                                      printable(units(row.tail)) + ": " + row.why;
            std::wstring result;
            EXPECT_EQ(failure_of([&] { result = walked(LR"(\\?\)" + wide(path) + row.tail); }),
                      std::nullopt)
                << shown;
            EXPECT_EQ(result, row.expected) << shown;
            result.clear();
            EXPECT_EQ(failure_of([&] { result = walked(wide(path) + row.tail); }), std::nullopt)
                << shown;
            EXPECT_EQ(result, row.expected) << shown << " (no prefix)";
            expect_nothing_open(fresh, shown);
        }
}

failure const no_type = invalid_argument("Invalid Path Type");
failure const no_share = invalid_argument("UNC root path length can not be zero");
failing_row<char16_t const *> const bad_target_cases[] = {
    {uR"(\\s)", no_type, "no share"},
    {uR"(\\s\)", no_type, "no share"},
    {uR"(\\s\\)", no_type, "no share"},
    {uR"(\\\)", no_type, "no server"},
    {uR"(\\?)", no_type, "a server's name, without a share"},
    {uR"(\\?\)", no_type, "the same, once the separator has gone"},
    {uR"(\\?\\)", no_type, "a prefix and nothing else"},
    {uR"(\\?\x)", no_type, "no drive behind the prefix"},
    {uR"(\\?\x\y)", no_type, "no drive behind the prefix"},
    {uR"(\\?\UNC)", no_type, "no drive behind the prefix"},
    {uR"(\\?\UNC\)", no_type, "no drive behind the prefix"},
    {uR"(\\?\UNC\\)", no_type, "no server"},
    {uR"(\\?\UNC\s)", no_type, "no share"},
    {uR"(\\?\UNC\s\)", no_type, "no share"},
    {uR"(\\?\UNC\s\\)", no_type, "no share"},
    {uR"(\\s\..\x)", system_error(67, uR"(\\?\UNC\s\..\x)"), "dots are taken for a share"},
    {uR"(\\?\UNC\..\x)", no_share, "that is no server"},
    {uR"(\\?\UNC\s\..)", no_share, "that is no share"},
    {uR"(\\?\UNC\s\.\x)", no_share, "that is no share"},
    {uR"(\\.\COM1)", not_found(uR"(\\?\C:\COM1)"), "a device is a name on the drive"},
    {u"no", not_found(uR"(\\?\C:\d\no)"), "nothing is there"},
    {uR"(x\no)", not_found(uR"(\\?\C:\d\x\no)"), "nothing is there"},
    {uR"(\f\..)", nowhere(), "no directory"},
    {uR"(\f\.)", nowhere(), "no directory"},
    {uR"(Q:\x)", not_found(uR"(\\?\Q:\x)"), "no drive"},
    {uR"(\\no\h\x)", system_error(53, uR"(\\?\UNC\no\h\x)"), "no server there"},
};

TEST_ON_MACHINE(ResolveLinkChain, RefusesTargetsThatAreNone)
{
    for (auto const &kind : kinds_of_links())
        for (auto const &row : bad_target_cases) {
            if (kind.file == u"k.lnk")
                continue; // the shell looks for a shortcut's target, and tells by itself
            simulated_machine fresh;
            add_disks(fresh);
            std::u16string const path = uR"(C:\d\)" + kind.file;
            kind.add(fresh, path, row.given);
            std::string const shown =
                kind.name + (" " + printable(row.given)) + std::string(": ") + row.why;
            EXPECT_EQ(failed_walk(LR"(\\?\)" + wide(path)), row.expected) << shown;
            expect_nothing_open(fresh, shown);
        }
}

TEST_ON_MACHINE(ResolveLinkChain, TwoSeparatorsAreTheRootWithoutTheLast)
{
    add_disks(machine);
    add_link(machine, uR"(C:\d\l)", uR"(\\)");
    EXPECT_EQ(walked(LR"(\\?\C:\d\l)"), LR"(\\?\C:\)");
    EXPECT_EQ(walked(LR"(\\?\C:\d\l\x)"), LR"(\\?\C:\x)");
}

TEST_ON_MACHINE(ResolveLinkChain, AShortcutWhoseTargetTheShellDoesntFindTellsAtTheEndOnly)
{
    add_disks(machine);
    machine.add_shortcut(uR"(C:\no.lnk)", uR"(C:\no)");
    machine.add_shortcut(uR"(C:\server.lnk)", uR"(\\no\h\x)");
    EXPECT_EQ(failed_walk(LR"(\\?\C:\no.lnk)"), not_found(uR"(\\?\C:\no.lnk)"));
    EXPECT_EQ(failed_walk(LR"(\\?\C:\server.lnk)"), system_error(53, uR"(\\?\C:\server.lnk)"));
    EXPECT_EQ(walked(LR"(\\?\C:\no.lnk\)"), LR"(\\?\C:\no.lnk)");
    EXPECT_EQ(failed_walk(LR"(\\?\C:\no.lnk\..)"), nowhere());
}

TEST_ON_MACHINE(ResolveLinkChain, ShortcutsWithAPrefix)
{
    add_disks(machine);
    machine.add_shortcut(uR"(C:\d.lnk)", uR"(\\?\D:\x)");
    machine.add_shortcut(uR"(C:\s.lnk)", uR"(\\?\UNC\s\h\x)");
    EXPECT_EQ(walked(LR"(\\?\C:\d.lnk)"), LR"(\\?\D:\x)");
    EXPECT_EQ(walked(LR"(\\?\C:\d.lnk\y)"), LR"(\\?\D:\x\y)");
    EXPECT_EQ(walked(LR"(\\?\C:\s.lnk)"), LR"(\\?\UNC\s\h\x)");
    EXPECT_EQ(walked(LR"(\\?\C:\s.lnk\y\..)"), LR"(\\?\UNC\s\h\x)");
}

TEST_ON_MACHINE(ResolveLinkChain, CollapsesSlashesOfShortcuts)
{
    add_disks(machine);
    machine.add_shortcut(uR"(C:\a.lnk)", u"//s/h//x");
    machine.add_shortcut(uR"(C:\b.lnk)", u"D:/x\\/y");
    machine.add_shortcut(uR"(C:\d\c.lnk)", u"x//y");
    machine.add_shortcut(uR"(C:\d\r.lnk)", u"/x/y");
    EXPECT_EQ(walked(LR"(\\?\C:\a.lnk\y)"), LR"(\\?\UNC\s\h\x\y)");
    EXPECT_EQ(walked(LR"(\\?\C:\b.lnk)"), LR"(\\?\D:\x\y)");
    EXPECT_EQ(walked(LR"(\\?\C:\d\c.lnk)"), LR"(\\?\C:\d\x\y)");
    EXPECT_EQ(walked(LR"(\\?\C:\d\r.lnk)"), LR"(\\?\C:\d\x\y)")
        << "a slash ahead makes no root, but an empty element";
}

TEST_ON_MACHINE(ResolveLinkChain, ALongTargetBehindADriveRelativePrefixIsCutAtSevenUnits)
{
    machine.add_directory(uR"(C:\workshop\x\y)").set_current_directory(u"C:\\workshop");
    add_link(machine, uR"(C:\l)", uR"(\\?\C:)");
    add_link(machine, uR"(C:\m)", uR"(\\?\C:x)");
    EXPECT_EQ(walked(LR"(\\?\C:\l)"), LR"(C:\workshop)");
    EXPECT_EQ(walked(LR"(\\?\C:\l\x)"), LR"(C:\workshop\x)");
    EXPECT_EQ(walked(LR"(\\?\C:\m\y)"), LR"(C:\workshop\x\y)");
    machine.add_directory(uR"(C:\wo\x\y)").set_current_directory(u"C:\\wo");
    EXPECT_EQ(walked(LR"(\\?\C:\l)"), LR"(C:\wo)") << "never beyond the text";
    EXPECT_EQ(walked(LR"(\\?\C:\l\x)"), LR"(C:\wo\x)");
    EXPECT_EQ(walked(LR"(\\?\C:\m\y)"), LR"(C:\wo\x\y)");
}

// `\\?\C:\` loses its last separator, and then its prefix when it is expanded: where that
// drive stands at its root, three units are settled and no seven.
constexpr text_row<wchar_t> bare_root_cases[] = {
    {LR"(D:\m\..\b)", LR"(C:\b)", "once gave `Cb`"},
    {LR"(D:\m\..)", LR"(C:\)", "the root, which keeps its separator"},
    {LR"(D:\m\..\)", LR"(C:\)", "the root, which keeps its separator"},
    {LR"(D:\m\..\..\b)", LR"(C:\b)", "nothing is above a root"},
    {LR"(D:\m\..\..)", LR"(C:\)", "nothing is above a root"},
    {LR"(D:\m\b\..)", LR"(C:\)", "up to the root"},
    {LR"(D:\m\b\x\..\..\..\b)", LR"(C:\b)", "more than there are"},
    {LR"(D:\m\b\x\..)", LR"(C:\b)", "one up"},
    {LR"(D:\m\rooted)", LR"(C:\b)", "a rooted link from there"},
    {LR"(D:\m\b\below)", LR"(C:\b)", "a rooted link deeper down"},
    {LR"(D:\m\b\below\..)", LR"(C:\)", "and up"},
    {LR"(D:\m\rooted\..\..\b)", LR"(C:\b)", "and up twice"},
    {LR"(D:\m\rooted\x\..)", LR"(C:\b)", "and up once"},
    {LR"(D:\m\root)", LR"(C:\)", "a link to the root"},
    {LR"(D:\m\b\x\..\root\..\b)", LR"(C:\b)", "a link to the root, and up"},
    {LR"(D:\m\drive)", LR"(\\?\C:\b)", "a link that names the drive brings the prefix"},
    {LR"(D:\m\drive\..\..\b)", LR"(\\?\C:\b)", "and its root"},
    {LR"(D:\m\m)", LR"(C:\)", "the same again"},
};

TEST_ON_MACHINE(ResolveLinkChain, ALongLinkToWhereADriveStandsAtItsRootGaveARelativeName)
{
    for (char16_t const *text : {uR"(\\?\C:\)", uR"(\\?\C:)"}) {
        simulated_machine fresh;
        fresh.add_drive(u'D').add_directory(uR"(C:\b\x)").set_current_directory(u"C:\\");
        add_link(fresh, uR"(D:\m)", text);
        add_link(fresh, uR"(C:\m)", text);
        add_link(fresh, uR"(C:\rooted)", uR"(\b)");
        add_link(fresh, uR"(C:\b\below)", uR"(\b)");
        add_link(fresh, uR"(C:\root)", uR"(\)");
        add_link(fresh, uR"(C:\b\root)", uR"(\)");
        add_link(fresh, uR"(C:\drive)", uR"(C:\b)");
        for (auto const &row : bare_root_cases) {
            std::string const shown = printable(units(row.text)) + ": " + row.why;
            std::wstring result;
            EXPECT_EQ(failure_of([&] { result = walked(row.text); }), std::nullopt) << shown;
            EXPECT_EQ(result, row.expected) << shown;
        }
        for (auto const &entry : fresh.journal()) {
            bool const is_absolute = entry.text.starts_with(uR"(\\?\)") || // with the prefix
                                     entry.text.starts_with(uR"(C:\)");
            EXPECT_TRUE(entry.function != "GetFileAttributesExW" || is_absolute)
                << "asked for " << printable(entry.text);
        }
    }
}

TEST_ON_MACHINE(ResolveLinkChain, WhatCountsAsADrivesRootKeepsItsSeparator)
{
    machine.add_directory(uR"(C:\wor\x)").set_current_directory(u"C:\\wor");
    add_link(machine, uR"(C:\m)", uR"(\\?\C:x)"); // C:\wor\x, whose first seven units count
    EXPECT_EQ(walked(LR"(\\?\C:\m)"), LR"(C:\wor\x)");
    EXPECT_EQ(walked(LR"(\\?\C:\m\..)"), LR"(C:\wor\)");
}

TEST_ON_MACHINE(ResolveLinkChain, GoesUpNoFurtherThanADriveWithoutItsPrefix)
{
    machine.add_directory(uR"(C:\workshop\x)").add_directory(uR"(C:\wo\x)");
    machine.add_directory(uR"(C:\b)");
    add_link(machine, uR"(C:\m)", uR"(\\?\C:)");
    for (char16_t const *directory : {u"C:\\workshop", u"C:\\wo"}) {
        machine.set_current_directory(directory);
        EXPECT_EQ(walked(LR"(\\?\C:\m\..\b)"), LR"(C:\b)") << printable(directory);
        EXPECT_EQ(walked(LR"(\\?\C:\m\..\..\b)"), LR"(C:\b)") << printable(directory);
        EXPECT_EQ(walked(LR"(\\?\C:\m\x\..\..\..\..\b)"), LR"(C:\b)") << printable(directory);
        EXPECT_EQ(walked(LR"(\\?\C:\m\x\..)"), wide(directory)) << printable(directory);
    }
}

TEST_ON_MACHINE(ResolveLinkChain, ADriveThatIsTheSameStaysAsItIsWritten)
{
    add_disks(machine);
    add_link(machine, uR"(C:\same)", uR"(C:\x)");
    add_link(machine, uR"(C:\other)", uR"(c:\x)");
    EXPECT_EQ(walked(LR"(\/?\C:\same)"), LR"(\/?\C:\x)") << "so does its prefix";
    EXPECT_EQ(walked(LR"(\/?\C:\other)"), LR"(\\?\c:\x)") << "letters are compared as units";
}

TEST_ON_MACHINE(ResolveLinkChain, TheDrivesOwnDirectoryIsTheRoot)
{
    add_disks(machine);
    machine.set_current_directory(u"C:\\");
    add_link(machine, uR"(C:\l)", u"C:");
    EXPECT_EQ(walked(LR"(\\?\C:\l)"), LR"(\\?\C:\)");
    EXPECT_EQ(walked(LR"(\\?\C:\l\)"), LR"(\\?\C:\)");
    EXPECT_EQ(walked(LR"(\\?\C:\l\x)"), LR"(\\?\C:\x)");
}

TEST_ON_MACHINE(ResolveLinkChain, AFailedExpansionNamesTheDrive)
{
    add_disks(machine);
    add_link(machine, uR"(C:\l)", u"D:x");
    sure_fault const fault = machine.fail_every_call_on("GetFullPathNameW", 5);
    EXPECT_EQ(failed_walk(LR"(\\?\C:\l)"), denied(u"D:"));
}

// Several links.

TEST_ON_MACHINE(ResolveLinkChain, GoesUpFromWhereLinksLead)
{
    add_disks(machine);
    machine.add_directory(uR"(D:\p\q)").add_directory(uR"(D:\p\x)");
    add_link(machine, uR"(C:\link)", uR"(D:\p\q)");
    machine.add_junction(uR"(C:\junction)", uR"(D:\p\q)");
    machine.add_shortcut(uR"(C:\shortcut.lnk)", uR"(D:\p\q)");
    for (std::wstring const name : {L"link", L"junction", L"shortcut.lnk"}) {
        EXPECT_EQ(walked(LR"(\\?\C:\)" + name + LR"(\..\x)"), LR"(\\?\D:\p\x)");
        EXPECT_EQ(walked(LR"(\\?\C:\)" + name + LR"(\..)"), LR"(\\?\D:\p)");
        EXPECT_EQ(walked(LR"(\\?\C:\)" + name + LR"(\..\..)"), LR"(\\?\D:\)");
        EXPECT_EQ(walked(LR"(\\?\C:\)" + name + LR"(\.)"), LR"(\\?\D:\p\q)");
    }
}

TEST_ON_MACHINE(ResolveLinkChain, ARelativeLinkLeadsToItsNeighbour)
{
    machine.add_directory(u"C:\\b");
    machine.add_symbolic_link(uR"(C:\a\l)", uR"(..\b)", flavour::directory);
    EXPECT_EQ(walked(LR"(\\?\C:\a\l)"), LR"(\\?\C:\b)");
    EXPECT_EQ(walked(LR"(C:\a\l)"), LR"(\\?\C:\b)");
}

TEST_ON_MACHINE(ResolveLinkChain, RootedLinksGoByTheRootInUse)
{
    add_disks(machine);
    add_link(machine, uR"(C:\toD)", uR"(D:\d)");
    add_link(machine, uR"(D:\d\up)", uR"(\x)");
    add_link(machine, uR"(D:\d\root)", uR"(\)");
    add_link(machine, uR"(C:\toS)", uR"(\\s\h\d)");
    add_link(machine, uR"(\\s\h\d\up)", uR"(\x)");
    add_link(machine, uR"(\\s\h\d\root)", uR"(\)");
    EXPECT_EQ(walked(LR"(\\?\C:\toD\up\y)"), LR"(\\?\D:\x\y)");
    EXPECT_EQ(walked(LR"(\\?\C:\toD\root)"), LR"(\\?\D:\)");
    EXPECT_EQ(walked(LR"(\\?\C:\toD\root\..\x)"), LR"(\\?\D:\x)");
    EXPECT_EQ(walked(LR"(\\?\C:\toS\up\y)"), LR"(\\?\UNC\s\h\x\y)");
    EXPECT_EQ(walked(LR"(\\?\C:\toS\root)"), LR"(\\?\UNC\s\h\)");
    EXPECT_EQ(walked(LR"(\\?\C:\toS\root\x)"), LR"(\\?\UNC\s\h\x)");
    EXPECT_EQ(walked(LR"(\\?\UNC\s\h\d\up)"), LR"(\\?\UNC\s\h\x)");
    EXPECT_EQ(walked(LR"(\\?\UNC\s\h\d\root)"), LR"(\\?\UNC\s\h\)");
    EXPECT_EQ(walked(LR"(X:\d\up)"), LR"(\\?\X:\x)");
    EXPECT_EQ(walked(LR"(X:\d\root)"), LR"(\\?\X:\)");
}

TEST_ON_MACHINE(ResolveLinkChain, LinksInLinks)
{
    add_disks(machine);
    add_link(machine, uR"(C:\one)", uR"(two\x)");
    add_link(machine, uR"(C:\two)", uR"(\\s\h\three)");
    machine.add_shortcut(uR"(C:\four.lnk)", uR"(C:\a)");
    add_link(machine, uR"(\\s\h\three)", uR"(\\?\D:\d\..\a)");
    EXPECT_EQ(walked(LR"(\\?\C:\one\y)"), LR"(\\?\D:\a\x\y)");
    EXPECT_EQ(walked(LR"(\\?\C:\one\y\..\..\..)"), LR"(\\?\D:\)");
    EXPECT_EQ(walked(LR"(\\?\C:\four.lnk\..\one)"), LR"(\\?\D:\a\x)");
}

/// `C:\0` leads to `C:\1` and so on, and the last to `C:\end`, a directory.
void add_chain(simulated_machine &machine, int count, kind_of_link const &kind)
{
    machine.add_directory(uR"(C:\end\y)");
    for (int i = 0; i < count; ++i) {
        auto const name = [&](int n) {
            return wide(std::u16string(uR"(C:\)")) + std::to_wstring(n) + wide(kind.file);
        };
        kind.add(machine, units(name(i)),
                 i + 1 < count ? units(name(i + 1)) : std::u16string(uR"(C:\end)"));
    }
}

TEST_ON_MACHINE(ResolveLinkChain, FollowsAHundredLinks)
{
    for (auto const &kind : kinds_of_links()) {
        simulated_machine fresh;
        add_chain(fresh, 101, kind);
        std::u16string const last = uR"(\\?\C:\100)" + kind.file;
        EXPECT_EQ(walked(LR"(\\?\C:\1)" + wide(kind.file)), LR"(\\?\C:\end)") << kind.name;
        EXPECT_EQ(walked(LR"(\\?\C:\1)" + wide(kind.file) + LR"(\y)"), LR"(\\?\C:\end\y)");
        EXPECT_EQ(failed_walk(LR"(\\?\C:\0)" + wide(kind.file)), too_many_links(last)) << kind.name;
        EXPECT_EQ(failed_walk(LR"(\\?\C:\0)" + wide(kind.file) + LR"(\y)"), too_many_links(last));
        expect_nothing_open(fresh, kind.name);
    }
}

TEST_ON_MACHINE(ResolveLinkChain, CountsTheLinksOfTheWholeWalk)
{
    add_chain(machine, 1, kinds_of_links().front());
    std::wstring path = LR"(\\?\C:)";
    for (int i = 0; i < 100; ++i)
        path += LR"(\0l\..)";
    EXPECT_EQ(walked(path + LR"(\end)"), LR"(\\?\C:\end)");
    EXPECT_EQ(failed_walk(path + LR"(\0l)"), too_many_links(uR"(\\?\C:\0l)"));
}

TEST_ON_MACHINE(ResolveLinkChain, EndsInALoop)
{
    add_disks(machine);
    add_link(machine, uR"(C:\self)", uR"(C:\self)");
    add_link(machine, uR"(C:\d\here)", u"here");
    add_link(machine, uR"(C:\ping)", u"pong");
    add_link(machine, uR"(C:\pong)", uR"(\ping)");
    machine.add_shortcut(uR"(C:\k.lnk)", uR"(C:\k.lnk)");
    EXPECT_EQ(failed_walk(LR"(\\?\C:\self)"), too_many_links(uR"(\\?\C:\self)"));
    EXPECT_EQ(failed_walk(LR"(\\?\C:\self\..\x)"), too_many_links(uR"(\\?\C:\self)"));
    EXPECT_EQ(failed_walk(LR"(\\?\C:\d\here\x)"), too_many_links(uR"(\\?\C:\d\here)"));
    EXPECT_EQ(failed_walk(LR"(\\?\C:\ping)"), too_many_links(uR"(\\?\C:\ping)"));
    EXPECT_EQ(failed_walk(LR"(\\?\C:\k.lnk)"), too_many_links(uR"(\\?\C:\k.lnk)"));
}

TEST_ON_MACHINE(ResolveLinkChain, ALoopThatGrowsEnds)
{
    add_disks(machine);
    add_link(machine, uR"(C:\d\more)", uR"(more\more)");
    EXPECT_EQ(failed_walk(LR"(\\?\C:\d\more)"), too_many_links(uR"(\\?\C:\d\more)"));
    add_link(machine, uR"(C:\d\down)", uR"(x\..\down\y\y\y)");
    EXPECT_EQ(failed_walk(LR"(\\?\C:\d\down)"), too_many_links(uR"(\\?\C:\d\down)"));
}

// The network.

constexpr text_row<wchar_t> remote_cases[] = {
    {LR"(\\s\h\d\l)", LR"(\\?\UNC\s\h\d\l)", "a drive of the server"},
    {LR"(\\?\UNC\s\h\d\l)", LR"(\\?\UNC\s\h\d\l)", "a drive of the server"},
    {LR"(X:\d\l)", LR"(\\?\X:\d\l)", "a drive of the server"},
    {LR"(\\?\X:\d\l)", LR"(\\?\X:\d\l)", "a drive of the server"},
    {LR"(\\?\UNC\s\h\d\l\)", LR"(\\?\UNC\s\h\d\l)", "it is an element like others"},
    {LR"(\\?\UNC\s\h\d\l\no\)", LR"(\\?\UNC\s\h\d\l\no)", "it is an element like others"},
    {LR"(X:\d\l\.)", LR"(\\?\X:\d\l)", "it is an element like others"},
    {LR"(X:\d\l\..)", LR"(\\?\X:\d)", "it is an element like others"},
    {LR"(X:\d\l\..\x)", LR"(\\?\X:\d\x)", "it is an element like others"},
    {LR"(X:\d\l\\..\x)", LR"(\\?\X:\d\l)", "but an empty element finds it again: the end"},
    {LR"(X:\l\..)", LR"(\\?\X:\)", "the root keeps its separator"},
    {LR"(\\?\UNC\s\h\l\..)", LR"(\\?\UNC\s\h\)", "the root keeps its separator"},
    {LR"(\\?\UNC\s\h\d\ll\..\x)", LR"(\\?\UNC\s\h\d\x)", "with a longer name"},
    {LR"(\\s\h\d\j)", LR"(\\?\UNC\s\h\d\j)", "a junction, too"},
    {LR"(X:\d\j)", LR"(\\?\X:\d\j)", "a junction, too"},
    {LR"(\\?\UNC\s\h\d\relative)", LR"(\\?\UNC\s\h\x)", "the server's own share"},
    {LR"(\\s\h\d\relative)", LR"(\\?\UNC\s\h\d\x)", "where `d` counts as root"},
    {LR"(\\s\h\d\share\y)", LR"(\\?\UNC\s\h\x\y)", "a share can be seen"},
    {LR"(X:\d\share\y)", LR"(\\?\UNC\s\h\x\y)", "a share can be seen"},
    {LR"(X:\d\relative)", LR"(\\?\X:\x)", "the server's own share"},
    {LR"(\\s\h\d\directory)", LR"(\\?\UNC\s\h\d\directory)", "it names a drive once expanded"},
    {LR"(\\s\h\d\k.lnk)", LR"(\\?\C:\x)", "a shortcut means this machine"},
    {LR"(X:\d\k.lnk\y)", LR"(\\?\C:\x\y)", "a shortcut means this machine"},
    {LR"(\\s\h\d\prefixed)", LR"(\\?\C:\x)", "only bare drives are asked about"},
    {LR"(X:\d\prefixed\y)", LR"(\\?\C:\x\y)", "only bare drives are asked about"},
    {LR"(C:\toX\l)", LR"(\\?\X:\d\l)", "a walk from here, by now on the network"},
    {LR"(C:\toS\l)", LR"(\\?\C:\x)", "but to a share that isn't seen"},
    {LR"(\\s\h\a.lnk\..)", LR"(\\?\D:\)", "a shortcut brings its drive's root along"},
    {LR"(\\s\h\a.lnk\..\..\x)", LR"(\\?\D:\x)", "above which there is nothing"},
    {LR"(\\s\h\a.lnk\up)", LR"(\\?\D:\x)", "and to which a rooted link leads"},
    {LR"(\\?\UNC\s\h\a.lnk\..)", LR"(\\?\D:\)", "from the long form, too"},
    {LR"(\\?\UNC\s\h\a.lnk\..\..\x)", LR"(\\?\D:\x)", "from the long form, too"},
    {LR"(\\s\h\d\l\..)", LR"(\\?\UNC\s\h\d\)", "what counts as root is a drive's since the link"},
    {LR"(\\s\h\d\l\..\..)", LR"(\\?\UNC\s\h\d\)", "and there is nothing above it"},
    {LR"(\\s\h\work\l\..)", LR"(\\?\UNC\s\h\work)", "whatever its name's size"},
    {LR"(\\s\h\l\..)", LR"(\\?\UNC\s\h\l\)", "at the share the link itself counts as root"},
    {LR"(\\?\UNC\s\h\d\l\..)", LR"(\\?\UNC\s\h\d)", "in the long form, too"},
    {LR"(\\s\h\d\k.lnk\..\toS\l)", LR"(\\?\UNC\s\h\d\l)", "and one from there stays on it"},
    {LR"(\\s\h\d\k.lnk\..\toD)", LR"(\\?\C:\toD)", "and one from there stays on it"},
};

TEST_ON_MACHINE(ResolveLinkChain, LeavesDrivesOfServersAlone)
{
    add_disks(machine);
    add_link(machine, uR"(\\s\h\l)", uR"(C:\x)");
    add_link(machine, uR"(\\s\h\d\l)", uR"(C:\x)");
    add_link(machine, uR"(\\s\h\d\ll)", uR"(C:\x)");
    add_link(machine, uR"(\\s\h\work\l)", uR"(C:\x)");
    machine.add_shortcut(uR"(\\s\h\a.lnk)", uR"(D:\a)");
    add_link(machine, uR"(D:\a\up)", uR"(\x)");
    add_link(machine, uR"(\\s\h\d\relative)", uR"(..\x)");
    add_link(machine, uR"(\\s\h\d\share)", uR"(\\s\h\x)");
    add_link(machine, uR"(\\s\h\d\prefixed)", uR"(\\?\C:\x)");
    add_link(machine, uR"(\\s\h\d\directory)", u"C:x");
    machine.add_junction(uR"(\\s\h\d\j)", uR"(C:\x)");
    machine.add_shortcut(uR"(\\s\h\d\k.lnk)", uR"(C:\x)");
    add_link(machine, uR"(C:\toS)", uR"(\\s\h\d)");
    add_link(machine, uR"(C:\toX)", uR"(X:\d)");
    add_link(machine, uR"(C:\toD)", uR"(D:\d)");
    for (auto const &row : remote_cases) {
        std::wstring result;
        EXPECT_EQ(failure_of([&] { result = walked(row.text); }), std::nullopt)
            << printable(units(row.text)) << ": " << row.why;
        EXPECT_EQ(result, row.expected) << printable(units(row.text)) << ": " << row.why;
    }
}

TEST_ON_MACHINE(ResolveLinkChain, DoesntTouchTheDriveThatARemoteLinkNames)
{
    add_disks(machine);
    add_link(machine, uR"(\\s\h\d\l)", uR"(C:\x)");
    walked(LR"(\\s\h\d\l\..\x)");
    for (auto const &entry : machine.journal())
        EXPECT_EQ(entry.text.find(u"C:"), std::u16string::npos) << entry.function;
    add_link(machine, uR"(\\s\h\d\file)", uR"(C:\x)", flavour::file);
    EXPECT_EQ(failed_walk(LR"(\\?\UNC\s\h\d\file\..)"), nowhere())
        << "a file's link is no directory";
}

TEST_ON_MACHINE(ResolveLinkChain, AFailingProviderMeansNoNetwork)
{
    add_disks(machine);
    add_link(machine, uR"(\\s\h\d\l)", uR"(C:\x)");
    sure_fault const fault = machine.fail_every_call_on("WNetGetUniversalNameW", 1222);
    EXPECT_EQ(walked(LR"(X:\d\l)"), LR"(\\?\C:\x)");
    EXPECT_EQ(walked(LR"(\\s\h\d\l)"), LR"(\\?\UNC\s\h\d\l)") << "a share is one without asking";
}

// What only looks like a link.

TEST_ON_MACHINE(ResolveLinkChain, ReparsePointsThatAreNoLinksAreElements)
{
    add_disks(machine);
    machine.add_directory(uR"(D:\x)").add_mount_point(uR"(C:\volume)", u'D');
    machine.add_reparse_point(uR"(C:\unknown)", 0x80000099, "abc", flavour::directory);
    machine.add_deduplicated_file(uR"(C:\dedup)", "text");
    add_link(machine, uR"(C:\empty)", u"");
    machine.add_junction(uR"(C:\emptied)", uR"(\??\)", u"");
    for (std::wstring const name : {L"volume", L"unknown", L"dedup", L"empty", L"emptied"})
        EXPECT_EQ(walked(LR"(\\?\C:\)" + name), LR"(\\?\C:\)" + name);
    EXPECT_EQ(walked(LR"(\\?\C:\volume\x)"), LR"(\\?\C:\volume\x)");
    EXPECT_EQ(walked(LR"(\\?\C:\volume\..\x)"), LR"(\\?\C:\x)");
}

TEST_ON_MACHINE(ResolveLinkChain, AReparsePointThatCantBeReadIsAnElement)
{
    add_disks(machine);
    add_link(machine, uR"(C:\l)", uR"(D:\x)");
    for (char const *function : {"CreateFileW", "DeviceIoControl"}) {
        sure_fault const fault = machine.fail_every_call_on(function, 5);
        EXPECT_EQ(walked(LR"(\\?\C:\l)"), LR"(\\?\C:\l)") << function;
        EXPECT_EQ(walked(LR"(\\?\C:\l\..\a)"), LR"(\\?\C:\a)") << function;
    }
    machine.deny(uR"(C:\l)", right::read_extended_attributes);
    EXPECT_EQ(walked(LR"(\\?\C:\l)"), LR"(\\?\C:\l)");
}

TEST_ON_MACHINE(ResolveLinkChain, ASparseReparsePointIsNoLink)
{
    add_disks(machine);
    add_link(machine, uR"(C:\l)", uR"(D:\x)");
    machine.set_attributes(uR"(C:\l)", FILE_ATTRIBUTE_SPARSE_FILE);
    EXPECT_EQ(walked(LR"(\\?\C:\l)"), LR"(\\?\C:\l)");
}

TEST_ON_MACHINE(ResolveLinkChain, ALinkThatIsNamedLikeAShortcutIsALink)
{
    add_disks(machine);
    add_link(machine, uR"(C:\l.lnk)", uR"(D:\x)");
    EXPECT_EQ(walked(LR"(\\?\C:\l.lnk\y)"), LR"(\\?\D:\x\y)");
    EXPECT_EQ(machine.calls_of("CoCreateInstance"), 0);
}

TEST_ON_MACHINE(ResolveLinkChain, OnlyLowerCaseNamesShortcuts)
{
    add_disks(machine);
    machine.add_shortcut(uR"(C:\k.LNK)", uR"(D:\x)");
    machine.add_shortcut(uR"(C:\k.lnk.txt)", uR"(D:\x)");
    machine.add_shortcut(uR"(C:\.lnk)", uR"(D:\x)");
    EXPECT_EQ(walked(LR"(\\?\C:\k.LNK)"), LR"(\\?\C:\k.LNK)");
    EXPECT_EQ(walked(LR"(\\?\C:\k.lnk.txt)"), LR"(\\?\C:\k.lnk.txt)");
    EXPECT_EQ(machine.calls_of("CoInitialize"), 0);
    EXPECT_EQ(walked(LR"(\\?\C:\.lnk)"), LR"(\\?\D:\x)") << "the whole pathname is looked at";
}

TEST_ON_MACHINE(ResolveLinkChain, WhatIsNamedLikeAShortcutAndIsNone)
{
    add_disks(machine);
    machine.add_file(uR"(C:\f.lnk)", "no shortcut").add_directory(uR"(C:\d.lnk\x)");
    auto const thrown = failed_walk(LR"(\\?\C:\f.lnk)");
    ASSERT_TRUE(thrown);
    EXPECT_NE(thrown->error_code, 0U);
    EXPECT_EQ(*thrown, system_error(thrown->error_code, uR"(\\?\C:\f.lnk)")) << "the end must load";
    EXPECT_EQ(failed_walk(LR"(\\?\C:\f.lnk\..)"), nowhere()) << "an element in the middle needn't";
    EXPECT_TRUE(failed_walk(LR"(\\?\C:\d.lnk)")) << "not even a directory is left out";
    EXPECT_EQ(walked(LR"(\\?\C:\d.lnk\)"), LR"(\\?\C:\d.lnk)");
    EXPECT_EQ(walked(LR"(\\?\C:\d.lnk\x)"), LR"(\\?\C:\d.lnk\x)");
    EXPECT_EQ(walked(LR"(\\?\C:\d.lnk\..\x)"), LR"(\\?\C:\x)");
    EXPECT_EQ(failed_walk(LR"(\\?\C:\no.lnk)"), not_found(uR"(\\?\C:\no.lnk)"));
    EXPECT_EQ(walked(LR"(\\?\C:\no.lnk\)"), LR"(\\?\C:\no.lnk)");
}

TEST_ON_MACHINE(ResolveLinkChain, AShortcutWithoutATargetIsAnElement)
{
    add_disks(machine);
    machine.add_shortcut(uR"(C:\k.lnk)", u"");
    EXPECT_EQ(walked(LR"(\\?\C:\k.lnk)"), LR"(\\?\C:\k.lnk)");
    EXPECT_EQ(failed_walk(LR"(\\?\C:\k.lnk\..)"), nowhere());
}

// Length.

TEST_ON_MACHINE(ResolveLinkChain, WalksPathnamesOfAnyLength)
{
    std::u16string deep = u"C:";
    while (deep.size() < 32000)
        deep += u'\\' + std::u16string(199, u'd');
    machine.add_directory(deep);
    machine.add_directory(u"C:\\x");
    std::wstring const path = LR"(\\?\)" + wide(deep);
    EXPECT_EQ(walked(path), path);
    EXPECT_EQ(walked(path + LR"(\..)"), path.substr(0, path.size() - 200));
    std::wstring up = path;
    for (std::size_t i = 0; i < deep.size() / 200; ++i)
        up += LR"(\..)";
    EXPECT_EQ(walked(up + LR"(\x)"), LR"(\\?\C:\x)");
}

TEST_ON_MACHINE(ResolveLinkChain, GrowsItsBuffersForLongTargets)
{
    // each link brings 3000 units along: more than the buffers have at first, and more
    // than they have after the first link
    machine.add_drive(u'D').add_share(u"server", u"share");
    std::u16string const names = u'\\' + std::u16string(250, u'n');
    std::u16string deep;
    for (int i = 0; i < 12; ++i)
        deep += names;
    machine.add_directory(u"D:" + deep).add_directory(uR"(\\server\share)" + deep + u"\\z");
    add_link(machine, u"C:\\l", u"D:" + deep + uR"(\..\)" + names.substr(1));
    add_link(machine, u"D:" + deep + u"\\m", uR"(\\server\share)" + deep);
    add_link(machine, uR"(\\server\share)" + deep + u"\\r", u'.' + deep + u"\\..\\");
    EXPECT_EQ(walked(LR"(\\?\C:\l)"), LR"(\\?\D:)" + wide(deep));
    EXPECT_EQ(walked(LR"(\\?\C:\l\m\z)"), LR"(\\?\UNC\server\share)" + wide(deep) + LR"(\z)");
    EXPECT_EQ(failed_walk(LR"(\\?\C:\l\m\r)"), not_found(uR"(\\?\UNC\server\share)" + deep + deep));
}

TEST_ON_MACHINE(ResolveLinkChain, BuffersAtTheEdgesOfTheirSteps)
{
    // the same walk with every length around a multiple of 512 units
    add_link(machine, u"C:\\l", uR"(C:\x)");
    for (std::size_t size = 480; size < 530; ++size) {
        std::u16string const name = u"C:\\x\\" + std::u16string(size / 2, u'n') + u'\\' +
                                    std::u16string(size - size / 2, u'm');
        if (size / 2 > 255)
            continue;
        EXPECT_EQ(walked(LR"(\\?\C:\l)" + wide(name.substr(4)) + L'\\'), LR"(\\?\)" + wide(name));
        EXPECT_EQ(failed_walk(LR"(\\?\C:\l)" + wide(name.substr(4)))->path_name, uR"(\\?\)" + name);
    }
}

// Calls.

TEST_ON_MACHINE(ResolveLinkChainCalls, OneQueryForAnElementAndOneForDots)
{
    add_disks(machine);
    walked(LR"(C:\a\.\x\..\x\y)");
    EXPECT_EQ(calls(machine), (lines{
                                  R"(GetFileAttributesExW(\\?\C:\a))",
                                  R"(GetFileAttributesExW(\\?\C:\a))",
                                  R"(GetFileAttributesExW(\\?\C:\a\x))",
                                  R"(GetFileAttributesExW(\\?\C:\a\x))",
                                  R"(GetFileAttributesExW(\\?\C:\a\x))",
                                  R"(GetFileAttributesExW(\\?\C:\a\x\y))",
                              }));
    for (auto const &entry : machine.journal())
        EXPECT_EQ(entry.flags, DWORD{GetFileExInfoStandard});
    machine.clear_journal();
    walked(LR"(C:\..)");
    EXPECT_EQ(calls(machine), lines{R"(GetFileAttributesExW(\\?\C:\))"}) << "a root as it is";
    machine.clear_journal();
    walked(LR"(\\?\UNC\s\h\.)");
    EXPECT_EQ(calls(machine), lines{R"(GetFileAttributesExW(\\?\UNC\s\h\))"}) << "a root as it is";
}

TEST_ON_MACHINE(ResolveLinkChainCalls, WhatIsMissingAtTheEndIsLoadedByNobody)
{
    add_disks(machine);
    EXPECT_EQ(failed_walk(LR"(C:\no.lnk)"), not_found(uR"(\\?\C:\no.lnk)"));
    EXPECT_EQ(calls(machine), lines{R"(GetFileAttributesExW(\\?\C:\no.lnk))"});
}

struct doubled_case
{
    char16_t const *text;
    wchar_t const *tail;
    lines expected;
    char const *why;
};

doubled_case const doubled_cases[] = {
    {uR"(D:\\)", LR"(\x)", {R"(\\?\D:\x)"}, "a drive"},
    {uR"(D:\\)", LR"(\\x)", {R"(\\?\D:\)", R"(\\?\D:\x)"}, "a drive"},
    {uR"(D:\a\\)", LR"(\\x)", {R"(\\?\D:\a)", R"(\\?\D:\a\x)"}, "below a drive"},
    {uR"(D:\a)", LR"(\\x)", {R"(\\?\D:\a)", R"(\\?\D:\a\)", R"(\\?\D:\a\x)"}, "one is left"},
    {uR"(\\s\h\\)", LR"(\x)", {R"(\\?\UNC\s\h\x)"}, "a share"},
    {uR"(\\s\h\\)", LR"(\\x)", {R"(\\?\UNC\s\h\x)"}, "a share, whose root takes one, too"},
    {uR"(\\s\h)", LR"(\\x)", {R"(\\?\UNC\s\h\)", R"(\\?\UNC\s\h\x)"}, "and only one"},
    {uR"(\\s\h\a\\)", LR"(\\x)", {R"(\\?\UNC\s\h\a)", R"(\\?\UNC\s\h\a\x)"}, "below it"},
    {uR"(\\?\D:\\)", LR"(\x)", {R"(\\?\D:\x)"}, "a long drive"},
    {uR"(\\?\D:\\)", LR"(\\x)", {R"(\\?\D:\)", R"(\\?\D:\x)"}, "a long drive"},
    {uR"(\\?\D:\a\\)", LR"(\\x)", {R"(\\?\D:\a)", R"(\\?\D:\a\x)"}, "below a long drive"},
    {uR"(\\?\UNC\s\h\\)", LR"(\x)", {R"(\\?\UNC\s\h\x)"}, "a long share"},
    {uR"(\\?\UNC\s\h\\)", LR"(\\x)", {R"(\\?\UNC\s\h\x)"}, "a long share"},
    {uR"(\\?\UNC\s\h)", LR"(\\x)", {R"(\\?\UNC\s\h\)", R"(\\?\UNC\s\h\x)"}, "only one"},
    {uR"(\\?\UNC\s\h\a\\)", LR"(\\x)", {R"(\\?\UNC\s\h\a)", R"(\\?\UNC\s\h\a\x)"}, "below"},
    {uR"(x\\)", LR"(\\y)", {R"(\\?\C:\x)", R"(\\?\C:\x\)", R"(\\?\C:\x\y)"}, "relative: it goes"},
    {uR"(\x\\)", LR"(\\y)", {R"(\\?\C:\x)", R"(\\?\C:\x\)", R"(\\?\C:\x\y)"}, "rooted: it goes"},
    {uR"(\)", LR"(\\x)", {R"(\\?\C:\)", R"(\\?\C:\x)"}, "the root takes one"},
};

// A target that ends in a separator takes the place of the one ahead of the tail. What is
// left of them is an empty element, for which the system is asked again.
TEST_ON_MACHINE(ResolveLinkChainCalls, DoubledSeparatorsBehindALink)
{
    for (auto const &row : doubled_cases) {
        simulated_machine fresh;
        add_disks(fresh);
        add_link(fresh, u"C:\\l", row.text);
        walked(std::wstring(LR"(\\?\C:\l)") + row.tail);
        lines asked = texts_of(fresh, "GetFileAttributesExW");
        ASSERT_FALSE(asked.empty());
        EXPECT_EQ(asked.front(), R"(\\?\C:\l)");
        asked.erase(asked.begin());
        EXPECT_EQ(asked, row.expected)
            << printable(row.text) << " with " << printable(units(row.tail)) << ": " << row.why;
    }
}

TEST_ON_MACHINE(ResolveLinkChainCalls, OneOpeningForALink)
{
    add_disks(machine);
    add_link(machine, u"C:\\l", uR"(D:\x)");
    walked(LR"(\\?\C:\l\y)");
    EXPECT_EQ(calls(machine), (lines{
                                  R"(GetFileAttributesExW(\\?\C:\l))",
                                  R"(CreateFileW(\\?\C:\l))",
                                  R"(DeviceIoControl(\\?\C:\l))",
                                  R"(CloseHandle(\\?\C:\l))",
                                  R"(WNetGetUniversalNameW(C:\))",
                                  R"(GetFileAttributesExW(\\?\D:\x))",
                                  R"(GetFileAttributesExW(\\?\D:\x\y))",
                              }));
    auto const opening = machine.journal().at(1);
    EXPECT_EQ(opening.access, DWORD{FILE_READ_EA});
    EXPECT_EQ(opening.share, DWORD{FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE});
    EXPECT_EQ(opening.disposition, DWORD{OPEN_EXISTING});
    EXPECT_EQ(opening.flags, DWORD{FILE_FLAG_BACKUP_SEMANTICS | FILE_FLAG_OPEN_REPARSE_POINT});
    EXPECT_EQ(machine.journal().at(2).flags, DWORD{FSCTL_GET_REPARSE_POINT});
}

TEST_ON_MACHINE(ResolveLinkChainCalls, OneShellLinkForAShortcut)
{
    add_disks(machine);
    machine.add_shortcut(u"C:\\k.lnk", uR"(D:\x)");
    walked(LR"(\\?\C:\k.lnk\y)");
    EXPECT_EQ(calls(machine), (lines{
                                  R"(GetFileAttributesExW(\\?\C:\k.lnk))",
                                  "CoInitialize()",
                                  "CoCreateInstance()",
                                  "IUnknown::QueryInterface()",
                                  R"(IPersistFile::Load(C:\k.lnk))",
                                  "IShellLinkW::Resolve()",
                                  "IShellLinkW::GetPath()",
                                  "CoUninitialize()",
                                  R"(WNetGetUniversalNameW(C:\))",
                                  R"(GetFileAttributesExW(\\?\D:\x))",
                                  R"(GetFileAttributesExW(\\?\D:\x\y))",
                              }));
}

TEST_ON_MACHINE(ResolveLinkChainCalls, AServerIsNotAskedForItsName)
{
    add_disks(machine);
    add_link(machine, uR"(\\s\h\l)", uR"(C:\x)");
    walked(LR"(\\s\h\l)");
    EXPECT_EQ(machine.calls_of("WNetGetUniversalNameW"), 0);
    walked(LR"(\\?\UNC\s\h\l)");
    EXPECT_EQ(machine.calls_of("WNetGetUniversalNameW"), 0);
    walked(LR"(X:\l)");
    EXPECT_EQ(machine.calls_of("WNetGetUniversalNameW"), 1);
}

TEST_ON_MACHINE(ResolveLinkChainCalls, AShareReachedFromADriveIsAskedForWithoutItsPrefix)
{
    add_disks(machine);
    add_link(machine, uR"(C:\toS)", uR"(\\s\h\d)");
    add_link(machine, uR"(\\s\h\d\l)", uR"(C:\x)");
    walked(LR"(\\?\C:\toS\l)");
    EXPECT_EQ(texts_of(machine, "WNetGetUniversalNameW"), lines{R"(\\s\h\d\)"});
}

TEST_ON_MACHINE(ResolveLinkChainCalls, EachThatFailsOnTheWayThroughALink)
{
    struct
    {
        maybe_failure thrown;
        wchar_t const *result;
        char const *why;
    } const cases[] = {
        {system_error(1117, uR"(\\?\C:\l)"), L"", "the attributes of the last element"},
        {std::nullopt, LR"(\\?\C:\l)", "opening it: no link"},
        {std::nullopt, LR"(\\?\C:\l)", "reading it: no link"},
        {std::nullopt, LR"(\\?\D:\x)", "closing it"},
        {std::nullopt, LR"(\\?\D:\x)", "the provider: no network"},
        {system_error(1117, uR"(\\?\D:\x)"), L"", "the attributes of its target"},
        {std::nullopt, LR"(\\?\D:\x)", "there is no further call"},
    };
    auto const build = [](simulated_machine &fresh) {
        add_disks(fresh);
        add_link(fresh, u"C:\\l", uR"(D:\x)");
    };
    int const failed = sweep(build, [&](failing_run const &run) {
        ASSERT_LE(run.nth, static_cast<int>(std::size(cases)));
        auto const &row = cases[run.nth - 1];
        std::wstring result;
        EXPECT_EQ(failure_of([&] { result = walked(LR"(\\?\C:\l)"); }), row.thrown) << row.why;
        EXPECT_EQ(result, row.result) << row.why;
    });
    EXPECT_EQ(failed, 6);
}

TEST_ON_MACHINE(ResolveLinkChainCalls, EachThatFailsOnTheWayThroughAShortcut)
{
    for (char const *function :
         {"CoCreateInstance", "IUnknown::QueryInterface", "IPersistFile::Load",
          "IShellLinkW::Resolve", "IShellLinkW::GetPath"}) {
        simulated_machine fresh;
        add_disks(fresh);
        fresh.add_shortcut(u"C:\\k.lnk", uR"(D:\x)");
        {
            fault const broken = fresh.fail_every_call_on(function, 1117);
            EXPECT_EQ(failed_walk(LR"(\\?\C:\k.lnk)"), system_error(1117, uR"(\\?\C:\k.lnk)"))
                << function;
            EXPECT_TRUE(broken.fired()) << function;
            expect_nothing_open(fresh, function);
            EXPECT_EQ(walked(LR"(\\?\C:\k.lnk\)"), LR"(\\?\C:\k.lnk)") << "not the last";
            expect_nothing_open(fresh, function);
        }
        fault const odd =
            fresh.fail_every_call_on(function, static_cast<DWORD>(0x80040154)); // no such class
        EXPECT_EQ(failed_walk(LR"(\\?\C:\k.lnk)"), system_error(14077, uR"(\\?\C:\k.lnk)"))
            << function;
        expect_nothing_open(fresh, function);
    }
}

TEST_ON_MACHINE(ResolveLinkChainCalls, NothingStaysOpenWhateverFails)
{
    auto const build = [](simulated_machine &fresh) {
        add_disks(fresh);
        add_link(fresh, u"C:\\l", uR"(D:\k.lnk\..\d)");
        fresh.add_shortcut(u"D:\\k.lnk", uR"(\\s\h\d)");
        fresh.add_junction(uR"(\\s\h\j)", uR"(\\s\h\x)");
        fresh.add_shortcut(uR"(\\s\h\d\m.lnk)", u"C:x");
    };
    int const failed = sweep(build, [](failing_run const &run) {
        auto const thrown = failed_walk(LR"(C:\l\.\..\j\..\d\m.lnk)");
        EXPECT_TRUE(run.is_broken() || !thrown) << "nothing failed";
    });
    EXPECT_GE(failed, 35) << "the walk has that many calls";
}

} // namespace
} // namespace fl::filesystem::detail
