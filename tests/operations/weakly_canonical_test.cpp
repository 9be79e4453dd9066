#include <fl/filesystem/operations.hpp>

#include "support/in_workspace.hpp"

namespace fl::filesystem::tests {
namespace {

/// With the directory `d\e` and the file `d\f`.
class WeaklyCanonical : public in_workspace
{
protected:
    WeaklyCanonical() { make({uR"(d\e\)", uR"(d\f)"}); }
};

TEST_F(WeaklyCanonical, OfTheEmptyPathIsTheEmptyPath)
{
    EXPECT_EQ(weakly_canonical(u""), u"");
    upath const result = weakly_canonical(upath(u"", false));
    EXPECT_EQ(result.native(), u"");
    EXPECT_TRUE(result.form_flag());
}

TEST_F(WeaklyCanonical, OfWhatIsThereIsCanonical)
{
    for (std::u16string const &text :
         {at(uR"(d\f)"), at(uR"(d\e\)"), at(u"d/./e/../f"), at(uR"(no\..\d)"),
          std::u16string(uR"(d\f)"), std::u16string(u"."), uR"(\\?\)" + at(u"d"),
          work.root().substr(0, 3), work.root().substr(2)}) {
        EXPECT_EQ(weakly_canonical(text), canonical(text)) << printable(text);
        EXPECT_EQ(weakly_canonical(upath(text)), canonical(upath(text)));
        EXPECT_TRUE(weakly_canonical(upath(text, false)).form_flag());
    }
}

TEST_F(WeaklyCanonical, KeepsWhatIsMissingBehindWhatIsThere)
{
    row_of<std::u16string, char16_t const *> const cases[] = {
        {at(u"no"), u"no", "one name"},
        {at(uR"(no\x\y)"), uR"(no\x\y)", "more names"},
        {at(uR"(d\no)"), uR"(d\no)", "behind a directory"},
        {at(uR"(d\f\no)"), uR"(d\f\no)", "behind a file"},
        {at(u"d//no//x/"), uR"(d\no\x)", "single backslashes"},
        {at(uR"(d\e\..\no)"), uR"(d\no)", "dots in what is there"},
        {at(uR"(d\.\no)"), uR"(d\no)", "dots in what is there"},
        {at(uR"(d\no\..\x)"), uR"(d\x)", "a parent in what is missing"},
        {at(uR"(no\.\x)"), uR"(no\x)", "a dot in what is missing"},
        {at(uR"(d\no\x\..)"), uR"(d\no)", "a parent at the very end"},
        {at(uR"(d\no\.)"), uR"(d\no)", "a dot at the very end"},
        {at(uR"(d\e\no\..\..\..\no\x)"), uR"(no\x)", "up beyond what is there"},
        {at(uR"(no\. \x)"), uR"(no\.\x)", "nor is a dot with a blank, which it loses"},
        {at(uR"(d\no...\..x)"), uR"(d\no...\..x)", "names with full stops are no dots"},
        {at(uR"(D\no)"), uR"(D\no)", "letters stay as the caller wrote them"},
        {uR"(\\?\)" + at(uR"(d\no)"), uR"(d\no)", "without the prefix"},
        {uR"(d\no)", uR"(d\no)", "relative, but something is there"},
        {uR"(d\no\..\x)", uR"(d\x)", "the same with dots"},
        {uR"(.\no)", u"no", "the current directory is there"},
        {uR"(d\..\no)", u"no", "and so is the way back to it"},
        {at(uR"(d\no)").substr(2), uR"(d\no)", "below the root of the current drive"},
    };
    for (auto const &row : cases) {
        std::u16string const expected = at(row.expected);
        EXPECT_EQ(weakly_canonical(row.given), expected) << row.why;
        EXPECT_EQ(weakly_canonical(upath(row.given)).native(), expected) << row.why;
    }
    EXPECT_EQ(entries(), names{u"d"}) << "nothing is made";
}

TEST_F(WeaklyCanonical, ARelativePathOfWhichNothingIsThereStaysRelative)
{
    constexpr text_row<char16_t> cases[] = {
        {u"no", u"no", "a name"},
        {uR"(no\file)", uR"(no\file)", "names"},
        {u"no//file/", uR"(no\file)", "single backslashes"},
        {uR"(no\..\x)", u"x", "made normal"},
        {uR"(no\.)", u"no", "and in native form"},
        {uR"(no\x\..\..\..\no\y)", uR"(..\no\y)", "up beyond the current directory"},
    };
    expect_rows(cases, [](auto text) { return weakly_canonical(text); });
    expect_rows(cases, [](auto text) { return weakly_canonical(upath(text)).native(); });
}

TEST_F(WeaklyCanonical, ExamplesOfTheHeader)
{
    make_directory(u"existing");
    EXPECT_EQ(weakly_canonical(at(uR"(existing\missing\..\x)")), at(uR"(existing\x)"));
    EXPECT_EQ(weakly_canonical(uR"(missing\file)"), uR"(missing\file)");
}

// A text `C:a\b` goes below the current directory as a whole, but joined name by name its
// first name goes to the root.
TEST_F(WeaklyCanonical, ADriveWithoutABackslash)
{
    std::u16string const drive = work.root().substr(0, 2);
    EXPECT_EQ(weakly_canonical(drive + uR"(d\f)"), at(uR"(d\f)")) << "all of it is there";
    EXPECT_EQ(weakly_canonical(drive + uR"(d\no)"), at(uR"(d\no)"))
        << "no such name is in the root, so it goes below what the drive alone means";
    EXPECT_EQ(weakly_canonical(drive + u"no"), at(u"no"));
    EXPECT_EQ(weakly_canonical(drive + uR"(no\..\no)"), at(u"no"));
}

TEST_F(WeaklyCanonical, HasNoPrefixHoweverLong)
{
    for (std::size_t const size : {247U, 248U, 259U, 260U, 264U, 1000U}) {
        std::u16string const path = chain_of_size(at(u"d"), size);
        EXPECT_EQ(weakly_canonical(path), path) << size;
        EXPECT_EQ(weakly_canonical(path + uR"(\..\x)"),
                  path.substr(0, path.rfind(u'\\')) + uR"(\x)")
            << size;
    }
}

// Names that look like roots can't be joined to anything.
TEST_F(WeaklyCanonical, ARestThatCantBeJoined)
{
    auto const refused = invalid_argument("Absolute path not permitted");
    EXPECT_FAILURE(weakly_canonical(at(uR"(d\C:\x)")), refused);
    EXPECT_FAILURE(weakly_canonical(at(uR"(no\C:x)")), refused);
    EXPECT_FAILURE(weakly_canonical(upath(uR"(no\C:)")), refused);
}

TEST_F(WeaklyCanonical, OnAShareKeepsAllOfAMissingPath)
{
    NEEDS(work.has_share(), "there is no share");
    std::u16string const root = work.share_root();
    work.make_directory(root + uR"(\d)");
    EXPECT_EQ(weakly_canonical(root + uR"(\d)"), root + uR"(\d)");
    EXPECT_EQ(weakly_canonical(root + uR"(\d\no)"), root + uR"(\d\no)");
    EXPECT_EQ(weakly_canonical(root + uR"(\d\no\..\x)"), root + uR"(\d\x)");
    EXPECT_EQ(weakly_canonical(uR"(\\?\UNC)" + root.substr(1) + uR"(\no)"), root + uR"(\no)");
}

} // namespace
} // namespace fl::filesystem::tests
