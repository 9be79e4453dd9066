#include <fl/filesystem/removal.hpp>

#include <fl/filesystem/exceptions.hpp>

#include "directory/joined_name.hpp"
#include "directory/listed_pathname.hpp"
#include "failure/missing_codes.hpp"
#include "failure/win32_error.hpp"
#include "platform/attribute_query.hpp"
#include "platform/code_units.hpp"
#include "platform/found_entry.hpp"
#include "platform/owned_handle.hpp"
#include "standard/codes.hpp"
#include "standard/marking.hpp"
#include "standard/opening.hpp"

#include <windows.h>

#include <utility>

namespace fl::filesystem {

namespace detail {

struct removal_settings
{
    bool clears_read_only = false;
    bool keeps_going = false;
    bool holds = true;
    std::function<bool(removal_progress const &)> callback;
};

struct removal_record
{
    std::uint64_t removed = 0;
    std::vector<failure> failures;
    bool was_stopped = false;
};

namespace {

/// A directory that is being emptied. While `directory` is held nobody can delete or rename it,
/// so that pathnames through it lead where they did.
struct held_level
{
    file_handle directory;
    find_handle search; ///< closes first
    listed_pathname::extent size;
    bool keeps_something = false; ///< after a failure that is told already
};

/// Removes a name with all that is in it. The levels of the tree stand in a list, since trees can
/// be deeper than stacks.
class held_remover
{
public:
    held_remover(upath const &p, removal_settings const &settings) : settings_(settings), path_(p)
    {
    }
    held_remover(held_remover const &) = delete;
    held_remover &operator=(held_remover const &) = delete;
    ~held_remover();

    removal_record run();

private:
    void take_root();
    void take_entry();
    void take(DWORD attributes);
    void descend(file_handle directory);
    void ascend();
    void read_next();
    void restore();
    bool is_astray(file_handle const &file);
    void mark(file_handle file);
    void fail(DWORD code);

