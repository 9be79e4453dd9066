// Each kind of `from` with each kind of `to` and up to two options: what is reported, and
// what is on the disk afterwards, name by name.

#include "operations/copy_model.hpp"
#include "support/calls.hpp"

#include <fl/filesystem/operations.hpp>

#include <iterator>

namespace fl::filesystem::tests {
namespace {

using copy_model::lines_of;
using copy_model::link_targets;
using copy_model::read_disk;
using std::filesystem::copy_options;

/// A machine to copy on, which knows where its links lead.
struct fixture
{
    simulated_machine machine;
    link_targets targets;

    void link(std::u16string const &path, std::u16string const &target, flavour is = flavour::file)
    {
        machine.add_symbolic_link(path, target, is);
        targets[machine.reparse_data(path)] = target;
    }
    /// It tells people something else than the system, so that both are seen to be copied.
    void junction(std::u16string const &path, std::u16string const &target)
    {
        machine.add_junction(path, uR"(\??\)" + target, target + u'\\');
        targets[machine.reparse_data(path)] = target;
    }
    void file(std::u16string const &path, std::string_view content, std::uint64_t written)
    {
        machine.add_file(path, content).set_times(path, {1000, 2000, written});
    }
    void read_only_file(std::u16string const &path, std::string_view content)
    {
        file(path, content, 200);
        machine.set_attributes(path, FILE_ATTRIBUTE_READONLY);
    }
};

/// Puts something in the place of the pathname.
using builder = void (*)(fixture &, std::u16string const &);

constexpr DWORD other_tag = 0x80000099; // of Microsoft's, so that any bytes may follow

void add_tree(fixture &made, std::u16string const &path)
{
    made.file(path + uR"(\d\g)", "in a directory", 150);
    made.file(path + uR"(\f)", "in a tree", 250);
    made.junction(path + uR"(\j)", uR"(C:\h\dir)");
    made.link(path + uR"(\ld)", uR"(C:\h\dir)", flavour::directory);
    made.link(path + uR"(\lf)", uR"(C:\h\file)");
}

/// Names that the system, without a long prefix, takes for others.
void add_twins(fixture &made, std::u16string const &path)
{
    made.file(path + uR"(\a)", "with nothing behind it", 250);
    made.file(path + uR"(\a )", "with a blank", 250);
    made.file(path + uR"(\a.)", "with a full stop", 250);
    made.file(path + uR"(\d\g)", "in a directory", 150);
    made.file(path + uR"(\d.\g)", "in its twin", 150);
    made.file(path + uR"(\d.\g.)", "a twin in a twin", 150);
    made.link(path + uR"(\l.)", uR"(C:\h\file)");
    made.file(path + uR"(\z)", "behind them", 200);
}

struct kind
{
    char const *name;
    builder build;
};

// What both can be.
constexpr kind missing = {"missing", [](auto &, auto &) {}};
constexpr kind broken_link = {"broken link",
                              [](auto &made, auto &path) { made.link(path, uR"(C:\h\none)"); }};
constexpr kind broken_junction = {
    "broken junction", [](auto &made, auto &path) { made.junction(path, uR"(C:\h\none)"); }};
constexpr kind other = {"other reparse point", [](auto &made, auto &path) {
                            made.machine.add_reparse_point(path, other_tag, "bytes");
                        }};
constexpr kind other_directory = {"other reparse point, directory", [](auto &made, auto &path) {
                                      made.machine.add_reparse_point(path, other_tag, "bytes",
                                                                     flavour::directory);
                                  }};
constexpr kind directory = {"directory",
                            [](auto &made, auto &path) { made.machine.add_directory(path); }};
constexpr kind read_only_file = {
    "read-only file", [](auto &made, auto &path) { made.read_only_file(path, "read-only"); }};
constexpr kind mount_point = {"mount point", [](auto &made, auto &path) {
                                  made.machine.add_mount_point(path, u'D');
                                  made.targets[made.machine.reparse_data(path)] = u"D:";
                              }};

constexpr kind from_kinds[] = {
    missing,
    {"file", [](auto &made, auto &path) { made.file(path, "from", 200); }},
    read_only_file,
    directory,
    {"tree", add_tree},
    {"tree with twins", add_twins},
    {"file link", [](auto &made, auto &path) { made.link(path, uR"(C:\h\file)"); }},
    {"directory link",
     [](auto &made, auto &path) { made.link(path, uR"(C:\h\dir)", flavour::directory); }},
    broken_link,
    {"junction", [](auto &made, auto &path) { made.junction(path, uR"(C:\h\dir)"); }},
    broken_junction,
    mount_point,
    other,
    other_directory,
};

constexpr kind to_kinds[] = {
    missing,
    {"file", [](auto &made, auto &path) { made.file(path, "to", 100); }},
    read_only_file,
    directory,
    {"directory with newer and older files",
     [](auto &made, auto &path) {
         made.file(path + uR"(\a.)", "older, a twin", 100);
         made.file(path + uR"(\f)", "older", 100);
         made.file(path + uR"(\x)", "newer", 300);
     }},
    {"directory in which everything is in the way",
     [](auto &made, auto &path) {
         made.file(path + uR"(\d\g)", "in the way", 100);
         made.read_only_file(path + uR"(\f)", "in the way");
         made.file(path + uR"(\j)", "in the way", 100);
         made.machine.add_directory(path + uR"(\x)");
     }},
    {"directory with a file in the place of a directory",
     [](auto &made, auto &path) { made.file(path + uR"(\d)", "in the way", 100); }},
    {"file link", [](auto &made, auto &path) { made.link(path, uR"(C:\h\other)"); }},
    {"directory link",
     [](auto &made, auto &path) { made.link(path, uR"(C:\h\place)", flavour::directory); }},
    broken_link,
    {"broken directory link",
     [](auto &made, auto &path) { made.link(path, uR"(C:\h\none)", flavour::directory); }},
    {"link broken above", [](auto &made, auto &path) { made.link(path, uR"(C:\none\none)"); }},
    {"junction", [](auto &made, auto &path) { made.junction(path, uR"(C:\h\place)"); }},
    broken_junction,
    mount_point,
    other,
    other_directory,
    {"file link to `from`", [](auto &made, auto &path) { made.link(path, uR"(C:\s\x)"); }},
    {"directory link to `from`",
     [](auto &made, auto &path) { made.link(path, uR"(C:\s\x)", flavour::directory); }},
    {"hard link",
     [](auto &made, auto &path) {
         if (made.machine.exists(uR"(C:\s\x)") && made.machine.is_file(uR"(C:\s\x)"))
             made.machine.add_hard_link(path, uR"(C:\s\x)");
     }},
};

/// Names of `to` for which nothing is built.
struct bare_name
{
    char const *title;
    std::u16string_view path;
};

constexpr bare_name names[] = {
    {"missing parent", uR"(C:\none\y)"},
    {"below a file", uR"(C:\h\file\y)"},
    {"itself", uR"(C:\s\x)"},
    {"file that links lead to", uR"(C:\h\file)"},
    {"directory they lead to", uR"(C:\h\dir)"},
};

/// Each enumerator, each two, and the three that exclude each other.
std::vector<copy_options> option_sets()
{
    constexpr copy_options all[] = {
        copy_options::none,
        copy_options::skip_existing,
        copy_options::overwrite_existing,
        copy_options::update_existing,
        copy_options::recursive,
        copy_options::copy_symlinks,
        copy_options::skip_symlinks,
        copy_options::directories_only,
        copy_options::create_symlinks,
        copy_options::create_hard_links,
    };
    std::vector<copy_options> sets = {copy_options::none};
    for (std::size_t i = 1; i < std::size(all); ++i) {
        sets.push_back(all[i]);
        for (std::size_t j = i + 1; j < std::size(all); ++j) {
            sets.push_back(all[i] | all[j]);
        }
    }
    sets.push_back(copy_options::skip_existing | copy_options::overwrite_existing |
                   copy_options::update_existing);
    return sets;
}

void build_surroundings(fixture &made)
{
    made.machine.keep_journal(false);
    made.machine.add_drive(u'D').add_directory(uR"(C:\s)").add_directory(uR"(C:\t)");
    made.machine.add_directory(uR"(C:\h\place)");
    made.file(uR"(C:\h\file)", "behind a link", 200);
    made.file(uR"(C:\h\other)", "behind another", 200);
    made.file(uR"(C:\h\dir\f)", "behind a directory link", 250);
    made.file(uR"(C:\h\dir\sub\g)", "below it", 150);
    made.file(uR"(D:\f)", "on another volume", 200);
    made.file(uR"(D:\sub\g)", "below its root", 200);
}

/// What the caller is told, who can read `from` as far as it can be reached.
maybe_failure report(copy_model::disk const &all, copy_model::answer const &ended,
                     std::u16string const &from, std::u16string const &to)
{
    using copy_model::find;
    using copy_model::found;
    if (!ended.has_failed())
        return std::nullopt;
    if (ended.is_generic && ended.number == 21)
        return file_is_directory(from);
    found const link = find(all, from, false);
    bool const is_link = link.what && link.what->tag == IO_REPARSE_TAG_SYMLINK;
    bool const is_there = find(all, from, true).code == ERROR_SUCCESS;
    switch (ended.number) {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
        return not_found(is_there ? to : from);
    case ERROR_ACCESS_DENIED:
        return denied(is_link ? from : to);
    case ERROR_CANT_ACCESS_FILE:
        return denied(from);
    case ERROR_FILE_EXISTS:
    case ERROR_ALREADY_EXISTS:
        return file_exists(to);
    case ERROR_DIRECTORY:
        return not_directory(to);
    default:
        return system_error(ended.number, from, to);
    }
}

/// The refusal of options that exclude each other.
maybe_failure refusal(copy_options options)
{
    if (copy_model::has(options, copy_options::copy_symlinks) &&
        copy_model::has(options, copy_options::skip_symlinks))
        return invalid_argument("Invalid combination selected: copy_symlinks & "
                                "skip_symlinks cannot be used together");
    int count = 0;
    for (copy_options const one : {copy_options::skip_existing, copy_options::overwrite_existing,
                                   copy_options::update_existing})
        count += copy_model::has(options, one) ? 1 : 0;
    if (count > 1)
        return invalid_argument(
            "Invalid combination selected: overwrite_if_exists, skip_existing & "
            "update_existing cannot be used together");
    return std::nullopt;
}

/// Runs `copy` on a fresh machine and compares all with what the model makes of it.
void check(kind const &source, kind const &target, std::u16string const &to, copy_options options,
           std::string const &title)
{
    std::u16string const from = uR"(C:\s\x)";
    fixture made;
    build_surroundings(made);
    source.build(made, from);
    target.build(made, to);
    auto expected_disk = read_disk(made.machine, made.targets);
    auto expected = refusal(options);
    if (!expected) {
        auto const ended = copy_model::copying(expected_disk, options).copy(from, to);
        expected = report(expected_disk, ended, from, to);
    }
    EXPECT_FAILURE(copy(from, to, options), expected) << title;
    EXPECT_EQ(lines_of(read_disk(made.machine, made.targets)), lines_of(expected_disk)) << title;
    EXPECT_EQ(made.machine.open_handles() + made.machine.find_handles(), 0) << title;
}

class CopyTable : public testing::TestWithParam<kind>
{
};

TEST_P(CopyTable, EachTargetWithEachTwoOptions)
{
    kind const &source = GetParam();
    int number = 0;
    for (copy_options const options : option_sets()) {
        std::string const title =
            std::string(source.name) + ", options no. " + std::to_string(number++) + ", to: ";
        for (kind const &target : to_kinds)
            check(source, target, uR"(C:\t\y)", options, title + target.name);
        for (bare_name const &target : names) {
            // through its links the tree would be copied into itself, without an end here
            bool const nests = source.build == &add_tree && target.path == uR"(C:\h\dir)";
            if (!nests)
                check(source, to_kinds[0], std::u16string(target.path), options,
                      title + target.title);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(From, CopyTable, testing::ValuesIn(from_kinds), [](auto const &tested) {
    std::string title = tested.param.name;
    std::erase_if(title, [](char unit) { return unit == ' ' || unit == ',' || unit == '-'; });
    return title;
});

} // namespace
} // namespace fl::filesystem::tests
