#ifndef FL_FILESYSTEM_TESTS_DIFFERENTIAL_SHRINKING_HPP
#define FL_FILESYSTEM_TESTS_DIFFERENTIAL_SHRINKING_HPP
// Shrinking, for sequences of steps.

#include "differential/step.hpp"
#include "support/shrinking.hpp"

namespace differential {

using test_support::shrunk;

} // namespace differential

#endif
