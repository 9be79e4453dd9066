// The links that tests put on the disks, byte by byte, and volumes shown in directories.

#include "platform/links.hpp"

#include <simulation/machine.hpp>

#include <gtest/gtest.h>

#include <stdexcept>

namespace fl::simulation {

namespace {

using contract::content_of;
using contract::opened;
using contract::success;

/// Its data as FSCTL_GET_REPARSE_POINT tells it, without the header.
std::string told_data(wchar_t const *name)
{
    contract::bytes const all = contract::reparse_data(name);
    return std::string(all.begin() + 8, all.end());
}

struct link_case
{
    char16_t const *target;
    char16_t const *substitute;
    DWORD flags;
    char const *why;
};

constexpr link_case link_cases[] = {
    {u"file", u"file", 1, "relative"},
    {u"..\\dir\\.\\file", u"..\\dir\\.\\file", 1, "relative, as it was written"},
    {u"\\dir", u"\\dir", 1, "rooted"},
    {u"C:\\dir", u"\\??\\C:\\dir", 0, "absolute"},
    {u"C:/dir/..", u"\\??\\C:\\", 0, "made full"},
    {u"C:file", u"\\??\\C:\\file", 0, "made full by the current directory"},
    {u"\\\\server\\share\\a", u"\\??\\UNC\\server\\share\\a", 0, "on a share"},
    {u"\\\\?\\UNC\\server\\share", u"\\??\\UNC\\server\\share", 0, "with a long prefix"},
    {u"\\\\?\\C:\\a. ", u"\\??\\C:\\a. ", 0, "as it stands"},
};

TEST(BuiltLinks, HaveTheBytesOfTheCall)
{
    for (link_case const &row : link_cases) {
        for (flavour const is : {flavour::file, flavour::directory}) {
            simulated_machine machine;
            machine.add_symbolic_link(u"C:\\link", row.target, is);
            std::string const data = symbolic_link_data(row.substitute, row.target, row.flags);
            EXPECT_EQ(machine.reparse_tag(u"C:\\link"), DWORD{IO_REPARSE_TAG_SYMLINK});
            EXPECT_EQ(machine.reparse_data(u"C:\\link"), data) << row.why;
            EXPECT_EQ(told_data(L"C:\\link"), data) << row.why;
            EXPECT_EQ(machine.is_directory(u"C:\\link"), is == flavour::directory) << row.why;
            DWORD const flag = is == flavour::directory ? SYMBOLIC_LINK_FLAG_DIRECTORY : 0;
            std::wstring const text = test_support::wide(row.target);
            ASSERT_TRUE(::CreateSymbolicLinkW(L"C:\\called", text.c_str(), flag));
            EXPECT_EQ(machine.reparse_data(u"C:\\called"), data) << row.why;
            EXPECT_EQ(machine.attributes(u"C:\\called"), machine.attributes(u"C:\\link"));
        }
    }
}

// Two units each way, so that offsets and lengths in bytes tell units from bytes.
TEST(BuiltLinks, AreLaidOutAsOnADisk)
{
    using namespace std::string_literals;
    EXPECT_EQ(symbolic_link_data(u"ab", u"xyz", 1),
              "\x06\0\x04\0\0\0\x06\0\x01\0\0\0x\0y\0z\0a\0b\0"s);
    EXPECT_EQ(mount_point_data(u"ab", u"xyz"), "\0\0\x04\0\x06\0\x06\0a\0b\0\0\0x\0y\0z\0\0\0"s);
    EXPECT_EQ(mount_point_data(u"\u0416", u""), "\0\0\x02\0\x04\0\0\0\x16\x04\0\0\0\0"s);
}

TEST(BuiltLinks, JunctionsTakeAnyNames)
{
    simulated_machine machine;
    machine.add_file(u"C:\\dir\\file", "text").add_junction(u"C:\\plain", u"C:\\dir");
    machine.add_junction(u"C:\\odd", u"\\??\\C:\\dir\\", u"what people see");
    EXPECT_EQ(machine.reparse_data(u"C:\\plain"), mount_point_data(u"\\??\\C:\\dir", u"C:\\dir"));
    EXPECT_EQ(machine.reparse_data(u"C:\\odd"),
              mount_point_data(u"\\??\\C:\\dir\\", u"what people see"));
    EXPECT_EQ(content_of(L"C:\\plain\\file"), "text");
    EXPECT_EQ(content_of(L"C:\\odd\\file"), "text");
    EXPECT_EQ(told_data(L"C:\\odd"), machine.reparse_data(u"C:\\odd"));
}

struct malformed_case
{
    DWORD tag;
    std::string data;
    DWORD code;
    char const *why;
};

std::string shorter(std::string data)
{
    data.pop_back();
    return data;
}

constexpr DWORD link_tag = static_cast<DWORD>(IO_REPARSE_TAG_SYMLINK);
constexpr DWORD point_tag = static_cast<DWORD>(IO_REPARSE_TAG_MOUNT_POINT);

malformed_case const malformed_cases[] = {
    {link_tag, "", ERROR_INVALID_REPARSE_DATA, "nothing"},
    {link_tag, "12345678901", ERROR_INVALID_REPARSE_DATA, "no names"},
    {link_tag, shorter(symbolic_link_data(u"\\??\\C:\\dir", u"dir", 0)), ERROR_INVALID_REPARSE_DATA,
     "cut"},
    {link_tag, std::string("\xFF\xFF\xFF\xFF\0\0\0\0\0\0\0\0", 12), ERROR_INVALID_REPARSE_DATA,
     "far beyond"},
    {point_tag, "1234567", ERROR_INVALID_REPARSE_DATA, "no names"},
    {point_tag, std::string("\0\0\x02\0\0\0\0\0a", 9), ERROR_INVALID_REPARSE_DATA, "half a unit"},
    {link_tag, symbolic_link_data(u"C:\\dir", u"", 0), ERROR_BAD_PATHNAME, "no object name"},
    {point_tag, mount_point_data(u"C:\\dir", u""), ERROR_BAD_PATHNAME, "no object name"},
    {point_tag, mount_point_data(u"", u""), ERROR_BAD_PATHNAME, "no name at all"},
    {point_tag, mount_point_data(u"\\Device\\None\\dir", u""), ERROR_PATH_NOT_FOUND,
     "a device that there isn't"},
    {0x80000042, "whatever", ERROR_CANT_ACCESS_FILE, "a tag that nobody here knows"},
    {0x00000042, std::string(16, 'm') + "whatever", ERROR_CANT_ACCESS_FILE, "another maker's"},
    {static_cast<DWORD>(IO_REPARSE_TAG_DFS), "", ERROR_CANT_ACCESS_FILE, "no data"},
};

TEST(BuiltLinks, MayBeMalformed)
{
    for (malformed_case const &row : malformed_cases) {
        simulated_machine machine;
        machine.add_directory(u"C:\\dir").add_directory(u"C:\\point");
        machine.add_reparse_point(u"C:\\point", row.tag, row.data, flavour::directory);
        EXPECT_EQ(opened(L"C:\\point", GENERIC_READ).code, row.code) << row.why;
        EXPECT_EQ(contract::get_file_attributes(L"C:\\point\\below"), row.code) << row.why;
        EXPECT_EQ(contract::get_file_attributes(L"C:\\point"), success) << row.why;
        contract::bytes const told = contract::reparse_data(L"C:\\point");
        EXPECT_EQ(contract::number_at(told, 0, 4), row.tag) << row.why;
        std::size_t const maker = (row.tag & 0x80000000) != 0 ? 0 : 16;
        EXPECT_EQ(contract::number_at(told, 4, 2) + maker, row.data.size()) << row.why;
        EXPECT_EQ(std::string(told.begin() + 8, told.end()), row.data) << row.why;
        EXPECT_EQ(contract::remove_directory(L"C:\\point"), success) << row.why;
    }
}

TEST(BuiltLinks, ReadAsManyBytesAsADiskKeeps)
{
    simulated_machine machine;
    std::string const most(MAXIMUM_REPARSE_DATA_BUFFER_SIZE - 8, 'x');
    machine.add_reparse_point(u"C:\\file", 0x80000042, most);
    EXPECT_EQ(told_data(L"C:\\file"), most);
}

TEST(BuiltLinks, ChangeWhatIsThere)
{
    simulated_machine machine;
    machine.add_file(u"C:\\file", "text").add_reparse_point(u"C:\\file", 0x80000042, "data");
    EXPECT_EQ(machine.content(u"C:\\file"), "text");
    EXPECT_EQ(machine.reparse_tag(u"C:\\file"), 0x80000042U);
    EXPECT_EQ(machine.reparse_data(u"C:\\file"), "data");
}

class MountPoints : public testing::Test
{
protected:
    MountPoints()
    {
        machine.add_drive(u'D').add_file(u"D:\\dir\\file", "text");
        machine.add_mount_point(u"C:\\mnt\\d", u'd').set_volume_space(u"D:\\", 1000, 200, 30);
    }
    std::wstring volume_of(std::wstring const &name)
    {
        wchar_t buffer[100] = L"(failed)";
        ::GetVolumePathNameW(name.c_str(), buffer, 100);
        return buffer;
    }
    std::wstring final_of(std::wstring const &name, DWORD flags)
    {
        opened const file(name, FILE_READ_ATTRIBUTES);
        wchar_t buffer[200] = L"(failed)";
        ::GetFinalPathNameByHandleW(file.get(), buffer, 200, flags);
        return buffer;
    }
    /// `\\?\Volume{...}` of drive D.
    std::wstring volume() { return final_of(L"D:\\", VOLUME_NAME_GUID).substr(0, 48); }

