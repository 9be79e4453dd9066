#include "flfs/commands.hpp"

#include <fl/filesystem/operations.hpp>

#include "flfs/argument_guard.hpp"
#include "flfs/command_line.hpp"
#include "flfs/failure_json.hpp"
#include "flfs/text.hpp"

#include <memory>
#include <ostream>

namespace flfs {

namespace fs = fl::filesystem;
using json = nlohmann::ordered_json;

namespace {

struct question
{
    std::string letters;
    unsigned int mode;
    bool as_json;
};

/// What came of one pathname: an answer, or the failure.
struct outcome
{
    std::u16string pathname; ///< as the user wrote it
    bool is_granted;
    std::optional<failure> what_failed;
};

/// 0 for what is no letter of a mode.
unsigned int mode_of(char letter)
{
    switch (letter) {
    case 'e':
        return fs::access_exists;
    case 'r':
        return fs::access_read;
    case 'w':
        return fs::access_write;
    case 'x':
        return fs::access_execute;
    default:
        return 0;
    }
}

/// The message about `letters` that are no MODES, or none.
std::string complaint_about(std::string const &letters)
{
    for (char const letter : letters)
        if (mode_of(letter) == 0)
            return unprotected(letters) + " is made of other letters than e, r, w and x";
    return letters.empty() ? "A letter is needed: e, r, w or x" : "";
}

outcome ask(std::u16string const &pathname, unsigned int mode)
{
    outcome one{pathname, false, {}};
    one.what_failed = failure_of([&] { one.is_granted = fs::access(pathname, mode); });
    return one;
}

/// Every key is always there; where there is no answer, its value is null.
json to_json(outcome const &one, std::string const &letters)
{
    json object = {{"pathname", escaped_surrogates(one.pathname)},
                   {"modes", letters},
                   {"granted", nullptr},
                   {"failure", nullptr}};
    if (one.what_failed)
        object["failure"] = flfs::to_json(*one.what_failed);
    else
        object["granted"] = one.is_granted;
    return object;
}

void print(std::ostream &out, outcome const &one)
{
    out << (one.is_granted ? "yes  " : "no   ") << displayed_value(fs::upath(one.pathname).native())
        << '\n';
}

/// 0 if all is granted everywhere.
int report_access(session &session, std::vector<std::u16string> const &pathnames,
                  question const &asked)
{
    int exit_code = exit_success;
    json array = json::array();
    for (std::u16string const &pathname : pathnames) {
        outcome const one = ask(pathname, asked.mode);
        if (!one.is_granted)
            exit_code = exit_failure;
        if (asked.as_json)
            array.push_back(to_json(one, asked.letters));
        else if (one.what_failed)
            print_failure(session.err, *one.what_failed, pathname);
        else
            print(session.out, one);
    }
    if (asked.as_json)
        session.out << array.dump(2) << '\n';
    return exit_code;
}

question question_in(std::string const &letters, bool as_json)
{
    question asked{letters, 0, as_json};
    for (char const letter : letters)
        asked.mode |= mode_of(letter);
    return asked;
}

} // namespace

void add_access_command(CLI::App &app, session &session)
{
    CLI::App *command = add_command(
        app, "access", "Tell whether you can read, write or execute, by trying",
        "MODES are one or more of\n"
        "  e  it exists, and you may look at it\n"
        "  r  a file's content, or a directory's names, can be read\n"
        "  w  it can be written; never true of a read-only file\n"
        "  x  a file named .exe, .bat, .com or .cmd can be run\n"
        "The answer is yes if all of them are. A missing name is a \"no\" with e and else\n"
        "a failure; what you may not look at is a failure with e and else a \"no\".\n"
        "Exits 0 if all answers are yes, and 1 after a \"no\" or a failure.");
    CLI::Option *modes = add_word(*command, "MODES", "letters out of erwx", complaint_about);
    CLI::Option *paths = add_pathnames(*command, "PATH", "pathname to ask about");
    auto const as_json = std::make_shared<bool>(false);
    add_flag(*command, "--json", *as_json, "Print one JSON array with an object for each PATH");
    set_disk_action(*command, session, disk_use::read, [&session, modes, paths, as_json] {
        return report_access(session, pathnames_of(*paths), question_in(word_of(*modes), *as_json));
    });
}

} // namespace flfs
