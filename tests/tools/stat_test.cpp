#include "tools/run_flfs.hpp"

#include <string>

namespace {

using namespace test_support;

TEST(FlfsStat, FileAndDirectory)
{
    workspace work;
    work.make_file(work.path(u"a.cmd"), "12345");
    work.make_directory(work.path(u"dir"));
    flfs_result const result =
        run_flfs_on_disk({"stat", "--json", utf8(work.path(u"a.cmd")), utf8(work.path(u"dir"))});
    EXPECT_EQ(result.exit_code, 0) << result.err;
    EXPECT_EQ(result.err, "");
    ordered_json const array = ordered_json::parse(result.out);
    ASSERT_EQ(array.size(), 2u);
    EXPECT_EQ(array[0].at("pathname"), utf8(work.path(u"a.cmd")));
    EXPECT_EQ(array[0].at("type"), "regular_file");
    EXPECT_EQ(array[0].at("octal"), "0777");
    EXPECT_EQ(array[0].at("letters"), "rwxrwxrwx");
    EXPECT_EQ(array[0].at("size"), 5);
    EXPECT_EQ(array[1].at("type"), "directory_file");
    EXPECT_EQ(array[1].at("octal"), "0666");
}

TEST(FlfsStat, AMissingNameIsAnAnswer)
{
    workspace work;
    for (char const *option : {"--links", "--"}) {
        EXPECT_EQ(run_flfs_on_disk({"stat", option, utf8(work.root()) + "/no"}),
                  (flfs_result{1, utf8(work.path(u"no")) + "\n    type         not found\n", ""}))
            << option;
    }
}

TEST(FlfsStat, TheEmptyPathnameIsNotThere)
{
    EXPECT_EQ(run_flfs_on_disk({"stat", ""}),
              (flfs_result{1, "(empty)\n    type         not found\n", ""}));
}

// the library compares extensions of three units, and only ASCII ones
TEST(FlfsStat, AnExtensionBeyondAsciiIsAFailure)
{
    workspace work;
    std::u16string const name = work.path(u"a.\u00E9\u00E9\u00E9");
    work.make_file(name);
    EXPECT_EQ(
        run_flfs_on_disk({"stat", utf8(name), utf8(work.path(u"no"))}),
        (flfs_result{
            1, utf8(work.path(u"no")) + "\n    type         not found\n",
            "flfs: foundation::ustring::CtypeInvalidCharacter\n"
            "  argument: " +
                utf8(name) +
                "\n"
                "  code:     0\n"
                "  An extension of three characters must be ASCII here. Rename the file.\n"}));
}

#if FLFS_SYSTEM_IS_SIMULATED

using simulation::simulated_machine;
using simulation::times;

// 2026-01-02 03:04:05, 1999-12-31 23:59:59 and 2024-02-29 12:00:00.25
constexpr times some_times = {134117966450000000, 125911583990000000, 133536816002500000};

class FlfsStatRecord : public testing::Test
{
protected:
    FlfsStatRecord()
    {
        machine.add_file(u"C:\\a.txt", "x").set_times(u"C:\\a.txt", some_times);
        machine.set_attributes(u"C:\\a.txt", FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_ARCHIVE |
                                                 FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_HIDDEN |
                                                 FILE_ATTRIBUTE_NOT_CONTENT_INDEXED);
        machine.add_symbolic_link(u"C:\\link", u"a.txt").set_times(u"C:\\link", some_times);
        machine.set_attributes(u"C:\\link", 0);
    }

    simulated_machine machine;
};

char const *const record_lines = R"(    type         file
    permissions  0444 r--r--r--
    attributes   archive, system, hidden, not indexed
    created      2026-01-02T03:04:05Z
    written      2024-02-29T12:00:00.250000Z
    accessed     1999-12-31T23:59:59Z
    size         1 byte
)";

TEST_F(FlfsStatRecord, ForPeople)
{
    EXPECT_EQ(run_flfs_on_disk({"stat", "C:/a.txt", "C:/link"}),
              printed(std::string("C:\\a.txt\n") + record_lines + "C:\\link\n" + record_lines));
}

TEST_F(FlfsStatRecord, OfALinkItself)
{
    EXPECT_EQ(run_flfs_on_disk({"stat", "--links", "C:\\link"}),
              printed("C:\\link\n"
                      "    type         symbolic link\n"
                      "    permissions  0666 rw-rw-rw-\n"
                      "    attributes   (none)\n"
                      "    created      2026-01-02T03:04:05Z\n"
                      "    written      2024-02-29T12:00:00.250000Z\n"
                      "    accessed     1999-12-31T23:59:59Z\n"
                      "    size         0 bytes\n"));
}

TEST_F(FlfsStatRecord, OfAJunctionItself)
{
    machine.add_junction(u"C:\\junction", u"C:\\gone");
    flfs_result const result = run_flfs_on_disk({"stat", "--links", "--json", "C:\\junction"});
    EXPECT_EQ(result.exit_code, 0);
    EXPECT_EQ(ordered_json::parse(result.out).at(0).at("type"), "reparse_file");
    EXPECT_EQ(run_flfs_on_disk({"stat", "C:\\junction"}).out,
              "C:\\junction\n    type         not found\n");
}

