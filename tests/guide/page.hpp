#ifndef FL_FILESYSTEM_TESTS_GUIDE_PAGE_HPP
#define FL_FILESYSTEM_TESTS_GUIDE_PAGE_HPP
// Pages of docs/ as tests read them: their blocks of code, and their tables, whose rows are
// played one by one. Tests say `using namespace guide;`.

#include "simulation/machine.hpp"
#include "support/names.hpp"

#include <fl/filesystem.hpp>

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace guide {

namespace fs = fl::filesystem;
using namespace fs::literals;
using simulation::simulated_machine;
using test_support::lines;

/// The lines of a file in the checkout, without blanks ahead and carriage returns.
lines lines_of(std::string const &name);

/// The sources of all tests, one behind the other.
std::string all_tests();

/// The blocks between fences of that language.
std::vector<lines> blocks_of(lines const &page, std::string const &language);

/// The rows below the heading row of all tables that have it, a text for each cell, without the
/// quotes of code.
std::vector<lines> rows_of(std::string const &page, std::string const &heading);

/// What a program shows, as it stands between the quotes of a raw text: without the line break
/// ahead, the blanks that the first line has, and those behind the last line.
std::string shown(std::string_view raw);

inline std::u16string u16(std::string const &utf8)
{
    return fs::from_utf8(utf8);
}

/// What stands for the rows of a table, by the text in their first cell.
using checks = std::map<std::string, std::function<void()>>;

/// Plays the check of each row of all tables with that heading, and fails for a row without one
/// and for a check without a row.
void play(std::string const &page, std::string const &heading, checks const &rows);

} // namespace guide

#endif
