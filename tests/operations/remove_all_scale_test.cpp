// Trees as deep and directories as wide as they come.

#include <fl/filesystem/operations.hpp>

#include "support/calls.hpp"
#include "support/sanitizers.hpp"
#include "support/small_stack.hpp"

namespace fl::filesystem::tests {
namespace {

/// The stack that a program on Windows has by default.
constexpr std::size_t default_stack = 1024 * 1024;

constexpr std::size_t longest_pathname = 32767;

/// Behind a long prefix, which pathnames of these sizes need.
constexpr std::u16string_view drive = uR"(\\?\C:)";

/// A directory of exactly `size` units behind names of one unit; the first has two if the
/// size is an odd one.
std::u16string directory_of(std::size_t size)
{
    std::u16string path(drive);
    path.reserve(size);
    path += size % 2 == 0 ? u"\\d" : u"\\dd";
    while (path.size() < size)
        path += u"\\d";
    return path;
}

/// Removes a tree whose deepest directory has a pathname of so many units and holds a file.
void remove_tree_of(std::size_t size)
{
    simulated_machine machine;
    machine.keep_journal(false).add_file(directory_of(size) + u"\\f");
    EXPECT_EQ(failure_of([] { remove_all(uR"(C:\d)"); }), std::nullopt);
    EXPECT_TRUE(machine.entries(u"C:\\").empty());
    expect_nothing_open(machine);
}

// A frame for each level, with room for reparse data, would be too much at sixty levels.
TEST_ON_MACHINE(RemoveAllScale, ADeepTreeOnAStackOfOneMebibyte)
{
    run_on_stack_of(default_stack, [] { remove_tree_of(6000); });
}

// Each call walks down all the names, which takes minutes where all memory is checked: the
// tree above has to do there.
#if !FL_CHECKS_MEMORY
TEST_ON_MACHINE(RemoveAllScale, TheDeepestTreeOnAStackOfOneMebibyte)
{
    run_on_stack_of(default_stack, [] { remove_tree_of(longest_pathname - 3); });
}
#endif

/// Removes `path` on a machine that has a file in a directory below it, and returns what
/// was thrown.
maybe_failure removal_of(simulated_machine &machine, std::u16string const &path,
                         std::u16string const &file)
{
    machine.keep_journal(false).add_file(file);
    auto const thrown = failure_of([&] { remove_all(path); });
    expect_nothing_open(machine);
    EXPECT_EQ(machine.exists(file), thrown.has_value());
    EXPECT_EQ(machine.exists(path), thrown.has_value());
    return thrown;
}

// The pattern `...\*` is two units longer than the directory; without it nothing is found.
TEST_ON_MACHINE(RemoveAllScale, ADirectoryWhosePatternIsAPathnameIsRemoved)
{
    for (std::size_t const size : {longest_pathname - 3, longest_pathname - 2}) {
        simulated_machine fresh;
        std::u16string const path = directory_of(size);
        EXPECT_EQ(removal_of(fresh, path.substr(0, size - 2), path + u"\\f"), std::nullopt) << size;
    }
}

TEST_ON_MACHINE(RemoveAllScale, ADirectoryWhosePatternIsTooLongIsLeftWithAllAboveIt)
{
    for (std::size_t const size : {longest_pathname - 1, longest_pathname}) {
        simulated_machine fresh;
        std::u16string const path = directory_of(size);
        EXPECT_EQ(removal_of(fresh, path.substr(0, size - 2), path + u"\\f"), too_large(u""))
            << size << ": the system's own refusal names nothing";
    }
}

TEST_ON_MACHINE(RemoveAllScale, APatternThatIsCalledMissingIsNamedAsTooLong)
{
    std::u16string const path = directory_of(longest_pathname - 1);
    sure_fault const fault = machine.fail_call("FindFirstFileExW", 2, ERROR_PATH_NOT_FOUND);
    EXPECT_EQ(removal_of(machine, path.substr(0, path.size() - 2), path + u"\\f"),
              too_large(path + u"\\*"));
}

TEST_ON_MACHINE(RemoveAllScale, AFileCanHaveTheLongestPathname)
{
    std::u16string const path = directory_of(longest_pathname - 7);
    EXPECT_EQ(removal_of(machine, path, path + u"\\fffffg"), std::nullopt);
    EXPECT_EQ(removal_of(machine, path, path + u"\\ffffffg"), too_large(u""));
}

constexpr int many = 20'000;

/// One enumeration and one deletion for each: time grows with the number of files only.
TEST_ON_MACHINE(RemoveAllScale, ADirectoryOfManyFiles)
{
    for (int number = 0; number < many; ++number)
        machine.add_file(numbered(u"C:\\wide\\", number));
    remove_all(uR"(C:\wide)");
    EXPECT_TRUE(machine.entries(u"C:\\").empty());
    EXPECT_EQ(machine.calls_of("DeleteFileW"), many);
    EXPECT_EQ(machine.calls_of("FindFirstFileExW"), 1);
    EXPECT_EQ(machine.calls_of("CreateFileW"), 1);
    EXPECT_EQ(machine.calls_of("GetFileInformationByHandle"), 1);
    EXPECT_EQ(machine.calls_of("GetFileAttributesExW"), 1);
}

} // namespace
} // namespace fl::filesystem::tests
