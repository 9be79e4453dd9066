#include "tools/run_flfs.hpp"

#include <string>

namespace {

using namespace test_support;

bool contains(std::string const &text, std::string const &part)
{
    return text.find(part) != std::string::npos;
}

std::string inspect(std::string const &text)
{
    return run_flfs({"inspect", "--", text}).out;
}

constexpr char const *simulated_note =
    "\nCurrent directories are those of a simulated machine: drive C:, directory C:\\\n";

/// What stands behind the heading of the drawing, without the indentation and the
/// remark about a simulated machine.
std::string drawing_of(std::string const &text)
{
    std::string out = inspect(text);
    if (std::size_t const note = out.find(simulated_note); note != out.npos)
        out.erase(note);
    std::string const heading = "\n  Drawing\n";
    std::size_t const begin = out.find(heading);
    if (begin == out.npos)
        return "(no drawing)";
    out.erase(0, begin + heading.size());
    std::string drawing;
    for (std::size_t at = 0; at < out.size();) {
        std::size_t const end = out.find('\n', at);
        drawing += out.substr(at + 4, end + 1 - at - 4);
        at = end + 1;
    }
    return drawing;
}

TEST(FlfsInspect, WholeOutput)
{
    std::string const expected = R"(\\server\share\foo.txt  (22 units)

  Type of the text as given
    classify_path_type        PATH_TYPE_UNC (0x3005)
    analyse_path_root         PATH_TYPE_UNC (0x3005)

  Length of its root, in UTF-16 units
    analyse_path_root         15
    get_root_path_length      9
    element_root_length       15
    unc_root_length           15

  Forms
    native                    \\server\share\foo.txt
    generic                   //server/share/foo.txt
    expanded                  \\server\share\foo.txt
    access                    \\server\share\foo.txt
    absolute                  yes
    absolute when expanded    yes

  Parts of the native form
    root name                 \\server
    root directory            \
    root path                 \\server\
    relative path             share\foo.txt
    parent path               \\server\share
    filename                  foo.txt
    stem                      foo
    extension                 txt
    elements                  \\server | \ | share | foo.txt

  The same by extract_pathname_elements, with share in the root
    parent path               \\server\share\
    filename                  foo.txt
    stem                      foo
    extension                 txt

  Drawing
    \\server\share\foo.txt
    ^^^^^^^^^                root       \\server\
    ^^^^^^^^^^^^^^           parent     \\server\share
                   ^^^       stem       foo
                       ^^^   extension  txt
)";
    EXPECT_EQ(run_flfs({"inspect", R"(\\server\share\foo.txt)"}),
              printed(flfs::system_is_simulated ? expected + simulated_note : expected));
}

