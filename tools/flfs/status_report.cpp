#include "flfs/status_report.hpp"

#include <fl/filesystem/operations.hpp>
#include <fl/filesystem/windows.hpp>

#include "flfs/failure_json.hpp"
#include "flfs/status_text.hpp"
#include "flfs/text.hpp"

#include <array>
#include <cstdio>
#include <ostream>
#include <string_view>

namespace flfs {

namespace fs = fl::filesystem;
using fs::file_status;
using json = nlohmann::ordered_json;

namespace {

/// What came of one pathname: a record, or the failure.
struct outcome
{
    std::u16string pathname; ///< as the user wrote it
    file_status record;
    bool is_short; ///< without permissions and the other times
    std::optional<failure> what_failed;

    bool is_found() const { return !what_failed && file_status::exists(record); }
};

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

file_status record_of(std::u16string const &pathname, status_options const &options)
{
    if (options.express)
        return express_status(pathname);
    if (options.target)
        return target_status(pathname);
    return options.links ? fs::symlink_status(pathname) : fs::status(pathname);
}

outcome ask(std::u16string const &pathname, status_options const &options)
{
    outcome one{pathname, file_status(), options.express, {}};
    one.what_failed = failure_of([&] { one.record = record_of(pathname, options); });
    return one;
}

std::string hexadecimal(unsigned int perms)
{
    std::array<char, 16> buffer{};
    std::snprintf(buffer.data(), buffer.size(), "0x%04X", perms);
    return buffer.data();
}

json time_or_null(boost::posix_time::ptime const &time)
{
    std::optional<std::string> const text = iso_time(time);
    return text ? json(*text) : json(nullptr);
}

json flags_of(unsigned int perms)
{
    json array = json::array();
    for (attribute_flag const &flag : attribute_flags())
        if ((perms & flag.bit) != 0)
            array.push_back(flag.identifier);
    return array;
}

/// Every key is always there; where there is no answer, its value is null.
json to_json(outcome const &one)
{
    json object = {{"pathname", escaped_surrogates(one.pathname)},
                   {"type", nullptr},
                   {"permission_word", nullptr},
                   {"octal", nullptr},
                   {"letters", nullptr},
                   {"attributes", nullptr},
                   {"created", nullptr},
                   {"written", nullptr},
                   {"accessed", nullptr},
                   {"size", nullptr},
                   {"failure", nullptr}};
    if (one.what_failed)
        object["failure"] = flfs::to_json(*one.what_failed);
    else
        object["type"] = type_identifier(one.record);
    if (!one.is_found())
        return object;
    object["written"] = time_or_null(one.record.get_mtime());
    object["size"] = one.record.get_size();
    if (one.is_short)
        return object;
    unsigned int const perms = one.record.get_perms();
    object["permission_word"] = hexadecimal(perms);
    object["octal"] = octal_permissions(perms);
    object["letters"] = permission_letters(perms);
    object["attributes"] = flags_of(perms);
    object["created"] = time_or_null(one.record.get_ctime());
    object["accessed"] = time_or_null(one.record.get_atime());
    return object;
}

std::string joined_flags(unsigned int perms)
{
    std::string line;
    for (attribute_flag const &flag : attribute_flags())
        if ((perms & flag.bit) != 0)
            line += (line.empty() ? "" : ", ") + std::string(flag.description);
    return line.empty() ? "(none)" : line;
}

std::string shown_time(boost::posix_time::ptime const &time)
{
    if (time.is_not_a_date_time())
        return "(not known)";
    return iso_time(time).value_or("(beyond the year 9999)");
}

void print_line(std::ostream &out, std::string_view label, std::string const &value)
{
    constexpr std::size_t label_width = 13;
    std::string padded(label);
    padded.resize(label_width, ' ');
    out << "    " << padded << value << '\n';
}

void print(std::ostream &out, outcome const &one)
{
    file_status const &record = one.record;
    out << displayed_value(fs::upath(one.pathname).native()) << '\n';
    print_line(out, "type", type_description(record));
    if (!one.is_found())
        return;
    if (!one.is_short) {
        unsigned int const perms = record.get_perms();
        print_line(out, "permissions", octal_permissions(perms) + ' ' + permission_letters(perms));
        print_line(out, "attributes", joined_flags(perms));
        print_line(out, "created", shown_time(record.get_ctime()));
    }
    print_line(out, "written", shown_time(record.get_mtime()));
    if (!one.is_short)
        print_line(out, "accessed", shown_time(record.get_atime()));
    print_line(out, "size",
               std::to_string(record.get_size()) + (record.get_size() == 1 ? " byte" : " bytes"));
}

} // namespace

int report_status(session &session, std::vector<std::u16string> const &pathnames,
                  status_options const &options)
{
    int exit_code = exit_success;
    json array = json::array();
    for (std::u16string const &pathname : pathnames) {
        outcome const one = ask(pathname, options);
        if (!one.is_found())
            exit_code = exit_failure;
        if (options.as_json)
            array.push_back(to_json(one));
        else if (one.what_failed)
            print_failure(session.err, *one.what_failed, pathname);
        else
            print(session.out, one);
    }
    if (options.as_json)
        session.out << array.dump(2) << '\n';
    return exit_code;
}

} // namespace flfs
