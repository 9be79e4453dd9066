#include "calls/attributes.hpp"
#include "calls/call.hpp"

#include "full_path.hpp"
#include "handles.hpp"
#include "legacy_device.hpp"
#include "opening.hpp"
#include "wildcard.hpp"

#include <algorithm>

namespace fl::simulation {

namespace {

/// Where to search, and for what.
struct pattern
{
    pathname directory;
    std::u16string name;
};

/// The pattern is the last name, and the system leaves it as it was typed: `dir\*.`
/// would lose its full stop to the treatment that every other pathname gets.
std::u16string last_name(std::u16string_view text)
{
    std::size_t const separator = text.find_last_of(is_literal(text) ? u"\\" : u"\\/");
    std::u16string_view const name =
        separator == std::u16string_view::npos ? text : text.substr(separator + 1);
    return std::u16string(name);
}

pattern parse_pattern(machine_state &machine, std::u16string_view text)
{
    pattern parsed;
    parsed.directory = parse_pathname(text, machine);
    pathname &path = parsed.directory;
    if (path.is_device())
        return parsed;
    // with a separator behind it, a directory's name says where to search and not for what
    if (path.ends_in_separator || path.elements.empty())
        return parsed;
    parsed.name = path.elements.back();
    path.elements.pop_back();
    std::u16string const typed = last_name(text);
    if (has_wildcard(typed) && typed.ends_with(u'.'))
        parsed.name = typed;
    return parsed;
}

/// Wherever the way to the names ends, it is the way that is missing.
std::shared_ptr<open_file> open_directory(machine_state &machine, pathname const &path)
{
    terms how;
    how.access = FILE_LIST_DIRECTORY;
    how.wanted = kind::directory;
    how.last = last_link::follow;
    try {
        return open_existing(machine, path, how);
    } catch (failure const &refusal) {
        if (refusal.code() == ERROR_FILE_NOT_FOUND)
            throw failure(ERROR_PATH_NOT_FOUND);
        throw;
    }
}

found_name found_of(std::u16string_view name, node const &target)
{
    found_name found;
    found.name = name;
    found.attributes = target.attributes();
    found.times = target.times;
    found.size = target.content.size();
    found.reparse_tag = target.reparse ? target.reparse->tag : 0;
    return found;
}

/// `.` and `..`, which every directory but a root has.
void add_dots(search &found, pattern const &wanted)
{
    open_file const &directory = *found.directory;
    std::shared_ptr<node> const parent = directory.name->parent.lock();
    if (!parent)
        return;
    if (matches(wanted.name, u"."))
        found.names.push_back(found_of(u".", directory.target()));
    if (matches(wanted.name, u".."))
        found.names.push_back(found_of(u"..", *parent));
}

void collect(search &found, pattern const &wanted)
{
    node const &directory = found.directory->target();
    if (!has_wildcard(wanted.name)) {
        if (auto const held = directory.find(wanted.name))
            found.names.push_back(found_of(held->name, *held->target));
        return;
    }
    add_dots(found, wanted);
    for (auto const &held : directory.entries()) {
        if (matches(wanted.name, held->name))
            found.names.push_back(found_of(held->name, *held->target));
    }
}

/// A name that is no pattern has to be one that a disk could have.
void check_pattern(pattern const &wanted)
{
    std::u16string plain = wanted.name;
    std::erase_if(plain, [](char16_t unit) { return has_wildcard({&unit, 1}); });
    if (!plain.empty() && plain.find_first_not_of(u'.') != std::u16string::npos &&
        !is_valid_name(plain))
        throw failure(ERROR_INVALID_NAME);
}

void hand_over_name(found_name const &found, WIN32_FIND_DATAW &data)
{
    data = {};
    fill_record(data, found.attributes, found.times, found.size);
    // anything where it is no reparse point: whoever reads it all the same sees a link
    bool const has_tag = (found.attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
    data.dwReserved0 = has_tag ? found.reparse_tag : DWORD{IO_REPARSE_TAG_SYMLINK};
    *std::copy(found.name.begin(), found.name.end(), data.cFileName) = L'\0';
}

/// A device is found by its name alone, as if it were a file.
std::shared_ptr<search> find_device(std::u16string_view text, machine_state const &machine)
{
    auto found = std::make_shared<search>();
    std::u16string_view const name = legacy_device(text, machine.runs);
    found->names.push_back({std::u16string(name), FILE_ATTRIBUTE_ARCHIVE, {}, 0, 0});
    return found;
}

std::shared_ptr<search> find_names(machine_state &machine, pattern const &wanted)
{
    auto found = std::make_shared<search>();
    found->directory = open_directory(machine, wanted.directory);
    check_pattern(wanted);
    collect(*found, wanted);
    if (found->names.empty())
        throw failure(ERROR_FILE_NOT_FOUND);
    return found;
}

HANDLE find_first(machine_state &machine, LPCWSTR name, WIN32_FIND_DATAW &data)
{
    std::u16string const text = from_wide(name);
    pattern const wanted = parse_pattern(machine, text);
    auto found =
        wanted.directory.is_device() ? find_device(text, machine) : find_names(machine, wanted);
    if (machine.keeps_journal)
        found->text = text;
    hand_over_name(found->names[found->next++], data);
    return machine.open->add(std::move(found));
}

void find_next(search &found, WIN32_FIND_DATAW &data)
{
    if (found.next == found.names.size())
        throw failure(ERROR_NO_MORE_FILES);
    hand_over_name(found.names[found.next++], data);
}

} // namespace

} // namespace fl::simulation

extern "C" HANDLE FindFirstFileExW(LPCWSTR pattern, FINDEX_INFO_LEVELS level, LPVOID data,
                                   FINDEX_SEARCH_OPS operation, LPVOID filter, DWORD flags)
{
    using namespace fl::simulation;
    call const made{.function = "FindFirstFileExW", .text = pattern, .flags = flags};
    return perform(made, INVALID_HANDLE_VALUE, [&](machine_state &machine) {
        bool const is_known = level == FindExInfoStandard || level == FindExInfoBasic;
        if (!is_known || operation != FindExSearchNameMatch || filter != nullptr)
            throw failure(ERROR_INVALID_PARAMETER);
        return find_first(machine, pattern, *static_cast<WIN32_FIND_DATAW *>(data));
    });
}

extern "C" HANDLE FindFirstFileW(LPCWSTR pattern, LPWIN32_FIND_DATAW data)
{
    using namespace fl::simulation;
    return perform("FindFirstFileW", pattern, INVALID_HANDLE_VALUE,
                   [&](machine_state &machine) { return find_first(machine, pattern, *data); });
}

extern "C" BOOL FindNextFileW(HANDLE search, LPWIN32_FIND_DATAW data)
{
    using namespace fl::simulation;
    call const made{.function = "FindNextFileW", .handle = search};
    return perform(made, BOOL{FALSE}, [&](machine_state &machine) {
        find_next(*machine.open->find(search), *data);
        return BOOL{TRUE};
    });
}

extern "C" BOOL FindClose(HANDLE search)
{
    using namespace fl::simulation;
    call const made{.function = "FindClose", .handle = search, .happens_anyway = true};
    return perform(made, BOOL{FALSE}, [&](machine_state &machine) {
        machine.open->close_search(search);
        return BOOL{TRUE};
    });
}
