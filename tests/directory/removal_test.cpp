// Removals that count, show, go on and clear, on every system.

#include <fl/filesystem/removal.hpp>

#include <fl/filesystem/operations.hpp>

#include "support/in_workspace.hpp"

#include <windows.h>

#include <algorithm>
#include <stdexcept>
#include <type_traits>

namespace fl::filesystem::tests {
namespace {

constexpr std::uint32_t read_only = 1;

// Without options it is what it was.
static_assert(std::is_same_v<decltype(remove_all(u"x")), void>);
static_assert(std::is_same_v<decltype(remove_all(upath())), void>);
static_assert(std::is_same_v<decltype(remove_all(u"x", removal_options())), removal_report>);

/// Whether a directory can be listed that somebody, here the caller, has open for deletion.
/// Wine 8 lists without sharing that right, so that nothing can be held there.
bool lists_what_is_held(workspace &work)
{
    std::u16string const text = work.path(u"probe");
    work.make_directory(text);
    std::wstring const name(text.begin(), text.end());
    HANDLE const held = ::CreateFileW(name.c_str(), DELETE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                      nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    WIN32_FIND_DATAW data = {};
    HANDLE const search = ::FindFirstFileW((name + L"\\*").c_str(), &data);
    bool const does = search != INVALID_HANDLE_VALUE;
    if (does)
        ::FindClose(search);
    ::CloseHandle(held);
    ::RemoveDirectoryW(name.c_str());
    return does;
}

#define FL_SKIP_UNLESS_HELD(work)                                                                  \
    if (!lists_what_is_held(work))                                                                 \
    GTEST_SKIP() << "no directory is listed here that is open for deletion"

TEST_IN_WORKSPACE(RemoveAllWithOptions, CountsWhatItRemoves)
{
    FL_SKIP_UNLESS_HELD(work);
    make({{uR"(t\a\b\file)", "content"}, uR"(t\file)", uR"(t\empty\)", u"kept"});
    removal_report const report = remove_all(at(u"t"), removal_options());
    EXPECT_EQ(report.removed(), 6U);
    EXPECT_TRUE(report.is_complete());
    EXPECT_TRUE(report.failures().empty());
    EXPECT_EQ(entries(), names{u"kept"});
    EXPECT_EQ(remove_all(upath(at(u"kept")), removal_options()).removed(), 1U);
    EXPECT_EQ(remove_all(u"", removal_options()).removed(), 0U);
    EXPECT_FAILURE(remove_all(at(u"no"), removal_options()), not_found(at(u"no")));
}

TEST_IN_WORKSPACE(RemoveAllWithOptions, TakesNamesOfAnyLengthAndEnding)
{
    FL_SKIP_UNLESS_HELD(work);
    for (char16_t const *name : {u"foo.", u"foo", u"bar ", u"...", u"a. "}) {
        make_file(std::u16string(uR"(t\)") + name + uR"(\x)");
        make_file(std::u16string(uR"(t\)") + name + uR"(\y.)");
    }
    work.make_file(at(u"t\\" + std::u16string(200, u'd') + u'\\' + std::u16string(200, u'f')));
    make_file(u"foo");
    EXPECT_EQ(remove_all(at(u"t"), removal_options()).removed(), 18U);
    EXPECT_EQ(entries(), names{u"foo"});
}

TEST_IN_WORKSPACE(RemoveAllWithOptions, LeavesWhatLinksLeadTo)
{
    if (!work.has_symbolic_links() || !work.has_junctions())
        GTEST_SKIP() << "there are no links";
    make_file(uR"(away\kept)");
    work.make_symbolic_link(at(uR"(t\file link)"), at(uR"(away\kept)"));
    work.make_symbolic_link(at(uR"(t\link)"), at(u"away"), link_to::directory);
    work.make_junction(at(uR"(t\junction)"), at(u"away"));
    EXPECT_EQ(remove_all(at(u"t"), removal_options()).removed(), 4U);
    work.make_junction(at(u"j"), at(u"away"));
    EXPECT_EQ(remove_all(at(u"j"), removal_options()).removed(), 1U);
    EXPECT_EQ(entries(u"away"), names{u"kept"});
}

TEST_IN_WORKSPACE(RemoveAllWithOptions, ReadOnlyFilesFailUnlessTheyAreToBeCleared)
{
    FL_SKIP_UNLESS_HELD(work);
    std::u16string const file = make_file(uR"(t\file)");
    work.set_attributes(file, read_only);
    EXPECT_FAILURE(remove_all(at(u"t"), removal_options()), denied(file));
    EXPECT_TRUE(work.exists(file));
    EXPECT_EQ(remove_all(at(u"t"), removal_options().clear_read_only()).removed(), 2U);
    EXPECT_FALSE(work.exists(at(u"t")));
}

TEST_IN_WORKSPACE(RemoveAllWithOptions, GoesOnAndTellsAllThatIsLeft)
{
    FL_SKIP_UNLESS_HELD(work);
    for (char16_t const *name : {uR"(t\a\1)", uR"(t\a\2)", uR"(t\b\1)", uR"(t\c)"})
        make_file(name);
    work.set_attributes(at(uR"(t\a\1)"), read_only);
    work.set_attributes(at(uR"(t\c)"), read_only);
    removal_report const report = remove_all(at(u"t"), removal_options().keep_going());
    EXPECT_EQ(report.removed(), 3U) << "2, b and what is in it";
    EXPECT_FALSE(report.is_complete());
    EXPECT_FALSE(report.was_stopped());
    names left;
    for (failure const &told : report.failures()) {
        EXPECT_EQ(told.id(), fsys_excp_access_denied);
        left.push_back(told.path_name());
    }
    std::sort(left.begin(), left.end());
    EXPECT_EQ(left, (names{at(uR"(t\a\1)"), at(uR"(t\c)")}))
        << "and not the directories that hold them";
    EXPECT_EQ(entries(u"t"), (names{u"a", u"c"}));

    make_file(uR"(deep\a\b\1)");
    work.set_attributes(at(uR"(deep\a\b\1)"), read_only);
    removal_report const deep = remove_all(at(u"deep"), removal_options().keep_going());
    ASSERT_EQ(deep.failures().size(), 1U) << "no directory above, at any distance";
    EXPECT_EQ(deep.failures()[0].path_name(), at(uR"(deep\a\b\1)"));
    remove_all(at(u"deep"), removal_options().clear_read_only());

    removal_report const missing = remove_all(at(u"no"), removal_options().keep_going());
    ASSERT_EQ(missing.failures().size(), 1U);
    EXPECT_EQ(missing.failures()[0].id(), fsys_excp_path_not_found);
    remove_all(at(u"t"), removal_options().clear_read_only());
}

TEST_IN_WORKSPACE(RemoveAllWithOptions, ShowsEachNameWhenItIsGone)
{
    FL_SKIP_UNLESS_HELD(work);
    make({uR"(t\a\x. )", uR"(t\b)"});
    names gone;
    std::vector<std::uint64_t> counts;
    removal_options const options =
        removal_options().on_progress([&](removal_progress const &progress) {
            gone.push_back(progress.path_name);
            counts.push_back(progress.removed);
            return true;
        });
    remove_all(at(u"t"), options);
    EXPECT_EQ(counts, (std::vector<std::uint64_t>{1, 2, 3, 4}));
    EXPECT_EQ(gone.back(), at(u"t")) << "a directory after its contents";
    std::sort(gone.begin(), gone.end());
    EXPECT_EQ(gone, (names{at(u"t"), at(uR"(t\a)"), at(uR"(t\a\x. )"), at(uR"(t\b)")}));
}

TEST_IN_WORKSPACE(RemoveAllWithOptions, StopsWhenItIsTold)
{
    FL_SKIP_UNLESS_HELD(work);
    for (char16_t const *name : {uR"(t\a\1)", uR"(t\a\2)", uR"(t\a\3)"})
        make_file(name);
    removal_options options;
    options.on_progress([](removal_progress const &progress) { return progress.removed < 2; });
    removal_report const report = remove_all(at(u"t"), options);
    EXPECT_TRUE(report.was_stopped());
    EXPECT_FALSE(report.is_complete());
    EXPECT_EQ(report.removed(), 2U);
    EXPECT_EQ(entries(uR"(t\a)").size(), 1U);
    options.on_progress([](removal_progress const &) -> bool { throw std::logic_error("mine"); });
    EXPECT_THROW(remove_all(at(u"t"), options), std::logic_error);
    EXPECT_EQ(entries(uR"(t\a)").size(), 0U) << "what it was told of is gone";
    remove_all(at(u"t"));
}

TEST_IN_WORKSPACE(RemovalOptions, AreValues)
{
    make_file(u"file");
    work.set_attributes(at(u"file"), read_only);
    removal_options const plain;
    removal_options clearing = plain;
    clearing.clear_read_only();
    EXPECT_FAILURE(remove_all(at(u"file"), plain), denied(at(u"file")));
    removal_options taken_back = clearing;
    taken_back.clear_read_only(false).keep_going().keep_going(false).hold(false).hold();
    EXPECT_FAILURE(remove_all(at(u"file"), taken_back), denied(at(u"file")));
    EXPECT_EQ(remove_all(at(u"file"), clearing).removed(), 1U);
}

/// Whether somebody can rename a directory while it is being emptied.
bool can_be_renamed_meanwhile(workspace &work, removal_options options)
{
    std::u16string const tree = work.path(u"t");
    work.make_file(tree + uR"(\file)");
    bool is_renamed = false;
    options.on_progress([&](removal_progress const &) {
        is_renamed = !failure_of([&] { rename(tree, work.path(u"renamed")); });
        return false;
    });
    EXPECT_TRUE(remove_all(tree, options).was_stopped());
    remove_all(is_renamed ? work.path(u"renamed") : tree);
    return is_renamed;
}

TEST_IN_WORKSPACE(RemovalOptions, HoldIsOneOfTheValues)
{
    FL_SKIP_UNLESS_HELD(work);
    removal_options const plain;
    removal_options loose = plain;
    loose.hold(false);
    EXPECT_TRUE(can_be_renamed_meanwhile(work, loose));
    EXPECT_FALSE(can_be_renamed_meanwhile(work, plain)) << "unless told otherwise";
    removal_options const copied = loose;
    loose.hold();
    EXPECT_FALSE(can_be_renamed_meanwhile(work, loose));
    EXPECT_TRUE(can_be_renamed_meanwhile(work, copied));
}

} // namespace
} // namespace fl::filesystem::tests
