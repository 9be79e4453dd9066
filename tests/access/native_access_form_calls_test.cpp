// What the access forms ask the system, on the simulated machine.

#include <fl/filesystem.hpp>

#include <fl/filesystem/access_forms.hpp>
#include <fl/filesystem/windows.hpp>

#include "access/walking.hpp"
#include "support/calls.hpp"

#include <algorithm>

namespace fl::filesystem::detail {
namespace {

using namespace test_support;
using windows::make_native_access_form_bridge;

TEST_ON_MACHINE(NativeAccessFormCalls, NoDiskAccessWithoutTwoDots)
{
    machine.add_directory(u"C:\\work").set_current_directory(u"C:\\work");
    for (char16_t const *path :
         {uR"(C:\a\.\b)", u"x", uR"(\x)", u"C:x", uR"(\\s\h\x)", u"C:\\", uR"(C:\a..b\..c)"}) {
        machine.clear_journal();
        make_native_access_form_bridge(path);
        EXPECT_EQ(calls(machine), lines{"GetFullPathNameW(" + printable(path) + ")"});
    }
}

TEST_ON_MACHINE(NativeAccessFormCalls, APathObjectHasNoPrefixToHandOver)
{
    EXPECT_EQ(make_native_access_form_bridge(uR"(\\?\C:\a\.\b)"), LR"(C:\a\b)");
    EXPECT_EQ(calls(machine), lines{R"(GetFullPathNameW(C:\a\.\b))"});
}

TEST_ON_MACHINE(NativeAccessFormCalls, AFailedExpansionIsTold)
{
    sure_fault const fault = machine.fail_every_call_on("GetFullPathNameW", 5);
    EXPECT_FAILURE(make_native_access_form_bridge(uR"(C:\x)"), denied(uR"(C:\x)"));
    EXPECT_EQ(make_native_access_form(uR"(C:\x\.)"), LR"(C:\x\.)") << "this one never tells";
    EXPECT_EQ(make_native_access_form_with_cleanup(u"C:/x//y"), LR"(C:\x\y)") << "nor this";
}

TEST_ON_MACHINE(NativeAccessFormCalls, WhatTheWalkTellsIsToldOrSwallowed)
{
    std::wstring const full = LR"(C:\f\..\x)";
    machine.add_file(u"C:\\f");
    auto const hook = machine.on_full_path_name([&](DWORD, wchar_t *buffer) {
        std::copy(full.begin(), full.end(), buffer);
        buffer[full.size()] = L'\0';
        return std::optional<DWORD>(static_cast<DWORD>(full.size()));
    });
    EXPECT_FAILURE(make_native_access_form_bridge(uR"(C:\f\..\x)"), nowhere());
    EXPECT_EQ(make_native_access_form(uR"(C:\f\..\x)"), full);
}

} // namespace
} // namespace fl::filesystem::detail
