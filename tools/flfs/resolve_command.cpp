#include "flfs/commands.hpp"

#include <fl/filesystem/access_forms.hpp>
#include <fl/filesystem/links.hpp>
#include <fl/filesystem/operations.hpp>
#include <fl/filesystem/windows.hpp>

#include "flfs/command.hpp"
#include "flfs/link_reading.hpp"
#include "flfs/text.hpp"

#include <windows.h>

#include <algorithm>

namespace flfs {

namespace fs = fl::filesystem;

namespace {

link_kind kind_of(fs::link_hop const &one)
{
    switch (one.kind) {
    case fs::link_kind::relative_symbolic_link:
        return link_kind::symbolic_link_relative;
    case fs::link_kind::junction:
        return link_kind::junction;
    case fs::link_kind::shortcut:
        return link_kind::shortcut;
    case fs::link_kind::symbolic_link:
        break;
    }
    return link_kind::symbolic_link_absolute;
}

json values_of(fs::link_hop const &one)
{
    return {{"pathname", to_json(one.link)},
            {"kind", identifier(kind_of(one))},
            {"text", to_json(one.text)},
            {"is_kept", one.is_kept},
            {"goes_on_with", to_json(one.leads_to)}};
}

// No name holds a `>`, so that the arrows can't be taken for a part of one.
std::string text_of(fs::link_hop const &one)
{
    std::string const line = (one.is_kept ? "    kept  " : "    link  ") +
                             displayed_value(one.link) + " -> " + displayed_value(one.text) + " (" +
                             description(kind_of(one)) + ')';
    return (one.leads_to ? line + " => " + displayed_value(*one.leads_to) : line) + '\n';
}

/// Each link once: where the way comes to one again, it goes round.
void tell_links(std::u16string const &native, answer &told)
{
    std::vector<fs::link_hop> passed;
    for (fs::link_hop const &met : fs::link_hops(native)) {
        auto const is_same = [&met](fs::link_hop const &other) {
            return met.leads_to && met.link == other.link && met.leads_to == other.leads_to;
        };
        if (std::any_of(passed.begin(), passed.end(), is_same)) {
            told.text += "    and round again\n";
            told.values["hops_repeat"] = true;
            return;
        }
        told.text += text_of(met);
        told.values["hops"].push_back(values_of(met));
        passed.push_back(met);
    }
}

void tell_end(std::u16string const &native, answer &told)
{
    std::u16string const end = fs::canonical(native);
    std::wstring const form = fs::detail::windows::make_native_access_form_bridge(end);
    std::u16string const result =
        fs::detail::from_filesystem(form); // with a prefix if it needs one
    DWORD const attributes = ::GetFileAttributesW(form.c_str());
    char const *found = (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0 ? "directory" : "file";
    if (attributes == INVALID_FILE_ATTRIBUTES)
        found = "nothing is there";
    else
        told.values["found"] = found;
    told.values["result"] = to_json(result);
    told.text += "    ends  " + displayed_value(result) + " (" + found + ")\n";
}

void tell_way(std::u16string const &native, answer &told)
{
    if (native.empty())
        throw fs::InvalidArgument("Empty Path not permitted", {}, {});
    std::u16string const absolute = fs::absolute(native);
    told.text = displayed_value(absolute) + '\n';
    told.values["absolute"] = to_json(absolute);
    tell_links(native, told);
    tell_end(native, told);
}

/// A failure is told behind the links that are passed until then.
answer resolve(arguments const &about)
{
    answer told;
    told.values = {{"hops", json::array()}, {"hops_repeat", false}};
    told.what_failed = failure_of([&] { tell_way(fs::upath(about.front()).native(), told); });
    return told;
}

} // namespace

void add_resolve_command(CLI::App &app, session &session)
{
    command resolving(
        app, session, "resolve", "Show each link that a pathname leads through, and its end",
        "A link is shown as LINK -> TEXT (KIND) => what the walk goes on with. A link\n"
        "on a network that names a drive is kept as it is.\n"
        "A .. in PATH is dropped by text first, together with the name ahead of it.");
    option const paths = resolving.words("PATH", "pathname to walk through");
    resolving.answers(each(paths),
                      {{"absolute", "hops", "hops_repeat", "result", "found"}, resolve});
}

} // namespace flfs
