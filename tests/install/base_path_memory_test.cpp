// The root above a module where memory runs out while it is looked for.

#include <fl/filesystem/install_path.hpp>

#include "support/calls.hpp"
#include "support/memory_for_text.hpp"

#include <new>

namespace fl::filesystem {
namespace {

using namespace test_support;

TEST(GetBasePathMemory, ThatRunsOutOnceTheModuleIsKnownLeavesTheModule)
{
    void *const base = reinterpret_cast<void *>(std::uintptr_t{0x10000000});
    simulated_machine machine;
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

} // namespace
} // namespace fl::filesystem
