// What a caller can do with links and with what they lead to, with names on a network and
// with what others keep from it, on the simulated machine.

#include <fl/filesystem.hpp>

#include "access/walking.hpp"
#include "links/reparse_bytes.hpp"
#include "operations/access_answers.hpp"
#include "support/calls.hpp"

namespace fl::filesystem::tests {
namespace {

constexpr std::uint32_t unknown_tag = 0x80000123; // Microsoft's by its number, and nobody's
constexpr std::uint32_t handled_tag = dfs_tag;
constexpr char const *unknown_data = "0123456789abcdef0123";

constexpr row_of<char16_t const *, char const *> local_cases[] = {
    {u"C:\\to-text", cannot_run, "a symbolic link to a file"},
    {u"C:\\to-tool", can_all, "what it leads to runs, whatever its own name"},
    {u"C:\\link.exe", cannot_run, "its own name runs, and that doesn't count"},
    {u"C:\\again.cmd", can_all, "two links to a program"},
    {u"C:\\to-locked", cannot_write, "a link to a read-only program"},
    {u"C:\\locked-link", can_all, "a read-only link to one that is not"},
    {u"C:\\relative", can_all, "taken from the link's own directory"},
    {u"C:\\dots", can_all, "a text that is walked"},
    {u"C:\\to-dir", cannot_run, "a symbolic link to a directory"},
    {u"C:\\odd-dir", cannot_run, "one of the other flavour, which the system won't follow"},
    {u"C:\\to-locked-dir", cannot_run, "a link to a read-only directory"},
    {u"C:\\junction", cannot_run, "a junction"},
    {u"C:\\junction.exe", cannot_run, "a directory never runs"},
    {u"C:\\to-junction", cannot_run, "a link to a junction"},
    {u"C:\\volume", cannot_run, "a volume mount point stands for itself"},
    {u"C:\\locked-volume", cannot_run, "a read-only one is a directory"},
    {u"C:\\lost-volume", can_nothing, "one that nothing can be opened behind, but it is there"},
    {u"C:\\to-volume", cannot_run, "a link to a volume mount point"},
    {u"C:\\broken", is_missing, "a broken symbolic link"},
    {u"C:\\broken2", is_missing, "one into a missing directory"},
    {u"C:\\broken.exe", is_missing, "whatever its name"},
    {u"C:\\no-junction", is_missing, "a broken junction"},
    {u"C:\\to-broken", is_missing, "a link to a broken link"},
    {u"C:\\no-text", is_missing, "a symbolic link without a text"},
    {u"C:\\no-text2", is_missing, "a junction without one"},
    {u"C:\\drive-text", is_missing, "a text that leads nowhere"},
    {u"C:\\dedup.exe", can_all, "a deduplicated file"},
    {u"C:\\handled", cannot_run, "a tag that a filter handles"},
    {u"C:\\handled-dir", cannot_run, "the same, a directory"},
    {u"C:\\unhandled.exe", can_nothing, "a tag that nobody handles can't be opened"},
    {u"C:\\sparse.exe", can_all, "a sparse link answers by its own name"},
    {u"C:\\sparse-locked.exe", cannot_write, "and by its own attributes"},
    {u"C:\\sparse-broken", can_nothing, "and isn't looked behind: it is there"},
    {u"C:\\to-invalid", has_invalid_character, "what it leads to has such an extension"},
    {u"C:\\valid.b\u00E9x", cannot_run, "that of the link itself doesn't count"},
    {u"C:\\short.lnk", cannot_run, "a shortcut is a file"},
    {u"C:\\to-share", can_all, "a program on a share"},
    {u"C:\\to-mapped", can_all, "a program on a mapped drive"},
    {u"C:\\to-share-link", can_nothing, "a link there, which isn't followed any further"},
    {u"C:\\to-refused", is_missing, "a name that no disk takes"},
};

void build_symbolic_links(simulated_machine &machine)
{
    machine.add_symbolic_link(u"C:\\to-text", u"t.txt")
        .add_symbolic_link(u"C:\\relative", u"t.exe");
    machine.add_symbolic_link(u"C:\\to-tool", u"C:\\t.exe");
    machine.add_symbolic_link(u"C:\\link.exe", u"t.txt");
    machine.add_symbolic_link(u"C:\\again.cmd", u"to-tool");
    machine.add_symbolic_link(u"C:\\to-locked", u"locked.exe");
    machine.add_symbolic_link(u"C:\\locked-link", u"t.exe").set_attributes(u"C:\\locked-link", 1);
    machine.add_symbolic_link(u"C:\\dots", u"dir\\..\\.\\t.exe");
    machine.add_symbolic_link(u"C:\\to-dir", u"dir", flavour::directory);
    machine.add_symbolic_link(u"C:\\odd-dir", u"dir", flavour::file);
    machine.add_symbolic_link(u"C:\\to-locked-dir", u"locked-dir", flavour::directory);
    machine.add_symbolic_link(u"C:\\to-junction", u"junction", flavour::directory);
    machine.add_symbolic_link(u"C:\\to-volume", u"volume", flavour::directory);
    machine.add_symbolic_link(u"C:\\broken", u"no").add_symbolic_link(u"C:\\broken2", u"no\\no");
    machine.add_symbolic_link(u"C:\\broken.exe", u"no.exe");
    machine.add_symbolic_link(u"C:\\to-broken", u"broken");
    machine.add_symbolic_link(u"C:\\no-text", u"", u"", 1);
    machine.add_symbolic_link(u"C:\\drive-text", u"x", u"C:x", 0);
    machine.add_symbolic_link(u"C:\\to-invalid", u"bad.b\u00E9x");
    machine.add_symbolic_link(u"C:\\valid.b\u00E9x", u"t.txt");
    machine.add_symbolic_link(u"C:\\to-share", u"\\\\s\\h\\t.exe");
    machine.add_symbolic_link(u"C:\\to-mapped", u"X:\\t.exe");
    machine.add_symbolic_link(u"C:\\to-share-link", u"\\\\s\\h\\link.exe");
    machine.add_symbolic_link(u"C:\\to-refused", u"a<b");
}

void build_others(simulated_machine &machine)
{
    machine.add_junction(u"C:\\junction", u"C:\\dir").add_junction(u"C:\\junction.exe", u"C:\\dir");
    machine.add_junction(u"C:\\no-junction", u"C:\\no")
        .add_junction(u"C:\\no-text2", uR"(\??\)", u"");
    machine.add_mount_point(u"C:\\volume", u'D').add_mount_point(u"C:\\locked-volume", u'D');
    machine.set_attributes(u"C:\\locked-volume", 1);
    machine.add_drive(u'E').add_mount_point(u"C:\\lost-volume", u'E').remove_drive(u'E');
    machine.add_deduplicated_file(u"C:\\dedup.exe", "1").handle_tag(handled_tag);
    machine.add_reparse_point(u"C:\\handled", handled_tag, unknown_data);
    machine.add_reparse_point(u"C:\\handled-dir", handled_tag, unknown_data, flavour::directory);
    machine.add_reparse_point(u"C:\\unhandled.exe", unknown_tag, unknown_data);
    machine.add_symbolic_link(u"C:\\sparse.exe", u"t.txt").set_attributes(u"C:\\sparse.exe", 0x200);
    machine.add_symbolic_link(u"C:\\sparse-locked.exe", u"t.txt");
    machine.set_attributes(u"C:\\sparse-locked.exe", 0x201);
    machine.add_symbolic_link(u"C:\\sparse-broken", u"no");
    machine.set_attributes(u"C:\\sparse-broken", 0x200);
    machine.add_shortcut(u"C:\\short.lnk", u"C:\\t.exe");
}

void build(simulated_machine &machine)
{
    machine.add_drive(u'D').add_share(u"s", u"h").map_drive(u'X', u"s", u"h");
    machine.add_file(u"C:\\t.txt").add_file(u"C:\\t.exe").add_file(u"C:\\locked.exe");
    machine.set_attributes(u"C:\\locked.exe", 1).add_file(u"C:\\bad.b\u00E9x");
    machine.add_directory(u"C:\\dir").add_directory(u"C:\\locked-dir");
    machine.set_attributes(u"C:\\locked-dir", 1);
    machine.add_file(u"\\\\s\\h\\t.exe").add_file(u"\\\\s\\h\\t.txt").add_directory(u"\\\\s\\h\\d");
    machine.add_file(u"\\\\s\\h\\locked.exe").set_attributes(u"\\\\s\\h\\locked.exe", 1);
    machine.add_symbolic_link(u"\\\\s\\h\\link.exe", u"t.txt");
    machine.add_symbolic_link(u"\\\\s\\h\\broken", u"no");
    machine.add_junction(u"\\\\s\\h\\junction", u"C:\\dir");
    build_symbolic_links(machine);
    build_others(machine);
}

TEST_ON_MACHINE(AccessLinks, EachObjectInEachMode)
{
    build(machine);
    expect_rows(local_cases, [](auto const &given) { return access_signs(given); });
}

TEST_ON_MACHINE(AccessNetwork, EachObjectInEachMode)
{
    constexpr row_of<char16_t const *, char const *> cases[] = {
        {u"t.exe", can_all, "a program"},
        {u"t.txt", cannot_run, "a text"},
        {u"locked.exe", cannot_write, "a read-only program"},
        {u"d", cannot_run, "a directory"},
        {u"", cannot_run, "the root"},
        {u"no.exe", is_missing, "a missing name"},
        {u"no\\no", is_missing, "in a missing directory"},
        {u"link.exe", can_nothing, "a link, which the system follows no more than we do"},
        {u"broken", can_nothing, "a broken link is there itself"},
        {u"junction", can_nothing, "a junction to a disk of the server"},
    };
    build(machine);
    for (char16_t const *root : {u"\\\\s\\h\\", u"X:\\"}) {
        for (auto const &row : cases)
            EXPECT_EQ(access_signs(std::u16string(root) + row.given), row.expected)
                << printable(root) << ": " << row.why;
    }
}

// The link's own name and attributes answer, and the system opens what it leads to.
TEST_ON_MACHINE(AccessNetwork, WhereTheSystemFollowsLinks)
{
    build(machine);
    machine.follow_remote_links();
    for (char16_t const *root : {u"\\\\s\\h\\", u"X:\\"}) {
        std::u16string const link = std::u16string(root) + u"link.exe";
        EXPECT_EQ(access_signs(link), can_all) << "a text behind a name that runs";
        machine.set_attributes(u"\\\\s\\h\\link.exe", 1);
        EXPECT_EQ(access_signs(link), cannot_write) << "a read-only link";
        machine.set_attributes(u"\\\\s\\h\\link.exe", 0);
        EXPECT_EQ(access_signs(std::u16string(root) + u"broken"), can_nothing);
    }
}

TEST_ON_MACHINE(AccessNetwork, WhoIsNotReached)
{
    machine.add_share(u"s", u"h").add_dead_server(u"dead");
    EXPECT_EQ(access_signs(u"\\\\dead\\h\\f"), is_missing) << "code 53";
    EXPECT_EQ(access_signs(u"\\\\unknown\\h\\f"), is_missing) << "code 53";
    for (unsigned int mode = 1; mode <= 15; ++mode)
        EXPECT_FAILURE(access(u"\\\\s\\other\\f", mode), system_error(67, u"\\\\s\\other\\f"))
            << "a share that isn't there";
}

struct denied_case
{
    char16_t const *path, *denied_at;
    right denied;
    char const *expected;
    char const *why;
};

constexpr denied_case denied_cases[] = {
    {u"C:\\f.exe", u"C:\\f.exe", right::read_attributes, is_denied, "no look at it"},
    {u"C:\\d\\f.exe", u"C:\\d", right::traverse, is_denied, "no way to it"},
    {u"C:\\d\\no", u"C:\\d", right::traverse, is_denied, "nobody knows"},
    {u"C:\\f.exe", u"C:\\f.exe", right::read, cannot_read, "a file"},
    {u"C:\\f.txt", u"C:\\f.txt", right::read, cannot_read_or_run, "a file"},
    {u"C:\\f.exe", u"C:\\f.exe", right::read_extended_attributes, cannot_read, "in GENERIC_READ"},
    {u"C:\\f.exe", u"C:\\f.exe", right::write, cannot_write, "its attributes"},
    {u"C:\\f.txt", u"C:\\f.txt", right::write, cannot_write_or_run, "its attributes"},
    {u"C:\\f.exe", u"C:\\f.exe", right::traverse, cannot_run, "executing"},
    {u"C:\\f.exe", u"C:\\f.exe", right::remove, can_all, "nobody asks for that"},
    {u"C:\\f.exe", u"C:\\f.exe", right::list, can_all, "a right on directories"},
    {u"C:\\f.b\u00E9x", u"C:\\f.b\u00E9x", right::read, "CffCCffCCffCCff", "only once opened"},
    {u"C:\\d", u"C:\\d", right::read_attributes, is_denied, "no look at it"},
    {u"C:\\d", u"C:\\d", right::list, cannot_read_or_run, "the names in it"},
    {u"C:\\d", u"C:\\d", right::read, cannot_run, "a right on files"},
    {u"C:\\d", u"C:\\d", right::write, cannot_write_or_run, "its attributes"},
    {u"C:\\d", u"C:\\d", right::traverse, cannot_run, "never executed anyway"},
    {u"C:\\d", u"C:\\d", right::create_entries, cannot_run, "writing doesn't ask for that"},
    {u"C:\\d", u"C:\\d", right::remove, cannot_run, "nobody asks for that"},
    {u"\\\\s\\h\\f.exe", u"\\\\s\\h\\f.exe", right::read_attributes, is_denied, "no look at it"},
    {u"\\\\s\\h\\f.exe", u"\\\\s\\h\\f.exe", right::read, can_all, "only attributes are asked for"},
    {u"\\\\s\\h\\f.exe", u"\\\\s\\h\\f.exe", right::traverse, can_all, "nor execution"},
    {u"\\\\s\\h\\f.exe", u"\\\\s\\h\\f.exe", right::write, cannot_write, "its attributes"},
    {u"X:\\f.exe", u"\\\\s\\h\\f.exe", right::read_attributes, is_denied, "no look at it"},
    {u"X:\\f.exe", u"\\\\s\\h\\f.exe", right::read, can_all, "only attributes are asked for"},
    {u"X:\\f.exe", u"\\\\s\\h\\f.exe", right::traverse, can_all, "nor execution"},
    {u"X:\\f.exe", u"\\\\s\\h\\f.exe", right::write, cannot_write, "its attributes"},
    {u"C:\\l", u"C:\\f.exe", right::read, cannot_read, "what it leads to"},
    {u"C:\\l", u"C:\\f.exe", right::write, cannot_write, "what it leads to"},
    {u"C:\\l", u"C:\\l", right::write, can_all, "the link itself isn't opened for that"},
    {u"C:\\l", u"C:\\l", right::read_attributes, is_denied, "no look at the link"},
    {u"C:\\l", u"C:\\l", right::read_extended_attributes, cannot_run, "not seen to be a link"},
};

TEST_ON_MACHINE(AccessRights, EachThatIsDenied)
{
    for (denied_case const &row : denied_cases) {
        simulated_machine fresh;
        fresh.add_share(u"s", u"h").map_drive(u'X', u"s", u"h").add_file(u"\\\\s\\h\\f.exe");
        fresh.add_file(u"C:\\f.exe").add_file(u"C:\\f.txt").add_file(u"C:\\d\\f.exe");
        fresh.add_file(u"C:\\f.b\u00E9x").add_symbolic_link(u"C:\\l", u"f.exe");
        fresh.deny(row.denied_at, row.denied);
        EXPECT_EQ(access_signs(row.path), row.expected) << printable(row.path) << ": " << row.why;
        EXPECT_EQ(fresh.open_handles(), 0);
    }
}

TEST_ON_MACHINE(AccessRights, ADenialNamesTheHopThatItCameFrom)
{
    machine.add_symbolic_link(u"C:\\l", u"f.exe").add_file(u"C:\\f.exe");
    machine.deny(u"C:\\f.exe", right::read_attributes);
    EXPECT_EQ(access_signs(u"C:\\l", uR"(\\?\C:\f.exe)"), is_denied);
}

TEST_ON_MACHINE(AccessLinks, ATextThatIsADeviceIsAFailure)
{
    machine.add_symbolic_link(u"C:\\device", u"x", u"\\\\.\\COM1", 0);
    machine.add_symbolic_link(u"C:\\server", u"x", u"\\\\s", 0);
    for (char16_t const *path : {u"C:\\device", u"C:\\server"})
        for (unsigned int mode = 1; mode <= 15; ++mode)
            EXPECT_FAILURE(access(path, mode), invalid_argument("Invalid Path Type"))
                << printable(path) << ", mode " << mode;
}

/// A chain of links `C:\l1`, `C:\l2` and so on, the last of which leads to `C:\end.exe`.
void add_chain(simulated_machine &machine, int links)
{
    for (int i = 1; i <= links; ++i)
        machine.add_symbolic_link(numbered(u"C:\\l", i),
                                  i == links ? u"C:\\end.exe" : numbered(u"C:\\l", i + 1));
}

TEST_ON_MACHINE(AccessChains, NineteenLinksAreFollowed)
{
    for (int const links : {1, 18, 19}) {
        simulated_machine fresh;
        add_chain(fresh, links);
        EXPECT_EQ(access_signs(u"C:\\l1"), is_missing) << links;
        fresh.add_file(u"C:\\end.exe");
        EXPECT_EQ(access_signs(u"C:\\l1"), can_all) << links;
        fresh.set_attributes(u"C:\\end.exe", 1);
        EXPECT_EQ(access_signs(u"C:\\l1"), cannot_write) << links;
    }
}

void expect_loop(std::u16string const &path, std::u16string const &reached, char const *why)
{
    auto const expected = too_many_links(reached);
    for (unsigned int mode = 1; mode <= 15; ++mode) {
        EXPECT_FAILURE(access(path, mode), expected) << why << ", mode " << mode;
        EXPECT_FAILURE(access(upath(path), mode), expected) << why;
    }
}

TEST_ON_MACHINE(AccessChains, TwentyLinksAreTooMany)
{
    for (int const links : {20, 21, 40}) {
        simulated_machine fresh;
        add_chain(fresh, links);
        std::u16string const reached = links == 20 ? uR"(\\?\C:\end.exe)" : uR"(\\?\C:\l21)";
        expect_loop(u"C:\\l1", reached, "whether anything stands there isn't asked");
        fresh.add_file(u"C:\\end.exe");
        expect_loop(u"C:\\l1", reached, "nor what");
        expect_nothing_open(fresh, "a chain");
    }
}

TEST_ON_MACHINE(AccessChains, Loops)
{
    machine.add_symbolic_link(u"C:\\self", u"self").add_junction(u"C:\\round", u"C:\\round");
    machine.add_symbolic_link(u"C:\\ping", u"pong").add_symbolic_link(u"C:\\pong", u"ping");
    machine.add_symbolic_link(u"C:\\walk", u".\\self");
    expect_loop(u"C:\\self", uR"(\\?\C:\self)", "to itself");
    expect_loop(u"C:\\round", uR"(\\?\C:\round)", "a junction to itself");
    expect_loop(u"C:\\ping", uR"(\\?\C:\ping)", "two in turn");
    expect_loop(u"C:\\walk", uR"(\\?\C:\self)", "a walk that meets one");
}

} // namespace
} // namespace fl::filesystem::tests
