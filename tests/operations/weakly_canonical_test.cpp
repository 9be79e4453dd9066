#include <fl/filesystem/operations.hpp>

#include "support/names.hpp"
#include "support/workspace.hpp"

namespace fl::filesystem {
namespace {

using namespace test_support;

TEST(WeaklyCanonical, OfTheEmptyPathIsTheEmptyPath)
{
    EXPECT_EQ(weakly_canonical(u""), u"");
    upath const result = weakly_canonical(upath(u"", false));
    EXPECT_EQ(result.native(), u"");
    EXPECT_TRUE(result.form_flag());
}

/// `d\e` and the file `d\f` below the workspace, where the process stands.
void add_files(workspace &work)
{
    work.make_directory(work.path(uR"(d\e)"));
    work.make_file(work.path(uR"(d\f)"));
    work.change_directory(work.root());
}

TEST(WeaklyCanonical, OfWhatIsThereIsCanonical)
{
    workspace work;
    add_files(work);
    for (std::u16string const &text :
         {work.path(uR"(d\f)"), work.path(uR"(d\e\)"), work.path(u"d/./e/../f"),
          work.path(uR"(no\..\d)"), std::u16string(uR"(d\f)"), std::u16string(u"."),
          uR"(\\?\)" + work.path(u"d"), work.root().substr(0, 3), work.root().substr(2)}) {
        EXPECT_EQ(weakly_canonical(text), canonical(text)) << printable(text);
        EXPECT_EQ(weakly_canonical(upath(text)), canonical(upath(text)));
        EXPECT_TRUE(weakly_canonical(upath(text, false)).form_flag());
    }
}

TEST(WeaklyCanonical, KeepsWhatIsMissingBehindWhatIsThere)
{
    workspace work;
    add_files(work);
    struct
    {
        std::u16string text;
        char16_t const *expected; ///< below the workspace
        char const *why;
    } const cases[] = {
        {work.path(u"no"), u"no", "one name"},
        {work.path(uR"(no\x\y)"), uR"(no\x\y)", "more names"},
        {work.path(uR"(d\no)"), uR"(d\no)", "behind a directory"},
        {work.path(uR"(d\f\no)"), uR"(d\f\no)", "behind a file"},
        {work.path(u"d//no//x/"), uR"(d\no\x)", "single backslashes"},
        {work.path(uR"(d\e\..\no)"), uR"(d\no)", "dots in what is there"},
        {work.path(uR"(d\.\no)"), uR"(d\no)", "dots in what is there"},
        {work.path(uR"(d\no\..\x)"), uR"(d\x)", "a parent in what is missing"},
        {work.path(uR"(no\.\x)"), uR"(no\x)", "a dot in what is missing"},
        {work.path(uR"(d\no\x\..)"), uR"(d\no)", "a parent at the very end"},
        {work.path(uR"(d\no\.)"), uR"(d\no)", "a dot at the very end"},
        {work.path(uR"(d\e\no\..\..\..\no\x)"), uR"(no\x)", "up beyond what is there"},
        {work.path(uR"(no\. \x)"), uR"(no\.\x)", "nor is a dot with a blank, which it loses"},
        {work.path(uR"(d\no...\..x)"), uR"(d\no...\..x)", "names with full stops are no dots"},
        {work.path(uR"(D\no)"), uR"(D\no)", "letters stay as the caller wrote them"},
        {uR"(\\?\)" + work.path(uR"(d\no)"), uR"(d\no)", "without the prefix"},
        {uR"(d\no)", uR"(d\no)", "relative, but something is there"},
        {uR"(d\no\..\x)", uR"(d\x)", "the same with dots"},
        {uR"(.\no)", u"no", "the current directory is there"},
        {uR"(d\..\no)", u"no", "and so is the way back to it"},
        {work.path(uR"(d\no)").substr(2), uR"(d\no)", "below the root of the current drive"},
    };
    for (auto const &row : cases) {
        std::u16string const expected = work.path(row.expected);
        EXPECT_EQ(weakly_canonical(row.text), expected) << row.why;
        EXPECT_EQ(weakly_canonical(upath(row.text)).native(), expected) << row.why;
    }
    EXPECT_EQ(work.entries(work.root()), names{u"d"}) << "nothing is made";
}

TEST(WeaklyCanonical, ARelativePathOfWhichNothingIsThereStaysRelative)
{
    workspace work;
    add_files(work);
    struct
    {
        char16_t const *text, *expected;
        char const *why;
    } constexpr cases[] = {
        {u"no", u"no", "a name"},
        {uR"(no\file)", uR"(no\file)", "names"},
        {u"no//file/", uR"(no\file)", "single backslashes"},
        {uR"(no\..\x)", u"x", "made normal"},
        {uR"(no\.)", u"no", "and in native form"},
        {uR"(no\x\..\..\..\no\y)", uR"(..\no\y)", "up beyond the current directory"},
    };
    for (auto const &row : cases) {
        EXPECT_EQ(weakly_canonical(row.text), row.expected) << row.why;
        EXPECT_EQ(weakly_canonical(upath(row.text)).native(), row.expected) << row.why;
    }
}

TEST(WeaklyCanonical, ExamplesOfTheHeader)
{
    workspace work;
    work.make_directory(work.path(u"existing"));
    work.change_directory(work.root());
    EXPECT_EQ(weakly_canonical(work.path(uR"(existing\missing\..\x)")),
              work.path(uR"(existing\x)"));
    EXPECT_EQ(weakly_canonical(uR"(missing\file)"), uR"(missing\file)");
}

// A text `C:a\b` goes below the current directory as a whole, but joined name by name its
// first name goes to the root.
TEST(WeaklyCanonical, ADriveWithoutABackslash)
{
    workspace work;
    add_files(work);
    std::u16string const drive = work.root().substr(0, 2);
    EXPECT_EQ(weakly_canonical(drive + uR"(d\f)"), work.path(uR"(d\f)")) << "all of it is there";
    EXPECT_EQ(weakly_canonical(drive + uR"(d\no)"), work.path(uR"(d\no)"))
        << "no such name is in the root, so it goes below what the drive alone means";
    EXPECT_EQ(weakly_canonical(drive + u"no"), work.path(u"no"));
    EXPECT_EQ(weakly_canonical(drive + uR"(no\..\no)"), work.path(u"no"));
}

TEST(WeaklyCanonical, HasNoPrefixHoweverLong)
{
    workspace work;
    add_files(work);
    for (std::size_t const size : {247U, 248U, 259U, 260U, 264U, 1000U}) {
        std::u16string path = work.path(u"d");
        while (size - path.size() > 101)
            path += u'\\' + std::u16string(49, u'n');
        path += u'\\' + std::u16string(size - path.size() - 1, u'n');
        EXPECT_EQ(weakly_canonical(path), path) << size;
        EXPECT_EQ(weakly_canonical(path + uR"(\..\x)"),
                  path.substr(0, path.rfind(u'\\')) + uR"(\x)")
            << size;
    }
}

// Names that look like roots can't be joined to anything.
TEST(WeaklyCanonical, ARestThatCantBeJoined)
{
    workspace work;
    add_files(work);
    auto const refused = invalid_argument("Absolute path not permitted");
    EXPECT_FAILURE(weakly_canonical(work.path(uR"(d\C:\x)")), refused);
    EXPECT_FAILURE(weakly_canonical(work.path(uR"(no\C:x)")), refused);
    EXPECT_FAILURE(weakly_canonical(upath(uR"(no\C:)")), refused);
}

TEST(WeaklyCanonical, OnAShareKeepsAllOfAMissingPath)
{
    workspace work;
    NEEDS(work.has_share(), "there is no share");
    std::u16string const root = work.share_root();
    work.make_directory(root + uR"(\d)");
    EXPECT_EQ(weakly_canonical(root + uR"(\d)"), root + uR"(\d)");
    EXPECT_EQ(weakly_canonical(root + uR"(\d\no)"), root + uR"(\d\no)");
    EXPECT_EQ(weakly_canonical(root + uR"(\d\no\..\x)"), root + uR"(\d\x)");
    EXPECT_EQ(weakly_canonical(uR"(\\?\UNC)" + root.substr(1) + uR"(\no)"), root + uR"(\no)");
}

} // namespace
} // namespace fl::filesystem
