#include "flfs/drawing.hpp"

#include "flfs/text.hpp"

#include <algorithm>
#include <string_view>

namespace flfs {

namespace {

constexpr std::size_t widest_piece = 64;
constexpr std::size_t widest_line = 100;
constexpr std::size_t gap = 3; // between marks and label
constexpr std::size_t label_width = 11;

/// A part of the pathname, by its units.
struct span
{
    std::string_view label;
    std::size_t begin;
    std::size_t end;
    std::u16string_view value;
};

/// A run of units that fits into a line.
struct piece
{
    std::size_t begin;
    std::size_t end;
};

/// Root and parent lead the text, filename and extension end it, and the stem leads
/// the filename. The sizes are all that is needed, and every part is in the text.
std::vector<span> spans_of(std::u16string const &native, parts const &all)
{
    std::size_t const size = native.size();
    std::size_t const filename = size - all.filename.size();
    std::vector<span> spans = {
        {"root", 0, all.root_path.size(), all.root_path},
        {"parent", 0, all.parent_path.size(), all.parent_path},
        {"stem", filename, filename + all.stem.size(), all.stem},
        {"extension", size - all.extension.size(), size, all.extension},
    };
    std::erase_if(spans, [](span const &one) { return one.begin == one.end; });
    return spans;
}

/// How many columns `character` takes: as many as its escape has, else one.
std::size_t width_of(character const &one)
{
    std::string const bytes = displayed(one);
    bool const is_escape = one.value != U'\\' && bytes.front() == '\\';
    return is_escape ? bytes.size() : 1;
}

/// The columns that the units from `begin` to `end` take.
std::size_t width_of(std::u16string_view text, std::size_t begin, std::size_t end)
{
    std::size_t width = 0;
    while (begin < end) {
        character const one = character_at(text, begin);
        width += width_of(one);
        begin += one.units;
    }
    return width;
}

std::vector<piece> pieces_of(std::u16string_view text)
{
    std::vector<piece> pieces;
    std::size_t begin = 0;
    std::size_t width = 0;
    for (std::size_t at = 0; at < text.size();) {
        character const one = character_at(text, at);
        if (width + width_of(one) > widest_piece) {
            pieces.push_back({begin, at});
            begin = at;
            width = 0;
        }
        width += width_of(one);
        at += one.units;
    }
    if (begin < text.size())
        pieces.push_back({begin, text.size()});
    return pieces;
}

/// The marks of `part` under one piece, its label at `label_column`, and its value
/// if the line has room for it.
std::string mark_line(std::u16string_view text, piece const &where, span const &part,
                      std::size_t label_column)
{
    std::size_t const begin = std::max(where.begin, part.begin);
    std::size_t const end = std::min(where.end, part.end);
    std::string line(width_of(text, where.begin, begin), ' ');
    line.append(width_of(text, begin, end), '^');
    line.append(label_column - line.size(), ' ');
    line += part.label;
    std::size_t const value_column = label_column + label_width;
    if (value_column + width_of(part.value, 0, part.value.size()) <= widest_line) {
        line.append(value_column - line.size(), ' ');
        line += displayed_value(part.value);
    }
    return line;
}

} // namespace

std::vector<std::string> draw(std::u16string const &native, parts const &all)
{
    std::vector<piece> const pieces = pieces_of(native);
    std::size_t widest = 0;
    for (piece const &one : pieces)
        widest = std::max(widest, width_of(native, one.begin, one.end));

    std::vector<std::string> lines;
    for (piece const &one : pieces) {
        std::u16string_view const units = native;
        lines.push_back(displayed(units.substr(one.begin, one.end - one.begin)));
        for (span const &part : spans_of(native, all))
            if (part.begin < one.end && part.end > one.begin)
                lines.push_back(mark_line(native, one, part, widest + gap));
    }
    return lines;
}

} // namespace flfs
