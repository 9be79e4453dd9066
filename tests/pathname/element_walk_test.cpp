#include <fl/filesystem/pathname.hpp>

#include "support/names.hpp"

#include <algorithm>

namespace fl::filesystem::detail {
namespace {

using namespace test_support;
using elements = names;

/// What a walk from the front visits. Ends after as many steps as there could be
/// elements, so that a walk that makes no progress fails and doesn't hang.
elements walk_down(std::u16string const &text)
{
    std::uint64_t const root = get_root_path_length(text);
    std::uint64_t position = 0;
    std::u16string element = extract_first_element(text, root);
    elements visited;
    while (position != text.size() && visited.size() <= text.size() + 1) {
        visited.push_back(element);
        move_down(text, root, position, element);
    }
    return visited;
}

/// What a walk from the end visits, until the position stops changing.
elements walk_up(std::u16string const &text)
{
    std::uint64_t const root = get_root_path_length(text);
    std::uint64_t position = text.size();
    std::u16string element;
    elements visited;
    for (;;) {
        std::uint64_t const before = position;
        move_up(text, root, position, element);
        if (position == before)
            return visited;
        visited.push_back(element);
    }
}

struct walk_case
{
    char16_t const *text;
    elements down, up;
};

walk_case const walk_cases[] = {
    {u"", {}, {}},
    {u"foo", {u"foo"}, {u"foo"}},
    {uR"(foo\bar)", {u"foo", u"bar"}, {u"bar", u"foo"}},
    {u"\\", {u"\\"}, {u"\\"}},
    {uR"(\foo)", {u"\\", u"foo"}, {u"foo", u"\\"}},
    {u"C:", {u"C:"}, {u"C:"}},
    {u"C:foo", {u"C:", u"foo"}, {u"foo", u"C:"}},
    {uR"(C:\foo\bar)", {u"C:", u"\\", u"foo", u"bar"}, {u"bar", u"foo", u"\\", u"C:"}},
    {uR"(C:\)", {u"C:", u"\\"}, {u"\\", u"C:"}},
    {uR"(\\server)", {uR"(\\server)"}, {uR"(\\server)"}},
    {uR"(\\server\share\foo)",
     {uR"(\\server)", u"\\", u"share", u"foo"},
     {u"foo", u"share", u"\\", uR"(\\server)"}},
    {uR"(\\?\C:\foo)", {uR"(\\?\C:)", u"\\", u"foo"}, {u"foo", u"\\", uR"(\\?\C:)"}},
    {uR"(\\\share)", {uR"(\\)", u"\\", u"share"}, {u"share", u"\\", uR"(\\)"}},
    {uR"(\\.\COM1)", {u"\\", u"", u".", u"COM1"}, {u"COM1", u".", u"", u"\\"}},
    // a text that ends in a backslash behind its root can't be walked from its end
    {uR"(\\server\share\)", {uR"(\\server)", u"\\", u"share"}, {}},
    {u"C:a\\", {u"C:", u"a"}, {}},
};

TEST(ElementWalk, FrontToBack)
{
    for (auto const &row : walk_cases)
        EXPECT_EQ(walk_down(row.text), row.down) << printable(row.text);
}

TEST(ElementWalk, BackToFront)
{
    for (auto const &row : walk_cases)
        EXPECT_EQ(walk_up(row.text), row.up) << printable(row.text);
}

TEST(ExtractFirstElement, Table)
{
    struct
    {
        char16_t const *text;
        std::uint64_t root_length;
        char16_t const *expected;
    } constexpr cases[] = {
        {u"", 0, u""},
        {u"", 3, u""},
        {uR"(C:\foo)", 3, u"C:"},
        {uR"(\foo)", 1, u"\\"},
        {u"foo", 0, u"foo"},
        {uR"(foo\bar)", 0, u"foo"},
        {uR"(\foo)", 0, u""}, // told that there is no root, it finds none
        {uR"(\\s\x)", 4, uR"(\\s)"},
    };
    for (auto const &row : cases)
        EXPECT_EQ(extract_first_element(row.text, row.root_length), row.expected)
            << printable(row.text);
}

/// Where a walk stands.
struct step
{
    std::uint64_t position;
    std::u16string element;

