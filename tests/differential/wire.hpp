#ifndef FL_FILESYSTEM_TESTS_DIFFERENTIAL_WIRE_HPP
#define FL_FILESYSTEM_TESTS_DIFFERENTIAL_WIRE_HPP
// How sequences and their outcomes travel between the two programs: lines of ASCII.
//
//     to the other side       back
//     sequence 12             answer ok
//     CreateDirectoryW "a"    tree "C:\..." 16
//     end                     end

#include "differential/executor.hpp"

#include <istream>
#include <ostream>

namespace differential {

struct numbered_sequence
{
    unsigned int number = 0;
    sequence steps;
};

void write_sequence(std::ostream &out, numbered_sequence const &one);
/// Returns false at the end of the input.
bool read_sequence(std::istream &in, numbered_sequence &one);

void write_outcome(std::ostream &out, outcome const &one);
/// Throws `std::runtime_error` if the input ends, or says something else.
outcome read_outcome(std::istream &in);

} // namespace differential

#endif
