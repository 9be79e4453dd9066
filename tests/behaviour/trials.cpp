#include "behaviour/trials.hpp"

#include "behaviour/scene.hpp"

#include <fl/filesystem/copy_progress.hpp>
#include <fl/filesystem/directory.hpp>
#include <fl/filesystem/links.hpp>
#include <fl/filesystem/operations.hpp>
#include <fl/filesystem/queries.hpp>
#include <fl/filesystem/removal.hpp>
#include <fl/filesystem/standard.hpp>

#include <windows.h>

#include <chrono>
#include <cstdint>
#include <iterator>
#include <sstream>
#include <string>

namespace behaviour {

namespace {

using namespace fl::filesystem;
using text = std::u16string;

std::string answer(bool value)
{
    return value ? "true" : "false";
}

std::string type_words(unsigned int type)
{
    switch (type) {
    case file_status::file_not_found:
        return "not found";
    case file_status::regular_file:
        return "regular file";
    case file_status::directory_file:
        return "directory";
    case file_status::symlink_file:
        return "symbolic link";
    case file_status::reparse_file:
        return "other reparse point";
    default:
        return "unknown";
    }
}

std::string words_of(file_status const &status)
{
    if (!file_status::exists(status))
        return "not found";
    std::ostringstream words;
    words << type_words(status.get_type()) << ", 0" << std::oct
          << (status.get_perms() & file_status::perms_all);
    return words.str();
}

/// An operation without a result.
template <typename Operation>
auto silently(Operation operation)
{
    return [operation](text const &p) {
        operation(p);
        return std::string();
    };
}

std::string count_words(std::uint64_t count, char const *one, char const *several)
{
    return std::to_string(count) + ' ' + (count == 1 ? one : several);
}

std::string listing_words(text const &p, directory_options options)
{
    auto const count = std::distance(directory_iterator(p, options), directory_iterator());
    return count_words(static_cast<std::uint64_t>(count), "entry", "entries");
}

std::string found_words(text const &p, directory_options options)
{
    std::uint64_t count = 0;
    for (directory_entry const &entry : recursive_directory_iterator(p, options)) {
        static_cast<void>(entry);
        ++count;
    }
    return count_words(count, "entry", "entries");
}

void add_if(std::string &words, bool is_so, char const *word)
{
    if (is_so)
        words += (words.empty() ? "" : ", ") + std::string(word);
}

std::string answers_of(text const &p)
{
    std::string words;
    add_if(words, is_regular_file(p), "a file");
    add_if(words, is_directory(p), "a directory");
    add_if(words, is_symlink(p), "a symbolic link");
    add_if(words, is_junction(p), "a junction");
    add_if(words, is_other(p), "something else");
    return words.empty() ? "none of them" : words;
}

std::string entry_answers(directory_entry const &entry)
{
    std::string words;
    add_if(words, entry.is_regular_file(), "a file");
    add_if(words, entry.is_directory(), "a directory");
    add_if(words, entry.is_symlink(), "a symbolic link");
    add_if(words, entry.is_junction(), "a junction");
    add_if(words, entry.is_other(), "something else");
    add_if(words, entry.exists(), "exists");
    return words.empty() ? "none of them" : words;
}

std::string known_words(directory_entry const &entry)
{
    file_status const known = entry.known();
    std::string words = words_of(known);
    if (known.get_type() == file_status::regular_file)
        words += ", " + count_words(known.get_size(), "byte", "bytes");
    return words;
}

/// The machine sets times by its clock, which is the host's.
std::string time_words(file_time_type time)
{
    return time > file_time_type() ? "a time" : "none";
}

std::string hop_words(text const &p)
{
    std::string words;
    for (link_hop const &hop : link_hops(p)) {
        words += words.empty() ? "" : ", then ";
        words += shown(hop.link) + " leads to " + (hop.leads_to ? shown(*hop.leads_to) : "nothing");
    }
    return words.empty() ? "no links" : words;
}

/// The streams themselves are the host's, on whose disk there are other files.
std::string stream_words(text const &p)
{
    try {
        detail::throw_stream_failure(p, detail::stream_needs(std::ios_base::in));
    } catch (SystemError const &failure) {
        if (failure.get_error_code() == ERROR_OPEN_FAILED)
            return "opens it";
        throw;
    }
}

std::string temporary_words(text const &p)
{
    ::SetEnvironmentVariableW(L"TMP", std::wstring(p.begin(), p.end()).c_str());
    return shown(temp_directory_path().native());
}

family queries()
{
    return {
        "Asking about a name",
        {
            {"status(p)", [](text const &p) { return words_of(status(p)); }},
            {"symlink_status(p)", [](text const &p) { return words_of(symlink_status(p)); }},
            {"status_express_light(p)",
             [](text const &p) { return type_words(status_express_light(p).get_type()); }},
            {"exists(p)", [](text const &p) { return answer(exists(p)); }},
            {"access(p, access_exists)",
             [](text const &p) { return answer(access(p, access_exists)); }},
            {"access(p, access_read)",
             [](text const &p) { return answer(access(p, access_read)); }},
            {"access(p, access_write)",
             [](text const &p) { return answer(access(p, access_write)); }},
            {"read_symlink(p)", [](text const &p) { return shown(read_symlink(p)); }},
            {"equivalent(p, file.txt)",
             [](text const &p) { return answer(equivalent(p, at_home(u"file.txt"))); }},
            {"space(p)",
             [](text const &p) { return std::to_string(space(upath(p)).capacity) + " bytes"; }},
            {"is_regular_file(p), is_directory(p), is_symlink(p), is_junction(p), is_other(p)",
             answers_of},
            {"is_empty(p)", [](text const &p) { return answer(is_empty(p)); }},
            {"file_size(p)",
             [](text const &p) { return count_words(file_size(p), "byte", "bytes"); }},
            {"hard_link_count(p)",
             [](text const &p) { return std::to_string(hard_link_count(p)); }},
            {"last_write_time(p)", [](text const &p) { return time_words(last_write_time(p)); }},
            {"read_shortcut(p)", [](text const &p) { return shown(read_shortcut(p)); }},
            {"link_hops(p)", hop_words},
            {"open(p, in)", stream_words},
            {"temp_directory_path(), where TMP is p", temporary_words},
            {"directory_iterator(p)",
             [](text const &p) { return listing_words(p, directory_options::none); }},
            {"directory_iterator(p, skip_permission_denied)",
             [](text const &p) {
                 return listing_words(p, directory_options::skip_permission_denied);
             }},
            {"recursive_directory_iterator(p)",
             [](text const &p) { return found_words(p, directory_options::none); }},
            {"recursive_directory_iterator(p, follow_directory_symlink)",
             [](text const &p) {
                 return found_words(p, directory_options::follow_directory_symlink);
             }},
        }};
}

/// What `p` is among the entries of its directory.
std::string listed_words(text const &p)
{
    upath const path(p);
    for (directory_entry const &entry : directory_iterator(path.parent())) {
        if (entry.filename() == path.filename())
            return known_words(entry);
    }
    return "isn't listed";
}

family entries()
{
    return {
        "Entries of directories",
        {
            {"directory_entry(p)", [](text const &p) { return known_words(directory_entry(p)); }},
            {"directory_entry(p), which directory_iterator has found", listed_words},
            {"entry.is_regular_file(), ..., entry.exists()",
             [](text const &p) { return entry_answers(directory_entry(p)); }},
            {"entry.status()", [](text const &p) { return words_of(directory_entry(p).status()); }},
            {"entry.symlink_status()",
             [](text const &p) { return words_of(directory_entry(p).symlink_status()); }},
            {"entry.file_size()",
             [](text const &p) {
                 return count_words(directory_entry(p).file_size(), "byte", "bytes");
             }},
            {"entry.last_write_time()",
             [](text const &p) { return time_words(directory_entry(p).last_write_time()); }},
            {"entry.refresh(), after remove(p)",
             [](text const &p) {
                 directory_entry entry(p);
                 remove(p);
                 std::string const before = known_words(entry);
                 entry.refresh();
                 return before + "; then " + known_words(entry);
             }},
        }};
}

family pathnames()
{
    return {
        "Making one pathname of another",
        {
            {"absolute(p)", [](text const &p) { return shown(absolute(p)); }},
            {"canonical(p)", [](text const &p) { return shown(canonical(p)); }},
            {"weakly_canonical(p)", [](text const &p) { return shown(weakly_canonical(p)); }},
            {"to_standard(p)",
             [](text const &p) { return shown(from_utf8(to_standard(p).string())); }},
            {"relative(p, home)", [](text const &p) { return shown(relative(p, home())); }},
            {"get_unc_path(p, true)", [](text const &p) { return shown(get_unc_path(p, true)); }},
        }};
}

family making()
{
    return {
        "Making something",
        {
            {"create_directory(p)", silently([](text const &p) { create_directory(p); })},
            {"create_directories(p)", silently([](text const &p) { create_directories(p); })},
            {"create_symlink(p, new, file_type_auto)", silently([](text const &p) {
                 create_symlink(p, at_home(u"new"), file_status::file_type_auto);
             })},
            {"create_symlink(file.txt, p, regular_file)", silently([](text const &p) {
                 create_symlink(at_home(u"file.txt"), p, file_status::regular_file);
             })},
            {"copy_symlink(p, new)",
             silently([](text const &p) { copy_symlink(p, at_home(u"new")); })},
            {"create_shortcut(file.txt, p)",
             silently([](text const &p) { create_shortcut(at_home(u"file.txt"), p); })},
            {"create_shortcut(p, new.lnk)",
             silently([](text const &p) { create_shortcut(p, at_home(u"new.lnk")); })},
            {"ensure_directories(p)", [](text const &p) { return answer(ensure_directories(p)); }},
            {"create_directory(new, p)",
             silently([](text const &p) { create_directory(at_home(u"new"), p); })},
            {"create_hard_link(p, new)",
             silently([](text const &p) { create_hard_link(p, at_home(u"new")); })},
            {"create_hard_link(file.txt, p)",
             silently([](text const &p) { create_hard_link(at_home(u"file.txt"), p); })},
            {"create_directory(p, directory)",
             silently([](text const &p) { create_directory(p, at_home(u"directory")); })},
            {"create_directory_symlink(p, new)",
             silently([](text const &p) { create_directory_symlink(p, at_home(u"new")); })},
            {"create_directory_symlink(directory, p)",
             silently([](text const &p) { create_directory_symlink(at_home(u"directory"), p); })},
            {"create_junction(p, new)",
             silently([](text const &p) { create_junction(p, at_home(u"new")); })},
            {"create_junction(directory, p)",
             silently([](text const &p) { create_junction(at_home(u"directory"), p); })},
        }};
}

/// Copies as long as `goes_on` says so, and tells what came of it.
template <typename Callback>
std::string shown_copy(text const &p, Callback goes_on)
{
    std::uint64_t names = 0;
    bool const came_to_its_end =
        copy(upath(p), upath(at_home(u"new")), std::filesystem::copy_options::recursive,
             [&](copy_progress const &progress) {
                 names = progress.names;
                 return goes_on(progress);
             });
    return answer(came_to_its_end) + ", " + count_words(names, "name", "names");
}

family copying()
{
    using std::filesystem::copy_options;
    return {
        "Copying and renaming",
        {
            {"copy(p, new)", silently([](text const &p) { copy(p, at_home(u"new")); })},
            {"copy(p, new, copy_symlinks)", silently([](text const &p) {
                 copy(p, at_home(u"new"), copy_options::copy_symlinks);
             })},
            {"copy(other.txt, p)", silently([](text const &p) { copy(at_home(u"other.txt"), p); })},
            {"copy(p, new, recursive, callback)",
             [](text const &p) {
                 return shown_copy(p, [](copy_progress const &) { return true; });
             }},
            {"copy(p, new, recursive, callback), which stops at the first name",
             [](text const &p) {
                 return shown_copy(p, [](copy_progress const &) { return false; });
             }},
            {"copy_file(p, new)", silently([](text const &p) { copy_file(p, at_home(u"new")); })},
            {"copy_file(other.txt, p, overwrite_existing)", silently([](text const &p) {
                 copy_file(at_home(u"other.txt"), p, copy_options::overwrite_existing);
             })},
            {"copy_directory(p, new)",
             silently([](text const &p) { copy_directory(p, at_home(u"new")); })},
            {"rename(p, new)", silently([](text const &p) { rename(p, at_home(u"new")); })},
            {"rename(other.txt, p)",
             silently([](text const &p) { rename(at_home(u"other.txt"), p); })},
        }};
}

family changing()
{
    return {"Changing and removing",
            {
                {"permissions(p, 0)", silently([](text const &p) { permissions(p, 0); })},
                {"permissions(p, perms_symlink)",
                 silently([](text const &p) { permissions(p, file_status::perms_symlink); })},
                {"change_current_path(p)",
                 [](text const &p) {
                     bool const changed = change_current_path(p);
                     return answer(changed) + ", in " + shown(get_current_path());
                 }},
                {"remove(p)", silently([](text const &p) { remove(p); })},
                {"remove_file(p)", silently([](text const &p) { remove_file(p); })},
                {"remove_directory(p)", silently([](text const &p) { remove_directory(p); })},
                {"remove_all(p)", silently([](text const &p) { remove_all(p); })},
                {"remove_all(p, removal_options())",
                 [](text const &p) {
                     return count_words(remove_all(p, removal_options()).removed(), "name",
                                        "names");
                 }},
                {"remove_all(p, removal_options().clear_read_only().keep_going())",
                 [](text const &p) {
                     removal_report const report =
                         remove_all(p, removal_options().clear_read_only().keep_going());
                     return count_words(report.removed(), "name", "names") + ", " +
                            count_words(report.failures().size(), "failure", "failures");
                 }},
                {"remove_all(p, removal_options().on_progress(callback)), which stops at the first "
                 "name",
                 [](text const &p) {
                     removal_report const report =
                         remove_all(p, removal_options().on_progress(
                                           [](removal_progress const &) { return false; }));
                     return count_words(report.removed(), "name", "names") +
                            (report.was_stopped() ? ", stopped" : "");
                 }},
                {"resize_file(p, 2)", silently([](text const &p) { resize_file(p, 2); })},
                {"last_write_time(p, time)", silently([](text const &p) {
                     last_write_time(p, file_time_type(std::chrono::seconds(1)));
                 })},
            }};
}

} // namespace

std::vector<family> families()
{
    return {queries(), entries(), pathnames(), making(), copying(), changing()};
}

} // namespace behaviour
