#ifndef FL_FLFS_REPORT_HPP
#define FL_FLFS_REPORT_HPP
// What commands answer and what they change, for people and for programs. For people it is text,
// and failures stand apart from it; for programs it is JSON, with the failures in it.

#include "flfs/commands.hpp"
#include "flfs/failure_report.hpp"

#include <nlohmann/json.hpp>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace flfs {

using json = nlohmann::ordered_json;

/// The pathnames that are asked about together, as the user wrote them.
using arguments = std::vector<std::u16string>;

struct answer
{
    std::string text;                   ///< for people, in whole lines
    json values = json::object();       ///< for programs, of the keys that have one
    bool is_no = false;                 ///< an answer that exits 1, as a failure does
    std::vector<failure> failures = {}; ///< told behind `text`; mostly none or one

    /// Runs `action`, and keeps the failure that it ends in.
    void attempt(std::function<void()> const &action);
};

/// Replaces the sentence where the command knows more than the class of the failure, and the
/// arguments that are shown where the library names no pathname.
using adviser = std::function<void(failure &, arguments &blamed)>;

struct question
{
    /// Every key is always there; where there is no answer, its value is null.
    std::vector<char const *> keys;
    /// A failure may also end it by the library's exception.
    std::function<answer(arguments const &)> ask;
    adviser advise = nullptr;
    bool stops_at_failure = false;
    /// Asks for people, of answers too long to be kept: prints the text as it comes.
    std::function<answer(arguments const &, std::ostream &)> print = nullptr;
    bool may_fail_often = false; ///< programs find all failures, too
};

/// The question whose answer is one text, `make` of the pathname.
question result_of(std::function<std::u16string(std::u16string const &)> const &make);

/// The question whose answer is a change of the disk: `make` makes it and returns what has
/// happened to its names, "removed", which programs find under `done`. Two names are told with
/// an arrow between them.
question change(std::function<std::string(arguments const &)> make, adviser advise = nullptr,
                bool stops_at_failure = false);

/// Adds the change of one name among several to `told`.
void tell_change(answer &told, std::string_view happened, arguments const &names);

/// "removed C:\a", or "moved C:\a -> C:\b".
std::string told_change(std::string_view happened, arguments const &names);

enum class output
{
    text,
    nothing,     ///< but failures
    json_object, ///< of the only round
    json_array   ///< of an object for each round
};

/// Puts the question to each of `rounds`. A failure doesn't stop it, unless the question says so;
/// returns the exit code, which is 1 after a failure or a no.
int report(session &session, std::vector<arguments> const &rounds, output as,
           question const &asked);

/// Prints `value` as all JSON is printed.
void print_json(std::ostream &out, json const &value);

/// A text, or null.
json to_json(std::optional<std::u16string> const &text);
json to_json(std::vector<std::u16string> const &texts);
json to_json(failure const &what_failed);

/// "0x0400", with that many digits at least.
std::string hexadecimal(std::uint32_t value, std::size_t digits);

/// Lines under a heading, with all values in one column.
class facts
{
public:
    explicit facts(std::size_t label_width) : label_width_(label_width) {}

    facts &add(std::string_view label, std::string_view shown);
    facts &add(std::string_view label, std::u16string const &value);
    /// What is told to programs, told to people: those values that are there.
    struct told_value
    {
        char const *label;
        char const *key;
    };
    facts &add(json const &values, std::initializer_list<told_value> rows);
    std::string const &text() const { return text_; }

private:
    std::size_t label_width_;
    std::string text_;
};

/// A value of JSON as a line shows it: yes or no, and - for null.
std::string shown(json const &value);

/// `pathname` in native form, as a line shows it.
std::string shown_native(std::u16string const &pathname);

/// One value, told below the pathname that it is of.
answer value_of(std::u16string const &pathname, char const *key, json const &value,
                std::string const &shown_value);

} // namespace flfs

#endif
