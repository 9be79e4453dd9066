#include <fl/filesystem/directory.hpp>

#include <fl/filesystem/exceptions.hpp>

#include "directory/entry_record.hpp"
#include "directory/listing_form.hpp"
#include "failure/missing_codes.hpp"
#include "failure/throw.hpp"
#include "failure/win32_error.hpp"
#include "links/reparse_data.hpp"
#include "pathname/shapes.hpp"
#include "platform/attribute_query.hpp"
#include "platform/code_units.hpp"
#include "platform/reparse_point.hpp"
#include "status/file_information.hpp"
#include "status/file_time.hpp"
#include "status/permission_word.hpp"
#include "status/status.hpp"
#include "status/status_record.hpp"

#include <windows.h>

namespace fl::filesystem {

namespace detail {

bool is_link(entry_record const &record) noexcept
{
    return can_be_link(record.data.dwFileAttributes) && is_link_tag(record.reparse_tag);
}

unsigned int type_word(entry_record const &record) noexcept
{
    if (record.data.dwFileAttributes == 0)
        return file_status::file_not_found;
    if (!is_link(record))
        return plain_type(record.data);
    bool const is_symlink = record.reparse_tag == std::uint32_t{IO_REPARSE_TAG_SYMLINK};
    return is_symlink ? file_status::symlink_file : file_status::reparse_file;
}

namespace {

/// No name that a disk has is a reason to stop listing.
unsigned int perms_of(entry_record const &record)
{
    DWORD const attributes = record.data.dwFileAttributes;
    try {
        return attributes_to_perms(record.form, attributes);
    } catch (foundation::ustring::CtypeInvalidCharacter const &) {
        return attributes_to_perms(L"", attributes);
    }
}

/// The tag, asked of the name itself; 0 where it can't be read, which then counts as no link.
DWORD read_tag(std::wstring const &form, DWORD attributes) noexcept
{
    windows::reparse_data_context data;
    bool const is_reparse_point = (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
    if (!is_reparse_point || read_reparse_data(data, form) != ERROR_SUCCESS)
        return 0;
    return reparse_tag(data);
}

/// Asks for the state of the name itself.
void look_up(entry_record &record)
{
    attribute_query const query(record.form);
    if (query.has_failed && !is_missing_for_status(query.code, record.form.size()))
        throw_win32_exception(query.code, widen(record.text));
    record.data = query.data;
    record.reparse_tag = read_tag(record.form, query.data.dwFileAttributes);
}

std::shared_ptr<entry_record const> record_of(upath const &p)
{
    auto record = std::make_shared<entry_record>();
    record->form = make_listing_form(p);
    record->text = p.native();
    record->name = p.filename();
    record->path = p;
    look_up(*record);
    return record;
}

} // namespace

} // namespace detail

directory_entry::directory_entry() noexcept = default;

directory_entry::directory_entry(upath const &p) : record_(detail::record_of(p)) {}

directory_entry::directory_entry(std::u16string const &p) : directory_entry(upath(p)) {}

directory_entry::directory_entry(std::shared_ptr<detail::entry_record const> record) noexcept
    : record_(std::move(record))
{
}

detail::entry_record const &directory_entry::record() const noexcept
{
    static detail::entry_record const none;
    return record_ ? *record_ : none;
}

int directory_entry::compare(directory_entry const &other) const noexcept
{
    return record().text.compare(other.record().text);
}

upath const &directory_entry::path() const noexcept
{
    return record().path;
}

directory_entry::operator upath const &() const
{
    if (!is_nameable())
        detail::throw_exception(
            InvalidArgument("The name ends in a full stop or blank", record().text, {}));
    return path();
}

std::u16string directory_entry::filename() const
{
    return record().name;
}

std::wstring directory_entry::access_form() const
{
    return record().form;
}

bool directory_entry::is_nameable() const noexcept
{
    return !detail::loses_its_end<char16_t>(record().name);
}

file_status directory_entry::known() const
{
    detail::entry_record const &known = record();
    unsigned int const type = detail::type_word(known);
    if (type == file_status::file_not_found)
        return file_status();
    WIN32_FILE_ATTRIBUTE_DATA const &data = known.data;
    return file_status(type, detail::perms_of(known), detail::to_ptime(data.ftLastAccessTime),
                       detail::to_ptime(data.ftLastWriteTime),
                       detail::to_ptime(data.ftCreationTime),
                       detail::join_halves(data.nFileSizeHigh, data.nFileSizeLow));
}

std::uint32_t directory_entry::attributes() const noexcept
{
    return record().data.dwFileAttributes;
}

std::uint32_t directory_entry::reparse_tag() const noexcept
{
    return record().reparse_tag;
}

bool directory_entry::is_symlink() const noexcept
{
    return detail::type_word(record()) == file_status::symlink_file;
}

bool directory_entry::is_junction() const noexcept
{
    return detail::type_word(record()) == file_status::reparse_file;
}

unsigned int directory_entry::followed_type() const
{
    return detail::is_link(record()) ? status().get_type() : detail::type_word(record());
}

void directory_entry::demand_existence() const
{
    if (detail::type_word(record()) == file_status::file_not_found)
        detail::throw_exception(PathNotFound(record().text));
}

bool directory_entry::exists() const
{
    return followed_type() != file_status::file_not_found;
}

bool directory_entry::is_directory() const
{
    return followed_type() == file_status::directory_file;
}

bool directory_entry::is_regular_file() const
{
    return followed_type() == file_status::regular_file;
}

bool directory_entry::is_other() const
{
    return exists() && !is_directory() && !is_regular_file();
}

std::uint64_t directory_entry::file_size() const
{
    detail::entry_record const &known = record();
    if (detail::is_link(known))
        return detail::demand_size(detail::demand_file_information(known.form, known.text),
                                   known.text);
    demand_existence();
    if ((known.data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0)
        detail::throw_exception(FileIsDirectory(known.text));
    return detail::join_halves(known.data.nFileSizeHigh, known.data.nFileSizeLow);
}

file_time_type directory_entry::last_write_time() const
{
    detail::entry_record const &known = record();
    if (detail::is_link(known)) {
        auto const info = detail::demand_file_information(known.form, known.text);
        return detail::to_file_time(info.ftLastWriteTime);
    }
    demand_existence();
    return detail::to_file_time(known.data.ftLastWriteTime);
}

file_status directory_entry::status() const
{
    if (record().form.empty())
        return file_status();
    return detail::status_or_not_found([this] { return detail::status_at(record().form); });
}

file_status directory_entry::symlink_status() const
{
    if (record().form.empty())
        return file_status();
    return detail::status_or_not_found([this] { return detail::symlink_status_at(record().form); });
}

void directory_entry::refresh()
{
    if (record().form.empty())
        return;
    auto fresh = std::make_shared<detail::entry_record>(record());
    detail::look_up(*fresh);
    record_ = std::move(fresh);
}

} // namespace fl::filesystem