TEST(FlfsInspect, BrieflyTheTypeAndTheDrawing)
{
    EXPECT_EQ(run_flfs({"inspect", "--brief", "C:/dir//a.b", R"(\\server\share)"}),
              printed(R"(C:/dir//a.b
    PATH_TYPE_DRIVE_ABSOLUTE; as given PATH_TYPE_DRIVE_RELATIVE

    C:\dir\a.b
    ^^^          root       C:\
    ^^^^^^       parent     C:\dir
           ^     stem       a
             ^   extension  b

\\server\share
    PATH_TYPE_UNC

    \\server\share
    ^^^^^^^^^        root       \\server\
    ^^^^^^^^^        parent     \\server\
             ^^^^^   stem       share
)"));
}

TEST(FlfsInspect, BrieflyAndAsJsonExcludeEachOther)
{
    flfs_result const result = run_flfs({"inspect", "--brief", "--json", "a"});
    EXPECT_EQ(result.exit_code, 2);
    EXPECT_EQ(result.out, "");
    EXPECT_TRUE(contains(result.err, "--json")) << result.err;
}

TEST(FlfsInspect, EmptyTextHasNoDrawing)
{
    std::string const out = inspect("");
    EXPECT_TRUE(contains(out, "(empty)  (0 units)\n")) << out;
    EXPECT_TRUE(contains(out, "    native                    (empty)\n")) << out;
    EXPECT_TRUE(contains(out, "    elements                  (none)\n")) << out;
    EXPECT_FALSE(contains(out, "Drawing")) << out;
}

TEST(FlfsInspect, PartsWithShareInRootAreShownWhereTheyDiffer)
{
    EXPECT_TRUE(contains(inspect("\\\\server\\share\\foo"), "with share in the root"));
    EXPECT_TRUE(contains(inspect("foo."), "with share in the root"));
    EXPECT_FALSE(contains(inspect("C:\\foo\\bar.txt"), "with share in the root"));
}

TEST(FlfsInspect, ExceptionOfAnalysePathRootIsItsAnswer)
{
    std::string const out = inspect("\\\\?\\\xC3\xA9\\share\\foo");
    EXPECT_TRUE(contains(out, "    analyse_path_root         "
                              "(throws foundation::ustring::CtypeInvalidCharacter)\n"))
        << out;
    EXPECT_TRUE(contains(out, "    analyse_path_root         -\n")) << out;
}

TEST(FlfsInspect, SeveralTextsAndOneRemarkAboutTheSystem)
{
    std::string const out = run_flfs({"inspect", "one", "two"}).out;
    EXPECT_EQ(out.find("one  (3 units)\n"), 0u) << out;
    EXPECT_TRUE(contains(out, "\n\n\ntwo  (3 units)\n")) << out;
    std::size_t const note = out.find(simulated_note);
    if constexpr (flfs::system_is_simulated)
        EXPECT_EQ(note, out.size() - std::string(simulated_note).size()) << out;
    else
        EXPECT_EQ(note, out.npos) << out;
}

struct drawing_case
{
    char const *text;
    char const *drawing;
    char const *why;
};

drawing_case const drawing_cases[] = {
    {"C:/data/report.tar.gz",
     R"(C:\data\report.tar.gz
^^^                     root       C:\
^^^^^^^                 parent     C:\data
        ^^^^^^^^^^      stem       report.tar
                   ^^   extension  gz
)",
     "of the native form"},
    {"foo",
     R"(foo
^^^   stem       foo
)",
     "empty parts are left out"},
    {"C:\\",
     R"(C:\
^^^   root       C:\
^^    parent     C:
  ^   stem       \
)",
     "a root names itself"},
    {".bashrc",
     R"(.bashrc
 ^^^^^^   extension  bashrc
)",
     "no stem"},
    {"foo.",
     R"(foo.
^^^    stem       foo
)",
     "an empty extension"},
    {"C:\\caf\xC3\xA9\\\xC3\xA9t\xC3\xA9.txt",
     "C:\\caf\xC3\xA9\\\xC3\xA9t\xC3\xA9.txt\n"
     "^^^               root       C:\\\n"
     "^^^^^^^           parent     C:\\caf\xC3\xA9\n"
     "        ^^^       stem       \xC3\xA9t\xC3\xA9\n"
     "            ^^^   extension  txt\n",
     "a letter of two bytes takes one column"},
    {"\\\xF0\x9F\x98\x80\\a.\xF0\x9F\x98\x80",
     "\\\xF0\x9F\x98\x80\\a.\xF0\x9F\x98\x80\n"
     "^          root       \\\n"
     "^^^        parent     \\\xF0\x9F\x98\x80\n"
     "    ^      stem       a\n"
     "      ^^   extension  \xF0\x9F\x98\x80\n",
     "a surrogate pair that is an emoji takes two columns"},
    {"\\\xE6\x97\xA5\xE6\x9C\xAC.a",
     "\\\xE6\x97\xA5\xE6\x9C\xAC.a\n"
     "^         root       \\\n"
     "^         parent     \\\n"
     " ^^^^     stem       \xE6\x97\xA5\xE6\x9C\xAC\n"
     "      ^   extension  a\n",
     "East Asian characters take two columns"},
    {"e\xCC\x81.a",
     "e\xCC\x81.a\n"
     "^     stem       e\xCC\x81\n"
     "  ^   extension  a\n",
     "an accent over the letter before it takes none"},
    {"C:\\a\xED\xA0\x80\\b.t\xED\xB0\x80",
     R"(C:\a\uD800\b.t\uDC00
^^^                    root       C:\
^^^^^^^^^^             parent     C:\a\uD800
           ^           stem       b
             ^^^^^^^   extension  t\uDC00
)",
     "marks under every unit of an escape"},
};

TEST(FlfsInspect, Drawing)
{
    for (drawing_case const &row : drawing_cases) {
        std::string const drawing = drawing_of(row.text);
        EXPECT_EQ(drawing, row.drawing) << row.why << "\n" << drawing;
    }
}

TEST(FlfsInspect, WidePathnameIsDrawnInPieces)
{
    std::string const name(70, 'a');
    EXPECT_EQ(drawing_of("C:\\" + name + ".t"),
              "C:\\" + std::string(61, 'a') + "\n" + //
                  "^^^" + std::string(64, ' ') + "root       C:\\\n" + "^^^" +
                  std::string(64, ' ') + "parent     C:\\\n" + //
                  "   " + std::string(61, '^') + "   stem\n" + //
                  std::string(9, 'a') + ".t\n" +               //
                  std::string(9, '^') + std::string(58, ' ') + "stem\n" + "          ^" +
                  std::string(56, ' ') + "extension  t\n");
}

} // namespace
