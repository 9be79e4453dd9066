#include "status/status.hpp"

#include <fl/filesystem/exceptions.hpp>
#include <fl/filesystem/pathname_traits.hpp>

#include "failure/missing_codes.hpp"
#include "failure/win32_error.hpp"
#include "pathname/long_prefix.hpp"
#include "platform/attribute_query.hpp"
#include "platform/code_units.hpp"
#include "platform/limits.hpp"
#include "status/link_hop.hpp"
#include "status/status_record.hpp"

namespace fl::filesystem::detail {

namespace {

/// Callers who ask about many files pay for no cleaning of their texts.
std::wstring express_form(std::u16string const &path)
{
    std::u16string_view const prefix = pathname_traits<char16_t>::LONG_PATHNAME_PREFIX;
    bool const is_long = path.size() > longest_bare_pathname;
    if (is_long && path.compare(0, prefix.size(), prefix) != 0)
        return add_long_prefix<wchar_t, char16_t>(path);
    return widen(path);
}

file_status_light express_at(std::wstring path)
{
    for (int depth = 0;; ++depth) {
        check_link_depth(depth, path);
        attribute_query const query(path);
        // a missing file is an answer here, and no exception is thrown on its account
        if (query.has_told_code()) {
            if (is_missing_for_status(query.code, path.size()))
                return file_status_light();
            throw_win32_exception(query.code, path);
        }
        std::optional<std::wstring> next = next_hop(path, query.data.dwFileAttributes);
        if (!next)
            return make_light_record(query.data);
        path = *std::move(next);
    }
}

} // namespace

file_status_light express_status_of(std::u16string const &path)
{
    if (path.empty())
        return file_status_light();
    std::wstring form = express_form(path);
    try {
        return express_at(std::move(form));
    } catch (PathNotFound const &) {
        return file_status_light();
    } catch (InvalidArgument const &) {
        return file_status_light();
    }
}

} // namespace fl::filesystem::detail
