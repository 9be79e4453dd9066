#include "flfs/commands.hpp"

#include <fl/filesystem/operations.hpp>

#include "flfs/command_line.hpp"
#include "flfs/failure_json.hpp"
#include "flfs/failure_report.hpp"

#include <memory>
#include <ostream>

namespace flfs {

using json = nlohmann::ordered_json;

namespace {

void print_as_json(std::ostream &out, std::vector<std::u16string> const &both, bool is_same,
                   std::optional<failure> const &what_failed)
{
    json object = {{"pathnames", to_json(both)}, {"same", nullptr}, {"failure", nullptr}};
    if (what_failed)
        object["failure"] = to_json(*what_failed);
    else
        object["same"] = is_same;
    out << object.dump(2) << '\n';
}

/// 0 if they are the same.
int report_same(session &session, std::vector<std::u16string> const &both, bool as_json)
{
    bool is_same = false;
    auto const compare = [&] { is_same = fl::filesystem::equivalent(both.at(0), both.at(1)); };
    std::optional<failure> const what_failed = failure_of(compare);
    if (as_json)
        print_as_json(session.out, both, is_same, what_failed);
    else if (what_failed)
        print_failure(session.err, *what_failed, both);
    else
        session.out << (is_same ? "yes\n" : "no\n");
    return is_same ? exit_success : exit_failure;
}

} // namespace

void add_same_command(CLI::App &app, session &session)
{
    CLI::App *command = add_command(
        app, "same", "Tell whether two pathnames lead to one file or directory",
        "By links, by hard links, or spelt in two ways. If only one of them is there it is a\n"
        "\"no\", if neither is it is a failure. Exits 0 after a yes, and 1 after a \"no\" or a\n"
        "failure.");
    CLI::Option *path = add_word(*command, "PATH", "one pathname");
    CLI::Option *other = add_word(*command, "OTHER", "another");
    auto const as_json = std::make_shared<bool>(false);
    add_flag(*command, "--json", *as_json, "Print a JSON object");
    set_disk_action(*command, session, disk_use::read, [&session, path, other, as_json] {
        return report_same(session, {pathnames_of(*path).front(), pathnames_of(*other).front()},
                           *as_json);
    });
}

} // namespace flfs
