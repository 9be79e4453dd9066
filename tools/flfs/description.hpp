#ifndef FL_FLFS_DESCRIPTION_HPP
#define FL_FLFS_DESCRIPTION_HPP
// What the help says, taken apart for others who tell it in their own form.

#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace flfs {

struct described_option
{
    std::vector<std::string> names; ///< "-r", "--recursive", or the name of a word
    std::string value;              ///< "DIRECTORY", or empty
    std::string description;
    bool is_word;
    bool is_repeatable; ///< of words
    bool is_required;   ///< of words
};

struct described_command
{
    std::string name;
    std::string group;
    std::string description;
    std::string footer; ///< lines of text, some of them indented
    std::vector<described_option> options;
};

/// All commands, in the order of the help. `any` is one of them, or the program.
std::vector<described_command> commands_of_program(CLI::App const &any);

/// The examples and exit codes.
std::string footer_of_program(CLI::App const &any);

} // namespace flfs

#endif
