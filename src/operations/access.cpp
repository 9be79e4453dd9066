#include <fl/filesystem/operations.hpp>

#include <fl/filesystem/exceptions.hpp>
#include <fl/filesystem/pathname.hpp>
#include <fl/filesystem/windows.hpp>

#include "failure/throw.hpp"
#include "failure/win32_error.hpp"
#include "links/reparse_data.hpp"
#include "platform/attribute_query.hpp"
#include "platform/owned_handle.hpp"
#include "status/link_hop.hpp"
#include "status/permission_word.hpp"

#include <windows.h>

#include <optional>

namespace fl::filesystem {

namespace {

constexpr unsigned int all_modes = access_exists | access_read | access_write | access_execute;

/// Reads on a network ask for attributes only: servers keep their files open for one
/// another, and what they let the caller read they say at the time.
DWORD desired_access(unsigned int mode, bool is_remote)
{
    DWORD desired = 0; // opens a name without any right to what is in it
    if ((mode & access_read) != 0)
        desired |= is_remote ? FILE_READ_ATTRIBUTES : GENERIC_READ;
    if ((mode & access_write) != 0)
        desired |= FILE_WRITE_ATTRIBUTES;
    if ((mode & access_execute) != 0 && !is_remote)
        desired |= GENERIC_EXECUTE;
    return desired;
}

/// Whether the system opens `path`. Why it doesn't is not asked.
bool access_probe(std::wstring const &path, unsigned int mode)
{
    constexpr DWORD share = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    DWORD const desired = desired_access(mode, detail::is_on_network(path));
    detail::file_handle const file(::CreateFileW(
        path.c_str(), desired, share, nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    return static_cast<bool>(file);
}

/// The probe, and what the system doesn't hold the caller to: a read-only file can be
/// opened for writing attributes, and any file for executing.
bool access_test(std::wstring const &path, unsigned int mode, DWORD attributes)
{
    bool const is_directory = (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    bool const wants_execution = (mode & access_execute) != 0;
    if (is_directory && !wants_execution)
        return access_probe(path, mode);
    if (!access_probe(path, mode))
        return false;
    unsigned int const perms = detail::attributes_to_perms(path, attributes);
    if ((perms & detail::write_bits) == 0 && (mode & access_write) != 0)
        return false;
    return (perms & detail::exec_bits) != 0 || !wants_execution;
}

bool answer_for_missing(unsigned int mode)
{
    if ((mode & access_exists) != 0)
        return false;
    detail::throw_exception(PathNotFound());
}

bool access_at(std::wstring path, unsigned int mode)
{
    for (int depth = 0;; ++depth) {
        detail::check_link_depth(depth, path);
        detail::attribute_query const query(path);
        if (query.has_failed) {
            detail::throw_unless_missing(query.code, path);
            return answer_for_missing(mode);
        }
        DWORD const attributes = query.data.dwFileAttributes;
        detail::windows::reparse_data_context data;
        if (!detail::read_link_data(data, path, attributes) || detail::is_on_network(path))
            return access_test(path, mode, attributes);
        detail::decoded_link hop = detail::hop_from(path, data);
        if (hop.type == detail::windows::link_type_volume_mount) // answers for itself
            return access_test(path, mode, attributes);
        if (!hop.target)
            return answer_for_missing(mode);
        path = *std::move(hop.target);
    }
}

bool access_text(std::u16string const &path, unsigned int mode)
{
    if (path.empty())
        detail::throw_invalid_argument("Empty Path not permitted");
    if (mode == 0 || mode > all_modes)
        detail::throw_invalid_argument("Unsupported Access Mode");
    bool const asks_existence = (mode & access_exists) != 0;
    try {
        return access_at(detail::windows::make_native_access_form_bridge(path), mode);
    } catch (PathNotFound const &) {
        if (!asks_existence)
            throw;
    } catch (AccessDenied const &) {
        if (asks_existence) // nobody could say
            throw;
    }
    return false;
}

} // namespace

bool access(upath const &p, unsigned int mode)
{
    return access_text(p.native(), mode);
}

bool access(std::u16string const &p, unsigned int mode)
{
    return access_text(detail::make_native_form(p, true), mode);
}

} // namespace fl::filesystem
