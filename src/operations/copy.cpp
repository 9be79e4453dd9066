#include <fl/filesystem/operations.hpp>

#include <fl/filesystem/copy_progress.hpp>
#include <fl/filesystem/exceptions.hpp>

#include "access/filesystem_form.hpp"
#include "failure/filesystem_error.hpp"
#include "failure/throw.hpp"
#include "operations/forms_of_two.hpp"
#include "platform/code_units.hpp"
#include "standard/filesystem.hpp"

#include <algorithm>
#include <cstdint>
#include <string_view>

namespace fl::filesystem {

namespace {

using std::filesystem::copy_options;

void validate_copy_options(copy_options options)
{
    auto const has = [options](copy_options asked) {
        return (options & asked) != copy_options::none;
    };
    if (has(copy_options::copy_symlinks) && has(copy_options::skip_symlinks))
        detail::throw_invalid_argument("Invalid combination selected: copy_symlinks & "
                                       "skip_symlinks cannot be used together");
    int const ways = int{has(copy_options::skip_existing)} +
                     int{has(copy_options::overwrite_existing)} +
                     int{has(copy_options::update_existing)};
    // users match these words, although the enumerator has another name
    if (ways > 1)
        detail::throw_invalid_argument("Invalid combination selected: overwrite_if_exists, "
                                       "skip_existing & update_existing cannot be used together");
}

/// `given` with what stands in `reached` behind its first `size` units, those of the string
/// that `given` went to the system as.
std::u16string shown_as(upath const &given, std::wstring const &reached, std::size_t size)
{
    std::wstring_view below = std::wstring_view(reached).substr(std::min(size, reached.size()));
    std::u16string text = given.native();
    if (below.empty())
        return text;
    if (below[0] == L'\\')
        below.remove_prefix(1);
    if (text.back() != u'\\' && text.back() != u':')
        text += u'\\';
    return text += detail::narrow(below);
}

} // namespace

void copy(upath const &from, upath const &to, copy_options options)
{
    validate_copy_options(options);
    detail::call_with_forms(
        from, to,
        [options](std::wstring const &source, std::wstring const &target, std::error_code &ec) {
            detail::standard::copy(source, target, options, ec);
        });
}

void copy(std::u16string const &from, std::u16string const &to, copy_options options)
{
    copy(upath(from), upath(to), options);
}

bool copy(upath const &from, upath const &to, copy_options options,
          std::function<bool(copy_progress const &)> const &callback)
{
    validate_copy_options(options);
    bool is_complete = false;
    detail::call_with_forms(
        from, to, [&](std::wstring const &source, std::wstring const &target, std::error_code &ec) {
            std::uint64_t names = 0;
            auto const tell = [&](std::wstring const &source_now, std::wstring const &target_now) {
                if (!callback)
                    return true;
                std::u16string const shown_from = shown_as(from, source_now, source.size());
                std::u16string const shown_to = shown_as(to, target_now, target.size());
                return callback({shown_from, shown_to, ++names});
            };
            is_complete = detail::standard::copy(source, target, options, ec, tell);
        });
    return is_complete;
}

bool copy(std::u16string const &from, std::u16string const &to, copy_options options,
          std::function<bool(copy_progress const &)> const &callback)
{
    return copy(upath(from), upath(to), options, callback);
}

void copy_file(upath const &from, upath const &to, copy_options options)
{
    validate_copy_options(options);
    detail::call_with_forms(
        from, to,
        [options](std::wstring const &source, std::wstring const &target, std::error_code &ec) {
            detail::standard::copy_file(source, target, options, ec);
        });
}

void copy_file(std::u16string const &from, std::u16string const &to, copy_options options)
{
    copy_file(upath(from), upath(to), options);
}

void copy_directory(upath const &from, upath const &to)
{
    if (from.empty() || to.empty())
        detail::throw_invalid_argument("Empty Path not permitted");
    std::error_code ec;
    std::filesystem::file_type const type =
        detail::standard::status(detail::make_filesystem_form(from), ec).type();
    if (type == std::filesystem::file_type::directory) {
        detail::standard::create_directory(detail::make_filesystem_form(to), ec);
        detail::throw_on_filesystem_error(ec, from, to);
        return;
    }
    detail::throw_on_filesystem_error(ec, from);
    detail::throw_exception(NotDirectoryError(from.native()));
}

void copy_directory(std::u16string const &from, std::u16string const &to)
{
    copy_directory(upath(from), upath(to));
}

} // namespace fl::filesystem
