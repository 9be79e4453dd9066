#include "flfs/argument_guard.hpp"

#include <algorithm>

namespace flfs {

namespace {

// A unit separator: in no Windows name, nor anything that CLI11 looks for.
constexpr char guard = '\x1F';

bool is_notation(std::string const &word)
{
    return !word.empty() && (word.front() == '[' || word == "++" || word.front() == guard);
}

/// `--base=[dir]` with the guard ahead of the value.
std::string with_guarded_value(std::string const &option)
{
    std::size_t const equals = option.find('=');
    if (equals == option.npos || !is_notation(option.substr(equals + 1)))
        return option;
    return option.substr(0, equals + 1) + guard + option.substr(equals + 1);
}

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
        bool const is_long = argument.starts_with("--");
        bool const is_signed = expects_sign && argument.starts_with('-') && !is_long;
        if (&argument != &arguments.front() && !is_long)
            expects_sign = false; // that was the word
        if (is_notation(argument) || is_signed || (options_ended && argument.starts_with('-')))
            words.push_back(guard + argument);
        else
            words.push_back(is_long ? with_guarded_value(argument) : argument);
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

std::string_view without_guard(std::string_view word)
{
    if (!word.empty() && word.front() == guard)
        word.remove_prefix(1);
    return word;
}

} // namespace flfs
