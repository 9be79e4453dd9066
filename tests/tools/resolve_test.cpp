#include "tools/run_flfs.hpp"

#include <string>

namespace {

using namespace test_support;

flfs_result report(std::vector<std::u16string> const &pathnames, bool as_json = false)
{
    return run_flfs_on_disk("resolve", pathnames, as_json);
}

TEST(FlfsResolve, WithoutAnyLink)
{
    workspace work;
    work.make_file(work.path(u"dir\\file"));
    std::string const file = utf8(work.path(u"dir\\file"));
    std::string const directory = utf8(work.path(u"dir"));
    EXPECT_EQ(report({work.path(u"dir\\file"), work.path(u"dir\\no\\..\\")}),
              printed(file + "\n    ends  " + file + " (file)\n" + //
                      directory + "\n    ends  " + directory + " (directory)\n"));
}

TEST(FlfsResolve, FromTheCurrentDirectory)
{
    workspace work;
    work.make_directory(work.path(u"dir"));
    work.change_directory(work.root());
    std::string const directory = utf8(work.path(u"dir"));
    EXPECT_EQ(report({u"dir"}), printed(directory + "\n    ends  " + directory + " (directory)\n"));
}

TEST(FlfsResolve, EachFailureIsTold)
{
    workspace work;
    std::string const missing = utf8(work.path(u"no"));
    EXPECT_EQ(report({work.path(u"no"), u""}),
              (flfs_result{1, missing + '\n', told_of_missing_and_empty("argument", missing)}));
}

TEST(FlfsResolve, WhatIsNoPathnameToWalk)
{
    for (char16_t const *pathname : {u"\\\\.\\COM1", u"\\\\.\\pipe\\x"}) {
        flfs_result const result = report({pathname});
        EXPECT_EQ(result.exit_code, 1) << utf8(pathname);
        EXPECT_EQ(result.out, utf8(pathname) + '\n');
        EXPECT_NE(result.err.find("flfs: fl:filesystem:InvalidArgument\n"), std::string::npos);
        EXPECT_NE(result.err.find("\n  The path type of the given path is not valid.\n"),
                  std::string::npos)
            << result.err;
    }
}

TEST(FlfsResolve, BeyondTheOldLimit)
{
    workspace work;
    std::u16string const name = work.path(std::u16string(200, u'd') + u'\\' + //
                                          std::u16string(200, u'n'));
    work.make_file(name);
    std::string const shown = utf8(name);
    EXPECT_EQ(report({name}), printed(shown + "\n    ends  \\\\?\\" + shown + " (file)\n"));
}

#if FLFS_SYSTEM_IS_SIMULATED

using simulation::flavour;
using simulation::simulated_machine;

TEST(FlfsResolve, IsRefusedWhereThereIsNoWindows)
{
    for (char const *option : {"--json", "other"}) {
        EXPECT_EQ(run_flfs({"resolve", option, "C:\\link"}),
                  refused(2, "flfs: resolve works on Windows only: there is no Windows file "
                             "system to read here.\n"))
            << option;
    }
}

class FlfsResolveLinks : public testing::Test
{
protected:
    FlfsResolveLinks()
    {
        machine.add_drive(u'D').add_file(u"C:\\dir\\sub\\file").add_file(u"D:\\p\\q\\file");
        machine.add_file(u"D:\\p\\x").add_share(u"server", u"share");
        machine.add_symbolic_link(u"C:\\relative", u"dir", flavour::directory);
        machine.add_symbolic_link(u"C:\\dir\\up", u"../relative/./sub", flavour::directory);
        machine.add_symbolic_link(u"C:\\absolute", u"D:\\p\\q", flavour::directory);
        machine.add_symbolic_link(u"C:\\rooted", u"\\dir\\sub", flavour::directory);
        machine.add_symbolic_link(u"C:\\back", u"absolute\\..\\x");
        machine.add_symbolic_link(u"C:\\drive", u"D:\\", flavour::directory);
        machine.add_symbolic_link(u"C:\\first", u"second", flavour::directory);
        machine.add_symbolic_link(u"C:\\second", u"C:\\third", flavour::directory);
        machine.add_junction(u"C:\\third", u"C:\\dir\\");
        machine.add_junction(u"C:\\unnamed", uR"(\??\D:\p\)", u"");
        machine.add_mount_point(u"C:\\volume", u'D');
        machine.add_shortcut(u"C:\\a.lnk", u"C:\\dir").add_shortcut(u"C:\\b.lnk", u"C:\\a.lnk");
        machine.add_shortcut(u"C:\\plain", u"C:\\dir");
        machine.add_symbolic_link(u"C:\\share", uR"(\\server\share)", flavour::directory);
        machine.add_file(uR"(\\server\share\file)");
        machine.add_symbolic_link(uR"(\\server\share\drive)", u"C:\\dir", flavour::directory);
        machine.add_file(uR"(\\server\share\dir\c)").add_directory(uR"(\\server\share\xy)");
        machine.add_symbolic_link(uR"(\\server\share\xy\near)", u"..\\dir", flavour::directory);
        machine.add_shortcut(uR"(\\server\share\to.lnk)", u"C:\\absolute");
    }

