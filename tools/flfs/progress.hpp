#ifndef FL_FLFS_PROGRESS_HPP
#define FL_FLFS_PROGRESS_HPP
// How far long work has come, for somebody who waits at a terminal.

#include "flfs/commands.hpp"

#include <chrono>
#include <cstdint>

namespace flfs {

/// A line on standard error that counts names, such as "1234 names copied", as often as the
/// session says, and that is gone at the end.
class progress
{
public:
    progress(session &session, char const *verb);
    progress(progress const &) = delete;
    progress &operator=(progress const &) = delete;
    ~progress();

    void tell(std::uint64_t names);

private:
    session &session_;
    char const *verb_;
    std::chrono::steady_clock::time_point last_told_;
    std::size_t width_ = 0; ///< of the line that is shown
};

} // namespace flfs

#endif
