#include "flfs/tour/step.hpp"

#include <fl/filesystem/access_forms.hpp>
#include <fl/filesystem/attempt.hpp>
#include <fl/filesystem/directory.hpp>
#include <fl/filesystem/install_path.hpp>
#include <fl/filesystem/links.hpp>
#include <fl/filesystem/operations.hpp>
#include <fl/filesystem/pathname.hpp>
#include <fl/filesystem/queries.hpp>
#include <fl/filesystem/windows.hpp>

#include "flfs/link_reading.hpp"
#include "flfs/process_state.hpp"
#include "flfs/tour/disk.hpp"

#include <algorithm>

// The call that is told is the call that is made.
#define CALL(...) #__VA_ARGS__, [] { return __VA_ARGS__; }

namespace flfs::tour {

using namespace fl::filesystem; // as in the program that the tour tells
using namespace fl::filesystem::detail;
using std::filesystem::copy_options;

namespace {

constexpr unsigned int perms_add = file_status::perms_add;
constexpr unsigned int perms_remove = file_status::perms_remove;
constexpr unsigned int owner_write = file_status::owner_write;
constexpr unsigned int regular_file = file_status::regular_file;

std::string take_apart()
{
    std::u16string const text = u"C:\\data\\report.tar.gz";
    std::vector<std::string> const parts = {
        displayed(extract_root_path(text)), displayed(extract_parent_path(text)),
        displayed(extract_stem(text)), displayed(extract_extension(text))};
    return joined(parts, " | ");
}

std::string walk()
{
    std::vector<std::string> elements;
    for (std::u16string const &element : upath(u"\\\\server\\share\\dir\\file"))
        elements.push_back(displayed(element));
    return joined(elements, ", ");
}

std::u16string put_together()
{
    std::u16string text = (upath(u"C:\\data") / upath(u"2026/report.tar.gz")).native();
    return replace_extension(text, u"zip");
}

std::string add_prefix()
{
    std::wstring const form = make_access_form(L"C:\\" + std::wstring(257, L'a'));
    return displayed(from_filesystem(form.substr(0, 8))) + "..., " + std::to_string(form.size()) +
           " units";
}

std::u16string target_beside_link()
{
    return from_filesystem(windows::build_target_path_bridge(L"C:\\data\\link", L"2026\\may",
                                                             windows::link_type_symlink_relative));
}

bool is_clean()
{
    std::wstring const text = L"C:\\data\\..\\x";
    return windows::is_path_clean_bridge(text, text.size());
}

chapter pathnames()
{
    return {
        "Pathnames: text alone, no disk is looked at",
        {{"A text is brought to native form, on which all else works.",
          CALL(upath(u"C:/data//report.tar.gz").native()), R"(C:\data\report.tar.gz)"},
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
          CALL(make_generic_form(u"C:\\data\\2026")), "C:/data/2026"},
         {"A drive without a backslash is not absolute.", CALL(is_absolute(u"C:draft.txt")), "no"},
         {"From 260 units on, the string for the system gets the long prefix.",
          R"(make_access_form(L"C:\\" and 257 times L"a"))", add_prefix,
          R"(\\?\C:\a..., 264 units)"},
         {"What a relative link leads to stands beside the link.",
          R"(build_target_path_bridge(L"C:\\data\\link", L"2026\\may", relative))",
          target_beside_link, R"(\\?\C:\data\2026\may)"},
         {"A pathname with .. in it can't stand behind a long prefix as it is.",
          R"(is_path_clean_bridge(L"C:\\data\\..\\x"))", is_clean, "no"}}};
}

/// Relative, and longer than any Windows program of old could take.
std::u16string deep_directory()
{
    std::u16string pathname = u"long";
    for (std::size_t level = 0; level < 30; ++level) {
        pathname += u'\\';
        pathname.append(40, static_cast<char16_t>(u'a' + level % 26));
    }
    return pathname;
}

std::string length_of_deep_directory()
{
    return exists(deep_directory()) ? std::to_string(absolute(deep_directory()).size()) + " units"
                                    : "not there";
}

chapter directories()
{
    std::size_t const deep_length = get_current_path().size() + 1 + deep_directory().size();
    return {
        "Directories",
        {{"A directory is made.", CALL(create_directory(u"reports")), names_then_in(u"."),
          "reports"},
         {"To make it once more is a failure, which names it as the caller wrote it.",
          CALL(create_directory(u"reports")), "FileExistsError naming reports"},
         {"A directory is made with all that are missing above it.",
          CALL(create_directories(u"archive/2024/may")), names_then_in(u"archive\\2024"), "may"},
         {"So is one 30 levels down. The library adds the long prefix by itself.",
          R"(create_directories(u"long\\aaaaaa...\\bbbbbb...\\..."))",
          [] { create_directories(deep_directory()); }, length_of_deep_directory,
          std::to_string(deep_length) + " units"}}};
}

std::u16string const report = u"reports\\may.txt";

std::string facts_of_report()
{
    file_status const record = status(report);
    return std::string(type_of(record).description) + ", " + std::to_string(record.get_size()) +
           " bytes, " + permission_letters(record.get_perms());
}

std::string letters()
{
    return permission_letters(status(report).get_perms());
}

std::string ask_in_short()
{
    file_status_light const record = status_express_light(report);
    return std::string(file_status_light::is_regular(record) ? "file, " : "no file, ") +
           std::to_string(record.get_size()) + " bytes";
}

std::string ask_for_access()
{
    return std::string(yes_or_no(access(report, access_read))) + ", " +
           yes_or_no(access(report, access_write));
}

chapter files()
{
    return {
        "Files, looked at",
        {{"The tour writes a file, and asks for its record.", R"(status(u"reports\\may.txt"))",
          [] { write_file(report, "all well"); }, facts_of_report, "file, 8 bytes, rw-rw-rw-"},
         {"For many files there is a cheaper question.",
          R"(status_express_light(u"reports\\may.txt"))", ask_in_short, "file, 8 bytes"},
         {"A missing name is an answer and no failure.", CALL(status(u"reports\\june.txt")),
          "not found"},
         {"It isn't there.", CALL(exists(u"reports\\june.txt")), "no"},
         {"The file becomes read-only.",
          CALL(permissions(u"reports\\may.txt", perms_remove | owner_write)), letters, "r--r--r--"},
         {"It can be read, but not written.",
          R"(access(u"reports\\may.txt", access_read), ... access_write))", ask_for_access,
          "yes, no"},
         {"So its directory can't be removed with all that is in it.", CALL(remove_all(u"reports")),
          R"(AccessDenied naming <folder>\reports\may.txt)"},
         {"It becomes writable again.",
          CALL(permissions(u"reports\\may.txt", perms_add | owner_write)), letters, "rw-rw-rw-"},
         {"To ask about no name at all is a failure of the caller.", CALL(access(u"", 1)),
          "InvalidArgument"}}};
}

void copy_may_over_something()
{
    write_file(u"reports\\june.txt", "something else");
    copy_file(u"reports\\may.txt", u"reports\\june.txt", copy_options::overwrite_existing);
}

std::string content_of_june()
{
    return content_of(u"reports\\june.txt");
}

chapter copies()
{
    return {
        "Copying and moving",
        {{"A file is copied.", CALL(copy_file(u"reports\\may.txt", u"reports\\june.txt")),
          content_of_june, "all well"},
         {"Without leave, nothing is overwritten.",
          CALL(copy_file(u"reports\\may.txt", u"reports\\june.txt")),
          R"(FileExistsError naming reports\june.txt)"},
         {"With leave, it is.", R"(copy_file(..., copy_options::overwrite_existing))",
          copy_may_over_something, content_of_june, "all well"},
         {"A directory is copied with all that is in it.",
          CALL(copy(u"reports", u"archive\\2025", copy_options::recursive)),
          names_then_in(u"archive\\2025"), "june.txt, may.txt"},
         {"Or an empty one is made after it.", CALL(copy_directory(u"reports", u"archive\\2026")),
          names_then_in(u"archive\\2026"), "(nothing)"},
         {"A copy is not the same file,",
          CALL(equivalent(u"reports\\may.txt", u"reports\\june.txt")), "no"},
         {"but one more name for it is.",
          R"(copy(u"reports\\may.txt", u"again.txt", create_hard_links); equivalent(...))",
          [] { copy(u"reports\\may.txt", u"again.txt", copy_options::create_hard_links); },
          [] { return equivalent(u"reports\\may.txt", u"again.txt"); }, "yes"},
         {"A file gets another name.", CALL(rename(u"reports\\june.txt", u"reports\\july.txt")),
          names_then_in(u"reports"), "july.txt, may.txt"},
         {"A failure of two pathnames names the one that is to blame.",
          CALL(rename(u"reports\\may.txt", u"nowhere\\may.txt")),
          R"(PathNotFound naming nowhere\may.txt)"}}};
}

std::string list_reports()
{
    std::vector<std::string> lines;
    for (directory_entry const &entry : directory_iterator(u"reports"))
        lines.push_back(displayed(entry.filename()) + " of " + std::to_string(entry.file_size()));
    std::sort(lines.begin(), lines.end());
    return joined(lines, ", ");
}

int levels_below()
{
    int deepest = 0;
    recursive_directory_iterator const end;
    for (recursive_directory_iterator at(u"long"); at != end; ++at)
        deepest = std::max(deepest, at.depth() + 1);
    return deepest;
}

void take_over_time()
{
    last_write_time(u"archive", last_write_time(u"reports\\may.txt"));
}

bool has_same_time()
{
    return last_write_time(u"archive") == last_write_time(u"reports\\may.txt");
}

chapter everyday()
{
    return {
        "Everyday questions",
        {{"A directory is listed. Size and type come with the names.",
          R"(for (directory_entry const &entry : directory_iterator(u"reports")))", list_reports,
          "july.txt of 8, may.txt of 8"},
         {"So are all that are below one.",
          R"(for (...; at != end; ++at) at.depth(), from recursive_directory_iterator(u"long"))",
          levels_below, "30"},
         {"Is there anything in it?", CALL(is_empty(u"archive\\2026")), "yes"},
         {"A directory that is there needs not be made.",
          CALL(ensure_directories(u"archive\\2026")), "no"},
         {"A file gets one more name,",
          CALL(create_hard_link(u"reports\\july.txt", u"reports\\also.txt")),
          names_then_in(u"reports"), "also.txt, july.txt, may.txt"},
         {"which is as good as the first.", CALL(hard_link_count(u"reports\\july.txt")), "2"},
         {"What is cut by one name", CALL(resize_file(u"reports\\also.txt", 3)),
          [] { return content_of(u"reports\\july.txt"); }, "all"},
         {"is shorter by the other, too.", CALL(file_size(u"reports\\july.txt")), "3"},
         {"A directory takes over the time of a file, to the last digit.",
          R"(last_write_time(u"archive", last_write_time(u"reports\\may.txt")))", take_over_time,
          has_same_time, "yes"},
         {"Failures can be values, told in one line.",
          CALL(attempt([] { return file_size(u"nowhere"); }).error().describe()),
          "fl:filesystem:PathNotFound: the name, or a directory on the way to it, isn't there: "
          "\"nowhere\""}}};
}

auto whether_made(std::u16string const &link)
{
    return [link] { return is_there(link) ? "made" : "nothing is there"; };
}

std::u16string target_over_shortcut()
{
    std::wstring const link = to_filesystem(get_current_path() + u"\\link");
    return from_filesystem(windows::build_target_path_bridge(link, L"to 2024.lnk\\..\\2025",
                                                             windows::link_type_symlink_relative));
}

chapter shortcuts()
{
    return {
        "Shortcuts are links",
        {{"A shortcut is made to a directory.",
          CALL(create_shortcut(u"archive\\2024", u"to 2024.lnk")), whether_made(u"to 2024.lnk"),
          "made"},
         {"To Windows it is a file, but the library walks through it.",
          CALL(canonical(u"to 2024.lnk\\may")), R"(<folder>\archive\2024\may)"},
         {"What its file says.", CALL(read_shortcut(u"to 2024.lnk")), R"(<folder>\archive\2024)"},
         {"The links on a way are told one by one.",
          CALL(link_hops(u"to 2024.lnk\\may").at(0).leads_to.value()),
          R"(<folder>\archive\2024\may)"},
         {"The end of a pathname may be missing.",
          CALL(weakly_canonical(u"to 2024.lnk\\june\\..\\july")), R"(<folder>\archive\2024\july)"},
         {"A link that says .. leads up from where the directory ahead really is.",
          R"(build_target_path_bridge(L"<folder>\\link", L"to 2024.lnk\\..\\2025", relative))",
          target_over_shortcut, R"(\\?\<folder>\archive\2025)"},
         {"In what callers write the text decides, as everywhere in Windows.",
          CALL(absolute(u"to 2024.lnk\\..\\2025")), R"(<folder>\2025)"},
         {"The way from one directory to a file in another.",
          CALL(relative(u"reports\\may.txt", u"archive")), R"(..\reports\may.txt)"}}};
}

std::u16string const symbolic_link = u"reports\\link.txt";

std::string target_type()
{
    std::wstring const form = windows::make_native_access_form_bridge(symbolic_link);
    return type_of(windows::target_status_bridge(form)).description;
}

std::string kind_and_target()
{
    link const found = read_link(symbolic_link);
    return std::string(found.kind.description) + ": " + displayed(found.target);
}

step const making = {"A symbolic link is made to a file beside it.",
                     CALL(create_symlink(u"may.txt", u"reports\\link.txt", regular_file)),
                     whether_made(symbolic_link), "made"};
step const reading = {"What it says.", CALL(read_symlink(u"reports\\link.txt")), "may.txt"};
step const itself = {"What it is itself.", CALL(symlink_status(u"reports\\link.txt")),
                     "symbolic link"};
step const copying = {"A copy says the same.",
                      CALL(copy_symlink(u"reports\\link.txt", u"reports\\copy.txt")),
                      [] { return read_symlink(u"reports\\copy.txt"); }, "may.txt"};

/// Where there are no links the same calls come out otherwise.
step expecting(step one, std::string const &sentence, std::string const &expected)
{
    one.sentence = sentence;
    one.expected = expected;
    return one;
}

chapter symbolic_links()
{
    constexpr char const *title = "Symbolic links";
    std::string const outcome = outcome_of_symbolic_link(u"trial");
    if (outcome == making.expected)
        return {title,
                {making,
                 reading,
                 itself,
                 {"What it leads to.", R"(target_status_bridge(L"...\\reports\\link.txt"))",
                  target_type, "file"},
                 {"What kind of link its bytes make it, and where it leads.",
                  R"(get_target_path_bridge(link_type, data))", kind_and_target,
                  "symbolic link, relative: may.txt"},
                 copying}};
    return {
        title,
        {expecting(making,
                   outcome == "nothing is there"
                       ? "This system claims to make symbolic links, and makes none."
                       : "This system refuses symbolic links, which the library reports.",
                   outcome),
         expecting(reading, "So there is none to read,", R"(PathNotFound naming reports\link.txt)"),
         expecting(itself, "to ask about,", "not found"),
         expecting(copying, "or to copy.", "PathNotFound")}};
}

bool is_on_drive(std::u16string const &folder)
{
    return folder.size() > 1 && folder[1] == u':';
}

std::string change_directory()
{
    std::u16string const folder = get_current_path();
    change_current_path(folder + u"\\reports");
    std::string line = told(get_current_path(), folder);
    if (is_on_drive(folder)) {
        auto const variable = environment_variable(u'=' + folder.substr(0, 2));
        line += ", and the drive's variable " + (variable ? told(*variable, folder) : "isn't set");
    }
    change_current_path(folder);
    return line;
}

std::string space_here()
{
    space_info const room = space(upath(u"reports"));
    bool const is_sound = room.available <= room.free && room.free <= room.capacity;
    return std::to_string(room.capacity) + " bytes in all, " +
           (is_sound ? "and no more of them free" : "and more of them free");
}

char16_t lower(char16_t unit)
{
    return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit - u'A' + u'a') : unit;
}

