// Which drives are on the network, as the simulated machine has it.

#include "access/mapped_drive.hpp"

#include "support/calls.hpp"

#include <winnetwk.h>

namespace fl::filesystem::detail {
namespace {

using namespace test_support;

constexpr windows::path_type_enum no_drive_types[] = {
    windows::PATH_TYPE_INVALID,  windows::PATH_TYPE_RELATIVE,
    windows::PATH_TYPE_ROOTED,   windows::PATH_TYPE_DRIVE_RELATIVE,
    windows::PATH_TYPE_UNC,      windows::PATH_TYPE_UNC_NO_ROOT,
    windows::PATH_TYPE_LONG_UNC, windows::PATH_TYPE_LONG_DRIVE_RELATIVE,
    windows::PATH_TYPE_DEVICE,   windows::PATH_TYPE_LONG_UNC_NO_ROOT};

TEST_ON_MACHINE(IsMappedNetworkDrive, AsksTheProviderWithoutThePrefix)
{
    machine.add_drive(u'D').add_share(u"s", u"h").map_drive(u'X', u"s", u"h");
    constexpr auto bare = windows::PATH_TYPE_DRIVE_ABSOLUTE;
    constexpr auto long_form = windows::PATH_TYPE_LONG_DRIVE_ABSOLUTE;
    struct
    {
        wchar_t const *path;
        windows::path_type_enum type;
        bool expected;
        char const *call;
        char const *why;
    } const cases[] = {
        {LR"(X:\a)", bare, true, R"(WNetGetUniversalNameW(X:\a))", "a mapped drive"},
        {LR"(X:\)", bare, true, R"(WNetGetUniversalNameW(X:\))", "its root"},
        {LR"(\\?\X:\a)", long_form, true, R"(WNetGetUniversalNameW(X:\a))", "without the prefix"},
        {LR"(\\?\X:\a)", bare, true, R"(WNetGetUniversalNameW(X:\a))", "either type"},
        {LR"(X:\a)", long_form, true, R"(WNetGetUniversalNameW(X:\a))", "either type"},
        {LR"(C:\a)", bare, false, R"(WNetGetUniversalNameW(C:\a))", "a drive of this machine"},
        {LR"(\\?\D:\)", long_form, false, R"(WNetGetUniversalNameW(D:\))", "another one"},
        {LR"(\\?\UNC\s\h)", long_form, false, R"(WNetGetUniversalNameW(\\s\h))",
         "a share, where a link led there"},
        {LR"(Q:\a)", bare, false, R"(WNetGetUniversalNameW(Q:\a))", "no drive"},
    };
    for (auto const &row : cases) {
        machine.clear_journal();
        EXPECT_EQ(is_mapped_network_drive(row.path, row.type), row.expected)
            << printable(units(row.path)) << ": " << row.why;
        EXPECT_EQ(calls(machine), lines{row.call}) << row.why;
    }
}

TEST_ON_MACHINE(IsMappedNetworkDrive, AsksNobodyAboutOtherTypes)
{
    machine.add_share(u"s", u"h").map_drive(u'X', u"s", u"h");
    for (auto const type : no_drive_types)
        EXPECT_FALSE(is_mapped_network_drive(LR"(X:\a)", type)) << type;
    EXPECT_EQ(calls(machine), lines{});
}

TEST_ON_MACHINE(IsMappedNetworkDrive, ASuccessWithoutANameIsNone)
{
    machine.add_share(u"s", u"h").map_drive(u'X', u"s", u"h").forget_universal_names();
    EXPECT_FALSE(is_mapped_network_drive(LR"(X:\a)", windows::PATH_TYPE_DRIVE_ABSOLUTE));
    EXPECT_EQ(calls(machine), lines{R"(WNetGetUniversalNameW(X:\a))"});
}

TEST_ON_MACHINE(IsMappedNetworkDrive, AFailureIsNone)
{
    machine.add_share(u"s", u"h").map_drive(u'X', u"s", u"h");
    for (DWORD const code : {DWORD{ERROR_MORE_DATA}, DWORD{2250}, DWORD{1222}, DWORD{1}}) {
        sure_fault const fault = machine.fail_every_call_on("WNetGetUniversalNameW", code);
        EXPECT_FALSE(is_mapped_network_drive(LR"(X:\a)", windows::PATH_TYPE_DRIVE_ABSOLUTE));
    }
}

TEST_ON_MACHINE(IsMappedNetworkDrive, HasRoomForLongNamesAsFarAsItTells)
{
    // record and name have to fit into 32767 bytes, though the buffer is twice as large
    constexpr std::size_t told = 32767;
    constexpr std::size_t longest_name =
        (told - sizeof(UNIVERSAL_NAME_INFOW)) / sizeof(wchar_t) - 1;
    constexpr std::size_t longest = longest_name + 2 - 5; // \\s\h in place of X:
    machine.add_share(u"s", u"h").map_drive(u'X', u"s", u"h");
    for (std::size_t const size : {std::size_t{1000}, longest - 1, longest})
        EXPECT_TRUE(
            is_mapped_network_drive(of_size(LR"(X:\)", size), windows::PATH_TYPE_DRIVE_ABSOLUTE))
            << size;
    for (std::size_t const size : {longest + 1, std::size_t{16400}, std::size_t{32000}})
        EXPECT_FALSE(
            is_mapped_network_drive(of_size(LR"(X:\)", size), windows::PATH_TYPE_DRIVE_ABSOLUTE))
            << size;
    for (auto const &entry : machine.journal())
        EXPECT_EQ(entry.room, told);
}

} // namespace
} // namespace fl::filesystem::detail
