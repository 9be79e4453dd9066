// What each query says of each kind of object, on the simulated machine.

#include <fl/filesystem.hpp>

#include <fl/filesystem/windows.hpp>

#include "access/walking.hpp"
#include "links/reparse_bytes.hpp"
#include "status/outcomes.hpp"
#include "support/calls.hpp"

namespace fl::filesystem::tests {
namespace {

using detail::windows::target_status_bridge;
using test_support::outcome;

constexpr std::uint32_t unknown_tag = 0x80000123; // Microsoft's by its number, and nobody's
constexpr char const *unknown_data = "0123456789abcdef0123";

constexpr unsigned int regular = 0x8000;
constexpr unsigned int directory = 0x4000;
constexpr unsigned int symlink = 0xA000;
constexpr unsigned int reparse = 0xE000;

/// Gives `path` these attributes and times that nothing else has, and returns what a
/// query says of it itself if it has this type. `exec` is 0111 for what can be run.
record stamp(simulated_machine &machine, std::u16string_view path, std::uint64_t hour,
             DWORD attributes, unsigned int type, unsigned int exec = 0)
{
    constexpr std::uint64_t ticks_per_hour = 36'000'000'000;
    std::uint64_t const ticks = (3'700'000 + hour) * ticks_per_hour;
    machine.set_attributes(path, attributes);
    machine.set_times(path, {ticks + 10, ticks + 20, ticks + 30});
    unsigned int perms = (attributes & 1) != 0 ? 0444 : 0666;
    perms |= (attributes & 0x20) != 0 ? 0x1000 : 0;
    perms |= (attributes & 2) != 0 ? 0x4000 : 0;
    auto const at = [&](int part) { return static_cast<std::int64_t>(ticks / 10) + part; };
    return {type, perms | exec, at(2), at(3), at(1), machine.size_of(path)};
}

enum class says
{
    missing,
    own_plain,     ///< the record of the object itself, of its plain type
    own_symlink,   ///< the same, of this type
    own_reparse,   ///< the same, of this type
    target,        ///< the record of what it leads to
    volume,        ///< that there is something
    not_a_link,    ///< a refusal
    throws_missing ///< a failure in place of the not-found record
};

enum class existence
{
    no,
    yes,
    denied, ///< code 5: the system opens no directory by a link for files
    refused ///< code 1463: the system follows no links on a network
};

struct object_case
{
    char const *why;
    char16_t const *path;
    says status, symlink_status, express;
    existence exists;
    says target_status;
};

constexpr object_case object_cases[] = {
    {"a file", u"C:\\file", says::own_plain, says::own_plain, says::own_plain, existence::yes,
     says::not_a_link},
    {"a directory", u"C:\\dir", says::own_plain, says::own_plain, says::own_plain, existence::yes,
     says::not_a_link},
    {"a missing name", u"C:\\no", says::missing, says::missing, says::missing, existence::no,
     says::throws_missing},
    {"a missing directory", u"C:\\no\\no", says::missing, says::missing, says::missing,
     existence::no, says::throws_missing},
    {"a symbolic link to a file", u"C:\\to-file", says::target, says::own_symlink, says::target,
     existence::yes, says::target},
    {"a relative one", u"C:\\rel-file", says::target, says::own_symlink, says::target,
     existence::yes, says::target},
    {"one with dots in its text", u"C:\\dots", says::target, says::own_symlink, says::target,
     existence::yes, says::target},
    {"a symbolic link to a directory", u"C:\\to-dir", says::target, says::own_symlink, says::target,
     existence::yes, says::target},
    {"a link of the other flavour", u"C:\\odd-dir", says::target, says::own_symlink, says::target,
     existence::denied, says::target},
    {"a broken symbolic link", u"C:\\broken", says::missing, says::own_symlink, says::missing,
     existence::no, says::missing},
    {"one into a missing directory", u"C:\\broken2", says::missing, says::own_symlink,
     says::missing, existence::no, says::missing},
    {"a junction", u"C:\\junction", says::target, says::own_reparse, says::target, existence::yes,
     says::target},
    {"a broken junction", u"C:\\no-junction", says::missing, says::own_reparse, says::missing,
     existence::no, says::missing},
    {"a volume mount point", u"C:\\volume", says::own_plain, says::own_reparse, says::own_plain,
     existence::yes, says::volume},
    {"a tag that a filter handles", u"C:\\handled", says::own_plain, says::own_plain,
     says::own_plain, existence::yes, says::missing},
    {"the same, a directory", u"C:\\handled-dir", says::own_plain, says::own_plain, says::own_plain,
     existence::yes, says::missing},
    {"a tag that nobody handles", u"C:\\unhandled", says::own_plain, says::own_plain,
     says::own_plain, existence::no, says::missing},
    {"a deduplicated file", u"C:\\dedup", says::own_plain, says::own_plain, says::own_plain,
     existence::yes, says::missing},
    {"a link that is sparse", u"C:\\sparse", says::own_plain, says::own_plain, says::own_plain,
     existence::yes, says::target},
    {"a junction that is sparse", u"C:\\sparse-dir", says::own_plain, says::own_plain,
     says::own_plain, existence::yes, says::target},
    {"a broken link that is sparse", u"C:\\sparse-broken", says::own_plain, says::own_plain,
     says::own_plain, existence::no, says::missing},
    {"a link on a share", u"\\\\s\\h\\link", says::own_plain, says::own_symlink, says::own_plain,
     existence::refused, says::own_plain},
    {"a broken link on a share", u"\\\\s\\h\\broken", says::own_plain, says::own_symlink,
     says::own_plain, existence::refused, says::own_plain},
    {"a junction on a share", u"\\\\s\\h\\junction", says::own_plain, says::own_reparse,
     says::own_plain, existence::no, says::own_plain},
    {"a missing name on a share", u"\\\\s\\h\\no", says::missing, says::missing, says::missing,
     existence::no, says::throws_missing},
    {"a link on a mapped drive", u"X:\\link", says::own_plain, says::own_symlink, says::own_plain,
     existence::refused, says::target},
    {"a broken link on a mapped drive", u"X:\\broken", says::own_plain, says::own_symlink,
     says::own_plain, existence::refused, says::own_plain},
    {"a junction on a mapped drive", u"X:\\junction", says::own_plain, says::own_reparse,
     says::own_plain, existence::no, says::target},
    {"a broken junction on a mapped drive", u"X:\\no-junction", says::own_plain, says::own_reparse,
     says::own_plain, existence::no, says::own_plain},
    {"a shortcut", u"C:\\short.lnk", says::own_plain, says::own_plain, says::own_plain,
     existence::yes, says::not_a_link},
    {"a broken shortcut", u"C:\\short2.lnk", says::own_plain, says::own_plain, says::own_plain,
     existence::yes, says::not_a_link},
};

/// The machine of the table. Hidden is what is asked about, read-only what it leads to.
void build(simulated_machine &machine)
{
    machine.add_drive(u'D').add_share(u"s", u"h").map_drive(u'X', u"s", u"h");
    machine.add_directory(u"D:\\").add_file(u"C:\\file", "123").add_directory(u"C:\\dir");
    machine.add_file(u"C:\\t", "12345").add_directory(u"C:\\tdir").add_file(u"\\\\s\\h\\t", "1");
    machine.add_symbolic_link(u"C:\\to-file", u"C:\\t").add_symbolic_link(u"C:\\rel-file", u"t");
    machine.add_symbolic_link(u"C:\\dots", u"dir\\..\\.\\t");
    machine.add_symbolic_link(u"C:\\to-dir", u"C:\\tdir", flavour::directory);
    machine.add_symbolic_link(u"C:\\odd-dir", u"tdir", flavour::file);
    machine.add_symbolic_link(u"C:\\broken", u"nothing");
    machine.add_symbolic_link(u"C:\\broken2", u"C:\\nothing\\nothing");
    machine.add_junction(u"C:\\junction", u"C:\\tdir");
    machine.add_junction(u"C:\\no-junction", u"C:\\nothing").add_mount_point(u"C:\\volume", u'D');
    machine.handle_tag(dfs_tag);
    machine.add_reparse_point(u"C:\\handled", dfs_tag, unknown_data);
    machine.add_reparse_point(u"C:\\handled-dir", dfs_tag, unknown_data, flavour::directory);
    machine.add_reparse_point(u"C:\\unhandled", unknown_tag, unknown_data);
    machine.add_deduplicated_file(u"C:\\dedup", "1234");
    machine.add_symbolic_link(u"C:\\sparse", u"C:\\t");
    machine.add_junction(u"C:\\sparse-dir", u"C:\\tdir");
    machine.add_symbolic_link(u"C:\\sparse-broken", u"C:\\nothing");
    machine.add_symbolic_link(u"\\\\s\\h\\link", u"t");
    machine.add_symbolic_link(u"\\\\s\\h\\broken", u"nothing");
    machine.add_junction(u"\\\\s\\h\\junction", u"C:\\tdir");
    machine.add_junction(u"\\\\s\\h\\no-junction", u"C:\\nothing");
    machine.add_shortcut(u"C:\\short.lnk", u"C:\\t").add_shortcut(u"C:\\short2.lnk", u"C:\\no");
}

/// What an object says about itself, and what stands where it leads.
struct known
{
    record own, target;
};

known know(simulated_machine &machine, object_case const &row)
{
    std::u16string const path = row.path;
    record target = stamp(machine, u"C:\\t", 200, 0x21, regular);
    record const target_directory = stamp(machine, u"C:\\tdir", 300, 0x21, directory);
    record const remote_target = stamp(machine, u"\\\\s\\h\\t", 400, 0x21, regular);
    if (!machine.exists(path))
        return {};
    if (path.starts_with(u"X:") || path.starts_with(u"\\\\"))
        target = remote_target;
    else if (path.ends_with(u"dir"))
        target = target_directory;
    if (path.ends_with(u"junction"))
        target = target_directory;
    bool const is_sparse = path.find(u"sparse") != path.npos;
    DWORD const attributes = is_sparse ? 0x202 : 2;
    unsigned int const type = machine.is_directory(path) ? directory : regular;
    return {stamp(machine, path, 100, attributes, type), target};
}

outcome expected(says what, known const &of, object_case const &row)
{
    record own = of.own;
    switch (what) {
    case says::own_plain:
        return answers(own);
    case says::own_symlink:
        own.type = symlink;
        return answers(own);
    case says::own_reparse:
        own.type = reparse;
        return answers(own);
    case says::target:
        return answers(of.target);
    case says::volume:
        return answers(bare(1));
    case says::not_a_link:
        return fails(invalid_argument("The file or directory is not a reparse point."));
    case says::throws_missing:
        return fails(not_found(row.path));
    case says::missing:
        break;
    }
    return missing();
}

TEST_ON_MACHINE(StatusTable, EachQueryOfEachObject)
{
    for (object_case const &row : object_cases) {
        simulated_machine fresh;
        build(fresh);
        known const of = know(fresh, row);
        std::u16string const path = row.path;
        outcome light = expected(row.express, of, row);
        light.answer = shortened(*light.answer);
        EXPECT_EQ(outcome_of([&] { return status(path); }), expected(row.status, of, row))
            << row.why;
        EXPECT_EQ(outcome_of([&] { return status(upath(path)); }), expected(row.status, of, row))
            << row.why;
        EXPECT_EQ(outcome_of([&] { return symlink_status(path); }),
                  expected(row.symlink_status, of, row))
            << row.why;
        EXPECT_EQ(outcome_of([&] { return symlink_status(upath(path)); }),
                  expected(row.symlink_status, of, row))
            << row.why;
        EXPECT_EQ(outcome_of([&] { return status_express_light(path); }), light) << row.why;
        EXPECT_EQ(outcome_of([&] { return target_status_bridge(wide(path)); }),
                  expected(row.target_status, of, row))
            << row.why;
        expect_nothing_open(fresh, row.why);
    }
}

maybe_failure expected_refusal(object_case const &row)
{
    if (row.exists == existence::denied)
        return denied(row.path);
    if (row.exists == existence::refused)
        return system_error(1463, row.path);
    return std::nullopt;
}

TEST_ON_MACHINE(StatusTable, ExistsAsTheSystemFollows)
{
    for (object_case const &row : object_cases) {
        simulated_machine fresh;
        build(fresh);
        std::u16string const path = row.path;
        know(fresh, row);
        bool found = false, found_object = false;
        maybe_failure const refusal = expected_refusal(row);
        EXPECT_EQ(failure_of([&] { found = exists(path); }), refusal) << row.why;
        EXPECT_EQ(failure_of([&] { found_object = exists(upath(path)); }), refusal) << row.why;
        EXPECT_EQ(found, row.exists == existence::yes) << row.why;
        EXPECT_EQ(found_object, found) << row.why;
        expect_nothing_open(fresh, row.why);
    }
}

TEST_ON_MACHINE(StatusTable, ExistsFollowsOnANetworkWhereTheSystemDoes)
{
    build(machine);
    machine.follow_remote_links();
    EXPECT_TRUE(exists(u"\\\\s\\h\\link"));
    EXPECT_FALSE(exists(u"\\\\s\\h\\broken"));
    EXPECT_EQ(status(u"\\\\s\\h\\broken").get_type(), regular) << "the two may differ";
}

TEST_ON_MACHINE(StatusTable, PredicatesOfAJunctionsOwnRecord)
{
    build(machine);
    for (char16_t const *path : {u"C:\\junction", u"C:\\no-junction", u"C:\\volume"}) {
        file_status const seen = symlink_status(path);
        EXPECT_TRUE(file_status::is_reparse(seen) && file_status::exists(seen));
        EXPECT_FALSE(file_status::is_regular(seen) || file_status::is_directory(seen) ||
                     file_status::is_symlink(seen));
    }
    file_status const volume = target_status_bridge(L"C:\\volume");
    EXPECT_TRUE(file_status::exists(volume));
    EXPECT_TRUE(volume.get_mtime().is_not_a_date_time());
}

TEST_ON_MACHINE(StatusLinks, AMountPointAtADirectoryOfTheVolumeIsAJunction)
{
    machine.add_junction(u"C:\\odd", uR"(\??\Volume{1}\)", u"C:\\dir").add_directory(u"C:\\dir");
    record const target = stamp(machine, u"C:\\dir", 1, 2, directory);
    EXPECT_EQ(outcome_of([] { return status(u"C:\\odd"); }), answers(target));
    EXPECT_EQ(symlink_status(u"C:\\odd").get_type(), reparse);
    EXPECT_EQ(outcome_of([] { return target_status_bridge(L"C:\\odd"); }), answers(target));
}

// A link without any text, which isn't a volume either.
TEST_ON_MACHINE(StatusLinks, WithoutATextAnswerForThemselves)
{
    for (std::uint32_t const tag : {symlink_tag, mount_point_tag}) {
        simulated_machine fresh;
        fresh.add_reparse_point(u"C:\\l", tag,
                                tag == symlink_tag ? simulation::symbolic_link_data(u"", u"", 1)
                                                   : simulation::mount_point_data(u"", u""),
                                flavour::directory);
        record own = stamp(fresh, u"C:\\l", 1, 2, directory);
        EXPECT_EQ(outcome_of([] { return status(u"C:\\l"); }), answers(own));
        EXPECT_EQ(outcome_of([] { return status_express_light(u"C:\\l"); }),
                  answers(shortened(own)));
        EXPECT_EQ(outcome_of([] { return target_status_bridge(L"C:\\l"); }), missing());
        own.type = tag == symlink_tag ? symlink : reparse;
        EXPECT_EQ(outcome_of([] { return symlink_status(u"C:\\l"); }), answers(own));
    }
}

TEST_ON_MACHINE(StatusLinks, TheNameThatAnswersTellsWhatRuns)
{
    machine.add_file(u"C:\\tool.exe").add_file(u"C:\\plain");
    machine.add_symbolic_link(u"C:\\link", u"tool.exe");
    machine.add_symbolic_link(u"C:\\link.exe", u"plain");
    machine.add_symbolic_link(u"C:\\again.cmd", u"link.exe");
    record const tool = stamp(machine, u"C:\\tool.exe", 1, 0x21, regular, 0111);
    record const plain = stamp(machine, u"C:\\plain", 2, 0x20, regular);
    EXPECT_EQ(outcome_of([] { return status(u"C:\\tool.exe"); }), answers(tool));
    EXPECT_EQ(outcome_of([] { return status(u"C:\\link"); }), answers(tool));
    EXPECT_EQ(outcome_of([] { return status(u"C:\\link.exe"); }), answers(plain));
    EXPECT_EQ(outcome_of([] { return status(u"C:\\again.cmd"); }), answers(plain));
    EXPECT_EQ(outcome_of([] { return target_status_bridge(L"C:\\link"); }), answers(tool));
    EXPECT_EQ(outcome_of([] { return target_status_bridge(L"C:\\link.exe"); }), answers(plain));
    EXPECT_EQ(outcome_of([] { return target_status_bridge(L"C:\\again.cmd"); }), answers(plain));
    EXPECT_EQ(symlink_status(u"C:\\link").get_perms() & 0777, 0666U);
    EXPECT_EQ(symlink_status(u"C:\\link.exe").get_perms() & 0777, 0777U);
}

TEST_ON_MACHINE(StatusLinks, AnExtensionBeyondAscii)
{
    std::u16string const file = u"C:\\f.b\u00E9x", link = u"C:\\l.b\u00E9x";
    machine.add_file(file, "12").add_file(u"C:\\plain").add_directory(u"C:\\d.b\u00E9x");
    machine.add_symbolic_link(link, u"plain").add_symbolic_link(u"C:\\to", u"f.b\u00E9x");
    record const own = stamp(machine, file, 1, 2, regular);
    record const plain = stamp(machine, u"C:\\plain", 2, 2, regular);
    for (std::u16string const &path : {file, std::u16string(u"C:\\to")}) {
        EXPECT_EQ(outcome_of([&] { return status(path); }), invalid_character());
        EXPECT_EQ(outcome_of([&] { return status_express_light(path); }), answers(shortened(own)));
        EXPECT_TRUE(exists(path));
    }
    EXPECT_EQ(outcome_of([&] { return symlink_status(file); }), invalid_character());
    EXPECT_EQ(outcome_of([] { return target_status_bridge(L"C:\\to"); }), invalid_character());
    EXPECT_EQ(symlink_status(u"C:\\to").get_type(), symlink);
    EXPECT_EQ(outcome_of([&] { return status(link); }), answers(plain)) << "the target's counts";
    EXPECT_EQ(outcome_of([&] { return symlink_status(link); }), invalid_character());
    EXPECT_EQ(status(u"C:\\d.b\u00E9x").get_type(), directory) << "a directory isn't asked";
}

/// A chain of links `C:\l1`, `C:\l2` and so on, the last of which leads to `C:\end`.
void add_chain(simulated_machine &machine, int links, bool are_junctions = false,
               flavour is = flavour::file)
{
    for (int i = 1; i <= links; ++i) {
        std::u16string const number = units(std::to_wstring(i));
        std::u16string const next = units(std::to_wstring(i + 1));
        std::u16string const target = i == links ? u"C:\\end" : u"C:\\l" + next;
        if (are_junctions)
            machine.add_junction(u"C:\\l" + number, target);
        else
            machine.add_symbolic_link(u"C:\\l" + number, target, is);
    }
}

TEST_ON_MACHINE(StatusChains, NineteenLinksAreFollowed)
{
    for (int const links : {1, 2, 18, 19}) {
        simulated_machine fresh;
        fresh.add_file(u"C:\\end", "1234");
        add_chain(fresh, links);
        record const end = stamp(fresh, u"C:\\end", 1, 0x21, regular);
        EXPECT_EQ(outcome_of([] { return status(u"C:\\l1"); }), answers(end)) << links;
        EXPECT_EQ(outcome_of([] { return status_express_light(u"C:\\l1"); }),
                  answers(shortened(end)))
            << links;
        EXPECT_EQ(outcome_of([] { return target_status_bridge(L"C:\\l1"); }), answers(end))
            << links;
        EXPECT_EQ(symlink_status(u"C:\\l1").get_type(), symlink) << links;
        EXPECT_EQ(fresh.open_handles(), 0);
    }
}

TEST_ON_MACHINE(StatusChains, BrokenAtTheirEnd)
{
    for (int const links : {2, 19}) {
        simulated_machine fresh;
        add_chain(fresh, links);
        EXPECT_EQ(outcome_of([] { return status(u"C:\\l1"); }), missing()) << links;
        EXPECT_EQ(outcome_of([] { return status_express_light(u"C:\\l1"); }), missing_light());
        EXPECT_EQ(outcome_of([] { return target_status_bridge(L"C:\\l1"); }), missing());
        EXPECT_FALSE(exists(u"C:\\l1"));
    }
}

void expect_loop(std::u16string const &path, std::u16string const &reached, char const *why)
{
    outcome const expected = fails(too_many_links(reached));
    EXPECT_EQ(outcome_of([&] { return status(path); }), expected) << why;
    EXPECT_EQ(outcome_of([&] { return status(upath(path)); }), expected) << why;
    EXPECT_EQ(outcome_of([&] { return status_express_light(path); }), expected) << why;
    EXPECT_EQ(outcome_of([&] { return target_status_bridge(wide(path)); }), expected) << why;
}

TEST_ON_MACHINE(StatusChains, TwentyLinksAreTooMany)
{
    for (int const links : {20, 21, 40}) {
        for (bool const are_junctions : {false, true}) {
            simulated_machine fresh;
            fresh.add_directory(u"C:\\end");
            add_chain(fresh, links, are_junctions, flavour::directory);
            expect_loop(u"C:\\l1", links == 20 ? uR"(\\?\C:\end)" : uR"(\\?\C:\l21)", "a chain");
            EXPECT_EQ(symlink_status(u"C:\\l1").get_type(), are_junctions ? reparse : symlink);
            EXPECT_TRUE(exists(u"C:\\l1")) << "the system goes further";
            EXPECT_EQ(fresh.open_handles(), 0);
        }
    }
}

// The limit is looked at ahead of the name.
TEST_ON_MACHINE(StatusChains, TwentyLinksToNothingAreTooMany)
{
    add_chain(machine, 20);
    expect_loop(u"C:\\l1", uR"(\\?\C:\end)", "nobody asks for what stands there");
}

TEST_ON_MACHINE(StatusChains, Loops)
{
    machine.add_symbolic_link(u"C:\\self", u"self").add_symbolic_link(u"C:\\full", u"C:\\full");
    machine.add_junction(u"C:\\junction", u"C:\\junction");
    machine.add_symbolic_link(u"C:\\ping", u"pong").add_symbolic_link(u"C:\\pong", u"ping");
    expect_loop(u"C:\\self", uR"(\\?\C:\self)", "to itself");
    expect_loop(u"C:\\full", uR"(\\?\C:\full)", "to itself by its full pathname");
    expect_loop(u"C:\\junction", uR"(\\?\C:\junction)", "a junction to itself");
    expect_loop(u"C:\\ping", uR"(\\?\C:\ping)", "two in turn");
    for (std::u16string const path : {u"C:\\self", u"C:\\junction", u"C:\\ping"})
        EXPECT_FAILURE(exists(path), system_error(1921, path));
    EXPECT_EQ(symlink_status(u"C:\\self").get_type(), symlink);
}

// Only the last hop is on the network, where it ends for most queries.
TEST_ON_MACHINE(StatusNetwork, ALinkThatLeadsToALinkThere)
{
    for (bool const is_mapped : {false, true}) {
        simulated_machine fresh;
        fresh.add_share(u"s", u"h").map_drive(u'X', u"s", u"h").add_file(u"\\\\s\\h\\t", "123");
        fresh.add_symbolic_link(u"\\\\s\\h\\there", u"t");
        fresh.add_symbolic_link(u"C:\\l", is_mapped ? u"X:\\there" : u"\\\\s\\h\\there");
        record const there = stamp(fresh, u"\\\\s\\h\\there", 1, 2, regular);
        record const end = stamp(fresh, u"\\\\s\\h\\t", 2, 0x21, regular);
        EXPECT_EQ(outcome_of([] { return status(u"C:\\l"); }), answers(there)) << is_mapped;
        EXPECT_EQ(outcome_of([] { return status_express_light(u"C:\\l"); }),
                  answers(shortened(there)))
            << is_mapped;
        EXPECT_EQ(outcome_of([] { return target_status_bridge(L"C:\\l"); }), answers(end))
            << "once on its way it follows everything, " << is_mapped;
    }
}

TEST_ON_MACHINE(StatusNetwork, TheLongFormOfAShare)
{
    machine.add_share(u"s", u"h").add_file(u"\\\\s\\h\\t").add_symbolic_link(u"\\\\s\\h\\l", u"t");
    record const own = stamp(machine, u"\\\\s\\h\\l", 1, 2, regular);
    EXPECT_EQ(outcome_of([] { return target_status_bridge(LR"(\\?\UNC\s\h\l)"); }), answers(own));
    EXPECT_EQ(outcome_of([] { return target_status_bridge(LR"(\\?\UNC\s\h\no)"); }),
              fails(not_found(uR"(\\?\UNC\s\h\no)")));
    record const plain = stamp(machine, u"\\\\s\\h\\t", 2, 0x20, regular);
    EXPECT_EQ(outcome_of([] { return target_status_bridge(LR"(\\s\h\t)"); }), answers(plain))
        << "a plain file answers, too";
    EXPECT_EQ(outcome_of([] { return status_express_light(uR"(\\?\UNC\s\h\l)"); }),
              answers(shortened(own)));
}

TEST_ON_MACHINE(StatusNetwork, AServerThatIsGone)
{
    machine.add_dead_server(u"s");
    std::u16string const path = u"\\\\s\\h\\f";
    outcome const expected = fails(system_error(53, path));
    EXPECT_EQ(outcome_of([&] { return status(path); }), expected);
    EXPECT_EQ(outcome_of([&] { return symlink_status(path); }), expected);
    EXPECT_EQ(outcome_of([&] { return status_express_light(path); }), expected);
    EXPECT_EQ(outcome_of([&] { return target_status_bridge(wide(path)); }), expected);
    EXPECT_FALSE(exists(path)) << "here the queries differ";
}

struct tag_case
{
    std::uint32_t tag;
    bool is_sparse;
    char const *why;
};

// A link that leads to another kind of reparse point.
TEST_ON_MACHINE(StatusLinks, TargetsThatAreNoLinks)
{
    constexpr tag_case cases[] = {
        {dfs_tag, false, "handled"},
        {unknown_tag, false, "by nobody"},
        {symlink_tag, true, "a sparse link isn't read"},
    };
    for (tag_case const &row : cases) {
        simulated_machine fresh;
        std::string const data = row.tag == symlink_tag
                                     ? simulation::symbolic_link_data(u"x", u"x", 1)
                                     : std::string(unknown_data);
        fresh.handle_tag(dfs_tag).add_symbolic_link(u"C:\\l", u"m").add_file(u"C:\\x");
        fresh.add_reparse_point(u"C:\\m", row.tag, data);
        record const target = stamp(fresh, u"C:\\m", 1, row.is_sparse ? 0x202 : 2, regular);
        EXPECT_EQ(outcome_of([] { return status(u"C:\\l"); }), answers(target)) << row.why;
        EXPECT_EQ(outcome_of([] { return status_express_light(u"C:\\l"); }),
                  answers(shortened(target)))
            << row.why;
        EXPECT_EQ(outcome_of([] { return target_status_bridge(L"C:\\l"); }), answers(target))
            << row.why;
    }
}

TEST_ON_MACHINE(StatusLinks, AVolumeBehindALink)
{
    machine.add_drive(u'D').add_mount_point(u"C:\\volume", u'D');
    machine.add_symbolic_link(u"C:\\l", u"volume", flavour::directory);
    record const volume = stamp(machine, u"C:\\volume", 1, 2, directory);
    EXPECT_EQ(outcome_of([] { return status(u"C:\\l"); }), answers(volume));
    EXPECT_EQ(outcome_of([] { return status_express_light(u"C:\\l"); }),
              answers(shortened(volume)));
    EXPECT_EQ(outcome_of([] { return target_status_bridge(L"C:\\l"); }), answers(volume));
}

TEST_ON_MACHINE(StatusLinks, TextsThatLeadNowhere)
{
    // whether it is invalid; else it isn't found
    constexpr answer_row<char16_t> cases[] = {
        {u"C:x", false, "the current directory of a drive"},
        {u"\\\\s\\h", false, "a share without a root"},
        {uR"(\\?\C:x)", false, "the same with a prefix"},
        {u"\\\\s", true, "a server alone"},
        {u"\\\\.\\COM1", true, "a device"},
    };
    for (auto const &row : cases) {
        simulated_machine fresh;
        fresh.add_symbolic_link(u"C:\\l", u"x", row.text, 0).add_file(u"C:\\x");
        auto const told = row.expected ? invalid_argument("Invalid Path Type") : not_found(u"");
        EXPECT_EQ(outcome_of([] { return status(u"C:\\l"); }), missing()) << row.why;
        EXPECT_EQ(outcome_of([] { return status_express_light(u"C:\\l"); }), missing_light())
            << row.why;
        EXPECT_EQ(outcome_of([] { return target_status_bridge(L"C:\\l"); }), fails(told))
            << row.why;
        EXPECT_EQ(symlink_status(u"C:\\l").get_type(), symlink) << row.why;
        EXPECT_EQ(fresh.open_handles(), 0);
    }
}

TEST_ON_MACHINE(StatusLinks, ATextThatIsWalkedTellsWhatTheWalkMeets)
{
    machine.add_symbolic_link(u"C:\\l", u".\\loop").add_symbolic_link(u"C:\\loop", u"loop");
    outcome const expected = fails(too_many_links(uR"(\\?\C:\loop)"));
    EXPECT_EQ(outcome_of([] { return status(u"C:\\l"); }), expected);
    EXPECT_EQ(outcome_of([] { return status_express_light(u"C:\\l"); }), expected);
    EXPECT_EQ(outcome_of([] { return target_status_bridge(L"C:\\l"); }), expected);
}

TEST_ON_MACHINE(StatusLinks, RelativeOnesGoFromTheirOwnDirectory)
{
    machine.add_drive(u'D').add_file(u"D:\\real\\t", "12").add_file(u"C:\\t", "1");
    machine.add_junction(u"C:\\way", u"D:\\real\\sub").add_directory(u"D:\\real\\sub");
    machine.add_symbolic_link(u"D:\\real\\sub\\up", u"..\\t");
    machine.add_symbolic_link(u"C:\\d\\up", u"..\\t").add_symbolic_link(u"C:\\d\\same", u"t");
    machine.add_file(u"C:\\d\\t", "123").set_current_directory(u"C:\\d");
    EXPECT_EQ(status(u"C:\\way\\up").get_size(), 2U) << "as it is on disk";
    EXPECT_EQ(status(u"C:\\d\\up").get_size(), 1U);
    EXPECT_EQ(status(u"C:\\d\\same").get_size(), 3U);
    EXPECT_EQ(status(u"same").get_size(), 3U);
    EXPECT_EQ(status(u"way").get_type(), file_status::file_not_found);
    EXPECT_EQ(target_status_bridge(L"C:\\way\\up").get_size(), 2U);
    EXPECT_EQ(status_express_light(u"C:\\way\\up").get_size(), 2U);
}

// A shortcut behind a link is a file again.
TEST_ON_MACHINE(StatusLinks, ALinkToAShortcut)
{
    machine.add_shortcut(u"C:\\s.lnk", u"C:\\t").add_file(u"C:\\t");
    machine.add_symbolic_link(u"C:\\l", u"s.lnk");
    record const own = stamp(machine, u"C:\\s.lnk", 1, 2, regular);
    EXPECT_EQ(outcome_of([] { return status(u"C:\\l"); }), answers(own));
    EXPECT_EQ(outcome_of([] { return status_express_light(u"C:\\l"); }), answers(shortened(own)));
    EXPECT_EQ(outcome_of([] { return target_status_bridge(L"C:\\l"); }), answers(own));
}

TEST_ON_MACHINE(StatusLinks, WhatTheCallerMayNotRead)
{
    machine.add_symbolic_link(u"C:\\l", u"t").add_file(u"C:\\t", "12");
    machine.deny(u"C:\\l", right::read_extended_attributes);
    record const own = stamp(machine, u"C:\\l", 1, 2, regular);
    EXPECT_EQ(outcome_of([] { return status(u"C:\\l"); }), answers(own));
    EXPECT_EQ(outcome_of([] { return symlink_status(u"C:\\l"); }), answers(own));
    EXPECT_EQ(outcome_of([] { return status_express_light(u"C:\\l"); }), answers(shortened(own)));
    EXPECT_EQ(outcome_of([] { return target_status_bridge(L"C:\\l"); }), fails(denied(u"C:\\l")));
}

} // namespace
} // namespace fl::filesystem::tests
