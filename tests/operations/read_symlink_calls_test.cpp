// Reading links on the simulated machine: what comes back, by which calls, and what
// becomes of each call that fails.

#include <fl/filesystem.hpp>

#include "links/reparse_bytes.hpp"
#include "support/calls.hpp"
#include "support/translation.hpp"

namespace fl::filesystem::tests {
namespace {

/// A junction or a link at `C:\link`, by its names.
struct text_case
{
    std::uint32_t tag;
    char16_t const *substitute, *print;
    std::uint32_t flags;
    char16_t const *text;
    char const *why;
};

constexpr text_case text_cases[] = {
    {symlink_tag, uR"(..\x)", uR"(..\x)", 1, uR"(..\x)", "a relative link stays relative"},
    {symlink_tag, uR"(../x)", uR"(../x)", 1, uR"(..\x)", "in native form"},
    {symlink_tag, uR"(\??\C:\x)", uR"(C:\x)", 0, uR"(C:\x)", "an absolute link"},
    {symlink_tag, uR"(\??\C:\x)", uR"(C:\\x\\y\\)", 0, uR"(C:\x\y)", "runs of backslashes"},
    {symlink_tag, uR"(\??\C:\x)", u"", 0, uR"(\??\C:\x)", "no print name: its prefix stays"},
    {symlink_tag, u"a", u"b", 1, u"b", "the print name wins"},
    {symlink_tag, uR"(\??\C:\x)", uR"(\\?\C:\x)", 0, uR"(C:\x)", "native form has no long prefix"},
    {symlink_tag, u"", u"", 1, u"", "no name at all"},
    {mount_point_tag, uR"(\??\C:\dir\)", uR"(C:\dir)", 0, uR"(C:\dir)", "a junction"},
    {mount_point_tag, uR"(\??\C:\dir\)", uR"(C:\dir\)", 0, uR"(C:\dir)", "no backslash at its end"},
    {mount_point_tag, uR"(\??\C:\x\)", u"", 0, uR"(\??\C:\x)", "no print name: its prefix stays"},
    {mount_point_tag, uR"(\??\Volume{1}\)", u"", 0, uR"(\??\Volume{1})", "the volume's name"},
    {mount_point_tag, uR"(\??\Volume)", u"", 0, uR"(\??\Volume)", "not even that of a volume"},
};

std::string body_of(text_case const &row)
{
    return row.tag == symlink_tag
               ? simulation::symbolic_link_data(row.substitute, row.print, row.flags)
               : simulation::mount_point_data(row.substitute, row.print);
}

TEST_ON_MACHINE(ReadSymlinkText, Table)
{
    for (text_case const &row : text_cases) {
        simulated_machine fresh;
        fresh.add_reparse_point(u"C:\\link", row.tag, body_of(row), flavour::directory);
        EXPECT_EQ(read_symlink(u"C:\\link"), row.text) << row.why;
        upath const result = read_symlink(upath(u"C:\\link"));
        EXPECT_EQ(result.native(), row.text) << row.why;
        EXPECT_TRUE(result.form_flag()) << row.why;
        EXPECT_EQ(fresh.open_handles(), 0) << row.why;
    }
}

// The two readings differ in what they make of the system's own name.
TEST_ON_MACHINE(ReadSymlinkText, KeepsThePrefixThatTheOtherReadingStrips)
{
    machine.add_junction(u"C:\\link", uR"(\??\C:\x\)", u"");
    EXPECT_EQ(read_symlink(u"C:\\link"), uR"(\??\C:\x)");
    auto link_type = detail::windows::link_type_none;
    EXPECT_EQ(detail::windows::get_target_path_bridge(
                  link_type, data_of(mount_point_tag, uR"(\??\C:\x\)", u"")),
              L"C:\\x");
}

TEST_ON_MACHINE(ReadSymlinkText, OfLinksAsTheSystemMakesThem)
{
    machine.add_drive(u'D').add_directory(u"C:\\dir").set_current_directory(u"C:\\dir");
    machine.add_symbolic_link(u"C:\\dir\\up", u"..\\x", flavour::directory);
    machine.add_symbolic_link(u"C:\\dir\\abs", u"C:\\x");
    machine.add_junction(u"C:\\dir\\junction", u"C:\\dir\\");
    machine.add_mount_point(u"C:\\dir\\volume", u'D');
    EXPECT_EQ(read_symlink(u"up"), u"..\\x");
    EXPECT_EQ(read_symlink(u"abs"), u"C:\\x");
    EXPECT_EQ(read_symlink(u"junction"), u"C:\\dir");
    EXPECT_EQ(read_symlink(u"volume").rfind(uR"(\??\Volume{)", 0), 0U);
}

TEST_ON_MACHINE(ReadSymlinkCalls, ExpandOpenReadClose)
{
    machine.add_symbolic_link(u"C:\\dir\\link", u"x").set_current_directory(u"C:\\dir");
    EXPECT_EQ(read_symlink(u"link"), u"x");
    EXPECT_EQ(
        calls_with_arguments(machine),
        (lines{"GetFullPathNameW(link)",
               R"(CreateFileW(C:\dir\link) access 80 share 7 disposition 3 flags 2200000)",
               R"(DeviceIoControl(C:\dir\link) flags 900A8)", R"(CloseHandle(C:\dir\link))"}));
}

TEST_ON_MACHINE(ReadSymlinkCalls, NoneForTheEmptyPath)
{
    EXPECT_EQ(read_symlink(u""), u"");
    EXPECT_EQ(machine.journal().size(), 0U);
}

TEST_ON_MACHINE(ReadSymlinkCalls, CarryAPrefixBeyondTheLimit)
{
    std::u16string const name = u"C:\\" + std::u16string(245, u'n'); // 248 units
    machine.add_symbolic_link(name, u"x");
    EXPECT_EQ(read_symlink(name), u"x");
    EXPECT_EQ(machine.journal().at(1).text, uR"(\\?\)" + name);
    machine.remove(name);
    machine.clear_journal();
    EXPECT_FAILURE(read_symlink(name), not_found(name)) << "without the prefix";
}

TEST_ON_MACHINE(ReadSymlinkCalls, AnyCodeNamesTheCallersPath)
{
    std::u16string const given = u"link";
    for (char const *const function : {"CreateFileW", "DeviceIoControl"}) {
        for (DWORD const code : {2U, 3U, 5U, 32U, 123U, 234U, 1920U, 4390U}) {
            simulated_machine fresh;
            fresh.add_symbolic_link(u"C:\\link", u"x");
            sure_fault const fault = fresh.fail_every_call_on(function, code);
            auto const expected = translated(code, given);
            EXPECT_FAILURE(read_symlink(given), expected) << function << code;
            EXPECT_FAILURE(read_symlink(upath(given)), expected) << function;
            EXPECT_EQ(fresh.open_handles(), 0) << function << ' ' << code;
        }
    }
}

TEST_ON_MACHINE(ReadSymlinkCalls, OtherTagsAreInvalid)
{
    for (std::uint32_t const tag : {dedup_tag, dfs_tag, std::uint32_t{0x80000123}}) {
        simulated_machine fresh;
        fresh.add_reparse_point(u"C:\\a", tag, "0123456789abcdef0123", flavour::directory);
        EXPECT_FAILURE(read_symlink(u"C:\\a"), system_error(4393, u"C:\\a")) << tag;
        EXPECT_EQ(fresh.open_handles(), 0);
    }
}

TEST_ON_MACHINE(ReadSymlinkCalls, AShortcutIsNoLink)
{
    machine.add_shortcut(u"C:\\a.lnk", u"C:\\x");
    EXPECT_FAILURE(read_symlink(u"C:\\a.lnk"),
                   invalid_argument("The file or directory is not a reparse point."));
}

TEST_ON_MACHINE(ReadSymlinkCalls, EachCallThatFails)
{
    // expansion, opening, reading, closing
    maybe_failure const reported = system_error(1117, u"C:\\link");
    auto const build = [](simulated_machine &fresh) { fresh.add_symbolic_link(u"C:\\link", u"x"); };
    EXPECT_EQ(failures_of_each_call(build, [] { read_symlink(u"C:\\link"); }),
              (failures{reported, reported, reported, {}}));
}

} // namespace
} // namespace fl::filesystem::tests
