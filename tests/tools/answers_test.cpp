#include "tools/run_flfs.hpp"

#include <string>

namespace {

using namespace test_support;

TEST(FlfsAbsolute, WithAndWithoutABase)
{
    workspace work;
    work.change_directory(work.root());
    EXPECT_EQ(run_flfs_on_disk({"absolute", "a/../b", ""}),
              printed(utf8(work.path(u"b")) + "\n(empty)\n"));
    for (std::vector<std::string> const &arguments :
         {std::vector<std::string>{"absolute", "--base", "C:\\[x]", "a", "C:\\b"},
          {"absolute", "--base=C:\\[x]", "a", "C:\\b"}}) {
        EXPECT_EQ(run_flfs_on_disk(arguments), printed("C:\\[x]\\a\nC:\\b\n"));
    }
}

TEST(FlfsAbsolute, ABaseInBracketsIsNoList)
{
    for (std::vector<std::string> const &arguments :
         {std::vector<std::string>{"absolute", "--base", "[x]", "a"},
          {"absolute", "--base=[x]", "a"}}) {
        EXPECT_EQ(run_flfs_on_disk(arguments),
                  refused(1, report_of("InvalidArgument", "argument", {"a"},
                                       "Invalid path type for base path.")))
            << "a relative base is refused, not taken apart";
    }
}

TEST(FlfsCanonical, AFailureDoesNotStopIt)
{
    workspace work;
    work.make_file(work.path(u"dir\\a.txt"));
    EXPECT_EQ(run_flfs_on_disk({"canonical", utf8(work.root()) + "/dir/../no",
                                utf8(work.root()) + "/./dir/../dir/a.txt"}),
              (flfs_result{1, utf8(work.path(u"dir\\a.txt")) + "\n",
                           report_of("PathNotFound", "argument", {utf8(work.root()) + "/dir/../no"},
                                     not_there)}));
}

TEST(FlfsCanonical, BelowABase)
{
    workspace work;
    work.make_directory(work.path(u"dir\\sub"));
    EXPECT_EQ(run_flfs_on_disk({"canonical", "--base", utf8(work.path(u"dir")), "sub\\.."}),
              printed(utf8(work.path(u"dir")) + "\n"));
}

TEST(FlfsCanonical, Weakly)
{
    workspace work;
    work.make_directory(work.path(u"dir"));
    EXPECT_EQ(
        run_flfs_on_disk({"canonical", "--weakly", utf8(work.path(u"dir\\no\\..\\new")), "no\\x"}),
        printed(utf8(work.path(u"dir\\new")) + "\nno\\x\n"));
}

TEST(FlfsCanonical, AsJson)
{
    workspace work;
    work.make_directory(work.path(u"dir"));
    std::string const dir = utf8(work.path(u"dir"));
    std::string const missing = utf8(work.path(u"no"));
    flfs_result const result = run_flfs_on_disk({"canonical", "--json", dir + "\\.", missing});
    EXPECT_EQ(result.exit_code, 1);
    EXPECT_EQ(result.err, "");
    ordered_json const array = ordered_json::parse(result.out);
    ASSERT_EQ(array.size(), 2u);
    EXPECT_EQ(array[0],
              (ordered_json{{"pathname", dir + "\\."}, {"result", dir}, {"failure", nullptr}}));
    EXPECT_TRUE(array[1].at("result").is_null());
    EXPECT_EQ(array[1].at("failure").at("identifier"), "fl:filesystem:PathNotFound");
}

TEST(FlfsRelative, BetweenDirectories)
{
    workspace work;
    work.make_file(work.path(u"a\\x.txt"));
    work.make_directory(work.path(u"b\\c"));
    EXPECT_EQ(
        run_flfs_on_disk({"relative", utf8(work.path(u"a\\x.txt")), utf8(work.path(u"b\\c"))}),
        printed("..\\..\\a\\x.txt\n"));
}

TEST(FlfsExists, Answers)
{
    workspace work;
    work.make_file(work.path(u"a.txt"));
    std::string const file = utf8(work.path(u"a.txt"));
    std::string const missing = utf8(work.path(u"no"));
    EXPECT_EQ(run_flfs_on_disk({"exists", file, missing}),
              (flfs_result{1, "yes  " + file + "\nno   " + missing + "\n", ""}));
    EXPECT_EQ(run_flfs_on_disk({"exists", file}).exit_code, 0);
    EXPECT_EQ(ordered_json::parse(run_flfs_on_disk({"exists", "--json", missing}).out).at(0),
              (ordered_json{{"pathname", missing}, {"exists", false}, {"failure", nullptr}}));
}

TEST(FlfsSame, Answers)
{
    workspace work;
    work.make_file(work.path(u"a.txt"));
    work.make_file(work.path(u"b.txt"));
    std::string const a = utf8(work.path(u"a.txt"));
    std::string const b = utf8(work.path(u"b.txt"));
    EXPECT_EQ(run_flfs_on_disk({"same", a, utf8(work.root()) + "/./a.txt"}), printed("yes\n"));
    for (std::string const &other : {b, utf8(work.path(u"no"))}) {
        EXPECT_EQ(run_flfs_on_disk({"same", a, other}), (flfs_result{1, "no\n", ""})) << other;
    }
    EXPECT_EQ(ordered_json::parse(run_flfs_on_disk({"same", "--json", a, b}).out),
              (ordered_json{{"pathnames", {a, b}}, {"same", false}, {"failure", nullptr}}));
}

TEST(FlfsSame, NeitherIsThere)
{
    workspace work;
    std::string const one = utf8(work.path(u"no"));
    EXPECT_EQ(run_flfs_on_disk({"same", one, utf8(work.path(u"none"))}),
              refused(1, report_of("PathNotFound", "pathname", {one}, not_there)));
}

TEST(FlfsForms, OfAPathname)
{
    workspace work;
    work.make_directory(work.path(u"dir"));
    std::string const name = utf8(work.root()) + "/dir//../x";
    flfs_result const result = run_flfs_on_disk({"forms", name});
    EXPECT_EQ(result.exit_code, 0) << result.err;
    std::string const whole = utf8(work.path(u"x"));
    EXPECT_EQ(result.out, name +
                              "\n    clean         no\n"
                              "    access form   " +
                              utf8(work.path(u"dir\\..\\x")) + "\n    resolved      " + whole +
                              "\n    with cleanup  " + whole + "\n    bridge        " + whole +
                              "\n");
}

TEST(FlfsForms, AServerHasNoBridge)
{
    flfs_result const result = run_flfs_on_disk({"forms", "--json", "\\\\server"});
    EXPECT_EQ(result.exit_code, 1);
    ordered_json const one = ordered_json::parse(result.out).at(0);
    EXPECT_EQ(one.at("native_access_form"), "\\\\server");
    EXPECT_TRUE(one.at("bridge").is_null());
    EXPECT_EQ(one.at("failure").at("identifier"), "fl:filesystem:InvalidArgument");
}

#if FLFS_SYSTEM_IS_SIMULATED

using simulation::simulated_machine;

TEST(FlfsRelative, BetweenDrivesThereIsNoWay)
{
    simulated_machine machine;
    machine.add_drive(u'D').add_directory(u"D:\\dir");
    EXPECT_EQ(run_flfs_on_disk({"relative", "D:\\dir", "C:\\"}), printed("(empty)\n"));
    EXPECT_EQ(ordered_json::parse(run_flfs_on_disk({"relative", "--json", "D:\\dir", "C:\\"}).out)
                  .at(0)
                  .at("result"),
              "");
}

TEST(FlfsUnc, OnAMappedDrive)
{
    simulated_machine machine;
    machine.add_share(u"server", u"share").map_drive(u'X', u"server", u"share");
    EXPECT_EQ(run_flfs_on_disk({"unc", "X:/dir/a.txt"}),
              printed("\\\\server\\share\\dir\\a.txt\n"));
}

TEST(FlfsUnc, ElsewhereOnlyIfTolerated)
{
    simulated_machine machine;
    EXPECT_EQ(run_flfs_on_disk({"unc", "--tolerant", "C:/dir//a.txt"}).out, "C:\\dir\\a.txt\n");
    EXPECT_EQ(
        run_flfs_on_disk({"unc", "C:/dir//a.txt"}),
        refused(1, report_of("SystemError", "pathname", {"C:\\dir\\a.txt"},
                             "It isn't on a drive that stands for a share. `net use` lists these; "
                             "--tolerant shows the pathname.")));
}

#endif

} // namespace
