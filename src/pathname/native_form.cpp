#include "pathname/native_form.hpp"

#include <fl/filesystem/pathname.hpp>

#include "pathname/root_length.hpp"
#include "pathname/unit_search.hpp"
#include "platform/code_units.hpp"

#include <algorithm>

namespace fl::filesystem::detail {

namespace {

/// The index behind the last unit that counts. Trailing blanks don't, unless they
/// stand behind a separator: then they are a name of their own. 0 if all are blank.
template <typename Char>
std::size_t end_without_blanks(std::basic_string_view<Char> text)
{
    std::size_t const end = text.find_last_not_of(static_cast<Char>(' ')) + 1;
    bool const blanks_are_a_name = end > 0 && is_separator(text[end - 1]);
    return blanks_are_a_name ? text.size() : end;
}

/// The index of the first unit that is not white space, or the size of the text.
template <typename Char>
std::size_t skip_white_space(std::basic_string_view<Char> text)
{
    auto const found =
        std::find_if(text.begin(), text.end(), [](Char unit) { return !is_white_space(unit); });
    return static_cast<std::size_t>(found - text.begin());
}

enum class shape
{
    names,  ///< all but the others; a drive or a separator may stand ahead
    server, ///< behind two separators
    device  ///< behind `\\.\`
};

constexpr std::size_t prefix_size(shape kind)
{
    switch (kind) {
    case shape::server:
        return server_prefix_size;
    case shape::device:
        return device_prefix_size;
    default:
        return 0;
    }
}

/// What the native form of a text is made of.
template <typename Char>
struct native_parts
{
    std::basic_string_view<Char> units; ///< the prefix of the shape first, however it is written
    shape kind = shape::names;
    std::size_t root = 0;         ///< of names: so many units in front keep a backslash
    std::size_t written_size = 0; ///< of a device: by which its trailing backslash goes
};

/// Taken for the root of every drive, also where the drive has no backslash, so
/// that a single unit behind `C:` keeps the backslash behind it.
constexpr std::size_t drive_root = drive_root_size;

/// `otherwise` is the root where no drive stands at `at`.
template <typename Char>
native_parts<Char> names(std::basic_string_view<Char> text, std::size_t at, std::size_t otherwise)
{
    return {text, shape::names, is_drive_at(text, at) ? drive_root : otherwise};
}

/// `text` has lost its trailing blanks. Leading white space is looked past; the
/// forms with a prefix lose it, and in the others it is a part of the first name.
template <typename Char>
native_parts<Char> parts_by_shape(std::basic_string_view<Char> text)
{
    std::size_t const start = skip_white_space(text);
    // C:\foo or foo
    if (!is_separator(unit_at(text, start)))
        return names<Char>(text, start, 0);
    // \\server\share
    if (is_unc_prefix_at(text, start))
        return {text.substr(start), shape::server};
    // \\?\UNC\server\share; nothing but the prefix, and no white space ahead, is empty
    if (is_long_unc_prefix_at(text, start)) {
        if (text.size() == long_unc_prefix_size)
            return {};
        return {text.substr(start + long_unc_prefix_size - server_prefix_size), shape::server};
    }
    // \\?\C:\foo
    if (is_long_prefix_at(text, start))
        return names<Char>(text.substr(start + long_prefix_size), 0, 0);
    // \\.\COM1; nothing but the prefix is empty, but with white space ahead it is kept
    if (is_device_prefix_at(text, start)) {
        if (text.size() == device_prefix_size)
            return {};
        return {text.substr(start), shape::device, device_prefix_size, text.size()};
    }
    // \foo
    return {text, shape::names, 1};
}

template <typename Char>
native_parts<Char> parts_of(std::basic_string_view<Char> text)
{
    std::size_t const end = end_without_blanks(text);
    if (end == 0) // empty, or nothing but blanks
        return {text};
    return parts_by_shape(text.substr(0, end));
}

/// The index behind which a backslash at the end of `form` goes, if one more unit stands there.
/// A server, and a server and share, may keep theirs.
template <typename Char, typename Unit>
std::size_t root_of(native_parts<Char> const &parts, std::basic_string_view<Unit> form)
{
    return parts.kind == shape::server ? skip_two_separators(form, server_prefix_size) : parts.root;
}

/// The size of `form`, which has single backslashes only, without the one at its end. The size
/// that the rule goes by is for a device that of its text before its separators were
/// collapsed, so that its backslash stays where any were, and where white space stood ahead of
/// the prefix.
template <typename Char, typename Unit>
std::size_t size_without_last_backslash(native_parts<Char> const &parts,
                                        std::basic_string_view<Unit> form)
{
    std::size_t const size = parts.kind == shape::device ? parts.written_size : form.size();
    if (!is_backslash(unit_at(form, size - 1)))
        return form.size();
    std::size_t const root = root_of(parts, form);
    return size > root && size - root >= 2 ? form.size() - 1 : form.size();
}

/// Whether unit `at` of a shape's prefix is a separator.
constexpr bool separates_in_prefix(std::size_t at)
{
    return at != device_prefix_size - 2; // the full stop of \\.\ is none
}

template <typename Char>
bool has_native_prefix(native_parts<Char> const &parts)
{
    for (std::size_t at = 0; at < prefix_size(parts.kind); ++at)
        if (separates_in_prefix(at) && !is_backslash(parts.units[at]))
            return false;
    return true;
}

/// Whether there are only backslashes in `text`, and no two of them side by side.
template <typename Char>
bool has_single_backslashes(std::basic_string_view<Char> text)
{
    constexpr Char slash = pathname_traits<Char>::GENERIC_PATHNAME_SEPARATOR_CHARACTER;
    if (text.empty())
        return true;
    Char const *const units = text.data();
    auto const must_change = [units](std::size_t at) {
        Char const is_slash = all_bits_if<Char>(units[at] == slash);
        Char const is_first = all_bits_if<Char>(units[at] == backslash<Char>);
        Char const is_second = all_bits_if<Char>(units[at + 1] == backslash<Char>);
        return static_cast<Char>(is_slash | (is_first & is_second));
    };
    return text.back() != slash && !has_hit<Char>(0, text.size() - 1, must_change);
}

/// Whether nothing but the end of the units has to change.
template <typename Char>
bool is_native(native_parts<Char> const &parts)
{
    return has_native_prefix(parts) &&
           has_single_backslashes(parts.units.substr(prefix_size(parts.kind)));
}

template <typename Char>
constexpr Char all_bits_if_separator(Char unit)
{
    constexpr Char slash = pathname_traits<Char>::GENERIC_PATHNAME_SEPARATOR_CHARACTER;
    return static_cast<Char>(all_bits_if<Char>(unit == slash) |
                             all_bits_if<Char>(unit == backslash<Char>));
}

template <typename Char>
constexpr Char with_slash_turned(Char unit)
{
    constexpr Char slash = pathname_traits<Char>::GENERIC_PATHNAME_SEPARATOR_CHARACTER;
    constexpr Char difference = slash ^ backslash<Char>;
    return static_cast<Char>(unit ^ (all_bits_if<Char>(unit == slash) & difference));
}

/// Writes the units of a text from `at` on with single backslashes, a block at a time where no
/// two separators stand side by side. What is written is never longer than what is read.
template <typename Result, typename Char>
class collapser
{
public:
    explicit collapser(Char const *units, Result *to) : units_(units), to_(to) {}