bool ends_in(std::u16string const &text, std::u16string const &end)
{
    return text.size() >= end.size() &&
           std::equal(end.begin(), end.end(), text.end() - static_cast<std::ptrdiff_t>(end.size()),
                      [](char16_t one, char16_t other) { return lower(one) == lower(other); });
}

std::u16string const modules = u"\\bin\\win64";

std::u16string folder_of_program()
{
    std::u16string const program = program_pathname();
    return program.substr(0, program.find_last_of(u'\\'));
}

/// Where flfs.exe lies tells what the library must find, which lies beside it.
std::string kind_of_root()
{
    std::u16string const folder = folder_of_program();
    std::u16string const root = get_install_path();
    if (ends_in(folder, modules))
        return ends_in(folder, root + modules) ? "the folder above bin\\win64" : displayed(root);
    return absolute(root + u"\\..") == absolute(folder) ? "the module itself" : displayed(root);
}

void *address_in_library()
{
    return reinterpret_cast<void *>(&get_install_path);
}

chapter process()
{
    std::string const inside = R"(<folder>\reports)";
    std::string const variable = ", and the drive's variable " + inside;
    return {
        "Process, volume and installation",
        {{"The current directory changes, and the variable by which C:name goes.",
          R"(change_current_path(u"<folder>\\reports"), get_current_path())", change_directory,
          inside + (is_on_drive(get_current_path()) ? variable : "")},
         {"How much room there is.", R"(space(u"reports"))", space_here,
          std::to_string(capacity_here()) + " bytes in all, and no more of them free"},
         {"What isn't on a network drive keeps its own name, if that is tolerated.",
          R"(get_unc_path(u"C:/", true))",
          [] { return get_unc_path(std::u16string(u"C:/"), true); }, R"(C:\)"},
         {"The module that holds the library is a file.", "get_module_path_from_address(address)",
          [] { return is_there(get_module_path_from_address(address_in_library())); }, "yes"},
         {"The root of the installation, by where that lies.", "get_install_path()", kind_of_root,
          ends_in(folder_of_program(), modules) ? "the folder above bin\\win64"
                                                : "the module itself"},
         {"The same, found anew from an address.", "get_base_path(address) == get_install_path()",
          [] { return from_filesystem(get_base_path(address_in_library())) == get_install_path(); },
          "yes"}}};
}

