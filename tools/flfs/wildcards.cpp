#include "flfs/wildcards.hpp"

#include <fl/filesystem/attempt.hpp>
#include <fl/filesystem/directory.hpp>
#include <fl/filesystem/operations.hpp>
#include <fl/filesystem/queries.hpp>

#include "flfs/failure_report.hpp"

#include <windows.h>

#include <algorithm>

namespace flfs {

namespace fs = fl::filesystem;

namespace {

constexpr char16_t const *wildcards = u"*?";

bool is_same_unit(char16_t one, char16_t other)
{
    auto const left = static_cast<wchar_t>(one);
    auto const right = static_cast<wchar_t>(other);
    return one == other || ::CompareStringOrdinal(&left, 1, &right, 1, TRUE) == CSTR_EQUAL;
}

bool is_directory(std::u16string const &pathname)
{
    bool is_one = false;
    static_cast<void>(failure_of([&] { is_one = fs::is_directory(pathname); }));
    return is_one;
}

bool is_there(std::u16string const &pathname)
{
    bool is = false;
    static_cast<void>(
        failure_of([&] { is = fs::file_status::exists(fs::symlink_status(pathname)); }));
    return is;
}

/// Each name in `directory` that `pattern` stands for, behind `directory`.
void add_matches(std::vector<std::u16string> &all, fs::upath const &directory,
                 std::u16string_view pattern)
{
    fs::upath const listed = directory.empty() ? fs::upath(u".") : directory;
    static_cast<void>(failure_of([&] {
        for (fs::directory_entry const &entry : fs::directory_iterator(listed))
            if (matches(pattern, entry.filename()))
                all.push_back((directory / fs::upath(entry.filename())).native());
    }));
}

} // namespace

bool has_wildcard(std::u16string const &pathname)
{
    return fs::upath(pathname).relative_path().find_first_of(wildcards) != std::u16string::npos;
}

bool matches(std::u16string_view pattern, std::u16string_view name)
{
    if (pattern == u"*.*")
        return true;
    // where to go on if what follows the last `*` doesn't fit: it takes one unit more
    std::size_t star = pattern.npos;
    std::size_t star_end = 0;
    std::size_t at = 0;
    for (std::size_t in_name = 0; in_name < name.size();) {
        if (at < pattern.size() && pattern[at] == u'*') {
            star = at++;
            star_end = in_name;
        } else if (at < pattern.size() &&
                   (pattern[at] == u'?' || is_same_unit(pattern[at], name[in_name]))) {
            ++at;
            ++in_name;
        } else if (star != pattern.npos) {
            at = star + 1;
            in_name = ++star_end;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of(u'*', at) == pattern.npos;
}

std::vector<std::u16string> expanded(std::u16string const &pathname)
{
    fs::upath const native(pathname);
    std::u16string const relative = native.relative_path();
    std::vector<std::u16string> all = {native.root_path()};
    for (std::u16string_view rest = relative; !rest.empty();) {
        std::size_t const end = std::min(rest.find(u'\\'), rest.size());
        std::u16string const element(rest.substr(0, end));
        rest.remove_prefix(std::min(end + 1, rest.size()));
        std::vector<std::u16string> longer;
        for (std::u16string const &one : all) {
            if (element.find_first_of(wildcards) != element.npos)
                add_matches(longer, fs::upath(one), element);
            else
                longer.push_back((fs::upath(one) / fs::upath(element)).native());
        }
        all = std::move(longer);
    }
    // below what a wildcard stood for, not each has the names behind it
    std::erase_if(all, [](std::u16string const &one) { return !is_there(one); });
    if (pathname.back() == u'\\' || pathname.back() == u'/')
        std::erase_if(all, [](std::u16string const &one) { return !is_directory(one); });
    return all;
}

} // namespace flfs
