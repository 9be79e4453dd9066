// Space on volumes of known sizes, and the calls that find the volume of a file.

#include <fl/filesystem/operations.hpp>

#include "support/calls.hpp"
#include "support/translation.hpp"

namespace fl::filesystem::tests {
namespace {

/// C: has 1000 bytes, D: 2000, the share 3000.
class SpaceCalls : public on_machine
{
protected:
    SpaceCalls()
    {
        machine.add_drive(u'D').add_share(u"server", u"share");
        machine.set_volume_space(u"C:\\", 1000, 500, 300).set_volume_space(u"D:\\", 2000, 700, 600);
        machine.set_volume_space(uR"(\\server\share)", 3000, 900, 800);
    }
};

void expect_space(std::u16string const &path, std::uintmax_t capacity, std::uintmax_t free,
                  std::uintmax_t available, char const *why)
{
    auto const [first, second, third] = space(upath(path));
    EXPECT_EQ(first, capacity) << why;
    EXPECT_EQ(second, free) << why;
    EXPECT_EQ(third, available) << why;
}

TEST_F(SpaceCalls, CapacityThenFreeThenAvailable)
{
    space_info const info = space(upath(u"C:\\"));
    EXPECT_EQ(info.capacity, 1000U);
    EXPECT_EQ(info.free, 500U);
    EXPECT_EQ(info.available, 300U);
    expect_space(u"C:\\", 1000, 500, 300, "in the order of the fields");
}

TEST_F(SpaceCalls, HoldAllBitsOfTheSizes)
{
    machine.set_volume_space(u"C:\\", 0xFEDCBA9876543210, 0x8000000000000001, 0x100000002);
    expect_space(u"C:\\", 0xFEDCBA9876543210, 0x8000000000000001, 0x100000002, "unsigned");
}

TEST_F(SpaceCalls, OneForADirectory)
{
    machine.add_directory(uR"(D:\dir)");
    expect_space(u"D:/dir", 2000, 700, 600, "a directory");
    EXPECT_EQ(calls_with_arguments(machine),
              (lines{R"(GetFullPathNameW(D:\dir))", R"(GetDiskFreeSpaceExW(D:\dir))"}));
}

TEST_F(SpaceCalls, OfAFileFindItsVolume)
{
    machine.add_file(uR"(D:\dir\file)");
    expect_space(uR"(D:\dir\file)", 2000, 700, 600, "a file");
    EXPECT_EQ(calls_with_arguments(machine),
              (lines{R"(GetFullPathNameW(D:\dir\file))", R"(GetDiskFreeSpaceExW(D:\dir\file))",
                     R"(CreateFileW(D:\dir\file) access 80 share 7 disposition 3 flags 2000000)",
                     R"(GetFinalPathNameByHandleW(D:\dir\file))",
                     R"(GetVolumePathNameW(\\?\D:\dir\file))", R"(CloseHandle(D:\dir\file))",
                     R"(GetDiskFreeSpaceExW(\\?\D:\))"}));
}

TEST_F(SpaceCalls, GoWhereTheNameLeads)
{
    machine.add_file(uR"(D:\dir\file)").add_file(uR"(\\server\share\dir\file)");
    machine.add_symbolic_link(uR"(C:\to-file)", uR"(D:\dir\file)");
    machine.add_symbolic_link(uR"(C:\to-link)", uR"(C:\to-file)");
    machine.add_symbolic_link(uR"(C:\to-dir)", uR"(D:\dir)", flavour::directory);
    machine.add_junction(uR"(C:\junction)", uR"(D:\dir)").add_mount_point(uR"(C:\volume)", u'D');
    expect_space(uR"(C:\to-file)", 2000, 700, 600, "a link to a file");
    expect_space(uR"(C:\to-link)", 2000, 700, 600, "a link to a link");
    expect_space(uR"(C:\to-dir)", 2000, 700, 600, "a link to a directory");
    expect_space(uR"(C:\to-dir\file)", 2000, 700, 600, "a file behind it");
    expect_space(uR"(C:\junction)", 2000, 700, 600, "a junction");
    expect_space(uR"(C:\junction\file)", 2000, 700, 600, "a file behind it");
    expect_space(uR"(C:\volume)", 2000, 700, 600, "a mount point");
    expect_space(uR"(C:\volume\dir\file)", 2000, 700, 600, "a file behind it");
    expect_space(uR"(\\server\share)", 3000, 900, 800, "a share");
    expect_space(uR"(\\server\share\dir)", 3000, 900, 800, "a directory on it");
    expect_space(uR"(\\server\share\dir\file)", 3000, 900, 800, "a file on it");
}

TEST_F(SpaceCalls, OfAFileOnAVolumeThatNoLetterStandsFor)
{
    machine.add_file(uR"(D:\dir\file)").add_mount_point(uR"(C:\volume)", u'D').take_letter(u'D');
    expect_space(uR"(C:\volume\dir)", 2000, 700, 600, "a directory");
    expect_space(uR"(C:\volume\dir\file)", 2000, 700, 600, "a file");
    EXPECT_EQ(machine.journal().back().text, uR"(\\?\GLOBALROOT\Device\HarddiskVolume4\)");
}

TEST_F(SpaceCalls, OfALongPathname)
{
    std::u16string const directory = uR"(D:\)" + std::u16string(200, u'd');
    for (std::size_t const size : {247U, 248U, 300U}) {
        std::u16string const file = of_size((directory + u'\\').c_str(), size);
        machine.add_file(file);
        expect_space(file, 2000, 700, 600, "a file");
    }
}

TEST_F(SpaceCalls, AFailingQueryIsAboutTheCallersPath)
{
    machine.add_directory(u"C:\\dir");
    for (DWORD const code : {2U, 3U, 5U, 21U, 53U, 206U, 1920U, 4390U}) {
        machine.clear_journal();
        sure_fault const fault = machine.fail_call("GetDiskFreeSpaceExW", 1, code);
        EXPECT_FAILURE(space(upath(u"dir")), translated(code, u"dir")) << code;
        EXPECT_EQ(machine.calls_of("GetDiskFreeSpaceExW"), 1) << code;
    }
}

TEST_F(SpaceCalls, EachFailingCallForAFileIsAboutTheCallersPath)
{
    maybe_failure const told = system_error(1117, u"file");
    auto const build = [](simulated_machine &fresh) { fresh.add_file(u"C:\\file"); };
    EXPECT_EQ(failures_of_each_call(build, [] { space(upath(u"file")); }),
              (failures{told, told, told, told, told, {}, told}))
        << "the sixth call closes the file, whose space is known all the same";
}

TEST_F(SpaceCalls, AVolumeThatIsNoDirectoryEitherIsNotLookedForAgain)
{
    machine.add_file(u"C:\\file");
    sure_fault const fault = machine.fail_every_call_on("GetDiskFreeSpaceExW", 267);
    EXPECT_FAILURE(space(upath(u"file")), not_directory(u"file"));
    EXPECT_EQ(machine.calls_of("GetDiskFreeSpaceExW"), 2);
}

TEST_F(SpaceCalls, NoneForTheEmptyPath)
{
    EXPECT_FAILURE(space(upath()), empty_path());
    EXPECT_EQ(machine.journal().size(), 0U);
}

TEST_F(SpaceCalls, FailingNetworks)
{
    machine.add_dead_server(u"dead");
    EXPECT_FAILURE(space(upath(uR"(\\dead\share\a)")), system_error(53, uR"(\\dead\share\a)"));
    EXPECT_FAILURE(space(upath(uR"(\\server\other)")), system_error(67, uR"(\\server\other)"));
}

} // namespace
} // namespace fl::filesystem::tests