    removal_settings const &settings_;
    removal_record record_;
    listed_pathname path_; ///< of what is at hand
    bool knows_place_ = false;
    std::vector<held_level> levels_;
    found_entry found_;
};

/// Whether a directory's entries are to be removed ahead of it: those of a link are another's.
bool holds_entries(DWORD attributes)
{
    constexpr DWORD asked = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT;
    return (attributes & asked) == FILE_ATTRIBUTE_DIRECTORY;
}

/// Opens the name itself, to delete it. What is held isn't shared for deletion.
standard::opened_file open_for_deletion(std::wstring const &form, bool is_held)
{
    constexpr DWORD flags = FILE_FLAG_BACKUP_SEMANTICS | FILE_FLAG_OPEN_REPARSE_POINT;
    DWORD const share =
        FILE_SHARE_READ | FILE_SHARE_WRITE | (is_held ? 0 : DWORD{FILE_SHARE_DELETE});
    return standard::opened_by([&] {
        return ::CreateFileW(form.c_str(), DELETE | FILE_READ_ATTRIBUTES, share, nullptr,
                             OPEN_EXISTING, flags, nullptr);
    });
}

held_remover::~held_remover()
{
    while (!levels_.empty()) // the deepest first
        levels_.pop_back();
}

removal_record held_remover::run()
{
    take_root();
    while (!levels_.empty() && !record_.was_stopped) {
        if (found_.is_there())
            take_entry();
        else
            ascend();
    }
    return std::move(record_);
}

void held_remover::take_root()
{
    attribute_query const query(path_.form);
    if (query.has_failed)
        fail(query.code);
    else
        take(query.data.dwFileAttributes);
}

void held_remover::take_entry()
{
    if (!is_dot_name(found_.name())) {
        path_.append(found_.name());
        std::size_t const depth = levels_.size();
        take(found_.attributes());
        if (levels_.size() > depth || record_.was_stopped)
            return;
        restore();
    }
    read_next();
}

/// Removes what is at hand, or begins to empty it.
void held_remover::take(DWORD attributes)
{
    auto [file, code] = open_for_deletion(path_.form, settings_.holds && holds_entries(attributes));
    if (!file) {
        if (levels_.empty() || !is_missing_for_entering(code, path_.form.size()))
            fail(code);
        return;
    }
    if (is_astray(file))
        return;
    if (!holds_entries(attributes))
        return mark(std::move(file));
    FILE_ATTRIBUTE_TAG_INFO info = {};
    if (DWORD const why = standard::get_information(file, FileAttributeTagInfo, info);
        why != ERROR_SUCCESS)
        fail(why);
    else if (holds_entries(info.FileAttributes))
        descend(std::move(file));
    else
        mark(std::move(file)); // it has become a link, or a file
}

/// Whether the way to what was opened led out of the tree, or may have: a directory above can
/// become a link although it is open. The place of the first directory is the measure, where
/// the system can tell it.
bool held_remover::is_astray(file_handle const &file)
{
    if (!levels_.empty() && !knows_place_)
        return false;
    std::error_code ec;
    std::wstring place = standard::final_path(file, ec);
    if (levels_.empty()) {
        knows_place_ = !ec;
        if (knows_place_)
            path_.form = std::move(place);
        return false;
    }
    if (ec)
        fail(static_cast<DWORD>(ec.value()));
    return ec || place != path_.form;
}

void held_remover::descend(file_handle directory)
{
    held_level level;
    level.directory = std::move(directory);
    level.size = path_.size();
    std::wstring const pattern = listing_pattern(path_.form);
    level.search = standard::begin_search(found_, pattern, FIND_FIRST_EX_LARGE_FETCH);
    if (found_.end_code() == ERROR_FILE_NOT_FOUND) // an empty root has no dots either
        found_.end(ERROR_NO_MORE_FILES);
    levels_.push_back(std::move(level));
}

/// Ends the directory at hand, which has no more entries.
void held_remover::ascend()
{
    held_level ended = std::move(levels_.back());
    levels_.pop_back();
    ended.search = find_handle();
    if (found_.end_code() != ERROR_NO_MORE_FILES)
        fail(found_.end_code());
    else if (!ended.keeps_something)
        mark(std::move(ended.directory));
    else if (!levels_.empty())
        levels_.back().keeps_something = true;
    if (levels_.empty())
        return;
    restore();
    read_next();
}

/// Makes the directory of the last level what is at hand.
void held_remover::restore()
{
    path_.resize(levels_.back().size);
}

void held_remover::read_next()
{
    standard::next_entry(found_, levels_.back().search);
}

void held_remover::mark(file_handle file)
{
    auto const rule = settings_.clears_read_only ? standard::read_only_names::are_removed
                                                 : standard::read_only_names::are_refused;
    if (DWORD const code = standard::mark_for_deletion(file, rule); code != ERROR_SUCCESS)
        return fail(code);
    file = file_handle(); // where names aren't free at once, they are when it is closed
    ++record_.removed;
    if (settings_.callback && !settings_.callback({path_.text, record_.removed}))
        record_.was_stopped = true;
}

void held_remover::fail(DWORD code)
{
    if (!levels_.empty())
        levels_.back().keeps_something = true;
    try {
        throw_win32_exception(code, widen(path_.text));
    } catch (FsysExceptionBase const &exception) {
        if (!settings_.keeps_going)
            throw;
        // some name nobody when they are thrown, but here they say what is left
        record_.failures.emplace_back(
            FsysExceptionBase(exception.what(), exception.get_excp_id(), path_.text,
                              exception.get_additional_path_names(), exception.get_error_code()));
    }
}

} // namespace

} // namespace detail

removal_options::removal_options() : settings_(std::make_shared<detail::removal_settings>()) {}

namespace {

template <typename Change>
std::shared_ptr<detail::removal_settings const> changed(detail::removal_settings settings,
                                                        Change change)
{
    change(settings);
    return std::make_shared<detail::removal_settings>(std::move(settings));
}

} // namespace

removal_options &removal_options::clear_read_only(bool clears)
{
    settings_ = changed(*settings_, [=](auto &settings) { settings.clears_read_only = clears; });
    return *this;
}

removal_options &removal_options::keep_going(bool keeps)
{
    settings_ = changed(*settings_, [=](auto &settings) { settings.keeps_going = keeps; });
    return *this;
}

removal_options &removal_options::hold(bool holds)
{
    settings_ = changed(*settings_, [=](auto &settings) { settings.holds = holds; });
    return *this;
}

removal_options &
removal_options::on_progress(std::function<bool(removal_progress const &)> callback)
{
    settings_ = changed(*settings_,
                        [&callback](auto &settings) { settings.callback = std::move(callback); });
    return *this;
}

removal_report::removal_report(std::shared_ptr<detail::removal_record const> record) noexcept
    : record_(std::move(record))
{
}

std::uint64_t removal_report::removed() const noexcept
{
    return record_->removed;
}

std::vector<failure> const &removal_report::failures() const noexcept
{
    return record_->failures;
}

bool removal_report::was_stopped() const noexcept
{
    return record_->was_stopped;
}

removal_report remove_all(upath const &p, removal_options const &options)
{
    detail::removal_record record;
    if (!p.empty())
        record = detail::held_remover(p, options.settings()).run();
    return removal_report(std::make_shared<detail::removal_record>(std::move(record)));
}

removal_report remove_all(std::u16string const &p, removal_options const &options)
{
    return remove_all(upath(p), options);
}

} // namespace fl::filesystem
