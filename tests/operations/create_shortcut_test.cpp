// Shortcut files as the system's own shell link object makes them. They are read by that
// object, and by the walk through a pathname, which follows them.

#include <fl/filesystem.hpp>

#include "platform/opened.hpp"
#include "platform/shell_link.hpp"
#include "support/names.hpp"

namespace fl::filesystem {
namespace {

using namespace test_support;
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

TEST(CreateShortcut, StoresTheTargetAbsoluteAndCleaned)
{
    for (auto const &row : target_cases) {
        for (bool const is_relative : {false, true}) {
            workspace space;
            space.make_file(space.path(uR"(dir\file)"));
            space.make_directory(space.path(uR"(dir\sub)"));
            space.change_directory(space.root());
            std::u16string const target = is_relative ? row.text : space.path(row.text);
            std::u16string const file = space.path(u"a.lnk");
            create_shortcut(target, file);
            EXPECT_TRUE(space.is_file(file)) << row.why;
            EXPECT_EQ(stored_in(file), space.path(row.expected)) << row.why;
            ::DeleteFileW(wide(file).c_str());
            create_shortcut(upath(target), upath(file));
            EXPECT_EQ(stored_in(file), space.path(row.expected)) << row.why;
            EXPECT_EQ(space.entries(space.root()), (names{u"a.lnk", u"dir"})) << row.why;
        }
    }
}

TEST(CreateShortcut, IsFollowedByTheWalk)
{
    workspace space;
    space.make_directory(space.path(uR"(dir\sub)"));
    space.make_file(space.path(uR"(dir\x)"));
    create_shortcut(space.path(uR"(dir\sub)"), space.path(u"a.lnk"));
    EXPECT_EQ(above_target_of(space, L"a.lnk"), uR"(\\?\)" + space.path(uR"(dir\x)"));
    create_shortcut(space.path(uR"(a.lnk\..\sub)"), space.path(u"b.lnk"));
    EXPECT_EQ(stored_in(space.path(u"b.lnk")), space.path(u"sub"))
        << "the dots of a target go by its text";
}

TEST(CreateShortcut, ByARelativeName)
{
    workspace space;
    space.make_directory(space.path(u"dir"));
    space.change_directory(space.path(u"dir"));
    create_shortcut(u"target", u"a.lnk");
    EXPECT_EQ(space.entries(space.path(u"dir")), names{u"a.lnk"});
    EXPECT_EQ(stored_in(space.path(uR"(dir\a.lnk)")), space.path(uR"(dir\target)"));
}

TEST(CreateShortcut, OverAFileThatIsThere)
{
    workspace space;
    space.make_directory(space.path(u"dir"));
    space.make_file(space.path(u"a.lnk"), std::string(3000, 'x'));
    create_shortcut(space.path(u"dir"), space.path(u"a.lnk"));
    EXPECT_EQ(stored_in(space.path(u"a.lnk")), space.path(u"dir"));
    create_shortcut(space.path(u"other"), space.path(u"a.lnk"));
    EXPECT_EQ(stored_in(space.path(u"a.lnk")), space.path(u"other"));
}

TEST(CreateShortcut, OfAnEmptyTargetLeadsToTheCurrentDirectory)
{
    workspace space;
    space.make_directory(space.path(u"dir"));
    space.change_directory(space.path(u"dir"));
    create_shortcut(std::u16string(), space.path(u"a.lnk"));
    EXPECT_EQ(stored_in(space.path(u"a.lnk")), space.path(u"dir"));
    create_shortcut(upath(), upath(space.path(u"b.lnk")));
    EXPECT_EQ(stored_in(space.path(u"b.lnk")), space.path(u"dir"));
}

// The test counts the whole text, and so the extension alone is a name.
TEST(CreateShortcut, CalledNothingButTheExtension)
{
    workspace space;
    space.make_directory(space.path(u"dir"));
    create_shortcut(space.path(u"dir"), space.path(u".lnk"));
    EXPECT_EQ(stored_in(space.path(u".lnk")), space.path(u"dir"));
    space.change_directory(space.path(u"dir"));
    create_shortcut(space.path(u"dir"), u".lnk");
    EXPECT_EQ(stored_in(space.path(uR"(dir\.lnk)")), space.path(u"dir"))
        << "it is absolute by then";
}

TEST(CreateShortcut, RefusesOtherNames)
{
    for (char16_t const *name :
         {u"x", u"x.LNK", u"x.Lnk", u"x.ln", u"x.lnkk", u"lnk", u"x.lnk.", u"x.lnk\\y", u"xlnk"}) {
        workspace space;
        space.make_directory(space.path(u"dir"));
        auto const make = [&] { create_shortcut(space.path(u"dir"), space.path(name)); };
        auto const failed = failure_of(make);
        std::string const shown = printable(name);
        // the system takes a full stop off that ends a name
        if (std::u16string_view(name) == u"x.lnk.") {
            EXPECT_EQ(failed, std::nullopt);
            continue;
        }
        EXPECT_EQ(failed, no_shortcut_name) << shown;
        EXPECT_EQ(space.entries(space.root()), names{u"dir"}) << shown;
    }
}

TEST(CreateShortcut, AnEmptyNameIsTheCurrentDirectory)
{
    workspace space;
    space.change_directory(space.root());
    EXPECT_FAILURE(create_shortcut(space.root(), std::u16string()), no_shortcut_name);
    EXPECT_FAILURE(create_shortcut(upath(), upath()), no_shortcut_name);
    space.make_directory(space.path(u"x.lnk"));
    space.change_directory(space.path(u"x.lnk"));
    EXPECT_FAILURE(create_shortcut(upath(), upath()), denied(space.path(u"x.lnk")))
        << "a directory may be called so, but is no file";
}

TEST(CreateShortcut, FailuresNameTheShortcut)
{
    workspace space;
    space.change_directory(space.root());
    space.make_directory(space.path(u"dir.lnk"));
    EXPECT_FAILURE(create_shortcut(u"x", u"no/a.lnk"), not_found(space.path(uR"(no\a.lnk)")))
        << "as it went to the shell";
    EXPECT_FAILURE(create_shortcut(u"x", u"dir.lnk"), denied(space.path(u"dir.lnk")));
    EXPECT_EQ(space.entries(space.root()), names{u"dir.lnk"});
}

} // namespace
} // namespace fl::filesystem
