#include "platform/facts/facts.hpp"

#include "platform/finding.hpp"
#include "platform/opened.hpp"

#include <functional>
#include <map>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace contract::facts {

namespace {

using words = std::vector<std::string>;

/// One step, taken apart.
struct step
{
    words said;
    DWORD code = success;
    std::optional<std::string> answer;
};

words split(std::string const &text, char at)
{
    words parts;
    std::istringstream stream(text);
    for (std::string part; std::getline(stream, part, at);) {
        if (!part.empty())
            parts.push_back(part);
    }
    return parts;
}

step parse_step(std::string const &text)
{
    step parsed;
    words const all = split(text, ' ');
    for (std::size_t at = 0; at < all.size(); ++at) {
        if (all[at] == "->")
            parsed.answer = at + 1 < all.size() ? all[++at] : std::string();
        else if (all[at].size() > 1 && all[at][0] == '=' && std::isdigit(all[at][1]) != 0)
            parsed.code = static_cast<DWORD>(std::stoul(all[at].substr(1)));
        else
            parsed.said.push_back(all[at]);
    }
    return parsed;
}

/// `~` for a blank, `{a*255}` for a repeated unit.
std::string expanded(std::string const &word)
{
    std::string text;
    for (std::size_t at = 0; at < word.size(); ++at) {
        if (word[at] == '{') {
            std::size_t const end = word.find('}', at);
            text += std::string(std::stoul(word.substr(at + 3, end - at - 3)), word[at + 1]);
            at = end;
        } else {
            text += word[at] == '~' ? ' ' : word[at];
        }
    }
    return text;
}

std::wstring widened(std::string const &text)
{
    return std::wstring(text.begin(), text.end());
}

DWORD letters(std::string const &word, std::map<char, DWORD> const &meanings)
{
    DWORD value = 0;
    for (char const letter : word) {
        if (letter != '0')
            value |= meanings.at(letter);
    }
    return value;
}

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
    return letters(word,
                   {{'r', FILE_SHARE_READ}, {'w', FILE_SHARE_WRITE}, {'d', FILE_SHARE_DELETE}});
}

/// Flags and attributes of an opening.
DWORD flags_of(std::string const &word)
{
    return letters(word, {{'b', FILE_FLAG_BACKUP_SEMANTICS},
                          {'o', FILE_FLAG_OPEN_REPARSE_POINT},
                          {'c', FILE_FLAG_DELETE_ON_CLOSE},
                          {'H', FILE_ATTRIBUTE_HIDDEN},
                          {'S', FILE_ATTRIBUTE_SYSTEM},
                          {'R', FILE_ATTRIBUTE_READONLY},
                          {'T', FILE_ATTRIBUTE_TEMPORARY},
                          {'N', FILE_ATTRIBUTE_NORMAL}});
}

DWORD attributes_in(std::string const &word)
{
    return letters(word, {{'R', FILE_ATTRIBUTE_READONLY},
                          {'H', FILE_ATTRIBUTE_HIDDEN},
                          {'S', FILE_ATTRIBUTE_SYSTEM},
                          {'A', FILE_ATTRIBUTE_ARCHIVE},
                          {'T', FILE_ATTRIBUTE_TEMPORARY},
                          {'D', FILE_ATTRIBUTE_DIRECTORY},
                          {'L', FILE_ATTRIBUTE_REPARSE_POINT},
                          {'N', FILE_ATTRIBUTE_NORMAL}});
}

