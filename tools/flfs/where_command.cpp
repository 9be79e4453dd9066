#include "flfs/commands.hpp"

#include <fl/filesystem/access_forms.hpp>
#include <fl/filesystem/install_path.hpp>

#include "flfs/command.hpp"
#include "flfs/text.hpp"

namespace flfs {

namespace fs = fl::filesystem;

namespace {

struct module_place
{
    std::u16string pathname;
    std::u16string base;
};

module_place place_of(void *address)
{
    return {fs::detail::get_module_path_from_address(address),
            fs::detail::from_filesystem(fs::detail::get_base_path(address))};
}

void an_address_of_ours() {}

json values_of(module_place const &one)
{
    return {{"module", to_json(one.pathname)}, {"base", to_json(one.base)}};
}

std::string text_of(module_place const &one)
{
    return facts(8).add("module", one.pathname).add("base", one.base).text();
}

answer find_places(bool tells_modules)
{
    std::u16string const root = fs::get_install_path();
    module_place const library = place_of(reinterpret_cast<void *>(&fs::get_install_path));
    module_place const program = place_of(reinterpret_cast<void *>(&an_address_of_ours));
    std::string const modules = "library\n" + text_of(library) + "flfs\n" + text_of(program);
    return {displayed_value(root) + '\n' + (tells_modules ? modules : ""),
            {{"install_path", to_json(root)},
             {"library", values_of(library)},
             {"program", values_of(program)}}};
}

} // namespace

void add_where_command(CLI::App &app, session &session)
{
    command where(
        app, session, "where", "Show the root of the installation that flfs belongs to",
        "That is the folder above bin\\win64, where the library's DLL lies. Where there is no\n"
        "such folder, it is the DLL itself.");
    option const modules =
        where.flag("--module", "Show the DLL and flfs.exe, too, and the root of each");
    auto const ask = [modules](arguments const &) { return find_places(modules.is_given()); };
    where.answers(together({}), {{"install_path", "library", "program"}, ask},
                  "Print a JSON object with all of it");
}

} // namespace flfs
