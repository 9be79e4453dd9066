#include "directory/directory_walk.hpp"

#include <fl/filesystem/exceptions.hpp>

#include "directory/entry_record.hpp"
#include "directory/joined_name.hpp"
#include "failure/missing_codes.hpp"
#include "failure/throw.hpp"
#include "failure/win32_error.hpp"
#include "pathname/native_path.hpp"
#include "platform/code_units.hpp"
#include "platform/limits.hpp"
#include "standard/opening.hpp"

#include <algorithm>
#include <utility>

namespace fl::filesystem::detail {

namespace {

bool is_denied(DWORD code) noexcept
{
    return code == ERROR_ACCESS_DENIED || code == ERROR_CANT_ACCESS_FILE;
}

constexpr std::size_t pattern_end_size = 2; // the backslash and the asterisk

/// The system also answers "path not found" to a pathname beyond its length limit.
bool is_too_long(DWORD code, std::size_t size) noexcept
{
    return code == ERROR_FILENAME_EXCED_RANGE ||
           (code == ERROR_PATH_NOT_FOUND && size > longest_pathname);
}

} // namespace

directory_walk::directory_walk(upath const &p, directory_options options, walk_depth depth)
    : options_(options), reach_(depth), path_(p)
{
    begin();
}

bool directory_walk::has(directory_options asked) const noexcept
{
    return (options_ & asked) != directory_options::none;
}

void directory_walk::begin()
{
    DWORD code = open_level();
    // the root of an empty drive: it has no dots, so that nothing matches the pattern
    if (code == ERROR_FILE_NOT_FOUND) {
        code = standard::open_target(path_.form).code;
        if (code == ERROR_SUCCESS)
            return;
    }
    if (!levels_.empty())
        settle();
    else if (!is_denied(code) || !has(directory_options::skip_permission_denied))
        fail(code);
}

void directory_walk::advance()
{
    try {
        bool const enters = std::exchange(recursion_pending, true) && enters_entry();
        if (!enters || !enter())
            read_next();
        settle();
    } catch (...) {
        close();
        throw;
    }
}

void directory_walk::pop()
{
    try {
        recursion_pending = true;
        levels_.pop_back();
        if (levels_.empty())
            return close();
        restore();
        read_next();
        settle();
    } catch (...) {
        close();
        throw;
    }
}

bool directory_walk::enters_entry() const
{
    entry_record const &record = entry_.record();
    bool const is_directory = (record.data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    return reach_ == walk_depth::whole_tree && is_directory &&
           (!is_link(record) || has(directory_options::follow_directory_symlink));
}

/// Begins to list the entry, and returns whether there is something to list.
bool directory_walk::enter()
{
    path_.append(entry_.record().name);
    std::size_t const depth = levels_.size();
    DWORD const code = open_level();
    if (levels_.size() > depth)
        return true;
    bool const is_passed_over =
        is_missing_for_entering(code, path_.form.size() + pattern_end_size) ||
        (is_denied(code) && has(directory_options::skip_permission_denied));
    if (!is_passed_over)
        fail(code);
    restore();
    return false;
}

/// Adds the directory at hand to the levels, or returns why it can't be listed.
DWORD directory_walk::open_level()
{
    level opened;
    opened.size = path_.size();
    if (has(directory_options::follow_directory_symlink)) {
        std::error_code ec;
        if (!standard::read_identity(path_.form, opened.identity, ec))
            return static_cast<DWORD>(ec.value());
        if (is_on_the_way(opened.identity))
            fail(ERROR_DS_LOOP_DETECT);
    }
    std::wstring const pattern = listing_pattern(path_.form);
    opened.search = standard::begin_search(found_, pattern, FIND_FIRST_EX_LARGE_FETCH);
    if (!opened.search)
        return found_.end_code();
    levels_.push_back(std::move(opened));
    return ERROR_SUCCESS;
}

bool directory_walk::is_on_the_way(standard::file_identity const &identity) const
{
    return std::any_of(levels_.begin(), levels_.end(),
                       [&](level const &above) { return above.identity == identity; });
}

/// Goes on until there is an entry, or nothing.
void directory_walk::settle()
{
    while (!levels_.empty()) {
        if (!found_.is_there())
            leave();
        else if (is_dot_name(found_.name()))
            read_next();
        else
            return take_entry();
    }
    close();
}

/// Ends the directory at hand, which has no more entries.
void directory_walk::leave()
{
    if (found_.end_code() != ERROR_NO_MORE_FILES)
        fail(found_.end_code());
    levels_.pop_back();
    if (levels_.empty())
        return;
    restore();
    read_next();
}

/// Makes the directory of the last level the one at hand.
void directory_walk::restore()
{
    path_.resize(levels_.back().size);
}

void directory_walk::read_next()
{
    standard::next_entry(found_, levels_.back().search);
}

void directory_walk::take_entry()
{
    entry_record &record = next_record();
    WIN32_FIND_DATAW const &data = found_.data();
    assign_units(record.name, found_.name());
    record.form.reserve(path_.form.size() + 1 + record.name.size());
    join_name(record.form = path_.form, record.name);
    record.text.reserve(path_.text.size() + 1 + record.name.size());
    join_name(record.text = path_.text, record.name);
    assign_native_form(record.path, record.text);
    record.data = {data.dwFileAttributes, data.ftCreationTime, data.ftLastAccessTime,
                   data.ftLastWriteTime,  data.nFileSizeHigh,  data.nFileSizeLow};
    // of what isn't a reparse point the field means nothing
    bool const is_reparse_point = (data.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
    record.reparse_tag = is_reparse_point ? data.dwReserved0 : 0;
}

/// The record of the entry to come: that of the one before, with its memory, unless somebody has
/// kept that entry.
entry_record &directory_walk::next_record()
{
    entry_ = directory_entry();
    if (!record_ || record_.use_count() != 1)
        record_ = std::make_shared<entry_record>();
    // taken ahead of any change: whoever let go of the record on another thread has read it
    entry_ = directory_entry(record_);
    return *record_;
}

void directory_walk::fail(DWORD code) const
{
    if (is_too_long(code, path_.form.size() + pattern_end_size))
        throw_exception(FileNameTooLarge(path_.text));
    throw_win32_exception(code, widen(path_.text));
}

void directory_walk::close() noexcept
{
    while (!levels_.empty()) // the deepest first
        levels_.pop_back();
    entry_ = directory_entry();
}

} // namespace fl::filesystem::detail
