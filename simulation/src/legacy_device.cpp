#include "legacy_device.hpp"

#include "names.hpp"

#include <algorithm>
#include <string>

namespace simulation {

namespace {

/// COM and LPT take a digit, also a raised one: these are digits to the system.
bool is_port_digit(char16_t unit)
{
    constexpr std::u16string_view digits = u"123456789\u00B9\u00B2\u00B3";
    return digits.find(unit) != std::u16string_view::npos;
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

std::u16string_view legacy_device(std::u16string_view text)
{
    std::size_t const separator = text.find_last_of(u"\\/");
    // whatever stands ahead of the colon
    std::size_t const drive_end = text.size() > 1 && text[1] == u':' ? 2 : 0;
    std::size_t const begin =
        separator == std::u16string_view::npos ? drive_end : std::max(separator + 1, drive_end);
    std::u16string_view name = text.substr(begin);
    name = name.substr(0, name.find_first_of(u".:"));
    while (name.ends_with(u' '))
        name.remove_suffix(1);
    return is_device_name(name) ? name : std::u16string_view();
}

} // namespace simulation
