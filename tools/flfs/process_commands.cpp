#include "flfs/commands.hpp"

#include <fl/filesystem/access_forms.hpp>
#include <fl/filesystem/install_path.hpp>
#include <fl/filesystem/operations.hpp>
#include <fl/filesystem/queries.hpp>

#include "flfs/command.hpp"
#include "flfs/process_state.hpp"
#include "flfs/text.hpp"

#include <windows.h>

// The commands about the process of flfs, and the installation that it belongs to.

namespace flfs {

namespace fs = fl::filesystem;

namespace {

/// The drive whose variable goes with `pathname`, `C:`, or nothing. A long prefix hides it.
std::u16string drive_of(std::u16string const &pathname)
{
    std::u16string const full = fs::absolute(pathname);
    return full.size() > 1 && full[1] == u':' ? full.substr(0, 2) : std::u16string();
}

json place_now(std::u16string const &drive)
{
    std::u16string const directory = fs::get_current_path();
    std::optional<std::u16string> variable;
    if (!drive.empty())
        variable = environment_variable(u'=' + drive);
    return {{"directory", to_json(directory)}, {"variable", to_json(variable)}};
}

std::string shown_change(answer const &one, char const *key)
{
    auto const shown_at = [key](json const &place) {
        return place.at(key).is_null() ? "(not set)" : shown(place.at(key));
    };
    return shown_at(one.values.at("before")) + " -> " + shown_at(one.values.at("after")) + '\n';
}

answer change_to(arguments const &about)
{
    std::u16string const drive = drive_of(about.front());
    answer one;
    one.values["before"] = place_now(drive);
    fs::change_current_path(about.front());
    one.values["after"] = place_now(drive);
    one.text = "directory  " + shown_change(one, "directory");
    if (!drive.empty()) {
        one.values["name_of_variable"] = to_json(u'=' + drive);
        one.text += displayed(u'=' + drive) + "        " + shown_change(one, "variable");
    }
    return one;
}

json place_of(void *address)
{
    return {{"module", to_json(fs::detail::get_module_path_from_address(address))},
            {"base", to_json(fs::detail::from_filesystem(fs::detail::get_base_path(address)))}};
}

answer find_places(bool tells_modules)
{
    answer one;
    one.values["install_path"] = to_json(fs::get_install_path());
    one.values["library"] = place_of(reinterpret_cast<void *>(&fs::get_install_path));
    one.values["program"] = place_of(reinterpret_cast<void *>(&add_where_command));
    auto const lines_of = [&one](char const *key) {
        return facts(8).add(one.values.at(key), {{"module", "module"}, {"base", "base"}}).text();
    };
    one.text = shown(one.values.at("install_path")) + '\n';
    if (tells_modules)
        one.text += "library\n" + lines_of("library") + "flfs\n" + lines_of("program");
    return one;
}

} // namespace

std::optional<std::u16string> environment_variable(std::u16string const &name)
{
    std::wstring const wide_name(name.begin(), name.end());
    std::wstring value;
    for (;;) {
        auto const room = static_cast<DWORD>(value.size());
        DWORD const length = ::GetEnvironmentVariableW(wide_name.c_str(), value.data(), room);
        if (length == 0)
            return std::nullopt; // an empty value is none, on Windows
        value.resize(length);
        if (length < room)
            return std::u16string(value.begin(), value.end());
    }
}

void add_cd_command(CLI::App &app, session &session)
{
    command cd(
        app, session, "cd",
        "Change the current directory of flfs itself, and show what has changed",
        "The directory before and after, and the environment variable of the drive, by which\n"
        "pathnames such as C:name go. It is set from PATH as seen from the new directory, so\n"
        "give a whole pathname to have it right. A server has none, and a long prefix sets\n"
        "none. When flfs ends, your shell is where it was.");
    option const path = cd.word("PATH", "directory to go to; empty: to stay");
    cd.answers(together({path}), {{"name_of_variable", "before", "after"}, change_to},
               "Print a JSON object");
}

void add_temp_command(CLI::App &app, session &session)
{
    command temp(app, session, "temp", "Show the folder for temporary files",
                 "That is TMP, TEMP or USERPROFILE, the first of them that is set.");
    auto const ask = [](arguments const &) {
        json const result = to_json(fs::temp_directory_path().native());
        return answer{shown(result) + '\n', {{"result", result}}};
    };
    temp.answers(together({}), {{"result"}, ask}, "Print a JSON object");
}

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
