#include <fl/filesystem/operations.hpp>

#include "support/in_workspace.hpp"

namespace fl::filesystem::tests {
namespace {

using test_support::failure;

TEST_IN_WORKSPACE(Remove, TakesAFileOrAnEmptyDirectory)
{
    make({{u"file", "content"}, u"dir\\"});
    remove(at(u"file"));
    EXPECT_EQ(entries(), names{u"dir"});
    remove(upath(at(u"dir")));
    EXPECT_EQ(entries(), names{});
}

TEST_IN_WORKSPACE(Remove, LeavesADirectoryThatIsNotEmpty)
{
    make_file(uR"(dir\file)");
    EXPECT_FAILURE(remove(at(u"dir")), not_empty(at(u"dir")));
    EXPECT_TRUE(work.is_file(at(uR"(dir\file)")));
}

TEST_IN_WORKSPACE(Remove, NamesTheCallersTextInNativeForm)
{
    make_file(uR"(dir\file)");
    EXPECT_FAILURE(remove(u"no/such"), not_found(uR"(no\such)"));
    EXPECT_FAILURE(remove(upath(u"./dir")), not_empty(uR"(.\dir)"));
    EXPECT_FAILURE(remove(uR"(dir\..\dir)"), not_empty(uR"(dir\..\dir)"));
    std::u16string const overlong = uR"(no\)" + std::u16string(250, u'x');
    EXPECT_FAILURE(remove(overlong), not_found(overlong)) << "without a prefix";
    EXPECT_FAILURE(remove(uR"(\\?\)" + at(u"dir")), not_empty(at(u"dir")));
}

TEST_IN_WORKSPACE(Remove, TakesWhatNobodyCanReachForMissing)
{
    make_file(u"file");
    for (char16_t const *name : {u"no", uR"(no\x)", uR"(file\x)", u"a|b", u"a*"})
        EXPECT_FAILURE(remove(at(name)), not_found(at(name)));
    EXPECT_EQ(entries(), names{u"file"});
}

TEST_IN_WORKSPACE(Remove, ReachesTheDiskByAnyNotation)
{
    for (char16_t const *name : {u"a", u"b", u"c", u"d", u"E"})
        make_file(name);
    make_directory(u"dir");
    enter(u"dir");
    remove(u"../a");
    remove(at(u"dir/../b"));
    remove(uR"(\\?\)" + at(u"c"));
    remove(work.root().substr(2) + uR"(\d)");
    remove(at(u"e. ."));
    EXPECT_EQ(entries(), names{u"dir"});
}

// A long prefix is no part of the native form, so it makes no name an exact one.
TEST_IN_WORKSPACE(Remove, TakesTheTwinOfANameWithAFullStop)
{
    make({u"foo.", u"foo"});
    remove(uR"(\\?\)" + at(u"foo."));
    EXPECT_EQ(entries(), names{u"foo."});
}

TEST_IN_WORKSPACE(RemoveFile, TakesAFile)
{
    make({{u"a", "content"}, u"b"});
    remove_file(at(u"a"));
    EXPECT_EQ(entries(), names{u"b"});
    remove_file(upath(at(u"b")));
    EXPECT_EQ(entries(), names{});
}

TEST_IN_WORKSPACE(RemoveFile, TakesNoDirectory)
{
    make({u"empty\\", uR"(full\x)"});
    EXPECT_FAILURE(remove_file(u"empty"), file_is_directory(at(u"empty")));
    EXPECT_FAILURE(remove_file(u"full/"), file_is_directory(at(u"full")));
    EXPECT_EQ(entries(), (names{u"empty", u"full"}));
}

TEST_IN_WORKSPACE(RemoveDirectory, TakesAnEmptyDirectory)
{
    make({u"a\\", u"b\\"});
    remove_directory(at(u"a"));
    EXPECT_EQ(entries(), names{u"b"});
    remove_directory(upath(at(u"b/")));
    EXPECT_EQ(entries(), names{});
}

TEST_IN_WORKSPACE(RemoveDirectory, TakesNoFileAndNothingThatIsFull)
{
    make({u"file", uR"(full\x)"});
    EXPECT_FAILURE(remove_directory(u"file"), not_directory(at(u"file")));
    EXPECT_FAILURE(remove_directory(u"full"), not_empty(at(u"full")));
    EXPECT_EQ(entries(), (names{u"file", u"full"}));
}

using operation = void (*)(std::u16string const &);
using operation_on_path = void (*)(upath const &);

/// The two operations that each take one kind, and what they take.
struct form_case
{
    operation call;
    bool takes_directories;
};

// not constexpr: the addresses of imported functions are known when the program starts
form_case const form_cases[] = {{remove_file, false}, {remove_directory, true}};

void make_one(workspace &work, std::u16string const &path, form_case const &row)
{
    row.takes_directories ? work.make_directory(path) : work.make_file(path);
}

TEST_IN_WORKSPACE(RemoveOneKind, NamesTheFormThatWentToTheSystem)
{
    make_file(u"file");
    for (auto const &row : form_cases) {
        EXPECT_FAILURE(row.call(u"no"), not_found(at(u"no")));
        EXPECT_FAILURE(row.call(u"./no/such/"), not_found(at(uR"(no\such)")));
        EXPECT_FAILURE(row.call(uR"(file\x)"), not_found(at(uR"(file\x)")));
        EXPECT_FAILURE(row.call(uR"(\\?\)" + at(u"no")), not_found(at(u"no")))
            << "the prefix isn't needed";
        EXPECT_FAILURE(row.call(at(u"a|b")), bad_name());
        EXPECT_EQ(failure_of([&] { row.call(uR"(\\server)"); }).value_or(failure{}).id,
                  fsys_excp_invalid_argument);
    }
    EXPECT_EQ(entries(), names{u"file"});
}

TEST_IN_WORKSPACE(RemoveOneKind, PrefixesFormsFrom260Units)
{
    std::u16string const parent = make_directory(std::u16string(150, u'p'));
    for (auto const &row : form_cases) {
        for (std::size_t const size : {247U, 248U, 258U, 259U, 260U, 261U, 300U}) {
            std::u16string const path =
                parent + u'\\' + std::u16string(size - parent.size() - 1, u'n');
            make_one(work, path, row);
            EXPECT_EQ(failure_of([&] { row.call(path); }), std::nullopt) << size;
            EXPECT_FAILURE(row.call(path), not_found(size < 260 ? path : uR"(\\?\)" + path));
        }
    }
    EXPECT_EQ(work.entries(parent), names{});
}

TEST_IN_WORKSPACE(RemoveOneKind, ReachesAShare)
{
    NEEDS(work.has_share(), "there is no share");
    for (auto const &row : form_cases) {
        std::u16string const path = work.share_root() + u"\\name";
        make_one(work, path, row);
        EXPECT_EQ(failure_of([&] { row.call(path); }), std::nullopt);
        EXPECT_FAILURE(row.call(path), not_found(path));
    }
}

TEST_IN_WORKSPACE(RemoveOneKind, TakesTheTwinOfANameWithAFullStop)
{
    for (auto const &row : form_cases) {
        workspace fresh;
        make_one(fresh, fresh.path(u"foo."), row);
        make_one(fresh, fresh.path(u"foo"), row);
        EXPECT_EQ(failure_of([&] { row.call(uR"(\\?\)" + fresh.path(u"foo.")); }), std::nullopt);
        EXPECT_EQ(fresh.entries(fresh.root()), names{u"foo."});
    }
}

TEST_IN_WORKSPACE(RemoveAnything, PassesOverTheEmptyPath)
{
    for (operation const call : {operation(remove), operation(remove_file),
                                 operation(remove_directory), operation(remove_all)})
        EXPECT_EQ(failure_of([&] { call(u""); }), std::nullopt);
    for (operation_on_path const call :
         {operation_on_path(remove), operation_on_path(remove_file),
          operation_on_path(remove_directory), operation_on_path(remove_all)})
        EXPECT_EQ(failure_of([&] { call(upath()); }), std::nullopt);
    EXPECT_TRUE(work.is_directory(work.root()));
}

} // namespace
} // namespace fl::filesystem::tests
