#include <fl/filesystem/install_path.hpp>

#include "support/names.hpp"

#include <windows.h>

#include <memory>

namespace fl::filesystem::tests {
namespace {

std::u16string file_of(HMODULE module)
{
    wchar_t buffer[2000] = {};
    ::GetModuleFileNameW(module, buffer, 2000);
    return units(buffer);
}

void some_function() {}

int some_data = 1;

template <typename Function>
void *address_of(Function *function)
{
    return reinterpret_cast<void *>(function);
}

TEST(GetModulePathFromAddress, IsTheFileThatHoldsTheAddress)
{
    std::u16string const program = file_of(nullptr);
    ASSERT_FALSE(program.empty());
    EXPECT_EQ(detail::get_module_path_from_address(address_of(&some_function)), program);
    EXPECT_EQ(detail::get_module_path_from_address(&some_data), program);
}

TEST(GetModulePathFromAddress, IsEmptyForNothing)
{
    EXPECT_EQ(detail::get_module_path_from_address(nullptr), u"");
    EXPECT_EQ(detail::get_base_path(nullptr), L"");
}

TEST(GetModulePathFromAddress, IsEmptyOutsideOfModules)
{
    auto const block = std::make_unique<int>(1);
    int local = 1;
    EXPECT_EQ(detail::get_module_path_from_address(block.get()), u"");
    EXPECT_EQ(detail::get_module_path_from_address(&local), u"");
    EXPECT_EQ(detail::get_base_path(block.get()), L"");
    void *const free = reinterpret_cast<void *>(std::uintptr_t{0x1000});
    EXPECT_EQ(detail::get_module_path_from_address(free), u"");
    void *const systems_own = reinterpret_cast<void *>(~std::uintptr_t{0xFFF});
    EXPECT_EQ(detail::get_module_path_from_address(systems_own), u"");
}

#ifdef _WIN32
TEST(GetModulePathFromAddress, TellsModulesApart)
{
    HMODULE const kernel = ::GetModuleHandleW(L"kernel32.dll");
    ASSERT_NE(kernel, nullptr);
    FARPROC const function = ::GetProcAddress(kernel, "GetTickCount");
    ASSERT_NE(function, nullptr);
    EXPECT_EQ(detail::get_module_path_from_address(address_of(function)), file_of(kernel));
    EXPECT_EQ(detail::get_module_path_from_address(kernel), file_of(kernel))
        << "by its first address, too";
    std::u16string const own = detail::get_module_path_from_address(address_of(&get_install_path));
    EXPECT_NE(own, file_of(nullptr)) << "the library is a module of its own";
    EXPECT_TRUE(own.ends_with(u".dll")) << wide(own).size();
}
#endif

} // namespace
} // namespace fl::filesystem::tests
