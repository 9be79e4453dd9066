#include "flfs/commands.hpp"

#include "flfs/command.hpp"
#include "flfs/resolution.hpp"
#include "flfs/text.hpp"

namespace flfs {

namespace {

/// What stands at the end, for programs and for people, in the order of `what_is_there`.
struct found_words
{
    char const *identifier; ///< none where there is nothing
    char const *description;
};

constexpr found_words all_found_words[] = {
    {nullptr, " (nothing is there)"}, {"file", " (file)"}, {"directory", " (directory)"}};

found_words const &words_for(what_is_there found)
{
    return all_found_words[static_cast<std::size_t>(found)];
}

json values_of(hop const &one)
{
    return {{"pathname", to_json(one.pathname)},
            {"kind", identifier(one.kind)},
            {"text", to_json(one.text)},
            {"is_kept", one.is_kept},
            {"goes_on_with", to_json(one.goes_on_with)}};
}

// No name holds a `>`, so that the arrows can't be taken for a part of one.
std::string text_of(hop const &one)
{
    std::string const line = (one.is_kept ? "    kept  " : "    link  ") +
                             displayed_value(one.pathname) + " -> " + displayed_value(one.text) +
                             " (" + description(one.kind) + ')';
    return one.goes_on_with ? line + " => " + displayed_value(*one.goes_on_with) + '\n'
                            : line + '\n';
}

std::string text_of(resolution const &told)
{
    std::string text;
    if (told.absolute)
        text += displayed_value(*told.absolute) + '\n';
    for (hop const &one : told.hops)
        text += text_of(one);
    if (told.hops_repeat)
        text += "    and round again\n";
    if (told.result)
        text +=
            "    ends  " + displayed_value(*told.result) + words_for(told.found).description + '\n';
    return text;
}

answer resolve_one(arguments const &about)
{
    resolution const told = resolve(about.front());
    answer one{text_of(told), {}, false, told.what_failed};
    one.values = {{"absolute", to_json(told.absolute)},
                  {"hops", json::array()},
                  {"hops_repeat", told.hops_repeat},
                  {"result", to_json(told.result)}};
    for (hop const &passed : told.hops)
        one.values["hops"].push_back(values_of(passed));
    if (char const *found = words_for(told.found).identifier)
        one.values["found"] = found;
    return one;
}

} // namespace

void add_resolve_command(CLI::App &app, session &session)
{
    command resolve(app, session, "resolve",
                    "Show each link that a pathname leads through, and its end",
                    "A link is shown as LINK -> TEXT (KIND) => what the walk goes on with. A link\n"
                    "on a network that names a drive is kept as it is.\n"
                    "A .. in PATH is dropped by text first, together with the name ahead of it.");
    option const paths = resolve.words("PATH", "pathname to walk through");
    resolve.answers(each(paths),
                    {{"absolute", "hops", "hops_repeat", "result", "found"}, resolve_one});
}

} // namespace flfs
