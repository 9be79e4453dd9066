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

TEST(MoveDown, AtTheEndClearsTheElementAndStays)
{
    std::u16string const text = uR"(C:\foo)";
    std::uint64_t position = text.size();
    std::u16string element = u"left over";
    move_down(text, 3, position, element);
    EXPECT_EQ(position, text.size());
    EXPECT_EQ(element, u"");
    position = text.size() + 5;
    element = u"left over";
    move_down(text, 3, position, element);
    EXPECT_EQ(position, text.size() + 5) << "a position behind the end stays, too";
    EXPECT_EQ(element, u"");
}

TEST(MoveDown, WithAnElementThatReachesBehindTheEndStopsThere)
{
    std::uint64_t position = 3;
    std::u16string element = u"longer than the rest";
    move_down(uR"(C:\foo)", 3, position, element);
    EXPECT_EQ(position, 6U);
    EXPECT_EQ(element, u"");
}

TEST(MoveDown, EndsWithTheTextEvenIfItsRootIsSaidToBeLonger)
{
    std::uint64_t position = 0;
    std::u16string element = u"C:";
    move_down(u"C:", 3, position, element);
    EXPECT_EQ(position, 2U);
    EXPECT_EQ(element, u"");
}

TEST(MoveDown, LooksForARootDirectoryOnlyBehindARootName)
{
    std::uint64_t position = 0;
    std::u16string element;
    move_down(uR"(\foo)", 1, position, element);
    EXPECT_EQ(position, 0U);
    EXPECT_EQ(element, u"") << "no step from no element";
}

TEST(MoveDown, OnAnEmptyTextChangesNothing)
{
    std::uint64_t position = 7;
    std::u16string element = u"kept";
    move_down(u"", 0, position, element);
    EXPECT_EQ(position, 7U);
    EXPECT_EQ(element, u"kept");
}

TEST(MoveUp, AtTheFrontAndOnAnEmptyTextChangesNothing)
{
    std::uint64_t position = 0;
    std::u16string element = u"kept";
    move_up(uR"(C:\foo)", 3, position, element);
    EXPECT_EQ(position, 0U);
    EXPECT_EQ(element, u"kept");
    position = 7;
    move_up(u"", 0, position, element);
    EXPECT_EQ(position, 7U);
    EXPECT_EQ(element, u"kept");
}

TEST(MoveUp, FromTheEndOfATextThatEndsInABackslashGivesAnEmptyElement)
{
    std::u16string const text = uR"(\\server\share\)";
    std::uint64_t position = text.size();
    std::u16string element = u"left over";
    move_up(text, 9, position, element);
    EXPECT_EQ(position, text.size()) << "no progress";
    EXPECT_EQ(element, u"");
}

TEST(MoveUp, GoesByTheRootLengthThatItIsGiven)
{
    std::uint64_t position = 1;
    std::u16string element;
    move_up(u"ab", 1, position, element);
    EXPECT_EQ(position, 0U);
    EXPECT_EQ(element, u"\\") << "a root of one unit is a backslash";
}

TEST(MoveUp, NeverLeadsBelowTheFront)
{
    // from a position that no element begins at
    std::uint64_t position = 1;
    std::u16string element;
    move_up(uR"(a\b)", 0, position, element);
    EXPECT_EQ(position, 0U);
    EXPECT_EQ(element, u"a");
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
