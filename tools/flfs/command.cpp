#include "flfs/command.hpp"

#include <fl/filesystem/operations.hpp>

#include "flfs/argument_guard.hpp"
#include "flfs/text.hpp"
#include "flfs/wildcards.hpp"

#include <CLI/CLI.hpp>

#include <ostream>
#include <utility>

namespace flfs {

namespace {

// The words are read from the option as they are: a bound variable would have CLI11
// convert them, and `{}` come out as no word at all.
CLI::callback_t const keep = [](CLI::results_t const &) { return true; };

void check_word(option const &one, complaint about)
{
    if (about != nullptr)
        one.raw().check(
            [about](std::string const &word) { return about(std::string(without_guard(word))); },
            "");
}

std::string_view last_element(std::string_view word)
{
    word = word.substr(0, word.find_last_not_of("\\/") + 1);
    return word.substr(word.find_last_of("\\/:") + 1);
}

std::u16string units_of(std::string_view word)
{
    return units_from_utf8(word).value(); // all arguments are UTF-8, or none is looked at
}

/// The names that wildcards stand for; a word that stands for none is left to fail.
arguments meant_by(std::u16string const &word)
{
    arguments names;
    if (has_wildcard(word))
        names = expanded(word);
    return names.empty() ? arguments{word} : names;
}

} // namespace

bool option::is_given() const
{
    return raw_->count() != 0;
}

std::string option::word() const
{
    return is_given() ? std::string(without_guard(raw_->results().front())) : std::string();
}

std::u16string option::pathname() const
{
    return units_of(word());
}

std::vector<std::u16string> option::pathnames() const
{
    std::vector<std::u16string> pathnames;
    for (std::string const &word : raw_->results())
        pathnames.push_back(units_of(without_guard(word)));
    return pathnames;
}

void exclude(option const &one, option const &other)
{
    one.raw().excludes(&other.raw());
    for (option const &either : {one, other})
        if (either.raw().get_option_text().empty())
            either.raw().option_text(" "); // else CLI11 writes "Excludes:"
}

std::vector<arguments> subject::rounds() const
{
    std::vector<arguments> all;
    if (!is_one_by_one)
        all.emplace_back();
    for (option const &one : words) {
        for (std::u16string const &word : one.pathnames()) {
            for (std::u16string const &pathname : is_expanded ? meant_by(word) : arguments{word}) {
                if (is_one_by_one)
                    all.emplace_back();
                all.back().push_back(pathname);
            }
        }
    }
    if (all.empty()) // of words that aren't required
        all.push_back({u"."});
    return all;
}

subject each(option const &words)
{
    return {{words}, true, true};
}

subject each_as_written(option const &words)
{
    return {{words}, true, false};
}

subject together(std::vector<option> const &words)
{
    return {words, false, false};
}

std::string complaint_about_stops(std::string const &word)
{
    std::string_view const name = last_element(word);
    if (name.empty() || name == "." || name == ".." || name.find_first_not_of(". ") != name.npos)
        return "";
    std::string meaning = "nothing";
    static_cast<void>(
        failure_of([&] { meaning = displayed_value(fl::filesystem::absolute(units_of(word))); }));
    return displayed_value(units_of(word)) + " would mean " + meaning +
           ", since the system drops full stops and blanks from the end";
}

command::command(CLI::App &app, session &session, char const *name, char const *description,
                 char const *footer)
    : raw_(app.add_subcommand(name, description)), session_(&session)
{
    raw_->footer(footer);
}

option command::flag(char const *names, char const *description)
{
    return option(raw_->add_flag(names)->description(description));
}

option command::words(char const *name, char const *description, complaint about)
{
    option const all = word(name, description, about);
    all.raw()
        .expected(1, CLI::detail::expected_max_vector_size)
        ->allow_extra_args()
        ->option_text("(one or more)");
    return all;
}

option command::words_or_here(char const *name, char const *description)
{
    option const all = words(name, description);
    all.raw().required(false)->option_text("(or none)");
    return all;
}

option command::word(char const *name, char const *description, complaint about)
{
    option const one = optional_word(name, description);
    one.raw().required();
    check_word(one, about);
    return one;
}

option command::optional_word(char const *name, char const *description)
{
    return option(raw_->add_option(name, keep, description)->option_text(" "));
}

option command::kind(char const *description, std::vector<std::string> const &kinds)
{
    return option(raw_->add_option("--as", keep, description)
                      ->check(CLI::IsMember(kinds), "")
                      ->option_text("KIND"));
}

option command::value(char const *name, char const *kind, char const *description, complaint about)
{
    option const one(raw_->add_option(name, keep, description)->option_text(kind));
    check_word(one, about);
    return one;
}

option command::base()
{
    return value("--base", "DIRECTORY", "Directory that relative PATHs are in");
}

option command::dry_run()
{
    return flag("-n,--dry-run", "Change nothing: tell what would be done, by what is there now");
}

void command::check(std::function<std::string()> about)
{
    raw_->parse_complete_callback([about = std::move(about)] {
        if (std::string const what = about(); !what.empty())
            throw CLI::ValidationError(what);
    });
}

void command::answers(subject const &about, question asked, char const *json_help)
{
    asks(disk_use::read, about, std::move(asked), flag("--json", json_help),
         [] { return output::text; });
}

void command::changes(subject const &about, std::function<std::string(arguments const &)> make,
                      adviser advise, bool stops_at_failure)
{
    changes(about, change(std::move(make), std::move(advise), stops_at_failure));
}

void command::changes(subject const &about, question asked)
{
    option const as_json =
        flag("--json", about.is_one_by_one ? "Print one JSON array with an object for each PATH"
                                           : "Print a JSON object");
    option const is_quiet = flag("-q,--quiet", "Print nothing but failures");
    exclude(is_quiet, as_json);
    asks(disk_use::change, about, std::move(asked), as_json,
         [is_quiet] { return is_quiet.is_given() ? output::nothing : output::text; });
}

void command::asks(disk_use use, subject const &about, question asked, option const &as_json,
                   std::function<output()> text)
{
    on_disk(use, [this_session = session_, about, asked = std::move(asked), as_json,
                  text = std::move(text)] {
        output const for_programs = about.is_one_by_one ? output::json_array : output::json_object;
        return report(*this_session, about.rounds(), as_json.is_given() ? for_programs : text(),
                      asked);
    });
}

void command::on_disk(disk_use use, std::function<int()> action)
{
    anywhere([raw = raw_, this_session = session_, use, action = std::move(action)] {
        if (this_session->has_disk) {
            this_session->exit_code = action();
            return;
        }
        this_session->err << "flfs: " << raw->get_name()
                          << " works on Windows only: there is no Windows file system to "
                          << (use == disk_use::read ? "read" : "change") << " here.\n";
        this_session->exit_code = exit_usage;
    });
}

void command::anywhere(std::function<void()> action)
{
    raw_->callback(std::move(action));
}

} // namespace flfs
