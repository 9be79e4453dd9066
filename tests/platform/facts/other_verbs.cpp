// Verbs of what few scripts ask for: information by its class, reparse data, the process and its
// modules, names on the network, shortcuts.

#include "platform/facts/script.hpp"

#include "platform/finding.hpp"
#include "platform/links.hpp"
#include "platform/shell_link.hpp"

#include <winnetwk.h>

namespace contract::facts {

namespace {

DWORD number(std::string const &word)
{
    return static_cast<DWORD>(std::stoul(word, nullptr, 0));
}

/// `data NAME`: the attributes that GetFileAttributesExW knows.
DWORD data(stage &on, words const &said, std::string &answer)
{
    std::wstring const name = on.text(said.at(1));
    WIN32_FILE_ATTRIBUTE_DATA known = {};
    DWORD const code = outcome_of([&] {
        return ::GetFileAttributesExW(name.c_str(), GetFileExInfoStandard, &known) != FALSE;
    });
    answer = attribute_letters(known.dwFileAttributes);
    return code;
}

/// `get HANDLE CLASS SIZE` and `put HANDLE CLASS SIZE`: information with so much room, all zero.
template <typename Call>
DWORD inform(Call call, stage &on, words const &said)
{
    alignas(8) char room[1000] = {};
    HANDLE const held = on.held().at(number(said.at(1)) - 1).get();
    auto const which = static_cast<FILE_INFO_BY_HANDLE_CLASS>(number(said.at(2)));
    return outcome_of([&] { return call(held, which, room, number(said.at(3))) != FALSE; });
}

DWORD get(stage &on, words const &said, std::string &)
{
    return inform(&::GetFileInformationByHandleEx, on, said);
}

DWORD put(stage &on, words const &said, std::string &)
{
    return inform(&::SetFileInformationByHandle, on, said);
}

/// `put-attributes HANDLE ATTRIBUTES`
DWORD put_attributes(stage &on, words const &said, std::string &)
{
    FILE_BASIC_INFO info = {}; // a time of zero stays as it is
    info.FileAttributes = attributes_in(said.at(2));
    return outcome_of([&] {
        return ::SetFileInformationByHandle(on.held().at(number(said.at(1)) - 1).get(),
                                            FileBasicInfo, &info, sizeof info) != FALSE;
    });
}

/// `dots PATTERN`: whether a listing begins with `.` or `..`.
DWORD dots(stage &on, words const &said, std::string &answer)
{
    std::wstring const names = L'|' + found(on.text(said.at(1))) + L'|';
    bool const has = names.starts_with(L"|.|") || names.find(L"|..|") != std::wstring::npos;
    answer = has ? "yes" : "no";
    return search(on.text(said.at(1))).code;
}

/// `is-link NAME`
DWORD is_link(stage &on, words const &said, std::string &answer)
{
    DWORD const attributes = attributes_of(on.text(said.at(1)));
    bool const there = attributes != INVALID_FILE_ATTRIBUTES;
    answer = there && (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 ? "yes" : "no";
    return get_file_attributes(on.text(said.at(1)));
}

bytes mount_point_to(std::wstring const &substitute)
{
    bytes body;
    append(body, 0, 2);
    append(body, static_cast<unsigned long>(2 * substitute.size()), 2);
    append(body, static_cast<unsigned long>(2 * substitute.size() + 2), 2);
    append(body, 0, 2);
    append_text(body, substitute + L'\0' + L'\0');
    return test_support::link_data::with_header(mount_point_tag, body);
}

/// Data of the kind that a word names: a junction to the folder, one to no name of an object, one
/// that is cut; of a tag that nobody knows, of the same by another maker, and of the tags 0 and 1.
bytes reparse_data_of(stage &on, std::string const &kind)
{
    bytes const junction = junction_data(wide(on.space().root()));
    if (kind == "junction")
        return junction;
    if (kind == "no-object")
        return mount_point_to(wide(on.space().root()));
    if (kind == "cut")
        return bytes(junction.begin(), junction.end() - 1);
    if (kind == "strange")
        return strange_data(strange_tag, 7, {1, 2, 3});
    if (kind == "other-maker")
        return strange_data(strange_tag, 8, {1, 2, 3});
    if (kind == "tag-0" || kind == "tag-1")
        return strange_data(kind == "tag-0" ? 0 : 1, 7, {1});
    throw std::out_of_range("no kind of reparse data: " + kind);
}

/// `reparse NAME KIND`
DWORD reparse(stage &on, words const &said, std::string &)
{
    return set_reparse_data(on.text(said.at(1)), reparse_data_of(on, said.at(2)));
}

/// `control NAME CODE`, with nothing to say and no room.
DWORD control(stage &on, words const &said, std::string &)
{
    return reparse_point(on.text(said.at(1))).control(number(said.at(2)), {});
}

/// `query SIZE`: VirtualQuery with so much room.
DWORD query(stage &, words const &said, std::string &)
{
    MEMORY_BASIC_INFORMATION info[2] = {};
    return outcome_of([&] { return ::VirtualQuery(info, info, number(said.at(1))) != 0; });
}

/// `module BASE ROOM`: the file of the module there, 0 for the program; answers the last error
/// that a success leaves.
DWORD module(stage &, words const &said, std::string &answer)
{
    wchar_t buffer[1000] = {};
    auto const base = reinterpret_cast<HMODULE>(static_cast<std::uintptr_t>(number(said.at(1))));
    DWORD const room = number(said.at(2));
    ::SetLastError(untouched);
    DWORD const length = ::GetModuleFileNameW(base, buffer, room);
    DWORD const left = ::GetLastError();
    bool const is_whole = length != 0 && length < room;
    answer = is_whole ? std::to_string(left) : std::string();
    return is_whole ? success : left;
}

/// `universal NAME LEVEL`
DWORD universal(stage &on, words const &said, std::string &)
{
    alignas(8) char buffer[2000] = {};
    DWORD size = sizeof buffer;
    return ::WNetGetUniversalNameW(on.text(said.at(1)).c_str(), number(said.at(2)), buffer, &size);
}

/// `link-to TARGET [ROOM]`: a fresh shell link object is given a target, and answers it. The code
/// is the first of the two calls' that isn't S_OK.
DWORD link_to(stage &on, words const &said, std::string &answer)
{
    apartment const here;
    shortcut made;
    DWORD const code = said.at(1) == "none" ? yes : made.set_path(on.text(said[1]));
    int const room = said.size() > 2 ? static_cast<int>(number(said[2])) : MAX_PATH;
    std::wstring const path = made.path(room);
    answer = path.starts_with(L'#') ? "(unwritten)" : on.shown(path);
    return code == yes ? made.path_code() : code;
}

/// `resolve TARGET`, `load FILE`, `save FILE`, of a fresh shell link object.
DWORD resolve(stage &on, words const &said, std::string &)
{
    apartment const here;
    shortcut made;
    made.set_path(on.text(said.at(1)));
    return made.resolve();
}

DWORD load(stage &on, words const &said, std::string &)
{
    apartment const here;
    return shortcut().load(on.text(said.at(1)));
}

DWORD save(stage &on, words const &said, std::string &)
{
    apartment const here;
    return shortcut().save(on.text(said.at(1)));
}

} // namespace

verb_table const other_verbs = {
    {"data", &data},
    {"get", &get},
    {"put", &put},
    {"put-attributes", &put_attributes},
    {"dots", &dots},
    {"is-link", &is_link},
    {"reparse", &reparse},
    {"control", &control},
    {"query", &query},
    {"module", &module},
    {"universal", &universal},
    {"link-to", &link_to},
    {"resolve", &resolve},
    {"load", &load},
    {"save", &save},
};

} // namespace contract::facts
