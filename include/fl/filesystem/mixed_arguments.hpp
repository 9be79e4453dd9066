#ifndef FL_FILESYSTEM_MIXED_ARGUMENTS_HPP
#define FL_FILESYSTEM_MIXED_ARGUMENTS_HPP
// Public. Operations called with a path and a literal, which have no common type: the
// operations of operations.hpp on paths, by a name with the literal made into one. Included by
// operations.hpp; header-only.
//
// No template here takes a call that compiles without it, since each wants one argument that
// becomes a path and no text, and another that becomes a text and no path. `{}` is neither, so
// `rename(p, {})` means what it meant. A `std::filesystem::path` is left to the standard
// library, whose own operations such calls find.

#include <fl/filesystem/operations.hpp>
#include <fl/filesystem/path.hpp>

#include <filesystem>
#include <string>
#include <string_view>
#include <type_traits>

namespace fl::filesystem {

namespace detail {

template <typename First, typename Second>
struct are_mixed : std::conjunction<is_only_path<First>, is_only_text<Second>,
                                    std::negation<std::is_same<First, std::filesystem::path>>>
{
};

template <typename First, typename Second>
using if_mixed =
    std::enable_if_t<std::disjunction_v<are_mixed<First, Second>, are_mixed<Second, First>>, int>;

/// A text of the kinds that `std::filesystem::copy` takes as well, which copy options bring
/// into a call without a namespace. What operations.hpp has is a better match for a
/// `std::u16string` and another or a literal; the rest would be ambiguous.
template <typename Text>
struct is_text_of_both
    : std::disjunction<std::is_same<Text, std::u16string>, std::is_same<Text, std::u16string_view>,
                       std::is_same<Text, std::wstring>, is_only_text<Text>>
{
};

template <typename First, typename Second>
struct is_ambiguous
    : std::conjunction<
          is_text_of_both<First>, is_text_of_both<Second>,
          std::negation<std::disjunction<are_mixed<First, Second>, are_mixed<Second, First>>>,
          std::disjunction<is_only_path<First>, is_only_path<Second>,
                           std::conjunction<is_only_text<First>, is_only_text<Second>>>>
{
};

/// The options are deduced, so that `{}` stays what it is.
template <typename First, typename Second, typename Options>
using if_ambiguous =
    std::enable_if_t<std::conjunction_v<std::is_same<Options, std::filesystem::copy_options>,
                                        is_ambiguous<First, Second>>,
                     int>;

/// One literal becomes what a call with two of them takes.
template <typename Other, typename Type>
decltype(auto) as_argument(Type const &text)
{
    if constexpr (is_only_text<Type>::value && is_only_text<Other>::value)
        return std::u16string(text);
    else
        return as_path(text);
}

} // namespace detail

template <typename First, typename Second, detail::if_mixed<First, Second> = 0>
[[nodiscard]] upath absolute(First const &p, Second const &base)
{
    return absolute(detail::as_path(p), detail::as_path(base));
}

template <typename First, typename Second, detail::if_mixed<First, Second> = 0>
void rename(First const &from, Second const &to)
{
    rename(detail::as_path(from), detail::as_path(to));
}

template <typename First, typename Second, detail::if_mixed<First, Second> = 0>
void copy(First const &from, Second const &to,
          std::filesystem::copy_options options = std::filesystem::copy_options::none)
{
    copy(detail::as_path(from), detail::as_path(to), options);
}
template <typename First, typename Second, typename Options,
          detail::if_ambiguous<First, Second, Options> = 0>
void copy(First const &from, Second const &to, Options options)
{
    filesystem::copy(detail::as_argument<Second>(from), detail::as_argument<First>(to), options);
}

template <typename First, typename Second, detail::if_mixed<First, Second> = 0>
void copy_file(First const &from, Second const &to,
               std::filesystem::copy_options options = std::filesystem::copy_options::none)
{
    copy_file(detail::as_path(from), detail::as_path(to), options);
}
template <typename First, typename Second, typename Options,
          detail::if_ambiguous<First, Second, Options> = 0>
void copy_file(First const &from, Second const &to, Options options)
{
    filesystem::copy_file(detail::as_argument<Second>(from), detail::as_argument<First>(to),
                          options);
}

template <typename First, typename Second, detail::if_mixed<First, Second> = 0>
void copy_directory(First const &from, Second const &to)
{
    copy_directory(detail::as_path(from), detail::as_path(to));
}

template <typename First, typename Second, detail::if_mixed<First, Second> = 0>
void create_symlink(First const &target, Second const &link, unsigned int type)
{
    create_symlink(detail::as_path(target), detail::as_path(link), type);
}

template <typename First, typename Second, detail::if_mixed<First, Second> = 0>
void copy_symlink(First const &existing, Second const &new_link)
{
    copy_symlink(detail::as_path(existing), detail::as_path(new_link));
}

template <typename First, typename Second, detail::if_mixed<First, Second> = 0>
void create_shortcut(First const &target, Second const &shortcut)
{
    create_shortcut(detail::as_path(target), detail::as_path(shortcut));
}

template <typename First, typename Second, detail::if_mixed<First, Second> = 0>
[[nodiscard]] upath canonical(First const &p, Second const &base)
{
    return canonical(detail::as_path(p), detail::as_path(base));
}

template <typename First, typename Second, detail::if_mixed<First, Second> = 0>
[[nodiscard]] upath relative(First const &p, Second const &base)
{
    return relative(detail::as_path(p), detail::as_path(base));
}

template <typename First, typename Second, detail::if_mixed<First, Second> = 0>
[[nodiscard]] bool equivalent(First const &p1, Second const &p2)
{
    return equivalent(detail::as_path(p1), detail::as_path(p2));
}

// The operations that take only a path, or only a text, called with the other.

template <typename Text, std::enable_if_t<detail::is_only_text<Text>::value, int> = 0>
[[nodiscard]] space_info space(Text const &p)
{
    return space(detail::as_path(p));
}

template <typename Path, std::enable_if_t<detail::is_only_path<Path>::value, int> = 0>
[[nodiscard]] file_status_light status_express_light(Path const &p)
{
    return status_express_light(detail::as_path(p).native());
}

} // namespace fl::filesystem

#endif
