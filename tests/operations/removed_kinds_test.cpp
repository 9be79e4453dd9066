// What each of the four removals makes of each kind of thing that a disk can hold.

#include <fl/filesystem/operations.hpp>

#include "support/calls.hpp"

namespace fl::filesystem::tests {
namespace {

constexpr DWORD strange_tag = 0x42; // nobody's, so it begins with sixteen bytes

void build(simulated_machine &machine)
{
    constexpr auto directory = flavour::directory;
    std::string const maker(16, 'g');
    machine.add_drive(u'D').add_file(uR"(D:\kept)").add_file(uR"(C:\away\kept)");
    machine.add_file(uR"(C:\t\file)").add_file(uR"(C:\t\read-only)");
    machine.set_attributes(uR"(C:\t\read-only)", FILE_ATTRIBUTE_READONLY);
    machine.add_file(uR"(C:\t\hidden)");
    machine.set_attributes(uR"(C:\t\hidden)", FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM);
    machine.add_directory(uR"(C:\t\empty)").add_directory(uR"(C:\t\read-only-directory)");
    machine.set_attributes(uR"(C:\t\read-only-directory)", FILE_ATTRIBUTE_READONLY);
    machine.add_file(uR"(C:\t\full\sub\x)");
    machine.add_symbolic_link(uR"(C:\t\file-link)", uR"(C:\away\kept)");
    machine.add_symbolic_link(uR"(C:\t\directory-link)", uR"(C:\away)", directory);
    machine.add_symbolic_link(uR"(C:\t\broken-file-link)", uR"(C:\no)");
    machine.add_symbolic_link(uR"(C:\t\broken-directory-link)", uR"(C:\no)", directory);
    machine.add_symbolic_link(uR"(C:\t\loop)", uR"(C:\t\loop)", directory);
    machine.add_junction(uR"(C:\t\junction)", uR"(C:\away)");
    machine.add_junction(uR"(C:\t\broken-junction)", uR"(C:\no)");
    machine.add_mount_point(uR"(C:\t\mount-point)", u'D');
    machine.add_shortcut(uR"(C:\t\shortcut.lnk)", uR"(C:\away)");
    machine.add_hard_link(uR"(C:\t\hard-link)", uR"(C:\away\kept)");
    machine.add_deduplicated_file(uR"(C:\t\dedup)", "content");
    machine.add_reparse_point(uR"(C:\t\tagged-file)", strange_tag, maker);
    machine.add_reparse_point(uR"(C:\t\tagged)", strange_tag, maker, directory);
    machine.add_file(uR"(C:\t\full-tagged\x)");
    machine.add_reparse_point(uR"(C:\t\full-tagged)", strange_tag, maker, directory);
    machine.add_file(uR"(C:\t\no-removal)").deny(uR"(C:\t\no-removal)", right::remove);
    machine.add_file(uR"(C:\t\no-listing\x)").deny(uR"(C:\t\no-listing)", right::list);
    machine.add_directory(uR"(C:\t\no-removal-directory)");
    machine.deny(uR"(C:\t\no-removal-directory)", right::remove);
}

/// What becomes of the name: it is gone, or stays with the failure of this letter.
enum outcome : char
{
    gone = ' ',
    denied = 'd',
    denied_pattern = 'p', ///< naming what a search was for
    is_directory = 'D',
    is_file = 'f',
    not_empty = 'n',
    missing = 'm'
};

maybe_failure expected_failure(outcome what, std::u16string const &path)
{
    switch (what) {
    case denied:
        return test_support::denied(path);
    case denied_pattern:
        return test_support::denied(path + u"\\*");
    case is_directory:
        return file_is_directory(path);
    case is_file:
        return not_directory(path);
    case not_empty:
        return test_support::not_empty(path);
    case missing:
        return not_found(path);
    default:
        return std::nullopt;
    }
}

struct kind_case
{
    char16_t const *name;
    outcome remove, remove_file, remove_directory, remove_all;
};

constexpr kind_case kind_cases[] = {
    {u"file", gone, gone, is_file, gone},
    {u"read-only", gone, denied, is_file, denied},
    {u"hidden", gone, gone, is_file, gone},
    {u"empty", gone, is_directory, gone, gone},
    {u"read-only-directory", gone, is_directory, denied, denied},
    {u"full", not_empty, is_directory, not_empty, gone},
    {u"file-link", gone, gone, is_file, gone},
    {u"directory-link", gone, is_directory, gone, gone},
    {u"broken-file-link", gone, gone, is_file, gone},
    {u"broken-directory-link", gone, is_directory, gone, gone},
    {u"loop", gone, is_directory, gone, gone},
    {u"junction", gone, is_directory, gone, gone},
    {u"broken-junction", gone, is_directory, gone, gone},
    {u"mount-point", gone, is_directory, gone, gone},
    {u"shortcut.lnk", gone, gone, is_file, gone},
    {u"hard-link", gone, gone, is_file, gone},
    {u"dedup", gone, gone, is_file, gone},
    {u"tagged-file", gone, gone, is_file, gone},
    // a system that doesn't know the tag opens no search in it
    {u"tagged", gone, is_directory, gone, denied_pattern},
    {u"full-tagged", not_empty, is_directory, not_empty, denied_pattern},
    {u"no-removal", denied, denied, is_file, denied},
    {u"no-removal-directory", denied, is_directory, denied, denied},
    {u"no-listing", not_empty, is_directory, not_empty, denied_pattern},
    {u"absent", missing, missing, missing, missing},
    {u"absent\\x", missing, missing, missing, missing},
    {u"file\\x", missing, missing, missing, missing},
};

using operation = void (*)(std::u16string const &);
using operation_on_path = void (*)(upath const &);

/// Both overloads on a machine of their own each.
void expect_outcome(operation call, operation_on_path on_path, char const *function,
                    char16_t const *name, outcome what)
{
    std::u16string const path = std::u16string(uR"(C:\t\)") + name;
    for (bool const is_text : {true, false}) {
        simulated_machine machine;
        build(machine);
        std::size_t const count = machine.entries(uR"(C:\t)").size();
        auto const thrown = failure_of([&] { is_text ? call(path) : on_path(upath(path)); });
        std::string const row =
            std::string(function) + " " + printable(name) + (is_text ? "" : " (path)");
        EXPECT_EQ(thrown, expected_failure(what, path)) << row;
        EXPECT_EQ(machine.exists(path), what != gone && what != missing) << row;
        EXPECT_EQ(machine.entries(uR"(C:\t)").size(), what == gone ? count - 1 : count) << row;
        EXPECT_EQ(machine.exists(uR"(C:\t\full\sub\x)"), path != uR"(C:\t\full)" || what != gone)
            << row;
        machine.handle_tag(strange_tag); // else nobody can look in there
        EXPECT_TRUE(machine.exists(uR"(C:\t\full-tagged\x)")) << row;
        EXPECT_TRUE(machine.exists(uR"(C:\away\kept)")) << row;
        EXPECT_TRUE(machine.exists(uR"(D:\kept)")) << row;
        EXPECT_EQ(machine.open_handles() + machine.find_handles(), 0) << row;
    }
}

TEST_ON_MACHINE(RemovedKinds, Remove)
{
    for (auto const &row : kind_cases)
        expect_outcome(remove, remove, "remove", row.name, row.remove);
}

TEST_ON_MACHINE(RemovedKinds, RemoveFile)
{
    for (auto const &row : kind_cases)
        expect_outcome(remove_file, remove_file, "remove_file", row.name, row.remove_file);
}

TEST_ON_MACHINE(RemovedKinds, RemoveDirectory)
{
    for (auto const &row : kind_cases)
        expect_outcome(remove_directory, remove_directory, "remove_directory", row.name,
                       row.remove_directory);
}

TEST_ON_MACHINE(RemovedKinds, RemoveAll)
{
    for (auto const &row : kind_cases)
        expect_outcome(remove_all, remove_all, "remove_all", row.name, row.remove_all);
}

TEST_ON_MACHINE(RemovedKinds, AReadOnlyNameThatStaysIsStillReadOnly)
{
    for (operation const call : {operation(remove_file), operation(remove_all)}) {
        simulated_machine fresh;
        build(fresh);
        EXPECT_TRUE(failure_of([&] { call(uR"(C:\t\read-only)"); }));
        EXPECT_EQ(fresh.attributes(uR"(C:\t\read-only)"), DWORD{FILE_ATTRIBUTE_READONLY});
    }
}

/// A drive's root is nothing to remove, but what is in it is.
TEST_ON_MACHINE(RemovedKinds, TheRootOfADrive)
{
    std::u16string const root = u"D:\\";
    machine.add_drive(u'D').add_file(uR"(D:\f)").add_file(uR"(D:\d\x)");
    EXPECT_FAILURE(remove(root), expected_failure(denied, root));
    EXPECT_FAILURE(remove_file(root), expected_failure(is_directory, root));
    EXPECT_FAILURE(remove_directory(root), expected_failure(denied, root));
    EXPECT_EQ(machine.entries(root).size(), 2U);
    machine.clear_journal();
    EXPECT_FAILURE(remove_all(root), expected_failure(denied, root));
    EXPECT_EQ(machine.entries(root).size(), 0U);
    EXPECT_EQ(machine.journal().at(2).text, uR"(D:\\*)") << "a separator goes behind any name";
}

} // namespace
} // namespace fl::filesystem::tests
