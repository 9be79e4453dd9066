#ifndef FL_FILESYSTEM_TESTS_DIFFERENTIAL_OTHER_SIDE_HPP
#define FL_FILESYSTEM_TESTS_DIFFERENTIAL_OTHER_SIDE_HPP
// The program on the other side of the comparison: started once, then asked again
// and again. For hosts with POSIX processes.

#include "differential/wire.hpp"

#include <sys/types.h>

#include <cstdio>
#include <memory>
#include <string>

namespace differential {

class other_side
{
public:
    /// `command` is for the shell. It does as differential_replay.
    explicit other_side(std::string const &command);
    /// Ends the program by the end of its input.
    ~other_side();
    other_side(other_side const &) = delete;
    other_side &operator=(other_side const &) = delete;

    /// Throws `std::runtime_error` if the program has ended or says nonsense.
    outcome run(sequence const &steps, unsigned int number);

private:
    struct closing
    {
        void operator()(std::FILE *stream) const { std::fclose(stream); }
    };
    using stream = std::unique_ptr<std::FILE, closing>;

    std::string answer_text();

    pid_t process_ = -1;
    stream to_;
    stream from_;
};

} // namespace differential

#endif
