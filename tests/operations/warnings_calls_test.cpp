// What the headers warn callers of and only the simulated machine can show: threads of a
// multi-threaded apartment, others at work in a tree, names of devices.

#include <fl/filesystem/operations.hpp>
#include <fl/filesystem/windows.hpp>

#include "support/calls.hpp"

#include <objbase.h>

#include <functional>

namespace fl::filesystem::tests {
namespace {

row_of<std::function<void()>, int> const apartment_cases[] = {
    {[] { canonical(uR"(C:\dir)"); }, 0, "no shortcut file on the way"},
    {[] { canonical(uR"(C:\a.lnk)"); }, 1, "one at the end"},
    {[] { canonical(uR"(C:\b.lnk)"); }, 2, "one that leads to another"},
    {[] { status(uR"(C:\a.lnk)"); }, 0, "which is no link to it"},
    {[] { status(uR"(C:\l)"); }, 1, "a link whose text leads through one"},
    {[] { create_shortcut(uR"(C:\dir)", uR"(C:\new.lnk)"); }, 1, "the one that is written"},
    {[] {
         detail::windows::build_target_path_bridge(LR"(C:\l)", LR"(C:\a.lnk\..)",
                                                   detail::windows::link_type_symlink_absolute);
     },
     1, "one on the way to a target"},
};

TEST_ON_MACHINE(WarningsCalls, EachShortcutTakesOneInitialisationFromAMultiThreadedApartment)
{
    for (row_of<std::function<void()>, int> const &row : apartment_cases) {
        simulated_machine fresh;
        fresh.add_directory(uR"(C:\dir)").add_shortcut(uR"(C:\a.lnk)", uR"(C:\dir)");
        fresh.add_shortcut(uR"(C:\b.lnk)", uR"(C:\a.lnk)");
        fresh.add_symbolic_link(uR"(C:\l)", uR"(C:\a.lnk\..)", flavour::directory);
        for (int held = 0; held <= row.expected; ++held)
            ASSERT_GE(::CoInitializeEx(nullptr, COINIT_MULTITHREADED), 0);
        row.given();
        EXPECT_EQ(fresh.com_apartments(), 1) << "it had one more for each: " << row.why;
        ::CoUninitialize();
    }
}

TEST_ON_MACHINE(WarningsCalls, TheOnlyInitialisationOfAMultiThreadedApartmentGoes)
{
    machine.add_directory(uR"(C:\dir)").add_shortcut(uR"(C:\a.lnk)", uR"(C:\dir)");
    ASSERT_EQ(::CoInitializeEx(nullptr, COINIT_MULTITHREADED), S_OK);
    canonical(uR"(C:\a.lnk)");
    EXPECT_EQ(machine.com_apartments(), 0);
}

TEST_ON_MACHINE(WarningsCalls, RemovingATreeFollowsALinkThatOthersPutThereMeanwhile)
{
    machine.add_file(uR"(C:\t\d\x)").add_file(uR"(C:\kept\x)").add_file(uR"(C:\kept\y)");
    auto const others = machine.before_call("DeleteFileW", 1, [&] {
        machine.remove(uR"(C:\t\d)").add_junction(uR"(C:\t\d)", uR"(C:\kept)");
    });
    remove_all(uR"(C:\t)");
    EXPECT_EQ(machine.entries(uR"(C:\kept)"), names{u"y"})
        << "the name that was found in the directory goes from where the link leads";
    EXPECT_FALSE(machine.exists(uR"(C:\t)"));
}

// Wine knows no such limit: there it would go on to that of its host.
TEST_ON_MACHINE(WarningsCalls, ADirectoryCopiedIntoItselfGoesOnToTheLimit)
{
    machine.add_directory(uR"(C:\from)");
    EXPECT_FAILURE(copy(std::u16string(uR"(C:\from)"), std::u16string(uR"(C:\from\a)"),
                        std::filesystem::copy_options::recursive),
                   too_large(u""));
    std::u16string deepest = uR"(C:\from)";
    while (machine.exists(deepest + uR"(\a)"))
        deepest += uR"(\a)";
    EXPECT_EQ(deepest.size(), 247u) << "the longest pathname of a new directory";
}

// Windows itself never makes such a name without a prefix, but other systems leave them on
// disks.
void expect_device(simulation::edition runs, std::u16string const &name)
{
    simulated_machine machine;
    std::u16string const path = uR"(C:\t\)" + name;
    machine.set_edition(runs).add_file(path);
    EXPECT_FAILURE(remove_all(uR"(C:\t)"), system_error(1, path));
    EXPECT_FAILURE(remove(path), denied(path));
    EXPECT_TRUE(machine.exists(path));
    std::wstring const exact = detail::windows::add_long_path_prefix_bridge(
        wide(path), path.size(), detail::windows::PATH_TYPE_DRIVE_ABSOLUTE);
    EXPECT_TRUE(::DeleteFileW(exact.c_str()));
    remove_all(uR"(C:\t)");
    EXPECT_FALSE(machine.exists(uR"(C:\t)"));
}

TEST_ON_MACHINE(WarningsCalls, ReservedNamesEndARemovalUntilAPrefixTakesThem)
{
    for (char16_t const *name : {u"aux", u"nul.txt", u"com1", u"nul"})
        expect_device(simulation::edition::windows_10_22h2, name);
    expect_device(simulation::edition::windows_11, u"nul");
}

// Windows 11 finds no other device in a directory.
TEST_ON_MACHINE(WarningsCalls, FormerlyReservedNamesAreRemovedAsAnyOther)
{
    for (char16_t const *name : {u"aux", u"nul.txt", u"com1"}) {
        simulated_machine fresh;
        fresh.add_file(uR"(C:\t\)" + std::u16string(name));
        remove_all(uR"(C:\t)");
        EXPECT_FALSE(fresh.exists(uR"(C:\t)"));
    }
}

} // namespace
} // namespace fl::filesystem::tests
