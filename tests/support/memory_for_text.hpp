#ifndef FL_FILESYSTEM_TESTS_SUPPORT_MEMORY_FOR_TEXT_HPP
#define FL_FILESYSTEM_TESTS_SUPPORT_MEMORY_FOR_TEXT_HPP
// Memory that runs out at a chosen place: where the system asks for a buffer.

#include "support/allocations.hpp"

#include <simulation/machine.hpp>

#include <cstddef>
#include <optional>

namespace test_support {

/// At the nth expansion of a pathname the system asks for more room than there is.
class memory_for_text
{
public:
    memory_for_text(simulation::simulated_machine &machine, int nth)
        : hook_(machine.on_full_path_name([nth](DWORD, wchar_t *) mutable {
              return --nth == 0 ? std::optional<DWORD>(room) : std::nullopt;
          }))
    {
    }

    bool ran_out() const { return none_left_.fired(); }

private:
    static constexpr DWORD room = 12345; ///< which nothing else takes

    failing_size none_left_{(room + 1) * sizeof(wchar_t)};
    simulation::fault hook_;
};

} // namespace test_support

#endif
