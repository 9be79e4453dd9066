#include "platform/contract.hpp"
#include "support/tables.hpp"

#include <simulation/machine.hpp>

#include <winnetwk.h>

#include <gtest/gtest.h>

#include <stdexcept>

namespace fl::simulation {

namespace {

using contract::get_file_attributes;
using contract::success;

struct mapped_machine
{
    mapped_machine()
    {
        machine.add_share(u"server", u"share").add_file(u"\\\\server\\share\\dir\\file", "text");
        machine.map_drive(u'x', u"server", u"share");
    }
    simulated_machine machine;
};

TEST(MappedDrives, ShowTheirShare)
{
    mapped_machine const mapped;
    EXPECT_EQ(get_file_attributes(L"X:\\dir\\file"), success);
    EXPECT_EQ(get_file_attributes(L"x:\\"), success);
    EXPECT_EQ(mapped.machine.content(u"X:\\dir\\file"), "text");
    EXPECT_TRUE(::CreateDirectoryW(L"X:\\new", nullptr));
    EXPECT_TRUE(mapped.machine.is_directory(u"\\\\server\\share\\new"));
}

TEST(MappedDrives, GoWithTheirServer)
{
    mapped_machine mapped;
    mapped.machine.add_dead_server(u"server");
    EXPECT_EQ(get_file_attributes(L"X:\\dir"), DWORD{ERROR_BAD_NETPATH});
    mapped.machine.remove_drive(u'X');
    EXPECT_EQ(get_file_attributes(L"X:\\dir"), DWORD{ERROR_PATH_NOT_FOUND});
}

TEST(MappedDrives, NeedALetterAndAShare)
{
    mapped_machine mapped;
    EXPECT_THROW(mapped.machine.map_drive(u'C', u"server", u"share"), std::invalid_argument);
    EXPECT_THROW(mapped.machine.map_drive(u'X', u"server", u"share"), std::invalid_argument);
    EXPECT_THROW(mapped.machine.map_drive(u'Y', u"server", u"none"), std::invalid_argument);
    EXPECT_THROW(mapped.machine.map_drive(u'1', u"server", u"share"), std::invalid_argument);
    mapped.machine.add_dead_server(u"server");
    EXPECT_THROW(mapped.machine.map_drive(u'Y', u"server", u"share"), std::invalid_argument);
}

struct universal_case
{
    wchar_t const *text;
    wchar_t const *universal;
    wchar_t const *rest;
};

constexpr universal_case universal_cases[] = {
    {L"X:\\dir\\file", L"\\\\server\\share\\dir\\file", L"\\dir\\file"},
    {L"x:\\missing", L"\\\\server\\share\\missing", L"\\missing"},
    {L"X:\\", L"\\\\server\\share\\", L"\\"},
    {L"X:", L"\\\\server\\share", L""},
};

/// What the provider is handed over for its answer.
class name_buffer
{
public:
    template <typename Info>
    Info const &asked(wchar_t const *text, DWORD level)
    {
        DWORD size = sizeof bytes_;
        EXPECT_EQ(::WNetGetUniversalNameW(text, level, bytes_, &size), 0U);
        return *reinterpret_cast<Info const *>(bytes_);
    }
    bool holds(void const *pointer) const
    {
        return pointer >= bytes_ && pointer < bytes_ + sizeof bytes_;
    }

private:
    alignas(8) char bytes_[2000] = {};
};

TEST(MappedDrives, HaveUniversalNames)
{
    mapped_machine const mapped;
    for (universal_case const &row : universal_cases) {
        name_buffer buffer;
        auto const &info = buffer.asked<UNIVERSAL_NAME_INFOW>(row.text, UNIVERSAL_NAME_INFO_LEVEL);
        EXPECT_TRUE(buffer.holds(info.lpUniversalName));
        EXPECT_STREQ(info.lpUniversalName, row.universal);
    }
}

TEST(MappedDrives, HaveRemoteNames)
{
    mapped_machine const mapped;
    for (universal_case const &row : universal_cases) {
        name_buffer buffer;
        auto const &info = buffer.asked<REMOTE_NAME_INFOW>(row.text, REMOTE_NAME_INFO_LEVEL);
        EXPECT_STREQ(info.lpUniversalName, row.universal);
        EXPECT_STREQ(info.lpConnectionName, L"\\\\server\\share");
        EXPECT_STREQ(info.lpRemainingPath, row.rest);
    }
}

TEST(MappedDrives, SayHowMuchRoomTheirNamesNeed)
{
    mapped_machine const mapped;
    DWORD const needed = sizeof(void *) + sizeof L"\\\\server\\share\\a";
    alignas(8) char buffer[2000] = {};
    for (DWORD const room : {DWORD{0}, DWORD{8}, needed - 1}) {
        DWORD size = room;
        EXPECT_EQ(::WNetGetUniversalNameW(L"X:\\a", UNIVERSAL_NAME_INFO_LEVEL, buffer, &size),
                  DWORD{ERROR_MORE_DATA});
        EXPECT_EQ(size, needed);
        EXPECT_EQ(buffer[0], '\0') << "nothing is stored";
    }
    DWORD size = needed;
    EXPECT_EQ(::WNetGetUniversalNameW(L"X:\\a", UNIVERSAL_NAME_INFO_LEVEL, buffer, &size), 0U);
    EXPECT_EQ(size, needed);
}

// The answer is the code, and so is a fault's.
TEST(MappedDrives, MeetFaults)
{
    mapped_machine mapped;
    alignas(8) char buffer[2000] = {};
    DWORD size = sizeof buffer;
    fault const broken = mapped.machine.fail_call("WNetGetUniversalNameW", 1, ERROR_NO_NETWORK);
    EXPECT_EQ(::WNetGetUniversalNameW(L"X:\\a", UNIVERSAL_NAME_INFO_LEVEL, buffer, &size),
              DWORD{ERROR_NO_NETWORK});
    EXPECT_EQ(mapped.machine.journal().back().text, u"X:\\a");
    EXPECT_EQ(mapped.machine.journal().back().answer, std::uint64_t{ERROR_NO_NETWORK});
}

struct space
{
    ULARGE_INTEGER available{}, capacity{}, free{};
    explicit space(wchar_t const *directory)
    {
        EXPECT_TRUE(::GetDiskFreeSpaceExW(directory, &available, &capacity, &free));
    }
};

TEST(VolumeSpace, BelongsToTheVolume)
{
    mapped_machine mapped;
    mapped.machine.add_drive(u'D').add_directory(u"D:\\dir");
    mapped.machine.set_volume_space(u"D:\\", 1000, 200, 30);
    mapped.machine.set_volume_space(u"\\\\server\\share", 5000, 400, 400);
    space const on_drive(L"D:\\dir");
    EXPECT_EQ(on_drive.capacity.QuadPart, 1000U);
    EXPECT_EQ(on_drive.free.QuadPart, 200U);
    EXPECT_EQ(on_drive.available.QuadPart, 30U);
    EXPECT_EQ(space(L"X:\\dir").capacity.QuadPart, 5000U) << "a mapped drive has its share's";
    EXPECT_EQ(space(L"\\\\server\\share\\").capacity.QuadPart, 5000U);
    EXPECT_GT(space(L"C:\\").capacity.QuadPart, 5000U) << "the others keep theirs";
    ASSERT_TRUE(::SetCurrentDirectoryW(L"D:\\dir"));
    EXPECT_EQ(space(nullptr).capacity.QuadPart, 1000U);
}

TEST(VolumeSpace, NeedsARoot)
{
    simulated_machine machine;
    machine.add_directory(u"C:\\dir");
    EXPECT_THROW(machine.set_volume_space(u"Q:\\", 3, 2, 1), std::invalid_argument);
    EXPECT_THROW(machine.set_volume_space(u"C:\\dir", 3, 2, 1), std::invalid_argument);
}

TEST(VolumeSpace, MeetsFaults)
{
    simulated_machine machine;
    fault const broken = machine.fail_call("GetDiskFreeSpaceExW", 1, ERROR_IO_DEVICE);
    EXPECT_FALSE(::GetDiskFreeSpaceExW(L"C:\\", nullptr, nullptr, nullptr));
    EXPECT_EQ(::GetLastError(), DWORD{ERROR_IO_DEVICE});
    fault const other = machine.fail_call("GetVolumePathNameW", 1, ERROR_NOT_READY);
    wchar_t buffer[20];
    EXPECT_FALSE(::GetVolumePathNameW(L"C:\\", buffer, 20));
    EXPECT_EQ(::GetLastError(), DWORD{ERROR_NOT_READY});
    EXPECT_TRUE(broken.fired() && other.fired());
}

/// The outcome, and the text if there is one.
std::u16string final_path(wchar_t const *name, DWORD flags)
{
    contract::handle const opened = contract::look_at(name);
    wchar_t buffer[200] = {};
    if (::GetFinalPathNameByHandleW(opened.get(), buffer, 200, flags) == 0)
        return u"error " + contract::units(std::to_wstring(::GetLastError()));
    return contract::units(buffer);
}

TEST(TakenLetters, LeaveTheVolumeToItsOtherNames)
{
    simulated_machine machine;
    machine.add_drive(u'd').add_file(u"D:\\dir\\file", "text").add_mount_point(u"C:\\m", u'D');
    std::u16string const by_guid = final_path(L"D:\\dir\\file", VOLUME_NAME_GUID);
    EXPECT_EQ(final_path(L"D:\\dir\\file", VOLUME_NAME_NT),
              u"\\Device\\HarddiskVolume4\\dir\\file");
    machine.take_letter(u'd');
    EXPECT_EQ(get_file_attributes(L"D:\\dir\\file"), DWORD{ERROR_PATH_NOT_FOUND});
    EXPECT_EQ(machine.content(u"C:\\m\\dir\\file"), "text");
    EXPECT_EQ(machine.content(by_guid), "text");
    EXPECT_EQ(final_path(L"C:\\m\\dir\\file", VOLUME_NAME_DOS), u"error 3");
    EXPECT_EQ(final_path(L"C:\\m\\dir\\file", VOLUME_NAME_GUID), by_guid);
    EXPECT_EQ(final_path(L"C:\\m", VOLUME_NAME_NT), u"\\Device\\HarddiskVolume4\\");
    EXPECT_THROW(machine.take_letter(u'D'), std::invalid_argument);
    machine.add_drive(u'D'); // another volume
    EXPECT_EQ(get_file_attributes(L"D:\\dir"), DWORD{ERROR_FILE_NOT_FOUND});
}

TEST(NamesOfTheObjectManager, Outcomes)
{
    constexpr test_support::row_of<wchar_t const *, DWORD> cases[] = {
        {LR"(\\?\GLOBALROOT\Device\HarddiskVolume3\dir)", success, "C:"},
        {LR"(\\?\globalroot\device\harddiskvolume3\DIR)", success, "in any case"},
        {LR"(\\?\GLOBALROOT\Device\HarddiskVolume3\)", success, "its root"},
        {LR"(\\?\GLOBALROOT\Device\Mup\server\share\dir)", success, "a share"},
        {LR"(\\?\GLOBALROOT\Device\HarddiskVolume3\no)", ERROR_FILE_NOT_FOUND, "not there"},
        {LR"(\\?\GLOBALROOT\Device\HarddiskVolume3)", ERROR_INVALID_PARAMETER, "the volume"},
        {LR"(\\?\GLOBALROOT\Device\HarddiskVolume9)", ERROR_FILE_NOT_FOUND, "none"},
        {LR"(\\?\GLOBALROOT\Device\HarddiskVolume9\a)", ERROR_PATH_NOT_FOUND, "none"},
        {LR"(\\?\GLOBALROOT\Driver\HarddiskVolume3\a)", ERROR_PATH_NOT_FOUND, "no device"},
        {LR"(\\?\GLOBALROOT)", ERROR_PATH_NOT_FOUND, "nothing below it"},
    };
    mapped_machine mapped;
    mapped.machine.add_directory(u"C:\\dir");
    test_support::expect_rows(cases, [](auto name) { return get_file_attributes(name); });
    EXPECT_EQ(final_path(L"X:\\dir", VOLUME_NAME_NT), u"\\Device\\Mup\\server\\share\\dir");
}

TEST(NamesOfTheObjectManager, HaveVolumePaths)
{
    simulated_machine machine;
    wchar_t buffer[100] = {};
    ASSERT_TRUE(
        ::GetVolumePathNameW(LR"(\\?\GLOBALROOT\Device\HarddiskVolume3\dir\a)", buffer, 100));
    EXPECT_EQ(std::wstring(buffer), LR"(\\?\GLOBALROOT\Device\HarddiskVolume3\)");
}

} // namespace

} // namespace fl::simulation
