#include "pathname.hpp"

#include "failure.hpp"
#include "full_path.hpp"
#include "legacy_device.hpp"
#include "lookup.hpp"
#include "names.hpp"

#include <algorithm>

namespace fl::simulation {

namespace {

/// A network pathname behind a long prefix.
constexpr std::u16string_view unc_device = u"UNC";

/// The root of the object manager's own names.
constexpr std::u16string_view global_root = u"GLOBALROOT";

/// The longest text that the system takes with a long prefix.
constexpr std::size_t longest_literal = 32767;

/// The longest full pathname without one, unless the machine takes longer ones: 260 units
/// with the NUL.
constexpr std::size_t longest_bare_pathname = MAX_PATH - 1;

/// Takes the text up to the next backslash, and that backslash.
std::u16string_view take_name(std::u16string_view &text)
{
    std::size_t const end = text.find(u'\\');
    std::u16string_view const name = text.substr(0, end);
    text.remove_prefix(end == std::u16string_view::npos ? text.size() : end + 1);
    return name;
}

/// There has to be one: its name alone, without a backslash, is the volume itself, and no
/// directory on it.
void check_volume(pathname &parsed, bool is_alone)
{
    if (!parsed.disk)
        throw failure(is_alone ? ERROR_FILE_NOT_FOUND : ERROR_PATH_NOT_FOUND);
    parsed.is_raw_volume = is_alone;
}

/// server\share\dir
pathname parse_network(std::u16string_view text, machine_state const &machine)
{
    std::u16string_view const server = take_name(text);
    std::u16string_view const share = take_name(text);
    pathname parsed;
    parsed.disk = machine.disks.find_share(server, share);
    split(text, parsed);
    return parsed;
}

/// Device\HarddiskVolume3\dir, as the root of the object manager has it.
pathname parse_device(std::u16string_view text, machine_state const &machine)
{
    if (upcase(take_name(text)) != u"DEVICE")
        throw failure(ERROR_PATH_NOT_FOUND);
    bool const is_alone = text.find(u'\\') == text.npos;
    std::u16string_view const device = take_name(text);
    if (upcase(device) == u"MUP")
        return parse_network(text, machine);
    pathname parsed;
    parsed.disk = machine.disks.find_by_device(device);
    check_volume(parsed, is_alone);
    split(text, parsed);
    return parsed;
}

/// A legacy device in a directory needs the directory, although it isn't in there.
void check_directory_of_device(std::u16string_view text, machine_state &machine)
{
    std::size_t const separator = text.find_last_of(u"\\/");
    if (separator == std::u16string_view::npos)
        return;
    if (!is_directory_at(full_path(text.substr(0, separator + 1), machine), machine))
        throw failure(ERROR_PATH_NOT_FOUND);
}

/// The volume that the object manager knows by this name, or null.
std::shared_ptr<volume> find_volume(std::u16string_view object, machine_state const &machine)
{
    if (object.size() == 2 && is_drive_at(object, 0))
        return machine.disks.find_drive(object[0]);
    return machine.disks.find_by_guid(object);
}

} // namespace

pathname parse_object(std::u16string_view text, machine_state const &machine)
{
    std::u16string_view rest = text;
    std::u16string_view const object = take_name(rest);
    if (upcase(object) == unc_device)
        return parse_network(rest, machine);
    if (upcase(object) == global_root)
        return parse_device(rest, machine);
    bool const is_alone = object.size() == text.size();
    if (is_device_name(object) && is_alone)
        return {};
    pathname parsed;
    parsed.disk = find_volume(object, machine);
    check_volume(parsed, is_alone);
    // one backslash more than needed is passed over here, and nowhere else
    if (rest.starts_with(u'\\'))
        rest.remove_prefix(1);
    split(rest, parsed);
    return parsed;
}

void split(std::u16string_view text, pathname &parsed)
{
    parsed.ends_in_separator = text.ends_with(u'\\');
    if (parsed.ends_in_separator)
        text.remove_suffix(1);
    if (text.empty())
        return;
    parsed.texts.push_back(std::make_shared<std::u16string const>(text));
    text = *parsed.texts.back();
    auto const separators = std::count(text.begin(), text.end(), u'\\');
    parsed.elements.reserve(parsed.elements.size() + static_cast<std::size_t>(separators) + 1);
    for (;;) {
        std::size_t const end = text.find(u'\\');
        parsed.elements.push_back(text.substr(0, end));
        if (end == std::u16string_view::npos)
            return;
        text.remove_prefix(end + 1);
    }
}

pathname parse_pathname(std::u16string_view text, machine_state &machine)
{
    if (text.find_first_not_of(u' ') == std::u16string_view::npos)
        throw failure(ERROR_PATH_NOT_FOUND);
    if (is_literal(text)) {
        if (text.size() > longest_literal)
            throw failure(ERROR_FILENAME_EXCED_RANGE);
        return parse_literal(text, machine);
    }
    std::u16string const full = full_path(text, machine);
    if (full.size() > longest_bare_pathname && !machine.takes_long_pathnames)
        throw failure(ERROR_PATH_NOT_FOUND);
    if (form_of(full) == path_form::device && form_of(text) != path_form::device)
        check_directory_of_device(text, machine);
    return parse_literal(full, machine);
}

pathname parse_literal(std::u16string_view text, machine_state const &machine)
{
    switch (form_of(text)) {
    case path_form::device:
        return parse_object(text.substr(4), machine);
    case path_form::unc:
        return parse_network(text.substr(2), machine);
    case path_form::drive_absolute:
        return parse_object(text, machine);
    default:
        if (is_literal(text)) // \??\ looks rooted
            return parse_object(text.substr(4), machine);
        throw failure(ERROR_PATH_NOT_FOUND);
    }
}

} // namespace fl::simulation