std::string other_name_of_content()
{
    return std::string(is_there(u"again.txt") ? "there, " : "gone, ") +
           content_of(u"reports\\may.txt");
}

chapter removal()
{
    return {"Removing",
            {{"A file is removed, and the other name of its content stays.",
              CALL(remove_file(u"again.txt")), other_name_of_content, "gone, all well"},
             {"An empty directory is removed.", CALL(remove_directory(u"archive\\2026")),
              names_then_in(u"archive"), "2024, 2025"},
             {"One with something in it is not.", CALL(remove(u"reports")),
              "DirectoryNotEmpty naming reports"},
             {"A shortcut is removed, and never what it leads to.", CALL(remove(u"to 2024.lnk")),
              names_then_in(u"."), "archive, long, reports"},
             {"A directory goes with all 30 levels below it.", CALL(remove_all(u"long")),
              names_then_in(u"."), "archive, reports"},
             {"To remove what isn't there is a failure,", CALL(remove(u"long")),
              "PathNotFound naming long"},
             {"but the empty pathname is passed over.", CALL(remove_all(u"")), names_then_in(u"."),
              "archive, reports"}}};
}

} // namespace

std::vector<chapter (*)()> const &chapters()
{
    static std::vector<chapter (*)()> const all = {pathnames,      directories, files,
                                                   copies,         everyday,    shortcuts,
                                                   symbolic_links, process,     removal};
    return all;
}

} // namespace flfs::tour

#undef CALL
