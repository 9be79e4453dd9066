#ifndef FL_FILESYSTEM_TESTS_SUPPORT_WORKSPACE_SIMULATED_HPP
#define FL_FILESYSTEM_TESTS_SUPPORT_WORKSPACE_SIMULATED_HPP
// For native tests that look behind a workspace.

#include "support/workspace.hpp"

#include <simulation/machine.hpp>

namespace test_support {

/// The machine of the workspace that was made last and still is. Throws
/// `std::logic_error` if there is none.
simulation::simulated_machine &machine();

} // namespace test_support

#endif
