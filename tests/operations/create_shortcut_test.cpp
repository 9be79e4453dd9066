// Shortcut files as the system's own shell link object makes them. They are read by that
// object, and by the walk through a pathname, which follows them.

#include <fl/filesystem.hpp>

#include "platform/opened.hpp"
#include "platform/shell_link.hpp"
#include "support/in_workspace.hpp"

namespace fl::filesystem::tests {
namespace {

using contract::in;
using contract::workspace;

auto const no_shortcut_name = invalid_argument("Shortcut path input must have .lnk file extension");

/// The target in a shortcut file, as the shell reads it.
std::u16string stored_in(std::u16string const &file)
{
    contract::apartment const com;
    contract::shortcut link;
    EXPECT_EQ(link.load(wide(file)), contract::yes);
    std::wstring const path = link.path();
    EXPECT_TRUE(link.path_code() == contract::yes || link.path_code() == contract::no);
    return units(path);
}

/// Where a relative link in the folder leads that goes through a shortcut there and up again.
std::u16string above_target_of(workspace const &space, std::wstring const &file)
{
    using namespace detail::windows;
    return units(build_target_path_bridge(in(space, L"link"), file + LR"(\..\x)",
                                          link_type_symlink_relative));
}

constexpr text_row<char16_t> target_cases[] = {
    {uR"(dir\file)", uR"(dir\file)", "a file"},
    {uR"(dir\sub)", uR"(dir\sub)", "a directory"},
    {uR"(dir\missing)", uR"(dir\missing)", "a missing target"},
    {uR"(no\such\thing)", uR"(no\such\thing)", "in no directory"},
    {u"dir/sub//", uR"(dir\sub)", "in native form"},
    {uR"(dir\.\sub\..\sub)", uR"(dir\sub)", "cleaned"},
    {u"dir/", u"dir", "no separator at its end"},
};

TEST_IN_WORKSPACE(CreateShortcut, StoresTheTargetAbsoluteAndCleaned)
{
    for (auto const &row : target_cases) {
        for (bool const is_relative : {false, true}) {
            workspace fresh;
            fresh.make_file(fresh.path(uR"(dir\file)"));
            fresh.make_directory(fresh.path(uR"(dir\sub)"));
            fresh.change_directory(fresh.root());
            std::u16string const target = is_relative ? row.text : fresh.path(row.text);
            std::u16string const file = fresh.path(u"a.lnk");
            create_shortcut(target, file);
            EXPECT_TRUE(fresh.is_file(file)) << row.why;
            EXPECT_EQ(stored_in(file), fresh.path(row.expected)) << row.why;
            ::DeleteFileW(wide(file).c_str());
            create_shortcut(upath(target), upath(file));
            EXPECT_EQ(stored_in(file), fresh.path(row.expected)) << row.why;
            EXPECT_EQ(fresh.entries(fresh.root()), (names{u"a.lnk", u"dir"})) << row.why;
        }
    }
}

TEST_IN_WORKSPACE(CreateShortcut, IsFollowedByTheWalk)
{
    make({uR"(dir\sub\)", uR"(dir\x)"});
    create_shortcut(at(uR"(dir\sub)"), at(u"a.lnk"));
    EXPECT_EQ(above_target_of(work, L"a.lnk"), uR"(\\?\)" + at(uR"(dir\x)"));
    create_shortcut(at(uR"(a.lnk\..\sub)"), at(u"b.lnk"));
    EXPECT_EQ(stored_in(at(u"b.lnk")), at(u"sub")) << "the dots of a target go by its text";
}

TEST_IN_WORKSPACE(CreateShortcut, ByARelativeName)
{
    make_directory(u"dir");
    enter(u"dir");
    create_shortcut(u"target", u"a.lnk");
    EXPECT_EQ(entries(u"dir"), names{u"a.lnk"});
    EXPECT_EQ(stored_in(at(uR"(dir\a.lnk)")), at(uR"(dir\target)"));
}

TEST_IN_WORKSPACE(CreateShortcut, OverAFileThatIsThere)
{
    make_directory(u"dir");
    make_file(u"a.lnk", std::string(3000, 'x'));
    create_shortcut(at(u"dir"), at(u"a.lnk"));
    EXPECT_EQ(stored_in(at(u"a.lnk")), at(u"dir"));
    create_shortcut(at(u"other"), at(u"a.lnk"));
    EXPECT_EQ(stored_in(at(u"a.lnk")), at(u"other"));
}

TEST_IN_WORKSPACE(CreateShortcut, OfAnEmptyTargetLeadsToTheCurrentDirectory)
{
    make_directory(u"dir");
    enter(u"dir");
    create_shortcut(std::u16string(), at(u"a.lnk"));
    EXPECT_EQ(stored_in(at(u"a.lnk")), at(u"dir"));
    create_shortcut(upath(), upath(at(u"b.lnk")));
    EXPECT_EQ(stored_in(at(u"b.lnk")), at(u"dir"));
}

// The test counts the whole text, and so the extension alone is a name.
TEST_IN_WORKSPACE(CreateShortcut, CalledNothingButTheExtension)
{
    make_directory(u"dir");
    create_shortcut(at(u"dir"), at(u".lnk"));
    EXPECT_EQ(stored_in(at(u".lnk")), at(u"dir"));
    enter(u"dir");
    create_shortcut(at(u"dir"), u".lnk");
    EXPECT_EQ(stored_in(at(uR"(dir\.lnk)")), at(u"dir")) << "it is absolute by then";
}

TEST_IN_WORKSPACE(CreateShortcut, RefusesOtherNames)
{
    for (char16_t const *name :
         {u"x", u"x.LNK", u"x.Lnk", u"x.ln", u"x.lnkk", u"lnk", u"x.lnk.", u"x.lnk\\y", u"xlnk"}) {
        workspace fresh;
        fresh.make_directory(fresh.path(u"dir"));
        auto const make = [&] { create_shortcut(fresh.path(u"dir"), fresh.path(name)); };
        auto const failed = failure_of(make);
        std::string const shown = printable(name);
        // the system takes a full stop off that ends a name
        if (std::u16string_view(name) == u"x.lnk.") {
            EXPECT_EQ(failed, std::nullopt);
            continue;
        }
        EXPECT_EQ(failed, no_shortcut_name) << shown;
        EXPECT_EQ(fresh.entries(fresh.root()), names{u"dir"}) << shown;
    }
}

TEST_IN_WORKSPACE(CreateShortcut, AnEmptyNameIsTheCurrentDirectory)
{
    EXPECT_FAILURE(create_shortcut(work.root(), std::u16string()), no_shortcut_name);
    EXPECT_FAILURE(create_shortcut(upath(), upath()), no_shortcut_name);
    make_directory(u"x.lnk");
    enter(u"x.lnk");
    EXPECT_FAILURE(create_shortcut(upath(), upath()), denied(at(u"x.lnk")))
        << "a directory may be called so, but is no file";
}

TEST_IN_WORKSPACE(CreateShortcut, FailuresNameTheShortcut)
{
    make_directory(u"dir.lnk");
    EXPECT_FAILURE(create_shortcut(u"x", u"no/a.lnk"), not_found(at(uR"(no\a.lnk)")))
        << "as it went to the shell";
    EXPECT_FAILURE(create_shortcut(u"x", u"dir.lnk"), denied(at(u"dir.lnk")));
    EXPECT_EQ(entries(), names{u"dir.lnk"});
}

} // namespace
} // namespace fl::filesystem::tests
