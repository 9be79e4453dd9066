// What tests can put on the disks of a simulated machine, as calls then see it.

#include "platform/finding.hpp"
#include "platform/links.hpp"

#include <simulation/machine.hpp>

#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <stdexcept>

namespace fl::simulation {

namespace {

using contract::content_of;
using contract::opened;
using contract::success;
using names = std::vector<std::u16string>;

TEST(Building, HardLinksAreOneFile)
{
    simulated_machine machine;
    machine.add_file(u"C:\\a", "text").add_hard_link(u"C:\\dir\\b", u"C:\\A");
    machine.add_hard_link(u"C:\\a", u"C:\\dir\\b");
    EXPECT_TRUE(machine.is_same(u"C:\\a", u"C:\\dir\\b"));
    EXPECT_EQ(machine.link_count(u"C:\\a"), 2U) << "a name that it has is no new one";
    EXPECT_EQ(content_of(L"C:\\dir\\b"), "text");
    BY_HANDLE_FILE_INFORMATION const one = contract::information_of(L"C:\\a");
    BY_HANDLE_FILE_INFORMATION const other = contract::information_of(L"C:\\dir\\b");
    EXPECT_EQ(one.nNumberOfLinks, 2U);
    EXPECT_EQ(one.nFileIndexLow, other.nFileIndexLow);
    machine.remove(u"C:\\a");
    EXPECT_EQ(machine.link_count(u"C:\\dir\\b"), 1U);
    EXPECT_EQ(machine.content(u"C:\\dir\\b"), "text");
}

constexpr std::uint64_t huge = 5ULL << 40; // five terabytes

std::uint64_t joined(DWORD high, DWORD low)
{
    return static_cast<std::uint64_t>(high) << 32 | low;
}

TEST(Building, SparseFilesHaveTheirSizeEverywhere)
{
    simulated_machine machine;
    machine.add_sparse_file(u"C:\\file", huge + 7);
    EXPECT_EQ(machine.attributes(u"C:\\file"),
              DWORD{FILE_ATTRIBUTE_ARCHIVE | FILE_ATTRIBUTE_SPARSE_FILE});
    WIN32_FILE_ATTRIBUTE_DATA data = {};
    ASSERT_TRUE(::GetFileAttributesExW(L"C:\\file", GetFileExInfoStandard, &data));
    EXPECT_EQ(joined(data.nFileSizeHigh, data.nFileSizeLow), huge + 7);
    contract::search const found(L"C:\\*");
    EXPECT_EQ(joined(found.data.nFileSizeHigh, found.data.nFileSizeLow), huge + 7);
    BY_HANDLE_FILE_INFORMATION const information = contract::information_of(L"C:\\file");
    EXPECT_EQ(joined(information.nFileSizeHigh, information.nFileSizeLow), huge + 7);
    opened const file(L"C:\\file", GENERIC_READ);
    FILE_STANDARD_INFO standard = {};
    ASSERT_TRUE(
        ::GetFileInformationByHandleEx(file.get(), FileStandardInfo, &standard, sizeof standard));
    EXPECT_EQ(standard.EndOfFile.QuadPart, static_cast<LONGLONG>(huge + 7));
    char bytes[4] = {1, 1, 1, 1};
    DWORD count = 0;
    ASSERT_TRUE(::ReadFile(file.get(), bytes, 4, &count, nullptr));
    EXPECT_EQ(std::string(bytes, count), std::string(4, '\0'));
}

// A copy with memory for its zeros would end the process.
TEST(Building, SparseFilesAreCopiedWithoutTheirZeros)
{
    simulated_machine machine;
    machine.add_drive(u'D').add_sparse_file(u"C:\\file", huge);
    ASSERT_TRUE(::CopyFileW(L"C:\\file", L"D:\\copy", TRUE));
    ASSERT_TRUE(::MoveFileExW(L"D:\\copy", L"C:\\moved", MOVEFILE_COPY_ALLOWED));
    EXPECT_EQ(joined(contract::information_of(L"C:\\moved").nFileSizeHigh, 0), huge);
    EXPECT_EQ(machine.attributes(u"C:\\moved"), DWORD{FILE_ATTRIBUTE_ARCHIVE});
}

TEST(Building, DeduplicatedFilesAreReadAsPlainOnes)
{
    simulated_machine machine;
    machine.add_deduplicated_file(u"C:\\file", "content");
    EXPECT_EQ(content_of(L"C:\\file"), "content");
    EXPECT_NE(::GetFileAttributesW(L"C:\\file") & FILE_ATTRIBUTE_REPARSE_POINT, 0U);
    EXPECT_EQ(machine.reparse_tag(u"C:\\file"), DWORD{IO_REPARSE_TAG_DEDUP});
    contract::bytes const data = contract::reparse_data(L"C:\\file");
    EXPECT_EQ(contract::number_at(data, 0, 4), DWORD{IO_REPARSE_TAG_DEDUP});
    EXPECT_EQ(contract::search(L"C:\\file").data.dwReserved0, DWORD{IO_REPARSE_TAG_DEDUP});
    ASSERT_TRUE(::CopyFileW(L"C:\\file", L"C:\\copy", TRUE));
    EXPECT_EQ(machine.reparse_tag(u"C:\\copy"), 0U);
    EXPECT_EQ(machine.content(u"C:\\copy"), "content");
}

TEST(Building, TimesAreSetAndTold)
{
    simulated_machine machine;
    machine.add_directory(u"C:\\dir");
    times const given = {133'000'000'000'000'001, 133'000'000'000'000'002, 1};
    machine.set_times(u"C:\\dir", given);
    EXPECT_EQ(machine.times_of(u"C:\\DIR"), given);
    BY_HANDLE_FILE_INFORMATION const told = contract::information_of(L"C:\\dir");
    EXPECT_EQ(joined(told.ftCreationTime.dwHighDateTime, told.ftCreationTime.dwLowDateTime),
              given.creation);
    EXPECT_EQ(joined(told.ftLastAccessTime.dwHighDateTime, told.ftLastAccessTime.dwLowDateTime),
              given.access);
    EXPECT_EQ(joined(told.ftLastWriteTime.dwHighDateTime, told.ftLastWriteTime.dwLowDateTime),
              given.write);
}

TEST(Building, AttributesThatNoCallSets)
{
    simulated_machine machine;
    constexpr DWORD rare =
        FILE_ATTRIBUTE_COMPRESSED | FILE_ATTRIBUTE_ENCRYPTED | FILE_ATTRIBUTE_SPARSE_FILE;
    machine.add_file(u"C:\\file").set_attributes(u"C:\\file", rare | FILE_ATTRIBUTE_DIRECTORY);
    EXPECT_EQ(::GetFileAttributesW(L"C:\\file"), rare) << "it stays a file";
    ASSERT_TRUE(::SetFileAttributesW(L"C:\\file", FILE_ATTRIBUTE_HIDDEN));
    EXPECT_EQ(machine.attributes(u"C:\\file"), rare | FILE_ATTRIBUTE_HIDDEN);
}

TEST(Building, WhatIsDeniedOrOpenIsBuiltAndSeenAllTheSame)
{
    simulated_machine machine;
    machine.add_file(u"C:\\dir\\file", "text").deny(u"C:\\dir", right::traverse);
    machine.deny(u"C:\\dir", right::list).deny_creation(u"C:\\dir");
    EXPECT_TRUE(machine.exists(u"C:\\dir\\file"));
    EXPECT_EQ(machine.content(u"C:\\dir\\file"), "text");
    machine.add_file(u"C:\\dir\\more");
    EXPECT_EQ(machine.entries(u"C:\\dir"), (names{u"file", u"more"}));
    opened const held(L"C:\\", GENERIC_READ, 0);
    machine.remove(u"C:\\dir");
    EXPECT_FALSE(machine.exists(u"C:\\dir"));
}

TEST(Building, DevicesAreNotOnDisks)
{
    simulated_machine const machine;
    EXPECT_FALSE(machine.exists(u"\\\\?\\NUL"));
    EXPECT_THROW(machine.attributes(u"\\\\?\\NUL"), std::invalid_argument);
}

struct refused_case
{
    std::function<void(simulated_machine &)> build;
    char const *why;
};

std::string const maker(16, 'm');

refused_case const refused_cases[] = {
    {[](auto &m) { m.add_file(u"C:\\new\\a*b"); }, "no name, below what isn't there"},
    {[](auto &m) { m.add_file(u"C:\\new\\a*b\\file"); }, "no name in between"},
    {[](auto &m) { m.add_file(u"C:\\new\\dir\\"); }, "a file with a separator"},
    {[](auto &m) { m.add_file(u"C:\\"); }, "a root"},
    {[](auto &m) { m.add_file(u"C:\\dir"); }, "a directory is there"},
    {[](auto &m) { m.add_file(u"C:\\junction\\file"); }, "through a link"},
    {[](auto &m) { m.add_file(u"\\\\?\\NUL"); }, "a device"},
    {[](auto &m) { m.add_directory(u"\\\\?\\NUL"); }, "a device"},
    {[](auto &m) { m.add_directory(u"C:\\new\\a\\\\b"); }, "an empty name"},
    {[](auto &m) { m.add_directory(u"C:\\new\\.."); }, "no name either"},
    {[](auto &m) { m.add_directory(u"C:\\new\\" + std::u16string(256, u'a')); }, "too long"},
    {[](auto &m) { m.add_directory(u"C:\\file\\new"); }, "below a file"},
    {[](auto &m) { m.add_directory(u"Q:\\new"); }, "no drive"},
    {[](auto &m) { m.add_sparse_file(u"C:\\new", ~std::uint64_t{0}); }, "too large"},
    {[](auto &m) { m.add_hard_link(u"C:\\new\\b", u"C:\\none"); }, "nothing to link to"},
    {[](auto &m) { m.add_hard_link(u"C:\\new\\b", u"C:\\dir"); }, "a directory"},
    {[](auto &m) { m.add_hard_link(u"D:\\new\\b", u"C:\\file"); }, "another volume"},
    {[](auto &m) { m.add_symbolic_link(u"C:\\new\\a", u""); }, "no target"},
    {[](auto &m) { m.add_symbolic_link(u"C:\\new\\a", std::u16string(5000, u'a')); },
     "a target longer than a disk keeps"},
    {[](auto &m) { m.add_symbolic_link(u"C:\\new\\a?", u"b"); }, "no name"},
    {[](auto &m) { m.add_junction(u"C:\\file", u"C:\\dir"); }, "a file is no junction"},
    {[](auto &m) { m.add_junction(u"C:\\", u"C:\\dir"); }, "not empty"},
    {[](auto &m) { m.add_mount_point(u"C:\\new", u'Q'); }, "no drive"},
    {[](auto &m) { m.add_mount_point(u"C:\\new", u'X'); }, "a share has no volume here"},
    {[](auto &m) { m.add_reparse_point(u"C:\\new", 0, maker); }, "a reserved tag"},
    {[](auto &m) { m.add_reparse_point(u"C:\\new", 0x42, "short"); }, "without its maker"},
    {[](auto &m) { m.add_reparse_point(u"C:\\new", 0x80000042, std::string(16377, 'a')); },
     "more bytes than a disk keeps"},
    {[](auto &m) { m.add_share(u"", u"share"); }, "no server"},
    {[](auto &m) { m.add_share(u"server", u"a\\b"); }, "no name of a share"},
    {[](auto &m) { m.add_drive(u'X'); }, "a mapped letter"},
    {[](auto &m) { m.set_current_directory(u"C:\\file"); }, "a file"},
    {[](auto &m) { m.set_attributes(u"C:\\none", 0); }, "nothing there"},
    {[](auto &m) { m.set_times(u"C:\\none", {}); }, "nothing there"},
    {[](auto &m) { m.deny(u"C:\\none", right::read); }, "nothing there"},
    {[](auto &m) { m.remove(u"C:\\"); }, "a root"},
    {[](auto &m) { m.remove(u"C:\\none"); }, "nothing there"},
    {[](auto &m) { m.add_shortcut(u"C:\\new\\a*b", u"C:\\"); }, "no name"},
};

TEST(Building, LeavesNothingBehindWhereItFails)
{
    for (refused_case const &row : refused_cases) {
        simulated_machine machine;
        machine.add_drive(u'D').add_file(u"C:\\file", "text").add_directory(u"C:\\dir");
        machine.add_junction(u"C:\\junction", u"C:\\dir").add_share(u"server", u"share");
        machine.map_drive(u'X', u"server", u"share");
        EXPECT_THROW(row.build(machine), std::invalid_argument) << row.why;
        EXPECT_EQ(machine.entries(u"C:\\"), (names{u"dir", u"file", u"junction"})) << row.why;
        EXPECT_EQ(machine.entries(u"D:\\"), names()) << row.why;
        EXPECT_EQ(machine.reparse_tag(u"C:\\file"), 0U) << row.why;
        EXPECT_EQ(machine.reparse_tag(u"C:\\"), 0U) << row.why;
    }
}

TEST(Building, ADeadServersMappedDriveIsNoDriveToMount)
{
    simulated_machine machine;
    machine.add_share(u"server", u"share").map_drive(u'X', u"server", u"share");
    machine.add_dead_server(u"server");
    EXPECT_THROW(machine.add_mount_point(u"C:\\new", u'X'), std::invalid_argument);
}

BY_HANDLE_FILE_INFORMATION identity_of(wchar_t const *path)
{
    HANDLE const file = ::CreateFileW(path, 0, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                                      FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    BY_HANDLE_FILE_INFORMATION info = {};
    EXPECT_TRUE(::GetFileInformationByHandle(file, &info)) << path;
    ::CloseHandle(file);
    return info;
}

// Only the volume tells such files apart.
TEST(Building, IdentitiesRepeatOnOtherVolumes)
{
    simulated_machine machine;
    machine.add_drive(u'D').add_file(uR"(C:\file)").add_file(uR"(D:\file)");
    for (auto const &[left, right] :
         {std::pair(LR"(C:\)", LR"(D:\)"), std::pair(LR"(C:\file)", LR"(D:\file)")}) {
        BY_HANDLE_FILE_INFORMATION const one = identity_of(left);
        BY_HANDLE_FILE_INFORMATION const other = identity_of(right);
        EXPECT_EQ(one.nFileIndexLow, other.nFileIndexLow);
        EXPECT_EQ(one.nFileIndexHigh, other.nFileIndexHigh);
        EXPECT_NE(one.dwVolumeSerialNumber, other.dwVolumeSerialNumber);
    }
}

TEST(Building, BothHalvesOfAnIdentityVary)
{
    simulated_machine machine;
    machine.add_file(uR"(C:\a)").add_file(uR"(C:\b)").add_share(u"s", u"h");
    machine.add_file(uR"(\\s\h\a)").add_file(uR"(\\s\h\b)").add_file(uR"(\\s\h\c)");
    EXPECT_NE(identity_of(LR"(C:\a)").nFileIndexHigh, identity_of(LR"(C:\b)").nFileIndexHigh);
    EXPECT_NE(identity_of(LR"(C:\a)").nFileIndexLow, identity_of(LR"(C:\b)").nFileIndexLow);
    BY_HANDLE_FILE_INFORMATION const b = identity_of(LR"(\\s\h\b)");
    BY_HANDLE_FILE_INFORMATION const c = identity_of(LR"(\\s\h\c)");
    BY_HANDLE_FILE_INFORMATION const a = identity_of(LR"(\\s\h\a)");
    EXPECT_TRUE(a.nFileIndexLow == b.nFileIndexLow || b.nFileIndexLow == c.nFileIndexLow)
        << "the lower half of a server's repeats";
    EXPECT_NE(a.nFileIndexHigh, b.nFileIndexHigh);
    EXPECT_NE(b.nFileIndexHigh, c.nFileIndexHigh);
}

} // namespace

} // namespace fl::simulation