    simulated_machine machine;
};

struct way
{
    char16_t const *pathname;
    char const *lines; ///< behind the one with the pathname
    char const *why;
};

constexpr way ways[] = {
    {uR"(C:\relative\sub\file)",
     "    link  C:\\relative -> dir (symbolic link, relative) => C:\\dir\\sub\\file\n"
     "    ends  C:\\dir\\sub\\file (file)\n",
     "one in the middle"},
    {uR"(C:\relative)",
     "    link  C:\\relative -> dir (symbolic link, relative) => C:\\dir\n"
     "    ends  C:\\dir (directory)\n",
     "one at the end"},
    {uR"(C:\rooted\file)",
     "    link  C:\\rooted -> \\dir\\sub (symbolic link, relative) => C:\\dir\\sub\\file\n"
     "    ends  C:\\dir\\sub\\file (file)\n",
     "from the root in use"},
    {uR"(C:\drive\p\x)",
     "    link  C:\\drive -> D:\\ (symbolic link, absolute) => D:\\p\\x\n"
     "    ends  D:\\p\\x (file)\n",
     "to a root directory"},
    {uR"(C:\drive)",
     "    link  C:\\drive -> D:\\ (symbolic link, absolute) => D:\\\n"
     "    ends  D:\\ (directory)\n",
     "which keeps its separator"},
    {uR"(C:\first\up\file)",
     "    link  C:\\first -> second (symbolic link, relative) => C:\\second\\up\\file\n"
     "    link  C:\\second -> C:\\third (symbolic link, absolute) => C:\\third\\up\\file\n"
     "    link  C:\\third -> C:\\dir\\ (junction) => C:\\dir\\up\\file\n"
     "    link  C:\\dir\\up -> ..\\relative\\.\\sub (symbolic link, relative) => "
     "C:\\dir\\..\\relative\\.\\sub\\file\n"
     "    link  C:\\relative -> dir (symbolic link, relative) => C:\\dir\\.\\sub\\file\n"
     "    ends  C:\\dir\\sub\\file (file)\n",
     "a chain at one element, and one through the text of a link"},
    {uR"(C:\back)",
     "    link  C:\\back -> absolute\\..\\x (symbolic link, relative) => C:\\absolute\\..\\x\n"
     "    link  C:\\absolute -> D:\\p\\q (symbolic link, absolute) => D:\\p\\q\\..\\x\n"
     "    ends  D:\\p\\x (file)\n",
     "a .. in a text climbs from where the link ahead of it leads"},
    {uR"(C:\back\..\absolute\file)",
     "    link  C:\\absolute -> D:\\p\\q (symbolic link, absolute) => D:\\p\\q\\file\n"
     "    ends  D:\\p\\q\\file (file)\n",
     "a .. in the argument is dropped by text"},
    {uR"(C:\unnamed\x)",
     "    link  C:\\unnamed -> D:\\p (junction) => D:\\p\\x\n"
     "    ends  D:\\p\\x (file)\n",
     "the system's own prefix is no part of what it says"},
    {uR"(C:\volume\p\x)", "    ends  C:\\volume\\p\\x (file)\n", "another volume is no link"},
    {uR"(C:\a.lnk\sub\file)",
     "    link  C:\\a.lnk -> C:\\dir (shortcut) => C:\\dir\\sub\\file\n"
     "    ends  C:\\dir\\sub\\file (file)\n",
     "a shortcut in the middle"},
    {uR"(C:\b.lnk)",
     "    link  C:\\b.lnk -> C:\\a.lnk (shortcut) => C:\\a.lnk\n"
     "    link  C:\\a.lnk -> C:\\dir (shortcut) => C:\\dir\n"
     "    ends  C:\\dir (directory)\n",
     "shortcuts at the end"},
    {uR"(C:\plain)", "    ends  C:\\plain (file)\n", "only their extension makes shortcuts"},
    {uR"(C:\share\file)",
     "    link  C:\\share -> \\\\server\\share (symbolic link, absolute) => "
     "\\\\server\\share\\file\n"
     "    ends  \\\\server\\share\\file (file)\n",
     "to a share"},
    {uR"(\\server\share\xy\near\c)",
     "    link  \\\\server\\share\\xy\\near -> ..\\dir (symbolic link, relative) => "
     "\\\\server\\share\\xy\\..\\dir\\c\n"
     "    ends  \\\\server\\share\\dir\\c (file)\n",
     "on a share"},
    {uR"(\\server\share\drive)",
     "    kept  \\\\server\\share\\drive -> C:\\dir (symbolic link, absolute)\n"
     "    ends  \\\\server\\share\\drive (directory)\n",
     "a drive of the server"},
    {uR"(\\server\share\to.lnk)",
     "    link  \\\\server\\share\\to.lnk -> C:\\absolute (shortcut) => C:\\absolute\n"
     "    kept  C:\\absolute -> D:\\p\\q (symbolic link, absolute)\n"
     "    ends  C:\\absolute (directory)\n",
     "a shortcut means our own drive, a link behind it is still read as the server's"},
};

TEST_F(FlfsResolveLinks, ForPeople)
{
    for (way const &row : ways) {
        flfs_result const result = report({row.pathname});
        EXPECT_EQ(result.exit_code, 0) << row.why << '\n' << result.err;
        std::string const first = result.out.substr(0, result.out.find('\n') + 1);
        EXPECT_EQ(result.out.substr(first.size()), row.lines) << row.why;
        EXPECT_EQ(result.err, "") << row.why;
        EXPECT_EQ(machine.open_handles(), 0) << row.why;
        EXPECT_EQ(machine.live_interfaces(), 0) << row.why;
        EXPECT_EQ(machine.com_apartments(), 0) << row.why;
    }
}

TEST_F(FlfsResolveLinks, TheFirstLineIsTheAbsolutePathname)
{
    machine.set_current_directory(u"C:\\dir");
    flfs_result const result = report({u"../relative//sub"});
    EXPECT_EQ(result.exit_code, 0) << result.err;
    EXPECT_EQ(result.out.substr(0, result.out.find('\n')), "C:\\relative\\sub");
}

TEST_F(FlfsResolveLinks, AsJson)
{
    flfs_result const result = report({u"C:/unnamed/x", u"\\\\server\\share\\drive"}, true);
    EXPECT_EQ(result.exit_code, 0) << result.err;
    ordered_json const expected = ordered_json::parse(R"json([
        {"pathname": "C:/unnamed/x", "absolute": "C:\\unnamed\\x",
         "hops": [{"pathname": "C:\\unnamed", "kind": "junction", "text": "D:\\p",
                   "is_kept": false, "goes_on_with": "D:\\p\\x"}],
         "hops_repeat": false, "result": "D:\\p\\x", "found": "file", "failure": null},
        {"pathname": "\\\\server\\share\\drive", "absolute": "\\\\server\\share\\drive",
         "hops": [{"pathname": "\\\\server\\share\\drive", "kind": "symbolic_link_absolute",
                   "text": "C:\\dir", "is_kept": true, "goes_on_with": null}],
         "hops_repeat": false, "result": "\\\\server\\share\\drive", "found": "directory",
         "failure": null}])json");
    EXPECT_EQ(ordered_json::parse(result.out), expected);
}

