#include "differential/intended.hpp"

#include "differential/executor.hpp"
#include "support/text.hpp"

#include <simulation/machine.hpp>

#include <algorithm>

namespace differential {

using test_support::units;
using test_support::wide;

std::u16string situation::text(std::size_t index) const
{
    return units(expand(one.texts.at(index), number));
}

std::u16string situation::full(std::size_t index) const
{
    simulation::simulated_machine machine;
    machine.add_directory(directory).set_current_directory(directory);
    std::wstring buffer(40000, L'\0');
    DWORD const room = static_cast<DWORD>(buffer.size());
    buffer.resize(::GetFullPathNameW(wide(text(index)).c_str(), room, buffer.data(), nullptr));
    return units(buffer);
}

namespace {

bool is_literal(std::u16string_view path)
{
    return path.starts_with(u"\\\\?\\");
}

/// What the disk is asked for, without a long prefix.
std::u16string bare_path(situation const &here)
{
    std::u16string const text = here.text();
    return is_literal(text) ? text.substr(4) : here.full();
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
    auto const names = names_of(bare_path(here));
    return std::any_of(names.begin(), names.end(), test);
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
    std::u16string const path = bare_path(here);
    return path.starts_with(u"Q:\\") && path.size() > 3;
}

bool is_root_of_drive(situation const &here)
{
    return bare_path(here) == u"C:\\";
}

bool is_blank(situation const &here)
{
    return here.text().find_first_not_of(u' ') == std::u16string::npos;
}

bool is_file_with_separator(situation const &here)
{
    std::u16string const path = bare_path(here);
    return path.ends_with(u"\\file\\") || path.ends_with(u"\\FILE\\");
}

/// Without a long prefix, and with more units than `longest` allows.
bool exceeds(situation const &here, std::size_t longest)
{
    return !is_literal(here.text()) && here.full().size() > longest;
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

bool always(situation const &)
{
    return true;
}

/// `C:` alone, or dots that lead to a share.
bool theirs_has_a_backslash_more(situation const &here, std::string const &ours,
                                 std::string const &theirs)
{
    std::u16string const text = here.text();
    bool const is_share = text.starts_with(u"\\\\s\\t\\") || text.starts_with(u"//s/t/");
    bool const is_drive = text.size() == 2 && text[1] == u':';
    return (is_share || is_drive) && theirs == ours.substr(0, ours.size() - 1) + "\\\"";
}

/// One full stop less at the end of names within, of those that end in several.
bool theirs_has_fewer_stops(situation const &, std::string const &ours, std::string const &theirs)
{
    std::string expected = ours;
    for (std::size_t at = 0; (at = expected.find("..\\", at)) != std::string::npos;)
        expected.erase(at, 1);
    return expected == theirs;
}

} // namespace

std::vector<intended_difference> const &intended_differences()
{
    static std::vector<intended_difference> const all = {
        {function::create_directory, has_a_bad_unit, "failed 3", "failed 123", aftermath::same,
         "Windows meets names in their turn, and a directory above is missing; Wine looks at the "
         "whole text first"},
        {function::remove_directory, has_a_bad_unit, "failed 3", "failed 123", aftermath::same,
         "Windows meets names in their turn, and a directory above is missing; Wine looks at the "
         "whole text first"},
        {function::get_attributes, has_a_bad_unit, "failed 3", "failed 123", aftermath::same,
         "Windows meets names in their turn, and a directory above is missing; Wine looks at the "
         "whole text first"},
        {function::set_current_directory, has_a_bad_unit, "failed 3", "failed 123", aftermath::same,
         "Windows meets names in their turn, and a directory above is missing; Wine looks at the "
         "whole text first"},
        {function::create_directory, is_below_missing_drive, "failed 3", "failed 2",
         aftermath::same, "without the drive there is no directory above"},
        {function::remove_directory, is_below_missing_drive, "failed 3", "failed 2",
         aftermath::same, "without the drive there is no directory above"},
        {function::get_attributes, is_below_missing_drive, "failed 3", "failed 2", aftermath::same,
         "without the drive there is no directory above"},
        {function::set_current_directory, is_below_missing_drive, "failed 3", "failed 2",
         aftermath::same, "without the drive there is no directory above"},
        {function::create_directory, has_a_colon, "failed 123", "ok", aftermath::differs,
         "Windows sees a stream, Wine a name"},
        {function::create_directory, has_a_colon, "failed 123", "failed 3", aftermath::same,
         "the name with the colon is refused; Wine finds nothing of that name"},
        {function::remove_directory, has_a_colon, "failed 123", "failed 3", aftermath::same,
         "the name with the colon is refused; Wine finds nothing of that name"},
        {function::get_attributes, has_a_colon, "failed 123", "failed 3", aftermath::same,
         "the name with the colon is refused; Wine finds nothing of that name"},
        {function::set_current_directory, has_a_colon, "failed 123", "failed 3", aftermath::same,
         "the name with the colon is refused; Wine finds nothing of that name"},
        {function::remove_directory, has_a_colon, "failed 123", "failed 2", aftermath::same,
         "the name with the colon is refused; Wine finds nothing of that name"},
        {function::get_attributes, has_a_colon, "failed 123", "failed 2", aftermath::same,
         "the name with the colon is refused; Wine finds nothing of that name"},
        {function::set_current_directory, has_a_colon, "failed 123", "failed 2", aftermath::same,
         "the name with the colon is refused; Wine finds nothing of that name"},
        {function::create_directory, is_root_of_drive, "failed 5", "failed 183", aftermath::same,
         "nobody makes the root of a drive, which Wine only finds there"},
        {function::remove_directory, is_root_of_drive, "failed 5", "failed 145", aftermath::same,
         "nobody removes the root of a drive, of which Wine only says that it is not empty"},
        {function::remove_directory, is_blank, "failed 3", "failed 123", aftermath::same,
         "no text is no pathname; Wine finds the name wrong"},
        {function::get_attributes, is_file_with_separator, "failed 123", "failed 3",
         aftermath::same,
         "a file with a separator behind it is a wrong name; Wine looks for a directory"},
        {function::remove_directory, is_file_with_separator, "failed 267", "failed 123",
         aftermath::same,
         "Windows finds a file in the place of a directory; Wine finds the name wrong"},
        {function::set_current_directory, is_file_with_separator, "failed 267", "failed 123",
         aftermath::same,
         "Windows finds a file in the place of a directory; Wine finds the name wrong"},
        {function::create_directory, is_long_for_a_directory, "failed 206", "ok",
         aftermath::differs, "248 units are too many without a long prefix; Wine knows no limit"},
        {function::create_directory, is_long_for_a_directory, "failed 206", "failed 2",
         aftermath::same,
         "the length comes first; Wine knows no limit, and the name itself is too long for the "
         "disk"},
        {function::create_directory, is_long_for_a_directory, "failed 206", "failed 3",
         aftermath::same,
         "the length comes first; Wine knows no limit, and a directory above is missing"},
        {function::create_directory, is_long_for_a_directory, "failed 206", "failed 183",
         aftermath::same, "the length comes first; Wine knows no limit, and it is there already"},
        {function::create_directory, is_long_for_a_directory, "failed 206", "failed 123",
         aftermath::same, "the length comes first; Wine knows no limit, and the name is wrong"},
        {function::set_current_directory, is_long_for_standing_in, "failed 206", "ok",
         aftermath::differs, "a current directory has 258 units at most; Wine knows no limit"},
        {function::set_current_directory, is_long_for_standing_in, "failed 206", "failed 2",
         aftermath::same, "the length comes first; Wine knows no limit, and finds nothing"},
        {function::set_current_directory, is_long_for_standing_in, "failed 206", "failed 3",
         aftermath::same,
         "the length comes first; Wine knows no limit, and a directory above is missing"},
        {function::set_current_directory, is_long_for_standing_in, "failed 206", "failed 123",
         aftermath::same, "the length comes first; Wine knows no limit, and the name is wrong"},
        {function::get_attributes, is_long, "failed 3", "ok 16", aftermath::same,
         "260 units are too many without a long prefix; Wine knows no limit"},
        {function::get_attributes, is_long, "failed 3", "failed 2", aftermath::same,
         "260 units are too many without a long prefix; Wine knows no limit and finds nothing"},
        {function::remove_directory, is_long, "failed 3", "failed 2", aftermath::same,
         "260 units are too many without a long prefix; Wine knows no limit and finds nothing"},
        {function::remove_directory, is_long, "failed 3", "ok", aftermath::differs,
         "260 units are too many without a long prefix; Wine knows no limit"},
        {function::create_directory, has_a_name_too_long, "failed 123", "failed 2", aftermath::same,
         "no name has 256 units; Wine finds nothing of that name"},
        {function::remove_directory, has_a_name_too_long, "failed 123", "failed 2", aftermath::same,
         "no name has 256 units; Wine finds nothing of that name"},
        {function::get_attributes, has_a_name_too_long, "failed 123", "failed 2", aftermath::same,
         "no name has 256 units; Wine finds nothing of that name"},
        {function::create_directory, has_a_name_too_long, "failed 123", "failed 3", aftermath::same,
         "no name has 256 units; Wine misses it as a directory above"},
        {function::remove_directory, has_a_name_too_long, "failed 123", "failed 3", aftermath::same,
         "no name has 256 units; Wine misses it as a directory above"},
        {function::get_attributes, has_a_name_too_long, "failed 123", "failed 3", aftermath::same,
         "no name has 256 units; Wine misses it as a directory above"},
        {function::get_full_path, is_blank, "failed 123", "failed, last error untouched",
         aftermath::same, "no text is a wrong name; Wine sets no code"},
        {function::get_variable, is_variable_of_q, "ok \"Q:\\\"", "failed 203", aftermath::differs,
         "Windows notes where it stands on a drive that is used; Wine notes nothing"},
        {function::get_full_path, always, "ok with a text", "ok with a text", aftermath::same,
         "a drive alone, or a share after dots, gets no backslash; Wine adds one",
         theirs_has_a_backslash_more},
        {function::get_full_path, always, "ok with a text", "ok with a text", aftermath::same,
         "of several full stops at the end of a name within all stay; Wine drops one",
         theirs_has_fewer_stops},
    };
    return all;
}

intended_difference const *find_intended(situation const &here, std::string const &ours,
                                         std::string const &theirs)
{
    for (intended_difference const &known : intended_differences()) {
        if (known.what != here.one.what)
            continue;
        bool const answers_match = known.are_they != nullptr
                                       ? known.are_they(here, ours, theirs)
                                       : ours == known.ours && theirs == known.theirs;
        if (answers_match && known.is_it(here))
            return &known;
    }
    return nullptr;
}

} // namespace differential
