#include "flfs/report.hpp"

#include <fl/filesystem/path.hpp>
#include <fl/filesystem/text.hpp>

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
        return answer{happened + ' ' + shown(names) + '\n'};
    };
    return {{}, std::move(ask), std::move(advise), stops_at_failure};
}

int report(session &session, std::vector<arguments> const &rounds, output as, question const &asked)
{
    int exit_code = exit_success;
    json array = json::array();
    for (arguments const &about : rounds) {
        answer one;
        bool const is_printed = as == output::text && asked.print;
        one.attempt([&] { one = is_printed ? asked.print(about, session.out) : asked.ask(about); });
        if (!one.failures.empty() || one.is_no)
            exit_code = exit_failure;
        arguments blamed = about;
        for (failure &what_failed : one.failures)
            if (asked.advise)
                asked.advise(what_failed, blamed);
        if (as == output::text) {
            session.out << one.text;
            for (failure const &what_failed : one.failures)
                print_failure(session.err, what_failed, blamed);
        } else {
            array.push_back(object_of(asked, about, one));
        }
        if (!one.failures.empty() && asked.stops_at_failure)
            break;
    }
    if (as != output::text)
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
