#ifndef FL_FLFS_COMMAND_LINE_HPP
#define FL_FLFS_COMMAND_LINE_HPP
// What commands want of CLI11, whose header takes seconds to compile: few of them have to
// include it.

#include <string>
#include <vector>

namespace CLI {
class App;
class Option;
} // namespace CLI

namespace flfs {

/// Gives `app` the command `name`. `footer` tells in its help what the rest leaves open.
CLI::App *add_command(CLI::App &app, std::string const &name, std::string const &description,
                      std::string const &footer);

/// Gives `command` the flag `name`, which sets `flag`. That must outlive the command.
CLI::Option *add_flag(CLI::App &command, std::string const &name, bool &flag,
                      std::string const &description);

/// Has it be wrong to give both. The help leaves it to their descriptions.
void exclude(CLI::Option &one, CLI::Option &other);

/// Gives `command` the repeatable, required positional `name`, whose words are the
/// pathnames of the command.
CLI::Option *add_pathnames(CLI::App &command, std::string const &name,
                           std::string const &description);

/// Gives `command` the required positional `name`, which is one word: a pathname or
/// whatever the command takes it for.
CLI::Option *add_word(CLI::App &command, std::string const &name, std::string const &description);

/// The same with `complaint_about`, which tells what is wrong with a word, or nothing.
CLI::Option *add_word(CLI::App &command, std::string const &name, std::string const &description,
                      std::string (*complaint_about)(std::string const &word));

/// The same where the word may be left out.
CLI::Option *add_optional_word(CLI::App &command, std::string const &name,
                               std::string const &description);

/// Has `pathname` refuse words that end in a name of full stops and blanks alone, but for
/// `.` and `..`: the system drops these, and the command would be about what is ahead.
CLI::Option *refuse_stops_and_blanks(CLI::Option *pathname);

/// Whether the user wrote it.
bool is_given(CLI::Option const &option);

/// That word, as the user wrote it.
std::string word_of(CLI::Option const &positional);

/// Gives `command` the option `--base`, whose one word is a pathname.
CLI::Option *add_base(CLI::App &command);

/// That pathname, or the empty one.
std::u16string base_of(CLI::Option const &base);

/// The UTF-16 units of the words that it was given.
std::vector<std::u16string> pathnames_of(CLI::Option const &positional);

} // namespace flfs

#endif
