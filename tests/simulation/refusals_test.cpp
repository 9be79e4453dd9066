// What a test can only arrange on a simulated machine: rights, servers, attributes.

#include "platform/contract.hpp"
#include "support/tables.hpp"

#include <simulation/machine.hpp>

#include <gtest/gtest.h>

namespace fl::simulation {

namespace {

using contract::create_directory;
using contract::get_file_attributes;
using contract::remove_directory;
using contract::success;

TEST(Refusals, CreationIsDenied)
{
    simulated_machine machine;
    machine.add_directory(u"C:\\dir\\inner").deny_creation(u"C:\\dir");
    EXPECT_EQ(create_directory(L"C:\\dir\\new"), DWORD{ERROR_ACCESS_DENIED});
    EXPECT_FALSE(machine.exists(u"C:\\dir\\new"));
    EXPECT_EQ(create_directory(L"C:\\dir\\inner"), DWORD{ERROR_ALREADY_EXISTS});
    EXPECT_EQ(create_directory(L"C:\\dir\\inner\\new"), success);
    EXPECT_EQ(get_file_attributes(L"C:\\dir"), success);
}

TEST(Refusals, ServersAreUnknownOrDead)
{
    simulated_machine machine;
    machine.add_share(u"server", u"share").add_share(u"dead", u"share").add_dead_server(u"dead");
    constexpr test_support::row_of<wchar_t const *, DWORD> rows[] = {
        {L"\\\\server\\share\\dir", ERROR_FILE_NOT_FOUND, "reached"},
        {L"\\\\server\\share\\dir\\inner", ERROR_PATH_NOT_FOUND, "reached"},
        {L"\\\\server\\other\\dir", ERROR_BAD_NET_NAME, "a server without that share"},
        {L"\\\\server\\other", ERROR_BAD_NET_NAME, "the share itself"},
        {L"\\\\server", ERROR_INVALID_NAME, "no share at all"},
        {L"\\\\dead\\share\\dir", ERROR_BAD_NETPATH, "a dead server"},
        {L"\\\\dead", ERROR_BAD_NETPATH, "without a share"},
        {L"\\\\unknown\\share\\dir", ERROR_BAD_NETPATH, "an unknown server"},
        {L"\\\\?\\UNC\\unknown\\share\\dir", ERROR_BAD_NETPATH, "with a long prefix"},
        {L"\\\\.\\UNC\\server\\other\\dir", ERROR_BAD_NET_NAME, "with the other prefix"},
    };
    test_support::expect_rows(rows, [](auto name) { return get_file_attributes(name); });
}

TEST(Refusals, ReadOnlyDirectoriesStay)
{
    simulated_machine machine;
    machine.add_directory(u"C:\\dir\\inner").set_attributes(u"C:\\dir", FILE_ATTRIBUTE_READONLY);
    EXPECT_EQ(remove_directory(L"C:\\dir"), DWORD{ERROR_ACCESS_DENIED})
        << "that comes before its entries";
    EXPECT_EQ(remove_directory(L"C:\\dir\\inner"), success);
    EXPECT_EQ(remove_directory(L"C:\\dir"), DWORD{ERROR_ACCESS_DENIED});
    machine.set_attributes(u"C:\\dir", 0);
    EXPECT_EQ(remove_directory(L"C:\\dir"), success);
}

TEST(Refusals, RootsStay)
{
    simulated_machine machine;
    machine.add_drive(u'D').add_share(u"server", u"share");
    EXPECT_EQ(remove_directory(L"D:\\"), DWORD{ERROR_ACCESS_DENIED});
    EXPECT_EQ(remove_directory(L"\\\\server\\share"), DWORD{ERROR_ACCESS_DENIED});
    EXPECT_EQ(remove_directory(L"C:\\"), DWORD{ERROR_SHARING_VIOLATION}) << "the current directory";
}

TEST(Refusals, TheCurrentDirectoryIsHeldOpen)
{
    simulated_machine machine;
    machine.add_directory(u"C:\\dir").set_current_directory(u"C:\\DIR");
    EXPECT_EQ(remove_directory(L"C:\\dir"), DWORD{ERROR_SHARING_VIOLATION});
    machine.set_current_directory(u"C:\\");
    EXPECT_EQ(remove_directory(L"C:\\dir"), success);
}

TEST(Refusals, ALongPrefixHasALimit)
{
    simulated_machine machine;
    std::wstring const text = L"\\\\?\\C:\\" + std::wstring(32767 - 7, L'n');
    EXPECT_EQ(get_file_attributes(text), DWORD{ERROR_INVALID_NAME}) << "only the name is too long";
    EXPECT_EQ(get_file_attributes(text + L'n'), DWORD{ERROR_FILENAME_EXCED_RANGE});
}

TEST(Refusals, TheObjectManagersPrefixIsTakenAsItStands)
{
    simulated_machine machine;
    machine.add_directory(u"C:\\dir.");
    EXPECT_EQ(get_file_attributes(L"\\??\\C:\\dir."), success);
    EXPECT_EQ(get_file_attributes(L"\\??\\C:\\dir"), DWORD{ERROR_FILE_NOT_FOUND});
}

} // namespace

} // namespace fl::simulation
