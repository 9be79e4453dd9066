#include "flfs/answers.hpp"

#include <fl/filesystem/path.hpp>

#include "flfs/failure_json.hpp"
#include "flfs/text.hpp"

#include <ostream>

namespace flfs {

using json = nlohmann::ordered_json;

namespace {

/// What came of one pathname: an answer, as JSON and as a line, or the failure.
struct outcome
{
    json value;
    std::string line;
    bool is_no = false;
    std::optional<failure> what_failed;
};

/// Every key is always there; where there is no answer, its value is null.
json to_json(std::u16string const &pathname, char const *key, outcome const &one)
{
    json object = {
        {"pathname", escaped_surrogates(pathname)}, {key, one.value}, {"failure", nullptr}};
    if (one.what_failed)
        object["failure"] = flfs::to_json(*one.what_failed);
    return object;
}

int report(session &session, std::vector<std::u16string> const &pathnames, bool as_json,
           char const *key, std::function<outcome(std::u16string const &)> const &ask)
{
    int exit_code = exit_success;
    json array = json::array();
    for (std::u16string const &pathname : pathnames) {
        outcome one;
        one.what_failed = failure_of([&] { one = ask(pathname); });
        if (one.what_failed || one.is_no)
            exit_code = exit_failure;
        if (as_json)
            array.push_back(to_json(pathname, key, one));
        else if (one.what_failed)
            print_failure(session.err, *one.what_failed, pathname);
        else
            session.out << one.line << '\n';
    }
    if (as_json)
        session.out << array.dump(2) << '\n';
    return exit_code;
}

} // namespace

int report_pathnames(session &session, std::vector<std::u16string> const &pathnames, bool as_json,
                     std::function<std::u16string(std::u16string const &)> const &answer)
{
    auto const ask = [&](std::u16string const &pathname) {
        std::u16string const result = answer(pathname);
        return outcome{escaped_surrogates(result), displayed_value(result), false, {}};
    };
    return report(session, pathnames, as_json, "result", ask);
}

int report_truths(session &session, std::vector<std::u16string> const &pathnames, bool as_json,
                  char const *key, std::function<bool(std::u16string const &)> const &answer)
{
    auto const ask = [&](std::u16string const &pathname) {
        bool const is_yes = answer(pathname);
        std::string const name = displayed_value(fl::filesystem::upath(pathname).native());
        return outcome{is_yes, (is_yes ? "yes  " : "no   ") + name, !is_yes, {}};
    };
    return report(session, pathnames, as_json, key, ask);
}

} // namespace flfs
