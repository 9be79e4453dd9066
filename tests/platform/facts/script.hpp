#ifndef FL_FILESYSTEM_TESTS_PLATFORM_FACTS_SCRIPT_HPP
#define FL_FILESYSTEM_TESTS_PLATFORM_FACTS_SCRIPT_HPP
// Plays scripts of system calls, as README.md tells how they are written. The current directory
// is an empty folder.

#include "platform/contract.hpp"

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace contract::facts {

using words = std::vector<std::string>;

/// One step, taken apart.
struct step
{
    words said;
    DWORD code = success;
    std::optional<std::string> answer;
};

/// The steps of a script as they are written, and one of them taken apart.
words steps_of(std::string const &script);
step parse_step(std::string const &text);

/// The step as a script has it, but with what came of it. An answer stands there if one is told.
std::string written_again(step const &told, DWORD code, std::string const &answer);

/// What the letters of a word say together.
DWORD letters(std::string const &word, std::map<char, DWORD> const &meanings);
std::map<char, DWORD> const &meanings_of_attributes();
DWORD attributes_in(std::string const &word);
std::string attribute_letters(DWORD attributes);
/// ASCII as it is, and a question mark for any other unit.
std::string narrowed(std::wstring const &text);

class stage;
/// The outcome of a step, and what it answers if it answers anything.
using verb = std::function<DWORD(stage &, words const &, std::string &)>;
using verb_table = std::map<std::string, verb>;

/// What a script works on: a folder, and what it holds open.
class stage
{
public:
    /// Knows the verbs below, and `more`.
    explicit stage(verb_table more = {});
    ~stage();
    stage(stage const &) = delete;
    stage &operator=(stage const &) = delete;

    /// Fails by an exception of the standard library where a script is wrong, and where what it
    /// is about can't be set up.
    DWORD run(step const &next, std::string &answer);

    /// Why this system can't play a script; nothing if it can.
    std::string obstacle(std::string const &script);

    /// A word as a text for the system, and where a word sets something up.
    std::wstring text(std::string const &word);
    std::u16string place(std::string const &word);
    /// What the system answers, in the notation above.
    std::string shown(std::wstring const &text);

    /// Undoes what a verb did, before the folder goes. The last one first; it may not throw.
    void at_end(std::function<void()> undo) { undoing_.push_back(std::move(undo)); }

    workspace &space() noexcept { return space_; }
    std::vector<handle> &held() noexcept { return held_; }

private:
    std::wstring const &share();
    std::wstring share_itself();

    verb_table more_;
    workspace space_;
    std::optional<std::wstring> share_; // once it was asked for
    std::vector<handle> held_;          // goes ahead of the folder
    std::vector<std::function<void()>> undoing_;
};

/// The verbs of scripts: those of files and their names, and all the others.
extern verb_table const file_verbs;
extern verb_table const other_verbs;

} // namespace contract::facts

#endif