    friend bool operator==(step const &, step const &) = default;
    friend std::ostream &operator<<(std::ostream &out, step const &seen)
    {
        return out << seen.position << " {" << printable(seen.element) << "}";
    }
};

step moved_down(std::u16string const &text, std::uint64_t root_length, step from)
{
    move_down(text, root_length, from.position, from.element);
    return from;
}

step moved_up(std::u16string const &text, std::uint64_t root_length, step from)
{
    move_up(text, root_length, from.position, from.element);
    return from;
}

TEST(MoveDown, AtTheEndClearsTheElementAndStays)
{
    std::u16string const text = uR"(C:\foo)";
    EXPECT_EQ(moved_down(text, 3, {6, u"left over"}), (step{6, u""}));
    EXPECT_EQ(moved_down(text, 3, {11, u"left over"}), (step{11, u""}))
        << "a position behind the end stays, too";
}

TEST(MoveDown, WithAnElementThatReachesBehindTheEndStopsThere)
{
    EXPECT_EQ(moved_down(uR"(C:\foo)", 3, {3, u"longer than the rest"}), (step{6, u""}));
}

TEST(MoveDown, EndsWithTheTextEvenIfItsRootIsSaidToBeLonger)
{
    EXPECT_EQ(moved_down(u"C:", 3, {0, u"C:"}), (step{2, u""}));
}

TEST(MoveDown, LooksForARootDirectoryOnlyBehindARootName)
{
    EXPECT_EQ(moved_down(uR"(\foo)", 1, {0, u""}), (step{0, u""})) << "no step from no element";
}

TEST(MoveDown, OnAnEmptyTextChangesNothing)
{
    EXPECT_EQ(moved_down(u"", 0, {7, u"kept"}), (step{7, u"kept"}));
}

TEST(MoveUp, AtTheFrontAndOnAnEmptyTextChangesNothing)
{
    EXPECT_EQ(moved_up(uR"(C:\foo)", 3, {0, u"kept"}), (step{0, u"kept"}));
    EXPECT_EQ(moved_up(u"", 0, {7, u"kept"}), (step{7, u"kept"}));
}

TEST(MoveUp, FromTheEndOfATextThatEndsInABackslashGivesAnEmptyElement)
{
    std::u16string const text = uR"(\\server\share\)";
    EXPECT_EQ(moved_up(text, 9, {text.size(), u"left over"}), (step{text.size(), u""}))
        << "no progress";
}

TEST(MoveUp, GoesByTheRootLengthThatItIsGiven)
{
    EXPECT_EQ(moved_up(u"ab", 1, {1, u""}), (step{0, u"\\"}))
        << "a root of one unit is a backslash";
}

TEST(MoveUp, NeverLeadsBelowTheFront)
{
    EXPECT_EQ(moved_up(uR"(a\b)", 0, {1, u""}), (step{0, u"a"}))
        << "from a position that no element begins at";
}

TEST(ElementWalk, OfAllShortTextsIsTheSameBothWays)
{
    for_all_texts(shape_alphabet, 6, [](std::u16string const &text) {
        std::uint64_t const root = get_root_path_length(text);
        bool const stuck = text.size() > root && text.back() == u'\\';
        if (stuck)
            return;
        elements down = walk_down(text);
        std::reverse(down.begin(), down.end());
        ASSERT_EQ(walk_up(text), down) << printable(text);
    });
}

TEST(ElementWalk, OfAllShortTextsEndsAndStaysInside)
{
    for_all_texts(shape_alphabet, 6, [](std::u16string const &text) {
        std::size_t const count = walk_down(text).size();
        ASSERT_LE(count, text.size() + 1) << printable(text);
        std::uint64_t const root = get_root_path_length(text);
        std::uint64_t position = text.size();
        std::u16string element;
        for (std::uint64_t before = position + 1; position < before;) {
            before = position;
            move_up(text, root, position, element);
            ASSERT_LE(position, before) << printable(text);
            ASSERT_LE(position + element.size(), text.size()) << printable(text);
        }
    });
}

} // namespace
} // namespace fl::filesystem::detail
