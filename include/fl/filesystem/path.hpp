#ifndef FL_FILESYSTEM_PATH_HPP
#define FL_FILESYSTEM_PATH_HPP
// Public. The path object `upath`: a pathname in native form, as a value.
// Header-only over the text functions of pathname.hpp; asks the system nothing.

#include <fl/filesystem/config.hpp>
#include <fl/filesystem/pathname.hpp>
#include <fl/filesystem/utf8.hpp>

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string> // std::hash, too
#include <string_view>
#include <type_traits>
#include <utility>

namespace fl::filesystem {

template <typename Native, typename Portable, typename Traits>
class basic_path;

namespace detail {

struct native_path;

/// What becomes a path of itself, beside `std::u16string`: its specializations stand for
/// exactly one type each, and `of` returns its text in UTF-16. A literal is no such type; why
/// is told at the constructor of the path. That of `std::filesystem::path` is in standard.hpp.
template <typename Source>
struct path_source
{
    static constexpr bool is_one = false;
};

template <>
struct path_source<std::u16string_view>
{
    static constexpr bool is_one = true;
    static std::u16string of(std::u16string_view text) { return std::u16string(text); }
};

/// Unit for unit, and so is the next.
template <>
struct path_source<std::wstring_view>
{
    static constexpr bool is_one = true;
    static std::u16string of(std::wstring_view text)
    {
        return std::u16string(text.begin(), text.end());
    }
};

template <>
struct path_source<std::wstring> : path_source<std::wstring_view>
{
};

template <typename Source>
using if_path_source = std::enable_if_t<path_source<Source>::is_one, int>;

/// A wide literal, or a pointer to a wide text that ends in a NUL.
template <typename Text>
using if_wide_pointer = std::enable_if_t<std::is_same_v<std::decay_t<Text>, wchar_t *> ||
                                             std::is_same_v<std::decay_t<Text>, wchar_t const *>,
                                         int>;

/// What was meant for something else than a flag.
template <typename Flag>
using if_pointer = std::enable_if_t<std::is_pointer_v<std::decay_t<Flag>>, int>;

template <typename Null>
using if_null = std::enable_if_t<std::is_same_v<Null, std::nullptr_t>, int>;

} // namespace detail

/// Walks the elements of a path: root name, root directory, and then each name.
///
/// Its element lives inside the iterator, so a reference to it is good until the
/// iterator moves; that makes it an input iterator to the standard's algorithms,
/// although it steps back, too. It is good as long as the path lives and keeps
/// its text. Stepping back from the end of a path whose text ends in a backslash
/// behind its root, such as `\\server\share\`, makes no progress.
template <typename Path>
struct basic_path_iterator
{
    using iterator_category = std::input_iterator_tag;
    using value_type = typename Path::string_type;
    using difference_type = std::ptrdiff_t;
    using pointer = value_type const *;
    using reference = value_type const &;

    // The layout is shared with code outside the library: keep the order.
    std::uint64_t root_length = 0; ///< code units; taken once
    value_type element;            ///< the current element; empty at the end
    Path const *owner = nullptr;   ///< the path that is walked
    std::uint64_t position = 0;    ///< of the element in the text, in code units

    /// The element that it stands at. At the end that is an empty text.
    reference operator*() const noexcept { return element; }
    pointer operator->() const noexcept { return &element; }

    /// Steps to the next element, and at the last to the end.
    basic_path_iterator &operator++()
    {
        detail::move_down(owner->native(), root_length, position, element);
        return *this;
    }
    basic_path_iterator operator++(int)
    {
        basic_path_iterator before = *this;
        ++*this;
        return before;
    }
    /// Steps to the element before.
    basic_path_iterator &operator--()
    {
        detail::move_up(owner->native(), root_length, position, element);
        return *this;
    }
    basic_path_iterator operator--(int)
    {
        basic_path_iterator before = *this;
        --*this;
        return before;
    }

