// Targets that have to be walked, on the simulated machine.

#include <fl/filesystem/windows.hpp>

#include "access/walking.hpp"
#include "support/calls.hpp"

#include <objbase.h>

namespace fl::filesystem::detail::windows {
namespace {

using namespace test_support;
using test_support::failure;

constexpr auto relative_link = link_type_symlink_relative;
constexpr auto absolute_link = link_type_symlink_absolute;

TEST_ON_MACHINE(BuildTargetPathCalls, NoneForACleanTarget)
{
    EXPECT_EQ(build_target_path_bridge(LR"(C:\d\l)", LR"(x\y)", relative_link), LR"(\\?\C:\d\x\y)");
    EXPECT_EQ(build_target_path_bridge(LR"(C:\d\l)", LR"(\\?\C:\x)", absolute_link),
              LR"(\\?\C:\x)");
    EXPECT_EQ(build_target_path_bridge(LR"(C:\d\l)", LR"(\\s\h\x)", link_type_mount_point),
              LR"(\\?\UNC\s\h\x)");
    EXPECT_EQ(build_target_path_bridge(LR"(C:\d\..\l)", L"a//b/../c", relative_link),
              LR"(\\?\C:\d\..\a//b/../c)");
    EXPECT_EQ(calls(machine), lines{});
}

struct walked_case
{
    wchar_t const *link;
    wchar_t const *text;
    attrib_link_type type;
    wchar_t const *expected;
    char const *why;
};

constexpr walked_case walked_cases[] = {
    {LR"(C:\d\l)", LR"(..\x)", relative_link, LR"(\\?\C:\x)", "out of its directory"},
    {LR"(C:\d\l)", LR"(.\x)", relative_link, LR"(\\?\C:\d\x)", "in its directory"},
    {LR"(C:\d\l)", L".", relative_link, LR"(\\?\C:\d)", "its directory"},
    {LR"(C:\d\l)", L"..", relative_link, LR"(\\?\C:\)", "the one above"},
    {LR"(C:\d\l)", LR"(x\\y)", relative_link, LR"(\\?\C:\d\x\y)", "single separators come out"},
    {LR"(\\?\C:\d\l)", LR"(..\x)", relative_link, LR"(\\?\C:\x)", "with the prefix"},
    {LR"(C:\way\l)", LR"(..\x)", relative_link, LR"(\\?\D:\x)", "its directory is a link itself"},
    {LR"(\\?\UNC\s\h\d\l)", LR"(..\x)", relative_link, LR"(\\?\UNC\s\h\x)", "on a share"},
    {LR"(\\s\h\d\l)", LR"(..\x)", relative_link, LR"(\\?\UNC\s\h\d\x)",
     "from the bare form, where `d` counts as root"},
    {LR"(C:\d\l)", LR"(D:\d\..\x)", absolute_link, LR"(\\?\D:\x)", "another drive"},
    {LR"(C:\d\l)", LR"(D:\\x\\\y)", absolute_link, LR"(\\?\D:\x\y)", "single separators come out"},
    {LR"(C:\d\l)", LR"(D:\.)", absolute_link, LR"(\\?\D:\)", "a root keeps its separator"},
    {LR"(C:\d\l)", LR"(\\?\D:\d\..\x)", absolute_link, LR"(\\?\D:\x)", "with the prefix"},
    {LR"(C:\d\l)", LR"(\\s\h\d\x\..\..\x)", absolute_link, LR"(\\?\UNC\s\h\d\x)",
     "from the bare form, where `d` counts as root"},
    {LR"(C:\d\l)", LR"(\\?\UNC\s\h\d\..\x)", absolute_link, LR"(\\?\UNC\s\h\x)", "a share"},
    {LR"(C:\d\l)", LR"(C:\way\..\x)", link_type_mount_point, LR"(\\?\D:\x)", "through a link"},
    {LR"(C:\d\l)", LR"(C:\d\.\way)", absolute_link, LR"(\\?\D:\d)", "a walk follows the last, too"},
};

TEST_ON_MACHINE(BuildTargetPathCalls, WalksWhatIsNotClean)
{
    machine.add_drive(u'D').add_share(u"s", u"h");
    for (std::u16string const root : {u"C:", u"D:", u"\\\\s\\h"})
        machine.add_directory(root + uR"(\d\x\y)").add_directory(root + uR"(\x\y)");
    machine.add_symbolic_link(uR"(C:\way)", uR"(D:\d)", flavour::directory);
    machine.add_symbolic_link(uR"(C:\d\way)", uR"(D:\d)", flavour::directory);
    for (auto const &row : walked_cases) {
        std::wstring result;
        EXPECT_EQ(
            failure_of([&] { result = build_target_path_bridge(row.link, row.text, row.type); }),
            std::nullopt)
            << row.why;
        EXPECT_EQ(result, row.expected) << printable(units(row.link)) << " says "
                                        << printable(units(row.text)) << ": " << row.why;
    }
}

TEST_ON_MACHINE(BuildTargetPathCalls, ACleanTargetMayBeALinkItself)
{
    machine.add_symbolic_link(uR"(C:\l)", uR"(C:\m)").add_symbolic_link(uR"(C:\m)", uR"(C:\x)");
    EXPECT_EQ(build_target_path_bridge(LR"(C:\l)", LR"(C:\m)", absolute_link), LR"(\\?\C:\m)");
    EXPECT_EQ(build_target_path_bridge(LR"(C:\l)", L"m", relative_link), LR"(\\?\C:\m)");
    EXPECT_EQ(calls(machine), lines{});
}

TEST_ON_MACHINE(BuildTargetPathCalls, AWalkTellsWhatItFails)
{
    machine.add_file(u"C:\\f");
    EXPECT_FAILURE(build_target_path_bridge(LR"(C:\d\l)", LR"(C:\.\no)", absolute_link),
                   not_found(uR"(\\?\C:\no)"));
    EXPECT_FAILURE(build_target_path_bridge(LR"(C:\d\l)", LR"(C:\f\..\x)", absolute_link),
                   nowhere());
    machine.add_symbolic_link(u"C:\\loop", u"loop");
    EXPECT_FAILURE(build_target_path_bridge(LR"(C:\l)", LR"(.\loop)", relative_link),
                   too_many_links(uR"(\\?\C:\loop)"));
}

TEST_ON_MACHINE(BuildTargetPathCalls, ADriveRelativeLinkOnTheWayComesOutWithoutALongPrefix)
{
    machine.add_directory(uR"(C:\work\x)").set_current_directory(u"C:\\work");
    machine.add_symbolic_link(u"C:\\m", uR"(\\?\C:x)", flavour::directory);
    EXPECT_EQ(build_target_path_bridge(LR"(C:\l)", LR"(C:\m\.)", absolute_link), LR"(C:\work\x)");
    auto const broken = machine.fail_every_call_on("GetFullPathNameW", ERROR_IO_DEVICE);
    EXPECT_FAILURE(build_target_path_bridge(LR"(C:\l)", LR"(C:\m\.)", absolute_link),
                   system_error(ERROR_IO_DEVICE, u"C:"));
}

TEST_ON_MACHINE(BuildTargetPathCalls, AShortcutAtTheEndThatCannotBeReadTellsItsCode)
{
    machine.add_shortcut(u"C:\\k.lnk", u"C:\\");
    constexpr DWORD no_such_class = 0x80040154;
    struct
    {
        DWORD result;
        failure expected;
    } const cases[] = {
        {static_cast<DWORD>(E_ACCESSDENIED), denied(uR"(\\?\C:\k.lnk)")},
        {no_such_class, system_error(14077, uR"(\\?\C:\k.lnk)")},
    };
    for (auto const &row : cases) {
        auto const broken = machine.fail_every_call_on("CoCreateInstance", row.result);
        EXPECT_FAILURE(build_target_path_bridge(LR"(C:\l)", LR"(C:\.\k.lnk)", absolute_link),
                       row.expected);
    }
}

} // namespace
} // namespace fl::filesystem::detail::windows
