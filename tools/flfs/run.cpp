#include "flfs/run.hpp"

#include <fl/filesystem/config.hpp>
#include <fl/filesystem/exceptions.hpp>

#include "flfs/argument_guard.hpp"
#include "flfs/commands.hpp"
#include "flfs/failure_report.hpp"
#include "flfs/suggestion.hpp"
#include "flfs/text.hpp"

#include <CLI/CLI.hpp>

#include <optional>
#include <ostream>

namespace flfs {

namespace {

constexpr char const *footer = R"(Examples:
  flfs inspect "C:/data//report.tar.gz"        types, forms, parts and a drawing
  flfs inspect --json "\\server\share\dir"     the same for a program
  flfs ls -r "C:\work"                         all that is in a directory and below it
  flfs mkdir --parents "C:\work\2024\reports"  a directory and those above it
  flfs readlink "C:\Documents and Settings"    where a link or shortcut leads
  flfs resolve "C:\Documents and Settings\me"  each link on the way, and the end of it
  flfs stat "C:\Windows\notepad.exe"           type, permissions, times and size
  flfs chmod -w "C:\work\2024\report.txt"      no more changes to a file
  flfs cp -r "C:\work\2024" "D:\kept"          a directory with copies of all in it
  flfs rm -r "C:\work\2023"                    a directory and all in it
  flfs tour                                    all of it once, told and checked

Exit codes: 0 success, 1 a failure of the file system, 2 wrong usage. Of stat, exists,
is, access and same 1 may also be the answer: not there, no.
"flfs COMMAND --help" tells more about a command.)";

std::string version()
{
    return "flfs " + std::to_string(FL_FILESYSTEM_VERSION_MAJOR) + '.' +
           std::to_string(FL_FILESYSTEM_VERSION_MINOR) + '.' +
           std::to_string(FL_FILESYSTEM_VERSION_PATCH);
}

std::vector<std::string> commands_of(CLI::App const &app)
{
    std::vector<std::string> names;
    for (CLI::App const *const one : app.get_subcommands({}))
        names.push_back(one->get_name());
    return names;
}

std::vector<std::string> long_options_of(CLI::App const &app)
{
    std::vector<std::string> names;
    for (CLI::Option const *const one : app.get_options())
        for (std::string const &name : one->get_lnames())
            names.push_back("--" + name);
    return names;
}

/// " Did you mean ls?", or nothing.
std::string suggestion_for(CLI::App const *app, std::vector<std::string> const &unknown)
{
    std::string meant;
    for (std::string const &word : unknown) {
        std::string const plain = unprotected(word.substr(0, word.find('=')));
        bool const is_option = plain.starts_with("--");
        if (meant.empty() && (is_option || app->get_parent() == nullptr))
            meant = nearest(plain, is_option ? long_options_of(*app) : commands_of(*app));
    }
    return meant.empty() ? "" : ". Did you mean " + meant + '?';
}

/// The message for wrong usage, and where to read on.
std::string usage_message(CLI::App const *app, CLI::Error const &error)
{
    std::vector<CLI::App *> const selected = app->get_subcommands();
    CLI::App const *const about = selected.empty() ? app : selected.back();
    std::vector<std::string> const unknown = about->remaining();
    std::string message = error.what();
    std::string help = "flfs --help";
    if (!selected.empty())
        help = "flfs " + selected.back()->get_name() + " --help";
    else if (!unknown.empty()) // CLI11 would only say that a command is missing
        message = "There is no command or option " + unknown.front();
    message += suggestion_for(about, unknown);
    std::optional<std::u16string> const units = units_from_utf8(unprotected(message));
    return "flfs: " + (units ? displayed(*units) : message) + "\nTry \"" + help + "\".\n";
}

struct group
{
    char const *name;
    std::vector<add_command *> commands;
};

/// In the order in which the help shows them.
std::vector<group> const &groups()
{
    static std::vector<group> const all = {
        {"Pathnames",
         {add_inspect_command, add_absolute_command, add_canonical_command, add_relative_command,
          add_unc_command, add_forms_command}},
        {"Directories", {add_ls_command, add_tree_command}},
        {"Asking",
         {add_stat_command, add_exists_command, add_is_command, add_access_command,
          add_same_command, add_size_command, add_names_command, add_time_command, add_df_command}},
        {"Making and changing",
         {add_mkdir_command, add_ensure_command, add_cp_command, add_mv_command, add_rm_command,
          add_chmod_command, add_touch_command, add_resize_command}},
        {"Links",
         {add_ln_command, add_readlink_command, add_read_shortcut_command, add_resolve_command}},
        {"Process and installation", {add_cd_command, add_temp_command, add_where_command}},
        {"All of it at once", {add_tour_command}},
        {"About flfs", {add_completion_command, add_manual_command}},
    };
    return all;
}

void add_commands(CLI::App &app, session &session)
{
    for (group const &one : groups()) {
        for (add_command *const add : one.commands) {
            add(app, session);
            app.get_subcommands({}).back()->group(one.name);
        }
    }
}

void set_up(CLI::App &app, session &session)
{
    app.get_formatter()->label("SUBCOMMAND", "COMMAND");
    app.get_formatter()->label("Positionals", "Arguments");
    app.get_formatter()->column_width(26);
    app.set_help_flag("-h,--help", "Print this help and exit");
    // a slash begins a pathname, on Windows, too
    app.allow_windows_style_options(false);
    app.require_subcommand(1);
    app.failure_message(usage_message);
    app.set_version_flag("--version", version(), "Print the version and exit");
    add_commands(app, session);
    app.footer(footer); // last, so that the commands don't inherit it
}

int run_command(std::vector<std::string> const &arguments, session &session)
{
    CLI::App app("Windows pathnames and files, exactly as fl::filesystem sees them.", "flfs");
    set_up(app, session);
    std::vector<std::string> words = protect(arguments);
    try {
        app.parse(words);
    } catch (CLI::ParseError const &error) {
        return app.exit(error, session.out, session.err) == 0 ? exit_success : exit_usage;
    }
    return session.exit_code;
}

} // namespace

int run(std::vector<std::string> const &utf8_arguments, std::ostream &out, std::ostream &err)
{
    session session{out, err};
    return run(utf8_arguments, session);
}

int run(std::vector<std::string> const &utf8_arguments, session &session)
{
    std::size_t number = 0;
    for (std::string const &argument : utf8_arguments) {
        ++number;
        if (units_from_utf8(argument))
            continue;
        session.err << "flfs: Argument " << number << " is not UTF-8\nTry \"flfs --help\".\n";
        return exit_usage;
    }
    try {
        return run_command(utf8_arguments, session);
    } catch (fl::filesystem::FsysExceptionBase const &exception) {
        print_failure(session.err, describe(exception), {u""});
    } catch (std::exception const &exception) {
        session.err << "flfs: " << exception.what() << '\n';
    }
    return exit_failure;
}

} // namespace flfs
