// The code and the tables of docs/links.md.

#include "guide/page.hpp"

#include <sstream>

namespace {

using namespace guide;

char const page[] = "docs/links.md";

// A name and what it leads to, told apart by the times of their last writes.
constexpr std::uint64_t of_name = 133'000'000'000'000'000, of_target = 134'000'000'000'000'000;

struct scene
{
    simulated_machine machine;
    std::u16string name = u"C:\\n", target = u"C:\\t\\t";

    explicit scene(std::string const &kind)
    {
        machine.add_directory(u"C:\\t");
        if (kind == "symbolic link") {
            machine.add_file(target, "target").add_symbolic_link(name, target);
        } else if (kind == "junction") {
            machine.add_directory(target).add_junction(name, target);
        } else if (kind == "volume mount point") {
            target = u"D:\\";
            machine.add_drive(u'D').add_mount_point(name, u'D');
        } else {
            name = u"C:\\n.lnk";
            machine.add_file(target, "target").add_shortcut(name, target);
        }
        machine.set_times(target, {of_target, of_target, of_target});
        machine.set_times(name, {of_name, of_name, of_name});
    }

    bool name_is(std::uint64_t time) const { return machine.times_of(name).write == time; }
    bool target_is(std::uint64_t time) const { return machine.times_of(target).write == time; }
};

std::string which(bool itself, bool target)
{
    return itself == target ? "both or neither" : itself ? "itself" : "target";
}

std::string of_time(fs::file_time_type time)
{
    std::uint64_t const ticks =
        static_cast<std::uint64_t>(time.time_since_epoch().count()) + 116'444'736'000'000'000;
    return which(ticks == of_name, ticks == of_target);
}

std::string acted_on(std::string const &operation, std::string const &kind)
{
    scene s(kind);
    auto &machine = s.machine;
    std::u16string const &p = s.name;
    if (operation == "status(p)")
        return of_time(fs::to_file_time(fs::status(p).get_mtime()));
    if (operation == "symlink_status(p)")
        return of_time(fs::to_file_time(fs::symlink_status(p).get_mtime()));
    if (operation == "exists(p)") {
        EXPECT_TRUE(fs::exists(p));
        if (kind == "volume mount point")
            machine.remove_drive(u'D');
        else
            machine.remove(s.target);
        return fs::exists(p) ? "itself" : "target";
    }
    if (operation == "last_write_time(p)")
        return of_time(fs::last_write_time(p));
    if (operation == "last_write_time(p, time)") {
        fs::last_write_time(p, fs::file_time_type());
        return which(!s.name_is(of_name), !s.target_is(of_target));
    }
    if (operation == "permissions(p, perms)") {
        fs::permissions(p, fs::file_status::no_perms);
        return which((machine.attributes(p) & FILE_ATTRIBUTE_READONLY) != 0,
                     (machine.attributes(s.target) & FILE_ATTRIBUTE_READONLY) != 0);
    }
    if (operation == "copy(p, to)") {
        if (machine.is_directory(s.target))
            machine.add_file(s.target + u"\\inner", "inner");
        fs::copy(p, u"C:\\to");
        bool const same = machine.is_file(u"C:\\to")
                              ? machine.content(u"C:\\to") == "target"
                              : machine.entries(u"C:\\to") == test_support::names{u"inner"};
        return machine.reparse_tag(u"C:\\to") != 0 || !same ? "itself" : "target";
    }
    if (operation == "canonical(p)")
        return which(fs::canonical(p) == p, fs::canonical(p) == s.target);
    if (operation == "rename(p, to)") {
        fs::rename(p, u"C:\\to");
        return which(!machine.exists(p), !machine.exists(s.target));
    }
    if (operation == "remove(p)")
        fs::remove(p);
    else if (operation == "remove_all(p)")
        fs::remove_all(p);
    else
        return "no such operation";
    return which(!machine.exists(p), !machine.exists(s.target));
}

TEST(LinksGuide, WhatAnOperationActsOn)
{
    std::string const kinds[] = {"symbolic link", "junction", "volume mount point", "shortcut"};
    auto const rows =
        rows_of(page, "| operation | symbolic link | junction | volume mount point | shortcut |");
    EXPECT_EQ(rows.size(), 11U);
    for (lines const &row : rows)
        for (std::size_t kind = 0; kind < std::size(kinds); ++kind)
            EXPECT_EQ(acted_on(row[0], kinds[kind]), row[kind + 1]) << row[0] << kinds[kind];
}

TEST(LinksGuide, Kinds)
{
    simulated_machine machine;
    machine.add_file(u"C:\\f").add_directory(u"C:\\d").add_drive(u'D');
    auto const type = [](char16_t const *p) {
        return fs::symlink_status(p).get_type() & fs::file_status::file_type_mask;
    };
    std::map<unsigned int, std::string> const types = {
        {fs::file_status::symlink_file, "symlink_file"},
        {fs::file_status::reparse_file, "reparse_file"},
        {fs::file_status::regular_file, "regular_file"}};
    fs::create_symlink(u"f", u"C:\\symbolic link", fs::file_status::regular_file);
    fs::create_directory_symlink(u"d", u"C:\\directory link");
    fs::create_junction(u"C:\\d", u"C:\\junction");
    machine.add_mount_point(u"C:\\volume mount point", u'D');
    fs::create_shortcut(u"C:\\f", u"C:\\shortcut.lnk");
    fs::create_hard_link(u"C:\\f", u"C:\\hard link");
    EXPECT_EQ(fs::canonical(u"C:\\shortcut.lnk"), u"C:\\f");
    EXPECT_TRUE(machine.is_same(u"C:\\hard link", u"C:\\f"));
    EXPECT_EQ(type(u"C:\\directory link"), fs::file_status::symlink_file);
    for (lines const &row :
         rows_of(page, "| kind | made by | leads to | type in `symlink_status` |")) {
        std::u16string name = u"C:\\" + u16(row[0].substr(0, row[0].find(',')));
        if (row[0][0] == 's' && row[0][1] == 'h')
            name += u".lnk";
        EXPECT_EQ(types.at(type(name.c_str())), row[3]) << row[0];
    }
}

TEST(LinksGuide, MakingNeedsARight)
{
    simulated_machine machine;
    machine.deny_symbolic_links();
    EXPECT_FAILURE(fs::create_symlink(u"x", u"C:\\l", fs::file_status::regular_file),
                   test_support::system_error(1314, u""));
    fs::create_junction(u"C:\\", u"C:\\j");
    EXPECT_TRUE(machine.exists(u"C:\\j"));
}

TEST(LinksGuide, Making)
{
    simulated_machine machine;
    machine.add_directory(u"C:\\data\\2026").add_file(u"C:\\data\\june.txt", "soup");
    std::ostringstream log;

    fs::create_symlink(u"june.txt", u"C:/data/latest", fs::file_status::regular_file);
    fs::create_directory_symlink(u"2026", u"C:/data/this-year");
    fs::create_junction(u"C:/data/2026", u"C:/data/junction");
    fs::create_shortcut(u"C:/data/june.txt", u"C:/data/june.lnk");
    fs::create_hard_link(u"C:/data/june.txt", u"C:/data/same.txt");

    for (fs::directory_entry const &entry : fs::directory_iterator(u"C:/data"))
        log << entry
            << (entry.is_symlink()    ? " is a symbolic link\n"
                : entry.is_junction() ? " is a junction\n"
                                      : "\n");

    EXPECT_EQ(log.str(), shown(R"(
        C:\data\2026
        C:\data\junction is a junction
        C:\data\june.lnk
        C:\data\june.txt
        C:\data\latest is a symbolic link
        C:\data\same.txt
        C:\data\this-year is a symbolic link
        )"));
}

TEST(LinksGuide, Following)
{
    simulated_machine machine;
    machine.add_directory(u"C:\\data")
        .add_file(u"C:\\data\\june.txt")
        .add_file(u"C:\\data\\2026\\june.txt");
    fs::create_symlink(u"june.txt", u"C:/data/latest", fs::file_status::regular_file);
    fs::create_shortcut(u"C:/data/june.txt", u"C:/data/june.lnk");
    fs::create_directory_symlink(u"2026", u"C:/data/this-year");
    fs::create_junction(u"C:/data/this-year", u"C:/data/start");
    std::ostringstream log;

    log << fs::read_symlink(u"C:/data/latest"_path) << '\n';
    log << fs::read_shortcut(u"C:/data/june.lnk"_path) << '\n';
    for (fs::link_hop const &hop : fs::link_hops(u"C:/data/start/june.txt"))
        log << fs::to_utf8(hop.link) << " leads to " << fs::to_utf8(hop.leads_to.value()) << '\n';
    log << fs::canonical(u"C:/data/start/june.txt"_path) << '\n';

    EXPECT_EQ(log.str(), shown(R"(
        june.txt
        C:\data\june.txt
        C:\data\start leads to C:\data\this-year\june.txt
        C:\data\this-year leads to C:\data\2026\june.txt
        C:\data\2026\june.txt
        )"));

    machine.remove(u"C:\\data\\2026");
    EXPECT_EQ(fs::link_hops(u"C:/data/start/june.txt").size(), 2U) << "how far a way goes";
    EXPECT_FAILURE(fs::canonical(u"C:/data/start/june.txt"), test_support::not_found(u""));
}

TEST(LinksGuide, DotsBehindALink)
{
    simulated_machine machine;
    machine.add_drive(u'D').add_directory(u"D:\\far\\away").add_file(u"D:\\far\\june.txt");
    machine.add_file(u"C:\\data\\june.txt");
    std::ostringstream log;

    fs::create_directory_symlink(u"D:/far/away", u"C:/data/link");
    fs::create_symlink(u"link\\..\\june.txt", u"C:/data/up", fs::file_status::regular_file);

    log << fs::absolute(u"C:/data/link/../june.txt"_path) << '\n';
    log << fs::canonical(u"C:/data/up"_path) << '\n';

    EXPECT_EQ(log.str(), shown(R"(
        C:\data\june.txt
        D:\far\june.txt
        )"));
}

/// How many links it takes at most, and what it throws of one more.
template <typename Call>
std::pair<int, std::string> limit_of(Call call)
{
    simulated_machine machine;
    machine.add_file(u"C:\\0");
    for (int links = 1; links < 200; ++links) {
        std::u16string const link = u"C:\\" + u16(std::to_string(links));
        machine.add_symbolic_link(link, u"C:\\" + u16(std::to_string(links - 1)));
        auto const tried = fs::attempt([&] { call(link); });
        if (!tried) {
            EXPECT_EQ(tried.error().id(), fs::fsys_excp_system_error);
            return {links - 1, "`SystemError` " + std::to_string(tried.error().error_code())};
        }
    }
    return {200, "none"};
}

TEST(LinksGuide, HowManyLinks)
{
    using text = std::u16string const &;
    std::map<std::string, std::pair<int, std::string>> const found = {
        {"status(p)", limit_of([](text p) { fs::status(p); })},
        {"canonical(p)", limit_of([](text p) { static_cast<void>(fs::canonical(p)); })},
        {"file_size(p)", limit_of([](text p) { static_cast<void>(fs::file_size(p)); })}};
    checks rows;
    for (lines const &row : rows_of(page, "| where | how many links | what then |"))
        rows[row[0]] = [&found, row] {
            EXPECT_EQ(std::to_string(found.at(row[0]).first), row[1]);
            EXPECT_EQ(found.at(row[0]).second, row[2]);
        };
    EXPECT_EQ(rows.size(), found.size());
    play(page, "| where | how many links | what then |", rows);
}

} // namespace
