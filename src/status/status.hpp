#ifndef FL_FILESYSTEM_SRC_STATUS_STATUS_HPP
#define FL_FILESYSTEM_SRC_STATUS_STATUS_HPP
// What stands behind the queries `status`, `symlink_status` and `status_express_light`.

#include <fl/filesystem/exceptions.hpp>
#include <fl/filesystem/file_status.hpp>

#include <string>

namespace fl::filesystem::detail {

/// The operation `status`: of what `path` finally leads to.
file_status status_of(std::u16string const &path);

/// The operation `symlink_status`: of the name itself.
file_status symlink_status_of(std::u16string const &path);

/// The same for a string that went to the system already. Throws also what is no failure to
/// a status: see `status_or_not_found`.
file_status symlink_status_at(std::wstring const &path);

/// The same of what `path` finally leads to.
file_status status_at(std::wstring path);

/// That of the name itself, which has to be there: else throws what the code stands for.
file_status demand_symlink_status(std::wstring const &path);

/// Returns what `query` does. A status is no failure for a name that isn't there, nor for one
/// that can't be.
template <typename Query>
file_status status_or_not_found(Query query)
{
    try {
        return query();
    } catch (PathNotFound const &) {
        return file_status();
    } catch (InvalidArgument const &) {
        return file_status();
    }
}

/// The operation `status_express_light`, of a text that is not cleaned.
file_status_light express_status_of(std::u16string const &path);

} // namespace fl::filesystem::detail

#endif
