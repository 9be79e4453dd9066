#include <fl/filesystem/pathname.hpp>

#include "support/in_workspace.hpp"

namespace fl::filesystem::detail {
namespace {

using namespace test_support;

TEST_IN_WORKSPACE(MakeExpandedPath, ReturnsWhatDependsOnNothingUnchanged)
{
    for (char16_t const *text :
         {u"", u"foo", u"..\\foo", uR"(C:\foo)", uR"(C:\a\..\b)", u"C:\\foo\\", uR"(\\server)",
          uR"(\\server\share)", uR"(\\?\C:\foo)", uR"(\\?\C:foo)", uR"(\\.\COM1)", u"/foo"}) {
        EXPECT_EQ(make_expanded_path(text, true), text) << printable(text);
        EXPECT_EQ(make_expanded_path(text, false), text) << "the flag has no effect";
    }
}

TEST_IN_WORKSPACE(MakeExpandedPath, TakesTheCurrentDirectoryOfADrive)
{
    std::u16string const drive = work.root().substr(0, 2);
    // Wine ends the directory in a backslash, Windows doesn't
    std::u16string const ending = runs_under_wine() ? u"\\" : u"";
    EXPECT_EQ(make_expanded_path(drive, true), work.root() + ending);
    EXPECT_EQ(make_expanded_path(drive + u"foo", true), at(u"foo"));
    EXPECT_EQ(make_expanded_path(drive + uR"(..\foo)", false), at(uR"(..\foo)"))
        << "only the drive is expanded";
}

TEST_IN_WORKSPACE(MakeExpandedPath, TakesTheRootOfADriveWithItsBackslash)
{
    std::u16string const root = work.root().substr(0, 3);
    work.change_directory(root);
    std::u16string const drive = root.substr(0, 2);
    EXPECT_EQ(make_expanded_path(drive, true), root);
    EXPECT_EQ(make_expanded_path(drive + u"foo", true), root + u"foo") << "no second backslash";
}

TEST_IN_WORKSPACE(MakeExpandedPath, PutsARootedPathnameOnTheCurrentDrive)
{
    std::u16string const drive = work.root().substr(0, 2);
    EXPECT_EQ(make_expanded_path(uR"(\foo)", true), drive + uR"(\foo)");
    EXPECT_EQ(make_expanded_path(u"\\", true), drive + u"\\");
    EXPECT_EQ(make_expanded_path(uR"(\a\..\b)", true), drive + uR"(\b)")
        << "the whole text goes through the system";
}

TEST_IN_WORKSPACE(MakeExpandedPath, HasNoLimitOfItsOwn)
{
    std::u16string const drive = work.root().substr(0, 2);
    for (std::size_t const size : {1021U, 1022U, 1023U, 1024U, 1025U, 20000U}) {
        std::u16string const text = u'\\' + std::u16string(size - 1, u'a');
        EXPECT_EQ(make_expanded_path(text, true), drive + text) << size;
    }
}

} // namespace
} // namespace fl::filesystem::detail
