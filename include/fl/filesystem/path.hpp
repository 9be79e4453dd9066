#ifndef FL_FILESYSTEM_PATH_HPP
#define FL_FILESYSTEM_PATH_HPP
// Public. The path object `upath`: a pathname in native form, as a value.
// Header-only over the text functions of pathname.hpp; asks the system nothing.

#include <fl/filesystem/config.hpp>
#include <fl/filesystem/pathname.hpp>

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string> // std::hash, too
#include <utility>

namespace fl::filesystem {

template <typename Native, typename Portable, typename Traits>
class basic_path;

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

    reference operator*() const noexcept { return element; }
    pointer operator->() const noexcept { return &element; }

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
    using value_type = Portable;
    using string_type = std::basic_string<Portable>;
    using iterator = basic_path_iterator<basic_path>;
    using const_iterator = iterator;

    /// The empty path.
    basic_path() = default;

    /// The native form of `text`. Fails on no text. Implicit, but not from a
    /// literal: a call with `u"..."` picks the text overload of an operation.
    /// `flag` is carried with the object and changes no behaviour.
    basic_path(string_type const &text, bool flag = true) : form_flag_(flag) { *this = text; }

    /// Takes the native form of `text`; the flag stays.
    basic_path &operator=(string_type const &text)
    {
        if (text.empty())
            pathname_.clear();
        else
            pathname_ = detail::make_native_form(text, form_flag_);
        return *this;
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

    friend basic_path operator/(basic_path const &left, basic_path const &right)
    {
        basic_path joined = left;
        joined /= right;
        return joined;
    }
    friend basic_path operator/(basic_path const &left, string_type const &right)
    {
        basic_path joined = left;
        joined /= right;
        return joined;
    }

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

    void swap(basic_path &other) noexcept
    {
        pathname_.swap(other.pathname_);
        std::swap(form_flag_, other.form_flag_);
    }
    friend void swap(basic_path &left, basic_path &right) noexcept { left.swap(right); }

    /// The text. The standard's has the system's character type; this one's is
    /// `char16_t`.
    string_type const &native() const noexcept { return pathname_; }

    /// A copy of the text.
    string_type u16string() const { return pathname_; }

    /// The text in the system's character type, code unit for code unit.
    std::basic_string<Native> wstring() const
    {
        return std::basic_string<Native>(pathname_.begin(), pathname_.end());
    }

    /// The text with forward slashes.
    string_type generic_u16string() const { return detail::make_generic_form(pathname_); }

    /// The flag that was given to the constructor.
    bool form_flag() const noexcept { return form_flag_; }

    bool empty() const noexcept { return pathname_.empty(); }

    /// `C:` of `C:\dir`, `\\server` of `\\server\share`.
    string_type root_name() const { return detail::extract_root_name(pathname_); }
    string_type root_directory() const { return detail::extract_root_directory(pathname_); }
    string_type root_path() const { return detail::extract_root_path(pathname_); }
    string_type relative_path() const { return detail::extract_relative_path(pathname_); }

    /// The text without its last element. The standard's parent of a root is the
    /// root itself; here that of `C:\` is `C:`, and that of `C:` is empty.
    string_type parent_path() const { return detail::extract_parent_path(pathname_); }

    /// The last element. The standard's filename of a root is empty; here a root
    /// names itself: a backslash for `C:\`, `C:` for `C:`.
    string_type filename() const { return detail::extract_filename(pathname_); }

    /// The filename up to its last full stop. The standard takes `.bashrc` for a
    /// stem; here its stem is empty and `bashrc` is the extension.
    string_type stem() const { return detail::extract_stem(pathname_); }

    /// What follows that full stop. The standard's includes the full stop.
    string_type extension() const { return detail::extract_extension(pathname_); }

    /// A drive with its backslash, or a server. The standard takes a device such as
    /// `\\.\COM1` for absolute, too; here it isn't.
    bool is_absolute() const { return detail::is_absolute(pathname_); }
    bool is_relative() const { return !is_absolute(); }

    /// The elements, as `detail::move_down` steps through them. The standard ends
    /// a text that ends in a separator with an empty element; here it doesn't.
    iterator begin() const
    {
        iterator first = end();
        first.element = detail::extract_first_element(pathname_, first.root_length);
        first.position = 0;
        return first;
    }
    iterator end() const
    {
        iterator last;
        last.root_length = detail::get_root_path_length(pathname_);
        last.owner = this;
        last.position = pathname_.size();
        return last;
    }

    friend bool operator==(basic_path const &left, basic_path const &right) noexcept
    {
        return left.pathname_ == right.pathname_;
    }
    friend bool operator!=(basic_path const &left, basic_path const &right) noexcept
    {
        return left.pathname_ != right.pathname_;
    }
    friend bool operator<(basic_path const &left, basic_path const &right) noexcept
    {
        return left.pathname_ < right.pathname_;
    }

private:
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

} // namespace fl::filesystem

/// 64-bit FNV-1a over the bytes of the text, the low byte of each unit first, so
/// that a stored hash stays good. Texts that differ in case have different hashes.
template <>
struct FL_FILESYSTEM_API std::hash<fl::filesystem::upath>
{
    std::uint64_t operator()(fl::filesystem::upath const &path) const noexcept;
};

#endif
