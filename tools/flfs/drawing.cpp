#include "flfs/drawing.hpp"

#include <fl/filesystem/pathname.hpp>
#include <fl/filesystem/utf8.hpp>

#include "flfs/text.hpp"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace flfs {

namespace detail = fl::filesystem::detail;

namespace {

constexpr std::size_t widest_piece = 64;
constexpr std::size_t widest_line = 100;
constexpr std::size_t gap = 3; // between marks and label
constexpr std::size_t label_width = 11;

/// A part of the pathname, by its units, or a run of units that fits into a line.
struct span
{
    std::size_t begin;
    std::size_t end;
    std::string_view label = {};
};

/// Root and parent lead the text, filename and extension end it, and the stem leads
/// the filename. The sizes are all that is needed, and every part is in the text.
std::vector<span> spans_of(std::u16string const &native)
{
    std::size_t const size = native.size();
    std::size_t const filename = size - detail::extract_filename(native).size();
    std::vector<span> spans = {
        {0, detail::extract_root_path(native).size(), "root"},
        {0, detail::extract_parent_path(native).size(), "parent"},
        {filename, filename + detail::extract_stem(native).size(), "stem"},
        {size - detail::extract_extension(native).size(), size, "extension"}};
    std::erase_if(spans, [](span const &one) { return one.begin == one.end; });
    return spans;
}

struct range
{
    char32_t first;
    char32_t last;
};

// What terminals draw in two columns: the blocks of Unicode that are wide throughout.
constexpr range wide_characters[] = {
    {0x1100, 0x115F},   {0x2E80, 0x303E},   {0x3041, 0xA4CF},   {0xA960, 0xA97C},
    {0xAC00, 0xD7A3},   {0xF900, 0xFAFF},   {0xFE30, 0xFE6F},   {0xFF01, 0xFF60},
    {0xFFE0, 0xFFE6},   {0x1F300, 0x1F64F}, {0x1F680, 0x1F6FF}, {0x1F900, 0x1F9FF},
    {0x20000, 0x3FFFD},
};

// What they draw over the character before it, such as the accents of names that come
// decomposed from other systems.
constexpr range combining_characters[] = {
    {0x0300, 0x036F}, {0x0483, 0x0489}, {0x0591, 0x05BD}, {0x1AB0, 0x1AFF}, {0x1DC0, 0x1DFF},
    {0x20D0, 0x20FF}, {0x3099, 0x309A}, {0xFE00, 0xFE0F}, {0xFE20, 0xFE2F},
};

template <std::size_t Count>
bool is_among(range const (&ranges)[Count], char32_t value)
{
    return std::any_of(std::begin(ranges), std::end(ranges), [value](range const &one) {
        return value >= one.first && value <= one.last;
    });
}

/// How many columns a character takes in a terminal; those of its escape, if it is shown as
/// one.
std::size_t width_of(char32_t point)
{
    std::string const bytes = displayed(point);
    bool const is_escape = point != U'\\' && bytes.front() == '\\';
    if (is_escape)
        return bytes.size();
    if (is_among(combining_characters, point))
        return 0;
    return is_among(wide_characters, point) ? 2 : 1;
}

/// The columns that the units from `begin` to `end` take.
std::size_t width_of(std::u16string_view text, std::size_t begin, std::size_t end)
{
    std::size_t width = 0;
    for (text = text.substr(begin, end - begin); !text.empty();)
        width += width_of(detail::take_code_point(text));
    return width;
}

std::vector<span> pieces_of(std::u16string_view text)
{
    std::vector<span> pieces = {{0, 0}};
    std::size_t width = 0;
    for (std::u16string_view rest = text; !rest.empty();) {
        std::size_t const at = text.size() - rest.size();
        std::size_t const columns = width_of(detail::take_code_point(rest));
        width += columns;
        if (width > widest_piece) {
            pieces.push_back({at, at});
            width = columns;
        }
        pieces.back().end = text.size() - rest.size();
    }
    return pieces;
}

/// The marks of `part` under one piece, its label at `label_column`, and its value
/// if the line has room for it.
std::string mark_line(std::u16string_view text, span const &where, span const &part,
                      std::size_t label_column)
{
    std::size_t const begin = std::max(where.begin, part.begin);
    std::size_t const end = std::min(where.end, part.end);
    std::string line(width_of(text, where.begin, begin), ' ');
    line.append(width_of(text, begin, end), '^');
    line.append(label_column - line.size(), ' ');
    line += part.label;
    std::size_t const value_column = label_column + label_width;
    if (value_column + width_of(text, part.begin, part.end) <= widest_line) {
        line.append(value_column - line.size(), ' ');
        line += displayed_value(text.substr(part.begin, part.end - part.begin));
    }
    return line;
}

} // namespace

std::vector<std::string> draw(std::u16string const &native)
{
    if (native.empty())
        return {};
    std::vector<span> const pieces = pieces_of(native);
    std::size_t widest = 0;
    for (span const &one : pieces)
        widest = std::max(widest, width_of(native, one.begin, one.end));

    std::vector<std::string> lines;
    for (span const &one : pieces) {
        lines.push_back(displayed(native.substr(one.begin, one.end - one.begin)));
        for (span const &part : spans_of(native))
            if (part.begin < one.end && part.end > one.begin)
                lines.push_back(mark_line(native, one, part, widest + gap));
    }
    return lines;
}

} // namespace flfs
