#ifndef FL_FILESYSTEM_TESTS_DIFFERENTIAL_STEP_HPP
#define FL_FILESYSTEM_TESTS_DIFFERENTIAL_STEP_HPP
// One call of a sequence as a value, and its text: one line that is read back
// exactly. Runs nothing itself: that is in executor.hpp.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace differential {

enum class function
{
    create_directory,
    remove_directory,
    get_attributes,
    get_full_path,
    get_current_directory,
    set_current_directory,
    get_variable,
    set_variable, ///< texts: name, value; number: 0 removes the variable
    // from here on files are needed
    write_file, ///< texts: pathname, content; numbers: disposition, attributes
    read_file,
    open_handle, ///< numbers: slot, access, share mode, disposition, flags
    close_handle,
    delete_file,
    move_file, ///< number: flags
    copy_file, ///< number: whether it fails if the target is there
    create_hard_link,
    set_attributes,
    get_attributes_ex,
    enumerate ///< of a pattern
};

/// What a function takes. `name` is the call that the step is about; a step that
/// makes several has the calls in its name.
struct signature
{
    function what;
    char const *name;
    std::size_t texts;
    std::size_t numbers;
    bool needs_files;
};

std::vector<signature> const &signatures();
signature const &signature_of(function what);
std::vector<function> all_functions();

/// In a text these units stand for what no sequence can know beforehand.
inline constexpr char16_t folder_mark = 0xE000; ///< `C:\fl-differential\00000001`
inline constexpr char16_t rooted_mark = 0xE001; ///< the same without the drive
inline constexpr char16_t name_mark = 0xE002;   ///< its last element

struct step
{
    function what = function::get_current_directory;
    std::vector<std::u16string> texts;
    std::vector<std::uint32_t> numbers;

    friend bool operator==(step const &, step const &) = default;
};

using sequence = std::vector<step>;

/// A text in quotes and in ASCII.
///
///     a\b              "a\b"
///     (folder_mark)\a  "%(folder)\a"
///     U+00E9           "%00E9"
///     255 times n      "%(n*255)"
std::string quoted(std::u16string_view text);

/// `CreateDirectoryW "a\b"`, `MoveFileExW "a" "b" 0x1`
std::string to_line(step const &one);
/// Reads what `to_line` wrote. Anything else throws `std::invalid_argument`.
step from_line(std::string_view line);

} // namespace differential

#endif
