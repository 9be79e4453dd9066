// Modules with pathnames of any length, and the room that is offered for them.

#include <fl/filesystem/install_path.hpp>

#include "support/calls.hpp"

namespace fl::filesystem::tests {
namespace {

using rooms = std::vector<std::uint64_t>;

void *const base = reinterpret_cast<void *>(std::uintptr_t{0x10000000});
void *const inside = reinterpret_cast<void *>(std::uintptr_t{0x10000123});
constexpr std::size_t module_size = 0x4000;

std::u16string module_of(std::size_t size)
{
    return of_size(uR"(C:\bin\)", size);
}

/// The rooms from 1024 units on, up to `last`.
rooms rooms_up_to(std::uint64_t last)
{
    rooms offered;
    for (std::uint64_t room = 1024; room <= last; room += 1024)
        offered.push_back(room);
    return offered;
}

rooms offered(simulated_machine const &machine)
{
    return rooms_of(machine, "GetModuleFileNameW");
}

TEST_ON_MACHINE(ModulePathCalls, GrowTheRoomByTheKilounit)
{
    struct
    {
        std::size_t size;
        std::uint64_t last_room;
    } const cases[] = {
        {8, 1024},      {1022, 1024},   {1023, 1024},   {1024, 2048}, {1025, 2048},
        {2047, 2048},   {2048, 3072},   {3071, 3072},   {3072, 4096}, {30719, 30720},
        {30720, 31744}, {31742, 31744}, {31743, 31744},
    };
    for (auto const &row : cases) {
        simulated_machine fresh;
        fresh.load_module(base, module_size, module_of(row.size));
        EXPECT_TRUE(detail::get_module_path_from_address(inside) == module_of(row.size))
            << row.size;
        EXPECT_EQ(offered(fresh), rooms_up_to(row.last_room)) << row.size;
        EXPECT_EQ(fresh.calls_of("VirtualQuery"), 1);
    }
}

TEST_ON_MACHINE(ModulePathCalls, GiveUpBeyond31743UnitsWithTheBeginning)
{
    for (std::size_t const size : {31744U, 31745U, 32766U, 32767U}) {
        simulated_machine fresh;
        fresh.load_module(base, module_size, module_of(size));
        EXPECT_TRUE(detail::get_module_path_from_address(inside) == module_of(1023)) << size;
        EXPECT_EQ(offered(fresh), rooms_up_to(31744)) << size;
    }
}

TEST_ON_MACHINE(ModulePathCalls, QueryTheMemoryWithRoomForOneRecord)
{
    machine.load_module(base, module_size, u"C:\\lib.dll");
    EXPECT_EQ(detail::get_module_path_from_address(base), u"C:\\lib.dll");
    ASSERT_EQ(machine.journal().size(), 2U);
    EXPECT_EQ(machine.journal()[0].function, "VirtualQuery");
    EXPECT_EQ(machine.journal()[0].room, 48U);
}

TEST_ON_MACHINE(ModulePathCalls, NoneForANullAddress)
{
    EXPECT_EQ(detail::get_module_path_from_address(nullptr), u"");
    EXPECT_EQ(machine.journal().size(), 0U);
}

TEST_ON_MACHINE(ModulePathCalls, FindTheModuleAroundAnAddress)
{
    std::uintptr_t const first = 0x10000000;
    machine.load_module(base, module_size, u"C:\\lib.dll");
    auto const at = [](std::uintptr_t address) {
        return detail::get_module_path_from_address(reinterpret_cast<void *>(address));
    };
    EXPECT_EQ(at(first - 1), u"");
    EXPECT_EQ(at(first), u"C:\\lib.dll");
    EXPECT_EQ(at(first + module_size - 1), u"C:\\lib.dll");
    EXPECT_EQ(at(first + module_size), u"");
}

TEST_ON_MACHINE(ModulePathCalls, ABlockOfAHeapIsNoModule)
{
    machine.reserve_memory(base, module_size);
    EXPECT_EQ(detail::get_module_path_from_address(inside), u"");
    EXPECT_EQ(offered(machine), rooms{1024}) << "it has a base, and that is asked for";
}

// Free memory has no base. Asking for the file of none would be answered with the program's.
TEST_ON_MACHINE(ModulePathCalls, WithoutABaseNoFileIsAskedFor)
{
    machine.load_module(base, module_size, u"C:\\lib.dll");
    EXPECT_EQ(detail::get_module_path_from_address(reinterpret_cast<void *>(0x1000)), u"");
    sure_fault const fault = machine.fail_call("VirtualQuery", 1, 87);
    EXPECT_EQ(detail::get_module_path_from_address(inside), u"");
    EXPECT_EQ(offered(machine), rooms{});
}

TEST_ON_MACHINE(ModulePathCalls, AFailureInAnyPassIsEmpty)
{
    for (int const nth : {1, 2, 3}) {
        for (DWORD const code : {0U, 5U, 126U}) {
            simulated_machine fresh;
            fresh.load_module(base, module_size, module_of(2500));
            sure_fault const fault = fresh.fail_call("GetModuleFileNameW", nth, code);
            EXPECT_EQ(detail::get_module_path_from_address(inside), u"") << nth;
            EXPECT_EQ(offered(fresh).size(), static_cast<std::size_t>(nth));
        }
    }
}

TEST_ON_MACHINE(ModulePathCalls, AModuleThatChangesMeanwhileIsReadAsItIsThen)
{
    machine.load_module(base, module_size, module_of(1500));
    auto const others = machine.before_call(
        "GetModuleFileNameW", 2, [&] { machine.load_module(base, module_size, u"C:\\lib.dll"); });
    EXPECT_EQ(detail::get_module_path_from_address(inside), u"C:\\lib.dll");
    EXPECT_EQ(offered(machine), (rooms{1024, 2048}));
}

TEST_ON_MACHINE(ModulePathCalls, KeepEveryUnit)
{
    std::u16string const odd = u"C:\\\u00C4\u4E2D\xD83D\xDE00\xDC00.dll";
    machine.load_module(base, module_size, odd);
    EXPECT_EQ(detail::get_module_path_from_address(inside), odd);
}

TEST_ON_MACHINE(ModulePathCalls, TheProgramItselfIsAModule)
{
    machine.set_program_pathname(uR"(D:\tool\Program.exe)");
    EXPECT_EQ(detail::get_module_path_from_address(reinterpret_cast<void *>(&get_install_path)),
              uR"(D:\tool\Program.exe)");
}

} // namespace
} // namespace fl::filesystem::tests
