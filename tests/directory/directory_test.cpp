// What listings of directories find, and what they know of it, on every system.

#include <fl/filesystem/directory.hpp>

#include <fl/filesystem/exceptions.hpp>
#include <fl/filesystem/operations.hpp>

#include "directory/listing.hpp"
#include "support/in_workspace.hpp"

#include <algorithm>
#include <iterator>
#include <map>
#include <ranges>
#include <type_traits>

namespace fl::filesystem::tests {
namespace {

using test_support::failure;

template <typename Iterator>
constexpr bool is_input_iterator =
    std::is_same_v<typename std::iterator_traits<Iterator>::iterator_category,
                   std::input_iterator_tag>
        &&std::is_same_v<typename std::iterator_traits<Iterator>::value_type, directory_entry>;
static_assert(is_input_iterator<directory_iterator>);
static_assert(is_input_iterator<recursive_directory_iterator>);
static_assert(std::ranges::input_range<directory_iterator>);
static_assert(std::ranges::input_range<recursive_directory_iterator>);
// nothing becomes an entry or a search by itself
static_assert(!std::is_convertible_v<upath, directory_entry>);
static_assert(!std::is_convertible_v<std::u16string, directory_iterator>);
static_assert(std::is_nothrow_move_constructible_v<directory_entry>);

auto invalid_operation()
{
    return about(fsys_excp_invalid_operation, "fl:filesystem:InvalidOperation", u"");
}

void make_files(workspace &work, names const &files)
{
    for (std::u16string const &file : files)
        work.make_file(work.path(file));
}

TEST_IN_WORKSPACE(DirectoryIterator, TellsTheNamesInADirectoryAndNoDots)
{
    make_files(work, {u"b", u"A.txt", u"c c", uR"(sub\inner)"});
    make_directory(u"empty");
    EXPECT_EQ(sorted(names_in(work.root())), (names{u"A.txt", u"b", u"c c", u"empty", u"sub"}));
    EXPECT_EQ(names_in(at(u"sub")), names{u"inner"});
    EXPECT_EQ(names_in(at(u"empty")), names{});
}

TEST_IN_WORKSPACE(DirectoryIterator, TellsPathnamesBelowTheOneThatWasGiven)
{
    make_files(work, {uR"(sub\inner)"});
    struct
    {
        std::u16string given, expected;
    } const rows[] = {
        {at(u"sub"), at(uR"(sub\inner)")},
        {u"sub", uR"(sub\inner)"},
        {u"./sub/", uR"(.\sub\inner)"},
        {uR"(..\)" + upath(work.root()).filename() + uR"(\sub)",
         uR"(..\)" + upath(work.root()).filename() + uR"(\sub\inner)"},
        {uR"(\\?\)" + at(u"sub"), at(uR"(sub\inner)")},
    };
    for (auto const &row : rows) {
        directory_iterator const found(row.given);
        EXPECT_EQ(found->path().native(), row.expected);
        EXPECT_EQ(found->filename(), u"inner");
        EXPECT_EQ(found->access_form(), L"\\\\?\\" + upath(at(uR"(sub\inner)")).wstring());
    }
}

// `C:` is the current directory of the drive, and `C:\` its root.
TEST_IN_WORKSPACE(DirectoryIterator, OfABareDriveIsOfItsCurrentDirectory)
{
    make_files(work, {uR"(sub\inner)"});
    change_current_path(at(u"sub"));
    directory_iterator const found(work.root().substr(0, 2));
    EXPECT_EQ(found->path().native(), work.root().substr(0, 2) + u"inner");
    EXPECT_TRUE(exists(found->path()));
    enter();
}

TEST_IN_WORKSPACE(DirectoryIterator, OfARootHasItsNamesBehindOneBackslash)
{
    std::u16string const root = work.root().substr(0, 3);
    int count = 0;
    for (directory_entry const &entry : directory_iterator(root)) {
        EXPECT_EQ(entry.path().native(), root + entry.filename());
        ++count;
    }
    EXPECT_GT(count, 0);
}

TEST_IN_WORKSPACE(DirectoryIterator, OfAShareWithAndWithoutABackslashBehindIt)
{
    NEEDS(work.has_share(), "there is no share");
    work.make_file(work.share_root() + uR"(\file)");
    EXPECT_EQ(names_in(work.share_root()), names{u"file"});
    directory_iterator const found(work.share_root());
    EXPECT_EQ(found->path().native(), work.share_root() + uR"(\file)");
    EXPECT_EQ(found->access_form(),
              L"\\\\?\\UNC" + upath(work.share_root() + uR"(\file)").wstring().substr(1));
    std::u16string const share = uR"(\\fl-server\share)";
    std::u16string const folder = upath(work.share_root()).filename();
    for (std::u16string const &given : {share, share + u"\\"}) {
        names const found_in_share = names_in(given);
        EXPECT_EQ(std::count(found_in_share.begin(), found_in_share.end(), folder), 1);
    }
}

TEST_IN_WORKSPACE(DirectoryIterator, ReachesDirectoriesOfAnyLength)
{
    for (std::size_t const size : {246U, 247U, 248U, 257U, 258U, 259U, 260U, 700U}) {
        std::u16string const directory = chain_of_size(at(u"t"), size);
        std::u16string const file(200, u'f');
        work.make_file(directory + u'\\' + file, "12345");
        directory_entry const entry = *directory_iterator(directory);
        EXPECT_EQ(entry.filename(), file) << size;
        EXPECT_EQ(entry.path().native(), directory + u'\\' + file) << size;
        EXPECT_EQ(entry.file_size(), 5U) << size;
        EXPECT_TRUE(file_status::is_regular(entry.status())) << size;
        names const tree = tree_of(at(u"t"));
        EXPECT_EQ(tree.back(), directory + u'\\' + file) << size;
        remove_all(at(u"t"));
    }
}

/// Without a long prefix the system would cut these names, and miss them or find others.
TEST_IN_WORKSPACE(DirectoryIterator, KnowsNamesThatEndInAFullStopOrBlank)
{
    make({{u"foo", "1"}, {u"foo.", "22"}, {u"foo ", "333"}, {u"...x. .\\y ", "4444"}});
    std::map<std::u16string, std::uint64_t> sizes;
    for (directory_entry const &entry : directory_iterator(work.root())) {
        if (entry.is_directory())
            continue;
        sizes[entry.filename()] = entry.file_size();
        EXPECT_EQ(entry.status().get_size(), entry.file_size());
        EXPECT_EQ(entry.symlink_status().get_size(), entry.file_size());
        EXPECT_EQ(entry.is_nameable(), entry.filename() == u"foo");
    }
    EXPECT_EQ(sizes,
              (std::map<std::u16string, std::uint64_t>{{u"foo", 1}, {u"foo.", 2}, {u"foo ", 3}}));
    names inner;
    for (directory_entry const &entry : recursive_directory_iterator(work.root())) {
        if (entry.filename() == u"y ") {
            EXPECT_EQ(entry.access_form(),
                      L"\\\\?\\" + upath(work.root()).wstring() + L"\\...x. .\\y ");
        }
        inner.push_back(entry.filename());
    }
    EXPECT_EQ(sorted(inner), (names{u"...x. .", u"foo", u"foo ", u"foo.", u"y "}));
}

/// `remove(entry)` of `foo.` would remove `foo`.
TEST_IN_WORKSPACE(DirectoryEntry, RefusesToBeThePathOfAnother)
{
    make_files(work, {u"foo", u"foo.", u"foo "});
    for (directory_entry const &entry : directory_iterator(work.root())) {
        if (entry.is_nameable()) {
            EXPECT_EQ(failure_of([&] { static_cast<void>(symlink_status(entry)); }), std::nullopt);
            continue;
        }
        auto const thrown = failure_of([&] { remove(entry); });
        std::u16string const path = at(entry.filename());
        std::string const text(path.begin(), path.end());
        EXPECT_EQ(thrown, (failure{fsys_excp_invalid_argument,
                                   "fl:filesystem:InvalidArgument: The name ends in a full stop or "
                                   "blank: {" +
                                       text + "}",
                                   path,
                                   {},
                                   0}));
    }
    EXPECT_EQ(entries(), (names{u"foo", u"foo ", u"foo."}));
}

TEST_IN_WORKSPACE(DirectoryEntry, KnowsWhatTheStatusOfItsNameKnows)
{
    make({{u"file", "some text"}, u"tool.exe", u"read-only"});
    work.set_attributes(at(u"read-only"), 1);
    make_directory(u"directory");
    if (work.has_symbolic_links()) {
        work.make_symbolic_link(at(u"link"), u"file");
        work.make_symbolic_link(at(u"directory link"), u"directory", link_to::directory);
        work.make_symbolic_link(at(u"broken"), u"nowhere");
    }
    if (work.has_junctions())
        work.make_junction(at(u"junction"), at(u"directory"));
    int count = 0;
    for (directory_entry const &entry : directory_iterator(work.root())) {
        file_status const known = entry.known();
        file_status const asked = symlink_status(entry.path());
        EXPECT_EQ(known.get_type(), asked.get_type());
        EXPECT_EQ(known.get_perms(), asked.get_perms());
        EXPECT_EQ(known.get_mtime(), asked.get_mtime());
        EXPECT_EQ(known.get_ctime(), asked.get_ctime());
        EXPECT_EQ(known.get_size(), asked.get_size());
        EXPECT_EQ(entry.attributes(), work.attributes(entry.path().native()));
        file_status const followed = status(entry.path());
        EXPECT_EQ(entry.exists(), file_status::exists(followed));
        EXPECT_EQ(entry.is_directory(), file_status::is_directory(followed));
        EXPECT_EQ(entry.is_regular_file(), file_status::is_regular(followed));
        EXPECT_FALSE(entry.is_other());
        EXPECT_EQ(entry.is_symlink(), file_status::is_symlink(asked));
        EXPECT_EQ(entry.is_junction(), file_status::is_reparse(asked));
        EXPECT_EQ(entry.status().get_type(), followed.get_type());
        EXPECT_EQ(entry.symlink_status().get_type(), asked.get_type());
        EXPECT_EQ(directory_entry(entry.path()).known().get_type(), asked.get_type());
        ++count;
    }
    EXPECT_EQ(count, 4 + (work.has_symbolic_links() ? 3 : 0) + (work.has_junctions() ? 1 : 0));
}

TEST_IN_WORKSPACE(DirectoryEntry, SizesAreThoseOfFiles)
{
    make({{u"file", "some text"}, u"directory\\"});
    EXPECT_EQ(directory_entry(at(u"file")).file_size(), 9U);
    EXPECT_EQ(failure_of([&] { static_cast<void>(directory_entry(at(u"directory")).file_size()); }),
              file_is_directory(at(u"directory")));
    directory_entry const missing(at(u"no"));
    EXPECT_FAILURE(missing.file_size(), not_found(at(u"no")));
    EXPECT_FAILURE(missing.last_write_time(), not_found(at(u"no")));
    if (!work.has_symbolic_links())
        return;
    work.make_symbolic_link(at(u"link"), u"file");
    work.make_symbolic_link(at(u"broken"), u"nowhere");
    EXPECT_EQ(directory_entry(at(u"link")).known().get_size(), 0U);
    EXPECT_EQ(directory_entry(at(u"link")).file_size(), 9U) << "that of the target";
    directory_entry const broken(at(u"broken"));
    EXPECT_FAILURE(broken.file_size(), not_found(at(u"broken")));
}

TEST_IN_WORKSPACE(DirectoryEntry, OfANameThatIsntThereKnowsThat)
{
    for (directory_entry const &entry :
         {directory_entry(), directory_entry(at(u"no")), directory_entry(at(uR"(no\no)"))}) {
        file_status const known = entry.known();
        file_status const nothing;
        EXPECT_FALSE(file_status::exists(known));
        EXPECT_EQ(known.get_perms(), nothing.get_perms());
        EXPECT_EQ(known.get_mtime(), nothing.get_mtime());
        EXPECT_EQ(known.get_size(), nothing.get_size());
        EXPECT_FALSE(file_status::exists(entry.status()));
        EXPECT_FALSE(file_status::exists(entry.symlink_status()));
        EXPECT_EQ(entry.attributes(), 0U);
        EXPECT_EQ(entry.reparse_tag(), 0U);
        EXPECT_FALSE(entry.exists() || entry.is_directory() || entry.is_regular_file() ||
                     entry.is_other() || entry.is_symlink() || entry.is_junction());
    }
    EXPECT_TRUE(directory_entry().path().empty());
    EXPECT_EQ(directory_entry().access_form(), L"");
    EXPECT_FAILURE(directory_entry(u""), empty_path());
}

TEST_IN_WORKSPACE(DirectoryEntry, KeepsWhatItKnowsUntilItIsRefreshed)
{
    make_file(u"file", "1");
    directory_entry entry = *directory_iterator(work.root());
    directory_entry const copy = entry;
    make_file(u"file", "4444");
    EXPECT_EQ(entry.file_size(), 1U);
    EXPECT_EQ(entry.symlink_status().get_size(), 4U);
    EXPECT_EQ(entry.file_size(), 1U);
    entry.refresh();
    EXPECT_EQ(entry.file_size(), 4U);
    EXPECT_EQ(copy.file_size(), 1U) << "a value of its own";
    remove(at(u"file"));
    entry.refresh();
    EXPECT_FALSE(entry.exists());
    EXPECT_EQ(entry.path().native(), at(u"file"));
    EXPECT_EQ(entry, copy) << "by pathname";
    directory_entry none;
    none.refresh();
    EXPECT_FALSE(none.exists());
}

TEST_IN_WORKSPACE(DirectoryEntry, OutlivesItsIteratorAndMoves)
{
    make_files(work, {u"a", u"b"});
    std::vector<directory_entry> kept;
    std::copy(directory_iterator(work.root()), directory_iterator(), std::back_inserter(kept));
    std::sort(kept.begin(), kept.end());
    ASSERT_EQ(kept.size(), 2U);
    EXPECT_EQ(kept[0].filename(), u"a");
    EXPECT_EQ(kept[1].filename(), u"b");
    EXPECT_TRUE(kept[0] < kept[1] && kept[0] <= kept[1] && kept[1] > kept[0] &&
                kept[1] >= kept[0] && kept[0] != kept[1]);
    directory_entry const same = kept[0];
    EXPECT_TRUE(same <= kept[0] && same >= kept[0]);
    EXPECT_FALSE(same < kept[0] || same > kept[0] || kept[1] <= same || same >= kept[1]);
    directory_entry const taken = std::move(kept[0]);
    EXPECT_EQ(taken.filename(), u"a");
    EXPECT_TRUE(kept[0].path().empty()) << "no entry is left"; // NOLINT: what is told of it
}

TEST_IN_WORKSPACE(DirectoryIterator, CopiesShareOneSearch)
{
    make_files(work, {u"a", u"b", u"c"});
    directory_iterator first(work.root());
    directory_iterator second = first;
    EXPECT_EQ(first, second);
    EXPECT_NE(first, directory_iterator());
    EXPECT_NE(directory_iterator(), first);
    std::u16string const passed = (*first++).filename();
    EXPECT_NE(passed, first->filename());
    EXPECT_EQ(second->filename(), first->filename());
    ++second;
    EXPECT_EQ(second->filename(), first->filename());
    ++first;
    EXPECT_EQ(first, directory_iterator());
    EXPECT_EQ(second, directory_iterator());
    EXPECT_FAILURE(++second, invalid_operation());
    EXPECT_FAILURE(*first, invalid_operation());
    EXPECT_FAILURE(++directory_iterator(), invalid_operation());

    recursive_directory_iterator const all(work.root());
    recursive_directory_iterator const copy = all;
    EXPECT_EQ(all, copy);
    EXPECT_NE(all, recursive_directory_iterator());
    EXPECT_NE(recursive_directory_iterator(), all);
    EXPECT_NE(all, recursive_directory_iterator(work.root())) << "another search";
}

TEST_IN_WORKSPACE(DirectoryIterator, OfWhatIsNoDirectoryNamesIt)
{
    make_file(u"file");
    EXPECT_FAILURE(directory_iterator(at(u"no")), not_found(at(u"no")));
    EXPECT_FAILURE(directory_iterator(u"no"), not_found(u"no")) << "as given";
    EXPECT_FAILURE(directory_iterator(upath(u"no/")), not_found(u"no"));
    EXPECT_FAILURE(recursive_directory_iterator(u"no/x"), not_found(uR"(no\x)"));
    EXPECT_FAILURE(directory_iterator(u""), empty_path());
    EXPECT_FAILURE(recursive_directory_iterator{upath()}, empty_path());
    // Wine 8 says of this name that it can be none
    bool const can_be_none = runs_under_wine() && wine_version() < 10;
    EXPECT_FAILURE(directory_iterator(u"file"), can_be_none ? bad_name() : not_directory(u"file"));
}

TEST_IN_WORKSPACE(RecursiveDirectoryIterator, TellsADirectoryAheadOfWhatIsInIt)
{
    make_files(work, {uR"(t\a\b\c)", uR"(t\d)"});
    make_directory(uR"(t\a\empty)");
    names const found = tree_of(at(u"t"));
    EXPECT_EQ(sorted(found), (names{at(uR"(t\a)"), at(uR"(t\a\b)"), at(uR"(t\a\b\c)"),
                                    at(uR"(t\a\empty)"), at(uR"(t\d)")}));
    auto const place = [&](char16_t const *name) {
        return std::find(found.begin(), found.end(), at(name)) - found.begin();
    };
    EXPECT_LT(place(uR"(t\a)"), place(uR"(t\a\b)"));
    EXPECT_LT(place(uR"(t\a\b)"), place(uR"(t\a\b\c)"));
}

TEST_IN_WORKSPACE(RecursiveDirectoryIterator, KnowsHowDeepItIsAndLeavesWhenTold)
{
    make_files(work, {uR"(t\a\1)", uR"(t\a\2)", uR"(t\a\3)"});
    recursive_directory_iterator it(at(u"t"));
    EXPECT_NE(it, recursive_directory_iterator());
    EXPECT_NE(recursive_directory_iterator(), it);
    EXPECT_EQ(it.depth(), 0);
    EXPECT_EQ(it.options(), directory_options::none);
    ++it;
    EXPECT_EQ(it.depth(), 1);
    it.pop();
    EXPECT_EQ(it, recursive_directory_iterator());
    EXPECT_FAILURE(it.pop(), invalid_operation());
    EXPECT_FAILURE(it.depth(), invalid_operation());
    EXPECT_FAILURE(it.options(), invalid_operation());
    EXPECT_FAILURE(it.recursion_pending(), invalid_operation());
    EXPECT_FAILURE(it.disable_recursion_pending(), invalid_operation());
    EXPECT_FAILURE(++it, invalid_operation());
    EXPECT_FAILURE(*it, invalid_operation());
}

TEST_IN_WORKSPACE(RecursiveDirectoryIterator, PopGoesOnBehindTheDirectory)
{
    make_files(work, {uR"(t\a\1)", uR"(t\a\2)", uR"(t\b\1)", uR"(t\b\2)"});
    names found;
    for (recursive_directory_iterator it(at(u"t")), end; it != end;) {
        found.push_back(it->path().native());
        if (it.depth() == 1)
            it.pop();
        else
            ++it;
    }
    EXPECT_EQ(found.size(), 4U) << "each directory and one file in it";
}

TEST_IN_WORKSPACE(RecursiveDirectoryIterator, DoesntEnterWhatItIsToldNotTo)
{
    make_files(work, {uR"(t\a\1)", uR"(t\b\1)"});
    names found;
    for (recursive_directory_iterator it(at(u"t")), end; it != end; ++it) {
        EXPECT_TRUE(it.recursion_pending()) << "until it is told, each time anew";
        found.push_back(it->path().native());
        if (it->filename() == u"a") {
            it.disable_recursion_pending();
            EXPECT_FALSE(it.recursion_pending());
        }
    }
    EXPECT_EQ(sorted(found), (names{at(uR"(t\a)"), at(uR"(t\b)"), at(uR"(t\b\1)")}));
}

TEST_IN_WORKSPACE(RecursiveDirectoryIterator, EntersLinksOnlyWhenItIsTold)
{
    if (!work.has_symbolic_links() || !work.has_junctions())
        GTEST_SKIP() << "there are no links";
    make_files(work, {uR"(away\kept)"});
    work.make_symbolic_link(at(uR"(t\link)"), at(u"away"), link_to::directory);
    work.make_symbolic_link(at(uR"(t\broken)"), at(u"no"), link_to::directory);
    work.make_junction(at(uR"(t\junction)"), at(u"away"));
    names const entries = {at(uR"(t\broken)"), at(uR"(t\junction)"), at(uR"(t\link)")};
    EXPECT_EQ(sorted(tree_of(at(u"t"))), entries);
    names const followed = {entries[0], entries[1], entries[1] + uR"(\kept)", entries[2],
                            entries[2] + uR"(\kept)"};
    EXPECT_EQ(sorted(tree_of(at(u"t"), directory_options::follow_directory_symlink)), followed);
}

TEST_IN_WORKSPACE(RecursiveDirectoryIterator, EndsAtALinkThatLeadsBack)
{
    NEEDS(work.has_symbolic_links(), "there are no links");
    work.make_symbolic_link(at(uR"(t\a\back)"), at(u"t"), link_to::directory);
    EXPECT_FAILURE(tree_of(at(u"t"), directory_options::follow_directory_symlink),
                   system_error(8246, at(uR"(t\a\back)")));
    EXPECT_EQ(tree_of(at(u"t")).size(), 2U);
}

TEST(DirectoryOptions, AreCombinedByBits)
{
    constexpr auto both =
        directory_options::follow_directory_symlink | directory_options::skip_permission_denied;
    static_assert((both & directory_options::follow_directory_symlink) ==
                  directory_options::follow_directory_symlink);
    static_assert((both ^ both) == directory_options::none);
    static_assert((both & ~directory_options::skip_permission_denied) ==
                  directory_options::follow_directory_symlink);
    directory_options changed = directory_options::none;
    changed |= both;
    changed &= directory_options::skip_permission_denied;
    EXPECT_EQ(changed, directory_options::skip_permission_denied);
    changed ^= both;
    EXPECT_EQ(changed, directory_options::follow_directory_symlink);
}

} // namespace
} // namespace fl::filesystem::tests