    /// Same path object and same position; the element is not looked at.
    friend bool operator==(basic_path_iterator const &left,
                           basic_path_iterator const &right) noexcept
    {
        return left.owner == right.owner && left.position == right.position;
    }
    friend bool operator!=(basic_path_iterator const &left,
                           basic_path_iterator const &right) noexcept
    {
        return !(left == right);
    }
};

/// A pathname in native form (see `detail::make_native_form`). Use it as `upath`.
///
/// Members are named as in `std::filesystem::path`. What differs throughout:
/// - Text is brought to native form on the way in: `C:/dir//file/` is held as
///   `C:\dir\file`, and `\\?\C:\dir` as `C:\dir`.
/// - Queries return text, that of `detail::extract_filename` and its kin. A part of
///   a pathname need not be in native form by itself.
/// - Comparison is of the exact texts, unit by unit and case included; the
///   standard compares element by element.
template <typename Native, typename Portable, typename Traits>
class basic_path
{
public:
    using value_type = Portable;                      ///< `char16_t`, in which callers hold text
    using string_type = std::basic_string<Portable>;  ///< `std::u16string`
    using iterator = basic_path_iterator<basic_path>; ///< of the elements
    using const_iterator = iterator;                  ///< elements aren't changed

    /// The empty path.
    basic_path() = default;

    /// The native form of `text`. Fails on no text. `flag` is carried with the object and
    /// changes no behaviour.
    ///
    /// Implicit, but not from a literal: operations take paths and texts, and if a literal
    /// became either of itself, `exists(u"...")` could mean both. So it is
    ///
    ///     upath p(u"C:/dir");   auto p = u"C:/dir"_path;   exists(u"C:/dir");
    ///
    /// and `upath p = u"C:/dir";` doesn't compile.
    basic_path(string_type const &text, bool flag = true) : form_flag_(flag) { *this = text; }

    /// The same of a `std::u16string_view`, of a `std::wstring` or `std::wstring_view`, unit
    /// for unit, and, with standard.hpp, of a `std::filesystem::path`. Narrow text says nothing
    /// about its encoding and isn't taken: see `from_utf8`.
    template <typename Source, detail::if_path_source<Source> = 0>
    basic_path(Source const &text, bool flag = true)
        : basic_path(detail::path_source<Source>::of(text), flag)
    {
    }

    /// The same of a wide literal or pointer, such as those that `wmain` is handed.
    template <typename Text, detail::if_wide_pointer<Text> = 0>
    explicit basic_path(Text const &text, bool flag = true)
        : basic_path(std::wstring_view(text), flag)
    {
    }

    /// Two texts don't make a path, and a pointer is no flag; write `upath(a) / b`.
    template <typename Flag, detail::if_pointer<Flag> = 0>
    basic_path(string_type const &text, Flag const &flag) = delete;
    template <typename Source, typename Flag, detail::if_path_source<Source> = 0,
              detail::if_pointer<Flag> = 0>
    basic_path(Source const &text, Flag const &flag) = delete;
    template <typename Null, detail::if_null<Null> = 0>
    explicit basic_path(Null, bool flag = true) = delete;

    /// The path that `text`, a UTF-8 text of any type, stands for. Throws
    /// `FileNameConversionFailure` if it isn't UTF-8, as told at `from_utf8` of utf8.hpp.
    template <typename Text>
    [[nodiscard]] static auto from_utf8(Text const &text)
        -> std::enable_if_t<std::is_same_v<decltype(filesystem::from_utf8(text)), string_type>,
                            basic_path>
    {
        return basic_path(filesystem::from_utf8(text));
    }

    /// Takes the native form of `text`; the flag stays.
    basic_path &operator=(string_type const &text)
    {
        if (text.empty())
            pathname_.clear();
        else
            pathname_ = detail::make_native_form(text, form_flag_);
        return *this;
    }
    template <typename Source, detail::if_path_source<Source> = 0>
    basic_path &operator=(Source const &text)
    {
        return *this = detail::path_source<Source>::of(text);
    }

    /// Joins a path or a text behind this one; an empty one changes nothing. The
    /// standard lets an absolute right side replace the left one; here that is
    /// `InvalidArgument`, unless the left one is empty, as told at
    /// `detail::concatenate_pathname`, and the left side stays as it was.
    basic_path &operator/=(basic_path const &right)
    {
        return join(right.pathname_, right.form_flag_);
    }
    basic_path &operator/=(string_type const &right) { return join(right, form_flag_); }

    /// The two joined, as `/=` does it, and throws as that.
    [[nodiscard]] friend basic_path operator/(basic_path const &left, basic_path const &right)
    {
        basic_path joined = left.with_room_for(right.pathname_);
        joined /= right;
        return joined;
    }
    [[nodiscard]] friend basic_path operator/(basic_path const &left, string_type const &right)
    {
        basic_path joined = left.with_room_for(right);
        joined /= right;
        return joined;
    }