std::string attribute_letters(DWORD attributes)
{
    std::string text;
    for (char const letter : std::string("RHSATDLN")) {
        if ((attributes & attributes_in(std::string(1, letter))) != 0)
            text += letter;
    }
    return text;
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

/// What a script works on: a folder, and what it holds open.
class stage
{
public:
    stage() { space_.change_directory(space_.root()); }

    /// The outcome of a step, and what it answers if it answers anything.
    DWORD run(step const &next, std::string &answer)
    {
        static std::map<std::string, DWORD (stage::*)(words const &, std::string &)> const verbs = {
            {"file", &stage::make_file},
            {"dir", &stage::make_directory},
            {"hard", &stage::make_hard_link},
            {"symlink", &stage::make_symbolic_link},
            {"junction", &stage::make_junction},
            {"hold", &stage::hold},
            {"close", &stage::close},
            {"open", &stage::open_once},
            {"delete", &stage::delete_it},
            {"rmdir", &stage::remove_it},
            {"mkdir", &stage::create_it},
            {"move", &stage::move},
            {"copy", &stage::copy},
            {"link", &stage::link},
            {"attributes", &stage::attributes},
            {"setattr", &stage::set_them},
            {"cd", &stage::change_directory},
            {"find", &stage::find},
            {"full", &stage::full},
            {"content", &stage::content},
            {"names", &stage::names},
            {"links", &stage::links},
            {"final", &stage::final_path},
            {"mark", &stage::mark},
            {"unmark", &stage::unmark},
            {"mark-flags", &stage::mark_with_flags},
            {"pending", &stage::pending},
            {"read", &stage::read},
            {"write", &stage::write},
            {"space", &stage::disk_space},
            {"volume", &stage::volume},
            {"create-symlink", &stage::create_symbolic_link},
            {"same", &stage::same_file},
        };
        return (this->*verbs.at(next.said.at(0)))(next.said, answer);
    }

    workspace const &space() const { return space_; }

private:
    std::wstring text(std::string const &word)
    {
        std::string const plain = expanded(word);
        bool const has_prefix =
            plain.starts_with("?@") || plain.starts_with("?#") || plain.starts_with("?$");
        std::string const rest = has_prefix ? plain.substr(1) : plain;
        std::wstring const prefix = has_prefix ? LR"(\\?\)" : L"";
        if (rest == "_")
            return {};
        if (rest.starts_with('#')) {
            std::size_t length = 0; // of the number
            std::size_t const size = std::stoul(rest.substr(1), &length);
            return prefix + long_path(space_, size) + widened(rest.substr(1 + length));
        }
        if (rest.starts_with('^'))
            return wide(space_.root()).substr(2) + widened(rest.substr(1));
        if (rest.starts_with('@'))
            return prefix + wide(space_.root()) + widened(rest.substr(1));
        if (rest.starts_with('$')) {
            std::wstring const share = wide(space_.share_root());
            return (has_prefix ? LR"(\\?\UNC)" + share.substr(1) : share) + widened(rest.substr(1));
        }
        return widened(plain);
    }

    /// Where something is set up.
    std::u16string place(std::string const &word)
    {
        if (word == "_")
            return space_.root();
        std::string const bare = word.starts_with('?') ? word.substr(1) : word;
        bool const is_absolute = bare.starts_with('#') || bare.starts_with('$');
        std::u16string const plain = units(text(bare));
        return is_absolute ? plain : space_.path(plain);
    }

    DWORD make_file(words const &said, std::string &)
    {
        space_.make_file(place(said.at(1)), said.size() > 2 ? said.at(2) : std::string());
        return success;
    }

    DWORD make_directory(words const &said, std::string &)
    {
        space_.make_directory(place(said.at(1)));
        return success;
    }

    DWORD make_hard_link(words const &said, std::string &answer) { return link(said, answer); }

    DWORD make_symbolic_link(words const &said, std::string &)
    {
        using test_support::link_to;
        space_.make_symbolic_link(place(said.at(1)), units(text(said.at(2))),
                                  said.at(3) == "dir" ? link_to::directory : link_to::file);
        return success;
    }

    DWORD make_junction(words const &said, std::string &)
    {
        space_.make_junction(place(said.at(1)), units(text(said.at(2))));
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

    DWORD hold(words const &said, std::string &)
    {
        handle opened;
        DWORD const code = outcome_of([&] {
            opened = open(text(said.at(1)), manner_of(said));
            return static_cast<bool>(opened);
        });
        held_.push_back(std::move(opened));
        return code;
    }

    handle &held(words const &said) { return held_.at(std::stoul(said.at(1)) - 1); }

    DWORD close(words const &said, std::string &)
    {
        held(said).close();
        return success;
    }

    DWORD open_once(words const &said, std::string &)
    {
        return code_of_open(text(said.at(1)), manner_of(said));
    }

    DWORD delete_it(words const &said, std::string &) { return delete_file(text(said.at(1))); }
    DWORD remove_it(words const &said, std::string &) { return remove_directory(text(said.at(1))); }
    DWORD create_it(words const &said, std::string &) { return create_directory(text(said.at(1))); }

    DWORD move(words const &said, std::string &)
    {
        std::wstring const from = text(said.at(1));
        std::wstring const to = text(said.at(2));
        DWORD const flags = said.size() > 3 ? move_flags_of(said.at(3)) : 0;
        return outcome_of([&] { return ::MoveFileExW(from.c_str(), to.c_str(), flags) != FALSE; });
    }

    DWORD copy(words const &said, std::string &)
    {
        std::wstring const from = text(said.at(1));
        std::wstring const to = text(said.at(2));
        BOOL const keep = said.size() > 3 && said.at(3) == "new" ? TRUE : FALSE;
        return outcome_of([&] { return ::CopyFileW(from.c_str(), to.c_str(), keep) != FALSE; });
    }

    DWORD link(words const &said, std::string &)
    {
        std::wstring const name = text(said.at(1));
        std::wstring const existing = text(said.at(2));
        return outcome_of(
            [&] { return ::CreateHardLinkW(name.c_str(), existing.c_str(), nullptr) != FALSE; });
    }

    DWORD create_symbolic_link(words const &said, std::string &)
    {
        constexpr DWORD unprivileged = 2;
        std::wstring const name = text(said.at(1));
        std::wstring const target = text(said.at(2));
        DWORD const flags =
            (said.at(3) == "dir" ? SYMBOLIC_LINK_FLAG_DIRECTORY : 0U) | unprivileged;
        return outcome_of(
            [&] { return ::CreateSymbolicLinkW(name.c_str(), target.c_str(), flags) != FALSE; });
    }

    DWORD attributes(words const &said, std::string &answer)
    {
        answer = attribute_letters(attributes_of(text(said.at(1))));
        return get_file_attributes(text(said.at(1)));
    }

    DWORD set_them(words const &said, std::string &)
    {
        return set_attributes(text(said.at(1)), attributes_in(said.at(2)));
    }

    DWORD change_directory(words const &said, std::string &)
    {
        return set_current_directory(text(said.at(1)));
    }

    DWORD find(words const &said, std::string &answer)
    {
        std::wstring const pattern = text(said.at(1));
        std::wstring const names = found(pattern);
        answer = std::string(names.begin(), names.end());
        return search(pattern).code;
    }

    DWORD full(words const &said, std::string &answer)
    {
        std::wstring const name = text(said.at(1));
        std::wstring const result = full_path(name);
        std::wstring const folder = wide(space_.root());
        std::wstring const shown =
            result.starts_with(folder) ? L'@' + result.substr(folder.size()) : result;
        answer = std::string(shown.begin(), shown.end());
        return outcome_of(
            [&] { return ::GetFullPathNameW(name.c_str(), 0, nullptr, nullptr) != 0; });
    }

    DWORD content(words const &said, std::string &answer)
    {
        answer = content_of(text(said.at(1)));
        return success;
    }

    DWORD names(words const &said, std::string &answer)
    {
        for (std::u16string const &name : space_.entries(place(said.at(1))))
            answer += (answer.empty() ? "" : "|") + std::string(name.begin(), name.end());
        return success;
    }

    DWORD links(words const &said, std::string &answer)
    {
        answer = std::to_string(information_of(text(said.at(1))).nNumberOfLinks);
        return success;
    }

    DWORD same_file(words const &said, std::string &answer)
    {
        BY_HANDLE_FILE_INFORMATION const left = information_of(text(said.at(1)));
        BY_HANDLE_FILE_INFORMATION const right = information_of(text(said.at(2)));
        bool const is_same = left.nFileIndexLow == right.nFileIndexLow &&
                             left.nFileIndexHigh == right.nFileIndexHigh &&
                             left.dwVolumeSerialNumber == right.dwVolumeSerialNumber;
        answer = is_same ? "yes" : "no";
        return success;
    }

    DWORD final_path(words const &said, std::string &answer)
    {
        handle const opened = look_at(text(said.at(1)), 0);
        wchar_t buffer[1000] = {};
        DWORD const code = outcome_of([&] {
            return ::GetFinalPathNameByHandleW(opened.get(), buffer, 1000, FILE_NAME_NORMALIZED) !=
                   0;
        });
        std::wstring const result = buffer;
        std::wstring const folder = LR"(\\?\)" + wide(space_.root());
        std::wstring const shown =
            result.starts_with(folder) ? L"?@" + result.substr(folder.size()) : result;
        answer = std::string(shown.begin(), shown.end());
        return code;
    }

    template <typename Info>
    DWORD dispose(handle const &opened, FILE_INFO_BY_HANDLE_CLASS which, Info info)
    {
        return outcome_of([&] {
            return ::SetFileInformationByHandle(opened.get(), which, &info, sizeof info) != FALSE;
        });
    }

    DWORD mark(words const &said, std::string &)
    {
        return dispose(held(said), FileDispositionInfo, FILE_DISPOSITION_INFO{TRUE});
    }

    DWORD unmark(words const &said, std::string &)
    {
        return dispose(held(said), FileDispositionInfo, FILE_DISPOSITION_INFO{FALSE});
    }

    /// Delete, as Posix has it, when closed, ignoring that it is read-only.
    DWORD mark_with_flags(words const &said, std::string &)
    {
        DWORD const flags =
            letters(said.at(2), {{'d', FILE_DISPOSITION_FLAG_DELETE},
                                 {'p', FILE_DISPOSITION_FLAG_POSIX_SEMANTICS},
                                 {'c', FILE_DISPOSITION_FLAG_ON_CLOSE},
                                 {'i', FILE_DISPOSITION_FLAG_IGNORE_READONLY_ATTRIBUTE}});
        return dispose(held(said), disposition_with_flags, FILE_DISPOSITION_INFO_EX{flags});
    }

    /// Whether it waits for its deletion, and how many names it has.
    DWORD pending(words const &said, std::string &answer)
    {
        FILE_STANDARD_INFO info = {};
        DWORD const code = outcome_of([&] {
            return ::GetFileInformationByHandleEx(held(said).get(), FileStandardInfo, &info,
                                                  sizeof info) != FALSE;
        });
        answer =
            (info.DeletePending != FALSE ? "yes," : "no,") + std::to_string(info.NumberOfLinks);
        return code;
    }

    DWORD read(words const &said, std::string &answer)
    {
        char buffer[100] = {};
        DWORD got = 0;
        DWORD const code = outcome_of(
            [&] { return ::ReadFile(held(said).get(), buffer, 100, &got, nullptr) != FALSE; });
        answer.assign(buffer, got);
        return code;
    }

    DWORD write(words const &said, std::string &)
    {
        DWORD put = 0;
        DWORD const size = static_cast<DWORD>(said.at(2).size());
        return outcome_of([&] {
            return ::WriteFile(held(said).get(), said.at(2).data(), size, &put, nullptr) != FALSE;
        });
    }

    DWORD disk_space(words const &said, std::string &)
    {
        std::wstring const name = text(said.at(1));
        return outcome_of([&] {
            return ::GetDiskFreeSpaceExW(name.c_str(), nullptr, nullptr, nullptr) != FALSE;
        });
    }

    DWORD volume(words const &said, std::string &answer)
    {
        std::wstring const name = text(said.at(1));
        wchar_t buffer[300] = {};
        DWORD const code =
            outcome_of([&] { return ::GetVolumePathNameW(name.c_str(), buffer, 300) != FALSE; });
        std::wstring const result = buffer;
        answer = std::string(result.begin(), result.end());
        return code;
    }

    workspace space_;
    std::vector<handle> held_; // goes ahead of the folder
};

bool holds_here(fact const &row)
{
    switch (row.where) {
    case on::all:
        return true;
    case on::names_kept:
        return !frees_names_at_once();
    case on::names_freed:
        return frees_names_at_once();
    case on::devices_anywhere:
        return finds_devices_anywhere();
    case on::devices_alone:
        return !finds_devices_anywhere();
    case on::short_pathnames:
        return !takes_long_pathnames() && !runs_under_wine(); // which knows no limit
    case on::long_pathnames:
        return takes_long_pathnames();
    case on::no_host:
        return !runs_under_wine();
    }
    throw std::logic_error("a row holds somewhere");
}

/// Whether this system can set up what the row is about.
bool can_run(fact const &row, workspace const &space)
{
    std::string const script = row.script;
    auto const uses = [&](char const *word) { return script.find(word) != std::string::npos; };
    return (!uses("symlink ") || space.has_symbolic_links()) &&
           (!uses("junction ") || space.has_junctions()) && (!uses("$") || space.has_share());
}

/// What is wrong, or nothing.
std::string run(fact const &row, stage &on_stage)
{
    for (std::string const &text : split(row.script, ';')) {
        step const next = parse_step(text);
        std::string answer;
        DWORD const code = on_stage.run(next, answer);
        if (code != next.code)
            return text + " has the code " + std::to_string(code);
        if (next.answer && answer != expanded(*next.answer))
            return text + " answers " + answer;
    }
    return {};
}

/// Wine 8 is the one that rows tell about.
bool is_wine_8()
{
#ifdef _WIN32
    using call = char const *(*)();
    void *const found = reinterpret_cast<void *>(
        ::GetProcAddress(::GetModuleHandleW(L"ntdll.dll"), "wine_get_version"));
    return found != nullptr && std::string(reinterpret_cast<call>(found)()).starts_with("8.");
#else
    return false;
#endif
}

} // namespace

void check(std::span<fact const> rows)
{
    for (fact const &row : rows) {
        EXPECT_NE(*row.source, '\0') << row.script;
        stage on_stage;
        if (!holds_here(row) || !can_run(row, on_stage.space()))
            continue;
        std::string wrong;
        try {
            wrong = run(row, on_stage);
        } catch (std::exception const &failed) {
            wrong = failed.what();
        }
        if (row.wine == nullptr || !runs_under_wine()) {
            EXPECT_EQ(wrong, "") << row.script << "\n  " << row.source << ": " << row.says;
        } else if (is_wine_8()) {
            EXPECT_NE(wrong, "") << row.script
                                 << "\n  Wine 8 does as Windows, although it is said: " << row.wine;
        }
    }
}

} // namespace contract::facts
