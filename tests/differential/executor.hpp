#ifndef FL_FILESYSTEM_TESTS_DIFFERENTIAL_EXECUTOR_HPP
#define FL_FILESYSTEM_TESTS_DIFFERENTIAL_EXECUTOR_HPP
// Runs sequences by plain Win32 calls, the same source on both sides, and says in
// lines of text what came of it.

#include "differential/host.hpp"
#include "differential/step.hpp"

#include <string>
#include <string_view>
#include <vector>

namespace differential {

/// What one sequence came to. Two of them are the same or they are not: nothing in
/// here depends on the folder's own name.
struct outcome
{
    /// One for each step: `ok`, `ok "C:\x"`, `failed 3`. The last error only where the
    /// call failed: a success promises nothing about it.
    std::vector<std::string> answers;
    /// Where the process stood ahead of each step. No call was made to learn it, and it
    /// is not compared: it explains relative texts. Empty on the other side.
    std::vector<std::u16string> directories;
    /// What is on the drive in the end, one line each.
    std::vector<std::string> tree;
    /// What was on the drive ahead of each step. Like `directories`, for explanations.
    std::vector<std::vector<entry>> standing;
};

/// Runs `steps` in a fresh folder, whose name is made from `number`.
outcome run_sequence(sequence const &steps, unsigned int number);

/// The text with the folder in place of its marks.
std::wstring expand(std::u16string_view text, unsigned int number);

// Of use to the steps with files.
/// What both systems keep alike. Wine has no archive bit to take away, and what else
/// a disk notes is its own affair.
inline constexpr std::uint32_t compared_attributes = 0x01 | 0x02 | 0x04 | 0x10;
/// No system code, so that a call that leaves the last error alone shows.
inline constexpr std::uint32_t untouched = 0x20000001;
std::string failed_with(std::uint32_t code);
/// In quotes, with `name_mark` in place of the folder's own name.
std::string shown(std::wstring_view text, unsigned int number);

} // namespace differential

#endif
