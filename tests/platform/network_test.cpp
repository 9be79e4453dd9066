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

TEST(UniversalName, ExistsOnMappedDrivesOnly)
{
    // a drive, a name on it, which nobody looks for, the drive alone, and no drive
    for (wchar_t const *name : {LR"(C:\)", LR"(C:\fl-missing\a)", L"C:", LR"(Q:\a)"})
        EXPECT_EQ(get_universal_name(name, UNIVERSAL_NAME_INFO_LEVEL), DWORD{ERROR_NOT_CONNECTED})
            << name;
    // one that is universal already, a long prefix, on no drive, and no text
    for (wchar_t const *name : {LR"(\\fl-server\share\a)", LR"(\\?\C:\a)", L"name", L""})
        EXPECT_EQ(get_universal_name(name, UNIVERSAL_NAME_INFO_LEVEL),
                  expected(ERROR_BAD_DEVICE, ERROR_NOT_CONNECTED))
            << name;
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
