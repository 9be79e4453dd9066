// What the common case of each operation costs: the calls that it makes, none of which is there
// for nothing, and how often it takes memory, the system's own left out.

#include <fl/filesystem.hpp>

#include "access/filesystem_form.hpp"
#include "support/allocations.hpp"
#include "support/calls.hpp"
#include "support/sanitizers.hpp"

#include <functional>

namespace fl::filesystem::tests {
namespace {

class costs : public testing::Test
{
protected:
    costs() { count_all_but(simulation::is_in_call); }
    ~costs() override { count_all_but(nullptr); }
};

// Longer than what a string holds by itself, and shorter than what needs a prefix.
std::u16string const file = uR"(C:\directory\subdirectory\a-name.extension)";
std::u16string const directory = uR"(C:\directory\subdirectory)";
std::u16string const missing = uR"(C:\directory\subdirectory\another-name)";
upath const file_path(file);
upath const directory_path(directory);
upath const missing_path(missing);
upath const lost_path(uR"(C:\no-such-directory\name)");
upath const relative_path(uR"(subdirectory\a-name.extension)");

struct row
{
    char const *operation;
    std::function<void()> call;
    std::size_t allocations;
    lines functions;
};

std::string const full = "GetFullPathNameW";
std::string const attributes = "GetFileAttributesExW";

row const rows[] = {
    {"absolute", [] { absolute(file_path); }, 1, {full}},
    {"absolute of a relative path", [] { absolute(relative_path); }, 1, {full}},
    {"absolute of a text", [] { absolute(file); }, 2, {full}},
    {"absolute below a base", [] { absolute(relative_path, directory_path); }, 2, {full}},
    {"make_filesystem_form", [] { detail::make_filesystem_form(file_path); }, 1, {full}},
    {"status", [] { status(file_path); }, 1, {full, attributes}},
    {"status of a text", [] { status(file); }, 2, {full, attributes}},
    {"status of a missing name", [] { status(missing_path); }, 1, {full, attributes}},
    {"status below a missing directory", [] { status(lost_path); }, 1, {full, attributes}},
    {"symlink_status", [] { symlink_status(file_path); }, 1, {full, attributes}},
    {"symlink_status, missing", [] { symlink_status(missing_path); }, 1, {full, attributes}},
    {"status_express_light", [] { status_express_light(file); }, 1, {attributes}},
    {"exists", [] { exists(file_path); }, 1, {full, attributes}},
    {"exists of a text", [] { exists(file); }, 2, {full, attributes}},
    {"exists of a missing name", [] { exists(missing_path); }, 1, {full, attributes}},
};

TEST_F(costs, OfTheCommonCaseOfAnOperation)
{
    for (row const &row : rows) {
        simulated_machine machine;
        machine.add_file(file).set_current_directory(uR"(C:\directory)");
        EXPECT_EQ(allocations_of(row.call), row.allocations) << row.operation;
        lines functions;
        for (auto const &entry : machine.journal())
            functions.push_back(entry.function);
        EXPECT_EQ(functions, row.functions) << row.operation;
    }
}

/// A directory with so many files and the same number of directories with a file each.
void add_tree(simulated_machine &machine, std::u16string const &top, int size)
{
    machine.keep_journal(false).add_directory(top);
    for (int i = 100; i < 100 + size; ++i) {
        machine.add_file(numbered(top + u"\\a-file-with-a-longer-name-", i));
        machine.add_file(numbered(top + u"\\directory-", i) + u"\\a-file");
    }
}

/// The same call on a tree of `size` and one that is larger by one file and one directory
/// with a file in it: what these three cost.
template <typename Call>
std::size_t cost_of_one_more(Call call, int size)
{
    std::size_t taken[2] = {};
    for (int more : {0, 1}) {
        simulated_machine machine;
        add_tree(machine, uR"(C:\tree)", size + more);
        taken[more] = allocations_of(call);
    }
    return taken[1] - taken[0];
}

TEST_F(costs, OfOneMoreEntryOfATree)
{
    std::u16string const tree = uR"(C:\tree)";
    auto const removing = [&] { remove_all(tree); };
    auto const copying = [&] {
        copy(tree, uR"(C:\copy)", std::filesystem::copy_options::recursive);
    };
    auto const listing = [&] {
        for (directory_entry const &entry : directory_iterator(tree))
            static_cast<void>(entry.last_write_time());
    };
    auto const walking = [&] {
        for (auto const &entry : recursive_directory_iterator(tree))
            static_cast<void>(entry.attributes());
    };
    EXPECT_EQ(cost_of_one_more(removing, 5), 1U) << "the pattern of the directory";
    EXPECT_EQ(cost_of_one_more(copying, 5), 1U) << "the pattern of the directory";
    EXPECT_EQ(cost_of_one_more(listing, 5), 0U);
    EXPECT_EQ(cost_of_one_more(walking, 5), 1U) << "the pattern of the directory";
}

/// What a walk through `names` directories of a name takes.
std::size_t cost_of_walk(std::size_t names)
{
    std::u16string path = u"C:";
    for (std::size_t level = 0; level < names; ++level)
        path += u"\\a-directory";
    simulated_machine machine;
    machine.keep_journal(false).add_directory(uR"(\\?\)" + path);
    return allocations_of([&] { canonical(path); });
}

TEST_F(costs, ADirectoryOnTheWayOfCanonicalTakesNoMemory)
{
    EXPECT_EQ(cost_of_walk(21), cost_of_walk(20));
    EXPECT_EQ(cost_of_walk(20), 8U)
        << "the path, four texts of the walk, its end, and the result twice";
}

// Of the deepest, a pathname of 32,767 units, it is eight. Each call walks down all the names,
// which takes minutes where all memory is checked.
#if !FL_CHECKS_MEMORY
TEST_F(costs, ATreeOfEightThousandLevelsIsRemovedInFourMebibytes)
{
    std::u16string path = uR"(\\?\C:)";
    while (path.size() < 16000)
        path += u"\\d";
    simulated_machine machine;
    machine.keep_journal(false).add_directory(path);
    most_bytes_held();
    std::size_t const before = most_bytes_held();
    remove_all(uR"(C:\d)");
    std::size_t const taken = most_bytes_held() - before;
    EXPECT_LT(taken, 4U * 1024 * 1024);
    EXPECT_GT(taken, path.size()) << "it was counted";
    EXPECT_FALSE(machine.exists(uR"(C:\d)"));
}
#endif

TEST_F(costs, AnEntryThatSomebodyKeepsStaysWhatItIs)
{
    simulated_machine machine;
    add_tree(machine, uR"(C:\tree)", 3);
    std::vector<directory_entry> kept;
    int seen = 0;
    for (directory_entry const &entry : directory_iterator(uR"(C:\tree)"))
        if (seen++ % 2 == 0)
            kept.push_back(entry);
    ASSERT_EQ(kept.size(), 3U);
    for (directory_entry const &entry : kept) {
        EXPECT_EQ(entry.path().native(), uR"(C:\tree\)" + entry.filename());
        EXPECT_EQ(entry.is_directory(), entry.filename().starts_with(u"directory"));
    }
    EXPECT_NE(kept[0].filename(), kept[1].filename());
    EXPECT_NE(kept[1].filename(), kept[2].filename());
}

} // namespace
} // namespace fl::filesystem::tests
