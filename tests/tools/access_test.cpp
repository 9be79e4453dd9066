#include "tools/run_flfs.hpp"

#include <string>

namespace {

using namespace test_support;

struct answer_case
{
    char const *modes;
    char16_t const *name;
    bool is_yes;
    char const *why;
};

constexpr answer_case answer_cases[] = {
    {"e", u"a.txt", true, "it is there"},
    {"e", u"no", false, "asked whether it is there"},
    {"er", u"no", false, "existence decides, with others, too"},
    {"r", u"a.txt", true, "a file"},
    {"r", u"dir", true, "a directory"},
    {"rw", u"a.txt", true, "both"},
    {"wr", u"a.txt", true, "in any order"},
    {"rr", u"a.txt", true, "twice"},
    {"x", u"a.txt", false, "no name of a program"},
    {"x", u"a.cmd", true, "a name of one"},
    {"erwx", u"a.cmd", true, "all of it"},
    {"rx", u"a.txt", false, "one is denied"},
    {"x", u"dir", false, "directories don't run"},
};

TEST(FlfsAccess, Answers)
{
    workspace work;
    work.make_file(work.path(u"a.txt"));
    work.make_file(work.path(u"a.cmd"));
    work.make_directory(work.path(u"dir"));
    for (answer_case const &row : answer_cases) {
        std::string const name = utf8(work.path(row.name));
        EXPECT_EQ(
            run_flfs_on_disk({"access", row.modes, name}),
            (flfs_result{row.is_yes ? 0 : 1, (row.is_yes ? "yes  " : "no   ") + name + "\n", ""}))
            << row.why;
    }
}

TEST(FlfsAccess, AFailureDoesNotStopIt)
{
    workspace work;
    work.make_file(work.path(u"a.txt"));
    std::string const file = utf8(work.path(u"a.txt"));
    std::string const missing = utf8(work.path(u"no"));
    EXPECT_EQ(
        run_flfs_on_disk({"access", "r", missing, "", file}),
        (flfs_result{1, "yes  " + file + "\n", told_of_missing_and_empty("argument", missing)}));
}

TEST(FlfsAccess, AsJson)
{
    workspace work;
    work.make_file(work.path(u"a.txt"));
    std::string const file = utf8(work.path(u"a.txt"));
    std::string const missing = utf8(work.path(u"no"));
    flfs_result const result = run_flfs_on_disk({"access", "--json", "rw", file, missing});
    EXPECT_EQ(result.exit_code, 1);
    EXPECT_EQ(result.err, "");
    ordered_json const array = ordered_json::parse(result.out);
    ASSERT_EQ(array.size(), 2u);
    EXPECT_EQ(array[0],
              (ordered_json{
                  {"pathname", file}, {"modes", "rw"}, {"granted", true}, {"failure", nullptr}}));
    EXPECT_EQ(array[1].at("pathname"), missing);
    EXPECT_TRUE(array[1].at("granted").is_null());
    EXPECT_EQ(array[1].at("failure").at("identifier"), "fl:filesystem:PathNotFound");
}

#if FLFS_SYSTEM_IS_SIMULATED

TEST(FlfsAccess, ANoInJson)
{
    simulation::simulated_machine machine;
    machine.add_file(u"C:\\a.txt").set_attributes(u"C:\\a.txt", FILE_ATTRIBUTE_READONLY);
    flfs_result const result = run_flfs_on_disk({"access", "w", "--json", "C:\\a.txt"});
    EXPECT_EQ(result.exit_code, 1);
    ordered_json const one = ordered_json::parse(result.out).at(0);
    EXPECT_EQ(one.at("granted"), false);
    EXPECT_TRUE(one.at("failure").is_null());
}

TEST(FlfsAccess, DeniedALook)
{
    simulation::simulated_machine machine;
    machine.add_file(u"C:\\a.txt");
    auto const broken =
        machine.fail_every_call_on_name("GetFileAttributesExW", u"C:\\a.txt", ERROR_ACCESS_DENIED);
    EXPECT_EQ(run_flfs_on_disk({"access", "r", "C:\\a.txt"}).out, "no   C:\\a.txt\n");
    EXPECT_EQ(
        run_flfs_on_disk({"access", "e", "C:\\a.txt"}),
        refused(
            1,
            report_of("AccessDenied", "pathname", {"C:\\a.txt"},
                      "You have no right to do this. Check the permissions, or ask who owns it.")));
}

#endif

} // namespace
