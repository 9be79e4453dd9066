#include <fl/filesystem/pathname.hpp>

#include "pathname/root_length.hpp"

namespace fl::filesystem::detail {

namespace {

using unit_traits = pathname_traits<char16_t>;

/// The units from `from` up to the next backslash.
std::u16string_view element_at(std::u16string_view text, std::size_t from)
{
    return text.substr(from, find_backslash(text, from) - from);
}

/// Steps back from a position behind the root.
void move_up_to_name(std::u16string_view text, std::size_t root, std::uint64_t &position,
                     std::u16string &element)
{
    // from inside the text, pass over the separator ahead of the current element;
    // a position that is on no element boundary must not lead below index 0
    std::size_t const inside = position >= 2 ? position - 2 : 0;
    std::size_t const last_unit = position < text.size() ? inside : position;
    std::size_t const before = text.rfind(unit_traits::PATHNAME_SEPARATOR_CHARACTER, last_unit);
    std::size_t const begin = before == text.npos ? root : before + 1;
    element = text.substr(begin, last_unit + 1 - begin);
    position = begin;
}

} // namespace

std::u16string extract_first_element(std::u16string const &text, std::uint64_t root_length)
{
    if (text.empty())
        return {};
    if (root_length == 0)
        return std::u16string(element_at(text, 0));
    std::u16string_view const name = root_name<char16_t>(text);
    return std::u16string(name.empty() ? unit_traits::ROOT_PATHNAME : name);
}

void move_down(std::u16string const &text, std::uint64_t root_length, std::uint64_t &position,
               std::u16string &element)
{
    std::size_t const size = text.size();
    if (size == 0)
        return;
    if (position >= size) {
        element.clear();
        return;
    }
    std::size_t const end = position + element.size();
    if (end >= size) {
        position = size;
        element.clear();
        return;
    }
    // from a root name to the root directory behind it
    if (position == 0 && root_length >= 2 && element.size() < root_length) {
        position = end;
        element = unit_traits::ROOT_PATHNAME;
        return;
    }
    bool const at_root_directory = position + 1 == root_length;
    bool const at_separator = !at_root_directory && is_backslash(text[end]);
    position = at_separator ? end + 1 : end;
    // Appending to an empty string takes half of the instructions of an assignment, which has to
    // reckon with units of its own. `element` isn't `text` here: that one ends where it ends.
    element.clear();
    element.append(element_at(text, position));
}

void move_up(std::u16string const &text, std::uint64_t root_length, std::uint64_t &position,
             std::u16string &element)
{
    if (position == 0 || text.empty())
        return;
    if (position > root_length) {
        move_up_to_name(text, root_length, position, element);
        return;
    }
    // from the first name to the root directory, if the root ends in one
    bool const at_root_end = position == root_length;
    if (at_root_end && (root_length == 1 || is_backslash(text[position - 1]))) {
        element = unit_traits::ROOT_PATHNAME;
        --position;
        return;
    }
    // to a root name
    element.assign(text, 0, position);
    position = 0;
}

} // namespace fl::filesystem::detail