    /// Reads up to `end`, from behind a unit that was read already. Returns behind the last one
    /// written.
    Result *run(std::size_t at, std::size_t end)
    {
        for (; end - at >= search_block; at += search_block) {
            if (has_hit_in_block<search_block, Char>(
                    at, [this](std::size_t i) { return separates_twice(i); }))
                take_each(at, at + search_block);
            else
                take_block(at);
        }
        take_each(at, end);
        return to_;
    }

    void take(std::size_t at) { *to_++ = static_cast<Result>(with_slash_turned(units_[at])); }

private:
    /// All bits if unit `at` is the second of two separators.
    Char separates_twice(std::size_t at) const
    {
        return static_cast<Char>(all_bits_if_separator(units_[at - 1]) &
                                 all_bits_if_separator(units_[at]));
    }

    void take_block(std::size_t at)
    {
        Result block[search_block];
        for (std::size_t i = 0; i < search_block; ++i)
            block[i] = static_cast<Result>(with_slash_turned(units_[at + i]));
        to_ = std::copy_n(block, search_block, to_);
    }

    /// Writes each unit but the second of two separators.
    void take_each(std::size_t at, std::size_t end)
    {
        Result *to = to_;
        bool was_separator = is_separator(units_[at - 1]);
        for (; at < end; ++at) {
            Char const unit = units_[at];
            bool const separates = is_separator(unit);
            if (!separates)
                *to++ = static_cast<Result>(unit);
            else if (!was_separator)
                *to++ = backslash<Result>;
            was_separator = separates;
        }
        to_ = to;
    }

