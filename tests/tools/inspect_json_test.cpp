#include "tools/run_flfs.hpp"

#include <optional>
#include <string>
#include <vector>

namespace {

using namespace test_support;

/// What is asked of the text as given.
struct kind_case
{
    char const *text;
    char const *classified;
    char const *analysed;
    int analysed_length;
    int root_path_length;
    int element_root_length;
    std::optional<int> unc_root_length;
};

kind_case const kind_cases[] = {
    {"", "RELATIVE", "RELATIVE", 0, 0, 0, {}},
    {"foo\\bar", "RELATIVE", "RELATIVE", 0, 0, 0, {}},
    {"\\foo", "ROOTED", "ROOTED", 1, 1, 1, {}},
    {"C:\\foo", "DRIVE_ABSOLUTE", "DRIVE_ABSOLUTE", 3, 3, 3, {}},
    {"C:/foo", "DRIVE_RELATIVE", "DRIVE_RELATIVE", 2, 2, 2, {}},
    {"C:foo", "DRIVE_RELATIVE", "DRIVE_RELATIVE", 2, 2, 2, {}},
    {"\\\\server", "INVALID", "INVALID", 0, 8, 8, 0},
    {"\\\\server\\share", "UNC", "UNC_NO_ROOT", 14, 9, 14, 14},
    {"\\\\server\\share\\foo", "UNC", "UNC", 15, 9, 15, 15},
    {"//server/share", "INVALID", "RELATIVE", 0, 14, 14, 0},
    {"\\\\?\\C:\\foo", "LONG_DRIVE_ABSOLUTE", "LONG_DRIVE_ABSOLUTE", 7, 7, 7, {}},
    {"\\\\?\\C:foo", "LONG_DRIVE_RELATIVE", "LONG_DRIVE_RELATIVE", 6, 9, 6, {}},
    {"\\\\?\\UNC\\server\\share", "LONG_UNC", "LONG_UNC_NO_ROOT", 20, 15, 20, 20},
    {"\\\\?\\UNC\\server\\share\\foo", "LONG_UNC", "LONG_UNC", 21, 15, 21, 21},
    {"\\\\?\\UNC\\server", "INVALID", "INVALID", 0, 14, 14, 0},
    {"\\\\.\\COM1", "DEVICE", "DEVICE", 4, 1, 1, {}},
};

TEST(FlfsInspectJson, TypesAndRootLengths)
{
    for (kind_case const &row : kind_cases) {
        ordered_json const object = inspect_as_json(row.text);
        ordered_json const &lengths = object.at("root_lengths");
        std::string const prefix = "PATH_TYPE_";
        EXPECT_EQ(object.at("text"), row.text);
        EXPECT_EQ(object.at("length"), std::string(row.text).size()) << row.text;
        EXPECT_EQ(object.at("classify_path_type").at("name"), prefix + row.classified) << row.text;
        EXPECT_EQ(object.at("analyse_path_root").at("name"), prefix + row.analysed) << row.text;
        EXPECT_EQ(object.at("analyse_path_root").at("exception"), nullptr) << row.text;
        EXPECT_EQ(lengths.at("analyse_path_root"), row.analysed_length) << row.text;
        EXPECT_EQ(lengths.at("get_root_path_length"), row.root_path_length) << row.text;
        EXPECT_EQ(lengths.at("element_root_length"), row.element_root_length) << row.text;
        ordered_json const unc =
            row.unc_root_length ? ordered_json(*row.unc_root_length) : ordered_json(nullptr);
        EXPECT_EQ(lengths.at("unc_root_length"), unc) << row.text;
    }
}

struct value_case
{
    char const *text;
    char const *name;
    unsigned int value;
    char const *hex;
};

value_case const value_cases[] = {
    {"\\\\server", "PATH_TYPE_INVALID", 0, "0x0000"},
    {"foo", "PATH_TYPE_RELATIVE", 1, "0x0001"},
    {"\\foo", "PATH_TYPE_ROOTED", 0x1002, "0x1002"},
    {"C:\\", "PATH_TYPE_DRIVE_ABSOLUTE", 0x1003, "0x1003"},
    {"C:", "PATH_TYPE_DRIVE_RELATIVE", 0x1004, "0x1004"},
    {"\\\\server\\share\\", "PATH_TYPE_UNC", 0x3005, "0x3005"},
    {"\\\\server\\share", "PATH_TYPE_UNC_NO_ROOT", 0x3006, "0x3006"},
    {"\\\\?\\C:\\", "PATH_TYPE_LONG_DRIVE_ABSOLUTE", 0x5007, "0x5007"},
    {"\\\\?\\C:", "PATH_TYPE_LONG_DRIVE_RELATIVE", 0x5008, "0x5008"},
    {"\\\\?\\UNC\\server\\share\\", "PATH_TYPE_LONG_UNC", 0x7009, "0x7009"},
    {"\\\\?\\UNC\\server\\share", "PATH_TYPE_LONG_UNC_NO_ROOT", 0x700A, "0x700A"},
    {"\\\\.\\COM1", "PATH_TYPE_DEVICE", 0x800B, "0x800B"},
};

TEST(FlfsInspectJson, EveryTypeWithItsValue)
{
    for (value_case const &row : value_cases) {
        ordered_json const type = inspect_as_json(row.text).at("analyse_path_root");
        EXPECT_EQ(type.at("name"), row.name) << row.text;
        EXPECT_EQ(type.at("value"), row.value) << row.text;
        EXPECT_EQ(type.at("hex"), row.hex) << row.text;
    }
}

TEST(FlfsInspectJson, ExceptionOfAnalysePathRootIsItsAnswer)
{
    ordered_json const object = inspect_as_json("\\\\?\\\xC3\xA9\\share\\foo");
    ordered_json const expected = {
        {"name", nullptr},
        {"value", nullptr},
        {"hex", nullptr},
        {"exception",
         {{"class", "foundation::ustring::CtypeInvalidCharacter"},
          {"message", "Invalid character error."}}},
    };
    EXPECT_EQ(object.at("analyse_path_root"), expected);
    EXPECT_EQ(object.at("root_lengths").at("analyse_path_root"), nullptr);
    EXPECT_EQ(object.at("classify_path_type").at("name"), "PATH_TYPE_INVALID");
}

struct form_case
{
    char const *text;
    char const *native;
    char const *generic;
    bool is_absolute;
    bool is_absolute_when_expanded;
};

form_case const form_cases[] = {
    {"", "", "", false, false},
    {"foo", "foo", "foo", false, false},
    {"\\foo", "\\foo", "/foo", false, true},
    {"C:foo", "C:foo", "C:foo", false, true},
    {"C:/foo//bar/", "C:\\foo\\bar", "C:/foo/bar", true, true},
    {"C:\\foo  ", "C:\\foo", "C:/foo", true, true},
    {"\\\\?\\C:\\foo", "C:\\foo", "C:/foo", true, true},
    {"\\\\server", "\\\\server", "//server", true, false},
    {"//server/share", "\\\\server\\share", "//server/share", true, true},
    {"\\\\?\\UNC\\server\\share", "\\\\server\\share", "//server/share", true, true},
    {"\\\\.\\COM1", "\\\\.\\COM1", "//./COM1", false, false},
};

TEST(FlfsInspectJson, Forms)
{
    for (form_case const &row : form_cases) {
        ordered_json const object = inspect_as_json(row.text);
        EXPECT_EQ(object.at("native_form"), row.native) << row.text;
        EXPECT_EQ(object.at("native_length"), std::string(row.native).size()) << row.text;
        EXPECT_EQ(object.at("generic_form"), row.generic) << row.text;
        EXPECT_EQ(object.at("access_form"), row.native) << row.text;
        EXPECT_EQ(object.at("expanded_form_failure"), nullptr) << row.text;
        EXPECT_EQ(object.at("is_absolute"), row.is_absolute) << row.text;
        EXPECT_EQ(object.at("is_absolute_path_when_expanded"), row.is_absolute_when_expanded)
            << row.text;
    }
}

TEST(FlfsInspectJson, ExpandedForm)
{
    EXPECT_EQ(inspect_as_json("foo").at("expanded_form"), "foo");
    EXPECT_EQ(inspect_as_json("C:/foo/").at("expanded_form"), "C:\\foo");
    EXPECT_EQ(inspect_as_json("\\\\server\\share").at("expanded_form"), "\\\\server\\share");
    std::string const rooted = inspect_as_json("\\foo").at("expanded_form");
    ASSERT_EQ(rooted.size(), 6u) << rooted; // of whatever drive is current
    EXPECT_EQ(rooted.substr(1), ":\\foo");
}

TEST(FlfsInspectJson, AccessFormOfALongPathname)
{
    std::string const longest_bare = "C:\\" + std::string(256, 'a');
    EXPECT_EQ(inspect_as_json(longest_bare).at("access_form"), longest_bare);
    EXPECT_EQ(inspect_as_json(longest_bare + 'a').at("access_form"),
              "\\\\?\\" + longest_bare + 'a');
}

struct parts_case
{
    char const *text;
    char const *root_name, *root_directory, *root_path, *relative_path, *parent_path;
    char const *filename, *stem, *extension;
    std::vector<std::string> elements;
};

parts_case const parts_cases[] = {
    {"", "", "", "", "", "", "", "", "", {}},
    {"foo\\bar", "", "", "", "foo\\bar", "foo", "bar", "bar", "", {"foo", "bar"}},
    {"C:\\foo\\bar.txt",
     "C:",
     "\\",
     "C:\\",
     "foo\\bar.txt",
     "C:\\foo",
     "bar.txt",
     "bar",
     "txt",
     {"C:", "\\", "foo", "bar.txt"}},
    {"C:\\", "C:", "\\", "C:\\", "", "C:", "\\", "\\", "", {"C:", "\\"}},
    {"C:", "C:", "", "C:", "", "", "C:", "C:", "", {"C:"}},
    {"C:foo", "C:", "", "C:", "foo", "", "foo", "foo", "", {"C:", "foo"}},
    {"\\foo", "", "\\", "\\", "foo", "\\", "foo", "foo", "", {"\\", "foo"}},
    {"\\\\server\\share\\foo",
     "\\\\server",
     "\\",
     "\\\\server\\",
     "share\\foo",
     "\\\\server\\share",
     "foo",
     "foo",
     "",
     {"\\\\server", "\\", "share", "foo"}},
    {"\\\\server",
     "\\\\server",
     "",
     "\\\\server",
     "",
     "",
     "\\\\server",
     "\\\\server",
     "",
     {"\\\\server"}},
    {"\\\\?\\C:\\foo", "C:", "\\", "C:\\", "foo", "C:\\", "foo", "foo", "", {"C:", "\\", "foo"}},
    {"a.b.c", "", "", "", "a.b.c", "", "a.b.c", "a.b", "c", {"a.b.c"}},
    {"foo.", "", "", "", "foo.", "", "foo.", "foo", "", {"foo."}},
    {".bashrc", "", "", "", ".bashrc", "", ".bashrc", "", "bashrc", {".bashrc"}},
    {"..", "", "", "", "..", "", "..", "..", "", {".."}},
};

TEST(FlfsInspectJson, Parts)
{
    for (parts_case const &row : parts_cases) {
        ordered_json const object = inspect_as_json(row.text);
        ordered_json const expected = {
            {"root_name", row.root_name},
            {"root_directory", row.root_directory},
            {"root_path", row.root_path},
            {"relative_path", row.relative_path},
            {"parent_path", row.parent_path},
            {"filename", row.filename},
            {"stem", row.stem},
            {"extension", row.extension},
        };
        EXPECT_EQ(object.at("parts"), expected) << row.text;
        EXPECT_EQ(object.at("elements"), ordered_json(row.elements)) << row.text;
    }
}

struct share_case
{
    char const *text, *parent_path, *filename, *stem, *extension;
};

share_case const share_cases[] = {
    {"C:\\foo\\bar.txt", "C:\\foo", "bar.txt", "bar", "txt"},
    {"\\\\server\\share\\foo", "\\\\server\\share\\", "foo", "foo", ""},
    {"foo.", "", "foo.", "foo.", ""},
};

TEST(FlfsInspectJson, PartsWithShareInRoot)
{
    for (share_case const &row : share_cases) {
        ordered_json const expected = {{"parent_path", row.parent_path},
                                       {"filename", row.filename},
                                       {"stem", row.stem},
                                       {"extension", row.extension}};
        EXPECT_EQ(inspect_as_json(row.text).at("parts_with_share_in_root"), expected) << row.text;
    }
}

TEST(FlfsInspectJson, OneObjectForEachTextInOrder)
{
    flfs_result const result = run_flfs({"inspect", "--json", "b", "a", "b"});
    ordered_json const array = ordered_json::parse(result.out);
    EXPECT_EQ(result.exit_code, 0);
    EXPECT_EQ(result.err, "");
    ASSERT_EQ(array.size(), 3u);
    EXPECT_EQ(array[0].at("text"), "b");
    EXPECT_EQ(array[1].at("text"), "a");
    EXPECT_EQ(array[2], array[0]);
}

// Scripts read these: a key is never renamed or moved, and none is ever missing.
TEST(FlfsInspectJson, KeysOfEveryObject)
{
    std::vector<std::string> const expected = {"text",
                                               "length",
                                               "system",
                                               "classify_path_type",
                                               "analyse_path_root",
                                               "root_lengths",
                                               "native_form",
                                               "native_length",
                                               "generic_form",
                                               "expanded_form",
                                               "expanded_form_failure",
                                               "access_form",
                                               "is_absolute",
                                               "is_absolute_path_when_expanded",
                                               "parts",
                                               "elements",
                                               "parts_with_share_in_root"};
    for (char const *text : {"", "foo", "\\\\server\\share\\foo", "\\\\?\\\xC3\xA9\\share\\foo"}) {
        std::vector<std::string> keys;
        ordered_json const object = inspect_as_json(text);
        for (auto const &item : object.items())
            keys.push_back(item.key());
        EXPECT_EQ(keys, expected) << text;
    }
}

TEST(FlfsInspectJson, NamesItsSystem)
{
    EXPECT_EQ(inspect_as_json("foo").at("system"),
              flfs::system_is_simulated ? "simulated" : "windows");
}

TEST(FlfsInspectJson, UnpairedSurrogateIsEscapedAndCountedOnce)
{
    ordered_json const object = inspect_as_json("C:\\a\xED\xA0\x80.t");
    EXPECT_EQ(object.at("text"), "C:\\a\\uD800.t");
    EXPECT_EQ(object.at("length"), 7);
    EXPECT_EQ(object.at("native_length"), 7);
    EXPECT_EQ(object.at("parts").at("stem"), "a\\uD800");
}

TEST(FlfsInspectJson, SurrogatePairIsACharacterOfTwoUnits)
{
    ordered_json const object = inspect_as_json("\xF0\x9F\x98\x80");
    EXPECT_EQ(object.at("native_form"), "\xF0\x9F\x98\x80");
    EXPECT_EQ(object.at("length"), 2);
}

} // namespace
