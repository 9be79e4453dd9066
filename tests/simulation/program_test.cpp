#include "platform/contract.hpp"

#include <simulation/machine.hpp>

#include <gtest/gtest.h>

#include <stdexcept>

namespace fl::simulation {

namespace {

void *at(std::uintptr_t address)
{
    return reinterpret_cast<void *>(address);
}

void *base_of(std::uintptr_t address)
{
    MEMORY_BASIC_INFORMATION info{};
    EXPECT_EQ(::VirtualQuery(at(address), &info, sizeof info), sizeof info);
    return info.AllocationBase;
}

std::wstring file_of(void *base)
{
    wchar_t buffer[300] = {};
    ::GetModuleFileNameW(static_cast<HMODULE>(base), buffer, 300);
    return buffer;
}

void some_function() {}

/// Addresses that this host, sanitizers included, has nothing at.
std::uintptr_t free_addresses(std::uintptr_t size)
{
    constexpr std::uintptr_t step = 0x100000000;
    for (std::uintptr_t base = step; base < 0x700000000000; base += step) {
        bool is_free = true;
        for (std::uintptr_t offset = 0; offset <= size; offset += 0x1000)
            is_free = is_free && base_of(base + offset) == nullptr;
        if (is_free)
            return base;
    }
    throw std::runtime_error("all addresses are in use");
}

TEST(SimulatedProgram, HasModulesAtAddresses)
{
    simulated_machine machine;
    std::uintptr_t const one = free_addresses(0x30000);
    std::uintptr_t const other = one + 0x20000;
    machine.load_module(at(one), 0x20000, u"C:\\dir\\one.dll");
    machine.load_module(at(other), 0x10000, u"D:\\other.dll");
    EXPECT_EQ(base_of(one), at(one));
    EXPECT_EQ(base_of(other - 1), at(one)) << "the last address of the first";
    EXPECT_EQ(base_of(other), at(other));
    EXPECT_EQ(base_of(other + 0x10000), nullptr) << "free";
    EXPECT_EQ(file_of(at(one)), L"C:\\dir\\one.dll");
    EXPECT_EQ(file_of(at(other)), L"D:\\other.dll");
    EXPECT_EQ(file_of(at(one + 0x10000)), L"") << "an address in it is no module";
}

TEST(SimulatedProgram, DescribesMemory)
{
    simulated_machine machine;
    machine.load_module(at(0x500000000000), 0x20000, u"C:\\one.dll");
    MEMORY_BASIC_INFORMATION info{};
    ASSERT_NE(::VirtualQuery(at(0x500000001234), &info, sizeof info), 0U);
    EXPECT_EQ(info.BaseAddress, at(0x500000001000)) << "the page";
    EXPECT_EQ(info.RegionSize, 0x1F000U) << "from the page to the end";
    EXPECT_EQ(info.State, DWORD{MEM_COMMIT});
    EXPECT_EQ(info.Type, DWORD{MEM_IMAGE});
    machine.reserve_memory(at(0x500000000000), 0x2000);
    ASSERT_NE(::VirtualQuery(at(0x500000001234), &info, sizeof info), 0U);
    EXPECT_EQ(info.Type, DWORD{MEM_PRIVATE}) << "what is said last counts";
}

TEST(SimulatedProgram, HasMemoryOfNoModule)
{
    simulated_machine machine;
    machine.reserve_memory(at(0x510000000000), 0x10000);
    EXPECT_EQ(base_of(0x510000000800), at(0x510000000000));
    ::SetLastError(0);
    EXPECT_EQ(file_of(at(0x510000000000)), L"");
    EXPECT_EQ(::GetLastError(), DWORD{ERROR_MOD_NOT_FOUND});
}

TEST(SimulatedProgram, IsWhatTheHostHasLoaded)
{
    simulated_machine machine;
    std::uintptr_t const code = reinterpret_cast<std::uintptr_t>(&some_function);
    EXPECT_EQ(file_of(base_of(code)), L"C:\\program\\program.exe");
    machine.set_program_pathname(u"E:\\app\\app.exe");
    EXPECT_EQ(file_of(base_of(code)), L"E:\\app\\app.exe");
    EXPECT_EQ(file_of(nullptr), L"E:\\app\\app.exe");
    machine.load_module(at(code & ~std::uintptr_t{0xFFF}), 0x1000, u"E:\\app\\bin\\win64\\one.dll");
    EXPECT_EQ(file_of(base_of(code)), L"E:\\app\\bin\\win64\\one.dll") << "what a test says counts";
    EXPECT_EQ(file_of(nullptr), L"E:\\app\\app.exe");
}

TEST(SimulatedProgram, HasNamesOfAnyLength)
{
    simulated_machine machine;
    std::u16string const name = u"C:\\" + std::u16string(5000, u'n');
    machine.load_module(at(0x500000000000), 0x1000, name);
    std::wstring buffer(6000, L'\0');
    EXPECT_EQ(::GetModuleFileNameW(static_cast<HMODULE>(at(0x500000000000)), buffer.data(), 6000),
              5003U);
    EXPECT_EQ(::GetLastError(), 0U);
    EXPECT_EQ(buffer[5003], L'\0');
    EXPECT_EQ(buffer[5004], buffer_junk);
    EXPECT_EQ(::GetModuleFileNameW(static_cast<HMODULE>(at(0x500000000000)), buffer.data(), 5003),
              5003U);
    EXPECT_EQ(::GetLastError(), DWORD{ERROR_INSUFFICIENT_BUFFER});
}

TEST(SimulatedProgram, MeetsFaults)
{
    simulated_machine machine;
    MEMORY_BASIC_INFORMATION info{};
    wchar_t buffer[20] = L"untouched";
    fault const first = machine.fail_call("VirtualQuery", 1, ERROR_IO_DEVICE);
    EXPECT_EQ(::VirtualQuery(&info, &info, sizeof info), 0U);
    EXPECT_EQ(::GetLastError(), DWORD{ERROR_IO_DEVICE});
    EXPECT_EQ(info.AllocationBase, nullptr);
    fault const second = machine.fail_call("GetModuleFileNameW", 1, ERROR_IO_DEVICE);
    EXPECT_EQ(::GetModuleFileNameW(nullptr, buffer, 20), 0U);
    EXPECT_EQ(::GetLastError(), DWORD{ERROR_IO_DEVICE});
    EXPECT_STREQ(buffer, L"untouched");
    EXPECT_EQ(machine.calls_of("VirtualQuery"), 1);
}

TEST(SimulatedProgram, RefusesModulesWithoutAPlace)
{
    simulated_machine machine;
    EXPECT_THROW(machine.load_module(nullptr, 1, u"C:\\a"), std::invalid_argument);
    EXPECT_THROW(machine.load_module(at(1), 0, u"C:\\a"), std::invalid_argument);
    EXPECT_THROW(machine.load_module(at(1), 1, u""), std::invalid_argument);
    EXPECT_THROW(machine.reserve_memory(nullptr, 1), std::invalid_argument);
}

} // namespace

} // namespace fl::simulation
