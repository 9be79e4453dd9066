#include "flfs/commands.hpp"

#include "flfs/command.hpp"
#include "flfs/link_reading.hpp"
#include "flfs/text.hpp"

namespace flfs {

namespace {

answer read_one(arguments const &about)
{
    link const found = read_link(about.front());
    facts lines(6);
    lines.add("kind", description(found.kind));
    json values = {{"kind", identifier(found.kind)}};
    if (found.text) {
        lines.add("text", *found.text);
        values["text"] = to_json(found.text);
    }
    if (found.tag) {
        lines.add("tag", hexadecimal(*found.tag, 8));
        values["tag"] = hexadecimal(*found.tag, 8);
    }
    return {displayed_value(found.pathname) + '\n' + lines.text(), values};
}

} // namespace

void add_readlink_command(CLI::App &app, session &session)
{
    command readlink(app, session, "readlink",
                     "Show what kind of link a name is, and the text in it; nothing is followed",
                     "Symbolic links, junctions, volume mount points, other reparse points, and\n"
                     "shortcut files, whose names end in .lnk.");
    option const paths = readlink.words("PATH", "link or shortcut to read");
    readlink.answers(each(paths), {{"kind", "text", "tag"}, read_one});
}

} // namespace flfs
