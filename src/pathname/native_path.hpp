#ifndef FL_FILESYSTEM_SRC_PATHNAME_NATIVE_PATH_HPP
#define FL_FILESYSTEM_SRC_PATHNAME_NATIVE_PATH_HPP
// Paths out of texts in native form. (A path brings every text to native form on the way in,
// which takes time, and of what stood behind a prefix it makes another one.)

#include <fl/filesystem/path.hpp>

#include "pathname/native_form.hpp"

#include <string>
#include <string_view>
#include <utility>

namespace fl::filesystem::detail {

struct native_path
{
    static std::u16string &text_of(upath &path) noexcept { return path.pathname_; }
};

/// The path that holds just this text.
inline upath path_of_native(std::u16string &&text)
{
    upath path;
    native_path::text_of(path) = std::move(text);
    return path;
}

/// The same as `path = upath(text)`; takes memory only if `path` hasn't enough.
inline void assign_native_form(upath &path, std::u16string_view text)
{
    native_text<char16_t>(text).move_into(native_path::text_of(path));
}

} // namespace fl::filesystem::detail

#endif