    /// Writes a text right behind this one, without a separator, and takes the native form of
    /// both together.
    ///
    ///     C:\a.txt    .bak     C:\a.txt.bak
    ///     C:\a        /b/      C:\a\b
    basic_path &operator+=(basic_path const &text) { return *this += text.pathname_; }
    basic_path &operator+=(string_type const &text) { return *this = pathname_ + text; }

    /// Empties the text; the flag stays.
    void clear() noexcept { pathname_.clear(); }

    /// Removes the last element. The standard leaves the separator, `C:\dir\`;
    /// here it goes with the name, `C:\dir`, and a root loses its own.
    basic_path &remove_filename()
    {
        detail::remove_filename(pathname_);
        return *this;
    }

    /// Replaces or adds the extension. The standard removes it if the new one is
    /// empty; here an empty one changes nothing. Throws as told at
    /// `detail::replace_extension`.
    basic_path &replace_extension(string_type const &new_extension)
    {
        detail::replace_extension(pathname_, new_extension);
        return *this;
    }

    /// Removes the extension and its full stop. What `replace_extension` leaves as it is stays
    /// here, too, and so does a name that has nothing else but full stops and blanks: without
    /// its extension the pathname would mean a directory above.
    ///
    ///     C:\a.tar.gz         C:\a.tar
    ///     C:\dir.d\a          C:\dir.d\a
    ///     C:\.bashrc          C:\.bashrc
    ///     C:\..txt            C:\..txt
    ///     \\server\share.x    \\server\share.x
    basic_path &remove_extension()
    {
        if (stem().find_first_not_of(u". ") == string_type::npos)
            return *this;
        // replacing knows what has an extension; its result differs in the last unit
        string_type replaced = pathname_;
        detail::replace_extension(replaced, pathname_.back() == u'a' ? u"b" : u"a");
        if (replaced != pathname_)
            pathname_.resize(replaced.size() - 2);
        return *this;
    }

    /// Puts `new_filename` in the place of the last element, as `remove_filename` and `/=` do
    /// it. The standard leaves a separator if the new one is empty; here it is removed with the
    /// name. Throws as `/=` does and leaves the path as it was.
    ///
    ///     C:\dir\a    b         C:\dir\b
    ///     C:\dir\a    (empty)   C:\dir
    ///     C:\         b         C:\b
    ///     C:a         b         b        (as told at `detail::remove_filename`)
    basic_path &replace_filename(string_type const &new_filename)
    {
        basic_path replaced = with_room_for(new_filename);
        replaced.remove_filename();
        replaced /= new_filename;
        swap(replaced);
        return *this;
    }

    /// Exchanges texts and flags.
    void swap(basic_path &other) noexcept
    {
        pathname_.swap(other.pathname_);
        std::swap(form_flag_, other.form_flag_);
    }
    /// The same.
    friend void swap(basic_path &left, basic_path &right) noexcept { left.swap(right); }

    /// The text. The standard's has the system's character type; this one's is
    /// `char16_t`.
    [[nodiscard]] string_type const &native() const noexcept { return pathname_; }

    /// The same, ending in a NUL.
    [[nodiscard]] value_type const *c_str() const noexcept { return pathname_.c_str(); }

    /// A copy of the text; of a path that is given away, the text itself.
    [[nodiscard]] string_type u16string() const & { return pathname_; }
    [[nodiscard]] string_type u16string() && { return std::move(pathname_); }

    /// The text in the system's character type, code unit for code unit.
    [[nodiscard]] std::basic_string<Native> wstring() const
    {
        return std::basic_string<Native>(pathname_.begin(), pathname_.end());
    }

    /// The text in UTF-8, as `to_utf8` makes it. The standard's `string()` on Windows is in the
    /// process's code page, and throws where that lacks a character.
    [[nodiscard]] std::string string() const { return to_utf8(pathname_); }

    /// The same in the standard's type for it: that of `char8_t` in C++20.
    template <typename Char = detail::utf8_char>
    [[nodiscard]] std::basic_string<Char> u8string() const
    {
        return detail::utf8_of<Char>(pathname_);
    }

    /// The text with forward slashes; the second one in UTF-8.
    [[nodiscard]] string_type generic_u16string() const
    {
        return detail::make_generic_form(pathname_);
    }
    [[nodiscard]] std::string generic_string() const { return to_utf8(generic_u16string()); }

    /// The flag that was given to the constructor.
    [[nodiscard]] bool form_flag() const noexcept { return form_flag_; }

