#include "flfs/commands.hpp"

#include "flfs/command.hpp"
#include "flfs/inspection.hpp"

#include <ostream>

namespace flfs {

namespace {

void print_as_json(std::ostream &out, std::vector<std::u16string> const &texts)
{
    json array = json::array();
    for (std::u16string const &text : texts)
        array.push_back(inspect_for_programs(text));
    print_json(out, array);
}

void print_for_people(std::ostream &out, std::vector<std::u16string> const &texts, bool briefly)
{
    for (std::u16string const &text : texts) {
        if (&text != &texts.front())
            out << (briefly ? "\n" : "\n\n");
        out << (briefly ? inspect_briefly(text) : inspect(text));
    }
    if constexpr (system_is_simulated)
        out << (briefly ? ""
                        : "\nCurrent directories are those of a simulated machine: drive C:, "
                          "directory C:\\\n");
}

} // namespace

void add_inspect_command(CLI::App &app, session &session)
{
    command inspect(app, session, "inspect",
                    "Show what the library makes of a pathname: its type, forms and parts",
                    "Put -- ahead of a TEXT that begins with a hyphen.");
    option const texts = inspect.words("TEXT", "pathname, which need not exist");
    option const as_json =
        inspect.flag("--json", "Print one JSON array with an object for each TEXT");
    option const briefly =
        inspect.flag("--brief", "Print the type and the drawing alone, not with --json");
    exclude(briefly, as_json);
    inspect.anywhere([&session, texts, as_json, briefly] {
        if (as_json.is_given())
            print_as_json(session.out, texts.pathnames());
        else
            print_for_people(session.out, texts.pathnames(), briefly.is_given());
    });
}

} // namespace flfs