struct failing_way
{
    char16_t const *pathname;
    char const *lines; ///< behind the one with the pathname
    char const *identifier;
    unsigned int code;
    char const *why;
};

constexpr failing_way failing_ways[] = {
    {uR"(C:\ping\x)",
     "    link  C:\\ping -> pong (symbolic link, relative) => C:\\pong\\x\n"
     "    link  C:\\pong -> ping (symbolic link, relative) => C:\\ping\\x\n"
     "    and round again\n",
     "fl:filesystem:SystemError", 8246, "a loop"},
    {uR"(C:\relative\no)",
     "    link  C:\\relative -> dir (symbolic link, relative) => C:\\dir\\no\n",
     "fl:filesystem:PathNotFound", 0, "a missing end"},
    {uR"(Q:\)", "", "fl:filesystem:PathNotFound", 0, "a drive that isn't there"},
    {uR"(C:\no\relative\x)", "", "fl:filesystem:PathNotFound", 0, "missing in the middle"},
    {uR"(C:\dangling\x)", "    link  C:\\dangling -> no (symbolic link, relative) => C:\\no\\x\n",
     "fl:filesystem:PathNotFound", 0, "a target that is missing"},
    {uR"(C:\useless\x)", "    link  C:\\useless -> \\\\server (symbolic link, absolute)\n",
     "fl:filesystem:InvalidArgument", 0, "a target that can't be one: no share"},
    {uR"(C:\device\x)",
     "    link  C:\\device -> \\\\.\\no (symbolic link, absolute) => C:\\.\\no\\x\n",
     "fl:filesystem:PathNotFound", 0, "the walk has no devices, and reads it as rooted"},
    {uR"(C:\behind\x)",
     "    link  C:\\behind -> plain\\..\\dir (symbolic link, relative) => "
     "C:\\plain\\..\\dir\\x\n",
     "fl:filesystem:PathNotFound", 0, "a .. behind a file"},
};