    /// Whether there is no text.
    [[nodiscard]] bool empty() const noexcept { return pathname_.empty(); }

    /// `C:` of `C:\dir`, `\\server` of `\\server\share`.
    [[nodiscard]] string_type root_name() const { return detail::extract_root_name(pathname_); }
    [[nodiscard]] string_type root_directory() const
    {
        return detail::extract_root_directory(pathname_);
    }
    [[nodiscard]] string_type root_path() const { return detail::extract_root_path(pathname_); }
    [[nodiscard]] string_type relative_path() const
    {
        return detail::extract_relative_path(pathname_);
    }

    /// The text without its last element. The standard's parent of a root is the
    /// root itself; here that of `C:\` is `C:`, and that of `C:` is empty.
    [[nodiscard]] string_type parent_path() const { return detail::extract_parent_path(pathname_); }

    /// The same as a path, with the flag of this one.
    [[nodiscard]] basic_path parent() const
    {
        basic_path above;
        above.form_flag_ = form_flag_;
        above.pathname_ = detail::extract_parent_path(pathname_);
        return above;
    }

    /// The last element. The standard's filename of a root is empty; here a root
    /// names itself: a backslash for `C:\`, `C:` for `C:`.
    [[nodiscard]] string_type filename() const { return detail::extract_filename(pathname_); }

    /// The filename up to its last full stop. The standard takes `.bashrc` for a
    /// stem; here its stem is empty and `bashrc` is the extension.
    [[nodiscard]] string_type stem() const { return detail::extract_stem(pathname_); }

    /// What follows that full stop. The standard's includes the full stop.
    [[nodiscard]] string_type extension() const { return detail::extract_extension(pathname_); }

    /// Whether the member of that name has something in it. So a root has a filename, a bare
    /// drive has no parent, and `.bashrc` has an extension; the standard says otherwise.
    [[nodiscard]] bool has_root_name() const { return !root_name().empty(); }
    [[nodiscard]] bool has_root_directory() const { return !root_directory().empty(); }
    [[nodiscard]] bool has_root_path() const { return !root_path().empty(); }
    [[nodiscard]] bool has_relative_path() const { return !relative_path().empty(); }
    [[nodiscard]] bool has_parent_path() const { return !parent_path().empty(); }
    [[nodiscard]] bool has_filename() const { return !filename().empty(); }
    [[nodiscard]] bool has_stem() const { return !stem().empty(); }
    [[nodiscard]] bool has_extension() const { return !extension().empty(); }

    /// A drive with its backslash, or a server. The standard takes a device such as
    /// `\\.\COM1` for absolute, too; here it isn't.
    [[nodiscard]] bool is_absolute() const { return detail::is_absolute(pathname_); }
    [[nodiscard]] bool is_relative() const { return !is_absolute(); }

    /// The elements, as `detail::move_down` steps through them. The standard ends
    /// a text that ends in a separator with an empty element; here it doesn't.
    [[nodiscard]] iterator begin() const
    {
        iterator first = end();
        first.element = detail::extract_first_element(pathname_, first.root_length);
        first.position = 0;
        return first;
    }
    [[nodiscard]] iterator end() const
    {
        iterator last;
        last.root_length = detail::get_root_path_length(pathname_);
        last.owner = this;
        last.position = pathname_.size();
        return last;
    }

    /// Less than 0, 0, or more, as the text is less than that of `other`, equal, or more.
    [[nodiscard]] int compare(basic_path const &other) const noexcept
    {
        return pathname_.compare(other.pathname_);
    }

    /// By the exact texts, unit by unit and case included.
    [[nodiscard]] friend bool operator==(basic_path const &left, basic_path const &right) noexcept
    {
        return left.pathname_ == right.pathname_;
    }
    [[nodiscard]] friend bool operator!=(basic_path const &left, basic_path const &right) noexcept
    {
        return left.pathname_ != right.pathname_;
    }
    [[nodiscard]] friend bool operator<(basic_path const &left, basic_path const &right) noexcept
    {
        return left.pathname_ < right.pathname_;
    }
    [[nodiscard]] friend bool operator<=(basic_path const &left, basic_path const &right) noexcept
    {
        return left.pathname_ <= right.pathname_;
    }
    [[nodiscard]] friend bool operator>(basic_path const &left, basic_path const &right) noexcept
    {
        return left.pathname_ > right.pathname_;
    }
    [[nodiscard]] friend bool operator>=(basic_path const &left, basic_path const &right) noexcept
    {
        return left.pathname_ >= right.pathname_;
    }

private:
    friend struct detail::native_path; // with which the library itself makes paths

