// The code and the tables of docs/long-pathnames.md.

#include "guide/page.hpp"

#include "support/workspace.hpp"

#include <algorithm>
#include <fstream>
#include <sstream>

namespace {

using namespace guide;
using copy_options = std::filesystem::copy_options;

char const page[] = "docs/long-pathnames.md";

/// A pathname of that many units below `head`, of names of 200 units at most.
std::u16string of_units(std::u16string const &head, std::size_t count)
{
    std::u16string path = head;
    while (path.size() < count) {
        std::size_t const left = count - path.size() - 1;
        std::size_t const name = left > 200 ? std::min<std::size_t>(200, left - 2) : left;
        path += u'\\' + std::u16string(name, u'a');
    }
    return path;
}

std::u16string parent_of(std::u16string const &path)
{
    return path.substr(0, path.rfind(u'\\'));
}

struct limit
{
    std::size_t longest = 0;
    std::string failure; ///< of one unit more
};

/// Tries every length, on a fresh machine each.
template <typename Call>
limit limit_of(Call call)
{
    limit found;
    for (std::size_t units = 230; units < 300; ++units) {
        simulated_machine machine;
        auto const tried = fs::attempt([&] { call(machine, units); });
        if (tried && found.failure.empty()) {
            found.longest = units;
        } else if (!tried && found.failure.empty()) {
            found.failure = tried.error().identifier().substr(std::string("fl:filesystem:").size());
        }
        EXPECT_EQ(tried.has_value(), found.failure.empty()) << units << " after a failure";
    }
    return found;
}

limit of_shortcut_targets()
{
    limit found{0, "is cut"};
    for (std::size_t units = 230; units < 300; ++units) {
        simulated_machine machine;
        std::u16string const target = of_units(u"C:", units);
        machine.add_file(target);
        fs::create_shortcut(target, u"C:\\s.lnk");
        std::u16string const read = fs::read_shortcut(u"C:\\s.lnk");
        if (read == target)
            found.longest = units;
        else
            EXPECT_EQ(read, target.substr(0, read.size())) << "not cut";
    }
    return found;
}

limit of_links_in_relative()
{
    limit found{0, "they are names like others"};
    for (std::size_t units = 230; units < 300; ++units) {
        simulated_machine machine;
        std::u16string const link = of_units(u"C:", units);
        machine.add_file(u"C:\\target").add_symbolic_link(link, u"C:\\target");
        std::u16string const way = fs::relative(link, u"C:\\");
        if (way == u"target")
            found.longest = units;
        else
            EXPECT_EQ(way, link.substr(3));
    }
    return found;
}

TEST(LongPathnamesGuide, WhereTheOldLimitRules)
{
    std::map<std::string, std::function<limit()>> const limits = {
        {"`create_symlink(target, link)`: `link`",
         [] {
             return limit_of([](simulated_machine &machine, std::size_t units) {
                 std::u16string const link = of_units(u"C:", units);
                 machine.add_directory(parent_of(link));
                 fs::create_symlink(u"x", link, fs::file_status::regular_file);
             });
         }},
        {"`copy_symlink(existing, link)`: `existing`",
         [] {
             return limit_of([](simulated_machine &machine, std::size_t units) {
                 machine.add_symbolic_link(of_units(u"C:", units), u"x");
                 fs::copy_symlink(of_units(u"C:", units), u"C:\\l");
             });
         }},
        {"`copy_symlink(existing, link)`: `link`",
         [] {
             return limit_of([](simulated_machine &machine, std::size_t units) {
                 std::u16string const link = of_units(u"C:", units);
                 machine.add_directory(parent_of(link)).add_symbolic_link(u"C:\\l", u"x");
                 fs::copy_symlink(u"C:\\l", link);
             });
         }},
        {"change_current_path(p)",
         [] {
             return limit_of([](simulated_machine &machine, std::size_t units) {
                 machine.add_directory(of_units(u"C:", units));
                 fs::change_current_path(of_units(u"C:", units));
             });
         }},
        {"`copy(from, to)`, both shorter than 248: a file in `from`",
         [] {
             return limit_of([](simulated_machine &machine, std::size_t units) {
                 std::u16string const file = of_units(u"C:\\f" + std::u16string(200, u'f'), units);
                 machine.add_file(file);
                 fs::copy(parent_of(file), u"C:\\t");
             });
         }},
        {"`copy(from, to)`, both shorter than 248: a directory to be made in `to`",
         [] {
             return limit_of([](simulated_machine &machine, std::size_t units) {
                 std::u16string const to = u"C:\\t" + std::u16string(200, u't');
                 machine.add_directory(u"C:\\f\\" + of_units(to, units).substr(to.size() + 1));
                 fs::copy(u"C:\\f", to, copy_options::recursive);
             });
         }},
        {"`relative(p, base)`: links in `p` are followed", of_links_in_relative},
        {"`read_shortcut(p)`: the target that `create_shortcut` stored", of_shortcut_targets},
        {"a stream of the standard library, without `to_standard`",
         [] {
             simulated_machine machine; // streams aren't the machine's: what they would be given
             limit found{0, "isn't open"};
             for (std::size_t units = 230; units < 300; ++units)
                 if (fs::to_standard(of_units(u"C:", units)).u16string() == of_units(u"C:", units))
                     found.longest = units;
             return found;
         }},
    };
    checks rows;
    std::map<std::string, lines> cells;
    for (lines const &row : rows_of(page, "| operation | longest | what one unit more leads to |"))
        cells[row[0]] = row;
    for (auto const &[name, find] : limits)
        rows[name] = [&cells, &row = name, &look = find] {
            limit const found = look();
            EXPECT_EQ(std::to_string(found.longest), cells[row][1]);
            EXPECT_EQ(found.failure, cells[row][2]);
        };
    play(page, "| operation | longest | what one unit more leads to |", rows);
}

TEST(LongPathnamesGuide, WithTheOptInTheOldLimitIsGone)
{
    simulated_machine machine;
    machine.set_long_pathnames(true);
    std::u16string const deep = of_units(u"C:", 400), to = of_units(u"C:\\f", 400);
    machine.add_directory(deep).add_symbolic_link(u"C:\\l", u"x");
    fs::create_symlink(u"x", deep + u"\\a", fs::file_status::regular_file);
    fs::copy_symlink(deep + u"\\a", deep + u"\\b");
    EXPECT_EQ(machine.entries(deep), (test_support::names{u"a", u"b"}));
    machine.add_file(to);
    fs::copy(u"C:\\f", u"C:\\g", copy_options::recursive);
    EXPECT_TRUE(machine.exists(u"C:\\g" + to.substr(4)));
    machine.add_file(u"C:\\target").add_symbolic_link(deep + u"\\c", u"C:\\target");
    EXPECT_EQ(fs::relative(deep + u"\\c", u"C:\\"), u"target");
}

TEST(LongPathnamesGuide, TheRule)
{
    simulated_machine machine;
    auto const form = [](std::u16string const &path) {
        return fs::detail::from_filesystem(fs::detail::make_native_access_form(path));
    };
    std::u16string const drive = of_units(u"C:", 259), longer = of_units(u"C:", 260);
    std::u16string const server = of_units(u"\\\\server\\share", 260);
    play(page, "| form of the pathname | goes to the system |",
         {{"up to 259 units", [&] { EXPECT_EQ(form(drive), drive); }},
          {"260 units and more, on a drive", [&] { EXPECT_EQ(form(longer), u"\\\\?\\" + longer); }},
          {"260 units and more, on a server",
           [&] { EXPECT_EQ(form(server), u"\\\\?\\UNC\\" + server.substr(2)); }},
          {"a text with a prefix of its own", [&] {
               EXPECT_EQ(fs::detail::make_native_access_form_with_cleanup(u"\\\\?\\C:\\x"),
                         L"C:\\x");
               EXPECT_EQ(fs::detail::from_filesystem(
                             fs::detail::make_native_access_form_with_cleanup(u"\\\\?\\" + longer)),
                         u"\\\\?\\" + longer);
           }}});
}

TEST(LongPathnamesGuide, Code)
{
    simulated_machine machine;
    machine.add_file(u"C:\\data\\june.txt", "soup");
    std::ostringstream log;

    fs::upath deep(u"C:/data");
    for (int level = 0; level < 100; ++level)
        deep /= std::u16string(300 - 50, u'a');

    fs::create_directories(deep);
    fs::upath const file = deep / u"june.txt";
    fs::copy_file(u"C:/data/june.txt", file);

    log << file.native().size() << " units, " << fs::file_size(file) << " bytes\n";
    fs::remove_all(u"C:/data/" + std::u16string(250, u'a'));

    std::wstring const for_the_system = fs::detail::make_native_access_form(file.native());
    std::ifstream reading(fs::to_standard(file)); // or fs::open(file, std::ios::in)

    EXPECT_EQ(for_the_system, L"\\\\?\\" + file.wstring());

    EXPECT_EQ(log.str(), shown(R"(
        25116 units, 4 bytes
        )"));
    EXPECT_EQ(machine.entries(u"C:\\data"), test_support::names{u"june.txt"});
}

TEST(LongPathnamesGuide, ALinkIsMadeWhereItIsShortAndMoved)
{
    simulated_machine machine;
    machine.add_directory(u"C:\\data");
    std::u16string const deep = of_units(u"C:", 400);
    machine.add_file(deep + u"\\june.txt", "soup");

    fs::create_symlink(u"june.txt", u"C:/data/latest", fs::file_status::regular_file);
    fs::rename(u"C:/data/latest", deep + u"\\latest");

    EXPECT_EQ(fs::read_symlink(deep + u"\\latest"), u"june.txt");
    EXPECT_EQ(fs::file_size(deep + u"\\latest"), 4U);
    EXPECT_EQ(machine.entries(u"C:\\data"), test_support::names());
}

TEST(LongPathnamesGuide, CopyOfALongFolderHasNoLimit)
{
    simulated_machine machine;
    std::u16string const from = of_units(u"C:", 248);
    machine.add_file(from + u"\\" + std::u16string(100, u'x'), "soup");
    fs::copy(from, u"C:\\t");
    EXPECT_EQ(machine.content(u"C:\\t\\" + std::u16string(100, u'x')), "soup");
}

} // namespace
