#include <fl/filesystem/path.hpp>

#include "support/names.hpp"

#include <algorithm>
#include <array>
#include <map>
#include <new>
#include <type_traits>
#include <unordered_set>

namespace fl::filesystem::tests {
namespace {

names elements_of(upath const &path)
{
    return {path.begin(), path.end()};
}

/// Where two empty paths in the same place differ, if they have different flags.
std::size_t offset_of_the_flag()
{
    alignas(upath) std::array<std::byte, sizeof(upath)> place{};
    auto const bytes_of = [&](bool flag) {
        place.fill(std::byte{0});
        auto *const path = new (place.data()) upath(u"", flag);
        auto const bytes = place;
        path->~basic_path();
        return bytes;
    };
    auto const on = bytes_of(true);
    auto const off = bytes_of(false);
    auto const differing = std::mismatch(on.begin(), on.end(), off.begin()).first;
    EXPECT_TRUE(std::equal(differing + 1, on.end(), off.begin() + (differing - on.begin()) + 1));
    return static_cast<std::size_t>(differing - on.begin());
}

TEST(Upath, LayoutIsTheTextAndThenTheFlag)
{
    struct expected_layout
    {
        std::u16string text;
        bool flag;
    };
    static_assert(sizeof(upath) == sizeof(expected_layout));
    static_assert(alignof(upath) == alignof(expected_layout));
    upath const path(u"text", false);
    EXPECT_EQ(static_cast<void const *>(&path.native()), &path);
    EXPECT_EQ(offset_of_the_flag(), sizeof(std::u16string));
}

TEST(Upath, IteratorHasFourMembersInTheirOrder)
{
    using iterator = upath::iterator;
    static_assert(sizeof(iterator) == 8 + sizeof(std::u16string) + sizeof(void *) + 8);
    iterator it;
    auto const offset = [&](void const *member) {
        return static_cast<std::byte const *>(member) - reinterpret_cast<std::byte const *>(&it);
    };
    EXPECT_EQ(offset(&it.root_length), 0);
    EXPECT_EQ(offset(&it.element), 8);
    EXPECT_EQ(offset(&it.owner), static_cast<std::ptrdiff_t>(8 + sizeof(std::u16string)));
    EXPECT_EQ(offset(&it.position),
              static_cast<std::ptrdiff_t>(8 + sizeof(std::u16string) + sizeof(void *)));
}

TEST(Upath, DefaultIsEmptyWithTheFlagTrue)
{
    upath const path;
    EXPECT_TRUE(path.empty());
    EXPECT_TRUE(path.form_flag());
    EXPECT_TRUE(path.begin() == path.end());
}

TEST(Upath, ConstructionMakesNativeForm)
{
    EXPECT_EQ(upath(u"foo\\\\bar//").native(), uR"(foo\bar)");
    EXPECT_EQ(upath(uR"(\\?\C:\foo)").native(), uR"(C:\foo)");
    EXPECT_EQ(upath(u"C:/dir//file/").native(), uR"(C:\dir\file)");
    EXPECT_EQ(upath(uR"(\\?\C:\dir)").native(), uR"(C:\dir)");
    EXPECT_EQ(upath(u"   ").native(), u"   ");
    EXPECT_EQ(upath(u"").native(), u"");
    EXPECT_TRUE(upath(u"foo").form_flag());
    EXPECT_FALSE(upath(u"foo", false).form_flag());
    EXPECT_EQ(upath(u"a//b", false).native(), uR"(a\b)");
}

TEST(Upath, ConvertsFromTextButNotFromALiteral)
{
    static_assert(std::is_convertible_v<std::u16string, upath>);
    static_assert(!std::is_convertible_v<char16_t const *, upath>);
    static_assert(!std::is_convertible_v<upath, std::u16string>);
    static_assert(std::is_nothrow_move_constructible_v<upath>);
}

TEST(Upath, CopyKeepsTextAndFlag)
{
    upath original(u"a.b ", false);
    original.replace_extension(u"c "); // not in native form any more
    upath const copy = original;
    EXPECT_EQ(copy.native(), u"a.c ") << "not brought to native form again";
    EXPECT_FALSE(copy.form_flag());
    upath assigned(u"x");
    assigned = original;
    EXPECT_EQ(assigned.native(), u"a.c ");
    EXPECT_FALSE(assigned.form_flag());
}

TEST(Upath, AssignmentOfATextKeepsTheFlag)
{
    upath path(u"old", false);
    path = std::u16string(u"new//name/");
    EXPECT_EQ(path.native(), uR"(new\name)");
    EXPECT_FALSE(path.form_flag());
    path = std::u16string();
    EXPECT_TRUE(path.empty());
    EXPECT_FALSE(path.form_flag());
}

TEST(Upath, JoiningAnEmptySideChangesNothing)
{
    upath path(u"foo");
    path /= upath();
    EXPECT_EQ(path.native(), u"foo");
    path /= std::u16string();
    EXPECT_EQ(path.native(), u"foo");
    EXPECT_EQ((path / upath()).native(), u"foo");
    EXPECT_EQ((path / u"").native(), u"foo");
}

TEST(Upath, Joining)
{
    EXPECT_EQ((upath(u"foo") / u"bar/").native(), uR"(foo\bar)");
    EXPECT_EQ((upath(u"foo") / upath(u"bar")).native(), uR"(foo\bar)");
    EXPECT_EQ((upath(u"C:") / u"foo").native(), uR"(C:\foo)");
    EXPECT_EQ((upath() / upath(uR"(C:\bar)")).native(), uR"(C:\bar)");
    upath empty;
    empty /= upath(uR"(C:\bar)");
    EXPECT_EQ(empty.native(), uR"(C:\bar)");
    upath const joined = upath(u"a", false) / upath(u"b", true);
    EXPECT_FALSE(joined.form_flag()) << "the flag of the left side";
    EXPECT_TRUE((upath(u"a") / upath(u"b", false)).form_flag());
}

TEST(Upath, RefusedJoinLeavesTheLeftSide)
{
    upath path(u"foo");
    EXPECT_EQ(failure_of([&] { path /= upath(uR"(C:\bar)"); }),
              invalid_argument("Absolute path not permitted"));
    EXPECT_EQ(path.native(), u"foo");
    EXPECT_EQ(failure_of([&] { path /= std::u16string(uR"(\bar)"); }),
              invalid_argument("Path name can not start with \\"));
    EXPECT_EQ(path.native(), u"foo");
    EXPECT_FAILURE(path / upath(uR"(C:\bar)"), invalid_argument("Absolute path not permitted"));
}

TEST(Upath, WalksItsElements)
{
    using elements = names;
    EXPECT_EQ(elements_of(upath(uR"(C:\foo\bar)")), (elements{u"C:", u"\\", u"foo", u"bar"}));
    EXPECT_EQ(elements_of(upath()), elements{});
    EXPECT_EQ(elements_of(upath(uR"(\\server\share\)")),
              (elements{uR"(\\server)", u"\\", u"share"}));
}

TEST(Upath, IteratorStepsBothWays)
{
    upath const path(uR"(C:\foo)");
    auto it = path.begin();
    EXPECT_EQ(*it++, u"C:");
    EXPECT_EQ(*it, u"\\");
    EXPECT_EQ(*++it, u"foo");
    EXPECT_EQ(it->size(), 3U);
    ++it;
    EXPECT_TRUE(it == path.end());
    EXPECT_EQ(*it, u"");
    EXPECT_EQ(*--it, u"foo");
    EXPECT_EQ(*it--, u"foo");
    EXPECT_EQ(*it, u"\\");
    --it;
    EXPECT_EQ(*it, u"C:");
    EXPECT_TRUE(it == path.begin());
    EXPECT_EQ(it.root_length, 3U);
    EXPECT_EQ(it.owner, &path);
}

TEST(Upath, IteratorsAreEqualByOwnerAndPosition)
{
    upath const path(uR"(C:\foo)");
    upath const twin(uR"(C:\foo)");
    EXPECT_TRUE(path.begin() != twin.begin()) << "another owner";
    EXPECT_TRUE(path.begin() != path.end());
    auto changed = path.begin();
    changed.element = u"other";
    changed.root_length = 77;
    EXPECT_TRUE(changed == path.begin()) << "the element and the root length don't count";
}

TEST(Upath, QueriesAreThoseOfTheText)
{
    upath const path(uR"(C:\dir\name.tar.gz)");
    EXPECT_EQ(path.root_name(), u"C:");
    EXPECT_EQ(path.root_directory(), u"\\");
    EXPECT_EQ(path.root_path(), uR"(C:\)");
    EXPECT_EQ(path.relative_path(), uR"(dir\name.tar.gz)");
    EXPECT_EQ(path.parent_path(), uR"(C:\dir)");
    EXPECT_EQ(path.filename(), u"name.tar.gz");
    EXPECT_EQ(path.stem(), u"name.tar");
    EXPECT_EQ(path.extension(), u"gz");
    EXPECT_EQ(path.generic_u16string(), u"C:/dir/name.tar.gz");
    EXPECT_EQ(path.u16string(), path.native());
    EXPECT_EQ(path.wstring(), LR"(C:\dir\name.tar.gz)");
    EXPECT_TRUE(path.is_absolute());
    EXPECT_FALSE(path.is_relative());
    EXPECT_TRUE(upath(u"C:x").is_relative());
}

// Each way in which a member differs from `std::filesystem::path`'s of that name.
TEST(Upath, DiffersFromTheStandardAsItSays)
{
    EXPECT_EQ(upath(uR"(C:\dir\x)").remove_filename().native(), uR"(C:\dir)");
    EXPECT_EQ(upath(uR"(C:\)").parent_path(), u"C:");
    EXPECT_EQ(upath(u"C:").parent_path(), u"");
    EXPECT_EQ(upath(uR"(C:\)").filename(), u"\\");
    EXPECT_EQ(upath(u"C:").filename(), u"C:");
    EXPECT_EQ(upath(u".bashrc").stem(), u"");
    EXPECT_EQ(upath(u".bashrc").extension(), u"bashrc");
    EXPECT_EQ(upath(u"a.b").replace_extension(u"").native(), u"a.b");
    EXPECT_FALSE(upath(uR"(\\.\COM1)").is_absolute());
    EXPECT_FALSE(upath(u"a") == upath(u"A"));
    EXPECT_EQ(upath(uR"(C:\a \b)").parent_path(), u"C:\\a ") << "kept as it is, blank included";
}

TEST(Upath, ChangesInPlace)
{
    upath path(uR"(C:\a\b.txt)", false);
    EXPECT_EQ(&path.replace_extension(u".doc"), &path);
    EXPECT_EQ(path.native(), uR"(C:\a\b.doc)");
    EXPECT_FAILURE(path.replace_extension(u"x/y"), invalid_argument("Invalid extension"));
    EXPECT_EQ(&path.remove_filename(), &path);
    EXPECT_EQ(path.native(), uR"(C:\a)");
    upath other(u"other");
    swap(path, other);
    EXPECT_EQ(path.native(), u"other");
    EXPECT_TRUE(path.form_flag());
    EXPECT_FALSE(other.form_flag());
    other.clear();
    EXPECT_TRUE(other.empty());
    EXPECT_FALSE(other.form_flag());
}

TEST(Upath, ComparesTheExactText)
{
    EXPECT_TRUE(upath(uR"(C:\foo)") == upath(u"C:/foo/"));
    EXPECT_TRUE(upath(uR"(C:\foo)") == upath(u"C:/foo", false)) << "the flag doesn't count";
    EXPECT_TRUE(upath(uR"(C:\foo)") != upath(uR"(C:\FOO)"));
    EXPECT_TRUE(upath(u"A") < upath(u"a"));
    EXPECT_FALSE(upath(u"a") < upath(u"a"));
    std::map<upath, int> ordered{{upath(u"b"), 2}, {upath(u"a"), 1}};
    EXPECT_EQ(ordered.begin()->second, 1);
}

TEST(UpathHash, KnownValues)
{
    std::hash<upath> const hash;
    EXPECT_EQ(hash(upath()), 0xCBF29CE484222325U);
    EXPECT_EQ(hash(upath(uR"(C:\)")), 0x98D34E9FFBF1BC90U);
    EXPECT_EQ(hash(upath(u"\u4E2D\u0161")), 0x473BE88F0A46AB88U) << "the low byte comes first";
}

TEST(UpathHash, GoesByTheTextAlone)
{
    std::hash<upath> const hash;
    EXPECT_EQ(hash(upath(uR"(C:\foo)")), hash(upath(u"C:/foo/")));
    EXPECT_EQ(hash(upath(uR"(C:\foo)")), hash(upath(uR"(C:\foo)", false)));
    EXPECT_NE(hash(upath(uR"(C:\foo)")), hash(upath(uR"(C:\FOO)")));
    EXPECT_NE(hash(upath(u"\u0161")), hash(upath(u"a"))) << "both bytes of a unit count";
    std::unordered_set<upath> const set{upath(u"a"), upath(u"a/"), upath(u"A")};
    EXPECT_EQ(set.size(), 2U);
}

TEST(UpathHash, IsTriviallyCopyable)
{
    EXPECT_TRUE(std::is_trivially_copy_assignable_v<std::hash<upath>>);
    EXPECT_TRUE(std::is_trivially_move_assignable_v<std::hash<upath>>);
}

} // namespace
} // namespace fl::filesystem::tests
