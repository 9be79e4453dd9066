#include "tools/run_flfs.hpp"

#include <fl/filesystem/queries.hpp>

#include <string>
#include <vector>

namespace {

namespace fs = fl::filesystem;
using namespace test_support;

struct kind_case
{
    char const *kind;
    char16_t const *name;
    bool is_yes;
    char const *why;
};

constexpr kind_case kind_cases[] = {
    {"directory", u"dir", true, "a directory"},
    {"directory", u"a.txt", false, "a file"},
    {"directory", u"no", false, "nothing"},
    {"file", u"a.txt", true, "a file"},
    {"file", u"dir", false, "a directory"},
    {"other", u"a.txt", false, "there is nothing else"},
    {"symlink", u"a.txt", false, "a file itself"},
    {"junction", u"dir", false, "a directory itself"},
    {"empty", u"dir", true, "a directory without entries"},
    {"empty", u"empty.txt", true, "a file without content"},
    {"empty", u"a.txt", false, "a file with content"},
};

TEST(FlfsIs, Answers)
{
    workspace work;
    work.make_file(work.path(u"a.txt"), "x");
    work.make_file(work.path(u"empty.txt"));
    work.make_directory(work.path(u"dir"));
    for (kind_case const &row : kind_cases) {
        std::string const name = utf8(work.path(row.name));
        flfs_result const result = run_flfs_on_disk({"is", row.kind, name});
        EXPECT_EQ(result.exit_code, row.is_yes ? 0 : 1) << row.kind << ' ' << row.why;
        EXPECT_EQ(result.out, (row.is_yes ? "yes  " : "no   ") + name + '\n') << row.why;
        EXPECT_EQ(result.err, "") << row.why;
    }
}

TEST(FlfsIs, AsJson)
{
    workspace work;
    work.make_directory(work.path(u"dir"));
    std::string const directory = utf8(work.path(u"dir"));
    std::string const missing = utf8(work.path(u"no"));
    flfs_result const result = run_flfs_on_disk({"is", "--json", "empty", directory, missing});
    EXPECT_EQ(result.exit_code, 1);
    ordered_json const array = ordered_json::parse(result.out);
    ASSERT_EQ(array.size(), 2u);
    EXPECT_EQ(
        array[0],
        (ordered_json{{"pathname", directory}, {"kind", "empty"}, {"is", true}, {"failure", {}}}));
    EXPECT_TRUE(array[1].at("is").is_null());
    EXPECT_EQ(array[1].at("failure").at("identifier"), "fl:filesystem:PathNotFound");
}

TEST(FlfsSize, OfFiles)
{
    workspace work;
    work.make_file(work.path(u"a.txt"), "hello");
    std::string const file = utf8(work.path(u"a.txt"));
    std::string const directory = utf8(work.root());
    EXPECT_EQ(
        run_flfs_on_disk({"size", directory, file}),
        (flfs_result{
            1, file + "\n    5 bytes\n",
            report_of("FileIsDirectory", "pathname", {directory},
                      "A file is needed here, and this is a directory. Check the pathname.")}));
    EXPECT_EQ(ordered_json::parse(run_flfs_on_disk({"size", "--json", file}).out).at(0),
              (ordered_json{{"pathname", file}, {"size", 5}, {"failure", nullptr}}));
}

TEST(FlfsResize, CutsAndGrows)
{
    workspace work;
    work.make_file(work.path(u"a.txt"), "hello");
    std::string const file = utf8(work.path(u"a.txt"));
    EXPECT_EQ(run_flfs_on_disk({"resize", "3", file}), printed("resized " + file + '\n'));
    EXPECT_EQ(work.content(work.path(u"a.txt")), "hel");
    EXPECT_EQ(run_flfs_on_disk({"resize", "4", file}).exit_code, 0);
    EXPECT_EQ(work.content(work.path(u"a.txt")), std::string("hel\0", 4));
    EXPECT_EQ(run_flfs_on_disk({"resize", "0", utf8(work.path(u"no"))}).exit_code, 1);
}

TEST(FlfsNames, AHardLinkIsOneMore)
{
    workspace work;
    work.make_file(work.path(u"a.txt"), "x");
    std::string const file = utf8(work.path(u"a.txt"));
    std::string const link = utf8(work.path(u"b.txt"));
    EXPECT_EQ(run_flfs_on_disk({"names", file}).out, file + "\n    1\n");
    EXPECT_EQ(run_flfs_on_disk({"ln", "--hard", file, link}),
              printed("made " + link + " -> " + file + '\n'));
    EXPECT_EQ(work.content(work.path(u"b.txt")), "x");
    EXPECT_EQ(ordered_json::parse(run_flfs_on_disk({"names", "--json", link}).out).at(0),
              (ordered_json{{"pathname", link}, {"names", 2}, {"failure", nullptr}}));
    flfs_result const again = run_flfs_on_disk({"ln", "--hard", file, link});
    EXPECT_EQ(again.exit_code, 1);
    EXPECT_EQ(again.err.rfind("flfs: fl:filesystem:FileExistsError\n  pathname: " + link + '\n', 0),
              0u)
        << again.err;
}

struct time_case
{
    char const *given;
    char const *kept;
};

constexpr time_case time_cases[] = {
    {"2024-02-29T12:34:56.1234567Z", "2024-02-29T12:34:56.1234567Z"},
    {"2024-02-29T12:34:56.25", "2024-02-29T12:34:56.2500000Z"},
    {"2024-02-29T12:34:56Z", "2024-02-29T12:34:56.0000000Z"},
    {"2024-02-29T12:34", "2024-02-29T12:34:00.0000000Z"},
    {"2024-02-29", "2024-02-29T00:00:00.0000000Z"},
    {"1969-12-31T23:59:59.5Z", "1969-12-31T23:59:59.5000000Z"},
    {"1980-01-01", "1980-01-01T00:00:00.0000000Z"},
};

TEST(FlfsTouch, TimesToTheLastDigit)
{
    workspace work;
    work.make_file(work.path(u"a.txt"));
    std::string const file = utf8(work.path(u"a.txt"));
    for (time_case const &row : time_cases) {
        flfs_result const result = run_flfs_on_disk({"touch", "--time", row.given, file});
        EXPECT_EQ(result, printed("changed " + file + '\n')) << row.given << result.err;
        EXPECT_EQ(run_flfs_on_disk({"time", file}).out, file + "\n    " + row.kept + '\n');
    }
    EXPECT_EQ(ordered_json::parse(run_flfs_on_disk({"time", "--json", file}).out).at(0),
              (ordered_json{{"pathname", file},
                            {"written", "1980-01-01T00:00:00.0000000Z"},
                            {"failure", nullptr}}));
}

TEST(FlfsTouch, TheTimeOfAnother)
{
    workspace work;
    work.make_file(work.path(u"a.txt"));
    work.make_directory(work.path(u"dir"));
    std::string const file = utf8(work.path(u"a.txt"));
    std::string const directory = utf8(work.path(u"dir"));
    run_flfs_on_disk({"touch", "--time", "2001-02-03", file});
    EXPECT_EQ(run_flfs_on_disk({"touch", "--like", file, directory}).exit_code, 0);
    EXPECT_EQ(fs::last_write_time(work.path(u"dir")), fs::last_write_time(work.path(u"a.txt")));
}

TEST(FlfsTouch, ThePresentIfNothingIsSaid)
{
    workspace work;
    work.make_file(work.path(u"a.txt"));
    std::string const file = utf8(work.path(u"a.txt"));
    auto const before = std::chrono::system_clock::now() - std::chrono::seconds(1);
    EXPECT_EQ(run_flfs_on_disk({"touch", file}).exit_code, 0);
    auto const written = fs::last_write_time(work.path(u"a.txt"));
    EXPECT_GE(written, before);
    EXPECT_LE(written, std::chrono::system_clock::now());
}

TEST(FlfsTouch, MakesNothing)
{
    workspace work;
    std::string const missing = utf8(work.path(u"no"));
    flfs_result const result = run_flfs_on_disk({"touch", missing});
    EXPECT_EQ(result.exit_code, 1);
    EXPECT_EQ(
        result.err.rfind("flfs: fl:filesystem:PathNotFound\n  pathname: " + missing + '\n', 0), 0u)
        << result.err;
    EXPECT_FALSE(work.exists(work.path(u"no")));
}

TEST(FlfsEnsure, ADirectoryThatIsThereIsNoFailure)
{
    workspace work;
    work.make_file(work.path(u"a.txt"));
    std::string const directory = utf8(work.path(u"a\\b"));
    EXPECT_EQ(run_flfs_on_disk({"ensure", directory}).out, "made " + directory + '\n');
    EXPECT_EQ(run_flfs_on_disk({"ensure", directory}),
              printed("there already: " + directory + '\n'));
    EXPECT_TRUE(work.is_directory(work.path(u"a\\b")));
    EXPECT_EQ(run_flfs_on_disk({"ensure", utf8(work.path(u"a.txt"))}).exit_code, 1);
}

TEST(FlfsReadShortcut, WhereItLeads)
{
    workspace work;
    work.make_directory(work.path(u"dir"));
    work.make_shortcut(work.path(u"to.lnk"), work.path(u"dir"));
    std::string const target = utf8(work.path(u"dir"));
    EXPECT_EQ(run_flfs_on_disk({"read-shortcut", utf8(work.path(u"to.lnk"))}),
              printed(target + '\n'));
    std::string const other = utf8(work.path(u"dir"));
    flfs_result const refused = run_flfs_on_disk({"read-shortcut", "--json", other});
    EXPECT_EQ(refused.exit_code, 1);
    EXPECT_EQ(ordered_json::parse(refused.out).at(0).at("failure").at("sentence"),
              "Shortcut path input must have .lnk file extension.");
}

TEST(FlfsTemp, IsADirectory)
{
    workspace work;
#if FLFS_SYSTEM_IS_SIMULATED
    std::wstring const root(work.root().begin(), work.root().end());
    ::SetEnvironmentVariableW(L"TMP", root.c_str());
#endif
    EXPECT_EQ(run_flfs_on_disk({"temp"}), printed(fs::temp_directory_path().string() + '\n'));
}

#if FLFS_SYSTEM_IS_SIMULATED

using simulation::flavour;
using simulation::simulated_machine;

TEST(FlfsTemp, NobodySaysWhere)
{
    simulated_machine machine;
    flfs_result const result = run_flfs_on_disk({"temp", "--json"});
    EXPECT_EQ(result.exit_code, 1);
    EXPECT_EQ(ordered_json::parse(result.out).at("failure").at("identifier"),
              "fl:filesystem:TempEnvNotSpecified");
}

TEST(FlfsIs, Links)
{
    simulated_machine machine;
    machine.add_directory(u"C:\\dir").add_junction(u"C:\\junction", u"C:\\dir");
    machine.add_symbolic_link(u"C:\\link", u"dir", flavour::directory);
    EXPECT_EQ(run_flfs_on_disk({"is", "symlink", "C:\\link", "C:\\junction"}).out,
              "yes  C:\\link\nno   C:\\junction\n");
    EXPECT_EQ(run_flfs_on_disk({"is", "junction", "C:\\link", "C:\\junction"}).out,
              "no   C:\\link\nyes  C:\\junction\n");
    EXPECT_EQ(run_flfs_on_disk({"is", "directory", "C:\\link", "C:\\junction"}).exit_code, 0);
}

TEST(FlfsLn, AJunction)
{
    simulated_machine machine;
    machine.add_file(u"C:\\dir\\a.txt").set_current_directory(u"C:\\dir");
    EXPECT_EQ(run_flfs_on_disk({"ln", "--junction", ".", "C:\\to"}), printed("made C:\\to -> .\n"));
    EXPECT_EQ(run_flfs_on_disk({"readlink", "C:\\to"}).out,
              "C:\\to\n    kind  junction\n    text  C:\\dir\n    tag   0xA0000003\n");
    EXPECT_EQ(run_flfs_on_disk({"ln", "--junction", "\\\\server\\x", "C:\\no"}),
              refused(1, report_of("InvalidArgument", "pathname", {"\\\\server\\x"},
                                   "The path type of the given path is not valid.")));
}

TEST(FlfsMkdir, LikeAnother)
{
    simulated_machine machine;
    machine.add_directory(u"C:\\old").set_attributes(u"C:\\old", FILE_ATTRIBUTE_HIDDEN);
    EXPECT_EQ(run_flfs_on_disk({"mkdir", "--like", "C:\\old", "C:\\new"}).out, "made C:\\new\n");
    EXPECT_NE(machine.attributes(u"C:\\new") & FILE_ATTRIBUTE_HIDDEN, 0u);
    EXPECT_EQ(run_flfs_on_disk({"mkdir", "--like", "C:\\no", "C:\\other"}).exit_code, 1);
    EXPECT_FALSE(machine.exists(u"C:\\other"));
}

/// With somebody at a terminal, who is told at once.
flfs_result run_at_a_terminal(std::vector<std::string> const &arguments)
{
    std::ostringstream out;
    std::ostringstream err;
    flfs::session session{out, err};
    session.has_disk = true;
    session.progress_pause = std::chrono::milliseconds(0);
    int const exit_code = flfs::run(arguments, session);
    return {exit_code, out.str(), err.str()};
}

TEST(FlfsCp, IsShownAtATerminal)
{
    simulated_machine machine;
    machine.add_file(u"C:\\from\\a.txt", "1").add_file(u"C:\\from\\b.txt", "2");
    EXPECT_EQ(run_at_a_terminal({"cp", "C:\\from", "C:\\to"}),
              (flfs_result{0, "copied C:\\from -> C:\\to\n",
                           "\r1 name copied\r2 names copied\r3 names copied\r              \r"}));
    EXPECT_EQ(run_flfs_on_disk({"cp", "C:\\from", "C:\\more"}).err, "") << "no terminal";
}

TEST(FlfsRm, IsCountedAndShownAtATerminal)
{
    simulated_machine machine;
    machine.add_file(u"C:\\dir\\sub\\a.txt");
    EXPECT_EQ(
        run_at_a_terminal({"rm", "-r", "--count", "C:\\dir"}),
        (flfs_result{0, "removed C:\\dir, 3 names\n",
                     "\r1 name removed\r2 names removed\r3 names removed\r               \r"}));
    EXPECT_FALSE(machine.exists(u"C:\\dir"));
}

TEST(FlfsRm, ReadOnlyNamesGoByForce)
{
    simulated_machine machine;
    machine.add_file(u"C:\\dir\\a.txt");
    machine.set_attributes(u"C:\\dir\\a.txt", FILE_ATTRIBUTE_READONLY);
    EXPECT_EQ(run_flfs_on_disk({"rm", "-r", "C:\\dir"}).exit_code, 1);
    EXPECT_EQ(run_flfs_on_disk({"rm", "-r", "--force", "C:\\dir"}),
              printed("removed C:\\dir, 2 names\n"));
}

TEST(FlfsRm, GoesOnAndTellsEachFailure)
{
    simulated_machine machine;
    machine.add_file(u"C:\\dir\\a.txt").add_file(u"C:\\dir\\b.txt").add_file(u"C:\\dir\\c.txt");
    machine.set_attributes(u"C:\\dir\\a.txt", FILE_ATTRIBUTE_READONLY);
    machine.set_attributes(u"C:\\dir\\c.txt", FILE_ATTRIBUTE_READONLY);
    flfs_result const result = run_flfs_on_disk({"rm", "-r", "--keep-going", "C:\\dir"});
    EXPECT_EQ(result.exit_code, 1);
    EXPECT_EQ(result.out, "removed 1 name of C:\\dir\n");
    std::string expected;
    for (char const *name : {"a", "c"})
        expected += std::string("flfs: fl:filesystem:AccessDenied\n  pathname: C:\\dir\\") + name +
                    ".txt\n  code:     0\n"
                    "  It is read-only, which `flfs chmod +w` changes, or you have no right to "
                    "remove it.\n";
    EXPECT_EQ(result.err, expected);
    EXPECT_FALSE(machine.exists(u"C:\\dir\\b.txt"));
}

#endif

} // namespace
