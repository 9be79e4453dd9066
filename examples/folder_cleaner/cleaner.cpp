#include "cleaner.hpp"

#include <cstddef>
#include <cstdint>
#include <exception>
#include <ostream>
#include <string>

namespace cleaner {

namespace {

/// Many programs have room for 260 units, the last of which is a NUL.
constexpr std::size_t longest_for_most = 259;

constexpr char usage[] = "usage: folder_cleaner list FOLDER\n"
                         "       folder_cleaner move-long FOLDER ELSEWHERE\n"
                         "       folder_cleaner remove FOLDER\n";

struct totals
{
    std::uint64_t files = 0, bytes = 0, long_names = 0;
    std::uint64_t folders = 0, symbolic_links = 0, junctions = 0;
};

bool has_long_name(fs::directory_entry const &entry)
{
    return entry.path().native().size() > longest_for_most;
}

std::string count(std::uint64_t number, std::string const &one)
{
    return std::to_string(number) + ' ' + one + (number == 1 ? "" : "s");
}

/// A link's target isn't in the listing. It is read, and that can fail.
bool tell_link(fs::directory_entry const &entry, std::ostream &out, std::ostream &log)
{
    out << entry << (entry.is_symlink() ? ": symbolic link" : ": junction");
    auto const target = fs::attempt([&] { return fs::read_symlink(entry); });
    if (target)
        out << " to " << *target;
    else
        log << target.error().describe() << '\n';
    out << '\n';
    return target.has_value();
}

void tell_totals(totals const &found, std::ostream &out)
{
    out << count(found.files, "file") << " of " << count(found.bytes, "byte") << ", "
        << found.long_names << " of them with a long name; " << count(found.folders, "folder")
        << ", " << count(found.symbolic_links, "symbolic link") << ", "
        << count(found.junctions, "junction") << '\n';
}

/// Names that are too long are taken out of their folders, so two can be the same.
fs::upath free_name(fs::upath const &folder, std::u16string const &filename)
{
    fs::upath name = folder / filename;
    for (int number = 2; fs::exists(name); ++number)
        name = folder / (fs::from_utf8(std::to_string(number) + '-') + filename);
    return name;
}

} // namespace

bool list(fs::upath const &folder, std::ostream &out, std::ostream &log)
{
    totals found;
    bool is_complete = true;
    for (auto const &entry : fs::recursive_directory_iterator(fs::absolute(folder))) {
        if (entry.is_symlink() || entry.is_junction()) {
            ++(entry.is_symlink() ? found.symbolic_links : found.junctions);
            is_complete = tell_link(entry, out, log) && is_complete;
        } else if (entry.is_directory()) {
            ++found.folders;
            out << entry << ": folder\n";
        } else {
            ++found.files;
            found.bytes += entry.file_size();
            if (has_long_name(entry))
                ++found.long_names;
            out << entry << ": " << count(entry.file_size(), "byte") << '\n';
        }
    }
    tell_totals(found, out);
    return is_complete;
}

bool move_long_names(fs::upath const &folder, fs::upath const &elsewhere, std::ostream &out,
                     std::ostream &log)
{
    fs::ensure_directories(elsewhere);
    std::uint64_t moved = 0, failed = 0;
    // all names first: nothing is moved while the folder is being listed
    std::vector<fs::directory_entry> const all(
        fs::recursive_directory_iterator(fs::absolute(folder)), fs::recursive_directory_iterator());
    for (fs::directory_entry const &entry : all) {
        if (!has_long_name(entry) || !fs::file_status::is_regular(entry.known()))
            continue;
        auto const target = fs::attempt([&] {
            fs::upath const name = free_name(elsewhere, entry.filename());
            fs::rename(entry, name);
            return name;
        });
        ++(target ? moved : failed);
        if (target)
            out << entry << ": now " << *target << '\n';
        else // the failure may name the new place
            log << entry << ": " << target.error().describe() << '\n';
    }
    out << count(moved, "file") << " moved\n";
    return failed == 0;
}

bool remove(fs::upath const &folder, std::ostream &out, std::ostream &log)
{
    auto const tell = [&out](fs::removal_progress const &progress) {
        if (progress.removed % 100 == 0)
            out << count(progress.removed, "name") << " so far\n";
        return true; // go on
    };
    fs::removal_report const report = fs::remove_all(
        folder, fs::removal_options().clear_read_only().keep_going().on_progress(tell));
    for (fs::failure const &left : report.failures())
        log << left.describe() << '\n';
    out << count(report.removed(), "name") << " removed\n";
    return report.is_complete();
}

int run(std::vector<fs::upath> const &arguments, std::ostream &out, std::ostream &log)
{
    fs::upath const command = arguments.empty() ? fs::upath() : arguments[0];
    try {
        if (command == u"list" && arguments.size() == 2)
            return list(arguments[1], out, log) ? 0 : 1;
        if (command == u"move-long" && arguments.size() == 3)
            return move_long_names(arguments[1], arguments[2], out, log) ? 0 : 1;
        if (command == u"remove" && arguments.size() == 2)
            return remove(arguments[1], out, log) ? 0 : 1;
    } catch (std::exception const &failure) {
        log << fs::describe(failure) << '\n';
        return 1;
    }
    log << usage;
    return 2;
}

} // namespace cleaner