TEST_F(FlfsResolveLinks, FailuresAfterTheHops)
{
    machine.add_symbolic_link(u"C:\\ping", u"pong").add_symbolic_link(u"C:\\pong", u"ping");
    machine.add_symbolic_link(u"C:\\dangling", u"no");
    machine.add_symbolic_link(u"C:\\useless", uR"(\??\C:\dir)", uR"(\\server)", 0);
    machine.add_symbolic_link(u"C:\\device", uR"(\??\C:\dir)", uR"(\\.\no)", 0);
    machine.add_symbolic_link(u"C:\\behind", u"plain\\..\\dir");
    for (failing_way const &row : failing_ways) {
        std::string const first = utf8(row.pathname) + '\n';
        flfs_result const result = report({row.pathname});
        EXPECT_EQ(result.exit_code, 1) << row.why;
        EXPECT_EQ(result.out, first + row.lines) << row.why;
        ordered_json const one = ordered_json::parse(report({row.pathname}, true).out).at(0);
        EXPECT_EQ(one.at("failure").at("identifier"), row.identifier) << row.why;
        EXPECT_EQ(one.at("failure").at("code"), row.code) << row.why;
        EXPECT_TRUE(one.at("result").is_null() && one.at("found").is_null()) << row.why;
    }
}

TEST_F(FlfsResolveLinks, ALoopThatGrowsEndsAtTheLibrarysLimit)
{
    machine.add_symbolic_link(u"C:\\grow", u"grow\\x");
    flfs_result const result = report({u"C:\\grow"}, true);
    EXPECT_EQ(result.exit_code, 1);
    ordered_json const one = ordered_json::parse(result.out).at(0);
    EXPECT_EQ(one.at("failure").at("code"), 8246);
    EXPECT_EQ(one.at("hops").size(), 100U);
    EXPECT_EQ(one.at("hops_repeat"), false);
}

TEST_F(FlfsResolveLinks, BeyondTheOldLimit)
{
    std::u16string const deep = std::u16string(200, u'd') + u'\\' + std::u16string(200, u'n');
    machine.add_file(u"D:\\" + deep + u"\\far").add_file(u"C:\\" + deep + u"\\file");
    machine.add_symbolic_link(u"C:\\" + deep + u"\\link", u"D:\\" + deep, flavour::directory);
    machine.add_symbolic_link(u"C:\\" + deep + u"\\near", u"file");
    std::string const name = utf8(deep);
    EXPECT_EQ(report({u"C:\\" + deep + u"\\link\\far"}).out,
              "C:\\" + name + "\\link\\far\n    link  C:\\" + name + "\\link -> D:\\" + name +
                  " (symbolic link, absolute) => D:\\" + name + "\\far\n    ends  \\\\?\\D:\\" +
                  name + "\\far (file)\n");
    EXPECT_EQ(report({u"C:\\" + deep + u"\\near"}).out,
              "C:\\" + name + "\\near\n    link  C:\\" + name +
                  "\\near -> file (symbolic link, relative) => C:\\" + name +
                  "\\file\n    ends  \\\\?\\C:\\" + name + "\\file (file)\n");
}

#else

// The program itself: its arguments come to the command.
TEST(FlfsResolve, RunsAsACommand)
{
    workspace work;
    flfs_result const result = run_flfs({"resolve", "--json", utf8(work.path(u"no"))});
    EXPECT_EQ(result.exit_code, 1);
    EXPECT_EQ(ordered_json::parse(result.out).at(0).at("failure").at("identifier"),
              "fl:filesystem:PathNotFound");
}

#endif

} // namespace
