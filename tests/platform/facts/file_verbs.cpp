// Verbs that make, ask and change files and directories by their names and handles.

#include "platform/facts/script.hpp"

#include "platform/finding.hpp"
#include "platform/opened.hpp"

namespace contract::facts {

namespace {

DWORD access_of(std::string const &word)
{
    return letters(word, {{'r', GENERIC_READ},
                          {'w', GENERIC_WRITE},
                          {'d', DELETE},
                          {'a', FILE_READ_ATTRIBUTES},
                          {'A', FILE_WRITE_ATTRIBUTES},
                          {'l', FILE_LIST_DIRECTORY},
                          {'p', FILE_APPEND_DATA},
                          {'x', FILE_EXECUTE}});
}

DWORD share_of(std::string const &word)
{
    return letters(word, {{'r', FILE_SHARE_READ},
                          {'w', FILE_SHARE_WRITE},
                          {'d', FILE_SHARE_DELETE},
                          {'u', 8}}); // which means nothing
}

/// Flags and attributes of an opening.
DWORD flags_of(std::string const &word)
{
    std::map<char, DWORD> meanings = meanings_of_attributes();
    meanings.insert({{'b', FILE_FLAG_BACKUP_SEMANTICS},
                     {'o', FILE_FLAG_OPEN_REPARSE_POINT},
                     {'c', FILE_FLAG_DELETE_ON_CLOSE}});
    return letters(word, meanings);
}

DWORD disposition_of(std::string const &word)
{
    static std::map<std::string, DWORD> const meanings = {{"new", CREATE_NEW},
                                                          {"always", CREATE_ALWAYS},
                                                          {"existing", OPEN_EXISTING},
                                                          {"open", OPEN_ALWAYS},
                                                          {"truncate", TRUNCATE_EXISTING}};
    return meanings.at(word);
}

DWORD move_flags_of(std::string const &word)
{
    return letters(word, {{'r', MOVEFILE_REPLACE_EXISTING}, {'c', MOVEFILE_COPY_ALLOWED}});
}

/// FileDispositionInfoEx, which some headers show only to the newest targets.
constexpr auto disposition_with_flags = static_cast<FILE_INFO_BY_HANDLE_CLASS>(21);

DWORD make_file(stage &on, words const &said, std::string &)
{
    on.space().make_file(on.place(said.at(1)), said.size() > 2 ? said.at(2) : std::string());
    return success;
}

DWORD make_directory(stage &on, words const &said, std::string &)
{
    on.space().make_directory(on.place(said.at(1)));
    return success;
}

DWORD make_symbolic_link(stage &on, words const &said, std::string &)
{
    using test_support::link_to;
    on.space().make_symbolic_link(on.place(said.at(1)), units(on.text(said.at(2))),
                                  said.at(3) == "dir" ? link_to::directory : link_to::file);
    return success;
}

DWORD make_junction(stage &on, words const &said, std::string &)
{
    on.space().make_junction(on.place(said.at(1)), units(on.text(said.at(2))));
    return success;
}

manner manner_of(words const &said)
{
    manner how;
    how.access = access_of(said.at(2));
    how.share = share_of(said.at(3));
    for (std::size_t at = 4; at < said.size(); ++at) {
        bool const is_word = said[at].size() > 2 && said[at] != "bco";
        if (is_word)
            how.disposition = disposition_of(said[at]);
        else
            how.flags |= flags_of(said[at]);
    }
    return how;
}

DWORD hold(stage &on, words const &said, std::string &)
{
    handle opened;
    DWORD const code = outcome_of([&] {
        opened = open(on.text(said.at(1)), manner_of(said));
        return static_cast<bool>(opened);
    });
    on.held().push_back(std::move(opened));
    return code;
}

handle &held(stage &on, words const &said)
{
    return on.held().at(std::stoul(said.at(1)) - 1);
}

DWORD close(stage &on, words const &said, std::string &)
{
    held(on, said).close();
    return success;
}

DWORD open_once(stage &on, words const &said, std::string &)
{
    return code_of_open(on.text(said.at(1)), manner_of(said));
}

DWORD delete_it(stage &on, words const &said, std::string &)
{
    return delete_file(on.text(said.at(1)));
}
DWORD remove_it(stage &on, words const &said, std::string &)
{
    return remove_directory(on.text(said.at(1)));
}
DWORD create_it(stage &on, words const &said, std::string &)
{
    return create_directory(on.text(said.at(1)));
}

DWORD move(stage &on, words const &said, std::string &)
{
    std::wstring const from = on.text(said.at(1));
    std::wstring const to = on.text(said.at(2));
    DWORD const flags = said.size() > 3 ? move_flags_of(said.at(3)) : 0;
    return outcome_of([&] { return ::MoveFileExW(from.c_str(), to.c_str(), flags) != FALSE; });
}

DWORD copy(stage &on, words const &said, std::string &)
{
    std::wstring const from = on.text(said.at(1));
    std::wstring const to = on.text(said.at(2));
    BOOL const keep = said.size() > 3 && said.at(3) == "new" ? TRUE : FALSE;
    return outcome_of([&] { return ::CopyFileW(from.c_str(), to.c_str(), keep) != FALSE; });
}

DWORD link(stage &on, words const &said, std::string &)
{
    std::wstring const name = on.text(said.at(1));
    std::wstring const existing = on.text(said.at(2));
    return outcome_of(
        [&] { return ::CreateHardLinkW(name.c_str(), existing.c_str(), nullptr) != FALSE; });
}

DWORD create_symbolic_link(stage &on, words const &said, std::string &)
{
    constexpr DWORD unprivileged = 2;
    std::wstring const name = on.text(said.at(1));
    std::wstring const target = on.text(said.at(2));
    static std::map<std::string, DWORD> const kinds = {
        {"file", 0}, {"dir", SYMBOLIC_LINK_FLAG_DIRECTORY}, {"unknown", 8}};
    DWORD const flags = kinds.at(said.at(3)) | unprivileged;
    return outcome_of(
        [&] { return ::CreateSymbolicLinkW(name.c_str(), target.c_str(), flags) != FALSE; });
}

DWORD attributes(stage &on, words const &said, std::string &answer)
{
    answer = attribute_letters(attributes_of(on.text(said.at(1))));
    return get_file_attributes(on.text(said.at(1)));
}

DWORD set_them(stage &on, words const &said, std::string &)
{
    return set_attributes(on.text(said.at(1)), attributes_in(said.at(2)));
}

DWORD change_directory(stage &on, words const &said, std::string &)
{
    return set_current_directory(on.text(said.at(1)));
}

DWORD find(stage &on, words const &said, std::string &answer)
{
    std::wstring const pattern = on.text(said.at(1));
    std::wstring const names = found(pattern);
    answer = narrowed(names);
    return search(pattern).code;
}

DWORD full(stage &on, words const &said, std::string &answer)
{
    std::wstring const name = on.text(said.at(1));
    answer = on.shown(full_path(name));
    return outcome_of([&] { return ::GetFullPathNameW(name.c_str(), 0, nullptr, nullptr) != 0; });
}

DWORD content(stage &on, words const &said, std::string &answer)
{
    answer = content_of(on.text(said.at(1)));
    return success;
}

DWORD names(stage &on, words const &said, std::string &answer)
{
    for (std::u16string const &name : on.space().entries(on.place(said.at(1))))
        answer += (answer.empty() ? "" : "|") + narrowed(wide(name));
    return success;
}

DWORD links(stage &on, words const &said, std::string &answer)
{
    answer = std::to_string(information_of(on.text(said.at(1))).nNumberOfLinks);
    return success;
}

DWORD same_file(stage &on, words const &said, std::string &answer)
{
    BY_HANDLE_FILE_INFORMATION const left = information_of(on.text(said.at(1)));
    BY_HANDLE_FILE_INFORMATION const right = information_of(on.text(said.at(2)));
    bool const is_same = left.nFileIndexLow == right.nFileIndexLow &&
                         left.nFileIndexHigh == right.nFileIndexHigh &&
                         left.dwVolumeSerialNumber == right.dwVolumeSerialNumber;
    answer = is_same ? "yes" : "no";
    return success;
}

/// Its last argument is what `GetFinalPathNameByHandleW` takes as flags.
DWORD final_path(stage &on, words const &said, std::string &answer)
{
    DWORD const flags = said.size() > 2 ? static_cast<DWORD>(std::stoul(said[2])) : 0;
    handle const opened = look_at(on.text(said.at(1)), 0);
    wchar_t buffer[1000] = {};
    DWORD const code = outcome_of(
        [&] { return ::GetFinalPathNameByHandleW(opened.get(), buffer, 1000, flags) != 0; });
    answer = on.shown(buffer);
    return code;
}

template <typename Info>
DWORD dispose(handle const &opened, FILE_INFO_BY_HANDLE_CLASS which, Info info)
{
    return outcome_of([&] {
        return ::SetFileInformationByHandle(opened.get(), which, &info, sizeof info) != FALSE;
    });
}

DWORD mark(stage &on, words const &said, std::string &)
{
    return dispose(held(on, said), FileDispositionInfo, FILE_DISPOSITION_INFO{TRUE});
}

DWORD unmark(stage &on, words const &said, std::string &)
{
    return dispose(held(on, said), FileDispositionInfo, FILE_DISPOSITION_INFO{FALSE});
}

/// Delete, as Posix has it, when closed, ignoring that it is read-only.
DWORD mark_with_flags(stage &on, words const &said, std::string &)
{
    DWORD const flags =
        letters(said.at(2), {{'d', FILE_DISPOSITION_FLAG_DELETE},
                             {'p', FILE_DISPOSITION_FLAG_POSIX_SEMANTICS},
                             {'c', FILE_DISPOSITION_FLAG_ON_CLOSE},
                             {'i', FILE_DISPOSITION_FLAG_IGNORE_READONLY_ATTRIBUTE}});
    return dispose(held(on, said), disposition_with_flags, FILE_DISPOSITION_INFO_EX{flags});
}

/// Whether it waits for its deletion, and how many names it has.
DWORD pending(stage &on, words const &said, std::string &answer)
{
    FILE_STANDARD_INFO info = {};
    DWORD const code = outcome_of([&] {
        return ::GetFileInformationByHandleEx(held(on, said).get(), FileStandardInfo, &info,
                                              sizeof info) != FALSE;
    });
    answer = (info.DeletePending != FALSE ? "yes," : "no,") + std::to_string(info.NumberOfLinks);
    return code;
}

DWORD read(stage &on, words const &said, std::string &answer)
{
    char buffer[100] = {};
    DWORD got = 0;
    DWORD const code = outcome_of(
        [&] { return ::ReadFile(held(on, said).get(), buffer, 100, &got, nullptr) != FALSE; });
    answer.assign(buffer, got);
    return code;
}

DWORD write(stage &on, words const &said, std::string &)
{
    DWORD put = 0;
    DWORD const size = static_cast<DWORD>(said.at(2).size());
    return outcome_of([&] {
        return ::WriteFile(held(on, said).get(), said.at(2).data(), size, &put, nullptr) != FALSE;
    });
}

DWORD disk_space(stage &on, words const &said, std::string &)
{
    std::wstring const name = on.text(said.at(1));
    return outcome_of(
        [&] { return ::GetDiskFreeSpaceExW(name.c_str(), nullptr, nullptr, nullptr) != FALSE; });
}

/// Its last argument is the room for the answer.
DWORD volume(stage &on, words const &said, std::string &answer)
{
    std::wstring const name = on.text(said.at(1));
    DWORD const room = said.size() > 2 ? static_cast<DWORD>(std::stoul(said[2])) : 300;
    wchar_t buffer[300] = {};
    DWORD const code =
        outcome_of([&] { return ::GetVolumePathNameW(name.c_str(), buffer, room) != FALSE; });
    answer = on.shown(buffer);
    return code;
}

} // namespace

verb_table const file_verbs = {
    {"file", &make_file},
    {"dir", &make_directory},
    {"hard", &link},
    {"symlink", &make_symbolic_link},
    {"junction", &make_junction},
    {"hold", &hold},
    {"close", &close},
    {"open", &open_once},
    {"delete", &delete_it},
    {"rmdir", &remove_it},
    {"mkdir", &create_it},
    {"move", &move},
    {"copy", &copy},
    {"link", &link},
    {"attributes", &attributes},
    {"setattr", &set_them},
    {"cd", &change_directory},
    {"find", &find},
    {"full", &full},
    {"content", &content},
    {"names", &names},
    {"links", &links},
    {"final", &final_path},
    {"mark", &mark},
    {"unmark", &unmark},
    {"mark-flags", &mark_with_flags},
    {"pending", &pending},
    {"read", &read},
    {"write", &write},
    {"space", &disk_space},
    {"volume", &volume},
    {"create-symlink", &create_symbolic_link},
    {"same", &same_file},
};

} // namespace contract::facts
