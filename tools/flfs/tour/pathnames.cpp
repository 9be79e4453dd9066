#include "flfs/tour/step.hpp"

#include <fl/filesystem/access_forms.hpp>
#include <fl/filesystem/path.hpp>
#include <fl/filesystem/pathname.hpp>
#include <fl/filesystem/windows.hpp>

#include "flfs/text.hpp"

namespace flfs::tour {

namespace fs = fl::filesystem;
namespace detail = fl::filesystem::detail;
namespace windows = fl::filesystem::detail::windows;

namespace {

std::string take_apart()
{
    std::u16string const text = u"C:\\data\\report.tar.gz";
    return displayed(detail::extract_root_path(text)) + " | " +
           displayed(detail::extract_parent_path(text)) + " | " +
           displayed(detail::extract_stem(text)) + " | " +
           displayed(detail::extract_extension(text));
}

std::string walk()
{
    std::string line;
    for (std::u16string const &element : fs::upath(u"\\\\server\\share\\dir\\file"))
        line += (line.empty() ? "" : ", ") + displayed(element);
    return line;
}

std::u16string put_together()
{
    std::u16string text = (fs::upath(u"C:\\data") / fs::upath(u"2026/report.tar.gz")).native();
    return detail::replace_extension(text, u"zip");
}

std::string add_prefix()
{
    std::wstring const text = L"C:\\" + std::wstring(257, L'a');
    std::wstring const form = detail::make_access_form(text);
    return displayed(detail::from_filesystem(form.substr(0, 8))) + "..., " +
           std::to_string(form.size()) + " units";
}

std::u16string target_of_link()
{
    return detail::from_filesystem(windows::build_target_path_bridge(
        L"C:\\data\\link", L"2026\\may", windows::link_type_symlink_relative));
}

} // namespace

chapter pathnames()
{
    return {
        "Pathnames: text alone, no disk is looked at",
        {{"A text is brought to native form, on which all else works.",
          R"(upath(u"C:/data//report.tar.gz").native())",
          [] { return fs::upath(u"C:/data//report.tar.gz").native(); }, R"(C:\data\report.tar.gz)"},
         {"It is taken apart: root, parent, stem, extension.",
          R"(extract_root_path(u"C:\\data\\report.tar.gz"), ...)", take_apart,
          R"(C:\ | C:\data | report.tar | gz)"},
         {"A pathname on a server is walked through, element by element.",
          R"(for (std::u16string const &element : upath(u"\\\\server\\share\\dir\\file")))", walk,
          R"(\\server, \, share, dir, file)"},
         {"Two are put together, and the extension is replaced.",
          R"(replace_extension(upath(u"C:\\data") / u"2026/report.tar.gz", u"zip"))", put_together,
          R"(C:\data\2026\report.tar.zip)"},
         {"For others than Windows, separators become slashes.",
          R"(make_generic_form(u"C:\\data\\2026"))",
          [] { return detail::make_generic_form(u"C:\\data\\2026"); }, "C:/data/2026"},
         {"A drive without a backslash is not absolute.", R"(is_absolute(u"C:draft.txt"))",
          [] { return detail::is_absolute(u"C:draft.txt"); }, "no"},
         {"From 260 units on, the string for the system gets the long prefix.",
          R"(make_access_form(L"C:\\" and 257 times L"a"))", add_prefix,
          R"(\\?\C:\a..., 264 units)"},
         {"What a relative link leads to stands beside the link.",
          R"(build_target_path_bridge(L"C:\\data\\link", L"2026\\may", relative))", target_of_link,
          R"(\\?\C:\data\2026\may)"},
         {"A pathname with .. in it can't stand behind a long prefix as it is.",
          R"(is_path_clean_bridge(L"C:\\data\\..\\x"))",
          [] {
              std::wstring const text = L"C:\\data\\..\\x";
              return windows::is_path_clean_bridge(text, text.size());
          },
          "no"}}};
}

} // namespace flfs::tour