    /// A copy that takes `right` without being moved.
    basic_path with_room_for(string_type const &right) const
    {
        basic_path copy;
        copy.form_flag_ = form_flag_;
        copy.pathname_.reserve(pathname_.size() + 1 + right.size());
        copy.pathname_ = pathname_;
        return copy;
    }

    basic_path &join(string_type const &right, bool flag)
    {
        if (!right.empty())
            detail::concatenate_pathname(pathname_, right, flag);
        return *this;
    }

    // The layout is shared with code outside the library: the text first, then
    // the flag, nothing else.
    string_type pathname_;
    bool form_flag_ = true;
};

/// The path object of the library's interface.
using upath = basic_path<wchar_t, char16_t, detail::path_traits<wchar_t, char16_t>>;

namespace detail {

/// What becomes a path of itself but no text, and what becomes a text but no path: paths and
/// their sources, and literals and their kin. `std::u16string` becomes either.
template <typename Type>
struct is_only_path : std::bool_constant<std::is_convertible_v<Type const &, upath> &&
                                         !std::is_convertible_v<Type const &, std::u16string>>
{
};
template <typename Type>
struct is_only_text : std::bool_constant<std::is_convertible_v<Type const &, std::u16string> &&
                                         !std::is_convertible_v<Type const &, upath> &&
                                         !std::is_same_v<Type, std::nullptr_t>>
{
};

/// A path as it is, and anything else as the path that it stands for.
inline upath const &as_path(upath const &path) noexcept
{
    return path;
}
template <typename Type>
upath as_path(Type const &text)
{
    if constexpr (std::is_convertible_v<Type const &, upath>) {
        return text;
    } else {
        std::u16string const units = text;
        return upath(units);
    }
}

template <typename Left, typename Right>
using if_path_and_text = std::enable_if_t<
    std::disjunction_v<std::conjunction<std::is_same<Left, upath>, is_only_text<Right>>,
                       std::conjunction<std::is_same<Right, upath>, is_only_text<Left>>>,
    int>;

} // namespace detail

/// A path and a literal: the text is brought to native form first, so `C:\a` is `C:/a/`.
template <typename Left, typename Right, detail::if_path_and_text<Left, Right> = 0>
[[nodiscard]] bool operator==(Left const &left, Right const &right)
{
    return detail::as_path(left) == detail::as_path(right);
}
template <typename Left, typename Right, detail::if_path_and_text<Left, Right> = 0>
[[nodiscard]] bool operator!=(Left const &left, Right const &right)
{
    return detail::as_path(left) != detail::as_path(right);
}
template <typename Left, typename Right, detail::if_path_and_text<Left, Right> = 0>
[[nodiscard]] bool operator<(Left const &left, Right const &right)
{
    return detail::as_path(left) < detail::as_path(right);
}
template <typename Left, typename Right, detail::if_path_and_text<Left, Right> = 0>
[[nodiscard]] bool operator<=(Left const &left, Right const &right)
{
    return detail::as_path(left) <= detail::as_path(right);
}
template <typename Left, typename Right, detail::if_path_and_text<Left, Right> = 0>
[[nodiscard]] bool operator>(Left const &left, Right const &right)
{
    return detail::as_path(left) > detail::as_path(right);
}
template <typename Left, typename Right, detail::if_path_and_text<Left, Right> = 0>
[[nodiscard]] bool operator>=(Left const &left, Right const &right)
{
    return detail::as_path(left) >= detail::as_path(right);
}

inline namespace literals {
inline namespace path_literals {

/// The path that a literal stands for: `using namespace fl::filesystem::literals;` and
/// `u"C:/dir"_path`.
[[nodiscard]] inline upath operator""_path(char16_t const *text, std::size_t size)
{
    return upath(std::u16string(text, size));
}

} // namespace path_literals
} // namespace literals

} // namespace fl::filesystem

/// 64-bit FNV-1a over the bytes of the text, the low byte of each unit first, so
/// that a stored hash stays good. Texts that differ in case have different hashes.
template <>
struct FL_FILESYSTEM_API std::hash<fl::filesystem::upath>
{
    /// Returns the hash of the text.
    std::uint64_t operator()(fl::filesystem::upath const &path) const noexcept;
};

#endif
