#include "full_path.hpp"

#include "failure.hpp"
#include "legacy_device.hpp"
#include "lookup.hpp"
#include "names.hpp"

#include <vector>

namespace fl::simulation {

namespace {

/// The longest text that is treated, and the longest result, in units.
constexpr std::size_t longest_text = 32765;

/// A directory to start from: what `..` never removes, and what it does.
struct starting_point
{
    std::u16string root; // ends in a backslash, except where it is a share
    std::vector<std::u16string> elements;
};

std::size_t find_separator(std::u16string_view text, std::size_t from)
{
    while (from < text.size() && !is_separator(text[from]))
        ++from;
    return from;
}

std::u16string with_backslashes(std::u16string_view text)
{
    std::u16string result(text);
    for (char16_t &unit : result) {
        if (unit == u'/')
            unit = u'\\';
    }
    return result;
}

/// How long the root is at the beginning of an absolute text.
std::size_t root_length(std::u16string_view text)
{
    switch (form_of(text)) {
    case path_form::device:
        return 4;
    case path_form::unc: {
        // Both names may be empty: only the first two separators count as one.
        std::size_t const server_end = find_separator(text, 2);
        return server_end == text.size() ? server_end : find_separator(text, server_end + 1);
    }
    case path_form::drive_absolute:
        return 3;
    default:
        return 0;
    }
}

/// Full stops at the end of a name that others follow: one is dropped, but of
/// several all stay.
std::u16string_view trim_middle(std::u16string_view name)
{
    if (name.ends_with(u'.') && !name.ends_with(u".."))
        name.remove_suffix(1);
    return name;
}

std::u16string_view trim_last(std::u16string_view name)
{
    while (name.ends_with(u'.') || name.ends_with(u' '))
        name.remove_suffix(1);
    return name;
}

void append(std::vector<std::u16string> &elements, std::u16string_view name)
{
    if (name == u".")
        return;
    if (name != u"..")
        elements.emplace_back(name);
    else if (!elements.empty())
        elements.pop_back();
}

/// Trims what `.` or `..` has left at the end: `a..\.` is `a`. Returns whether nothing
/// is left of it.
bool trim_end(std::vector<std::u16string> &elements)
{
    if (elements.empty())
        return false;
    std::u16string const kept(trim_last(elements.back()));
    elements.pop_back();
    if (!kept.empty())
        elements.push_back(kept);
    return kept.empty();
}

/// Adds the elements of `rest` and returns whether the result ends in a separator.
bool walk(std::vector<std::u16string> &elements, std::u16string_view rest)
{
    bool ends_open = false;
    for (std::size_t begin = 0; begin < rest.size();) {
        std::size_t const end = find_separator(rest, begin);
        std::u16string_view name = rest.substr(begin, end - begin);
        bool const is_last = end == rest.size();
        bool const is_step = name == u"." || name == u"..";
        if (!is_step)
            name = is_last ? trim_last(name) : trim_middle(name);
        ends_open = !is_last || name.empty(); // nothing left of the last one: `a\ .`
        if (!name.empty())
            append(elements, name);
        begin = end + 1;
    }
    if (!ends_open)
        ends_open = trim_end(elements);
    return ends_open;
}

std::u16string joined(starting_point const &start, bool ends_in_separator)
{
    std::u16string text = start.root;
    for (std::u16string const &element : start.elements) {
        if (!text.ends_with(u'\\'))
            text += u'\\';
        text += element;
    }
    if (ends_in_separator && !text.ends_with(u'\\'))
        text += u'\\';
    return text;
}

/// Splits a text that is full already.
starting_point start_at(std::u16string_view full)
{
    std::size_t const root = root_length(full);
    starting_point start{std::u16string(full.substr(0, root)), {}};
    walk(start.elements, full.substr(root));
    return start;
}

// The entry of a drive is a full pathname, which asks for no other: once round, and no further.
// NOLINTBEGIN(misc-no-recursion)

/// Whether `=X:` is taken as it is: a full pathname, as the system itself would
/// write it, of a directory that is there. It may be on another drive.
bool is_usable_entry(std::u16string const &entry, machine_state &machine)
{
    return form_of(entry) == path_form::drive_absolute && full_path(entry, machine) == entry &&
           is_directory_at(entry, machine);
}

starting_point start_on_drive(char16_t letter, machine_state &machine)
{
    std::u16string const &current = machine.running.current_directory;
    if (is_drive_at(current, 0) && upcase(current[0]) == upcase(letter))
        return start_at(current);
    std::u16string const drive = {letter, u':'};
    std::u16string const variable = u'=' + drive;
    auto const entry = machine.running.variables.find(variable);
    if (entry && is_usable_entry(*entry, machine))
        return start_at(*entry);
    machine.running.variables.set(variable, drive + u'\\');
    return {drive + u'\\', {}};
}

/// A full path in the making: where it starts, and how much of the text that is.
struct beginning
{
    starting_point start;
    std::size_t length = 0;
};

/// \\server\share. Where the text ends within it, its end is trimmed as that of any other
/// name. So `..` goes, too, and leaves the separator ahead of it.
std::u16string network_root(std::u16string_view text, std::size_t length)
{
    std::u16string_view const root = text.substr(0, length);
    return with_backslashes(length == text.size() ? trim_last(root) : root);
}

beginning begin_of(std::u16string_view text, machine_state &machine)
{
    std::size_t const root = root_length(text);
    switch (form_of(text)) {
    case path_form::unc:
        return {{network_root(text, root), {}}, root};
    case path_form::drive_relative:
        return {start_on_drive(text[0], machine), 2};
    case path_form::rooted: {
        starting_point start = start_at(machine.running.current_directory);
        start.elements.clear();
        return {start, 0};
    }
    case path_form::relative:
        return {start_at(machine.running.current_directory), 0};
    default:
        return {{with_backslashes(text.substr(0, root)), {}}, root};
    }
}

} // namespace

path_form form_of(std::u16string_view text)
{
    auto const is_separator_at = [text](std::size_t index) {
        return text.size() > index && is_separator(text[index]);
    };
    if (is_separator_at(0)) {
        if (!is_separator_at(1))
            return path_form::rooted;
        bool const has_mark = text.size() > 3 && (text[2] == u'?' || text[2] == u'.');
        return has_mark && is_separator_at(3) ? path_form::device : path_form::unc;
    }
    // Whatever stands ahead of the colon. That is how `=::` gets into environments.
    if (text.size() < 2 || text[1] != u':')
        return path_form::relative;
    return is_separator_at(2) ? path_form::drive_absolute : path_form::drive_relative;
}

bool is_literal(std::u16string_view text)
{
    // the prefix of the object manager, \??\, has the same effect
    return text.starts_with(u"\\\\?\\") || text.starts_with(u"\\??\\");
}

std::u16string full_path(std::u16string_view text, machine_state &machine)
{
    if (text.find_first_not_of(u' ') == std::u16string_view::npos)
        throw failure(ERROR_INVALID_NAME);
    if (text.size() > longest_text)
        throw failure(ERROR_FILENAME_EXCED_RANGE);

    path_form const form = form_of(text);
    // \\? and \\. alone are the root of the devices
    if (text.size() == 3 && form == path_form::unc && (text[2] == u'?' || text[2] == u'.'))
        return u"\\\\.\\";
    if (form != path_form::unc && form != path_form::device) {
        std::u16string_view const device = legacy_device(text, machine.runs);
        if (!device.empty())
            return u"\\\\.\\" + std::u16string(device);
    }

    beginning begun = begin_of(text, machine);
    bool const ends_open = walk(begun.start.elements, text.substr(begun.length));
    std::u16string result = joined(begun.start, ends_open);
    if (result.size() > longest_text)
        throw failure(ERROR_INVALID_NAME);
    return result;
}

// NOLINTEND(misc-no-recursion)

} // namespace fl::simulation
