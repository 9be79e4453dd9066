#include "legacy_device.hpp"

#include "names.hpp"

#include <algorithm>
#include <string>

namespace fl::simulation {

namespace {

/// COM and LPT take a digit, also a raised one: these are digits to the system.
bool is_port_digit(char16_t unit)
{
    constexpr std::u16string_view digits = u"123456789\u00B9\u00B2\u00B3";
    return digits.find(unit) != std::u16string_view::npos;
}

std::u16string_view trimmed(std::u16string_view name, std::u16string_view units)
{
    std::size_t const last = name.find_last_not_of(units);
    return name.substr(0, last == std::u16string_view::npos ? 0 : last + 1);
}

/// The last element of a bare pathname.
std::u16string_view last_element(std::u16string_view text)
{
    std::size_t const separator = text.find_last_of(u"\\/");
    // whatever stands ahead of the colon
    std::size_t const drive_end = text.size() > 1 && text[1] == u':' ? 2 : 0;
    std::size_t const begin =
        separator == std::u16string_view::npos ? drive_end : std::max(separator + 1, drive_end);
    return text.substr(begin);
}

std::u16string_view device_in_any_place(std::u16string_view text)
{
    std::u16string_view const name = last_element(text);
    return trimmed(name.substr(0, name.find_first_of(u".:")), u" ");
}

/// NUL is kept in all directories, since so many programs write to it; the others stand alone.
std::u16string_view device_alone(std::u16string_view text)
{
    std::u16string_view const last = trimmed(last_element(text), u". ");
    if (upcase(last) == u"NUL")
        return last;
    std::u16string_view name = trimmed(text, u". ");
    if (name.ends_with(u':'))
        name.remove_suffix(1);
    return trimmed(name, u" ");
}

} // namespace

bool is_device_name(std::u16string_view name)
{
    constexpr std::u16string_view fixed[] = {u"CON", u"PRN", u"AUX", u"NUL", u"CONIN$", u"CONOUT$"};
    std::u16string const upper = upcase(name);
    if (std::find(std::begin(fixed), std::end(fixed), upper) != std::end(fixed))
        return true;
    return upper.size() == 4 && (upper.starts_with(u"COM") || upper.starts_with(u"LPT")) &&
           is_port_digit(upper[3]);
}

std::u16string_view legacy_device(std::u16string_view text, edition runs)
{
    std::u16string_view const name =
        runs < edition::windows_11 ? device_in_any_place(text) : device_alone(text);
    return is_device_name(name) ? name : std::u16string_view();
}

} // namespace fl::simulation