TEST_F(FlfsStatRecord, AsJson)
{
    flfs_result const result = run_flfs_on_disk({"stat", "--json", "C:/a.txt", "C:\\no"});
    EXPECT_EQ(result.exit_code, 1);
    EXPECT_EQ(result.err, "");
    ordered_json const expected = {
        {{"pathname", "C:/a.txt"},
         {"type", "regular_file"},
         {"permission_word", "0xF124"},
         {"octal", "0444"},
         {"letters", "r--r--r--"},
         {"attributes", {"archive_file", "system_file", "hidden_file", "non_indexed_file"}},
         {"created", "2026-01-02T03:04:05Z"},
         {"written", "2024-02-29T12:00:00.250000Z"},
         {"accessed", "1999-12-31T23:59:59Z"},
         {"size", 1},
         {"failure", nullptr}},
        {{"pathname", "C:\\no"},
         {"type", "file_not_found"},
         {"permission_word", nullptr},
         {"octal", nullptr},
         {"letters", nullptr},
         {"attributes", nullptr},
         {"created", nullptr},
         {"written", nullptr},
         {"accessed", nullptr},
         {"size", nullptr},
         {"failure", nullptr}}};
    EXPECT_EQ(ordered_json::parse(result.out), expected) << result.out;
}

TEST_F(FlfsStatRecord, Express)
{
    EXPECT_EQ(run_flfs_on_disk({"stat", "--express", "C:\\link"}),
              printed("C:\\link\n"
                      "    type         file\n"
                      "    written      2024-02-29T12:00:00.250000Z\n"
                      "    size         1 byte\n"));
    ordered_json const one =
        ordered_json::parse(run_flfs_on_disk({"stat", "--express", "--json", "C:\\link"}).out)
            .at(0);
    EXPECT_EQ(one.at("type"), "regular_file");
    EXPECT_EQ(one.at("size"), 1);
    EXPECT_TRUE(one.at("permission_word").is_null() && one.at("created").is_null());
    EXPECT_EQ(run_flfs_on_disk({"stat", "--express", "C:\\no"}).exit_code, 1);
}

TEST_F(FlfsStatRecord, OfATarget)
{
    EXPECT_EQ(run_flfs_on_disk({"stat", "--target", "C:\\link"}).out,
              std::string("C:\\link\n") + record_lines);
    machine.add_drive(u'D').add_mount_point(u"C:\\volume", u'D');
    EXPECT_NE(run_flfs_on_disk({"stat", "--target", "C:\\volume"})
                  .out.find("    written      (not known)\n"),
              std::string::npos);
    EXPECT_EQ(run_flfs_on_disk({"stat", "--target", "C:\\a.txt"}),
              refused(1, report_of("InvalidArgument", "argument", {"C:\\a.txt"},
                                   "The file or directory is not a reparse point.")));
}

TEST_F(FlfsStatRecord, ATimeThatTheNotationCanNotHold)
{
    constexpr std::uint64_t last_tick = 2650467743999999999; // of the year 9999
    machine.set_times(u"C:\\link", {last_tick, last_tick + 1, 0});
    flfs_result const result = run_flfs_on_disk({"stat", "--links", "C:\\link"});
    EXPECT_NE(result.out.find("    created      9999-12-31T23:59:59.999999Z\n"
                              "    written      1601-01-01T00:00:00Z\n"
                              "    accessed     (beyond the year 9999)\n"),
              std::string::npos)
        << result.out;
    ordered_json const one =
        ordered_json::parse(run_flfs_on_disk({"stat", "--links", "--json", "C:\\link"}).out).at(0);
    EXPECT_TRUE(one.at("accessed").is_null());
}

TEST_F(FlfsStatRecord, AFailureDoesNotStopIt)
{
    machine.deny(u"C:\\a.txt", simulation::right::read_attributes);
    auto const broken =
        machine.fail_every_call_on_name("GetFileAttributesExW", u"C:\\a.txt", ERROR_ACCESS_DENIED);
    EXPECT_EQ(
        run_flfs_on_disk({"stat", "C:\\a.txt", "C:\\no"}),
        (flfs_result{
            1, "C:\\no\n    type         not found\n",
            report_of(
                "AccessDenied", "pathname", {"C:\\a.txt"},
                "You have no right to do this. Check the permissions, or ask who owns it.")}));
    flfs_result const as_json = run_flfs_on_disk({"stat", "--json", "C:\\a.txt"});
    EXPECT_EQ(as_json.exit_code, 1);
    ordered_json const one = ordered_json::parse(as_json.out).at(0);
    EXPECT_TRUE(one.at("type").is_null() && one.at("size").is_null());
    EXPECT_EQ(one.at("failure").at("identifier"), "fl:filesystem:AccessDenied");
}

#endif

} // namespace
