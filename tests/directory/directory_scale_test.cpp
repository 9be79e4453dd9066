// Trees as deep and directories as wide as they come.

#include <fl/filesystem/directory.hpp>

#include "directory/listing.hpp"
#include "support/calls.hpp"
#include "support/sanitizers.hpp"
#include "support/small_stack.hpp"

namespace fl::filesystem::tests {
namespace {

constexpr std::size_t longest_pathname = 32767;
constexpr std::size_t small_stack = 256 * 1024;

/// A directory of exactly `size` units behind names of one unit, with a long prefix; the
/// first has two if the size is an odd one.
std::u16string directory_of(std::size_t size)
{
    std::u16string path = uR"(\\?\C:)";
    path.reserve(size);
    path += size % 2 == 0 ? u"\\d" : u"\\dd";
    while (path.size() < size)
        path += u"\\d";
    return path;
}

/// Lists a tree whose deepest directory has a pathname of so many units.
void list_tree_of(std::size_t size, directory_options options)
{
    simulated_machine machine;
    machine.keep_journal(false);
    machine.add_directory(directory_of(size));
    int deepest = 0;
    for (recursive_directory_iterator it(u"C:\\", options), end; it != end; ++it)
        deepest = it.depth();
    EXPECT_EQ(deepest, static_cast<int>((size - 6) / 2 - 1));
    EXPECT_EQ(machine.find_handles() + machine.open_handles(), 0);
}

TEST_ON_MACHINE(DirectoryScale, ADeepTreeOnASmallStack)
{
    run_on_stack_of(small_stack, [] {
        list_tree_of(4000, directory_options::none);
        list_tree_of(2000, directory_options::follow_directory_symlink);
    });
}

// Each call walks down all the names, which takes minutes where all memory is checked: the
// tree above has to do there.
#if !FL_CHECKS_MEMORY
TEST_ON_MACHINE(DirectoryScale, TheDeepestTreeOnASmallStack)
{
    run_on_stack_of(small_stack,
                    [] { list_tree_of(longest_pathname - 2, directory_options::none); });
}
#endif

TEST_ON_MACHINE(DirectoryScale, ADirectoryWhosePatternIsTooLongIsNamed)
{
    for (DWORD const code : {DWORD{ERROR_SUCCESS}, DWORD{ERROR_PATH_NOT_FOUND}}) {
        simulated_machine fresh;
        fresh.keep_journal(false);
        std::u16string const path = directory_of(longest_pathname - 1);
        fresh.add_directory(path);
        recursive_directory_iterator it(path.substr(0, path.size() - 2));
        EXPECT_EQ(it->access_form().size(), path.size());
        // some systems say so instead of 206
        auto const fault =
            fresh.fail_call(code == ERROR_SUCCESS ? "none" : "FindFirstFileExW", 1, code);
        EXPECT_FAILURE(++it, too_large(path.substr(4)));
        EXPECT_EQ(it, recursive_directory_iterator());
        EXPECT_EQ(fresh.find_handles(), 0);
    }
}

TEST_ON_MACHINE(DirectoryScale, AWideDirectoryTakesOneCallAnEntry)
{
    constexpr int many = 20'000;
    for (int number = 0; number < many; ++number)
        machine.add_file(numbered(u"C:\\wide\\", number));
    EXPECT_EQ(names_in(uR"(C:\wide)").size(), static_cast<std::size_t>(many));
    EXPECT_EQ(machine.calls_of("FindFirstFileExW"), 1);
    EXPECT_EQ(machine.calls_of("FindNextFileW"), many + 2);
    EXPECT_EQ(machine.calls_of("FindClose"), 1);
    EXPECT_EQ(machine.calls_of("CreateFileW") + machine.calls_of("GetFileAttributesExW"), 0);
}

} // namespace
} // namespace fl::filesystem::tests
