#include "differential/intended.hpp"

#include "differential/executor.hpp"
#include "support/text.hpp"

#include <simulation/machine.hpp>

#include <algorithm>
#include <concepts>

namespace differential {

using test_support::units;
using test_support::wide;

namespace {

bool is_literal(std::u16string_view path)
{
    return path.starts_with(u"\\\\?\\");
}

/// In upper case as far as the vocabulary goes: Latin letters and the first Cyrillic ones.
char16_t upper(char16_t unit)
{
    bool const is_lower = (unit >= u'a' && unit <= u'z') || (unit >= 0xE0 && unit <= 0xFE) ||
                          (unit >= 0x430 && unit <= 0x44F);
    return is_lower ? static_cast<char16_t>(unit - 0x20) : unit;
}

} // namespace

bool is_same_name(std::u16string_view left, std::u16string_view right)
{
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](char16_t one, char16_t other) { return upper(one) == upper(other); });
}

std::u16string situation::text(std::size_t index) const
{
    return units(expand(one.texts.at(index), number));
}

std::u16string situation::full(std::size_t index) const
{
    simulation::simulated_machine machine;
    machine.set_edition(simulation::edition::windows_10_1809);
    machine.add_directory(directory).set_current_directory(directory);
    std::wstring buffer(40000, L'\0');
    DWORD const room = static_cast<DWORD>(buffer.size());
    buffer.resize(::GetFullPathNameW(wide(text(index)).c_str(), room, buffer.data(), nullptr));
    return units(buffer);
}

std::u16string situation::bare(std::size_t index) const
{
    std::u16string const given = text(index);
    return is_literal(given) ? given.substr(4) : full(index);
}

std::size_t situation::pathnames() const
{
    return one.what == function::write_file || one.what == function::set_variable
               ? 1
               : one.texts.size();
}

std::u16string situation::place(std::size_t index) const
{
    std::u16string path = bare(index);
    if (path.size() > 3 && path.ends_with(u'\\'))
        path.pop_back();
    return path;
}

entry const *situation::there(std::size_t index) const
{
    std::u16string const path = place(index);
    auto const found = std::find_if(standing.begin(), standing.end(), [&](entry const &one_there) {
        return is_same_name(units(one_there.pathname), path);
    });
    return found == standing.end() ? nullptr : &*found;
}

