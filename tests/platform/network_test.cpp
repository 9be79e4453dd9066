#include "platform/contract.hpp"

#include <winnetwk.h>

namespace contract {

namespace {

/// The call answers by its value.
DWORD get_universal_name(wchar_t const *text, DWORD level)
{
    alignas(8) char buffer[2000] = {};
    DWORD size = sizeof buffer;
    DWORD const code = ::WNetGetUniversalNameW(text, level, buffer, &size);
    EXPECT_EQ(size, DWORD{sizeof buffer}) << "there is no other size to state";
    EXPECT_EQ(buffer[0], '\0') << "nothing is stored";
    return code;
}

constexpr call_row network_cases[] = {
    {LR"(C:\)", ERROR_NOT_CONNECTED, "a local drive"},
    {LR"(C:\fl-missing\a)", ERROR_NOT_CONNECTED, "a name on it, which nobody looks for"},
    {L"C:", ERROR_NOT_CONNECTED, "the drive alone"},
    {LR"(Q:\a)", ERROR_NOT_CONNECTED, "no drive"},
    {LR"(\\fl-server\share\a)", ERROR_BAD_DEVICE, "it is universal already", ERROR_NOT_CONNECTED},
    {LR"(\\?\C:\a)", ERROR_BAD_DEVICE, "a long prefix", ERROR_NOT_CONNECTED},
    {L"name", ERROR_BAD_DEVICE, "on no drive", ERROR_NOT_CONNECTED},
    {L"", ERROR_BAD_DEVICE, "no text", ERROR_NOT_CONNECTED},
};

TEST(UniversalName, ExistsOnMappedDrivesOnly)
{
    for (call_row const &row : network_cases) {
        DWORD const code = expected(row.code, row.wine);
        EXPECT_EQ(get_universal_name(row.text, UNIVERSAL_NAME_INFO_LEVEL), code) << row.why;
    }
}

// A caller that only wants to know the size hands over no room.
TEST(UniversalName, NeedsNoBufferToFail)
{
    DWORD size = 0;
    EXPECT_EQ(::WNetGetUniversalNameW(LR"(C:\)", UNIVERSAL_NAME_INFO_LEVEL, nullptr, &size),
              DWORD{ERROR_NOT_CONNECTED});
    EXPECT_EQ(size, 0U);
}

// Wine has nothing at the level of remote names.
TEST(UniversalName, HasTwoLevels)
{
    EXPECT_EQ(get_universal_name(LR"(C:\)", REMOTE_NAME_INFO_LEVEL),
              expected(ERROR_NOT_CONNECTED, ERROR_NO_NETWORK));
    EXPECT_EQ(get_universal_name(LR"(C:\)", 0), DWORD{ERROR_INVALID_PARAMETER});
    EXPECT_EQ(get_universal_name(LR"(C:\)", 3), DWORD{ERROR_INVALID_PARAMETER});
}

} // namespace

} // namespace contract
