#include "flfs/commands.hpp"

#include "flfs/command_line.hpp"
#include "flfs/inspection.hpp"
#include "flfs/inspection_json.hpp"
#include "flfs/inspection_print.hpp"
#include "flfs/system.hpp"

#include <memory>
#include <ostream>

namespace flfs {

namespace {

void print_as_json(std::ostream &out, std::vector<std::u16string> const &texts)
{
    nlohmann::ordered_json array = nlohmann::ordered_json::array();
    for (std::u16string const &text : texts)
        array.push_back(to_json(inspect(text)));
    out << array.dump(2) << '\n';
}

void print_briefly(std::ostream &out, std::vector<std::u16string> const &texts)
{
    for (std::u16string const &text : texts) {
        if (&text != &texts.front())
            out << '\n';
        print_brief_inspection(out, inspect(text));
    }
}

void print_for_people(std::ostream &out, std::vector<std::u16string> const &texts)
{
    for (std::u16string const &text : texts) {
        if (&text != &texts.front())
            out << "\n\n";
        print_inspection(out, inspect(text));
    }
    if constexpr (system_is_simulated)
        out << "\nCurrent directories are those of a simulated machine: drive C:, directory C:\\\n";
}

} // namespace

void add_inspect_command(CLI::App &app, session &session)
{
    CLI::App *command = add_command(
        app, "inspect", "Show what the library makes of a pathname: its type, forms and parts",
        "Put -- ahead of a TEXT that begins with a hyphen.");
    CLI::Option *texts = add_pathnames(*command, "TEXT", "pathname, which need not exist");
    auto const as_json = std::make_shared<bool>(false);
    CLI::Option *json =
        add_flag(*command, "--json", *as_json, "Print one JSON array with an object for each TEXT");
    auto const briefly = std::make_shared<bool>(false);
    exclude(*add_flag(*command, "--brief", *briefly,
                      "Print the type and the drawing alone, not with --json"),
            *json);
    set_action(*command, [&session, texts, as_json, briefly] {
        if (*as_json)
            print_as_json(session.out, pathnames_of(*texts));
        else if (*briefly)
            print_briefly(session.out, pathnames_of(*texts));
        else
            print_for_people(session.out, pathnames_of(*texts));
    });
}

} // namespace flfs
