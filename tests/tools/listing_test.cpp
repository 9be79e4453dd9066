#include "tools/run_flfs.hpp"

#include <fl/filesystem/queries.hpp>

#include <algorithm>
#include <string>
#include <vector>

namespace {

namespace fs = fl::filesystem;
using namespace test_support;

/// The lines below the heading, in any order, without their times.
std::vector<std::string> lines_of(std::string const &out)
{
    std::vector<std::string> lines;
    for (std::size_t at = out.find('\n') + 1; at < out.size();) {
        std::size_t const end = out.find('\n', at);
        std::string line = out.substr(at, end - at);
        if (std::size_t const clock = line.find("T"); clock != line.npos)
            line.replace(clock - 10, 19, "(time)");
        lines.push_back(line);
        at = end + 1;
    }
    std::sort(lines.begin(), lines.end());
    return lines;
}

/// Times without fractions, so that the columns can be compared.
void make_entries(workspace &work)
{
    work.make_file(work.path(u"dir\\a.txt"), "hello");
    work.make_file(work.path(u"dir\\sub\\b.txt"), std::string(1234, 'b'));
    work.make_directory(work.path(u"dir\\sub\\deep"));
}

TEST(FlfsLs, WhatIsInADirectory)
{
    workspace work;
    make_entries(work);
    std::string const directory = utf8(work.path(u"dir"));
    flfs_result const result = run_flfs_on_disk({"ls", utf8(work.root()) + "/dir"});
    EXPECT_EQ(result.exit_code, 0) << result.err;
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.out.substr(0, directory.size() + 1), directory + '\n');
    EXPECT_EQ(lines_of(result.out),
              (std::vector<std::string>{"    directory                   -  (time)  sub\\",
                                        "    file                        5  (time)  a.txt"}));
}

TEST(FlfsLs, AllBelow)
{
    workspace work;
    make_entries(work);
    for (char const *option : {"-r", "--recursive"}) {
        flfs_result const result = run_flfs_on_disk({"ls", option, utf8(work.path(u"dir"))});
        EXPECT_EQ(result.exit_code, 0) << result.err;
        EXPECT_EQ(
            lines_of(result.out),
            (std::vector<std::string>{"    directory                   -  (time)  sub\\",
                                      "    directory                   -  (time)  sub\\deep\\",
                                      "    file                        5  (time)  a.txt",
                                      "    file                     1234  (time)  "
                                      "sub\\b.txt"}));
    }
}

TEST(FlfsLs, WithoutAPathTheCurrentDirectory)
{
    workspace work;
    make_entries(work);
    work.change_directory(work.path(u"dir\\sub\\deep"));
    EXPECT_EQ(run_flfs_on_disk({"ls"}).out, ".\n");
    EXPECT_EQ(run_flfs_on_disk({"tree"}).out, ".\n");
    work.change_directory(work.root());
}

TEST(FlfsLs, AFailureDoesNotStopIt)
{
    workspace work;
    make_entries(work);
    std::string const missing = utf8(work.path(u"no"));
    std::string const deep = utf8(work.path(u"dir\\sub\\deep"));
    EXPECT_EQ(run_flfs_on_disk({"ls", missing, deep}),
              (flfs_result{1, missing + '\n' + deep + '\n',
                           report_of("PathNotFound", "pathname", {missing}, not_there)}));
}

