#include "behaviour/scene.hpp"

namespace behaviour {

namespace {

constexpr std::u16string_view backslash = u"\\";

/// Other names of what is there already: looking into them would find it twice.
bool is_entered(std::string const &described)
{
    return described.starts_with("directory");
}

/// By its content: other files can have the extension, and it can have other names.
bool is_shortcut(std::string const &content)
{
    using namespace std::string_view_literals;
    return content.starts_with("L\0\0\0"sv); // the size of its header
}

std::string attribute_words(DWORD attributes)
{
    return (attributes & FILE_ATTRIBUTE_READONLY) != 0 ? ", read-only" : "";
}

} // namespace

std::u16string home()
{
    return u"C:\\home";
}

std::u16string at_home(std::u16string_view name)
{
    return home().append(backslash).append(name);
}

std::u16string long_name()
{
    return at_home(std::u16string(200, u'l')) + u"\\" + std::u16string(100, u'n') + u".txt";
}

std::vector<subject> subjects()
{
    return {
        {"file", at_home(u"file.txt")},
        {"read-only file", at_home(u"read-only.txt")},
        {"directory", at_home(u"directory")},
        {"empty directory", at_home(u"empty")},
        {"link to a file", at_home(u"file-link")},
        {"link to a directory", at_home(u"directory-link")},
        {"broken link", at_home(u"broken-link")},
        {"junction", at_home(u"junction")},
        {"volume mount point", at_home(u"volume")},
        {"shortcut file", at_home(u"shortcut.lnk")},
        {"missing name", at_home(u"missing")},
        {"name in a missing directory", at_home(u"missing\\name")},
        {"name below a file", at_home(u"file.txt\\name")},
        {"denied name", at_home(u"denied.txt")},
        {"long name, 311 units", long_name()},
        {"file on a mapped drive", u"X:\\file.txt"},
        {"file on a share", u"\\\\server\\share\\file.txt"},
        {"empty text", u""},
    };
}

scene::scene()
{
    machine_.add_drive(u'D').add_share(u"server", u"share").map_drive(u'X', u"server", u"share");
    add_plain_names();
    add_links();
    add_difficult_names();
    machine_.set_current_directory(home());
}

void scene::add_plain_names()
{
    machine_.add_file(at_home(u"file.txt"), "some text")
        .add_file(at_home(u"other.txt"), "other")
        .add_file(at_home(u"read-only.txt"), "kept")
        .set_attributes(at_home(u"read-only.txt"), FILE_ATTRIBUTE_READONLY)
        .add_file(at_home(u"directory\\inner.txt"), "inner")
        .add_directory(at_home(u"empty"));
}

void scene::add_links()
{
    machine_.add_symbolic_link(at_home(u"file-link"), u"file.txt")
        .add_symbolic_link(at_home(u"directory-link"), u"directory", simulation::flavour::directory)
        .add_symbolic_link(at_home(u"broken-link"), u"nowhere")
        .add_junction(at_home(u"junction"), at_home(u"directory"))
        .add_mount_point(at_home(u"volume"), u'D')
        .add_shortcut(at_home(u"shortcut.lnk"), at_home(u"file.txt"));
}

void scene::add_difficult_names()
{
    using simulation::right;
    std::u16string const denied = at_home(u"denied.txt");
    machine_.add_file(denied, "secret").add_file(long_name(), "far");
    machine_.add_file(u"\\\\server\\share\\file.txt", "shared");
    for (right const each : {right::read_attributes, right::read_extended_attributes, right::read,
                             right::write, right::remove})
        machine_.deny(denied, each);
}

snapshot scene::look() const
{
    snapshot seen;
    for (char16_t const *root : {u"C:\\", u"D:\\", u"\\\\server\\share\\"})
        look_into(root, seen);
    return seen;
}

void scene::look_into(std::u16string const &directory, snapshot &seen) const
{
    bool const is_root = directory.back() == u'\\';
    for (std::u16string const &name : machine_.entries(directory)) {
        std::u16string path = directory;
        path.append(is_root ? std::u16string_view() : backslash).append(name);
        std::string const &described = seen[path] = describe(path);
        if (is_entered(described))
            look_into(path, seen);
    }
}

std::string scene::describe(std::u16string const &path) const
{
    std::string const more = attribute_words(machine_.attributes(path));
    if (machine_.reparse_tag(path) == DWORD{IO_REPARSE_TAG_SYMLINK})
        return (machine_.is_directory(path) ? "symbolic link to a directory"
                                            : "symbolic link to a file") +
               more;
    if (machine_.reparse_tag(path) != 0)
        return "junction or mount point" + more;
    if (machine_.is_directory(path))
        return "directory" + more;
    if (is_shortcut(machine_.content(path)))
        return "shortcut file" + more;
    return "file holding \"" + machine_.content(path) + "\"" + more;
}

} // namespace behaviour
