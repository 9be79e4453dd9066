#include <fl/filesystem/operations.hpp>

#include "support/names.hpp"
#include "support/workspace.hpp"

namespace fl::filesystem {
namespace {

using namespace test_support;
using test_support::failure;

TEST(Remove, TakesAFileOrAnEmptyDirectory)
{
    workspace work;
    work.make_file(work.path(u"file"), "content");
    work.make_directory(work.path(u"dir"));
    remove(work.path(u"file"));
    EXPECT_EQ(work.entries(work.root()), names{u"dir"});
    remove(upath(work.path(u"dir")));
    EXPECT_EQ(work.entries(work.root()), names{});
}

TEST(Remove, LeavesADirectoryThatIsNotEmpty)
{
    workspace work;
    work.make_file(work.path(uR"(dir\file)"));
    EXPECT_FAILURE(remove(work.path(u"dir")), not_empty(work.path(u"dir")));
    EXPECT_TRUE(work.is_file(work.path(uR"(dir\file)")));
}

TEST(Remove, NamesTheCallersTextInNativeForm)
{
    workspace work;
    work.change_directory(work.root());
    work.make_file(work.path(uR"(dir\file)"));
    EXPECT_FAILURE(remove(u"no/such"), not_found(uR"(no\such)"));
    EXPECT_FAILURE(remove(upath(u"./dir")), not_empty(uR"(.\dir)"));
    EXPECT_FAILURE(remove(uR"(dir\..\dir)"), not_empty(uR"(dir\..\dir)"));
    std::u16string const overlong = uR"(no\)" + std::u16string(250, u'x');
    EXPECT_FAILURE(remove(overlong), not_found(overlong)) << "without a prefix";
    EXPECT_FAILURE(remove(uR"(\\?\)" + work.path(u"dir")), not_empty(work.path(u"dir")));
}

TEST(Remove, TakesWhatNobodyCanReachForMissing)
{
    workspace work;
    work.make_file(work.path(u"file"));
    for (char16_t const *name : {u"no", uR"(no\x)", uR"(file\x)", u"a|b", u"a*"})
        EXPECT_FAILURE(remove(work.path(name)), not_found(work.path(name)));
    EXPECT_EQ(work.entries(work.root()), names{u"file"});
}

TEST(Remove, ReachesTheDiskByAnyNotation)
{
    workspace work;
    for (char16_t const *name : {u"a", u"b", u"c", u"d", u"E"})
        work.make_file(work.path(name));
    work.make_directory(work.path(u"dir"));
    work.change_directory(work.path(u"dir"));
    remove(u"../a");
    remove(work.path(u"dir/../b"));
    remove(uR"(\\?\)" + work.path(u"c"));
    remove(work.root().substr(2) + uR"(\d)");
    remove(work.path(u"e. ."));
    EXPECT_EQ(work.entries(work.root()), names{u"dir"});
}

// A long prefix is no part of the native form, so it makes no name an exact one.
TEST(Remove, TakesTheTwinOfANameWithAFullStop)
{
    workspace work;
    work.make_file(work.path(u"foo."));
    work.make_file(work.path(u"foo"));
    remove(uR"(\\?\)" + work.path(u"foo."));
    EXPECT_EQ(work.entries(work.root()), names{u"foo."});
}

TEST(RemoveFile, TakesAFile)
{
    workspace work;
    work.make_file(work.path(u"a"), "content");
    work.make_file(work.path(u"b"));
    remove_file(work.path(u"a"));
    EXPECT_EQ(work.entries(work.root()), names{u"b"});
    remove_file(upath(work.path(u"b")));
    EXPECT_EQ(work.entries(work.root()), names{});
}

TEST(RemoveFile, TakesNoDirectory)
{
    workspace work;
    work.change_directory(work.root());
    work.make_directory(work.path(u"empty"));
    work.make_file(work.path(uR"(full\x)"));
    EXPECT_FAILURE(remove_file(u"empty"), file_is_directory(work.path(u"empty")));
    EXPECT_FAILURE(remove_file(u"full/"), file_is_directory(work.path(u"full")));
    EXPECT_EQ(work.entries(work.root()), (names{u"empty", u"full"}));
}

TEST(RemoveDirectory, TakesAnEmptyDirectory)
{
    workspace work;
    work.make_directory(work.path(u"a"));
    work.make_directory(work.path(u"b"));
    remove_directory(work.path(u"a"));
    EXPECT_EQ(work.entries(work.root()), names{u"b"});
    remove_directory(upath(work.path(u"b/")));
    EXPECT_EQ(work.entries(work.root()), names{});
}

TEST(RemoveDirectory, TakesNoFileAndNothingThatIsFull)
{
    workspace work;
    work.change_directory(work.root());
    work.make_file(work.path(u"file"));
    work.make_file(work.path(uR"(full\x)"));
    EXPECT_FAILURE(remove_directory(u"file"), not_directory(work.path(u"file")));
    EXPECT_FAILURE(remove_directory(u"full"), not_empty(work.path(u"full")));
    EXPECT_EQ(work.entries(work.root()), (names{u"file", u"full"}));
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

void make(workspace &work, std::u16string const &path, form_case const &row)
{
    row.takes_directories ? work.make_directory(path) : work.make_file(path);
}

TEST(RemoveOneKind, NamesTheFormThatWentToTheSystem)
{
    workspace work;
    work.change_directory(work.root());
    work.make_file(work.path(u"file"));
    for (auto const &row : form_cases) {
        EXPECT_FAILURE(row.call(u"no"), not_found(work.path(u"no")));
        EXPECT_FAILURE(row.call(u"./no/such/"), not_found(work.path(uR"(no\such)")));
        EXPECT_FAILURE(row.call(uR"(file\x)"), not_found(work.path(uR"(file\x)")));
        EXPECT_FAILURE(row.call(uR"(\\?\)" + work.path(u"no")), not_found(work.path(u"no")))
            << "the prefix isn't needed";
        EXPECT_FAILURE(row.call(work.path(u"a|b")), bad_name());
        EXPECT_EQ(failure_of([&] { row.call(uR"(\\server)"); }).value_or(failure{}).id,
                  fsys_excp_invalid_argument);
    }
    EXPECT_EQ(work.entries(work.root()), names{u"file"});
}

TEST(RemoveOneKind, PrefixesFormsFrom260Units)
{
    workspace work;
    std::u16string const parent = work.path(std::u16string(150, u'p'));
    work.make_directory(parent);
    for (auto const &row : form_cases) {
        for (std::size_t const size : {247U, 248U, 258U, 259U, 260U, 261U, 300U}) {
            std::u16string const path =
                parent + u'\\' + std::u16string(size - parent.size() - 1, u'n');
            make(work, path, row);
            EXPECT_EQ(failure_of([&] { row.call(path); }), std::nullopt) << size;
            EXPECT_FAILURE(row.call(path), not_found(size < 260 ? path : uR"(\\?\)" + path));
        }
    }
    EXPECT_EQ(work.entries(parent), names{});
}

TEST(RemoveOneKind, ReachesAShare)
{
    workspace work;
    NEEDS(work.has_share(), "there is no share");
    for (auto const &row : form_cases) {
        std::u16string const path = work.share_root() + u"\\name";
        make(work, path, row);
        EXPECT_EQ(failure_of([&] { row.call(path); }), std::nullopt);
        EXPECT_FAILURE(row.call(path), not_found(path));
    }
}

TEST(RemoveOneKind, TakesTheTwinOfANameWithAFullStop)
{
    for (auto const &row : form_cases) {
        workspace work;
        make(work, work.path(u"foo."), row);
        make(work, work.path(u"foo"), row);
        EXPECT_EQ(failure_of([&] { row.call(uR"(\\?\)" + work.path(u"foo.")); }), std::nullopt);
        EXPECT_EQ(work.entries(work.root()), names{u"foo."});
    }
}

TEST(RemoveAnything, PassesOverTheEmptyPath)
{
    workspace work;
    work.change_directory(work.root());
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
} // namespace fl::filesystem