    Char const *units_;
    Result *to_;
};

/// The first `keep` units as they are, and those behind them with single backslashes.
template <typename Result, typename Char>
std::basic_string<Result> collapse(std::basic_string_view<Char> text, std::size_t keep)
{
    std::basic_string<Result> collapsed(text.size(), Result());
    Result *const begin = collapsed.data();
    Result *end = std::copy_n(text.begin(), keep, begin);
    if (keep < text.size()) {
        collapser<Result, Char> behind(text.data(), end);
        behind.take(keep);
        end = behind.run(keep + 1, text.size());
    }
    collapsed.resize(static_cast<std::size_t>(end - begin));
    if (collapsed.size() < text.size())
        collapsed.shrink_to_fit();
    return collapsed;
}

template <typename Result, typename Char>
std::basic_string<Result> native_form_as(std::basic_string_view<Char> text)
{
    native_parts<Char> const parts = parts_of(text);
    if (is_native(parts))
        return copy_units<Result>(
            parts.units.substr(0, size_without_last_backslash(parts, parts.units)));
    std::basic_string<Result> form = collapse<Result>(parts.units, prefix_size(parts.kind));
    for (std::size_t at = 0; at < prefix_size(parts.kind); ++at)
        if (separates_in_prefix(at))
            form[at] = backslash<Result>;
    form.resize(size_without_last_backslash<Char, Result>(parts, form));
    return form;
}

} // namespace

template <typename Char>
std::basic_string<Char> collapse_separators_from(std::basic_string_view<Char> text,
                                                 std::size_t start, std::size_t keep)
{
    return collapse<Char>(text.substr(start), keep);
}

template <typename Char>
std::basic_string<Char> native_form(std::basic_string_view<Char> text)
{
    return native_form_as<Char>(text);
}

template <typename Char>
std::optional<std::basic_string_view<Char>> native_part(std::basic_string_view<Char> text)
{
    native_parts<Char> const parts = parts_of(text);
    if (!is_native(parts))
        return std::nullopt;
    return parts.units.substr(0, size_without_last_backslash(parts, parts.units));
}

std::u16string narrow_native_form(std::wstring_view text)
{
    return native_form_as<char16_t>(text);
}

template std::u16string collapse_separators_from(std::u16string_view, std::size_t, std::size_t);
template std::wstring collapse_separators_from(std::wstring_view, std::size_t, std::size_t);
template std::u16string native_form(std::u16string_view);
template std::wstring native_form(std::wstring_view);
template std::optional<std::u16string_view> native_part(std::u16string_view);
template std::optional<std::wstring_view> native_part(std::wstring_view);

std::u16string make_native_form(std::u16string const &text, bool)
{
    return native_form<char16_t>(text);
}

std::wstring path_traits<wchar_t, wchar_t>::make_native_form(std::wstring const &text, bool)
{
    return native_form<wchar_t>(text);
}

std::u16string path_traits<char16_t, char16_t>::make_native_form(std::u16string const &text,
                                                                 bool form_flag)
{
    return detail::make_native_form(text, form_flag);
}

} // namespace fl::filesystem::detail
