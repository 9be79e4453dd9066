// The code and the tables of docs/pathnames.md.

#include "guide/page.hpp"

#include "support/workspace.hpp"

#include <regex>

namespace {

using namespace guide;
using test_support::workspace;

char const page[] = "docs/pathnames.md";

TEST(PathnamesGuide, Shapes)
{
    for (lines const &row :
         rows_of(page, "| pathname | root name | root directory | relative path | absolute |")) {
        std::u16string const text = u16(row[0]);
        EXPECT_EQ(fs::to_utf8(fs::detail::extract_root_name(text)), row[1]) << row[0];
        EXPECT_EQ(fs::to_utf8(fs::detail::extract_root_directory(text)), row[2]) << row[0];
        EXPECT_EQ(fs::to_utf8(fs::detail::extract_relative_path(text)), row[3]) << row[0];
        EXPECT_EQ(fs::upath(text).is_absolute() ? "yes" : "no", row[4]) << row[0];
    }
}

/// What the drawing calls a part of a pathname, as the library tells it.
std::string part_of(fs::upath const &path, std::string const &name)
{
    std::map<std::string, std::u16string> const parts = {
        {"root name", path.root_name()},         {"root directory", path.root_directory()},
        {"relative path", path.relative_path()}, {"parent path", path.parent_path()},
        {"filename", path.filename()},           {"stem", path.stem()},
        {"extension", path.extension()}};
    auto const found = parts.find(name);
    EXPECT_NE(found, parts.end()) << name;
    return found == parts.end() ? "" : fs::to_utf8(found->second);
}

TEST(PathnamesGuide, TheDrawingShowsTheParts)
{
    std::string text; // of the drawing that is read
    int shown = 0;
    std::regex const part(R"(\((\d+), (\d+), '([a-z ]+)', \d\))");
    for (std::string const &line : lines_of("docs/site/draw-pathname")) {
        if (line.rfind("('", 0) == 0)
            text = std::regex_replace(line.substr(2, line.rfind('\'') - 2), std::regex(R"(\\\\)"),
                                      R"(\)");
        for (std::sregex_iterator it(line.begin(), line.end(), part), end; it != end; ++it) {
            auto const first = std::stoul((*it)[1]), last = std::stoul((*it)[2]);
            EXPECT_EQ(text.substr(first, last - first), part_of(fs::upath(u16(text)), (*it)[3]))
                << text << ", " << (*it)[3];
            ++shown;
        }
    }
    EXPECT_EQ(shown, 14);
}

TEST(PathnamesGuide, Parts)
{
    for (lines const &row :
         rows_of(page, "| `upath` | parent path | filename | stem | extension |")) {
        fs::upath const path(u16(row[0]));
        EXPECT_EQ(path.string(), row[0]);
        EXPECT_EQ(fs::to_utf8(path.parent_path()), row[1]) << row[0];
        EXPECT_EQ(fs::to_utf8(path.filename()), row[2]) << row[0];
        EXPECT_EQ(fs::to_utf8(path.stem()), row[3]) << row[0];
        EXPECT_EQ(fs::to_utf8(path.extension()), row[4]) << row[0];
    }
}

TEST(PathnamesGuide, NativeForm)
{
    for (lines const &row : rows_of(page, "| you write | it holds |"))
        EXPECT_EQ(fs::upath(u16(row[0])).string(), row[1]) << row[0];
}

TEST(PathnamesGuide, Joining)
{
    for (lines const &row : rows_of(page, "| left | right | `left / right` |")) {
        auto const joined = fs::attempt([&] { return fs::upath(u16(row[0])) / u16(row[1]); });
        std::string const expected =
            row[2].rfind("InvalidArgument", 0) == 0 ? "fl:filesystem:" + row[2] : row[2];
        EXPECT_EQ(joined ? joined->string() : joined.error().identifier(), expected) << row[0];
    }
}

TEST(PathnamesGuide, Absolute)
{
    workspace space;
    space.make_directory(u"C:\\work");
    space.change_directory(u"C:\\work");
    for (lines const &row :
         rows_of(page, "| pathname | `absolute`, where the current directory is `C:\\work` |"))
        EXPECT_EQ(fs::to_utf8(fs::absolute(u16(row[0]))), row[1]) << row[0];
}

TEST(PathnamesGuide, Code)
{
    workspace space;
    space.make_directory(u"C:\\data");

    fs::upath const june(u"C:/data/june.tar.gz");

    fs::upath const folder = june.parent(); // C:\data
    std::u16string const name = june.filename();
    fs::upath const csv = fs::upath(june).replace_extension(u"csv");
    fs::upath const next = june.parent() / u"july.tar.gz";

    EXPECT_EQ(folder.native(), u"C:\\data");
    EXPECT_EQ(name, u"june.tar.gz");
    EXPECT_EQ(csv.native(), u"C:\\data\\june.tar.csv");
    EXPECT_EQ(next.native(), u"C:\\data\\july.tar.gz");

    bool const same_text = fs::upath(u"C:/Data") == u"C:/data";        // false
    bool const same_file = fs::equivalent(u"C:/Data", u"C:/data");     // true
    bool const survives = fs::upath::from_utf8(june.string()) == june; // true

    EXPECT_FALSE(same_text);
    EXPECT_TRUE(same_file);
    EXPECT_TRUE(survives);
    EXPECT_EQ(fs::from_utf8(fs::upath(u"\xD800").string()), u"\xD800");
}

TEST(PathnamesGuide, OperationsRefuseDevices)
{
    EXPECT_FAILURE(fs::canonical(u"\\\\.\\COM1"), test_support::bad_path_type(u"\\\\.\\COM1"));
}

TEST(PathnamesGuide, NamesThatEndInAFullStopAreToldApart)
{
    workspace space;
    space.make_file(space.path(u"d\\june"), "1");
    space.make_file(space.path(u"d\\june."), "22");
    std::map<std::u16string, std::uint64_t> sizes;
    for (auto const &entry : fs::directory_iterator(space.path(u"d")))
        sizes[entry.filename()] = entry.file_size();
    EXPECT_EQ(sizes, (std::map<std::u16string, std::uint64_t>{{u"june", 1}, {u"june.", 2}}));
    EXPECT_EQ(fs::file_size(space.path(u"d\\june.")), 1U) << "its neighbour";
}

} // namespace
