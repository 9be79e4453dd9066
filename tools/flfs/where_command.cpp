#include "flfs/commands.hpp"

#include <fl/filesystem/access_forms.hpp>
#include <fl/filesystem/install_path.hpp>

#include "flfs/command_line.hpp"
#include "flfs/failure_json.hpp"
#include "flfs/text.hpp"

#include <memory>
#include <ostream>

namespace flfs {

namespace fs = fl::filesystem;
using json = nlohmann::ordered_json;

namespace {

struct module_place
{
    std::u16string pathname;
    std::u16string base;
};

struct places
{
    std::u16string root;
    module_place library;
    module_place program;
};

module_place place_of(void *address)
{
    return {fs::detail::get_module_path_from_address(address),
            fs::detail::from_filesystem(fs::detail::get_base_path(address))};
}

void an_address_of_ours() {}

places find_places()
{
    return {fs::get_install_path(), place_of(reinterpret_cast<void *>(&fs::get_install_path)),
            place_of(reinterpret_cast<void *>(&an_address_of_ours))};
}

json to_json(module_place const &one)
{
    return {{"module", escaped_surrogates(one.pathname)}, {"base", escaped_surrogates(one.base)}};
}

/// Every key is always there; where there is no answer, its value is null.
json to_json(places const &found, std::optional<failure> const &what_failed)
{
    if (what_failed)
        return {{"install_path", nullptr},
                {"library", nullptr},
                {"program", nullptr},
                {"failure", to_json(*what_failed)}};
    return {{"install_path", escaped_surrogates(found.root)},
            {"library", to_json(found.library)},
            {"program", to_json(found.program)},
            {"failure", nullptr}};
}

void print(std::ostream &out, char const *name, module_place const &one)
{
    out << name << '\n';
    out << "    module  " << displayed_value(one.pathname) << '\n';
    out << "    base    " << displayed_value(one.base) << '\n';
}

int report_places(session &session, bool modules, bool as_json)
{
    places found;
    std::optional<failure> const what_failed = failure_of([&found] { found = find_places(); });
    if (as_json)
        session.out << to_json(found, what_failed).dump(2) << '\n';
    else if (what_failed)
        print_failure(session.err, *what_failed, std::vector<std::u16string>());
    else
        session.out << displayed_value(found.root) << '\n';
    if (modules && !as_json && !what_failed) {
        print(session.out, "library", found.library);
        print(session.out, "flfs", found.program);
    }
    return what_failed ? exit_failure : exit_success;
}

} // namespace

void add_where_command(CLI::App &app, session &session)
{
    CLI::App *command = add_command(
        app, "where", "Show the root of the installation that flfs belongs to",
        "That is the folder above bin\\win64, where the library's DLL lies. Where there is no\n"
        "such folder, it is the DLL itself.");
    auto const modules = std::make_shared<bool>(false);
    add_flag(*command, "--module", *modules,
             "Show the DLL and flfs.exe, too, and the root of each");
    auto const as_json = std::make_shared<bool>(false);
    add_flag(*command, "--json", *as_json, "Print a JSON object with all of it");
    set_disk_action(*command, session, disk_use::read, [&session, modules, as_json] {
        return report_places(session, *modules, *as_json);
    });
}

} // namespace flfs
