#include "flfs/tour/step.hpp"

#include <fl/filesystem/access_forms.hpp>
#include <fl/filesystem/operations.hpp>
#include <fl/filesystem/windows.hpp>

#include "flfs/link_reading.hpp"
#include "flfs/status_text.hpp"
#include "flfs/text.hpp"
#include "flfs/tour/disk.hpp"

namespace flfs::tour {

namespace fs = fl::filesystem;
namespace windows = fl::filesystem::detail::windows;

namespace {

std::u16string const name = u"reports\\link.txt";

auto whether_made(std::u16string const &link)
{
    return [link] { return is_there(link) ? "made" : "nothing is there"; };
}

std::string target_type()
{
    return type_description(
        windows::target_status_bridge(windows::make_native_access_form_bridge(name)));
}

std::u16string target_over_shortcut(place const &where)
{
    std::wstring const link = fs::detail::to_filesystem(where.folder + u"\\link");
    return fs::detail::from_filesystem(windows::build_target_path_bridge(
        link, L"to 2024.lnk\\..\\2025", windows::link_type_symlink_relative));
}

step const making = {"A symbolic link is made to a file beside it.",
                     R"(create_symlink(u"may.txt", u"reports\\link.txt", regular_file))",
                     [] { fs::create_symlink(u"may.txt", name, fs::file_status::regular_file); },
                     whether_made(name), "made"};
step const reading = {"What it says.", R"(read_symlink(u"reports\\link.txt"))",
                      [] { return fs::read_symlink(name); }, "may.txt"};
step const itself = {"What it is itself.", R"(symlink_status(u"reports\\link.txt"))",
                     [] { return type_description(fs::symlink_status(name)); }, "symbolic link"};
step const copying = {"A copy says the same.",
                      R"(copy_symlink(u"reports\\link.txt", u"reports\\copy.txt"))",
                      [] { fs::copy_symlink(name, u"reports\\copy.txt"); },
                      [] { return fs::read_symlink(u"reports\\copy.txt"); }, "may.txt"};

std::vector<step> steps_with_links()
{
    return {making,
            reading,
            itself,
            {"What it leads to.", R"(target_status_bridge(L"...\\reports\\link.txt"))", target_type,
             "file"},
            {"What kind of link its bytes make it, and where it leads.",
             R"(get_target_path_bridge(link_type, data))",
             [] {
                 link const found = read_link(name);
                 return std::string(description(found.kind)) + ": " + displayed(found.target);
             },
             "symbolic link, relative: may.txt"},
            copying};
}

/// What comes of the same calls where there is no link.
std::vector<step> steps_without_links(std::string const &why, std::string const &of_making)
{
    auto const expecting = [](step one, std::string const &sentence, std::string const &expected) {
        one.sentence = sentence;
        one.expected = expected;
        return one;
    };
    return {
        expecting(making, why, of_making),
        expecting(reading, "So there is none to read,", R"(PathNotFound naming reports\link.txt)"),
        expecting(itself, "to ask about,", "not found"),
        expecting(copying, "or to copy.", "PathNotFound")};
}

/// As the library reports the codes that systems have for this.
std::string failure_by(unsigned int code)
{
    constexpr unsigned int access_denied = 5; // ERROR_ACCESS_DENIED
    return code == access_denied ? "AccessDenied" : "SystemError, code " + std::to_string(code);
}

} // namespace

chapter shortcuts(place const &where)
{
    return {
        "Shortcuts are links",
        {{"A shortcut is made to a directory.",
          R"(create_shortcut(u"archive\\2024", u"to 2024.lnk"))",
          [] { fs::create_shortcut(u"archive\\2024", u"to 2024.lnk"); },
          whether_made(u"to 2024.lnk"), "made"},
         {"To Windows it is a file, but the library walks through it.",
          R"(canonical(u"to 2024.lnk\\may"))", [] { return fs::canonical(u"to 2024.lnk\\may"); },
          R"(<folder>\archive\2024\may)"},
         {"The end of a pathname may be missing.",
          R"(weakly_canonical(u"to 2024.lnk\\june\\..\\july"))",
          [] { return fs::weakly_canonical(u"to 2024.lnk\\june\\..\\july"); },
          R"(<folder>\archive\2024\july)"},
         {"A link that says .. leads up from where the directory ahead really is.",
          R"(build_target_path_bridge(L"<folder>\\link", L"to 2024.lnk\\..\\2025", relative))",
          [where] { return target_over_shortcut(where); }, R"(\\?\<folder>\archive\2025)"},
         {"In what callers write the text decides, as everywhere in Windows.",
          R"(absolute(u"to 2024.lnk\\..\\2025"))",
          [] { return fs::absolute(u"to 2024.lnk\\..\\2025"); }, R"(<folder>\2025)"},
         {"The way from one directory to a file in another.",
          R"(relative(u"reports\\may.txt", u"archive"))",
          [] { return fs::relative(u"reports\\may.txt", u"archive"); }, R"(..\reports\may.txt)"}}};
}

chapter symbolic_links()
{
    constexpr char const *title = "Symbolic links";
    link_trial const trial = try_symbolic_link(u"trial");
    if (trial.support == link_support::made)
        return {title, steps_with_links()};
    if (trial.support == link_support::ignored)
        return {title, steps_without_links("This system claims to make symbolic links, and makes "
                                           "none.",
                                           "nothing is there")};
    return {title,
            steps_without_links("This system refuses symbolic links, which the library reports.",
                                failure_by(trial.code))};
}

} // namespace flfs::tour
