#include "platform/facts/script.hpp"

#include <cctype>
#include <set>
#include <sstream>
#include <stdexcept>

namespace contract::facts {

namespace {

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

std::set<std::string> verbs_of(std::string const &script)
{
    std::set<std::string> verbs;
    for (std::string const &text : steps_of(script))
        verbs.insert(parse_step(text).said.at(0));
    return verbs;
}

/// Where there is no share for tests, an administrator gets at his own disk by the network.
/// Nothing if that is closed.
std::wstring loopback(workspace &space)
{
    std::wstring const root = wide(space.root());
    std::wstring const share = LR"(\\localhost\)" + root.substr(0, 1) + L'$';
    if (get_file_attributes(share + L'\\') != success)
        return {};
    space.make_directory(space.path(u"on a share"));
    return share + root.substr(2) + LR"(\on a share)";
}

/// The volume as the system itself names it, `\\?\Volume{...}`, or nothing.
std::wstring volume_name(workspace const &space)
{
    wchar_t buffer[1000] = {};
    handle const root = look_at(wide(space.root()).substr(0, 3), 0);
    bool const is_known =
        ::GetFinalPathNameByHandleW(root.get(), buffer, 1000, VOLUME_NAME_GUID) != 0;
    std::wstring const name = buffer;
    return is_known ? name.substr(0, name.find(L'}') + 1) : std::wstring();
}

} // namespace

words steps_of(std::string const &script)
{
    return split(script, ';');
}

step parse_step(std::string const &text)
{
    step parsed;
    words const all = split(text, ' ');
    for (std::size_t at = 0; at < all.size(); ++at) {
        if (all[at] == "->")
            parsed.answer = at + 1 < all.size() ? expanded(all[++at]) : std::string();
        else if (all[at].size() > 1 && all[at][0] == '=' && std::isdigit(all[at][1]) != 0)
            parsed.code = static_cast<DWORD>(std::stoul(all[at].substr(1), nullptr, 0));
        else
            parsed.said.push_back(all[at]);
    }
    return parsed;
}

std::string written_again(step const &told, DWORD code, std::string const &answer)
{
    std::ostringstream text;
    for (std::string const &word : told.said)
        text << (&word == &told.said.front() ? "" : " ") << word;
    constexpr DWORD first_of_com = 0x80000000; // which people know by its hexadecimal digits
    if (code >= first_of_com)
        text << " =0x" << std::hex << code;
    else if (code != success)
        text << " =" << code;
    if (told.answer && code == told.code) {
        text << " -> ";
        for (char const unit : answer)
            text << (unit == ' ' ? '~' : unit);
    }
    return text.str();
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

std::map<char, DWORD> const &meanings_of_attributes()
{
    static std::map<char, DWORD> const meanings = {
        {'R', FILE_ATTRIBUTE_READONLY},      {'H', FILE_ATTRIBUTE_HIDDEN},
        {'S', FILE_ATTRIBUTE_SYSTEM},        {'A', FILE_ATTRIBUTE_ARCHIVE},
        {'T', FILE_ATTRIBUTE_TEMPORARY},     {'D', FILE_ATTRIBUTE_DIRECTORY},
        {'L', FILE_ATTRIBUTE_REPARSE_POINT}, {'N', FILE_ATTRIBUTE_NORMAL}};
    return meanings;
}

DWORD attributes_in(std::string const &word)
{
    return letters(word, meanings_of_attributes());
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

std::string narrowed(std::wstring const &text)
{
    std::string narrow;
    for (wchar_t const unit : text)
        narrow += unit < 0x80 ? static_cast<char>(unit) : '?';
    return narrow;
}

stage::stage(verb_table more) : more_(std::move(more))
{
    space_.change_directory(space_.root());
}

stage::~stage()
{
    held_.clear();
    for (auto undo = undoing_.rbegin(); undo != undoing_.rend(); ++undo)
        (*undo)();
}

DWORD stage::run(step const &next, std::string &answer)
{
    for (verb_table const *table : {&file_verbs, &other_verbs, &std::as_const(more_)}) {
        auto const found = table->find(next.said.at(0));
        if (found != table->end())
            return found->second(*this, next.said, answer);
    }
    throw std::out_of_range("no verb: " + next.said.at(0));
}

std::string stage::obstacle(std::string const &script)
{
    auto const uses = [&](char const *word) { return script.find(word) != std::string::npos; };
    auto const says = [all = verbs_of(script)](char const *word) { return all.contains(word); };
    if ((says("symlink") || says("create-symlink")) && !space_.has_symbolic_links())
        return "no symbolic link can be made: Windows wants developer mode or an administrator for "
               "it";
    if ((says("junction") || says("reparse")) && !space_.has_junctions())
        return "no reparse data can be set";
    if ((uses("$") || uses(" %") || uses(" !")) && share().empty())
        return "there is no share: \\\\localhost\\C$ is closed to this user";
    if (uses("?V") && volume_name(space_).empty())
        return "the system doesn't tell the volume's own name";
    if (uses("Q:") && get_file_attributes(L"Q:\\") == success)
        return "there is a drive Q:, which must be missing";
    return {};
}

std::wstring const &stage::share()
{
    if (!share_)
        share_ = space_.has_share() ? wide(space_.share_root()) : loopback(space_);
    return *share_;
}

/// The first two names: `\\server\share`.
std::wstring stage::share_itself()
{
    std::wstring const &folder = share();
    return folder.substr(0, folder.find(L'\\', folder.find(L'\\', 2) + 1));
}

std::wstring stage::text(std::string const &word)
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
    if (rest.starts_with("?V"))
        return volume_name(space_) + widened(rest.substr(2));
    if (rest.starts_with('^'))
        return wide(space_.root()).substr(2) + widened(rest.substr(1));
    if (rest.starts_with('@'))
        return prefix + wide(space_.root()) + widened(rest.substr(1));
    if (rest.starts_with('$'))
        return (has_prefix ? LR"(\\?\UNC)" + share().substr(1) : share()) + widened(rest.substr(1));
    if (rest.starts_with('%'))
        return share_itself() + widened(rest.substr(1));
    if (rest.starts_with('!'))
        return share().substr(0, share().find(L'\\', 2)) + widened(rest.substr(1));
    return widened(plain);
}

std::u16string stage::place(std::string const &word)
{
    if (word == "_")
        return space_.root();
    std::string const bare = word.starts_with('?') ? word.substr(1) : word;
    bool const is_absolute = bare.starts_with('#') || bare.starts_with('$');
    std::u16string const plain = units(text(bare));
    return is_absolute ? plain : space_.path(plain);
}

std::string stage::shown(std::wstring const &text)
{
    struct notation
    {
        std::wstring folder;
        char const *sign;
    };
    std::wstring const root = wide(space_.root());
    std::vector<notation> notations = {{LR"(\\?\)" + root, "?@"}, {root, "@"}};
    if (share_ && !share_->empty()) {
        notations.push_back({LR"(\\?\UNC)" + share_->substr(1), "?$"});
        notations.push_back({*share_, "$"});
        notations.push_back({share_->substr(1), "^$"});
    }
    if (text.starts_with(LR"(\\?\Volume{)"))
        notations.push_back({volume_name(space_), "?V"});
    for (notation const &known : notations) {
        if (!known.folder.empty() && text.starts_with(known.folder))
            return known.sign + narrowed(text.substr(known.folder.size()));
    }
    return narrowed(text);
}

} // namespace contract::facts
