#ifndef FL_FILESYSTEM_SRC_ACCESS_ABSOLUTE_HPP
#define FL_FILESYSTEM_SRC_ACCESS_ABSOLUTE_HPP
// What stands behind the operation `absolute` and every form for the system.

#include <fl/filesystem/path.hpp>

#include "pathname/native_form.hpp"
#include "platform/filled_buffer.hpp"

#include <string_view>

namespace fl::filesystem::detail {

/// Returns `p` joined to `base` if `p` isn't absolute and `base` isn't empty. Else
/// returns a copy of `p`, also if it can't be joined, as `\foo` can't. Throws
/// `InvalidArgument` "Invalid path type for base path" if a base is needed and
/// isn't absolute.
upath join_with_base(upath const &p, upath const &base);

/// The same without a copy: `p` itself, or what it is joined to in `joined`.
upath const &join_with_base(upath const &p, upath const &base, upath &joined);

/// The operation `absolute`, for those whom an operation is made of.
upath make_absolute(upath const &p, upath const &base = upath());

/// The same of what is joined already, for those who make a string for the system of it.
class absolute_text
{
public:
    explicit absolute_text(std::u16string_view joined);

    /// In native form.
    std::wstring_view view() const { return native_.view(); }

private:
    text_buffer buffer_;
    native_text<wchar_t> native_;
};

} // namespace fl::filesystem::detail

#endif
