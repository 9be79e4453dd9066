#include "access/absolute.hpp"

#include <fl/filesystem/exceptions.hpp>

#include "failure/throw.hpp"
#include "failure/win32_error.hpp"
#include "pathname/native_path.hpp"
#include "platform/code_units.hpp"
#include "platform/wide_text.hpp"
#include "standard/filesystem.hpp"

namespace fl::filesystem::detail {

namespace {

/// What the process's current directories make of `text`, as the system writes it. Throws what
/// the code of a failure stands for, naming `named`.
std::wstring_view expand(std::u16string_view text, std::u16string_view named, text_buffer &buffer)
{
    if (text.empty())
        return {};
    std::error_code ec;
    std::wstring_view const full = standard::absolute(wide_text(text).c_str(), buffer, ec);
    if (ec.value() != 0)
        throw_win32_exception(static_cast<unsigned int>(ec.value()), widen(named));
    return full;
}

} // namespace

upath const &join_with_base(upath const &p, upath const &base, upath &joined)
{
    if (base.empty() || standard::is_absolute<char16_t>(p.native()))
        return p;
    if (!standard::is_absolute<char16_t>(base.native()))
        throw_invalid_argument("Invalid path type for base path");
    try {
        return joined = base / p;
    } catch (InvalidArgument const &) {
        return p; // a drive or a backslash ahead: the current directories must do
    }
}

upath join_with_base(upath const &p, upath const &base)
{
    upath joined;
    return join_with_base(p, base, joined);
}

upath make_absolute(upath const &p, upath const &base)
{
    upath joined;
    std::u16string const &text = join_with_base(p, base, joined).native();
    text_buffer buffer;
    return path_of_native(narrow_native_form(expand(text, p.native(), buffer)));
}

absolute_text::absolute_text(std::u16string_view joined) : native_(expand(joined, joined, buffer_))
{
}

} // namespace fl::filesystem::detail
