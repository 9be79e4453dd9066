// The examples of the reference: what stands between two marks of one name is shown at the function
// of that name.

#include "guide/page.hpp"

#include <chrono>
#include <fstream>
#include <sstream>

namespace {

using namespace guide;

TEST(Reference, Absolute)
{
    simulated_machine machine;
    machine.add_directory(u"C:\\work").set_current_directory(u"C:\\work");
    //! [absolute]
    fs::upath const full = fs::absolute(fs::upath(u"june.txt")); // C:\work\june.txt
    //! [absolute]
    EXPECT_EQ(full.native(), u"C:\\work\\june.txt");
}

TEST(Reference, CreateDirectory)
{
    simulated_machine machine;
    machine.add_directory(u"C:\\data");
    //! [create_directory]
    fs::create_directory(u"C:/data/2026");
    //! [create_directory]
    EXPECT_TRUE(machine.is_directory(u"C:\\data\\2026"));
}

TEST(Reference, CreateDirectories)
{
    simulated_machine machine;
    //! [create_directories]
    fs::create_directories(u"C:/data/2026/june");
    //! [create_directories]
    EXPECT_TRUE(machine.is_directory(u"C:\\data\\2026\\june"));
}

TEST(Reference, EnsureDirectories)
{
    simulated_machine machine;
    //! [ensure_directories]
    bool const is_new = fs::ensure_directories(u"C:/data/2026"); // false the next time
    //! [ensure_directories]
    EXPECT_TRUE(is_new);
    EXPECT_FALSE(fs::ensure_directories(u"C:/data/2026"));
}

TEST(Reference, Remove)
{
    simulated_machine machine;
    machine.add_file(u"C:\\data\\june.txt");
    //! [remove]
    fs::remove(u"C:/data/june.txt"); // also if it is read-only
    //! [remove]
    EXPECT_FALSE(machine.exists(u"C:\\data\\june.txt"));
}

TEST(Reference, RemoveFile)
{
    simulated_machine machine;
    machine.add_file(u"C:\\data\\june.txt");
    //! [remove_file]
    fs::remove_file(u"C:/data/june.txt"); // but no directory
    //! [remove_file]
    EXPECT_FALSE(machine.exists(u"C:\\data\\june.txt"));
}

TEST(Reference, RemoveDirectory)
{
    simulated_machine machine;
    machine.add_directory(u"C:\\data\\old");
    //! [remove_directory]
    fs::remove_directory(u"C:/data/old"); // if it is empty
    //! [remove_directory]
    EXPECT_FALSE(machine.exists(u"C:\\data\\old"));
}

TEST(Reference, RemoveAll)
{
    simulated_machine machine;
    machine.add_file(u"C:\\data\\old\\a")
        .set_attributes(u"C:\\data\\old\\a", FILE_ATTRIBUTE_READONLY);
    std::ostringstream log;
    //! [remove_all]
    auto const how = fs::removal_options().clear_read_only().keep_going();
    fs::removal_report const report = fs::remove_all(u"C:/data/old", how);
    for (fs::failure const &left : report.failures())
        log << left.describe() << '\n';
    //! [remove_all]
    EXPECT_EQ(report.removed(), 2U);
    EXPECT_EQ(log.str(), "");
}

TEST(Reference, Rename)
{
    simulated_machine machine;
    machine.add_file(u"C:\\data\\june.txt");
    //! [rename]
    fs::rename(u"C:/data/june.txt", u"C:/data/july.txt");
    //! [rename]
    EXPECT_TRUE(machine.exists(u"C:\\data\\july.txt"));
}

TEST(Reference, Copy)
{
    simulated_machine machine;
    machine.add_file(u"C:\\data\\2026\\june.txt");
    //! [copy]
    fs::copy(u"C:/data", u"C:/backup",
             std::filesystem::copy_options::recursive |
                 std::filesystem::copy_options::update_existing);
    //! [copy]
    EXPECT_TRUE(machine.exists(u"C:\\backup\\2026\\june.txt"));
}

TEST(Reference, CopyFile)
{
    simulated_machine machine;
    machine.add_file(u"C:\\data\\june.txt").add_directory(u"C:\\backup");
    //! [copy_file]
    fs::copy_file(u"C:/data/june.txt", u"C:/backup/june.txt",
                  std::filesystem::copy_options::overwrite_existing);
    //! [copy_file]
    EXPECT_TRUE(machine.exists(u"C:\\backup\\june.txt"));
}

TEST(Reference, CopyDirectory)
{
    simulated_machine machine;
    machine.add_file(u"C:\\data\\june.txt");
    //! [copy_directory]
    fs::copy_directory(u"C:/data", u"C:/empty"); // takes nothing of it along
    //! [copy_directory]
    EXPECT_EQ(machine.entries(u"C:\\empty").size(), 0U);
}

TEST(Reference, Access)
{
    simulated_machine machine;
    machine.add_file(u"C:\\data\\june.txt");
    //! [access]
    bool const is_ours = fs::access(u"C:/data/june.txt", fs::access_read | fs::access_write);
    //! [access]
    EXPECT_TRUE(is_ours);
}

TEST(Reference, Permissions)
{
    simulated_machine machine;
    machine.add_file(u"C:\\data\\june.txt");
    //! [permissions]
    using word = fs::file_status;
    fs::permissions(u"C:/data/june.txt", word::perms_remove | word::owner_write); // read-only
    fs::permissions(u"C:/data/june.txt", word::perms_add | word::hidden_file);
    //! [permissions]
    EXPECT_EQ(machine.attributes(u"C:\\data\\june.txt") & 3U, 3U);
}

TEST(Reference, CreateSymlink)
{
    simulated_machine machine;
    machine.add_file(u"C:\\data\\june.txt", "soup");
    //! [create_symlink]
    fs::create_symlink(u"june.txt", u"C:/data/latest", fs::file_status::regular_file);
    //! [create_symlink]
    EXPECT_EQ(fs::file_size(u"C:/data/latest"), 4U);
}

TEST(Reference, CreateDirectorySymlink)
{
    simulated_machine machine;
    machine.add_file(u"C:\\data\\2026\\june.txt");
    //! [create_directory_symlink]
    fs::create_directory_symlink(u"2026", u"C:/data/this-year");
    //! [create_directory_symlink]
    EXPECT_TRUE(fs::exists(u"C:/data/this-year/june.txt"));
}

TEST(Reference, CreateJunction)
{
    simulated_machine machine;
    machine.add_file(u"C:\\data\\2026\\june.txt");
    //! [create_junction]
    fs::create_junction(u"C:/data/2026", u"C:/this-year"); // takes no right that others lack
    //! [create_junction]
    EXPECT_TRUE(fs::exists(u"C:/this-year/june.txt"));
}

TEST(Reference, CreateHardLink)
{
    simulated_machine machine;
    machine.add_file(u"C:\\data\\june.txt");
    //! [create_hard_link]
    fs::create_hard_link(u"C:/data/june.txt", u"C:/data/same.txt");
    //! [create_hard_link]
    EXPECT_TRUE(machine.is_same(u"C:\\data\\june.txt", u"C:\\data\\same.txt"));
}

TEST(Reference, CopySymlink)
{
    simulated_machine machine;
    machine.add_symbolic_link(u"C:\\data\\latest", u"june.txt");
    //! [copy_symlink]
    fs::copy_symlink(u"C:/data/latest", u"C:/data/newest");
    //! [copy_symlink]
    EXPECT_EQ(fs::read_symlink(u"C:/data/newest"), u"june.txt");
}

TEST(Reference, CreateShortcut)
{
    simulated_machine machine;
    machine.add_file(u"C:\\data\\june.txt");
    //! [create_shortcut]
    fs::create_shortcut(u"C:/data/june.txt", u"C:/June.lnk");
    //! [create_shortcut]
    EXPECT_EQ(fs::canonical(u"C:/June.lnk"), u"C:\\data\\june.txt");
}

TEST(Reference, ReadShortcut)
{
    simulated_machine machine;
    machine.add_file(u"C:\\data\\june.txt").add_shortcut(u"C:\\June.lnk", u"C:\\data\\june.txt");
    //! [read_shortcut]
    fs::upath const target = fs::read_shortcut(fs::upath(u"C:/June.lnk"));
    //! [read_shortcut]
    EXPECT_EQ(target.native(), u"C:\\data\\june.txt");
}

TEST(Reference, ReadSymlink)
{
    simulated_machine machine;
    machine.add_symbolic_link(u"C:\\data\\latest", u"june.txt");
    //! [read_symlink]
    fs::upath const text = fs::read_symlink(fs::upath(u"C:/data/latest")); // june.txt
    //! [read_symlink]
    EXPECT_EQ(text.native(), u"june.txt");
}

TEST(Reference, Status)
{
    simulated_machine machine;
    machine.add_file(u"C:\\data\\june.txt", "soup");
    //! [status]
    fs::file_status const found = fs::status(u"C:/data/june.txt");
    bool const is_file = fs::file_status::is_regular(found);
    std::uint64_t const bytes = found.get_size();
    //! [status]
    EXPECT_TRUE(is_file);
    EXPECT_EQ(bytes, 4U);
}

TEST(Reference, SymlinkStatus)
{
    simulated_machine machine;
    machine.add_junction(u"C:\\data", u"C:\\");
    //! [symlink_status]
    bool const is_junction = fs::file_status::is_reparse(fs::symlink_status(u"C:/data"));
    //! [symlink_status]
    EXPECT_TRUE(is_junction);
}

TEST(Reference, StatusExpressLight)
{
    simulated_machine machine;
    machine.add_file(u"C:\\data\\june.txt", "soup");
    //! [status_express_light]
    fs::file_status_light const found = fs::status_express_light(u"C:\\data\\june.txt");
    bool const is_there = fs::file_status_light::exists(found);
    //! [status_express_light]
    EXPECT_TRUE(is_there);
}

TEST(Reference, Exists)
{
    simulated_machine machine;
    machine.add_file(u"C:\\data\\june.txt");
    //! [exists]
    if (!fs::exists(u"C:/data/july.txt"))
        fs::copy_file(u"C:/data/june.txt", u"C:/data/july.txt");
    //! [exists]
    EXPECT_TRUE(machine.exists(u"C:\\data\\july.txt"));
}

TEST(Reference, Canonical)
{
    simulated_machine machine;
    machine.add_file(u"C:\\data\\june.txt").add_junction(u"C:\\link", u"C:\\data");
    //! [canonical]
    fs::upath const real = fs::canonical(fs::upath(u"C:/link/june.txt")); // C:\data\june.txt
    //! [canonical]
    EXPECT_EQ(real.native(), u"C:\\data\\june.txt");
}

TEST(Reference, WeaklyCanonical)
{
    simulated_machine machine;
    machine.add_directory(u"C:\\data").add_junction(u"C:\\link", u"C:\\data");
    //! [weakly_canonical]
    fs::upath const real = fs::weakly_canonical(fs::upath(u"C:/link/new/a.txt"));
    //! [weakly_canonical]
    EXPECT_EQ(real.native(), u"C:\\data\\new\\a.txt");
}

TEST(Reference, Relative)
{
    simulated_machine machine;
    machine.add_directory(u"C:\\data\\2026").add_directory(u"C:\\data\\2025");
    //! [relative]
    fs::upath const way = fs::relative(fs::upath(u"C:/data/2026"), u"C:/data/2025"); // ..\2026
    //! [relative]
    EXPECT_EQ(way.native(), u"..\\2026");
}

TEST(Reference, Equivalent)
{
    simulated_machine machine;
    machine.add_directory(u"C:\\data");
    //! [equivalent]
    bool const is_same = fs::equivalent(u"C:/Data", u"C:/data");
    //! [equivalent]
    EXPECT_TRUE(is_same);
}

TEST(Reference, GetCurrentPath)
{
    simulated_machine machine;
    //! [get_current_path]
    std::u16string const here = fs::get_current_path();
    //! [get_current_path]
    EXPECT_EQ(here, u"C:\\");
}

TEST(Reference, ChangeCurrentPath)
{
    simulated_machine machine;
    machine.add_directory(u"C:\\data");
    //! [change_current_path]
    fs::change_current_path(u"C:/data"); // for the whole process
    //! [change_current_path]
    EXPECT_EQ(machine.current_directory(), u"C:\\data");
}

TEST(Reference, GetUncPath)
{
    simulated_machine machine;
    machine.add_share(u"server", u"share").map_drive(u'X', u"server", u"share");
    //! [get_unc_path]
    fs::upath const known = fs::get_unc_path(fs::upath(u"X:/june.txt"), true);
    //! [get_unc_path]
    EXPECT_EQ(known.native(), u"\\\\server\\share\\june.txt");
}

TEST(Reference, Space)
{
    simulated_machine machine;
    //! [space]
    fs::space_info const room = fs::space(fs::upath(u"C:/"));
    bool const will_fit = room.available > 1000;
    //! [space]
    EXPECT_TRUE(will_fit);
}

TEST(Reference, IsDirectory)
{
    simulated_machine machine;
    //! [is_directory]
    bool const is_there = fs::is_directory(u"C:/");
    //! [is_directory]
    EXPECT_TRUE(is_there);
}

TEST(Reference, IsRegularFile)
{
    simulated_machine machine;
    machine.add_file(u"C:\\june.txt");
    //! [is_regular_file]
    bool const is_there = fs::is_regular_file(u"C:/june.txt");
    //! [is_regular_file]
    EXPECT_TRUE(is_there);
}

TEST(Reference, IsOther)
{
    simulated_machine machine;
    //! [is_other]
    bool const is_odd = fs::is_other(u"C:/"); // nothing in a folder is
    //! [is_other]
    EXPECT_FALSE(is_odd);
}

TEST(Reference, IsSymlink)
{
    simulated_machine machine;
    machine.add_symbolic_link(u"C:\\latest", u"june.txt");
    //! [is_symlink]
    bool const is_link = fs::is_symlink(u"C:/latest");
    //! [is_symlink]
    EXPECT_TRUE(is_link);
}

TEST(Reference, IsJunction)
{
    simulated_machine machine;
    machine.add_junction(u"C:\\data", u"C:\\");
    //! [is_junction]
    bool const is_link = fs::is_junction(u"C:/data");
    //! [is_junction]
    EXPECT_TRUE(is_link);
}

TEST(Reference, IsEmpty)
{
    simulated_machine machine;
    machine.add_directory(u"C:\\data");
    //! [is_empty]
    if (fs::is_empty(u"C:/data"))
        fs::remove_directory(u"C:/data");
    //! [is_empty]
    EXPECT_FALSE(machine.exists(u"C:\\data"));
}

TEST(Reference, FileSize)
{
    simulated_machine machine;
    machine.add_file(u"C:\\june.txt", "soup");
    //! [file_size]
    std::uint64_t const bytes = fs::file_size(u"C:/june.txt");
    //! [file_size]
    EXPECT_EQ(bytes, 4U);
}

TEST(Reference, HardLinkCount)
{
    simulated_machine machine;
    machine.add_file(u"C:\\june.txt");
    //! [hard_link_count]
    std::uint64_t const names = fs::hard_link_count(u"C:/june.txt");
    //! [hard_link_count]
    EXPECT_EQ(names, 1U);
}

TEST(Reference, LastWriteTime)
{
    simulated_machine machine;
    machine.add_file(u"C:\\june.txt");
    //! [last_write_time]
    using namespace std::chrono;
    fs::last_write_time(u"C:/june.txt", system_clock::now());
    bool const is_recent = system_clock::now() - fs::last_write_time(u"C:/june.txt") < hours(1);
    //! [last_write_time]
    EXPECT_TRUE(is_recent);
}

TEST(Reference, ResizeFile)
{
    simulated_machine machine;
    machine.add_file(u"C:\\june.txt", "soup");
    //! [resize_file]
    fs::resize_file(u"C:/june.txt", 0);
    //! [resize_file]
    EXPECT_EQ(machine.content(u"C:\\june.txt"), "");
}

TEST(Reference, TempDirectoryPath)
{
    simulated_machine machine;
    machine.add_directory(u"C:\\temp");
    ::SetEnvironmentVariableW(L"TMP", L"C:\\temp");
    //! [temp_directory_path]
    fs::upath const folder = fs::temp_directory_path() / u"my-program";
    //! [temp_directory_path]
    EXPECT_EQ(folder.native(), u"C:\\temp\\my-program");
}

TEST(Reference, LinkHops)
{
    simulated_machine machine;
    machine.add_junction(u"C:\\data", u"C:\\moved");
    std::ostringstream log;
    //! [link_hops]
    for (fs::link_hop const &hop : fs::link_hops(u"C:/data/june.txt"))
        log << fs::to_utf8(hop.link) << " says " << fs::to_utf8(hop.text) << '\n';
    //! [link_hops]
    EXPECT_EQ(log.str(), "C:\\data says C:\\moved\n");
}

TEST(Reference, Attempt)
{
    simulated_machine machine;
    std::ostringstream log;
    //! [attempt]
    auto const size = fs::attempt([] { return fs::file_size(u"C:/june.txt"); });
    if (!size)
        log << size.error().describe() << '\n';
    //! [attempt]
    EXPECT_NE(log.str(), "");
}

TEST(Reference, ThrowLastError)
{
    simulated_machine machine;
    bool thrown = false;
    //! [throw_last_error]
    try {
        if (!::DeleteFileW(L"C:\\june.txt"))
            fs::throw_last_error(::GetLastError(), u"C:\\june.txt");
    } catch (fs::PathNotFound const &) {
        thrown = true;
    }
    //! [throw_last_error]
    EXPECT_TRUE(thrown);
}

TEST(Reference, Describe)
{
    simulated_machine machine;
    std::ostringstream log;
    //! [describe]
    try {
        fs::remove(u"C:/june.txt");
    } catch (std::exception const &failure) {
        log << fs::describe(failure) << '\n';
    }
    //! [describe]
    EXPECT_NE(log.str().find("\"C:\\june.txt\""), std::string::npos);
}

TEST(Reference, SystemMessage)
{
    simulated_machine machine;
    //! [system_message]
    std::string const words = fs::to_utf8(fs::system_message(5)); // Access is denied.
    //! [system_message]
    EXPECT_EQ(words, "Access is denied.");
}

TEST(Reference, ToStandard)
{
    simulated_machine machine;
    //! [to_standard]
    std::ifstream file(fs::to_standard(fs::upath(u"C:/june.txt"))); // at any length
    //! [to_standard]
    EXPECT_FALSE(file.is_open());
}

TEST(Reference, FromStandard)
{
    simulated_machine machine;
    //! [from_standard]
    fs::upath const path = fs::from_standard(std::filesystem::path("C:/data/june.txt"));
    //! [from_standard]
    EXPECT_EQ(path.native(), u"C:\\data\\june.txt");
}

TEST(Reference, Open)
{
    simulated_machine machine;
    bool thrown = false;
    //! [open]
    try {
        std::fstream file = fs::open(fs::upath(u"C:/june.txt"), std::ios::in);
    } catch (fs::PathNotFound const &) {
        thrown = true; // a stream would only not be open
    }
    //! [open]
    EXPECT_TRUE(thrown);
}

TEST(Reference, ToUtf8)
{
    simulated_machine machine;
    //! [to_utf8]
    std::string const bytes = fs::to_utf8(u"caf\u00E9");
    //! [to_utf8]
    EXPECT_EQ(bytes, "caf\xC3\xA9");
}

TEST(Reference, FromUtf8)
{
    simulated_machine machine;
    //! [from_utf8]
    std::u16string const units = fs::from_utf8("caf\xC3\xA9");
    //! [from_utf8]
    EXPECT_EQ(units, u"caf\u00E9");
}

TEST(Reference, ToFileTime)
{
    simulated_machine machine;
    machine.add_file(u"C:\\june.txt");
    //! [to_file_time]
    fs::file_time_type const time = fs::to_file_time(fs::status(u"C:/june.txt").get_mtime());
    //! [to_file_time]
    EXPECT_LE(time, fs::last_write_time(u"C:/june.txt"));
}

TEST(Reference, ToPtime)
{
    simulated_machine machine;
    machine.add_file(u"C:\\june.txt");
    //! [to_ptime]
    boost::posix_time::ptime const time = fs::to_ptime(fs::last_write_time(u"C:/june.txt"));
    //! [to_ptime]
    EXPECT_FALSE(time.is_special());
}

TEST(Reference, GetInstallPath)
{
    simulated_machine machine;
    machine.add_drive(u'D').add_file(u"D:\\Apps\\Tool\\bin\\win64\\tool.exe");
    machine.set_program_pathname(u"D:\\Apps\\Tool\\bin\\win64\\tool.exe");
    //! [get_install_path]
    std::u16string const root = fs::get_install_path(); // of D:\Apps\Tool\bin\win64, D:\Apps\Tool
    //! [get_install_path]
    EXPECT_EQ(root, u"D:\\Apps\\Tool");
}

TEST(Reference, MakeNativeAccessForm)
{
    simulated_machine machine;
    //! [make_native_access_form]
    std::wstring const name = fs::detail::make_native_access_form(u"C:\\a\\..\\june.txt");
    //! [make_native_access_form]
    EXPECT_EQ(name, L"C:\\june.txt");
}

TEST(Reference, MakeNativeAccessFormWithCleanup)
{
    simulated_machine machine;
    //! [make_native_access_form_with_cleanup]
    std::wstring const name = fs::detail::make_native_access_form_with_cleanup(u"C:/june.txt");
    //! [make_native_access_form_with_cleanup]
    EXPECT_EQ(name, L"C:\\june.txt");
}

TEST(Reference, MakeAccessForm)
{
    simulated_machine machine;
    //! [make_access_form]
    std::wstring const name = fs::detail::make_access_form(L"C:\\" + std::wstring(300, L'a'));
    //! [make_access_form]
    EXPECT_EQ(name, L"\\\\?\\C:\\" + std::wstring(300, L'a'));
}

TEST(Reference, ConcatenatePathname)
{
    simulated_machine machine;
    //! [concatenate_pathname]
    std::u16string folder = u"C:\\data";
    fs::detail::concatenate_pathname(folder, u"june.txt"); // C:\data\june.txt
    //! [concatenate_pathname]
    EXPECT_EQ(folder, u"C:\\data\\june.txt");
}

TEST(Reference, MakeNativeForm)
{
    simulated_machine machine;
    //! [make_native_form]
    std::u16string const native = fs::detail::make_native_form(u"C:/data//june.txt");
    //! [make_native_form]
    EXPECT_EQ(native, u"C:\\data\\june.txt");
}

} // namespace
