#include <fl/filesystem/pathname.hpp>

#include "support/names.hpp"

namespace fl::filesystem::detail {
namespace {

using namespace test_support;

struct decomposition_case
{
    char16_t const *text;
    char16_t const *root_name, *root_directory, *root_path, *relative_path;
    char16_t const *parent_path, *filename, *stem, *extension;
};

constexpr decomposition_case decomposition_cases[] = {
    {u"", u"", u"", u"", u"", u"", u"", u"", u""},
    {u"foo", u"", u"", u"", u"foo", u"", u"foo", u"foo", u""},
    {uR"(foo\bar.txt)", u"", u"", u"", uR"(foo\bar.txt)", u"foo", u"bar.txt", u"bar", u"txt"},
    {u".bashrc", u"", u"", u"", u".bashrc", u"", u".bashrc", u"", u"bashrc"},
    {u"foo.", u"", u"", u"", u"foo.", u"", u"foo.", u"foo", u""},
    {u"a.b.c", u"", u"", u"", u"a.b.c", u"", u"a.b.c", u"a.b", u"c"},
    {u".", u"", u"", u"", u".", u"", u".", u".", u""},
    {u"..", u"", u"", u"", u"..", u"", u"..", u"..", u""},
    {u"foo\\", u"", u"", u"", u"foo\\", u"foo", u"", u"", u""},
    {u"\\", u"", u"\\", u"\\", u"", u"", u"\\", u"\\", u""},
    {uR"(\foo)", u"", u"\\", u"\\", u"foo", u"\\", u"foo", u"foo", u""},
    {u"C:", u"C:", u"", u"C:", u"", u"", u"C:", u"C:", u""},
    {u"C:foo", u"C:", u"", u"C:", u"foo", u"", u"foo", u"foo", u""},
    {uR"(C:\)", u"C:", u"\\", uR"(C:\)", u"", u"C:", u"\\", u"\\", u""},
    {uR"(C:\foo)", u"C:", u"\\", uR"(C:\)", u"foo", uR"(C:\)", u"foo", u"foo", u""},
    {uR"(C:\foo\bar.tar.gz)", u"C:", u"\\", uR"(C:\)", uR"(foo\bar.tar.gz)", uR"(C:\foo)",
     u"bar.tar.gz", u"bar.tar", u"gz"},
    {uR"(\\)", u"\\", u"\\", uR"(\\)", u"", u"\\", u"\\", u"\\", u""},
    {uR"(\\server)", uR"(\\server)", u"", uR"(\\server)", u"", u"", uR"(\\server)", uR"(\\server)",
     u""},
    {uR"(\\server\)", uR"(\\server)", u"\\", uR"(\\server\)", u"", uR"(\\server)", u"\\", u"\\",
     u""},
    {uR"(\\server\share)", uR"(\\server)", u"\\", uR"(\\server\)", u"share", uR"(\\server\)",
     u"share", u"share", u""},
    {uR"(\\server\share\)", uR"(\\server)", u"\\", uR"(\\server\)", u"share\\",
     uR"(\\server\share)", u"", u"", u""},
    {uR"(\\server\share\foo)", uR"(\\server)", u"\\", uR"(\\server\)", uR"(share\foo)",
     uR"(\\server\share)", u"foo", u"foo", u""},
    {uR"(\\?\)", uR"(\\?)", u"\\", uR"(\\?\)", u"", uR"(\\?)", u"\\", u"\\", u""},
    {uR"(\\?\C:\foo)", uR"(\\?\C:)", u"\\", uR"(\\?\C:\)", u"foo", uR"(\\?\C:\)", u"foo", u"foo",
     u""},
    {uR"(\\?\C:foo)", uR"(\\?\C:foo)", u"", uR"(\\?\C:foo)", u"", u"", uR"(\\?\C:foo)",
     uR"(\\?\C:foo)", u""},
    {uR"(\\?\UNC\server\share\foo)", uR"(\\?\UNC\server)", u"\\", uR"(\\?\UNC\server\)",
     uR"(share\foo)", uR"(\\?\UNC\server\share)", u"foo", u"foo", u""},
    {uR"(\\.\COM1)", u"", u"\\", u"\\", uR"(\.\COM1)", uR"(\\.)", u"COM1", u"COM1", u""},
    {u"a/b", u"", u"", u"", u"a/b", u"", u"a/b", u"a/b", u""},
    {uR"(C:\foo\bar)", u"C:", u"\\", uR"(C:\)", uR"(foo\bar)", uR"(C:\foo)", u"bar", u"bar", u""},
    {uR"(C:\foo\bar.txt)", u"C:", u"\\", uR"(C:\)", uR"(foo\bar.txt)", uR"(C:\foo)", u"bar.txt",
     u"bar", u"txt"},
    {uR"(C:\dir\)", u"C:", u"\\", uR"(C:\)", u"dir\\", uR"(C:\dir)", u"", u"", u""},
};

TEST(Decomposition, Table)
{
    for (auto const &row : decomposition_cases) {
        std::u16string const text = row.text;
        std::string const shown = printable(text);
        EXPECT_EQ(extract_root_name(text), row.root_name) << shown;
        EXPECT_EQ(extract_root_directory(text), row.root_directory) << shown;
        EXPECT_EQ(extract_root_path(text), row.root_path) << shown;
        EXPECT_EQ(extract_relative_path(text), row.relative_path) << shown;
        EXPECT_EQ(extract_parent_path(text), row.parent_path) << shown;
        EXPECT_EQ(extract_filename(text), row.filename) << shown;
        EXPECT_EQ((path_traits<wchar_t, wchar_t>::extract_filename(wide(text))), wide(row.filename))
            << shown;
        EXPECT_EQ(extract_stem(text), row.stem) << shown;
        EXPECT_EQ(extract_extension(text), row.extension) << shown;
    }
}

struct elements_case
{
    char16_t const *text, *parent_path, *filename, *stem, *extension;
};

// Where the one-pass function gives another answer than the single ones.
constexpr elements_case differing_elements[] = {
    {u"foo.", u"", u"foo.", u"foo.", u""},
    {u"C:foo", u"C:", u"foo", u"foo", u""},
    {uR"(\\server\share)", u"", uR"(\\server\share)", uR"(\\server\share)", u""},
    {uR"(\\server\share\)", uR"(\\server\share)", u"\\", u"\\", u""},
    {uR"(\\server\share\foo)", uR"(\\server\share\)", u"foo", u"foo", u""},
    {uR"(\\?\C:foo)", uR"(\\?)", u"C:foo", u"C:foo", u""},
    {uR"(\\?\UNC\server\share\foo)", uR"(\\?\UNC\server\share\)", u"foo", u"foo", u""},
};

elements_case expected_elements(decomposition_case const &row)
{
    for (auto const &differing : differing_elements)
        if (std::u16string_view(differing.text) == row.text)
            return differing;
    return {row.text, row.parent_path, row.filename, row.stem, row.extension};
}

void expect_elements(elements_case const &expected)
{
    pathname_element_context<char16_t> const elements = extract_pathname_elements(expected.text);
    std::string const shown = printable(expected.text);
    EXPECT_EQ(elements.parent_path, expected.parent_path) << shown;
    EXPECT_EQ(elements.filename, expected.filename) << shown;
    EXPECT_EQ(elements.stem, expected.stem) << shown;
    EXPECT_EQ(elements.extension, expected.extension) << shown;
}

TEST(ExtractPathnameElements, AgreesWithTheSingleFunctionsExceptWhereItIsMeantNotTo)
{
    for (auto const &row : decomposition_cases)
        expect_elements(expected_elements(row));
}

TEST(ExtractPathnameElements, Table)
{
    constexpr elements_case cases[] = {
        {uR"(C:\foo\bar.txt)", uR"(C:\foo)", u"bar.txt", u"bar", u"txt"},
        {uR"(C:\a.b\..)", uR"(C:\a.b)", u"..", u"..", u""},
        {uR"(C:\.hidden.)", uR"(C:\)", u".hidden.", u".hidden.", u""},
        {uR"(\\server\share\a.b)", uR"(\\server\share\)", u"a.b", u"a", u"b"},
        {uR"(C:\dir.d\)", uR"(C:\dir.d)", u"", u"", u""},
    };
    for (auto const &row : cases)
        expect_elements(row);
}

TEST(GetRootPathLength, ExamplesOfTheHeader)
{
    struct
    {
        char16_t const *text;
        std::uint64_t length;
    } constexpr cases[] = {
        {uR"(C:\foo)", 3},     {u"C:foo", 2},       {uR"(\foo)", 1}, {uR"(\\server\share\foo)", 9},
        {uR"(\\?\C:\foo)", 7}, {uR"(\\.\COM1)", 1}, {u"foo", 0},     {uR"(\\?\C:foo\bar)", 10},
    };
    for (auto const &row : cases)
        EXPECT_EQ(get_root_path_length(row.text), row.length) << printable(row.text);
}

TEST(Decomposition, OfAllShortTextsPutsTheTextTogetherAgain)
{
    for_all_texts(shape_alphabet, 6, [](std::u16string const &text) {
        std::u16string const root = extract_root_path(text);
        ASSERT_EQ(root.size(), get_root_path_length(text)) << printable(text);
        ASSERT_EQ(root + extract_relative_path(text), text) << printable(text);
        std::u16string const filename = extract_filename(text);
        ASSERT_LE(filename.size(), text.size()) << printable(text);
        ASSERT_EQ(text.substr(text.size() - filename.size()), filename) << printable(text);
        std::u16string const parent = extract_parent_path(text);
        ASSERT_EQ(text.substr(0, parent.size()), parent) << printable(text);
        ASSERT_EQ((path_traits<wchar_t, wchar_t>::extract_filename(wide(text))), wide(filename))
            << printable(text);
    });
}

} // namespace
} // namespace fl::filesystem::detail
