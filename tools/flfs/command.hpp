#ifndef FL_FLFS_COMMAND_HPP
#define FL_FLFS_COMMAND_HPP
// What commands are made of: words and options, whose library takes seconds to compile and
// is included by few of them, and what they do. Every command that answers takes `--json`.

#include "flfs/report.hpp"

#include <functional>
#include <string>
#include <vector>

namespace CLI {
class App;
class Option;
} // namespace CLI

namespace flfs {

/// A word or an option of a command, to be read when the command runs. Words arrive as the
/// user wrote them.
class option
{
public:
    explicit option(CLI::Option *raw) : raw_(raw) {}

    bool is_given() const;
    std::string word() const;                      ///< empty if it isn't given
    std::u16string pathname() const;               ///< empty if it isn't given
    std::vector<std::u16string> pathnames() const; ///< all words
    CLI::Option &raw() const { return *raw_; }

private:
    CLI::Option *raw_;
};

/// Has it be wrong to give both. The help leaves it to their descriptions.
void exclude(option const &one, option const &other);

/// What a command is about: the words, one by one or all together.
struct subject
{
    std::vector<option> words;
    bool is_one_by_one;
    bool is_expanded; ///< whether wildcards stand for the names that are there

    std::vector<arguments> rounds() const;
};

subject each(option const &words);
/// Of pathnames of which none need be there.
subject each_as_written(option const &words);
subject together(std::vector<option> const &words);

/// What is wrong with a word, or nothing.
using complaint = std::string (*)(std::string const &word);

/// One about words that end in a name of full stops and blanks alone, but for `.` and `..`:
/// the system drops these, and the command would be about what is ahead.
std::string complaint_about_stops(std::string const &word);

class command
{
public:
    /// `footer` tells in the help what the rest leaves open. `session` outlives `app`.
    command(CLI::App &app, session &session, char const *name, char const *description,
            char const *footer);

    option flag(char const *names, char const *description);
    /// The repeatable, required positional.
    option words(char const *name, char const *description, complaint about = nullptr);
    /// The same, not required: then it is the current directory.
    option words_or_here(char const *name, char const *description);
    option word(char const *name, char const *description, complaint about = nullptr);
    option optional_word(char const *name, char const *description);
    /// `--as`, with one word out of `kinds`.
    option kind(char const *description, std::vector<std::string> const &kinds);
    /// An option with a value, such as `--base DIRECTORY`.
    option value(char const *name, char const *kind, char const *description,
                 complaint about = nullptr);
    /// `--base`, a directory.
    option base();
    /// `--dry-run`.
    option dry_run();
    /// Looks at all that was given. `about` tells what is wrong with it, or nothing.
    void check(std::function<std::string()> about);

    /// Asks about `about`, and describes `--json` by `json_help`.
    void answers(subject const &about, question asked,
                 char const *json_help = "Print one JSON array with an object for each PATH");
    /// Changes the disk: see `change`. Takes `--json` and `--quiet`.
    void changes(subject const &about, std::function<std::string(arguments const &)> make,
                 adviser advise = nullptr, bool stops_at_failure = false);
    /// The same, asked for as a question whose answer isn't one line.
    void changes(subject const &about, question asked);
    /// Has it run `action`, whose result becomes the exit code, where there is a disk.
    /// Elsewhere the command is refused.
    void on_disk(disk_use use, std::function<int()> action);
    /// Has it run `action`, which needs no disk.
    void anywhere(std::function<void()> action);

    CLI::App &raw() { return *raw_; }

private:
    /// Puts `asked` on disk, as text or, if `as_json` is given, for programs.
    void asks(disk_use use, subject const &about, question asked, option const &as_json,
              std::function<output()> text);

    CLI::App *raw_;
    flfs::session *session_;
};

} // namespace flfs

#endif