namespace {

std::u16string bare_path(situation const &here, std::size_t index = 0)
{
    return here.bare(index);
}

/// Whether `test(index)` is true for a pathname of the step.
template <typename Test>
bool any_pathname(situation const &here, Test test)
{
    for (std::size_t index = 0; index < here.pathnames(); ++index) {
        if (test(index))
            return true;
    }
    return false;
}

std::vector<std::u16string> names_of(std::u16string const &path)
{
    std::vector<std::u16string> names;
    std::size_t begin = std::min<std::size_t>(3, path.size());
    while (begin < path.size()) {
        std::size_t const end = std::min(path.find(u'\\', begin), path.size());
        names.push_back(path.substr(begin, end - begin));
        begin = end + 1;
    }
    return names;
}

template <typename Test>
bool any_name(situation const &here, Test test)
{
    return any_pathname(here, [&](std::size_t index) {
        auto const names = names_of(bare_path(here, index));
        return std::any_of(names.begin(), names.end(), test);
    });
}

/// Or, behind a long prefix, a name that only a treatment would resolve.
bool has_a_bad_unit(situation const &here)
{
    return any_name(here, [](std::u16string const &name) {
        if (name.empty() || name == u"." || name == u"..")
            return true;
        return std::any_of(name.begin(), name.end(), [](char16_t unit) {
            return unit < 0x20 ||
                   std::u16string_view(u"<>\"/|?*").find(unit) != std::u16string::npos;
        });
    });
}

bool has_a_colon(situation const &here)
{
    return any_name(
        here, [](std::u16string const &name) { return name.find(u':') != std::u16string::npos; });
}

bool has_a_name_too_long(situation const &here)
{
    return any_name(here, [](std::u16string const &name) { return name.size() > 255; });
}

bool is_below_missing_drive(situation const &here)
{
    return any_pathname(here, [&](std::size_t index) {
        std::u16string const path = bare_path(here, index);
        return path.starts_with(u"Q:\\") && path.size() > 3;
    });
}

bool is_root_of_drive(situation const &here)
{
    return any_pathname(here, [&](std::size_t index) { return bare_path(here, index) == u"C:\\"; });
}

bool is_blank(situation const &here)
{
    return here.text().find_first_not_of(u' ') == std::u16string::npos;
}

bool is_file(entry const *one)
{
    return one != nullptr && !one->is_directory;
}

bool is_file_with_separator(situation const &here)
{
    return any_pathname(here, [&](std::size_t index) {
        return bare_path(here, index).ends_with(u'\\') && is_file(here.there(index));
    });
}

/// Without a long prefix, and with more units than `longest` allows.
bool exceeds(situation const &here, std::size_t longest)
{
    return any_pathname(here, [&](std::size_t index) {
        return !is_literal(here.text(index)) && here.full(index).size() > longest;
    });
}

bool is_long_for_a_directory(situation const &here)
{
    return exceeds(here, 247);
}

bool is_long_for_standing_in(situation const &here)
{
    return exceeds(here, here.full().ends_with(u'\\') ? 258 : 257);
}

bool is_long(situation const &here)
{
    return exceeds(here, 259);
}

bool is_variable_of_q(situation const &here)
{
    return here.text() == u"=Q:" || here.text() == u"=q:";
}

bool is_separator(char16_t unit)
{
    return unit == u'\\' || unit == u'/';
}

/// The names between the separators of a text, none of them resolved.
std::vector<std::u16string> names_in(std::u16string const &text)
{
    std::vector<std::u16string> names(1);
    for (char16_t const unit : text) {
        if (is_separator(unit))
            names.emplace_back();
        else
            names.back() += unit;
    }
    return names;
}

bool is_two_units_of_a_drive(situation const &here)
{
    std::u16string const text = here.text();
    return text.size() == 2 && text[1] == u':';
}

/// Dots lead from below a share to the share itself.
bool goes_up_to_a_share(situation const &here)
{
    std::u16string const text = here.text();
    bool const is_below = text.starts_with(u"\\\\s\\t\\") || text.starts_with(u"//s/t/");
    return is_below && here.full() == u"\\\\s\\t";
}

bool theirs_has_a_backslash_more(situation const &, std::string const &ours,
                                 std::string const &theirs)
{
    return ours.ends_with('"') && theirs == ours.substr(0, ours.size() - 1) + "\\\"";
}

/// A name that isn't the last one ends in several full stops, and is more than dots that
/// lead up.
bool has_stops_within(situation const &here)
{
    std::vector<std::u16string> names = names_in(here.text());
    names.pop_back();
    return std::any_of(names.begin(), names.end(), [](std::u16string const &name) {
        return name.size() > 2 && name.ends_with(u"..");
    });
}

/// One full stop less at the end of names within, of those that end in several.
bool theirs_has_fewer_stops(situation const &, std::string const &ours, std::string const &theirs)
{
    std::string expected = ours;
    for (std::size_t at = 0; (at = expected.find("..\\", at)) != std::string::npos;)
        expected.erase(at, 1);
    return expected == theirs;
}

bool truncates_without_writing(situation const &here)
{
    return here.one.numbers[3] == TRUNCATE_EXISTING && (here.one.numbers[1] & GENERIC_WRITE) == 0;
}

/// Without the flag that opens directories.
bool is_directory_with_separator(situation const &here)
{
    bool const has_flag = here.one.what == function::open_handle &&
                          (here.one.numbers[4] & FILE_FLAG_BACKUP_SEMANTICS) != 0;
    bool const is_there = is_root_of_drive(here) || here.there() != nullptr;
    return !has_flag && is_there && bare_path(here).ends_with(u'\\');
}

constexpr std::uint32_t shown_attributes =
    FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM;

std::uint32_t attributes_there(situation const &here, std::size_t index)
{
    auto const *const held = here.there(index);
    return held == nullptr ? 0 : held->attributes & shown_attributes;
}

bool is_directory_there(situation const &here, std::size_t index)
{
    auto const *const held = here.there(index);
    return held != nullptr && held->is_directory;
}

/// Cutting a directory that is to be deleted on the close.
bool fails_to_replace_what_goes(situation const &here)
{
    auto const &numbers = here.one.numbers;
    bool const cuts = numbers[3] == CREATE_ALWAYS || numbers[3] == TRUNCATE_EXISTING;
    return cuts && (numbers[4] & FILE_FLAG_DELETE_ON_CLOSE) != 0 && is_directory_there(here, 0);
}

bool copies_onto_itself(situation const &here)
{
    return attributes_there(here, 0) != 0 && is_same_name(here.bare(0), here.bare(1));
}

/// And goes nowhere.
bool moves_what_it_stands_in(situation const &here)
{
    std::u16string const from = here.place(0);
    return is_same_name(from, here.place(1)) && here.directory.size() > from.size() &&
           is_same_name(std::u16string_view(here.directory).substr(0, from.size()), from);
}

bool has_a_colon_second(situation const &here)
{
    std::u16string const text = here.text();
    return text.starts_with(u"\\:") || text.starts_with(u"/:");
}

bool ours_is_the_null_device(situation const &, std::string const &ours, std::string const &theirs)
{
    return ours == "ok \"\\\\.\\nul\"" && theirs.starts_with("ok \"C:\\:nul");
}

bool is_read_only_there(situation const &here)
{
    return (attributes_there(here, 0) & FILE_ATTRIBUTE_READONLY) != 0;
}

bool is_second_read_only(situation const &here)
{
    return (attributes_there(here, 1) & FILE_ATTRIBUTE_READONLY) != 0;
}

bool cuts_and_gives_attributes(situation const &here)
{
    return here.one.numbers[0] == CREATE_ALWAYS &&
           attributes_there(here, 0) != (here.one.numbers[1] & shown_attributes);
}

/// Wine keeps no read-only directories. What stands on drive Q: is one, noted in a variable.
bool makes_directory_read_only(situation const &here)
{
    bool const is_directory =
        is_directory_there(here, 0) || is_root_of_drive(here) || here.text().starts_with(u"Q:");
    return is_directory && (here.one.numbers[0] & FILE_ATTRIBUTE_READONLY) != 0;
}

/// The name on the disk is the new one in other cases.
bool has_new_name_in_other_case(situation const &here)
{
    auto const *const held = here.there(1);
    if (held == nullptr)
        return false;
    std::u16string const path = here.place(1);
    std::u16string const name = units(held->pathname);
    return name.substr(name.rfind(u'\\')) != path.substr(path.rfind(u'\\'));
}

bool copies_attributes_over_others(situation const &here)
{
    return is_file(here.there(1)) && attributes_there(here, 0) != attributes_there(here, 1);
}

bool is_search_below_file(situation const &here)
{
    std::u16string path = bare_path(here);
    path.resize(std::min(path.rfind(u'\\'), path.size()));
    return std::any_of(here.standing.begin(), here.standing.end(), [&](entry const &held) {
        return !held.is_directory && is_same_name(units(held.pathname), path);
    });
}

bool is_search_for(situation const &here, std::u16string_view name)
{
    std::u16string const path = bare_path(here);
    return path.substr(path.rfind(u'\\') + 1) == name;
}

bool is_search_for_one_unit(situation const &here)
{
    return is_search_for(here, u"?");
}

/// Behind a long prefix, where nothing has resolved them.
bool is_search_for_two_stops(situation const &here)
{
    return is_search_for(here, u"..");
}

bool theirs_is_found_by_stops(situation const &, std::string const &ours, std::string const &theirs)
{
    return ours == "failed 2" && theirs == "ok [\"..\" 16]";
}

/// The same for one full stop.
bool is_search_for_a_stop(situation const &here)
{
    return is_search_for(here, u".");
}

bool theirs_is_found_by_stop(situation const &, std::string const &ours, std::string const &theirs)
{
    return ours == "failed 2" && theirs == "ok [\".\" 16]";
}

bool theirs_takes_a_slash(situation const &here, std::string const &ours, std::string const &theirs)
{
    std::u16string const path = bare_path(here);
    std::string const name = quoted(path.substr(path.rfind(u'\\') + 1));
    return path.ends_with(u'/') && ours == "failed 123" && theirs == "ok [" + name + " 16]";
}

/// Somebody has the directory open and might delete it.
bool is_search_in_held(situation const &here)
{
    std::u16string path = bare_path(here);
    path.resize(std::min(path.rfind(u'\\'), path.size()));
    return std::any_of(here.held.begin(), here.held.end(), [&](open_name const &one) {
        return one.might_delete && is_same_name(one.pathname, path);
    });
}

bool is_search_in_their_way(situation const &, std::string const &ours, std::string const &theirs)
{
    return ours.starts_with("ok [") && theirs == "failed 32";
}

bool is_search_with_separator(situation const &here)
{
    return bare_path(here).ends_with(u'\\');
}

/// Takes an entry of that name out of an answer. Returns whether there was one.
bool take_out(std::string &answer, std::string const &name)
{
    std::size_t const at = answer.find(" [\"" + name + "\" ");
    if (at == std::string::npos)
        return false;
    answer.erase(at, answer.find(']', at) + 1 - at);
    return true;
}

/// ` ["." 16]` more, in newer ones ` [".." 16]` behind it, and behind nothing `ok` ahead of it.
bool theirs_has_itself_more(situation const &, std::string const &ours, std::string const &theirs)
{
    std::string rest = theirs;
    if (!take_out(rest, "."))
        return false;
    take_out(rest, "..");
    return rest == (ours == "failed 2" ? "ok" : ours);
}

/// By a pattern, in the root of the drive.
bool is_search_in_root(situation const &here)
{
    std::u16string const path = bare_path(here);
    return path.rfind(u'\\') == 2 && path.find_first_of(u"*?") != std::u16string::npos;
}

/// Something that isn't of the test.
bool theirs_finds_their_own(situation const &, std::string const &ours, std::string const &theirs)
{
    return ours == "failed 2" && theirs == "ok";
}

/// `C:` alone is the current directory itself.
bool is_drive_alone(situation const &here)
{
    return here.text() == u"C:";
}

bool ours_is_the_directory(situation const &here, std::string const &ours,
                           std::string const &theirs)
{
    std::u16string const &path = here.directory;
    std::wstring const name = wide(path.substr(path.rfind(u'\\') + 1));
    return ours.starts_with("ok [" + shown(name, here.number) + " 16") && theirs == "failed 2";
}

/// Right below, or deeper.
bool moves_into_itself(situation const &here)
{
    std::u16string const from = bare_path(here, 0) + u'\\';
    std::u16string const to = bare_path(here, 1);
    std::size_t const size = from.ends_with(u"\\\\") ? from.size() - 1 : from.size();
    return to.size() > size && is_same_name(to.substr(0, size), from.substr(0, size));
}

/// Or over an empty directory, which Wine deletes as well.
bool moves_into_itself_over_another(situation const &here)
{
    bool const replaces = (here.one.numbers[0] & MOVEFILE_REPLACE_EXISTING) != 0;
    return replaces && here.there(1) != nullptr && moves_into_itself(here);
}

bool is_second_with_separator(situation const &here)
{
    return bare_path(here, 1).ends_with(u'\\');
}

bool is_first_with_separator(situation const &here)
{
    return bare_path(here, 0).ends_with(u'\\');
}

bool is_directory_there_first(situation const &here)
{
    return is_directory_there(here, 0) || is_root_of_drive(here);
}

/// The place right above that of the new name, which hard links tell first.
std::u16string above_new_name(situation const &here)
{
    std::u16string const path = here.place(here.one.what == function::create_hard_link ? 0 : 1);
    return path.substr(0, path.find_last_of(u'\\'));
}

bool is_new_name_below_file(situation const &here)
{
    std::u16string const above = above_new_name(here);
    return std::any_of(here.standing.begin(), here.standing.end(), [&](entry const &one) {
        return !one.is_directory && is_same_name(units(one.pathname), above);
    });
}

bool is_bad_name_below_file(situation const &here)
{
    return has_a_bad_unit(here) && is_new_name_below_file(here);
}

bool is_in_held_directory(situation const &here)
{
    std::u16string const above = above_new_name(here);
    return std::any_of(here.held.begin(), here.held.end(),
                       [&](open_name const &one) { return is_same_name(one.pathname, above); });
}

/// Two files of the same content may be one with two names.
bool are_one_file_perhaps(situation const &here)
{
    entry const *const from = here.there(0);
    entry const *const to = here.there(1);
    return is_file(from) && is_file(to) && !is_same_name(here.place(0), here.place(1)) &&
           from->content == to->content;
}

bool is_second_hidden(situation const &here)
{
    return (attributes_there(here, 1) & FILE_ATTRIBUTE_HIDDEN) != 0;
}

/// CREATE_ALWAYS, and the attributes asked for leave out what the file is.
bool replaces_hidden_or_system(situation const &here)
{
    auto const &numbers = here.one.numbers;
    bool const writes = here.one.what == function::write_file;
    constexpr std::uint32_t kept = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM;
    return numbers[writes ? 0 : 3] == CREATE_ALWAYS && is_file(here.there()) &&
           (attributes_there(here, 0) & kept & ~numbers[writes ? 1 : 4]) != 0;
}

/// Somebody has something open below what is to move.
bool moves_what_is_open_below(situation const &here)
{
    std::u16string const above = here.place(0) + u'\\';
    return std::any_of(here.held.begin(), here.held.end(), [&](open_name const &one) {
        std::u16string_view const name = one.pathname;
        return name.size() > above.size() && is_same_name(name.substr(0, above.size()), above);
    });
}

bool waits_for_its_deletion(situation const &here)
{
    return any_pathname(here, [&](std::size_t index) {
        return std::any_of(here.held.begin(), here.held.end(), [&](open_name const &one) {
            return one.is_waiting && is_same_name(one.pathname, here.place(index));
        });
    });
}

/// The process itself has its current directory open.
bool replaces_directory_it_stands_in(situation const &here)
{
    DWORD const disposition = here.one.numbers[3];
    return (disposition == CREATE_ALWAYS || disposition == TRUNCATE_EXISTING) &&
           is_same_name(here.place(), here.directory);
}

/// What a success says of the attributes, with the size of a file if `has_size`.
std::string facts_there(entry const &one, bool has_size)
{
    std::string text = std::to_string(one.attributes & compared_attributes);
    return has_size && !one.is_directory ? text + ' ' + std::to_string(one.content.size()) : text;
}

bool is_failed(std::string const &answer)
{
    return answer == "failed 3" || answer == "failed 5";
}

bool theirs_has_what_is_there(situation const &here, std::string const &ours,
                              std::string const &theirs)
{
    bool const has_size = here.one.what == function::get_attributes_ex;
    entry const *const held = here.there();
    return held != nullptr && is_failed(ours) && theirs == "ok " + facts_there(*held, has_size);
}

bool theirs_has_the_content(situation const &here, std::string const &ours,
                            std::string const &theirs)
{
    entry const *const held = here.there();
    return is_file(held) && is_failed(ours) &&
           theirs == "ok " + quoted(std::u16string(held->content.begin(), held->content.end()));
}

bool theirs_finds_the_name(situation const &here, std::string const &ours,
                           std::string const &theirs)
{
    entry const *const held = here.there();
    if (held == nullptr || ours != "failed 3")
        return false;
    std::wstring const name = held->pathname.substr(held->pathname.rfind(L'\\') + 1);
    return theirs == "ok [" + shown(name, here.number) + ' ' + facts_there(*held, true) + ']';
}

/// One or more functions.
class functions
{
public:
    constexpr explicit functions(std::same_as<function> auto... all) : bits_((0U | ... | bit(all)))
    {
    }

