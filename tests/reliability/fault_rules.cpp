#include "reliability/fault_rules.hpp"

#include "support/translation.hpp"

#include <algorithm>
#include <functional>

namespace reliability {

namespace {

using namespace test_support;
using test_support::failure;

using effect = std::function<void(occurrence const &, outcomes &)>;
using codes = std::vector<DWORD>;

bool is_one_of(DWORD code, codes const &some)
{
    return std::find(some.begin(), some.end(), code) != some.end();
}

// Codes that say that there is no such name, by who asks.
codes const missing_for_status = {2, 3, 123, 161, 4390};
codes const missing_for_use = {2, 3, 53, 123, 161};
codes const missing_for_standard = {2, 3, 53, 64, 123, 267};
codes const missing_for_entering = {2, 3, 267};
// Those that an `InvalidArgument` stands for.
codes const of_bad_arguments = {123, 161, 4390};

/// Whom a failure names.
using naming = text (*)(occurrence const &);

text given(occurrence const &at)
{
    return at.tried.given(at.on);
}

/// The string that the failed call was handed.
text handed(occurrence const &at)
{
    return at.call.text;
}

text nobody(occurrence const &)
{
    return {};
}

text second(occurrence const &at)
{
    return at.tried.second;
}

/// The one of the two that the call was made for.
text asked(occurrence const &at)
{
    return at.tried.second != nullptr && at.call.text == at.tried.second ? second(at) : given(at);
}

/// A pathname and the names below it, by which a call was made, as the caller's own.
text below_given(occurrence const &at)
{
    text made = at.call.text;
    for (text const prefix : {u"\\\\?\\UNC\\", u"\\\\?\\"}) {
        if (made.starts_with(prefix))
            made = (prefix.size() == 8 ? u"\\\\" : u"") + made.substr(prefix.size());
    }
    if (made.ends_with(u"\\*"))
        made.erase(made.size() - 2);
    text const base =
        made.starts_with(u"C:\\d\\o") && given(at) == u"C:\\d\\o..." ? u"C:\\d\\o" : given(at);
    return made.starts_with(base) ? given(at) + made.substr(base.size()) : made;
}

outcome thrown(failure told)
{
    return {{}, std::move(told), {}};
}

/// The code as it is.
effect tells(naming who)
{
    return [who](occurrence const &at, outcomes &all) {
        all.push_back(thrown(translated(at.code, who(at))));
    };
}

/// The same where a failure without a code is told as ERROR_GEN_FAILURE.
effect explains(naming who)
{
    return [who](occurrence const &at, outcomes &all) {
        all.push_back(thrown(translated(at.code == 0 ? 31 : at.code, who(at))));
    };
}

/// As if the call had succeeded.
void goes_on(occurrence const &at, outcomes &all)
{
    all.push_back(at.good);
}

effect answers(std::string answer)
{
    return [answer](occurrence const &, outcomes &all) { all.push_back({answer, {}, {}}); };
}

/// What the operation says of a name that isn't there.
void is_absent(occurrence const &at, outcomes &all)
{
    std::string const name = at.tried.name;
    if (name == "status" || name == "symlink_status" || name == "status_express_light" ||
        name == "directory_entry" || name == "target_status_bridge")
        all.push_back({"nothing", {}, {}});
    else if (name.starts_with("access ") && name != "access exists")
        all.push_back(thrown(not_found(u"")));
    else
        all.push_back({"no", {}, {}});
}

/// A link that can't be read is a name like others.
void is_plain(occurrence const &at, outcomes &all)
{
    std::string const name = at.tried.name;
    if (name == "is_directory")
        all.push_back({at.on.is_directory ? "yes" : "no", {}, {}});
    else
        all.push_back({at.on.is_directory ? "directory" : "file 0", {}, {}});
}

effect on(codes which, effect then, effect otherwise)
{
    return [=](occurrence const &at, outcomes &all) {
        (is_one_of(at.code, which) ? then : otherwise)(at, all);
    };
}

effect either(std::vector<effect> some)
{
    return [some](occurrence const &at, outcomes &all) {
        for (effect const &one : some)
            one(at, all);
    };
}

effect throws_code(naming who, unsigned int code)
{
    return [=](occurrence const &at, outcomes &all) {
        all.push_back(thrown(translated(code, who(at))));
    };
}

/// Which of the two pathnames a code is about, by what is known of the first.
failure blamed(unsigned int code, text const &first, text const &other, subject const &source)
{
    bool const is_missing = code == 2 || code == 3;
    if ((code == 5 && source.is_symlink) || (is_missing && !source.is_there))
        return translated(code, first);
    if (code == 5)
        return translated(code, source.is_readable ? other : first);
    for (unsigned int const of_target : {2U, 3U, 80U, 145U, 183U, 267U}) {
        if (code == of_target)
            return translated(code, other);
    }
    return translated(code, first, other);
}

void blames(occurrence const &at, outcomes &all)
{
    unsigned int const code = at.code == 0 ? 31 : at.code;
    all.push_back(thrown(blamed(code, given(at), at.tried.second, at.on)));
}

effect blames_for(unsigned int code)
{
    return [code](occurrence const &at, outcomes &all) {
        all.push_back(thrown(blamed(code, given(at), at.tried.second, at.on)));
    };
}

/// Whether a source that is missing can be read isn't answered.
void denied_to_missing(occurrence const &at, outcomes &all)
{
    if (!at.on.is_there)
        all.push_back(thrown(not_found(u"")));
}

/// A failure of one of the questions whom to name leaves the failure, with one of the two.
void names_either(occurrence const &at, outcomes &all)
{
    if (!at.good.told)
        return;
    outcome told = at.good;
    text const other = at.tried.second == nullptr ? text() : text(at.tried.second);
    for (text const &name : {given(at), other}) {
        told.told->path_name = name;
        all.push_back(told);
    }
    tells(given)(at, all);
    tells(handed)(at, all);
    explains(given)(at, all);
    all.push_back(thrown(not_found(u"")));
}

/// A failure to look at one of two pathnames. What seems to be missing counts so: as a source
/// it is named, and a target is made or found to be in the way.
void looks_at_two(occurrence const &at, outcomes &all)
{
    blames(at, all);
    names_either(at, all);
    if (at.on.name == std::string("missing") || at.on.name == std::string("missing directory"))
        denied_to_missing(at, all);
    if (at.code == 32)
        goes_on(at, all); // the directory is asked
    if (!is_one_of(at.code, missing_for_standard))
        return;
    goes_on(at, all);
    throws_code(given, ERROR_FILE_NOT_FOUND)(at, all);
    blames_for(ERROR_FILE_EXISTS)(at, all);
    blames_for(17)(at, all);
}

/// What a listing says: it names its directory, also of what the system finds too long.
void lists(occurrence const &at, outcomes &all)
{
    unsigned int const code = at.code == 0 ? 31 : at.code;
    failure told = translated(code, below_given(at));
    if (code == ERROR_FILENAME_EXCED_RANGE)
        told.path_name = below_given(at);
    all.push_back(thrown(told));
}

/// What can't be looked at on the walk behind a link that says `..` is a name like others.
void walked(occurrence const &at, outcomes &all)
{
    if (at.on.name == std::string("link to a file"))
        goes_on(at, all);
}

/// An HRESULT has the code in its lower half, or none.
DWORD code_of_result(DWORD result)
{
    constexpr DWORD none = 14077;
    if (result == 0)
        return none;
    if ((result & 0x80000000U) == 0)
        return result;
    return (result >> 16U) == 0x8007U ? result & 0xFFFFU : none;
}

effect tells_result(naming who)
{
    return [who](occurrence const &at, outcomes &all) {
        failure told = translated(code_of_result(at.code), who(at));
        std::string const name = at.tried.name;
        if (name.ends_with("canonical") && told.id == fl::filesystem::fsys_excp_path_not_found)
            told.path_name.clear(); // which is named by nobody there
        all.push_back(thrown(told));
    };
}

/// The pathname of the subject itself, as the walk writes it.
text of_link(occurrence const &at)
{
    return u"\\\\?\\" + text(at.on.p);
}

text pattern(occurrence const &at)
{
    return at.call.text + u"\\*";
}

/// The directory whose entries a search tells.
text searched(occurrence const &at)
{
    return at.call.text.substr(0, at.call.text.size() - 2);
}

effect throws_given(unsigned int code)
{
    return throws_code(given, code);
}

effect throws_second(unsigned int code)
{
    return throws_code(second, code);
}

effect throws_of_link(unsigned int code)
{
    return throws_code(of_link, code);
}

effect tells_missing(naming who)
{
    return throws_code(who, ERROR_FILE_NOT_FOUND);
}

/// Nothing is there, and nobody is named.
void nowhere(occurrence const &, outcomes &all)
{
    all.push_back(thrown(not_found(u"")));
}

/// The pathname is left as it is.
void unresolved(occurrence const &at, outcomes &all)
{
    all.push_back({printable(given(at)), {}, {}});
}

void is_a_directory(occurrence const &at, outcomes &all)
{
    all.push_back(thrown(file_is_directory(given(at))));
}

/// One entry of a listing isn't told: the trees here have one in each directory below.
void passes_over(occurrence const &at, outcomes &all)
{
    std::string const &whole = at.good.answer;
    for (std::size_t begin = 0; begin < whole.size();) {
        std::size_t const end = whole.find("; ", begin) + 2;
        all.push_back({whole.substr(0, begin) + whole.substr(end), {}, {}});
        begin = end;
    }
}

text parent_of(text const &path)
{
    return path.substr(0, path.rfind(u'\\'));
}

/// A name that was passed over holds up the directory that it is in.
void not_empty_above(occurrence const &at, outcomes &all)
{
    all.push_back(thrown(not_empty(parent_of(below_given(at)))));
}

void tells_not_empty(occurrence const &at, outcomes &all)
{
    all.push_back(thrown(not_empty(below_given(at))));
}

/// The rest is removed, and what is left is told.
void leaves(occurrence const &at, outcomes &all)
{
    text const left = below_given(at);
    for (text const &name : {left, parent_of(left)}) {
        for (int removed = 0; removed < 10; ++removed)
            all.push_back({std::to_string(removed) + " removed, left " + printable(name), {}, {}});
    }
}

text of_module(occurrence const &)
{
    return uR"(C:\program\bin\win64\program.exe)";
}

text of_temp(occurrence const &)
{
    return u"C:\\temp";
}

void throws_no_variable(occurrence const &, outcomes &all)
{
    all.push_back(thrown(about(fl::filesystem::fsys_excp_temp_env_not_specified,
                               "fl:filesystem:TempEnvNotSpecified", u"")));
}

constexpr char module_text[] = R"(C:\program\bin\win64\program.exe)";

/// What can't be looked at on the walk behind a link isn't found, or is told.
void walks_into(occurrence const &at, outcomes &all)
{
    if (at.on.name != std::string("link to a file"))
        return;
    tells(handed)(at, all);
}

/// A name on a network answers for itself.
void tells_on_network(occurrence const &at, outcomes &all)
{
    if (given(at).starts_with(u"\\\\"))
        tells(handed)(at, all);
}

/// One of the two isn't there, so they aren't the same.
void on_one_missing(occurrence const &at, outcomes &all)
{
    if (!at.on.is_there)
        all.push_back({"no", {}, {}});
}

/// A link without a text is told by the last error, whatever left it.
void no_text(occurrence const &at, outcomes &all)
{
    for (DWORD const code : {at.code, simulation::stale_last_error}) {
        failure told = system_error(code, handed(at));
        told.additional_path_names.clear();
        all.push_back(thrown(told));
    }
}

/// The drive is there, its root seems not to be, and a root is nothing that goes behind a name.
void no_head(occurrence const &, outcomes &all)
{
    all.push_back(thrown(invalid_argument("Path name can not start with \\")));
}

/// An entry of the directory that is copied, and not the directory itself.
void of_entry(occurrence const &at, outcomes &all)
{
    if (at.call.text != given(at) && at.call.text.starts_with(given(at)))
        goes_on(at, all);
}

void fails_as_standard(occurrence const &at, outcomes &all)
{
    all.push_back({{}, {}, "filesystem_error " + std::to_string(at.code == 0 ? 31 : at.code)});
}

struct rule
{
    std::vector<std::string> operations; ///< a `*` stands for anything
    std::vector<std::string> calls;
    effect comes;
};

/// Which outcome each call's failure comes to: the operations, the calls, what comes of it.
/// The first row that knows both counts.
std::vector<rule> fault_rules()
{
    std::vector<std::string> const interfaces = {"IUnknown::QueryInterface", "IPersistFile::*",
                                                 "IShellLinkW::*", "CoCreateInstance"};
    std::vector<std::string> const reading = {"CreateFileW", "DeviceIoControl"};
    effect const good = goes_on;
    effect const absent = is_absent;
    effect const plain = is_plain;
    effect const pair = blames;
    effect const good_or_failed = blames;
    return {
        // What is closed is closed. Searches of the first `remove_all` are the exception.
        {{"remove_all"}, {"FindClose"}, tells(nobody)},
        {{"*"}, {"CloseHandle", "CoUninitialize"}, good},
        {{"get_base_path"}, {"FindClose"}, answers(module_text)},
        {{"*"}, {"FindClose"}, good},

        {{"absolute"}, {"GetFullPathNameW"}, explains(given)},

        // Status: a name that can't be there is nothing, and an unreadable link is itself.
        {{"status", "symlink_status", "is_directory"},
         {"GetFullPathNameW"},
         on(missing_for_status, absent, explains(given))},
        {{"status", "symlink_status", "is_directory"},
         {"GetFileAttributesExW"},
         either({walked, on(missing_for_status, absent, tells(handed))})},
        {{"status_express_light"},
         {"GetFileAttributesExW"},
         either({walked, on({0}, either({answers("file 0"), tells(handed)}),
                            on(missing_for_status, absent, tells(handed)))})},
        {{"status", "symlink_status", "status_express_light", "is_directory"}, reading, plain},
        {{"directory_entry"}, {"GetFullPathNameW"}, explains(given)},
        {{"directory_entry"},
         {"GetFileAttributesExW"},
         either({good, on(missing_for_status, absent, tells(below_given))})},
        {{"directory_entry"}, reading, either({good, plain})},
        // the bridge goes on behind a failure without a code
        {{"target_status_bridge"},
         {"GetFileAttributesExW"},
         either({walked, walks_into, tells_on_network,
                 on({0}, either({answers("file 0"), tells(handed)}),
                    on(missing_for_status, absent, tells(handed)))})},
        {{"target_status_bridge"},
         reading,
         either({on({0}, absent, tells(handed)), tells(handed), plain})},

        // `exists` asks as the standard facility does, and swallows what is no answer.
        {{"exists"}, {"GetFullPathNameW"}, explains(given)},
        {{"exists"},
         {"GetFileAttributesExW"},
         on({32}, either({good, explains(given)}),
            on(missing_for_standard, absent, on({161, 4390, 1920}, absent, explains(given))))},
        {{"exists"},
         {"CreateFileW", "GetFileInformationByHandleEx"},
         on(missing_for_standard, absent, on({161, 4390, 1920}, absent, explains(given)))},

        // `access` answers what it was asked.
        {{"access exists"}, {"GetFullPathNameW"}, on({2, 3}, absent, explains(given))},
        {{"access exists"},
         {"GetFileAttributesExW"},
         either({walked, walks_into, on(missing_for_use, absent, tells(handed))})},
        {{"access read", "access write"},
         {"GetFullPathNameW"},
         on({5, 1920}, answers("no"), explains(given))},
        {{"access read", "access write"},
         {"GetFileAttributesExW"},
         either({walked, walks_into,
                 on({5, 1920}, answers("no"), on(missing_for_use, absent, tells(handed)))})},
        {{"access*"}, reading, either({answers("no"), good})},

        // Drives of which it isn't known whether they are mapped count as others.
        {{"get_unc_path"}, {"WNetGetUniversalNameW"}, either({good, answers("X:\\o")})},
        {{"*"}, {"WNetGetUniversalNameW"}, good},
        {{"get_unc_path", "make_native_access_form_bridge"}, {"GetFullPathNameW"}, explains(given)},

        // The walk: what can't be looked at on the way is a name like others, and a link that
        // can't be read isn't followed. What is missing in the end is named by nobody.
        {{"canonical"}, {"GetFullPathNameW"}, on({2, 3}, nowhere, explains(given))},
        {{"canonical"},
         {"GetFileAttributesExW"},
         either({good, on({0}, unresolved, good), on({2, 3}, nowhere, tells(handed)),
                 on(missing_for_use, nowhere, tells(handed))})},
        {{"canonical"}, reading, either({good, unresolved})},
        {{"canonical"}, {"CoInitialize"}, throws_of_link(14077)},
        {{"canonical"}, interfaces, tells_result(of_link)},
        {{"link_hops"}, {"GetFullPathNameW"}, explains(given)},
        {{"link_hops"}, {"*"}, either({good, answers("0 hops")})},
        {{"weakly_canonical"},
         {"GetFullPathNameW"},
         either({good, unresolved, no_head, explains(given), explains(handed), nowhere})},
        {{"weakly_canonical"},
         {"GetFileAttributesExW", "CreateFileW", "GetFileInformationByHandleEx"},
         either({good, unresolved, no_head, explains(given), tells(handed), nowhere})},
        {{"weakly_canonical"}, {"DeviceIoControl"}, either({good, unresolved})},
        {{"weakly_canonical"}, {"CoInitialize"}, throws_of_link(14077)},
        {{"weakly_canonical"}, interfaces, tells_result(of_link)},
        {{"relative"},
         {"GetFinalPathNameByHandleW"},
         on({3}, either({good, answers("")}),
            on(missing_for_standard, either({good, explains(given)}), explains(given)))},
        {{"relative"},
         {"GetFileAttributesExW"},
         on({32}, either({good, explains(given)}),
            on(missing_for_standard, either({good, explains(given)}), explains(given)))},
        {{"relative"},
         {"*"},
         on(missing_for_standard, either({good, explains(given)}), explains(given))},
        {{"equivalent"}, {"GetFullPathNameW"}, explains(asked)},
        {{"equivalent"}, {"CreateFileW"}, either({on_one_missing, pair})},
        {{"equivalent"}, {"GetFileInformationByHandleEx"}, on({0}, pair, good)},
        {{"equivalent"}, {"GetFileAttributesExW"}, either({good, tells_missing(given)})},

        // Questions to handles, about the pathname as it was given.
        {{"space"},
         {"GetDiskFreeSpaceExW"},
         on({267}, either({good, explains(given)}), explains(given))},
        {{"space"},
         {"GetFinalPathNameByHandleW"}, // the volume of a share has no other name
         on({3}, either({good, throws_given(53)}), explains(given))},
        {{"space", "read_symlink", "file_size", "hard_link_count", "last_write_time*"},
         {"*"},
         explains(given)},
        {{"is_empty"},
         {"GetFileAttributesExW"},
         either({walked, on(missing_for_status, either({good, is_a_directory}), tells(handed))})},
        {{"is_empty"},
         {"GetFullPathNameW"},
         on(missing_for_status, either({good, is_a_directory, explains(given)}), explains(given))},
        {{"is_empty"}, reading, either({good, is_a_directory, explains(given)})},
        // Listings name their directory, whatever the code. An empty root has no entry (2).
        {{"is_empty", "directory_iterator", "recursive_directory_iterator*"},
         {"GetFullPathNameW"},
         explains(given)},
        {{"is_empty"}, {"FindFirstFileExW"}, on({2}, either({answers("yes"), good}), lists)},
        {{"directory_iterator"},
         {"FindFirstFileExW"},
         on({2}, either({answers(""), lists}), lists)},
        {{"is_empty"},
         {"CreateFileW", "GetFileInformationByHandle"},
         either({lists, explains(given)})},
        {{"is_empty", "directory_iterator"}, {"*"}, lists},
        {{"recursive_directory_iterator*"},
         {"FindFirstFileExW"},
         on({2}, either({answers(""), passes_over, lists}),
            either({on(missing_for_entering, passes_over, lists), lists}))},
        {{"recursive_directory_iterator*"},
         {"*"},
         either({on({2}, answers(""), lists), on(missing_for_entering, passes_over, lists), lists,
                 good})},

        // Shortcuts: the code in the HRESULT, if there is one. Without COM there is no object.
        {{"read_shortcut"}, {"CoInitialize"}, throws_given(14077)},
        {{"read_shortcut"}, interfaces, tells_result(given)},
        {{"read_shortcut"}, {"GetFullPathNameW"}, explains(given)},
        {{"create_shortcut"}, {"CoInitialize"}, throws_second(14077)},
        {{"create_shortcut"}, {"IShellLinkW::SetPath"}, good},
        {{"create_shortcut"}, interfaces, tells_result(second)},
        {{"create_shortcut"}, {"GetFullPathNameW"}, explains(asked)},

        // Directories. A level that exists is asked whether it is one.
        {{"create_directory", "create_directories", "ensure_directories"},
         {"GetFullPathNameW"},
         explains(given)},
        {{"create_directory"}, {"CreateDirectoryW"}, explains(given)},
        {{"create_directories", "ensure_directories"},
         {"CreateDirectoryW"},
         either({good, explains(given), on(missing_for_standard, tells_missing(given), good)})},
        {{"create_directory", "create_directories", "ensure_directories"},
         {"GetFileAttributesW"},
         good},
        {{"create_directory like another"},
         {"CreateDirectoryW", "SetFileAttributesW"},
         explains(second)},
        {{"create_directory like another"}, {"*"}, explains(asked)},

        // Removing. Systems that know no deletion with flags say 87: then it is done without.
        {{"remove"},
         {"CreateFileW"},
         on(missing_for_standard, tells_missing(given), explains(given))},
        {{"remove"},
         {"SetFileInformationByHandle"},
         on({87}, good, on({5}, either({good, explains(given)}), explains(given)))},
        {{"remove", "remove_file", "remove_directory", "remove_all*"},
         {"GetFullPathNameW"},
         explains(given)},
        {{"remove_file"}, {"GetFileAttributesExW"}, throws_code(handed, ERROR_ACCESS_DENIED)},
        {{"remove_file", "remove_directory"}, {"*"}, tells(handed)},
        {{"remove_all"}, {"DeviceIoControl"}, good}, // then the handle shows that it is a link
        {{"remove_all"}, {"CreateFileW"}, either({good, tells(pattern)})},
        {{"remove_all"}, {"FindNextFileW"}, tells(searched)},
        {{"remove_all"}, {"*"}, tells(handed)},
        {{"remove_all that goes on"}, {"*"}, either({good, leaves})},
        {{"remove_all*"},
         {"SetFileInformationByHandle"},
         on({87}, good, on({5}, either({good, explains(below_given)}), explains(below_given)))},
        {{"remove_all*"},
         {"CreateFileW", "GetFinalPathNameByHandleW"},
         either({good, explains(below_given), not_empty_above, on({3}, tells_not_empty, good)})},
        {{"remove_all*"},
         {"FindFirstFileExW"},
         either({explains(below_given), on({2}, either({good, tells_not_empty}), good)})},
        {{"remove_all*"}, {"GetFileAttributesExW"}, tells(below_given)},
        {{"remove_all*"}, {"*"}, explains(below_given)},

        // Two pathnames: whom a failure names is found out by questions about the first.
        {{"rename*", "copy*", "create_hard_link"}, {"GetFullPathNameW"}, explains(asked)},
        {{"copy_symlink", "create_symlink"},
         {"CreateSymbolicLinkW"},
         on({87}, good, explains(nobody))},
        {{"copy_symlink"}, {"*"}, explains(nobody)},
        {{"create_symlink"},
         {"GetFullPathNameW", "GetFileAttributesExW"},
         either({walked, on(missing_for_status, good, either({explains(given), tells(handed)}))})},
        {{"create_symlink"}, reading, good},
        {{"copy*"}, {"CreateSymbolicLinkW"}, on({87}, good, pair)},
        {{"copy_directory"},
         {"GetFileAttributesExW", "CreateFileW", "GetFileInformationByHandleEx"},
         either({on({32}, good, good_or_failed), explains(given), on({5}, nowhere, pair)})},
        {{"copy", "copy as hard links", "copy into a directory"},
         {"GetFileAttributesExW"}, // a link in the directory that can't be followed is no directory
         either({looks_at_two, of_entry})},
        {{"copy*"}, {"GetFileAttributesExW"}, looks_at_two},
        {{"copy*"}, reading, either({good, looks_at_two})},
        {{"copy*"}, {"GetFileInformationByHandleEx"}, either({good, looks_at_two})},
        {{"copy*"}, {"GetFileAttributesW"}, blames_for(183)},
        {{"copy*"}, {"CreateDirectoryW"}, on({183}, either({good, pair}), pair)},
        {{"copy*"}, {"FindFirstFileExW"}, on({2}, answers("done"), pair)},
        {{"copy newer", "copy_file newer"},
         {"CopyFileW"},
         either(
             {on({80}, answers("done"), good_or_failed), on({5}, denied_to_missing, pair), pair})},
        {{"copy skipping"}, {"CopyFileW"}, on({80}, answers("done"), pair)},
        {{"rename*", "copy*", "create_hard_link"},
         {"CopyFileW", "MoveFileExW", "CreateHardLinkW"},
         either({on({5}, denied_to_missing, pair), pair})},
        {{"rename*", "create_hard_link"},
         {"GetFileAttributesExW", "CreateFileW", "GetFileInformationByHandleEx", "DeviceIoControl"},
         looks_at_two},
        {{"copy*"}, {"*"}, pair},
        {{"create_junction"}, {"GetFullPathNameW"}, explains(asked)},
        {{"create_junction"}, {"*"}, explains(second)},

        {{"permissions"}, {"GetFullPathNameW"}, explains(given)},
        {{"permissions"}, {"GetFileAttributesExW"}, either({walked, tells(handed)})},
        {{"permissions"}, reading, either({answers("done"), no_text})},
        {{"permissions"}, {"*"}, tells(handed)},
        {{"resize_file"}, // is it a directory? A volume says that it isn't there
         {"GetFileAttributesExW", "GetFileInformationByHandleEx"},
         either({throws_code(given, ERROR_ACCESS_DENIED), tells_missing(given)})},
        {{"resize_file"},
         {"CreateFileW"}, // also for that question
         either({explains(given), throws_code(given, ERROR_ACCESS_DENIED), tells_missing(given)})},
        {{"resize_file"}, {"*"}, explains(given)},

        // The program's own place. What can't be found out below its module leaves the module.
        {{"get_*"}, {"GetModuleFileNameW", "VirtualQuery"}, answers("")},
        {{"get_base_path"},
         {"*"},
         either(
             {good, answers(module_text), on(missing_for_use, nowhere, explains(of_module)),
              explains(of_module), tells(handed),
              on({3, 5}, answers(R"(C:\program)"), good)})}, // what can't be listed is lower case
        {{"temp_directory_path"}, {"GetEnvironmentVariableW"}, either({good, throws_no_variable})},
        {{"temp_directory_path"},
         {"GetFullPathNameW"}, // ahead of the question and in it
         either(
             {explains(of_temp), on(of_bad_arguments, tells_missing(of_temp), explains(of_temp))})},
        {{"temp_directory_path"},
         {"GetFileAttributesExW"},
         on(missing_for_status, tells_missing(of_temp), tells(handed))},

        // The process.
        {{"change_current_path"}, {"SetCurrentDirectoryW"}, explains(given)},
        {{"change_current_path"}, {"SetEnvironmentVariableW"}, tells(given)},
        {{"change_current_path"},
         {"GetFullPathNameW"},
         either({explains(given), fails_as_standard})},
        {{"get_current_path"}, {"GetCurrentDirectoryW"}, tells(nobody)},
    };
}

/// Where a failing call doesn't end an operation and what it then makes is another thing.
struct other_end
{
    char const *operation;
    std::vector<std::string> calls;
    codes which; ///< empty: any
    char const *why;
};

other_end const other_ends[] = {
    {"permissions", {"CreateFileW", "DeviceIoControl"}, {}, "an unreadable link is itself changed"},
    {"create_symlink",
     {"GetFullPathNameW", "GetFileAttributesExW", "CreateFileW", "DeviceIoControl"},
     {},
     "a target that isn't known for a directory gets a link to a file"},
    {"create_shortcut", {"IShellLinkW::SetPath"}, {}, "the shell may refuse a target"},
    {"copy*", {"FindFirstFileExW"}, {2}, "an empty root has no entry, not even dots"},
    {"copy*",
     {"GetFileAttributesExW", "CreateFileW", "GetFileInformationByHandleEx"},
     {2, 3, 53, 64, 123, 267},
     "a name that isn't there is made, and what it holds isn't looked at"},
};

effect const *find_rule(occurrence const &at)
{
    static std::vector<rule> const all = fault_rules();
    for (rule const &row : all) {
        if (matches(at.tried.name, row.operations) && matches(at.call.function, row.calls))
            return &row.comes;
    }
    return nullptr;
}

} // namespace

bool matches(std::string const &name, std::vector<std::string> const &patterns)
{
    return std::any_of(patterns.begin(), patterns.end(), [&](std::string const &pattern) {
        std::size_t const star = pattern.find('*');
        if (star == pattern.npos)
            return name == pattern;
        return name.starts_with(pattern.substr(0, star)) &&
               name.ends_with(pattern.substr(star + 1));
    });
}

outcomes allowed(occurrence const &at)
{
    outcomes all;
    if (effect const *const comes = find_rule(at))
        (*comes)(at, all);
    return all;
}

/// Of two failures one is told, as its rule says; or one that comes of the other: whom to name
/// was asked in vain, or two names are left.
outcomes allowed_behind(occurrence const &first, occurrence const &second_failure)
{
    outcomes all = allowed(first);
    for (outcome const &one : allowed(second_failure))
        all.push_back(one);
    all.push_back(thrown(not_found(u"")));
    text const other = first.tried.second == nullptr ? text() : second(first);
    for (text const &name : {given(first), handed(first), handed(second_failure), other})
        all.push_back(thrown(translated(first.code, name)));
    names_either(first, all);
    for (text const &one : {below_given(first), parent_of(below_given(first))}) {
        text const next = below_given(second_failure);
        for (text const &then : {next, parent_of(next)}) {
            for (int removed = 0; removed < 10; ++removed)
                all.push_back({std::to_string(removed) + " removed, left " + printable(one) +
                                   ", left " + printable(then),
                               {},
                               {}});
        }
    }
    return all;
}

bool ends_otherwise(occurrence const &at)
{
    return std::any_of(std::begin(other_ends), std::end(other_ends), [&](other_end const &row) {
        return matches(at.tried.name, {row.operation}) && matches(at.call.function, row.calls) &&
               (row.which.empty() || is_one_of(at.code, row.which));
    });
}

} // namespace reliability
