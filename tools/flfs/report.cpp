#include "flfs/report.hpp"

#include <fl/filesystem/path.hpp>

#include "flfs/text.hpp"

#include <array>
#include <cstdio>
#include <ostream>

namespace flfs {

namespace {

answer ask(question const &asked, arguments const &about)
{
    answer one;
    if (auto what_failed = failure_of([&] { one = asked.ask(about); }))
        one.what_failed = std::move(what_failed);
    return one;
}

json object_of(question const &asked, arguments const &about, answer const &one)
{
    json object = json::object();
    if (about.size() == 1)
        object["pathname"] = to_json(about.front());
    else if (!about.empty())
        object["pathnames"] = to_json(about);
    for (char const *key : asked.keys)
        object[key] = nullptr;
    object["failure"] = one.what_failed ? to_json(*one.what_failed) : json();
    object.update(one.values);
    return object;
}

} // namespace

int report(session &session, std::vector<arguments> const &rounds, output as, question const &asked)
{
    int exit_code = exit_success;
    json array = json::array();
    for (arguments const &about : rounds) {
        answer const one = ask(asked, about);
        if (one.what_failed || one.is_no)
            exit_code = exit_failure;
        if (as != output::text) {
            array.push_back(object_of(asked, about, one));
            continue;
        }
        session.out << one.text;
        if (one.what_failed)
            print_failure(session.err, *one.what_failed, about);
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

std::string hexadecimal(std::uint32_t value, int digits)
{
    std::array<char, 16> buffer{};
    std::snprintf(buffer.data(), buffer.size(), "0x%0*X", digits, static_cast<unsigned int>(value));
    return buffer.data();
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

std::string shown_native(std::u16string const &pathname)
{
    return displayed_value(fl::filesystem::upath(pathname).native());
}

answer yes_or_no(bool value, char const *key, std::u16string const &pathname)
{
    return {
        (value ? "yes  " : "no   ") + shown_native(pathname) + '\n', {{key, value}}, !value, {}};
}

} // namespace flfs
