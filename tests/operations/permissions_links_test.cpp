// Changing attributes through links, local and on networks, on the simulated machine.

#include <fl/filesystem.hpp>

#include "access/walking.hpp"
#include "operations/hidden_names.hpp"
#include "status/changed_attributes.hpp"
#include "support/calls.hpp"
#include "support/translation.hpp"

namespace fl::filesystem::tests {
namespace {

constexpr unsigned int hides = adds | 0x4000;
constexpr unsigned int shows = removes | 0x4000;

constexpr text_row<char16_t> link_cases[] = {
    {u"C:\\file-link", u"C:\\t", "a symbolic link"},
    {u"C:\\full-link", u"C:\\t", "with a full pathname"},
    {u"C:\\dots", u"C:\\t", "a text that is walked"},
    {u"C:\\dir-link", u"C:\\d", "a symbolic link to a directory"},
    {u"C:\\junction", u"C:\\d", "a junction"},
    {u"C:\\second", u"C:\\file-link", "a link to a link: one hop only"},
    {u"C:\\third", u"C:\\second", "one hop only"},
    {u"C:\\to-junction", u"C:\\junction", "a link to a junction: one hop only"},
    {u"C:\\round", u"C:\\round", "to itself, one hop, and no limit is met"},
    {u"C:\\volume", u"C:\\volume", "a volume mount point stands for itself"},
    {u"C:\\to-volume", u"C:\\volume", "a link to one"},
    {u"C:\\sparse", u"C:\\sparse", "a sparse link isn't seen to be one"},
    {u"C:\\dedup", u"C:\\dedup", "a deduplicated file"},
    {u"C:\\short.lnk", u"C:\\short.lnk", "a shortcut is a file"},
    {u"C:\\to-share", u"\\\\s\\h\\t", "to a share"},
    {u"C:\\to-mapped", u"\\\\s\\h\\t", "to a mapped drive"},
    {u"C:\\to-share-link", u"\\\\s\\h\\link", "one hop only, there too"},
    {u"\\\\s\\h\\link", u"\\\\s\\h\\t", "on a share links are followed, too"},
    {u"\\\\s\\h\\second", u"\\\\s\\h\\link", "one hop only, there too"},
    {u"\\\\s\\h\\local", u"C:\\t", "a drive is taken for one of this machine"},
    {u"\\\\s\\h\\junction", u"C:\\d", "in a junction, too"},
    {u"X:\\link", u"\\\\s\\h\\t", "on a mapped drive"},
    {u"X:\\local", u"C:\\t", "on a mapped drive"},
};

void build(simulated_machine &machine)
{
    machine.add_drive(u'D').add_share(u"s", u"h").map_drive(u'X', u"s", u"h").keep_journal(false);
    machine.add_file(u"C:\\t").add_directory(u"C:\\d").add_file(u"\\\\s\\h\\t");
    machine.add_symbolic_link(u"C:\\file-link", u"t").add_symbolic_link(u"C:\\full-link", u"C:\\t");
    machine.add_symbolic_link(u"C:\\dots", u"d\\..\\.\\t").add_junction(u"C:\\junction", u"C:\\d");
    machine.add_symbolic_link(u"C:\\dir-link", u"d", flavour::directory);
    machine.add_symbolic_link(u"C:\\second", u"file-link");
    machine.add_symbolic_link(u"C:\\third", u"second").add_symbolic_link(u"C:\\round", u"round");
    machine.add_symbolic_link(u"C:\\to-junction", u"junction", flavour::directory);
    machine.add_mount_point(u"C:\\volume", u'D').add_deduplicated_file(u"C:\\dedup", "1");
    machine.add_symbolic_link(u"C:\\to-volume", u"volume", flavour::directory);
    machine.add_symbolic_link(u"C:\\sparse", u"t").set_attributes(u"C:\\sparse", 0x200);
    machine.add_shortcut(u"C:\\short.lnk", u"C:\\t");
    machine.add_symbolic_link(u"C:\\to-share", u"\\\\s\\h\\t");
    machine.add_symbolic_link(u"C:\\to-mapped", u"X:\\t");
    machine.add_symbolic_link(u"C:\\to-share-link", u"\\\\s\\h\\link");
    machine.add_symbolic_link(u"\\\\s\\h\\link", u"t")
        .add_symbolic_link(u"\\\\s\\h\\second", u"link");
    machine.add_symbolic_link(u"\\\\s\\h\\local", u"C:\\t");
    machine.add_junction(u"\\\\s\\h\\junction", u"C:\\d");
    for (auto const &row : link_cases)
        if (row.text[0] != u'X')
            machine.set_attributes(row.text, machine.attributes(row.text) & 0x200);
}

/// On all disks of the table.
lines all_hidden_names(simulated_machine const &machine)
{
    return hidden_names(machine, {u"C:\\", u"D:\\", u"\\\\s\\h\\"});
}

TEST_ON_MACHINE(PermissionsLinks, EachOfThem)
{
    for (auto const &row : link_cases) {
        simulated_machine fresh;
        build(fresh);
        permissions(row.text, hides);
        EXPECT_EQ(all_hidden_names(fresh), lines{printable(row.expected)}) << row.why;
        permissions(upath(row.text), shows);
        EXPECT_EQ(all_hidden_names(fresh), lines{}) << row.why;
        expect_nothing_open(fresh, row.why);
    }
}

TEST_ON_MACHINE(PermissionsLinks, EachOfThemItself)
{
    for (auto const &row : link_cases) {
        simulated_machine fresh;
        build(fresh);
        permissions(row.text, hides | on_the_link);
        std::u16string path = row.text;
        if (path.starts_with(u"X:"))
            path.replace(0, 2, u"\\\\s\\h");
        EXPECT_EQ(all_hidden_names(fresh), lines{printable(path)}) << row.why;
        permissions(row.text, on_the_link);
        EXPECT_EQ(fresh.attributes(path) & 0x2027, 1U) << "replaced by no bits: " << row.why;
        EXPECT_EQ(all_hidden_names(fresh), lines{}) << row.why;
    }
}

TEST_ON_MACHINE(PermissionsLinks, ThatLeadNowhere)
{
    machine.add_symbolic_link(u"C:\\broken", u"no").add_junction(u"C:\\round", u"C:\\no");
    machine.add_symbolic_link(u"C:\\drive", u"x", u"C:x", 0);
    machine.add_symbolic_link(u"C:\\device", u"x", u"\\\\.\\COM1", 0);
    machine.add_symbolic_link(u"C:\\loop", u"loop").add_symbolic_link(u"C:\\walk", u".\\loop");
    machine.add_symbolic_link(u"C:\\bad", u"a<b").add_symbolic_link(u"C:\\far", u"\\\\gone\\h\\f");
    failing_row<char16_t const *> const cases[] = {
        {u"C:\\broken", not_found(uR"(\\?\C:\no)"), "a broken link"},
        {u"C:\\round", not_found(uR"(\\?\C:\no)"), "a broken junction"},
        {u"C:\\drive", not_found(u""), "the current directory of a drive"},
        {u"C:\\device", invalid_argument("Invalid Path Type"), "a device"},
        {u"C:\\walk", too_many_links(uR"(\\?\C:\loop)"), "a walk that meets a loop"},
        {u"C:\\bad", translated(123, u""), "a name that no disk takes"},
        {u"C:\\far", system_error(53, uR"(\\?\UNC\gone\h\f)"), "a server that isn't there"},
    };
    expect_failures(cases, [](auto given) { permissions(given, hides); });
    expect_failures(cases, [](auto given) { permissions(upath(given), hides); });
    EXPECT_EQ(hidden_names(machine), lines{});
}

/// What a link without a text is reported as: by the last error, whatever left it.
test_support::failure no_text(unsigned int code, std::u16string const &path)
{
    return {fsys_excp_system_error, "fl:filesystem:SystemError", path, {}, code};
}

TEST_ON_MACHINE(PermissionsLinks, WithoutAText)
{
    machine.add_symbolic_link(u"C:\\l", u"", u"", 1).add_junction(u"C:\\j", uR"(\??\)", u"");
    for (std::u16string const path : {u"C:\\l", u"C:\\j"}) {
        EXPECT_FAILURE(permissions(path, hides), no_text(simulation::stale_last_error, path));
        EXPECT_EQ(hidden_names(machine), lines{});
        permissions(path, hides | on_the_link);
        EXPECT_EQ(hidden_names(machine), lines{printable(path)}) << "itself it can be changed";
        permissions(path, on_the_link);
    }
}

// The link is looked at twice, and the second time there may be none.
TEST_ON_MACHINE(PermissionsLinks, ThatCannotBeReadASecondTime)
{
    machine.add_file(u"C:\\t").add_symbolic_link(u"C:\\l", u"t");
    for (DWORD const code : {0U, 2U, 3U, 5U, 32U, 4390U}) {
        sure_fault const fault = machine.fail_call("CreateFileW", 2, code);
        EXPECT_FAILURE(permissions(u"C:\\l", hides), no_text(code, u"C:\\l"));
        EXPECT_EQ(hidden_names(machine), lines{});
    }
}

TEST_ON_MACHINE(PermissionsLinks, ThatBecomeAFileInTheMeantime)
{
    machine.add_file(u"C:\\t").add_symbolic_link(u"C:\\l", u"t");
    auto const fault = machine.before_call("GetFileAttributesExW", 2,
                                           [&] { machine.remove(u"C:\\l").add_file(u"C:\\l"); });
    auto const seen = failure_of([] { permissions(u"C:\\l", hides); });
    ASSERT_TRUE(fault.fired() && seen.has_value());
    EXPECT_EQ(seen, no_text(seen->error_code, u"C:\\l"));
    EXPECT_EQ(hidden_names(machine), lines{});
}

TEST_ON_MACHINE(PermissionsLinks, AnExtensionBeyondAsciiIsThatOfTheLink)
{
    machine.add_file(u"C:\\t").add_file(u"C:\\bad.\u00E9xe");
    machine.add_symbolic_link(u"C:\\l.\u00E9xe", u"t").add_symbolic_link(u"C:\\l", u"bad.\u00E9xe");
    using foundation::ustring::CtypeInvalidCharacter;
    EXPECT_THROW(permissions(u"C:\\l.\u00E9xe", hides), CtypeInvalidCharacter);
    EXPECT_THROW(permissions(u"C:\\l.\u00E9xe", hides | on_the_link), CtypeInvalidCharacter);
    EXPECT_EQ(hidden_names(machine), lines{});
    permissions(u"C:\\l", hides);
    EXPECT_EQ(hidden_names(machine), lines{printable(u"C:\\bad.\u00E9xe")})
        << "nobody looks at the target's";
}

} // namespace
} // namespace fl::filesystem::tests
