// The rows of docs/from-std-filesystem.md: what differs, shown here and, where this host's
// standard library is no other than Windows' in it, there. (What compiles, and why some of it
// doesn't, is in tests/idioms.)

#include "guide/page.hpp"

#include <sstream>
#include <type_traits>

#include <unistd.h>

namespace standard = std::filesystem;

namespace {

using namespace guide;
using namespace test_support;

char const page[] = "docs/from-std-filesystem.md";
char const heading[] = "| standard | here | differs |";

/// A folder for the standard's side.
struct host_folder
{
    standard::path path;

    host_folder()
        : path(standard::temp_directory_path() / ("fl-guide-" + std::to_string(::getpid())))
    {
        standard::create_directory(path);
    }
    ~host_folder() { standard::remove_all(path); }
};

template <typename Path>
std::size_t elements(Path const &path)
{
    return static_cast<std::size_t>(std::distance(path.begin(), path.end()));
}

template <typename Value>
std::string written(Value const &value)
{
    std::ostringstream out;
    out << value;
    return out.str();
}

checks path_checks()
{
    return {
        {"path p = \"C:/dir\"",
         [] {
             static_assert(!std::is_convertible_v<char16_t const *, fs::upath>);
             static_assert(!std::is_constructible_v<fs::upath, char const *>);
             EXPECT_EQ(fs::upath(u"C:/dir"), u"C:/dir"_path);
         }},
        {"`path(utf8)`, `u8path(utf8)`",
         [] {
             EXPECT_EQ(fs::upath::from_utf8("caf\xC3\xA9").native(), u"caf\u00E9");
             EXPECT_THROW(static_cast<void>(fs::upath::from_utf8("\xFF")),
                          fs::FileNameConversionFailure);
         }},
        {"`p.native()`, `p.c_str()`",
         [] {
             static_assert(std::is_same_v<decltype(fs::upath().native()), std::u16string const &>);
             EXPECT_EQ(fs::upath(u"a/b").wstring(), L"a\\b");
         }},
        {"`p.string()`, `p.u8string()`",
         [] {
             EXPECT_EQ(fs::upath(u"\u00E9").string(), "\xC3\xA9");
             EXPECT_TRUE(fs::upath(u"\u00E9").u8string() == u8"\u00E9");
         }},
        {"p / q",
         [] {
             EXPECT_FAILURE(u"C:\\a"_path / u"D:\\b",
                            invalid_argument("Absolute path not permitted"));
             EXPECT_EQ(standard::path("/a") / "/b", "/b");
         }},
        {"p += q", [] { EXPECT_EQ(fs::upath(u"a") += u"//b/", u"a\\b"_path); }},
        {"p.parent_path()",
         [] {
             EXPECT_EQ(fs::upath(u"C:\\").parent(), u"C:"_path);
             EXPECT_EQ(standard::path("/").parent_path(), "/");
             static_assert(std::is_same_v<decltype(fs::upath().parent_path()), std::u16string>);
         }},
        {"p.filename()",
         [] {
             EXPECT_EQ(fs::upath(u"C:\\").filename(), u"\\");
             EXPECT_EQ(standard::path("/").filename(), "");
             EXPECT_EQ(fs::upath(u"a/b/").filename(), u"b");
             EXPECT_EQ(standard::path("a/b/").filename(), "");
         }},
        {"p.stem()",
         [] {
             EXPECT_EQ(fs::upath(u".bashrc").stem(), u"");
             EXPECT_EQ(standard::path(".bashrc").stem(), ".bashrc");
         }},
        {"p.extension()",
         [] {
             EXPECT_EQ(fs::upath(u"a.txt").extension(), u"txt");
             EXPECT_EQ(standard::path("a.txt").extension(), ".txt");
             EXPECT_EQ(fs::upath(u".bashrc").extension(), u"bashrc");
             EXPECT_EQ(standard::path(".bashrc").extension(), "");
         }},
        {"`p.root_name()`, `p.root_path()`, `p.relative_path()`",
         [] {
             fs::upath const p(u"C:/a/b");
             EXPECT_EQ(p.root_name() + p.root_path() + p.relative_path(), u"C:C:\\a\\b");
         }},
        {"p.replace_extension(x)",
         [] {
             EXPECT_EQ(fs::upath(u"a.b").replace_extension(u".c"), u"a.c"_path);
             EXPECT_EQ(standard::path("a.b").replace_extension(".c"), "a.c");
         }},
        {"p.replace_extension()",
         [] {
             EXPECT_EQ(fs::upath(u"a.b").remove_extension(), u"a"_path);
             EXPECT_EQ(standard::path("a.b").replace_extension(), "a");
         }},
        {"p.replace_filename(x)",
         [] {
             EXPECT_EQ(fs::upath(u"a/b").replace_filename(u"c"), u"a/c"_path);
             EXPECT_EQ(standard::path("a/b").replace_filename("c"), "a/c");
         }},
        {"p.remove_filename()",
         [] {
             EXPECT_EQ(fs::upath(u"a/b").remove_filename(), u"a"_path);
             EXPECT_EQ(standard::path("a/b").remove_filename(), "a/");
         }},
        {"p.make_preferred()", [] { EXPECT_EQ(fs::upath(u"a/b").native(), u"a\\b"); }},
        {"p.lexically_normal()",
         [] {
             simulated_machine machine;
             machine.add_drive(u'D').add_directory(u"D:\\far\\away").add_file(u"D:\\far\\x");
             machine.add_symbolic_link(u"C:\\link", u"D:\\far\\away",
                                       simulation::flavour::directory);
             machine.add_symbolic_link(u"C:\\up", u"link\\..\\x");
             EXPECT_EQ(fs::canonical(u"C:\\up"), u"D:\\far\\x") << "the text says C:\\x";
         }},
        {"p.lexically_relative(q)",
         [] {
             simulated_machine machine;
             machine.add_directory(u"C:\\d\\e").add_junction(u"C:\\j", u"C:\\d\\e");
             EXPECT_EQ(fs::relative(u"C:\\j\\x", u"C:\\d"), u"e\\x") << "the text says ..\\j\\x";
         }},
        {"`p == q`, `p < q`",
         [] {
             EXPECT_EQ(fs::upath(u"a//b"), u"a/b"_path);
             EXPECT_TRUE(u"a b"_path < u"a/b"_path);
             EXPECT_FALSE(standard::path("a b") < standard::path("a/b")) << "a is a prefix";
         }},
        {"for (auto part : p)",
         [] {
             EXPECT_EQ(elements(fs::upath(u"a/b/")), 2U);
             EXPECT_EQ(elements(standard::path("a/b/")), 3U);
         }},
        {"p.is_absolute()", [] { EXPECT_FALSE(fs::upath(u"\\\\.\\COM1").is_absolute()); }},
        {"`p.append(x)`, `p.concat(x)`, `p.assign(x)`",
         [] {
             fs::upath p(u"a");
             EXPECT_EQ(p /= u"b", u"a/b"_path);
             EXPECT_EQ(p += u"c", u"a/bc"_path);
             EXPECT_EQ(p = u"d", u"d"_path);
         }},
        {"std::hash<path>",
         [] {
             EXPECT_EQ(std::hash<fs::upath>()(u"a"_path), 0x089BE207B544F1E4U)
                 << "a number for ever";
         }},
        {"out << p",
         [] {
             EXPECT_EQ(written(u"a\\b c"_path), "a\\b c");
             EXPECT_EQ(written(standard::path("a\\b c")), "\"a\\\\b c\"");
         }},
        {"in >> p", [] { EXPECT_EQ(fs::upath::from_utf8("a b"), u"a b"_path); }},
    };
}

checks asking_checks()
{
    return {
        {"exists(p)",
         [] {
             simulated_machine machine;
             EXPECT_TRUE(fs::exists(u"C:\\"));
             EXPECT_FALSE(fs::exists(u"C:\\x"));
             EXPECT_FALSE(standard::exists("/no such name"));
         }},
        {"status(p)",
         [] {
             simulated_machine machine;
             machine.add_file(u"C:\\f", "four");
             EXPECT_EQ(fs::status(u"C:\\f").get_size(), 4U);
             EXPECT_FALSE(fs::status(u"C:\\f").get_mtime().is_special());
         }},
        {"symlink_status(p)",
         [] {
             simulated_machine machine;
             machine.add_junction(u"C:\\j", u"C:\\");
             EXPECT_TRUE(fs::file_status::is_reparse(fs::symlink_status(u"C:\\j")));
         }},
        {"`is_directory(p)`, `is_regular_file(p)`, `is_other(p)`",
         [] {
             simulated_machine machine;
             machine.add_file(u"C:\\f");
             EXPECT_TRUE(fs::is_directory(u"C:\\"));
             EXPECT_TRUE(fs::is_regular_file(u"C:\\f"));
             EXPECT_FALSE(fs::is_other(u"C:\\f"));
         }},
        {"is_symlink(p)",
         [] {
             simulated_machine machine;
             machine.add_junction(u"C:\\j", u"C:\\").add_symbolic_link(u"C:\\s", u"f");
             EXPECT_TRUE(fs::is_symlink(u"C:\\s"));
             EXPECT_FALSE(fs::is_symlink(u"C:\\j"));
             EXPECT_TRUE(fs::is_junction(u"C:\\j"));
         }},
        {"`is_block_file(p)`, `is_fifo(p)`, `is_socket(p)`",
         [] {
             simulated_machine machine;
             EXPECT_FALSE(fs::file_status::is_block(fs::status(u"C:\\")));
         }},
        {"is_empty(p)",
         [] {
             simulated_machine machine;
             EXPECT_TRUE(fs::is_empty(u"C:\\"));
         }},
        {"file_size(p)",
         [] {
             simulated_machine machine;
             EXPECT_FAILURE(fs::file_size(u"C:\\"), file_is_directory(u"C:\\"));
             EXPECT_THROW(static_cast<void>(standard::file_size("/")), standard::filesystem_error);
         }},
        {"hard_link_count(p)",
         [] {
             simulated_machine machine;
             machine.add_file(u"C:\\f").add_hard_link(u"C:\\g", u"C:\\f");
             EXPECT_EQ(fs::hard_link_count(u"C:\\f"), 2U);
         }},
        {"last_write_time(p)",
         [] {
             static_assert(std::is_same_v<fs::file_time_type::clock, std::chrono::system_clock>);
             static_assert(
                 !std::is_same_v<standard::file_time_type::clock, std::chrono::system_clock>);
         }},
        {"equivalent(p, q)",
         [] {
             simulated_machine machine;
             EXPECT_FALSE(fs::equivalent(u"C:\\", u"C:\\x"));
             EXPECT_FAILURE(fs::equivalent(u"C:\\y", u"C:\\x"), not_found(u"C:\\y"));
         }},
        {"space(p)",
         [] {
             simulated_machine machine;
             static_assert(std::is_same_v<fs::space_info, standard::space_info>);
             EXPECT_GT(fs::space(u"C:\\").capacity, 0U);
         }},
        {"status_known(s)",
         [] {
             fs::file_status nothing;
             nothing.clear();
             EXPECT_TRUE(fs::file_status::is_unknown_file_type(nothing));
             EXPECT_FALSE(standard::status_known(standard::file_status()));
         }},
    };
}

checks changing_checks()
{
    return {
        {"create_directory(p)",
         [] {
             simulated_machine machine;
             host_folder const host;
             machine.add_directory(u"C:\\d");
             EXPECT_FAILURE(fs::create_directory(u"C:\\d"), file_exists(u"C:\\d"));
             EXPECT_FALSE(fs::ensure_directories(u"C:\\d"));
             EXPECT_FALSE(standard::create_directory(host.path));
         }},
        {"create_directories(p)",
         [] {
             simulated_machine machine;
             host_folder const host;
             machine.add_directory(u"C:\\d");
             EXPECT_FAILURE(fs::create_directories(u"C:\\d"), file_exists(u"C:\\d"));
             EXPECT_TRUE(fs::ensure_directories(u"C:\\d\\e\\f"));
             EXPECT_FALSE(standard::create_directories(host.path));
         }},
        {"create_directory(p, existing)",
         [] {
             simulated_machine machine;
             machine.add_directory(u"C:\\d").set_attributes(u"C:\\d", FILE_ATTRIBUTE_HIDDEN);
             fs::create_directory(u"C:\\e", u"C:\\d");
             EXPECT_NE(machine.attributes(u"C:\\e") & FILE_ATTRIBUTE_HIDDEN, 0U);
         }},
        {"remove(p)",
         [] {
             simulated_machine machine;
             host_folder const host;
             machine.add_file(u"C:\\f").set_attributes(u"C:\\f", FILE_ATTRIBUTE_READONLY);
             fs::remove(u"C:\\f");
             EXPECT_FAILURE(fs::remove(u"C:\\f"), not_found(u"C:\\f"));
             EXPECT_FALSE(standard::remove(host.path / "f"));
         }},
        {"remove_all(p)",
         [] {
             simulated_machine machine;
             host_folder const host;
             machine.add_file(u"C:\\d\\f");
             EXPECT_EQ(fs::remove_all(u"C:\\d", fs::removal_options()).removed(), 2U);
             EXPECT_FAILURE(fs::remove_all(u"C:\\d"), not_found(u"C:\\d"));
             EXPECT_EQ(standard::remove_all(host.path / "d"), 0U);
         }},
        {"rename(p, q)",
         [] {
             simulated_machine machine;
             machine.add_file(u"C:\\f", "new").add_file(u"C:\\g", "old");
             fs::rename(u"C:\\f", u"C:\\g");
             EXPECT_EQ(machine.content(u"C:\\g"), "new");
         }},
        {"copy(p, q, options)",
         [] {
             simulated_machine machine;
             machine.add_file(u"C:\\d\\f").add_file(u"C:\\d\\g");
             bool const ended =
                 fs::copy(u"C:\\d"_path, u"C:\\e"_path, standard::copy_options::recursive,
                          [](fs::copy_progress const &) { return false; });
             EXPECT_FALSE(ended);
             EXPECT_EQ(machine.entries(u"C:\\e").size(), 0U) << "stopped behind the directory";
         }},
        {"copy_file(p, q, options)",
         [] {
             static_assert(std::is_void_v<decltype(fs::copy_file(u"a"_path, u"b"_path))>);
             static_assert(std::is_same_v<decltype(standard::copy_file("a", "b")), bool>);
         }},
        {"resize_file(p, size)",
         [] {
             simulated_machine machine;
             machine.add_file(u"C:\\f", "four");
             fs::resize_file(u"C:\\f", 2);
             EXPECT_EQ(machine.content(u"C:\\f"), "fo");
         }},
        {"last_write_time(p, time)",
         [] {
             simulated_machine machine;
             machine.add_file(u"C:\\f");
             fs::last_write_time(u"C:\\f", fs::file_time_type());
             EXPECT_EQ(fs::last_write_time(u"C:\\f"), fs::file_time_type());
         }},
        {"permissions(p, perms, options)",
         [] {
             simulated_machine machine;
             machine.add_file(u"C:\\f");
             fs::permissions(u"C:\\f", fs::file_status::perms_add | fs::file_status::owner_write |
                                           fs::file_status::hidden_file);
             EXPECT_NE(machine.attributes(u"C:\\f") & FILE_ATTRIBUTE_HIDDEN, 0U);
         }},
        {"create_symlink(target, link)",
         [] {
             simulated_machine machine;
             fs::create_symlink(u"C:\\", u"C:\\l", fs::file_status::file_type_auto);
             EXPECT_TRUE(machine.is_directory(u"C:\\l")) << "it looked";
         }},
        {"create_directory_symlink(target, link)",
         [] {
             simulated_machine machine;
             fs::create_directory_symlink(u"nowhere", u"C:\\l");
             EXPECT_TRUE(machine.is_directory(u"C:\\l"));
         }},
        {"create_hard_link(target, link)",
         [] {
             simulated_machine machine;
             machine.add_file(u"C:\\f");
             fs::create_hard_link(u"C:\\f", u"C:\\g");
             EXPECT_TRUE(machine.is_same(u"C:\\f", u"C:\\g"));
         }},
        {"copy_symlink(p, q)",
         [] {
             simulated_machine machine;
             machine.add_symbolic_link(u"C:\\l", u"..\\x");
             fs::copy_symlink(u"C:\\l", u"C:\\m");
             EXPECT_EQ(fs::read_symlink(u"C:\\m"), u"..\\x");
         }},
        {"read_symlink(p)",
         [] {
             simulated_machine machine;
             machine.add_junction(u"C:\\j", u"C:\\d").add_symbolic_link(u"C:\\l", u"../x");
             EXPECT_EQ(fs::read_symlink(u"C:\\j"), u"C:\\d");
             EXPECT_EQ(fs::read_symlink(u"C:\\l"), u"..\\x");
         }},
    };
}

checks place_checks()
{
    return {
        {"absolute(p)",
         [] {
             simulated_machine machine;
             EXPECT_EQ(fs::absolute(u"a"), u"C:\\a");
             EXPECT_EQ(fs::absolute(u"a", u"D:\\d"), u"D:\\d\\a");
         }},
        {"canonical(p)",
         [] {
             simulated_machine machine;
             machine.add_file(u"C:\\f").add_shortcut(u"C:\\s.lnk", u"C:\\f");
             EXPECT_EQ(fs::canonical(u"C:\\s.lnk"), u"C:\\f");
             EXPECT_FAILURE(fs::canonical(u"C:\\x"), not_found(u""));
         }},
        {"weakly_canonical(p)",
         [] {
             simulated_machine machine;
             EXPECT_EQ(fs::weakly_canonical(u"C:\\x\\y"), u"C:\\x\\y");
         }},
        {"relative(p, base)",
         [] {
             simulated_machine machine;
             EXPECT_EQ(fs::relative(u"C:\\a\\b", u"C:\\a\\c"), u"..\\b");
         }},
        {"proximate(p, base)",
         [] {
             simulated_machine machine;
             EXPECT_EQ(fs::relative(u"D:\\a", u"C:\\a"), u"");
         }},
        {"current_path()",
         [] {
             simulated_machine machine;
             static_assert(std::is_same_v<decltype(fs::get_current_path()), std::u16string>);
             EXPECT_EQ(fs::get_current_path(), u"C:\\");
         }},
        {"current_path(p)",
         [] {
             simulated_machine machine;
             machine.add_drive(u'D').add_directory(u"C:\\d");
             fs::change_current_path(u"C:\\d");
             fs::change_current_path(u"D:\\");
             EXPECT_EQ(fs::absolute(u"C:x"), u"C:\\d\\x") << "the drive's own is remembered";
         }},
        {"temp_directory_path()",
         [] {
             simulated_machine machine;
             EXPECT_THROW(static_cast<void>(fs::temp_directory_path()), fs::TempEnvNotSpecified);
             ::SetEnvironmentVariableW(L"USERPROFILE", L"C:\\");
             EXPECT_EQ(fs::temp_directory_path(), u"C:\\"_path);
         }},
    };
}

checks folder_checks()
{
    return {
        {"directory_iterator(p)",
         [] {
             simulated_machine machine;
             machine.add_file(u"C:\\d\\" + std::u16string(255, u'a'));
             machine.add_directory(u"C:\\e").deny(u"C:\\e", simulation::right::list);
             EXPECT_EQ(fs::directory_iterator(u"C:\\d")->filename().size(), 255U);
             EXPECT_TRUE(
                 fs::directory_iterator(u"C:\\e", fs::directory_options::skip_permission_denied) ==
                 fs::directory_iterator());
         }},
        {"recursive_directory_iterator(p)",
         [] {
             simulated_machine machine;
             machine.add_file(u"C:\\d\\e\\f").add_junction(u"C:\\d\\j", u"C:\\d");
             auto const all = fs::recursive_directory_iterator(u"C:\\d");
             EXPECT_EQ(std::distance(begin(all), end(all)), 3) << "links aren't entered";
         }},
        {"directory_entry",
         [] {
             simulated_machine machine;
             machine.add_file(u"C:\\d\\f.");
             fs::directory_entry const entry = *fs::directory_iterator(u"C:\\d");
             EXPECT_EQ(entry.filename(), u"f.");
             EXPECT_FALSE(entry.is_nameable());
             EXPECT_FALSE(entry.is_junction());
             EXPECT_NE(entry.attributes(), 0U);
         }},
        {"entry.status()",
         [] {
             simulated_machine machine;
             machine.add_file(u"C:\\d\\f", "four");
             fs::directory_entry const entry = *fs::directory_iterator(u"C:\\d");
             fs::resize_file(entry, 2);
             EXPECT_EQ(entry.known().get_size(), 4U);
             EXPECT_EQ(entry.status().get_size(), 2U);
         }},
    };
}

checks failure_checks()
{
    return {
        {"f(p, error_code)",
         [] {
             simulated_machine machine;
             auto const size = fs::attempt([] { return fs::file_size(u"C:\\x"); });
             EXPECT_EQ(size.error().path_name(), u"C:\\x");
         }},
        {"filesystem_error",
         [] {
             simulated_machine machine;
             machine.add_file(u"C:\\f");
             EXPECT_FAILURE(fs::rename(u"C:\\f", u"C:\\no\\g"), not_found(u"C:\\no\\g"));
             static_assert(!std::is_base_of_v<standard::filesystem_error, fs::FsysExceptionBase>);
         }},
        {"e.path1()", [] { EXPECT_EQ(fs::PathNotFound(u"p").get_path_name(), u"p"); }},
        {"e.code()",
         [] {
             EXPECT_EQ(fs::PathNotFound(u"p").get_error_code(), 0U);
             EXPECT_EQ(fs::SystemError(32).get_error_code(), 32U);
         }},
        {"std::ifstream(p)",
         [] {
             simulated_machine machine;
             EXPECT_FAILURE(fs::open(u"C:\\x"_path, std::ios::in), not_found(u"C:\\x"));
         }},
        {"`std::filesystem::path` for another library",
         [] {
             simulated_machine machine;
             EXPECT_EQ(fs::from_standard(fs::to_standard(u"a"_path)), u"C:\\a"_path);
         }},
    };
}

TEST(FromStdFilesystemGuide, EveryRowHolds)
{
    checks all;
    for (auto const part :
         {path_checks, asking_checks, changing_checks, place_checks, folder_checks, failure_checks})
        all.merge(part());
    play(page, heading, all);
}

} // namespace
