// The root above a module, on machines with a module in any place.

#include <fl/filesystem/install_path.hpp>
#include <fl/filesystem/operations.hpp>

#include "support/calls.hpp"

namespace fl::filesystem::tests {
namespace {

void *const base = reinterpret_cast<void *>(std::uintptr_t{0x10000000});
constexpr std::size_t module_size = 0x4000;

void load(simulated_machine &machine, std::u16string_view module)
{
    machine.load_module(base, module_size, module);
}

std::u16string base_path()
{
    return units(detail::get_base_path(base));
}

struct base_case
{
    char16_t const *stored; // as the disk has it
    char16_t const *module; // as the system tells it
    char16_t const *expected;
    char const *why;
};

constexpr base_case base_cases[] = {
    {uR"(D:\Apps\Tool\bin\win64\lib.dll)", uR"(D:\Apps\Tool\bin\win64\lib.dll)", uR"(D:\Apps\Tool)",
     "the usual place"},
    {uR"(D:\Apps\bin\win64\lib.dll)", uR"(d:\aPPS\BIN\Win64\LIB.dll)", uR"(D:\Apps)",
     "in any case, with the case of the disk"},
    {uR"(C:\bin\win64\lib.dll)", uR"(c:\bin\win64\lib.dll)", uR"(C:\)", "a root directory"},
    {uR"(C:\tools\lib.dll)", uR"(C:\tools\lib.dll)", uR"(C:\tools\lib.dll)", "no such pair"},
    {uR"(C:\Tools\Lib.dll)", uR"(c:\TOOLS\lib.dll)", uR"(c:\TOOLS\lib.dll)",
     "the module as it is written"},
    {uR"(C:\a\win64\lib.dll)", uR"(C:\a\win64\lib.dll)", uR"(C:\a\win64\lib.dll)", "no bin"},
    {uR"(C:\root\bin\win64\bin\win64\lib.dll)", uR"(C:\root\bin\win64\bin\win64\lib.dll)",
     uR"(C:\root\bin\win64)", "the deepest pair"},
    {uR"(C:\Root\bin\win64\plug\in\lib.dll)", uR"(C:\root\bin\win64\plug\in\lib.dll)",
     uR"(C:\Root)", "below the pair"},
    {uR"(C:\Root\bin\win64\lib.dll)", uR"(\\?\c:\root\bin\win64\lib.dll)", uR"(C:\Root)",
     "a module with a long prefix"},
    {uR"(\\server\share\Apps\bin\win64\lib.dll)", uR"(\\server\Share\apps\bin\win64\lib.dll)",
     uR"(\\server\share\Apps)", "a share, which no disk lists, in lower case"},
};

TEST_ON_MACHINE(GetBasePath, Table)
{
    for (base_case const &row : base_cases) {
        simulated_machine fresh;
        fresh.add_drive(u'D').add_share(u"server", u"share").add_file(row.stored);
        load(fresh, row.module);
        EXPECT_EQ(base_path(), row.expected) << row.why;
        EXPECT_EQ(fresh.find_handles(), 0) << row.why;
        EXPECT_EQ(fresh.open_handles(), 0) << row.why;
    }
}

TEST_ON_MACHINE(GetBasePath, IsEmptyWithoutAModule)
{
    EXPECT_EQ(detail::get_base_path(nullptr), L"");
    machine.reserve_memory(base, module_size);
    EXPECT_EQ(base_path(), u"");
    load(machine, uR"(C:\bin\win64\lib.dll)");
    auto const fault = machine.fail_every_call_on("GetModuleFileNameW", 126);
    EXPECT_EQ(base_path(), u"");
}

TEST_ON_MACHINE(GetBasePath, FollowsLinksToWhereTheModuleIs)
{
    machine.add_drive(u'D').add_file(uR"(D:\Real\bin\win64\lib.dll)");
    machine.add_junction(uR"(C:\app)", uR"(D:\Real)");
    machine.add_symbolic_link(uR"(C:\plug\lib.dll)", uR"(D:\Real\bin\win64\lib.dll)");
    load(machine, uR"(C:\app\bin\win64\lib.dll)");
    EXPECT_EQ(base_path(), uR"(D:\Real)");
    load(machine, uR"(C:\plug\lib.dll)");
    EXPECT_EQ(base_path(), uR"(D:\Real)");
}

TEST_ON_MACHINE(GetBasePath, IsWithoutAPrefixHoweverLong)
{
    std::u16string const root =
        uR"(C:\)" + std::u16string(200, u'A') + u'\\' + std::u16string(200, u'B');
    machine.add_file(root + uR"(\bin\win64\lib.dll)");
    load(machine, root + uR"(\bin\win64\lib.dll)");
    EXPECT_EQ(base_path(), root);
    std::u16string const plain = root + uR"(\lib.dll)";
    machine.add_file(plain);
    load(machine, plain);
    EXPECT_EQ(base_path(), plain);
}

TEST_ON_MACHINE(GetBasePath, HasNamesThatCantBeListedInLowerCase)
{
    machine.add_file(uR"(C:\Apps\Tool\Sub\bin\win64\lib.dll)");
    machine.deny(u"C:\\Apps", right::list);
    load(machine, uR"(C:\APPS\TOOL\SUB\bin\win64\lib.dll)");
    EXPECT_EQ(base_path(), uR"(C:\Apps\tool\Sub)");
}

TEST_ON_MACHINE(GetBasePath, AModuleThatCantBeResolvedIsAFailure)
{
    load(machine, uR"(C:\gone\bin\win64\lib.dll)");
    EXPECT_FAILURE(base_path(), not_found(u"")) << "not there";
    machine.add_file(uR"(C:\gone\bin\win64\lib.dll)");
    sure_fault const fault = machine.fail_call("GetFullPathNameW", 1, 5);
    EXPECT_FAILURE(base_path(), denied(uR"(C:\gone\bin\win64\lib.dll)"));
}

/// How many calls of this function resolving the module once makes.
int calls_of_canonical(char const *function)
{
    simulated_machine machine;
    machine.add_file(uR"(C:\Root\bin\win64\lib.dll)");
    canonical(std::u16string(uR"(C:\Root\bin\win64\lib.dll)"), {});
    return machine.calls_of(function);
}

TEST_ON_MACHINE(GetBasePath, AModuleThatCantBeResolvedAgainIsTheResult)
{
    std::u16string const module = uR"(c:\rOOT\bin\win64\lib.dll)";
    for (char const *function : {"GetFullPathNameW", "GetFileAttributesExW"}) {
        int const once = calls_of_canonical(function);
        ASSERT_GT(once, 0);
        simulated_machine fresh;
        fresh.add_file(uR"(C:\Root\bin\win64\lib.dll)");
        load(fresh, module);
        sure_fault const fault = fresh.fail_call(function, 2 * once, 1117);
        EXPECT_EQ(base_path(), module) << function;
    }
}

TEST_ON_MACHINE(GetBasePath, AModuleThatGoesBeforeItIsResolvedAgainIsTheResult)
{
    machine.add_file(uR"(C:\Root\bin\win64\lib.dll)");
    load(machine, uR"(C:\Root\bin\win64\lib.dll)");
    int const once = calls_of_canonical("GetFullPathNameW");
    sure_fault const others = machine.before_call(
        "GetFullPathNameW", once + 1, [&] { machine.remove(uR"(C:\Root\bin\win64\lib.dll)"); });
    EXPECT_EQ(base_path(), uR"(C:\Root\bin\win64\lib.dll)");
}

struct search_case
{
    char const *function;
    int nth;
    DWORD code;
    char16_t const *expected;
    char const *why;
};

// The module lies in C:\Apps\Tool\bin\win64.
constexpr search_case search_cases[] = {
    {"FindFirstFileExW", 1, 1117, uR"(C:\apps\Tool)", "a level above the root can't be found"},
    {"FindFirstFileExW", 1, 5, uR"(C:\apps\Tool)", "nor listed"},
    {"FindFirstFileExW", 2, 3, uR"(C:\Apps\tool)", "the root itself can't be reached"},
    {"FindFirstFileExW", 2, 5, uR"(C:\Apps\tool)", "nor listed"},
    {"FindFirstFileExW", 2, 2, uR"(C:\APPS\TOOL\bin\win64\lib.dll)", "the root has gone"},
    {"FindFirstFileExW", 2, 1117, uR"(C:\APPS\TOOL\bin\win64\lib.dll)", "nor can it be read"},
    {"FindClose", 1, 6, uR"(C:\APPS\TOOL\bin\win64\lib.dll)", "the first search can't be closed"},
    {"FindClose", 2, 6, uR"(C:\APPS\TOOL\bin\win64\lib.dll)", "nor can the last"},
};

TEST_ON_MACHINE(GetBasePath, ASearchThatFailsIsNoFailure)
{
    for (search_case const &row : search_cases) {
        simulated_machine fresh;
        fresh.add_file(uR"(C:\Apps\Tool\bin\win64\lib.dll)");
        load(fresh, uR"(C:\APPS\TOOL\bin\win64\lib.dll)");
        sure_fault const fault = fresh.fail_call(row.function, row.nth, row.code);
        EXPECT_EQ(base_path(), row.expected) << row.why;
        EXPECT_EQ(fresh.find_handles(), 0) << row.why;
    }
}

// The pair right below a share leaves the share as the last level, which isn't a file that
// the system could find.
TEST_ON_MACHINE(GetBasePath, AShareAsTheRootTakesTheModuleUnlessItCantBeListed)
{
    std::u16string const module = uR"(\\server\Share\bin\win64\lib.dll)";
    struct
    {
        DWORD code;
        std::u16string expected;
    } const cases[] = {
        {3, uR"(\\server\share)"}, {5, uR"(\\server\share)"}, {2, module}, {53, module}};
    for (auto const &row : cases) {
        simulated_machine fresh;
        fresh.add_share(u"server", u"share").add_file(module);
        load(fresh, module);
        sure_fault const fault = fresh.fail_call("FindFirstFileExW", 1, row.code);
        EXPECT_EQ(base_path(), row.expected) << row.code;
    }
}

TEST_ON_MACHINE(GetBasePath, OfAModuleOnAServersRootPairIsTheModule)
{
    // `bin` as the share and `win64` in it leave a server without a share
    machine.add_share(u"server", u"bin").add_file(uR"(\\server\bin\win64\lib.dll)");
    load(machine, uR"(\\server\bin\win64\lib.dll)");
    EXPECT_EQ(base_path(), uR"(\\server\bin\win64\lib.dll)");
}

TEST_ON_MACHINE(GetBasePath, EveryFailingCallReleasesItsHandles)
{
    auto const build = [](simulated_machine &fresh) {
        fresh.add_file(uR"(C:\Apps\Tool\bin\win64\lib.dll)");
        load(fresh, uR"(C:\Apps\Tool\bin\win64\lib.dll)");
    };
    sweep(build, [](failing_run const &) { failure_of([] { base_path(); }); });
}

TEST_ON_MACHINE(GetBasePath, IsFoundAnewEachTime)
{
    machine.add_file(uR"(C:\one\bin\win64\lib.dll)").add_file(uR"(C:\two\bin\win64\lib.dll)");
    load(machine, uR"(C:\one\bin\win64\lib.dll)");
    EXPECT_EQ(base_path(), uR"(C:\one)");
    load(machine, uR"(C:\two\bin\win64\lib.dll)");
    EXPECT_EQ(base_path(), uR"(C:\two)");
}

} // namespace
} // namespace fl::filesystem::tests
