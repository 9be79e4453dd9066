#include <fl/filesystem/operations.hpp>

#include "support/in_workspace.hpp"

#include <windows.h>

#include <algorithm>

namespace fl::filesystem::tests {
namespace {

/// The variable that tells where the drive of `path` stands, as a program sees it.
std::u16string drive_variable(std::u16string const &path)
{
    std::wstring const name = L"=" + wide(path.substr(0, 2));
    std::wstring value(1000, L'\0');
    DWORD const length = ::GetEnvironmentVariableW(name.c_str(), value.data(), 1000);
    return units(value.substr(0, length));
}

TEST_IN_WORKSPACE(ChangeCurrentPath, ChangesTheDirectoryAndTheVariableOfItsDrive)
{
    std::u16string const there = make_directory(u"dir");
    EXPECT_TRUE(change_current_path(there));
    EXPECT_EQ(get_current_path(), there);
    EXPECT_EQ(drive_variable(there), there);
    EXPECT_TRUE(change_current_path(upath(work.root())));
    EXPECT_EQ(get_current_path(), work.root());
    EXPECT_EQ(drive_variable(there), work.root());
}

TEST_IN_WORKSPACE(ChangeCurrentPath, ReachesADirectoryByAnyNotation)
{
    std::u16string const there = at(u"dir");
    make_directory(uR"(dir\sub)");
    std::u16string slashes = there;
    std::replace(slashes.begin(), slashes.end(), u'\\', u'/');
    for (std::u16string const &text :
         {there, there + u'\\', slashes + u"//", uR"(\\?\)" + there, there + uR"(\sub\..)",
          there + uR"(\.)", there.substr(0, 2) + u"dir", there.substr(2)}) {
        enter();
        EXPECT_TRUE(change_current_path(text)) << printable(text);
        EXPECT_EQ(get_current_path(), there) << printable(text);
    }
}

TEST_IN_WORKSPACE(ChangeCurrentPath, OfTheEmptyPathIsFalseAndChangesNothing)
{
    make_directory(u"dir");
    ASSERT_TRUE(change_current_path(at(u"dir")));
    for (std::u16string const &text : {std::u16string(), std::u16string(uR"(\\?\)")}) {
        EXPECT_FALSE(change_current_path(text));
        EXPECT_FALSE(change_current_path(upath(text)));
    }
    EXPECT_EQ(get_current_path(), at(u"dir"));
    EXPECT_EQ(drive_variable(work.root()), at(u"dir"));
}

TEST_IN_WORKSPACE(ChangeCurrentPath, FailuresNameTheCallersPathAndChangeNothing)
{
    failing_row<char16_t const *> const cases[] = {
        {u"missing", not_found(u"missing"), "nothing there"},
        {u"missing/dir", not_found(uR"(missing\dir)"), "nor the directory above, in native form"},
        {u"file", not_directory(u"file"), "a file"},
        {uR"(file\dir)", not_found(uR"(file\dir)"), "below a file"},
        {u"a*b", bad_name(), "no name"},
    };
    make_file(u"file", "content");
    ASSERT_TRUE(change_current_path(work.root()));
    for (auto const &row : cases) {
        EXPECT_FAILURE(change_current_path(row.given), row.expected) << row.why;
        EXPECT_FAILURE(change_current_path(upath(row.given)), row.expected) << row.why;
        EXPECT_EQ(get_current_path(), work.root()) << row.why;
        EXPECT_EQ(drive_variable(work.root()), work.root()) << row.why;
    }
    EXPECT_EQ(entries(), names{u"file"});
}

TEST_IN_WORKSPACE(ChangeCurrentPath, NamesAnAbsolutePathnameAsItIs)
{
    make_file(u"file");
    EXPECT_FAILURE(change_current_path(at(u"none")), not_found(at(u"none")));
    EXPECT_FAILURE(change_current_path(at(u"file")), not_directory(at(u"file")));
}

// The full pathname for the variable is made when the process stands in the new directory
// already.
TEST_IN_WORKSPACE(ChangeCurrentPath, MakesTheVariableOfARelativeTextFromTheNewDirectory)
{
    make_directory(u"dir");
    EXPECT_TRUE(change_current_path(u"dir"));
    EXPECT_EQ(get_current_path(), at(u"dir"));
    EXPECT_EQ(drive_variable(work.root()), at(uR"(dir\dir)"));
    EXPECT_TRUE(change_current_path(u".."));
    EXPECT_EQ(get_current_path(), work.root());
    std::u16string const above = work.root().substr(0, work.root().find_last_of(u'\\'));
    EXPECT_EQ(drive_variable(work.root()), above.size() == 2 ? above + u'\\' : above);
    EXPECT_TRUE(change_current_path(u"."));
    EXPECT_EQ(drive_variable(work.root()), work.root()) << "a full stop means the same again";
}

TEST_IN_WORKSPACE(ChangeCurrentPath, OfARootKeepsItsBackslash)
{
    std::u16string const drive = work.root().substr(0, 3);
    EXPECT_TRUE(change_current_path(drive));
    EXPECT_EQ(get_current_path(), drive);
    EXPECT_EQ(drive_variable(drive), drive);
}

} // namespace
} // namespace fl::filesystem::tests
