#include "platform/contract.hpp"

#include <memory>

namespace contract {

namespace {

static_assert(sizeof(MEMORY_BASIC_INFORMATION) == 48);

MEMORY_BASIC_INFORMATION query(void const *address)
{
    MEMORY_BASIC_INFORMATION info{};
    EXPECT_EQ(::VirtualQuery(address, &info, sizeof info), SIZE_T{48});
    return info;
}

/// The file of the module that begins at `base`, empty if there is none.
std::wstring module_file(void *base)
{
    std::wstring buffer(1000, L'\0');
    DWORD const length = ::GetModuleFileNameW(static_cast<HMODULE>(base), buffer.data(), 1000);
    buffer.resize(length);
    return buffer;
}

DWORD get_module_file(void *base)
{
    return outcome_of([&] { return !module_file(base).empty(); });
}

int some_data = 1;

void some_function() {}

TEST(Modules, AreFoundByTheAddressesInThem)
{
    std::wstring const program = module_file(nullptr);
    ASSERT_FALSE(program.empty());
    auto *const code = reinterpret_cast<void const *>(&some_function);
    void *const base = query(code).AllocationBase;
    ASSERT_NE(base, nullptr);
    EXPECT_EQ(query(&some_data).AllocationBase, base);
    EXPECT_EQ(query(base).AllocationBase, base) << "also by the first of them";
    EXPECT_EQ(module_file(base), program);
}

TEST(Modules, DontCoverTheHeapNorTheStack)
{
    auto const block = std::make_unique<int>(1);
    int local = 1;
    for (void const *const address :
         {static_cast<void *>(block.get()), static_cast<void *>(&local)}) {
        MEMORY_BASIC_INFORMATION const info = query(address);
        EXPECT_NE(info.AllocationBase, nullptr) << "it is in use";
        EXPECT_EQ(info.State, DWORD{MEM_COMMIT});
        EXPECT_EQ(get_module_file(info.AllocationBase), DWORD{ERROR_MOD_NOT_FOUND});
    }
}

// The program itself is what a null base means, so that the two are easily mixed up.
TEST(Modules, HaveNoBaseWhereMemoryIsFree)
{
    MEMORY_BASIC_INFORMATION const info = query(nullptr);
    EXPECT_EQ(info.AllocationBase, nullptr);
    EXPECT_EQ(info.State, DWORD{MEM_FREE});
    EXPECT_EQ(get_module_file(info.AllocationBase), success);
}

DWORD query_outcome(std::uintptr_t address, SIZE_T size)
{
    MEMORY_BASIC_INFORMATION info[2] = {};
    info[0].AllocationBase = &info;
    DWORD const code = outcome_of(
        [&] { return ::VirtualQuery(reinterpret_cast<void const *>(address), info, size) != 0; });
    EXPECT_EQ(info[0].AllocationBase == &info, code != success) << "a failure leaves it alone";
    return code;
}

TEST(Modules, AreNotAskedForAtTheSystemsAddresses)
{
    EXPECT_EQ(query_outcome(0x7FFFFFFE0000, 48), success);
    EXPECT_EQ(query_outcome(0x7FFFFFFF0000, 48), DWORD{ERROR_INVALID_PARAMETER});
    EXPECT_EQ(query_outcome(0xFFFF800000000000, 48), DWORD{ERROR_INVALID_PARAMETER});
}

TEST(Modules, NeedRoomForTheAnswer)
{
    EXPECT_EQ(query_outcome(0x1000, 47), DWORD{ERROR_BAD_LENGTH});
    EXPECT_EQ(query_outcome(0x1000, 0), DWORD{ERROR_BAD_LENGTH});
    EXPECT_EQ(query_outcome(0x1000, 96), success);
}

TEST(ModuleFileName, IsTheProgramsForNoModule)
{
    std::wstring const program = module_file(nullptr);
    ASSERT_GT(program.size(), 3U);
    EXPECT_EQ(program.substr(1, 2), LR"(:\)") << "a full pathname";
    EXPECT_TRUE(program.ends_with(L".exe"));
}

TEST(ModuleFileName, NeedsAModule)
{
    EXPECT_EQ(get_module_file(reinterpret_cast<void *>(0x10000)), DWORD{ERROR_MOD_NOT_FOUND});
}

// The last error tells a cut name from a whole one, so it is set also by a success.
// Wine fills all of the room, as Windows did before Vista: no NUL ends the text.
TEST(ModuleFileName, IsCutToTheRoom)
{
    std::wstring const program = module_file(nullptr);
    DWORD const length = static_cast<DWORD>(program.size());
    for (DWORD const room : {DWORD{0}, DWORD{1}, DWORD{5}, length - 1, length}) {
        std::wstring buffer(length + 2, L'#');
        ::SetLastError(untouched);
        EXPECT_EQ(::GetModuleFileNameW(nullptr, buffer.data(), room), room);
        EXPECT_EQ(::GetLastError(), DWORD{ERROR_INSUFFICIENT_BUFFER}) << room;
        std::wstring cut = program.substr(0, room) + L'#';
        if (room != 0 && !runs_under_wine())
            cut[room - 1] = L'\0';
        EXPECT_EQ(buffer.substr(0, cut.size()), cut) << room;
    }
}

TEST(ModuleFileName, LeavesNoErrorWhenItIsWhole)
{
    std::wstring const program = module_file(nullptr);
    DWORD const length = static_cast<DWORD>(program.size());
    for (DWORD const room : {length + 1, length + 2}) {
        std::wstring buffer(length + 2, L'#');
        ::SetLastError(untouched);
        EXPECT_EQ(::GetModuleFileNameW(nullptr, buffer.data(), room), length);
        EXPECT_EQ(::GetLastError(), DWORD{ERROR_SUCCESS}) << room;
        EXPECT_EQ(std::wstring(buffer.c_str()), program) << room;
    }
}

} // namespace

} // namespace contract
