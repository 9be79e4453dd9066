#include "flfs/link_report.hpp"

#include "flfs/failure_json.hpp"
#include "flfs/link_reading.hpp"
#include "flfs/text.hpp"

#include <array>
#include <cstdio>
#include <ostream>

namespace flfs {

using json = nlohmann::ordered_json;

namespace {

/// What came of one pathname: a link, or the failure.
struct outcome
{
    std::u16string pathname; ///< as the user wrote it
    std::optional<link> found;
    std::optional<failure> what_failed;
};

outcome read_one(std::u16string const &pathname)
{
    outcome one{pathname, {}, {}};
    one.what_failed = failure_of([&one] { one.found = read_link(one.pathname); });
    return one;
}

std::string hexadecimal(std::uint32_t tag)
{
    std::array<char, 16> buffer{};
    std::snprintf(buffer.data(), buffer.size(), "0x%08X", static_cast<unsigned int>(tag));
    return buffer.data();
}

/// Every key is always there; where there is no answer, its value is null.
json to_json(outcome const &one)
{
    json object = {{"pathname", escaped_surrogates(one.pathname)},
                   {"kind", nullptr},
                   {"text", nullptr},
                   {"tag", nullptr},
                   {"failure", nullptr}};
    if (one.what_failed)
        object["failure"] = flfs::to_json(*one.what_failed);
    if (!one.found)
        return object;
    object["kind"] = identifier(one.found->kind);
    if (one.found->text)
        object["text"] = escaped_surrogates(*one.found->text);
    if (one.found->tag)
        object["tag"] = hexadecimal(*one.found->tag);
    return object;
}

void print(std::ostream &out, link const &found)
{
    out << displayed_value(found.pathname) << '\n';
    out << "    kind  " << description(found.kind) << '\n';
    if (found.text)
        out << "    text  " << displayed_value(*found.text) << '\n';
    if (found.tag)
        out << "    tag   " << hexadecimal(*found.tag) << '\n';
}

} // namespace

int report_links(session &session, std::vector<std::u16string> const &pathnames, bool as_json)
{
    int exit_code = exit_success;
    json array = json::array();
    for (std::u16string const &pathname : pathnames) {
        outcome const one = read_one(pathname);
        if (one.what_failed)
            exit_code = exit_failure;
        if (as_json)
            array.push_back(to_json(one));
        else if (one.found)
            print(session.out, *one.found);
        else
            print_failure(session.err, *one.what_failed, pathname);
    }
    if (as_json)
        session.out << array.dump(2) << '\n';
    return exit_code;
}

} // namespace flfs
