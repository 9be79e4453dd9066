// Which drives are on the network, as the simulated machine has it.

#include "access/mapped_drive.hpp"

#include "access/walking.hpp"
#include "support/text.hpp"

namespace fl::filesystem::detail {
namespace {

using test_support::printable;
using test_support::units;

constexpr windows::path_type_enum no_drive_types[] = {
    windows::PATH_TYPE_INVALID,  windows::PATH_TYPE_RELATIVE,
    windows::PATH_TYPE_ROOTED,   windows::PATH_TYPE_DRIVE_RELATIVE,
    windows::PATH_TYPE_UNC,      windows::PATH_TYPE_UNC_NO_ROOT,
    windows::PATH_TYPE_LONG_UNC, windows::PATH_TYPE_LONG_DRIVE_RELATIVE,
    windows::PATH_TYPE_DEVICE,   windows::PATH_TYPE_LONG_UNC_NO_ROOT};

TEST(IsMappedNetworkDrive, AsksTheProviderWithoutThePrefix)
{
    simulated_machine machine;
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
        {LR"(Q:\a)", bare, false, R"(WNetGetUniversalNameW(Q:\a))", "no drive"},
    };
    for (auto const &row : cases) {
        machine.clear_journal();
        EXPECT_EQ(is_mapped_network_drive(row.path, row.type), row.expected)
            << printable(units(row.path)) << ": " << row.why;
        EXPECT_EQ(calls(machine), lines{row.call}) << row.why;
    }
}

TEST(IsMappedNetworkDrive, AsksNobodyAboutOtherTypes)
{
    simulated_machine machine;
    machine.add_share(u"s", u"h").map_drive(u'X', u"s", u"h");
    for (auto const type : no_drive_types)
        EXPECT_FALSE(is_mapped_network_drive(LR"(X:\a)", type)) << type;
    EXPECT_EQ(calls(machine), lines{});
}

TEST(IsMappedNetworkDrive, AFailureIsNone)
{
    simulated_machine machine;
    machine.add_share(u"s", u"h").map_drive(u'X', u"s", u"h");
    for (DWORD const code : {DWORD{ERROR_MORE_DATA}, DWORD{2250}, DWORD{1222}, DWORD{1}}) {
        auto const fault = machine.fail_every_call_on("WNetGetUniversalNameW", code);
        EXPECT_FALSE(is_mapped_network_drive(LR"(X:\a)", windows::PATH_TYPE_DRIVE_ABSOLUTE));
        EXPECT_TRUE(fault.fired());
    }
}

TEST(IsMappedNetworkDrive, HasRoomForLongNamesAsFarAsItTells)
{
    // record and name have to fit into 32767 bytes, though the buffer is twice as large
    simulated_machine machine;
    machine.add_share(u"s", u"h").map_drive(u'X', u"s", u"h");
    for (std::size_t const size : {1000U, 8000U})
        EXPECT_TRUE(is_mapped_network_drive(test_support::of_size(LR"(X:\)", size),
                                            windows::PATH_TYPE_DRIVE_ABSOLUTE))
            << size;
    for (std::size_t const size : {16400U, 32000U})
        EXPECT_FALSE(is_mapped_network_drive(test_support::of_size(LR"(X:\)", size),
                                             windows::PATH_TYPE_DRIVE_ABSOLUTE))
            << size;
}

} // namespace
} // namespace fl::filesystem::detail
