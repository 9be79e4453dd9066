#ifndef FL_FLFS_PROCESS_HPP
#define FL_FLFS_PROCESS_HPP
// The process around the program: its arguments and its streams.

#include <string>
#include <vector>

namespace flfs {

/// The arguments without the program's own name, in UTF-8.
std::vector<std::string> process_arguments(int argc, char **argv);

/// Whether standard error is a terminal, where somebody may be waiting.
bool has_terminal();

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
    unsigned int former_code_page_ = 0;
};

} // namespace flfs

#endif
