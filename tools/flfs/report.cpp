#include "flfs/report.hpp"

#include <fl/filesystem/path.hpp>
#include <fl/filesystem/text.hpp>

#include "flfs/colour.hpp"
#include "flfs/text.hpp"

#include <ostream>

namespace flfs {

namespace {

json object_of(question const &asked, arguments const &about, answer const &one)
{
    json object = json::object();
    if (about.size() == 1)
        object["pathname"] = to_json(about.front());
    else if (!about.empty())
        object["pathnames"] = to_json(about);
    for (char const *key : asked.keys)
        object[key] = nullptr;
    object["failure"] = one.failures.empty() ? json() : to_json(one.failures.front());
    if (asked.may_fail_often)
        object["failures"] = json::array();
    for (failure const &what_failed : one.failures)
        if (asked.may_fail_often)
            object["failures"].push_back(to_json(what_failed));
    object.update(one.values);
    return object;
}

std::string shown(arguments const &names)
{
    std::vector<std::string> all;
    for (std::u16string const &name : names)
        all.push_back(shown_native(name));
    return joined(all, " -> ");
}

void print(session &session, answer const &one, arguments const &blamed, output as)
{
    if (as == output::text)
        session.out << (one.is_no ? painted(one.text, colour::yellow, session.has_colours)
                                  : one.text);
    for (failure const &what_failed : one.failures)
        print_failure(session.err, what_failed, blamed, session.warns_in_colours);
}

} // namespace

void answer::attempt(std::function<void()> const &action)
{
    if (std::optional<failure> const what_failed = failure_of(action))
        failures.push_back(*what_failed);
}

question result_of(std::function<std::u16string(std::u16string const &)> const &make)
{
    return {{"result"}, [make](arguments const &about) {
                std::u16string const result = make(about.front());
                return answer{displayed_value(result) + '\n', {{"result", to_json(result)}}};
            }};
}

question change(std::function<std::string(arguments const &)> make, adviser advise,
                bool stops_at_failure)
{
    auto ask = [make = std::move(make)](arguments const &names) {
        std::string const happened = make(names);
        return answer{told_change(happened, names) + '\n', {{"done", happened}}};
    };
    return {{"done"}, std::move(ask), std::move(advise), stops_at_failure};
}

std::string told_change(std::string_view happened, arguments const &names)
{
    return std::string(happened) + ' ' + shown(names);
}

void tell_change(answer &told, std::string_view happened, arguments const &names)
{
    told.text += told_change(happened, names) + '\n';
    json row = {{"done", happened}, {"pathname", to_json(names.front())}};
    if (names.size() > 1)
        row["to"] = to_json(names.at(1));
    told.values["names"].push_back(std::move(row));
}

int report(session &session, std::vector<arguments> const &rounds, output as, question const &asked)
{
    bool const is_for_programs = as == output::json_object || as == output::json_array;
    int exit_code = exit_success;
    json array = json::array();
    for (arguments const &about : rounds) {
        answer one;
        bool const is_printed = !is_for_programs && asked.print;
        one.attempt([&] { one = is_printed ? asked.print(about, session.out) : asked.ask(about); });
        if (!one.failures.empty() || one.is_no)
            exit_code = exit_failure;
        arguments blamed = about;
        for (failure &what_failed : one.failures) {
            if (asked.advise)
                asked.advise(what_failed, blamed);
            advise_on_wildcards(what_failed, about);
            advise_on_quotes(what_failed, about);
        }
        if (is_for_programs)
            array.push_back(object_of(asked, about, one));
        else
            print(session, one, blamed, as);
        if (!one.failures.empty() && asked.stops_at_failure)
            break;
    }
    if (is_for_programs)
        print_json(session.out, as == output::json_array ? array : array.front());
    return exit_code;
}

void print_json(std::ostream &out, json const &value)
{
    out << value.dump(2) << '\n';
}

json to_json(std::optional<std::u16string> const &text)
{
    return text ? json(escaped_surrogates(*text)) : json();
}

json to_json(std::vector<std::u16string> const &texts)
{
    json array = json::array();
    for (std::u16string const &text : texts)
        array.push_back(to_json(text));
    return array;
}

json to_json(failure const &what_failed)
{
    return {{"identifier", what_failed.identifier},
            {"pathname", to_json(what_failed.pathname)},
            {"additional_pathnames", to_json(what_failed.additional_pathnames)},
            {"code", what_failed.code},
            {"sentence", what_failed.sentence}};
}

std::string hexadecimal(std::uint32_t value, std::size_t digits)
{
    std::string text = "0x";
    fl::filesystem::detail::append_number(text, value, 16, digits);
    return text;
}

facts &facts::add(std::string_view label, std::string_view shown)
{
    std::string padded(label);
    padded.resize(label_width_, ' ');
    text_.append("    ").append(padded).append(shown) += '\n';
    return *this;
}

facts &facts::add(std::string_view label, std::u16string const &value)
{
    return add(label, displayed_value(value));
}

facts &facts::add(json const &values, std::initializer_list<told_value> rows)
{
    for (told_value const &row : rows)
        if (values.contains(row.key))
            add(row.label, shown(values.at(row.key)));
    return *this;
}

std::string shown(json const &value)
{
    if (value.is_string())
        return displayed_value(fl::filesystem::from_utf8(value.get_ref<std::string const &>()));
    if (value.is_boolean())
        return value.get<bool>() ? "yes" : "no";
    return value.is_null() ? "-" : value.dump();
}

std::string shown_native(std::u16string const &pathname)
{
    return displayed_value(fl::filesystem::upath(pathname).native());
}

answer value_of(std::u16string const &pathname, char const *key, json const &value,
                std::string const &shown_value)
{
    return {shown_native(pathname) + "\n    " + shown_value + '\n', {{key, value}}};
}

} // namespace flfs
