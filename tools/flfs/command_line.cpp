#include "flfs/command_line.hpp"

#include <fl/filesystem/operations.hpp>

#include "flfs/argument_guard.hpp"
#include "flfs/failure_report.hpp"
#include "flfs/text.hpp"

#include <CLI/CLI.hpp>

namespace flfs {

namespace {

// The words are read from the option as they are: a bound variable would have CLI11
// convert them, and `{}` come out as no word at all.
CLI::callback_t const keep = [](CLI::results_t const &) { return true; };

std::string_view last_element(std::string_view word)
{
    word = word.substr(0, word.find_last_not_of("\\/") + 1);
    return word.substr(word.find_last_of("\\/:") + 1);
}

/// What the system would take `word` for, if that isn't what it says.
std::string complaint_about_stops(std::string const &word)
{
    std::string_view const plain = without_guard(word);
    std::string_view const name = last_element(plain);
    if (name.empty() || name == "." || name == ".." || name.find_first_not_of(". ") != name.npos)
        return "";
    std::u16string const pathname = units_from_utf8(plain).value();
    std::string meaning = "nothing";
    static_cast<void>(
        failure_of([&] { meaning = displayed_value(fl::filesystem::absolute(pathname)); }));
    return displayed_value(pathname) + " would mean " + meaning +
           ", since the system drops full stops and blanks from the end";
}

} // namespace

CLI::App *add_command(CLI::App &app, std::string const &name, std::string const &description,
                      std::string const &footer)
{
    CLI::App *command = app.add_subcommand(name, description);
    command->footer(footer);
    return command;
}

CLI::Option *add_flag(CLI::App &command, std::string const &name, bool &flag,
                      std::string const &description)
{
    return command.add_flag(name, flag, description);
}

void exclude(CLI::Option &one, CLI::Option &other)
{
    one.excludes(&other);
    for (CLI::Option *option : {&one, &other})
        if (option->get_option_text().empty())
            option->option_text(" "); // else CLI11 writes "Excludes:"
}

CLI::Option *add_pathnames(CLI::App &command, std::string const &name,
                           std::string const &description)
{
    return command.add_option(name, keep, description)
        ->required()
        ->expected(1, CLI::detail::expected_max_vector_size)
        ->allow_extra_args()
        ->option_text("(one or more)");
}

CLI::Option *add_word(CLI::App &command, std::string const &name, std::string const &description)
{
    return command.add_option(name, keep, description)->required()->option_text(" ");
}

CLI::Option *add_word(CLI::App &command, std::string const &name, std::string const &description,
                      std::string (*complaint_about)(std::string const &word))
{
    return add_word(command, name, description)->check(complaint_about, "");
}

CLI::Option *add_optional_word(CLI::App &command, std::string const &name,
                               std::string const &description)
{
    return add_word(command, name, description)->required(false);
}

CLI::Option *refuse_stops_and_blanks(CLI::Option *pathname)
{
    return pathname->check(complaint_about_stops, "");
}

bool is_given(CLI::Option const &option)
{
    return option.count() != 0;
}

std::string word_of(CLI::Option const &positional)
{
    return std::string(without_guard(positional.results().front()));
}

CLI::Option *add_base(CLI::App &command)
{
    return command.add_option("--base", keep, "Directory that relative PATHs are in")
        ->option_text("DIRECTORY");
}

std::u16string base_of(CLI::Option const &base)
{
    return is_given(base) ? pathnames_of(base).front() : std::u16string();
}

std::vector<std::u16string> pathnames_of(CLI::Option const &positional)
{
    std::vector<std::u16string> pathnames;
    for (std::string const &word : positional.results())
        pathnames.push_back(units_from_utf8(without_guard(word)).value());
    return pathnames;
}

} // namespace flfs