    simulated_machine machine;
};

TEST_F(MountPoints, HaveANameForTheSystemOnly)
{
    std::u16string const volume_name = u"\\??\\" + test_support::units(volume()).substr(4) + u'\\';
    EXPECT_EQ(machine.reparse_data(u"C:\\mnt\\d"), mount_point_data(volume_name, u""));
    EXPECT_TRUE(volume_name.starts_with(u"\\??\\Volume{"));
    EXPECT_TRUE(volume_name.ends_with(u"}\\"));
}

TEST_F(MountPoints, AreFollowed)
{
    EXPECT_EQ(content_of(L"C:\\mnt\\d\\dir\\file"), "text");
    EXPECT_TRUE(machine.is_file(u"C:\\mnt\\d\\dir\\file"));
    ASSERT_TRUE(::CreateDirectoryW(L"C:\\mnt\\d\\new", nullptr));
    EXPECT_TRUE(machine.is_directory(u"D:\\new"));
    EXPECT_EQ(content_of(volume() + L"\\dir\\file"), "text");
    EXPECT_EQ(::GetFileAttributesW((volume() + L"\\").c_str()), DWORD{FILE_ATTRIBUTE_DIRECTORY});
    EXPECT_FALSE(::MoveFileExW(L"C:\\mnt\\d\\dir\\file", L"C:\\file", 0));
    EXPECT_EQ(::GetLastError(), DWORD{ERROR_NOT_SAME_DEVICE});
}

TEST_F(MountPoints, AreRootsOfVolumes)
{
    EXPECT_EQ(volume_of(L"C:\\mnt\\d\\dir\\file"), L"C:\\mnt\\d\\");
    EXPECT_EQ(volume_of(L"C:\\mnt\\d\\none\\none"), L"C:\\mnt\\d\\");
    EXPECT_EQ(volume_of(L"C:\\mnt\\d"), L"C:\\mnt\\d\\");
    EXPECT_EQ(volume_of(L"C:\\mnt"), L"C:\\");
    EXPECT_EQ(volume_of(L"C:\\none\\mnt\\d"), L"C:\\");
    EXPECT_EQ(volume_of(L"\\\\?\\C:\\mnt\\d\\dir"), L"\\\\?\\C:\\mnt\\d\\");
    EXPECT_EQ(volume_of(volume() + L"\\dir"), volume() + L"\\");
    machine.add_drive(u'E').add_mount_point(u"D:\\dir\\e", u'E').add_directory(u"E:\\inner");
    EXPECT_EQ(volume_of(L"C:\\mnt\\d\\dir\\e\\inner"), L"C:\\mnt\\d\\dir\\e\\");
    machine.add_junction(u"C:\\junction", u"C:\\mnt");
    EXPECT_EQ(volume_of(L"C:\\junction\\d\\dir"), L"C:\\junction\\d\\");
}

TEST_F(MountPoints, HaveTheSpaceOfTheirVolume)
{
    ULARGE_INTEGER capacity = {};
    ASSERT_TRUE(::GetDiskFreeSpaceExW(L"C:\\mnt\\d", nullptr, &capacity, nullptr));
    EXPECT_EQ(capacity.QuadPart, 1000U);
    ASSERT_TRUE(::GetDiskFreeSpaceExW(L"C:\\mnt\\d\\dir\\", nullptr, &capacity, nullptr));
    EXPECT_EQ(capacity.QuadPart, 1000U);
    ASSERT_TRUE(::GetDiskFreeSpaceExW(L"C:\\mnt", nullptr, &capacity, nullptr));
    EXPECT_NE(capacity.QuadPart, 1000U);
}

TEST_F(MountPoints, AreNotInFinalPathnames)
{
    EXPECT_EQ(final_of(L"C:\\mnt\\d\\DIR\\file", VOLUME_NAME_DOS), L"\\\\?\\D:\\dir\\file");
    EXPECT_EQ(final_of(L"C:\\mnt\\d", VOLUME_NAME_DOS), L"\\\\?\\D:\\");
    EXPECT_EQ(final_of(L"C:\\mnt\\d\\dir", VOLUME_NAME_NONE), L"\\dir");
    EXPECT_EQ(final_of(L"C:\\mnt\\d\\dir", VOLUME_NAME_GUID), volume() + L"\\dir");
}

TEST_F(MountPoints, LeadNowhereWithoutTheirVolume)
{
    machine.remove_drive(u'D');
    EXPECT_EQ(contract::get_file_attributes(L"C:\\mnt\\d\\dir"), DWORD{ERROR_PATH_NOT_FOUND});
    EXPECT_EQ(contract::get_file_attributes(L"C:\\mnt\\d"), success);
}

} // namespace

} // namespace fl::simulation
