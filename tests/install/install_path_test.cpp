#include <fl/filesystem/install_path.hpp>

#include "support/in_workspace.hpp"

namespace fl::filesystem::tests {
namespace {

// The tests run where they were built, which is no installation.
TEST_IN_WORKSPACE(GetInstallPath, IsTheBaseOfTheLibrarysOwnModule)
{
    void *const own = reinterpret_cast<void *>(&get_install_path);
    std::u16string const module = detail::get_module_path_from_address(own);
    ASSERT_FALSE(module.empty());
    if (!work.exists(module))
        work.make_file(module); // a simulated machine has it in memory only
    EXPECT_EQ(get_install_path(), module);
    EXPECT_EQ(detail::get_base_path(own), wide(module));
    EXPECT_EQ(get_install_path(), module) << "once more";
}

} // namespace
} // namespace fl::filesystem::tests
