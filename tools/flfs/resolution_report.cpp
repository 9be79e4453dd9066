#include "flfs/resolution_report.hpp"

#include "flfs/failure_json.hpp"
#include "flfs/resolution.hpp"
#include "flfs/text.hpp"

#include <ostream>

namespace flfs {

using json = nlohmann::ordered_json;

namespace {

// No name holds a `>`, so that the arrows can't be taken for a part of one.
constexpr char const *says = " -> ";
constexpr char const *goes_on = " => ";

json text_or_null(std::optional<std::u16string> const &text)
{
    return text ? json(escaped_surrogates(*text)) : json(nullptr);
}

json to_json(hop const &one)
{
    return {{"pathname", escaped_surrogates(one.pathname)},
            {"kind", identifier(one.kind)},
            {"text", escaped_surrogates(one.text)},
            {"is_kept", one.is_kept},
            {"goes_on_with", text_or_null(one.goes_on_with)}};
}

json to_json(std::vector<hop> const &hops)
{
    json array = json::array();
    for (hop const &one : hops)
        array.push_back(to_json(one));
    return array;
}

json found_or_null(what_is_there found)
{
    switch (found) {
    case what_is_there::file:
        return "file";
    case what_is_there::directory:
        return "directory";
    case what_is_there::nothing:
        break;
    }
    return nullptr;
}

/// Every key is always there; where there is no answer, its value is null.
json to_json(resolution const &told)
{
    json object = {{"pathname", escaped_surrogates(told.pathname)},
                   {"absolute", text_or_null(told.absolute)},
                   {"hops", to_json(told.hops)},
                   {"hops_repeat", told.hops_repeat},
                   {"result", text_or_null(told.result)},
                   {"found", found_or_null(told.found)},
                   {"failure", nullptr}};
    if (told.what_failed)
        object["failure"] = flfs::to_json(*told.what_failed);
    return object;
}

char const *description(what_is_there found)
{
    switch (found) {
    case what_is_there::file:
        return " (file)";
    case what_is_there::directory:
        return " (directory)";
    case what_is_there::nothing:
        break;
    }
    return " (nothing is there)";
}

void print(std::ostream &out, hop const &one)
{
    out << (one.is_kept ? "    kept  " : "    link  ") << displayed_value(one.pathname) << says
        << displayed_value(one.text) << " (" << description(one.kind) << ')';
    if (one.goes_on_with)
        out << goes_on << displayed_value(*one.goes_on_with);
    out << '\n';
}

void print(std::ostream &out, resolution const &told)
{
    if (told.absolute)
        out << displayed_value(*told.absolute) << '\n';
    for (hop const &one : told.hops)
        print(out, one);
    if (told.hops_repeat)
        out << "    and round again\n";
    if (told.result)
        out << "    ends  " << displayed_value(*told.result) << description(told.found) << '\n';
}

} // namespace

int report_resolutions(session &session, std::vector<std::u16string> const &pathnames, bool as_json)
{
    int exit_code = exit_success;
    json array = json::array();
    for (std::u16string const &pathname : pathnames) {
        resolution const told = resolve(pathname);
        if (told.what_failed)
            exit_code = exit_failure;
        if (as_json)
            array.push_back(to_json(told));
        else
            print(session.out, told);
        if (!as_json && told.what_failed)
            print_failure(session.err, *told.what_failed, pathname);
    }
    if (as_json)
        session.out << array.dump(2) << '\n';
    return exit_code;
}

} // namespace flfs
