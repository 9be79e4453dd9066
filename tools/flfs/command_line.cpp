#include "flfs/command_line.hpp"

#include "flfs/text.hpp"

#include <CLI/CLI.hpp>

#include <algorithm>

namespace flfs {

namespace {

// A unit separator: in no Windows name, nor anything that CLI11 looks for.
constexpr char guard = '\x1F';

bool is_notation(std::string const &word)
{
    return !word.empty() && (word.front() == '[' || word == "++" || word.front() == guard);
}

bool is_option(std::string const &word)
{
    return !word.empty() && word.front() == '-';
}

bool is_long_option(std::string const &word)
{
    return word.compare(0, 2, "--") == 0;
}

/// `--base=[dir]` with the guard ahead of the value.
std::string with_guarded_value(std::string const &option)
{
    std::size_t const equals = option.find('=');
    if (equals == option.npos || !is_notation(option.substr(equals + 1)))
        return option;
    return option.substr(0, equals + 1) + guard + option.substr(equals + 1);
}

/// As the user wrote it.
std::string_view without_guard(std::string_view word)
{
    if (!word.empty() && word.front() == guard)
        word.remove_prefix(1);
    return word;
}

// The words are read from the option as they are: a bound variable would have CLI11
// convert them, and `{}` come out as no word at all.
CLI::callback_t const keep = [](CLI::results_t const &) { return true; };

} // namespace

std::vector<std::string> protect(std::vector<std::string> const &arguments)
{
    std::vector<std::string> words;
    bool options_ended = false;
    bool expects_sign = !arguments.empty() && arguments.front() == "chmod";
    for (std::string const &argument : arguments) {
        if (argument == "--" && !options_ended) {
            options_ended = true;
            continue;
        }
        bool const is_signed = expects_sign && is_option(argument) && !is_long_option(argument);
        bool const needs_guard =
            is_notation(argument) || is_signed || (options_ended && is_option(argument));
        if (&argument != &arguments.front() && !is_long_option(argument))
            expects_sign = false; // that was the word
        if (needs_guard)
            words.push_back(guard + argument);
        else
            words.push_back(is_long_option(argument) ? with_guarded_value(argument) : argument);
    }
    std::reverse(words.begin(), words.end());
    return words;
}

std::string unprotected(std::string_view message)
{
    std::string plain(message);
    plain.erase(std::remove(plain.begin(), plain.end(), guard), plain.end());
    return plain;
}

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