TEST(FlfsLs, AsJson)
{
    workspace work;
    work.make_file(work.path(u"dir\\a.txt"), "hello");
    fs::last_write_time(work.path(u"dir\\a.txt"),
                        fs::file_time_type(fs::file_time_type::duration(17'000'000'000'000'000)));
    std::string const directory = utf8(work.path(u"dir"));
    std::string const missing = utf8(work.path(u"no"));
    flfs_result const result = run_flfs_on_disk({"ls", "--json", directory, missing});
    EXPECT_EQ(result.exit_code, 1);
    EXPECT_EQ(result.err, "");
    ordered_json const array = ordered_json::parse(result.out);
    ASSERT_EQ(array.size(), 2u);
    EXPECT_EQ(array[0], (ordered_json{{"pathname", directory},
                                      {"entries",
                                       {{{"pathname", directory + "\\a.txt"},
                                         {"name", "a.txt"},
                                         {"type", "regular_file"},
                                         {"size", 5},
                                         {"written", "2023-11-14T22:13:20Z"},
                                         {"leads_to", nullptr}}}},
                                      {"failure", nullptr}}));
    EXPECT_EQ(array[1].at("entries"), ordered_json::array());
    EXPECT_EQ(array[1].at("failure").at("identifier"), "fl:filesystem:PathNotFound");
}

TEST(FlfsTree, IsDrawn)
{
    workspace work;
    work.make_file(work.path(u"dir\\sub\\deep\\c.txt"));
    EXPECT_EQ(
        run_flfs_on_disk({"tree", utf8(work.path(u"dir"))}),
        printed(utf8(work.path(u"dir")) + "\n    sub\\\n        deep\\\n            c.txt\n"));
}

#if FLFS_SYSTEM_IS_SIMULATED

using simulation::flavour;
using simulation::simulated_machine;

TEST(FlfsLs, LinksAreToldAndNotEntered)
{
    simulated_machine machine;
    machine.add_file(u"C:\\dir\\real\\a.txt");
    machine.add_symbolic_link(u"C:\\dir\\link", u"real", flavour::directory);
    machine.add_junction(u"C:\\dir\\to", u"C:\\dir\\real");
    machine.add_symbolic_link(u"C:\\dir\\broken", u"nowhere");
    EXPECT_EQ(lines_of(run_flfs_on_disk({"ls", "-r", "C:\\dir"}).out),
              (std::vector<std::string>{
                  "    directory                   -  (time)  real\\",
                  "    file                        0  (time)  real\\a.txt",
                  "    junction                    -  (time)  to -> C:\\dir\\real",
                  "    symbolic link               -  (time)  broken -> nowhere",
                  "    symbolic link               -  (time)  link -> real",
              }));
    ordered_json const entries =
        ordered_json::parse(run_flfs_on_disk({"ls", "--json", "C:\\dir"}).out).at(0).at("entries");
    for (ordered_json const &entry : entries)
        if (entry.at("name") == "to") {
            EXPECT_EQ(entry.at("type"), "reparse_file");
            EXPECT_EQ(entry.at("leads_to"), "C:\\dir\\real");
        }
}

TEST(FlfsTree, FollowedLinksAreEntered)
{
    simulated_machine machine;
    machine.add_file(u"C:\\real\\a.txt").add_directory(u"C:\\dir");
    machine.add_junction(u"C:\\dir\\to", u"C:\\real");
    EXPECT_EQ(run_flfs_on_disk({"tree", "C:\\dir"}).out, "C:\\dir\n    to -> C:\\real\n");
    EXPECT_EQ(run_flfs_on_disk({"tree", "--follow", "C:\\dir"}).out,
              "C:\\dir\n    to -> C:\\real\n        a.txt\n");
}

TEST(FlfsTree, ALinkThatLeadsBackIsAFailure)
{
    simulated_machine machine;
    machine.add_directory(u"C:\\dir").add_junction(u"C:\\dir\\back", u"C:\\dir");
    flfs_result const result = run_flfs_on_disk({"tree", "--follow", "C:\\dir"});
    EXPECT_EQ(result.exit_code, 1);
    EXPECT_EQ(result.out, "C:\\dir\n    back -> C:\\dir\n");
    EXPECT_EQ(result.err.rfind("flfs: fl:filesystem:SystemError\n  pathname: C:\\dir\\back\n"
                               "  code:     8246\n",
                               0),
              0u)
        << result.err;
}

TEST(FlfsLs, ADirectoryThatMayNotBeListed)
{
    simulated_machine machine;
    machine.add_file(u"C:\\dir\\a\\x").add_file(u"C:\\dir\\b\\y");
    machine.deny(u"C:\\dir\\a", simulation::right::list);
    flfs_result const result = run_flfs_on_disk({"tree", "C:\\dir"});
    EXPECT_EQ(result.exit_code, 1);
    EXPECT_EQ(result.out, "C:\\dir\n    a\\\n");
    EXPECT_EQ(result.err.rfind("flfs: fl:filesystem:AccessDenied\n  pathname: C:\\dir\\a\n", 0), 0u)
        << result.err;
    EXPECT_EQ(run_flfs_on_disk({"tree", "--skip-denied", "C:\\dir"}),
              printed("C:\\dir\n    a\\\n    b\\\n        y\n"));
}

TEST(FlfsLs, NamesThatNoPathnameLeadsTo)
{
    simulated_machine machine;
    machine.add_file(u"\\\\?\\C:\\dir\\stop.").add_file(u"\\\\?\\C:\\dir\\blank ");
    EXPECT_EQ(run_flfs_on_disk({"tree", "C:\\dir"}).out, "C:\\dir\n    \"blank \"\n    stop.\n");
}

#endif

} // namespace
