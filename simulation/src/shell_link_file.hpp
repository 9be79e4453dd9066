#ifndef FL_SIMULATION_SHELL_LINK_FILE_HPP
#define FL_SIMULATION_SHELL_LINK_FILE_HPP
// The content of a shortcut file, in the published format [MS-SHLLINK]: as much of it
// as a target on a drive or share needs. Lists of shell items are passed over.

#include <string>
#include <string_view>

namespace fl::simulation {

/// An empty target makes a shortcut to nothing, which is a valid file.
std::string write_shell_link(std::u16string_view target);

/// The target; empty if the file names none. Fails with E_FAIL if `content` is no
/// shortcut.
std::u16string read_shell_link(std::string_view content);

} // namespace fl::simulation

#endif
