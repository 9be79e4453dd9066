#include "reliability/subjects.hpp"

#include <algorithm>

namespace reliability {

namespace {

using ff::upath;
using simulation::flavour;
using simulation::right;
using test_support::printable;
using test_support::units;

char const some_code = 0; // an address in the program

// The tag of a filter that lets its names be opened like any other.
constexpr DWORD known_tag = 0x42;

text long_name()
{
    return text(120, u'n');
}

text const &long_pathname()
{
    static text const path = uR"(C:\d\)" + long_name() + u"\\" + long_name() + u"\\" + long_name();
    return path;
}

void build_tree(simulated_machine &machine, text const &at)
{
    machine.add_file(at + uR"(\a)", "a").add_file(at + uR"(\u\b)", "bb");
    machine.add_junction(at + uR"(\j)", uR"(C:\away)");
    machine.add_symbolic_link(at + uR"(\l)", u"a");
}

// Shown results.

std::string shown(text const &path)
{
    return printable(path);
}

std::string shown(std::wstring const &path)
{
    return printable(units(path));
}

std::string shown(upath const &path)
{
    return shown(path.native());
}

std::string shown(bool answer)
{
    return answer ? "yes" : "no";
}

std::string shown(std::vector<ff::link_hop> const &hops)
{
    std::string all = std::to_string(hops.size()) + " hops";
    for (auto const &hop : hops)
        all += " " + printable(hop.link);
    return all;
}

template <typename Iterator>
std::string listed(text const &p, ff::directory_options options)
{
    std::string all;
    for (auto const &entry : Iterator(p, options))
        all += printable(entry.filename()) + ' ' + shown_record(entry.known()) + "; ";
    return all;
}

std::string done()
{
    return "done";
}

constexpr unsigned int hide = ff::file_status::perms_add | ff::file_status::hidden_file;
constexpr auto deep = copy_options::recursive;
constexpr auto as_links = copy_options::copy_symlinks;
constexpr auto over = copy_options::overwrite_existing;

operation copying(char const *name, char16_t const *to, copy_options options)
{
    return {name,
            [=](text const &p) {
                ff::copy(p, text(to), options);
                return done();
            },
            to};
}

operation copying_file(char const *name, char16_t const *to, copy_options options)
{
    return {name,
            [=](text const &p) {
                ff::copy_file(p, text(to), options);
                return done();
            },
            to};
}

/// What makes `to` out of `p`.
operation making(char const *name, void (*make)(text const &, text const &),
                 char16_t const *to = free_name)
{
    return {name,
            [=](text const &p) {
                make(p, text(to));
                return done();
            },
            to};
}

operation answering(char const *name, bool (*asked)(text const &))
{
    return {name, [asked](text const &p) { return shown(asked(p)); }};
}

operation acting(char const *name, void (*act)(text const &))
{
    return {name, [act](text const &p) {
                act(p);
                return done();
            }};
}

std::vector<operation> queries()
{
    return {
        {"absolute", [](text const &p) { return shown(ff::absolute(p)); }},
        {"status", [](text const &p) { return shown_record(ff::status(p)); }},
        {"symlink_status", [](text const &p) { return shown_record(ff::symlink_status(p)); }},
        {"status_express_light",
         [](text const &p) { return shown_record(ff::status_express_light(p)); }},
        answering("exists", [](text const &p) { return ff::exists(p); }),
        answering("access exists", [](text const &p) { return ff::access(p, ff::access_exists); }),
        answering("access read", [](text const &p) { return ff::access(p, ff::access_read); }),
        answering("access write", [](text const &p) { return ff::access(p, ff::access_write); }),
        {"canonical", [](text const &p) { return shown(ff::canonical(p)); }},
        {"weakly_canonical",
         [](text const &p) { return shown(ff::weakly_canonical(p)); },
         nullptr,
         {},
         uR"(\no)"},
        {"relative", [](text const &p) { return shown(ff::relative(p, uR"(C:\d)")); }, uR"(C:\d)"},
        {"equivalent", [](text const &p) { return shown(ff::equivalent(p, text(taken_name))); },
         taken_name},
        {"space", [](text const &p) { return std::to_string(ff::space(upath(p)).free); }},
        {"get_unc_path", [](text const &p) { return shown(ff::get_unc_path(p, true)); }},
        {"read_symlink", [](text const &p) { return shown(ff::read_symlink(p)); }},
        {"link_hops", [](text const &p) { return shown(ff::link_hops(p)); }},
        {"file_size", [](text const &p) { return std::to_string(ff::file_size(p)); }},
        {"hard_link_count", [](text const &p) { return std::to_string(ff::hard_link_count(p)); }},
        {"last_write_time",
         [](text const &p) {
             return std::to_string(ff::last_write_time(p).time_since_epoch().count());
         }},
        answering("is_directory", [](text const &p) { return ff::is_directory(p); }),
        answering("is_empty", [](text const &p) { return ff::is_empty(p); }),
        {"read_shortcut",
         [](text const &p) { return shown(ff::read_shortcut(p)); },
         nullptr,
         {"shortcut", "file", "missing"}},
        {"make_native_access_form_bridge",
         [](text const &p) {
             return shown(ff::detail::windows::make_native_access_form_bridge(p));
         }},
        {"target_status_bridge",
         [](text const &p) {
             return shown_record(ff::detail::windows::target_status_bridge(test_support::wide(p)));
         }},
        {"directory_iterator",
         [](text const &p) {
             return listed<ff::directory_iterator>(p, ff::directory_options::none);
         }},
        {"recursive_directory_iterator",
         [](text const &p) {
             return listed<ff::recursive_directory_iterator>(p, ff::directory_options::none);
         }},
        {"recursive_directory_iterator, following",
         [](text const &p) {
             return listed<ff::recursive_directory_iterator>(
                 p, ff::directory_options::follow_directory_symlink);
         }},
        {"directory_entry",
         [](text const &p) {
             ff::directory_entry entry(p);
             entry.refresh();
             return shown_record(entry.known());
         }},
    };
}

std::vector<operation> changes()
{
    return {
        acting("create_directory", [](text const &p) { ff::create_directory(p); }),
        {"create_directories",
         [](text const &p) {
             ff::create_directories(p);
             return done();
         },
         nullptr,
         {},
         uR"(\m)"},
        {"ensure_directories",
         [](text const &p) { return shown(ff::ensure_directories(p)); },
         nullptr,
         {},
         uR"(\m)"},
        making("create_directory like another",
               [](text const &p, text const &to) { ff::create_directory(to, p); }),
        acting("remove", [](text const &p) { ff::remove(p); }),
        acting("remove_file", [](text const &p) { ff::remove_file(p); }),
        acting("remove_directory", [](text const &p) { ff::remove_directory(p); }),
        acting("remove_all", [](text const &p) { ff::remove_all(p); }),
        {"remove_all with options",
         [](text const &p) { return shown_report(ff::remove_all(p, ff::removal_options())); }},
        {"remove_all of read-only names",
         [](text const &p) {
             return shown_report(ff::remove_all(p, ff::removal_options().clear_read_only()));
         }},
        {"remove_all that goes on",
         [](text const &p) {
             return shown_report(ff::remove_all(p, ff::removal_options().keep_going()));
         }},
        making("rename", [](text const &p, text const &to) { ff::rename(p, to); }),
        {"rename over",
         [](text const &p) {
             ff::rename(p, text(taken_name));
             return done();
         },
         taken_name},
        copying("copy", free_name, copy_options::none),
        copying("copy a tree", free_name, deep | as_links),
        copying("copy over", taken_name, over),
        copying("copy newer", taken_name, copy_options::update_existing),
        copying("copy skipping", taken_name, copy_options::skip_existing),
        copying("copy into a directory", uR"(C:\d\u)", copy_options::none),
        copying("copy as links", free_name, copy_options::create_symlinks),
        copying("copy as hard links", free_name, copy_options::create_hard_links),
        copying("copy directories", free_name, deep | copy_options::directories_only),
        copying_file("copy_file", free_name, copy_options::none),
        copying_file("copy_file over", taken_name, over),
        copying_file("copy_file newer", taken_name, copy_options::update_existing),
        making("copy_directory", [](text const &p, text const &to) { ff::copy_directory(p, to); }),
        acting("permissions", [](text const &p) { ff::permissions(p, hide); }),
        making("create_symlink",
               [](text const &p, text const &to) {
                   ff::create_symlink(p, to, ff::file_status::file_type_auto);
               }),
        making("copy_symlink", [](text const &p, text const &to) { ff::copy_symlink(p, to); }),
        making("create_hard_link",
               [](text const &p, text const &to) { ff::create_hard_link(p, to); }),
        making("create_junction",
               [](text const &p, text const &to) { ff::create_junction(p, to); }),
        making(
            "create_shortcut", [](text const &p, text const &to) { ff::create_shortcut(p, to); },
            uR"(C:\d\new.lnk)"),
        acting("last_write_time to set",
               [](text const &p) {
                   ff::last_write_time(
                       p, ff::file_time_type(ff::file_time_type::duration(1234567890)));
               }),
        acting("resize_file", [](text const &p) { ff::resize_file(p, 1); }),
        {"change_current_path", [](text const &p) { return shown(ff::change_current_path(p)); }},
    };
}

/// Those that are asked about nothing.
std::vector<operation> others()
{
    std::vector<std::string> const once = {"file"};
    return {
        {"get_current_path", [](text const &) { return shown(ff::get_current_path()); }, nullptr,
         once},
        {"temp_directory_path", [](text const &) { return shown(ff::temp_directory_path()); },
         nullptr, once},
        {"get_base_path",
         [](text const &) {
             return shown(ff::detail::get_base_path(const_cast<char *>(&some_code)));
         },
         nullptr, once},
        {"get_module_path_from_address",
         [](text const &) {
             return shown(ff::detail::get_module_path_from_address(const_cast<char *>(&some_code)));
         },
         nullptr, once},
    };
}

void add_lines(simulated_machine const &machine, text const &path, lines &all)
{
    std::string line = printable(path) + ' ' + std::to_string(machine.attributes(path)) + ' ' +
                       machine.reparse_data(path);
    if (machine.is_file(path))
        line += machine.content(path) + ' ' + std::to_string(machine.link_count(path));
    all.push_back(std::move(line));
    if (!machine.is_directory(path) || machine.reparse_tag(path) != 0)
        return;
    for (text const &name : machine.entries(path))
        add_lines(machine, path + (path.ends_with(u'\\') ? u"" : u"\\") + name, all);
}

std::vector<subject> make_subjects()
{
    auto const link = [](char const *name, char16_t const *p, void (*build)(simulated_machine &),
                         bool is_directory, bool is_there = true) {
        subject made{name, p, build};
        made.is_symlink = true;
        made.is_directory = is_directory;
        made.is_there = made.is_readable = is_there;
        return made;
    };
    auto const directory = [](char const *name, char16_t const *p,
                              void (*build)(simulated_machine &)) {
        subject made{name, p, build};
        made.is_directory = true;
        return made;
    };
    auto const lost = [](char const *name, char16_t const *p, void (*build)(simulated_machine &),
                         bool is_there) {
        subject made{name, p, build};
        made.is_there = is_there;
        made.is_readable = false;
        return made;
    };
    return {
        {"file", uR"(C:\d\o)", [](auto &m) { m.add_file(uR"(C:\d\o)", "old"); }},
        directory("directory", uR"(C:\d\o)", [](auto &m) { build_tree(m, uR"(C:\d\o)"); }),
        directory("empty directory", uR"(C:\d\o)", [](auto &m) { m.add_directory(uR"(C:\d\o)"); }),
        link(
            "link to a file", uR"(C:\d\o)",
            [](auto &m) { m.add_symbolic_link(uR"(C:\d\o)", uR"(..\away\kept)"); }, false),
        link(
            "link to a directory", uR"(C:\d\o)",
            [](auto &m) { m.add_symbolic_link(uR"(C:\d\o)", uR"(C:\away)", flavour::directory); },
            true),
        link(
            "broken link", uR"(C:\d\o)",
            [](auto &m) { m.add_symbolic_link(uR"(C:\d\o)", u"gone"); }, false, false),
        directory("junction", uR"(C:\d\o)",
                  [](auto &m) { m.add_junction(uR"(C:\d\o)", uR"(C:\away)"); }),
        directory("mount point", uR"(C:\d\o)",
                  [](auto &m) { m.add_mount_point(uR"(C:\d\o)", u'D'); }),
        lost(
            "missing", uR"(C:\d\o)", [](auto &) {}, false),
        lost(
            "missing directory", uR"(C:\no\o)", [](auto &) {}, false),
        {"file on a share", uR"(\\server\share\o)",
         [](auto &m) { m.add_file(uR"(\\server\share\o)", "old"); }},
        directory("directory on a share", uR"(\\server\share\o)",
                  [](auto &m) { m.add_file(uR"(\\server\share\o\a)", "a"); }),
        {"file on a mapped drive", uR"(X:\o)",
         [](auto &m) { m.add_file(uR"(\\server\share\o)", "old"); }},
        {"long name", long_pathname().c_str(), [](auto &m) { m.add_file(long_pathname(), "old"); }},
        {"trailing stops", uR"(C:\d\o...)", [](auto &m) { m.add_file(uR"(C:\d\o)", "old"); }},
        {"read-only file", uR"(C:\d\o)",
         [](auto &m) {
             m.add_file(uR"(C:\d\o)", "old").set_attributes(uR"(C:\d\o)", FILE_ATTRIBUTE_READONLY);
         }},
        lost(
            "denied file", uR"(C:\d\o)",
            [](auto &m) {
                m.add_file(uR"(C:\d\o)", "old").deny(uR"(C:\d\o)", right::read);
                m.deny(uR"(C:\d\o)", right::write).deny(uR"(C:\d\o)", right::remove);
            },
            true),
        {"shortcut", uR"(C:\d\o.lnk)",
         [](auto &m) { m.add_shortcut(uR"(C:\d\o.lnk)", uR"(C:\away\kept)"); }},
        {"other reparse point", uR"(C:\d\o)",
         [](auto &m) {
             m.add_reparse_point(uR"(C:\d\o)", known_tag, std::string(16, 'g'));
             m.handle_tag(known_tag);
         }},
    };
}

} // namespace

void build_disk(simulated_machine &machine)
{
    machine.add_drive(u'D').add_file(uR"(D:\m)", "mounted");
    machine.add_share(u"server", u"share").map_drive(u'X', u"server", u"share");
    machine.add_file(uR"(C:\away\kept)", "kept").add_file(uR"(C:\d\taken)", "new");
    machine.add_directory(uR"(C:\d\u)").add_directory(uR"(C:\temp)");
    machine.set_times(uR"(C:\d\taken)", {100, 100, 100});
    machine.add_file(uR"(C:\Program\bin\win64\program.exe)");
    machine.set_program_pathname(uR"(C:\program\bin\win64\program.exe)");
    machine.set_current_directory(uR"(C:\d)");
    ::SetEnvironmentVariableW(L"TMP", L"C:\\temp");
}

std::vector<subject> const &subjects()
{
    static std::vector<subject> const all = make_subjects();
    return all;
}

std::vector<operation> const &operations()
{
    static std::vector<operation> const all = [] {
        std::vector<operation> made = queries();
        for (auto const &more : {changes(), others()})
            made.insert(made.end(), more.begin(), more.end());
        return made;
    }();
    return all;
}

bool takes(operation const &tried, subject const &on)
{
    return tried.only.empty() ||
           std::find(tried.only.begin(), tried.only.end(), on.name) != tried.only.end();
}

lines disk_of(simulated_machine const &machine)
{
    lines all;
    for (char16_t const *root : {u"C:\\", u"D:\\", uR"(\\server\share)"})
        add_lines(machine, root, all);
    all.push_back("in " + printable(machine.current_directory()));
    std::sort(all.begin(), all.end());
    return all;
}

} // namespace reliability
