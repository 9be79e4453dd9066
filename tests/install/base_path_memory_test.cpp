// The root above a module where memory runs out while it is looked for.

#include <fl/filesystem/install_path.hpp>

#include "support/allocations.hpp"
#include "support/calls.hpp"
#include "support/memory_for_text.hpp"

#include <new>

namespace fl::filesystem::tests {
namespace {

TEST_ON_MACHINE(GetBasePathMemory, ThatRunsOutOnceTheModuleIsKnownLeavesTheModule)
{
    void *const base = reinterpret_cast<void *>(std::uintptr_t{0x10000000});
    machine.add_file(uR"(C:\Root\bin\win64\lib.dll)");
    machine.load_module(base, 0x4000, uR"(C:\Root\bin\win64\lib.dll)");
    {
        memory_for_text const none(machine, 1);
        EXPECT_THROW(detail::get_base_path(base), std::bad_alloc) << "no module is known";
        EXPECT_TRUE(none.ran_out());
    }
    memory_for_text const none(machine, 2);
    EXPECT_EQ(units(detail::get_base_path(base)), uR"(C:\Root\bin\win64\lib.dll)");
    EXPECT_TRUE(none.ran_out());
}

char const some_code = 0; // an address in the program

// No other test of this program asks for the installation, which is found once.
TEST_ON_MACHINE(GetInstallPathMemory, ThatRunsOutLeavesTheQuestionToTheNextOne)
{
    machine.add_file(uR"(C:\Program\bin\win64\program.exe)");
    machine.set_program_pathname(uR"(C:\Program\bin\win64\program.exe)");
    count_all_but(simulation::is_in_call);
    std::size_t const for_base = allocations_of(
        [] { static_cast<void>(detail::get_base_path(const_cast<char *>(&some_code))); });
    // what keeps the answer, the module, and the answer as callers have it
    for (std::size_t const nth : {std::size_t{1}, std::size_t{2}, for_base + 2}) {
        failing_allocation const none(nth);
        EXPECT_THROW(static_cast<void>(get_install_path()), std::bad_alloc) << nth;
        EXPECT_TRUE(none.fired()) << nth;
    }
    count_all_but(nullptr);
    EXPECT_EQ(get_install_path(), uR"(C:\Program)");
}

} // namespace
} // namespace fl::filesystem::tests