    constexpr bool have(function one) const { return (bits_ & bit(one)) != 0; }

    constexpr functions but(std::same_as<function> auto... left_out) const
    {
        functions others = *this;
        others.bits_ &= ~functions(left_out...).bits_;
        return others;
    }

private:
    static constexpr std::uint32_t bit(function one)
    {
        return std::uint32_t{1} << static_cast<unsigned int>(one);
    }

    std::uint32_t bits_;
};

/// Entries that differ in the function alone.
struct row
{
    functions made;
    bool (*is_it)(situation const &here);
    char const *ours;
    char const *theirs;
    aftermath effect;
    char const *reason;
    bool (*are_they)(situation const &here, std::string const &ours,
                     std::string const &theirs) = nullptr;
};

using f = function;
using of = functions;

/// All that look for the name on a disk.
constexpr functions lookups(f::create_directory, f::remove_directory, f::get_attributes,
                            f::set_current_directory, f::write_file, f::read_file, f::open_handle,
                            f::delete_file, f::move_file, f::copy_file, f::create_hard_link,
                            f::set_attributes, f::get_attributes_ex, f::enumerate);

constexpr row rows[] = {
    {lookups, has_a_bad_unit, "failed 3", "failed 123", aftermath::same,
     "Windows meets names in their turn, and a directory above is missing; Wine looks at the "
     "whole text first"},
    {lookups.but(f::enumerate), is_below_missing_drive, "failed 3", "failed 2", aftermath::same,
     "without the drive there is no directory above"},
    {of(f::create_directory), has_a_colon, "failed 267", "ok", aftermath::differs,
     "Windows sees a stream, which is no directory; Wine sees a name"},
    {of(f::create_directory, f::remove_directory, f::set_current_directory, f::enumerate),
     has_a_colon, "failed 267", "failed 3", aftermath::same,
     "a stream is no directory; Wine finds nothing of that name"},
    {of(f::create_directory, f::remove_directory, f::set_current_directory, f::enumerate),
     has_a_colon, "failed 267", "failed 2", aftermath::same,
     "a stream is no directory; Wine finds nothing of that name"},
    {of(f::open_handle, f::write_file), is_directory_there_first, "failed 5", "failed 80",
     aftermath::same,
     "a directory is told as one before the name is told as taken; Wine only finds it there"},
    {of(f::open_handle, f::write_file), is_directory_there_first, "failed 3", "failed 80",
     aftermath::same,
     "a directory with a separator behind it is no file; Wine only finds it there"},
    {of(f::write_file), has_a_colon, "failed 123", "ok", aftermath::differs,
     "Windows sees a stream, Wine a name"},
    {of(f::write_file), has_a_colon, "failed 123", "ok, new", aftermath::differs,
     "Windows sees a stream, Wine a name"},
    {of(f::open_handle, f::move_file, f::copy_file, f::create_hard_link), has_a_colon, "failed 123",
     "ok", aftermath::differs, "Windows sees a stream, Wine a name"},
    {lookups, has_a_colon, "failed 123", "failed 3", aftermath::same,
     "the name with the colon is refused; Wine finds nothing of that name"},
    {lookups.but(f::create_directory), has_a_colon, "failed 123", "failed 2", aftermath::same,
     "the name with the colon is refused; Wine finds nothing of that name"},
    {of(f::create_directory), is_root_of_drive, "failed 5", "failed 183", aftermath::same,
     "nobody makes the root of a drive, which Wine only finds there"},
    {of(f::remove_directory), is_root_of_drive, "failed 5", "failed 145", aftermath::same,
     "nobody removes the root of a drive, of which Wine only says that it is not empty"},
    {of(f::remove_directory), is_blank, "failed 3", "failed 123", aftermath::same,
     "no text is no pathname; Wine finds the name wrong"},
    {of(f::get_attributes, f::get_attributes_ex), is_file_with_separator, "failed 123", "failed 3",
     aftermath::same,
     "a file with a separator behind it is a wrong name; Wine looks for a directory"},
    {of(f::remove_directory), is_file_with_separator, "failed 123", "failed 267", aftermath::same,
     "a file with a separator behind it is a wrong name; newer Wines find it in the place of a "
     "directory"},
    {of(f::set_current_directory), is_file_with_separator, "failed 267", "failed 123",
     aftermath::same,
     "Windows finds a file in the place of a directory; Wine finds the name wrong"},
    {of(f::create_directory), is_long_for_a_directory, "failed 206", "ok", aftermath::differs,
     "248 units are too many without a long prefix; Wine knows no limit"},
    {of(f::create_directory), is_long_for_a_directory, "failed 206", "failed 2", aftermath::same,
     "the length comes first; Wine knows no limit, and the name itself is too long for the "
     "disk"},
    {of(f::create_directory), is_long_for_a_directory, "failed 206", "failed 3", aftermath::same,
     "the length comes first; Wine knows no limit, and a directory above is missing"},
    {of(f::create_directory), is_long_for_a_directory, "failed 206", "failed 123", aftermath::same,
     "the length comes first; Wine knows no limit, and the name is wrong"},
    {of(f::set_current_directory), is_long_for_standing_in, "failed 206", "failed 2",
     aftermath::same, "the length comes first; Wine knows no limit, and finds nothing"},
    {of(f::set_current_directory), is_long_for_standing_in, "failed 206", "failed 3",
     aftermath::same,
     "the length comes first; Wine knows no limit, and a directory above is missing"},
    {of(f::set_current_directory), is_long_for_standing_in, "failed 206", "failed 123",
     aftermath::same, "the length comes first; Wine knows no limit, and the name is wrong"},
    {lookups.but(f::create_directory, f::set_current_directory), is_long, "failed 3", "failed 2",
     aftermath::same,
     "260 units are too many without a long prefix; Wine knows no limit and finds nothing"},
    {of(f::write_file), is_long, "failed 3", "ok", aftermath::differs,
     "260 units are too many without a long prefix; Wine knows no limit"},
    {of(f::write_file), is_long, "failed 3", "ok, new", aftermath::differs,
     "260 units are too many without a long prefix; Wine knows no limit"},
    {lookups.but(f::set_current_directory), has_a_name_too_long, "failed 123", "failed 2",
     aftermath::same, "no name has 256 units; Wine finds nothing of that name"},
    {lookups.but(f::set_current_directory), has_a_name_too_long, "failed 123", "failed 3",
     aftermath::same, "no name has 256 units; Wine misses it as a directory above"},
    {of(f::get_full_path), is_blank, "failed 123", "failed, last error untouched", aftermath::same,
     "no text is a wrong name; Wine sets no code"},
    {of(f::get_variable), is_variable_of_q, "ok \"Q:\\\"", "failed 203", aftermath::differs,
     "Windows notes where it stands on a drive that is used; Wine notes nothing"},
    {of(f::get_full_path), is_two_units_of_a_drive, "ok with a text", "ok with a text",
     aftermath::same, "a drive alone is its directory without a backslash; Wine adds one",
     theirs_has_a_backslash_more},
    {of(f::get_full_path), goes_up_to_a_share, "ok with a text", "ok with a text", aftermath::same,
     "a share that dots lead to gets no backslash; Wine adds one", theirs_has_a_backslash_more},
    {of(f::get_full_path), has_stops_within, "ok with a text", "ok with a text", aftermath::same,
     "of several full stops at the end of a name within all stay; Wine drops one",
     theirs_has_fewer_stops},
    {of(f::write_file, f::read_file, f::open_handle), is_directory_with_separator, "failed 3",
     "failed 5", aftermath::same,
     "a directory that the text itself calls one is told by another code; Wine has one code "
     "for both"},
    {of(f::open_handle), truncates_without_writing, "failed 87", "failed 123", aftermath::same,
     "cutting needs the right to write, and that is looked at first; Wine looks at the name"},
    {of(f::open_handle), truncates_without_writing, "failed 87", "failed 2", aftermath::same,
     "cutting needs the right to write, and that is looked at first; Wine looks at the name"},
    {of(f::open_handle), truncates_without_writing, "failed 87", "failed 3", aftermath::same,
     "cutting needs the right to write, and that is looked at first; Wine looks at the name"},
    {of(f::open_handle), truncates_without_writing, "failed 87", "failed 5", aftermath::same,
     "cutting needs the right to write, and that is looked at first; Wine looks at the name"},
    {of(f::open_handle), truncates_without_writing, "failed 87", "failed 80", aftermath::same,
     "cutting needs the right to write, and that is looked at first; Wine looks at the name"},
    {of(f::open_handle), truncates_without_writing, "failed 87", "failed 32", aftermath::same,
     "cutting needs the right to write, and that is looked at first; Wine looks at the name"},
    {of(f::open_handle), truncates_without_writing, "failed 87", "ok", aftermath::differs,
     "cutting needs the right to write; Wine cuts"},
    {of(f::open_handle, f::write_file), is_read_only_there, "failed 5", "ok", aftermath::differs,
     "nobody writes to a read-only file; the administrator of Wine's host does"},
    {of(f::write_file), is_read_only_there, "failed 5", "ok, was there", aftermath::differs,
     "nobody writes to a read-only file; the administrator of Wine's host does"},
    {of(f::write_file), cuts_and_gives_attributes, "ok, was there", "ok, was there",
     aftermath::differs,
     "what replaces a file gives it its attributes; Wine cuts the content only"},
    {of(f::move_file), is_second_read_only, "failed 5", "ok", aftermath::differs,
     "nobody replaces a read-only file; the administrator of Wine's host does"},
    {of(f::set_attributes), makes_directory_read_only, "ok", "ok", aftermath::differs,
     "Wine keeps no directory read-only"},
    {of(f::copy_file), copies_attributes_over_others, "ok", "ok", aftermath::differs,
     "attributes come with a copy; Wine leaves those of a file that it replaces"},
    {of(f::move_file), has_new_name_in_other_case, "ok", "ok", aftermath::differs,
     "the name becomes the one that was asked for; Wine keeps the case of the one that is "
     "there"},
    {of(f::move_file), moves_into_itself_over_another, "failed 5", "failed 87", aftermath::differs,
     "a directory does not go into itself; Wine refuses, too, and has deleted what it was to "
     "replace"},
    {of(f::move_file), moves_into_itself_over_another, "failed 32", "failed 5", aftermath::differs,
     "a directory does not go into itself; Wine refuses, too, and has deleted what it was to "
     "replace"},
    {of(f::move_file), moves_into_itself_over_another, "failed 5", "failed 5", aftermath::differs,
     "a directory does not go into itself; Wine refuses, too, and has deleted what it was to "
     "replace"},
    {of(f::move_file), moves_into_itself, "failed 32", "failed 87", aftermath::same,
     "the system meets its own opening of the directory; Wine finds the demand wrong"},
    {of(f::move_file), moves_into_itself, "failed 5", "failed 87", aftermath::same,
     "a directory does not go into itself; Wine finds the demand wrong"},
    {of(f::move_file), moves_into_itself, "failed 32", "failed 183", aftermath::same,
     "the system meets its own opening of the directory; Wine looks at the target first"},
    {of(f::move_file), moves_into_itself, "failed 5", "failed 183", aftermath::same,
     "a directory does not go into itself; Wine looks at the target first"},
    {of(f::move_file), is_root_of_drive, "failed 5", "failed 183", aftermath::same,
     "nobody moves the root of a drive, or something onto it; Wine only finds the target "
     "there"},
    {of(f::move_file), is_second_with_separator, "ok", "failed 267", aftermath::differs,
     "a separator behind the new name of a file is passed over; Wine looks for a directory"},
    {of(f::move_file), is_second_with_separator, "failed 5", "failed 267", aftermath::same,
     "a separator behind the new name of a file is passed over; Wine looks for a directory"},
    {of(f::move_file), are_one_file_perhaps, "ok", "ok", aftermath::differs,
     "of two names of one file the other stays; Wine's host leaves both"},
    {of(f::move_file, f::create_hard_link), is_new_name_below_file, "failed 87", "failed 3",
     aftermath::same,
     "nothing goes into a file, which is no missing directory; Wine tells no difference"},
    {of(f::move_file, f::create_hard_link), is_bad_name_below_file, "failed 87", "failed 123",
     aftermath::same, "nothing goes into a file, whatever its name; Wine looks at the name first"},
    {of(f::move_file, f::create_hard_link), is_in_held_directory, "failed 32", "ok",
     aftermath::differs,
     "the directory that a name goes to is opened for that, and shared; Wine asks nobody"},
    {of(f::move_file), is_second_with_separator, "failed 183", "failed 267", aftermath::same,
     "the target is there; Wine looks for a directory"},
    {of(f::create_hard_link), is_first_with_separator, "failed 123", "failed 2", aftermath::same,
     "a file's name has no separator at its end; Wine looks for a directory"},
    {of(f::enumerate), is_search_below_file, "failed 267", "failed 123", aftermath::same,
     "Windows finds a file in the place of a directory; Wine finds the name wrong"},
    {of(f::enumerate), is_search_with_separator, "failed 3", "failed 2", aftermath::same,
     "the directory to search is missing; Wine misses the name"},
    {of(f::enumerate), is_search_for_one_unit, "ok with a text", "ok with a text", aftermath::same,
     "a directory stands for itself by a full stop, which no question mark means; Wine finds "
     "it, and newer ones the directory above, too",
     theirs_has_itself_more},
    {of(f::enumerate), is_search_in_root, "failed 2", "ok with a text", aftermath::same,
     "there is nothing else in the root; what Wine has there is found by its short names, too",
     theirs_finds_their_own},
    {of(f::enumerate), is_drive_alone, "ok with a text", "failed 2", aftermath::same,
     "a drive alone is the directory on it; Wine finds nothing", ours_is_the_directory},
    {of(f::enumerate), has_a_bad_unit, "failed 123", "failed 2", aftermath::same,
     "dots behind a long prefix are no names; Wine finds nothing of that name"},
    {of(f::enumerate), is_search_for_two_stops, "failed 2", "ok with a text", aftermath::same,
     "behind a long prefix a directory is not found by full stops; Wine finds it",
     theirs_is_found_by_stops},
    {of(f::create_hard_link), has_a_colon, "failed 123", "failed 5", aftermath::same,
     "the name with the colon is refused; Wine looks at what is to be linked"},
    {of(f::enumerate), has_a_bad_unit, "ok with a text", "ok with a text", aftermath::same,
     "behind a long prefix a slash is in no name; Wine takes it for a separator",
     theirs_takes_a_slash},
    {of(f::enumerate), is_search_for_a_stop, "failed 2", "ok with a text", aftermath::same,
     "behind a long prefix a directory is not found by a full stop; Wine finds it",
     theirs_is_found_by_stop},
    {of(f::enumerate), is_search_in_held, "failed 2", "failed 32", aftermath::same,
     "who searches lets others delete; in Wine he does not"},
    {of(f::enumerate), is_search_in_held, "ok with a text", "failed 32", aftermath::same,
     "who searches lets others delete; in Wine he does not", is_search_in_their_way},
    {of(f::write_file), is_file_with_separator, "failed 123", "failed 80", aftermath::same,
     "a separator behind a file is a wrong name; Wine finds the file there"},
    {of(f::enumerate), is_file_with_separator, "failed 123", "failed 2", aftermath::same,
     "a separator behind a file is a wrong name; Wine misses the name"},
    {of(f::move_file), is_second_with_separator, "ok", "failed 267", aftermath::differs,
     "a directory takes the place of a file; Wine looks for a directory there"},
    {of(f::open_handle), fails_to_replace_what_goes, "failed 80", "failed 80", aftermath::differs,
     "no file takes the place of a directory; Wine refuses, too, and has deleted it"},
    {of(f::copy_file), is_file_with_separator, "failed 123", "failed 80", aftermath::same,
     "a separator behind a file is a wrong name; Wine finds the file there"},
    {of(f::copy_file), copies_onto_itself, "failed 5", "failed 32", aftermath::same,
     "what the file is comes ahead of who has it open; Wine meets its own opening of the "
     "source"},
    {of(f::create_hard_link), is_first_with_separator, "failed 123", "failed 183", aftermath::same,
     "a file's name has no separator at its end; Wine finds the directory there"},
    {of(f::enumerate), is_long, "failed 3", "failed 123", aftermath::same,
     "260 units are too many without a long prefix; Wine finds a file in the place of a "
     "directory"},
    {of(f::move_file), is_long, "failed 3", "failed 87", aftermath::same,
     "260 units are too many without a long prefix; Wine finds the demand wrong"},
    {of(f::move_file), moves_what_it_stands_in, "failed 5", "ok", aftermath::same,
     "nothing moves that holds the current directory, not even onto itself; Wine has nothing "
     "to do"},
    {of(f::get_full_path), has_a_colon_second, "ok with a text", "ok with a text", aftermath::same,
     "any unit ahead of a colon is taken for a drive when a device is looked for; by Wine only "
     "a letter",
     ours_is_the_null_device},
    {of(f::write_file, f::open_handle, f::copy_file), is_long, "failed 3", "failed 123",
     aftermath::same, "260 units are too many without a long prefix; Wine finds the name wrong"},
    {of(f::create_hard_link), is_long, "failed 3", "failed 5", aftermath::same,
     "260 units are too many without a long prefix; Wine looks at what is to be linked"},
    {of(f::create_hard_link), is_below_missing_drive, "failed 3", "failed 5", aftermath::same,
     "the place of the new name is looked at first; Wine looks at what is to be linked"},
    {of(f::open_handle), is_file_with_separator, "failed 123", "failed 80", aftermath::same,
     "a separator behind a file is a wrong name; Wine finds the file there"},
    {of(f::move_file), moves_what_is_open_below, "failed 5", "ok", aftermath::differs,
     "a directory does not move while something below it is open; Wine moves it"},
    {of(f::copy_file), is_second_read_only, "failed 5", "ok", aftermath::differs,
     "nobody replaces a read-only file; the administrator of Wine's host does"},
    {of(f::copy_file), is_second_hidden, "failed 5", "ok", aftermath::differs,
     "no copy replaces a hidden file; in Wine it does"},
    {of(f::write_file), replaces_hidden_or_system, "failed 5", "ok, was there", aftermath::differs,
     "who replaces a hidden or a system file has to ask for the same; Wine cuts"},
    {of(f::open_handle), replaces_hidden_or_system, "failed 5", "ok", aftermath::differs,
     "who replaces a hidden or a system file has to ask for the same; Wine cuts"},
    {of(f::open_handle), replaces_directory_it_stands_in, "failed 80", "failed 32", aftermath::same,
     "no file takes the place of a directory, whoever has it open; Wine meets the opening of the "
     "current directory"},
    {of(f::remove_directory, f::open_handle, f::delete_file, f::move_file, f::copy_file,
        f::create_hard_link, f::set_attributes),
     is_long, "failed 3", "ok", aftermath::differs,
     "260 units are too many without a long prefix; Wine knows no limit"},
    {of(f::write_file), is_long, "failed 3", "ok, was there", aftermath::differs,
     "260 units are too many without a long prefix; Wine knows no limit"},
    {of(f::write_file, f::read_file, f::open_handle, f::delete_file, f::move_file, f::copy_file),
     is_long, "failed 3", "failed 5", aftermath::same,
     "260 units are too many without a long prefix; Wine finds a directory, or a name in the way"},
    {of(f::open_handle, f::copy_file), is_long, "failed 3", "failed 80", aftermath::same,
     "260 units are too many without a long prefix; Wine finds the name taken"},
    {of(f::move_file, f::create_hard_link), is_long, "failed 3", "failed 183", aftermath::same,
     "260 units are too many without a long prefix; Wine finds the name taken"},
    {of(f::remove_directory, f::move_file), is_long, "failed 3", "failed 267", aftermath::same,
     "260 units are too many without a long prefix; Wine misses a directory there"},
    {of(f::get_attributes, f::get_attributes_ex), is_long, "failed 3", "ok with a text",
     aftermath::same, "260 units are too many without a long prefix; Wine finds what is there",
     theirs_has_what_is_there},
    {of(f::read_file), is_long, "failed 3", "ok with a text", aftermath::same,
     "260 units are too many without a long prefix; Wine reads what is there",
     theirs_has_the_content},
    {of(f::enumerate), is_long, "failed 3", "ok with a text", aftermath::same,
     "260 units are too many without a long prefix; Wine finds the name", theirs_finds_the_name},
    {of(f::create_directory), is_long_for_a_directory, "failed 206", "failed 183", aftermath::same,
     "the length comes first; Wine knows no limit, and finds the name taken"},
    {of(f::set_current_directory), is_long_for_standing_in, "failed 206", "ok", aftermath::differs,
     "the length comes first; Wine knows no limit"},
    {of(f::set_current_directory), is_long_for_standing_in, "failed 206", "failed 267",
     aftermath::same, "the length comes first; Wine knows no limit, and finds a file"},
    {of(f::create_directory, f::move_file, f::create_hard_link), waits_for_its_deletion, "failed 5",
     "failed 183", aftermath::same, "the name waits for its deletion; Wine finds it taken"},
    {of(f::remove_directory), waits_for_its_deletion, "failed 5", "failed 267", aftermath::same,
     "the name waits for its deletion; Wine finds a file"},
    {of(f::write_file, f::copy_file), waits_for_its_deletion, "failed 5", "failed 32",
     aftermath::same, "the name waits for its deletion; Wine looks at who has it open"},
    {of(f::copy_file), waits_for_its_deletion, "failed 5", "failed 80", aftermath::same,
     "the name waits for its deletion; Wine finds it taken"},
    {of(f::get_attributes, f::get_attributes_ex), waits_for_its_deletion, "failed 5",
     "ok with a text", aftermath::same, "the name waits for its deletion; Wine shows it as before",
     theirs_has_what_is_there},
    {of(f::read_file), waits_for_its_deletion, "failed 5", "ok with a text", aftermath::same,
     "the name waits for its deletion; Wine reads it as before", theirs_has_the_content},
    {of(f::remove_directory, f::set_current_directory, f::open_handle, f::delete_file, f::move_file,
        f::copy_file, f::create_hard_link, f::set_attributes),
     waits_for_its_deletion, "failed 5", "ok", aftermath::differs,
     "nobody opens what waits for its deletion; in Wine anybody does"},
};

std::vector<intended_difference> one_by_one()
{
    std::vector<intended_difference> all;
    for (row const &each : rows) {
        for (function const what : all_functions()) {
            if (each.made.have(what))
                all.push_back({what, each.is_it, each.ours, each.theirs, each.effect, each.reason,
                               each.are_they});
        }
    }
    return all;
}

/// What a step answers that writes, once it has opened.
std::string completed(std::string answer, step const &one)
{
    if (one.what == function::write_file && answer.starts_with("ok"))
        answer += ", wrote " + std::to_string(one.texts[1].size());
    return answer;
}

} // namespace

std::vector<intended_difference> const &intended_differences()
{
    static std::vector<intended_difference> const all = one_by_one();
    return all;
}

intended_difference const *find_intended(situation const &here, std::string const &ours,
                                         std::string const &theirs)
{
    for (intended_difference const &known : intended_differences()) {
        // the same answer is nothing to explain unless what was done differs
        if (known.what != here.one.what || (ours == theirs && known.effect == aftermath::same))
            continue;
        bool const answers_match = known.are_they != nullptr
                                       ? known.are_they(here, ours, theirs)
                                       : ours == completed(known.ours, here.one) &&
                                             theirs == completed(known.theirs, here.one);
        if (answers_match && known.is_it(here))
            return &known;
    }
    return nullptr;
}

} // namespace differential
