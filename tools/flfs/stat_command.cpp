#include "flfs/commands.hpp"

#include <fl/filesystem/operations.hpp>
#include <fl/filesystem/windows.hpp>

#include "flfs/command.hpp"
#include "flfs/status_text.hpp"
#include "flfs/text.hpp"

namespace flfs {

namespace fs = fl::filesystem;
using fs::file_status;

namespace {

/// The record of a link's target, as the library's callers get it who hold a link.
file_status target_status(std::u16string const &pathname)
{
    using namespace fs::detail::windows;
    return target_status_bridge(make_native_access_form_bridge(fs::upath(pathname).native()));
}

file_status express_status(std::u16string const &pathname)
{
    fs::file_status_light const light = fs::status_express_light(pathname);
    boost::posix_time::ptime const none;
    return file_status(light.get_type(), file_status::perms_unknown, none, light.get_mtime(), none,
                       light.get_size());
}

/// The attribute flags in `perms`, each by one of its words.
std::vector<std::string> flags_in(unsigned int perms, char const *term::*word)
{
    std::vector<std::string> names;
    for (attribute_flag const &flag : attribute_flags)
        if ((perms & flag.bit) != 0)
            names.emplace_back(flag.name.*word);
    return names;
}

std::string shown_time(boost::posix_time::ptime const &time)
{
    if (time.is_not_a_date_time())
        return "(not known)";
    return iso_time(time).value_or("(beyond the year 9999)");
}

json time_or_null(boost::posix_time::ptime const &time)
{
    std::optional<std::string> const text = iso_time(time);
    return text ? json(*text) : json();
}

json values_of(file_status const &record, bool is_short)
{
    json values = {{"type", type_of(record).identifier}};
    if (!file_status::exists(record))
        return values;
    values["written"] = time_or_null(record.get_mtime());
    values["size"] = record.get_size();
    if (is_short)
        return values;
    unsigned int const perms = record.get_perms();
    values["permission_word"] = hexadecimal(perms, 4);
    values["octal"] = octal_permissions(perms);
    values["letters"] = permission_letters(perms);
    values["attributes"] = flags_in(perms, &term::identifier);
    values["created"] = time_or_null(record.get_ctime());
    values["accessed"] = time_or_null(record.get_atime());
    return values;
}

std::string text_of(file_status const &record, bool is_short)
{
    facts lines(13);
    lines.add("type", type_of(record).description);
    if (!file_status::exists(record))
        return lines.text();
    unsigned int const perms = record.get_perms();
    if (!is_short) {
        std::string const attributes = joined(flags_in(perms, &term::description), ", ");
        lines.add("permissions", octal_permissions(perms) + ' ' + permission_letters(perms))
            .add("attributes", attributes.empty() ? "(none)" : attributes)
            .add("created", shown_time(record.get_ctime()));
    }
    lines.add("written", shown_time(record.get_mtime()));
    if (!is_short)
        lines.add("accessed", shown_time(record.get_atime()));
    std::uint64_t const size = record.get_size();
    lines.add("size", std::to_string(size) + (size == 1 ? " byte" : " bytes"));
    return lines.text();
}

/// A record without permissions and the other times is short.
answer told(std::u16string const &pathname, file_status const &record, bool is_short)
{
    return {shown_native(pathname) + '\n' + text_of(record, is_short), values_of(record, is_short),
            !file_status::exists(record)};
}

} // namespace

void add_stat_command(CLI::App &app, session &session)
{
    command stat(
        app, session, "stat",
        "Show type, permissions, attributes, times and size of what a pathname leads to",
        "Times are in UTC. Exits 1 if a PATH isn't there, or leads to nothing: that is an\n"
        "answer and no failure, so it is told with the others.");
    option const paths = stat.words("PATH", "pathname to ask about");
    option const links = stat.flag("--links", "Ask about PATH itself if it is a link");
    option const target = stat.flag("--target", "Ask about what PATH leads to; it must be a link");
    option const express =
        stat.flag("--express", "Ask for type, time of the last write and size only");
    exclude(links, target);
    exclude(links, express);
    exclude(target, express);
    auto const ask = [links, target, express](arguments const &about) {
        std::u16string const &pathname = about.front();
        if (express.is_given())
            return told(pathname, express_status(pathname), true);
        if (target.is_given())
            return told(pathname, target_status(pathname), false);
        return told(pathname,
                    links.is_given() ? fs::symlink_status(pathname) : fs::status(pathname), false);
    };
    stat.answers(each(paths), {{"type", "permission_word", "octal", "letters", "attributes",
                                "created", "written", "accessed", "size"},
                               ask});
}

} // namespace flfs
