#include <fl/filesystem/pathname_traits.hpp>

#include "platform/code_units.hpp"

namespace fl::filesystem {

template <typename Char>
pathname_traits<Char> &pathname_traits<Char>::operator=(pathname_traits const &) noexcept = default;

template <typename Char>
pathname_traits<Char> &pathname_traits<Char>::operator=(pathname_traits &&) noexcept = default;

template <typename Char>
std::wstring pathname_traits<Char>::to_filesystem(std::basic_string<Char> const &text)
{
    return detail::copy_units<wchar_t>(std::basic_string_view<Char>(text));
}

template <typename Char>
std::basic_string<Char> pathname_traits<Char>::from_filesystem(std::wstring const &text)
{
    return detail::copy_units<Char>(std::wstring_view(text));
}

template <typename Char>
std::basic_string<Char>
pathname_traits<Char>::replace_tilde_with_home_dir(std::basic_string<Char> const &text)
{
    return text;
}

template struct FL_FILESYSTEM_TEMPLATE_INSTANTIATION pathname_traits<char16_t>;
template struct FL_FILESYSTEM_TEMPLATE_INSTANTIATION pathname_traits<wchar_t>;

// Their values are in the header; these are the objects that the library exports
// for code that takes an address. GCC for Windows exports no other; for other compilers
// the header says enough.
constexpr char16_t const *upath_constant::GENERIC_PATHNAME_SEPARATOR;
constexpr char16_t const *upath_constant::PATHNAME_SEPARATOR;
constexpr char16_t const *upath_constant::PATH_SEPARATOR;
constexpr char16_t const *upath_constant::FILE_EXTENSION_SEPARATOR;
constexpr char16_t const *upath_constant::CURRENT_DIRECTORY;
constexpr char16_t const *upath_constant::PARENT_DIRECTORY;
constexpr char16_t const *upath_constant::WILD_CARD;

} // namespace fl::filesystem
