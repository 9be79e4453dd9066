#ifndef FL_FLFS_PROCESS_HPP
#define FL_FLFS_PROCESS_HPP
// The process around the program: its arguments and its streams.

#include <string>
#include <vector>

namespace flfs {

/// The arguments without the program's own name, in UTF-8.
std::vector<std::string> process_arguments(int argc, char **argv);

enum class stream
{
    out,
    err
};

/// Whether it is a terminal, where somebody may be waiting.
bool is_terminal(stream which);

/// Whether that terminal shows colours, and nobody has set `NO_COLOR`.
bool takes_colours(stream which);

/// Makes the streams take UTF-8 and line ends as they are, and leaves the console
/// as it was found when the program ends.
class process_streams
{
public:
    process_streams();
    process_streams(process_streams const &) = delete;
    process_streams &operator=(process_streams const &) = delete;
    ~process_streams();

private:
    // used on Windows
    [[maybe_unused]] unsigned int former_code_page_ = 0;
    /// Of output and errors; 0 where it wasn't changed.
    [[maybe_unused]] unsigned long former_modes_[2] = {};
};

} // namespace flfs

#endif
