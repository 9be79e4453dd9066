// The rows of docs/from-boost-filesystem.md: what is said of this library.

#include "guide/page.hpp"

#include <boost/exception_ptr.hpp>

#include <chrono>

namespace {

using namespace guide;
using namespace test_support;
using std::chrono::system_clock;
using std::chrono::time_point_cast;

checks path_rows()
{
    return {
        {"path(L\"C:/dir\")", [] { EXPECT_EQ(fs::upath(L"C:/dir"), fs::upath(u"C:/dir")); }},
        {"path::imbue(locale)", [] { EXPECT_EQ(fs::upath(u"\u00E9").string(), "\xC3\xA9"); }},
        {"p.generic_string()",
         [] { EXPECT_EQ(fs::upath(u"a\\\u00E9").generic_string(), "a/\xC3\xA9"); }},
        {"`p.leaf()`, `p.branch_path()`",
         [] {
             EXPECT_EQ(fs::upath(u"a/b").filename(), u"b");
             EXPECT_EQ(fs::upath(u"a/b").parent(), u"a"_path);
         }},
        {"`basename(p)`, `extension(p)`",
         [] { EXPECT_EQ(fs::upath(u"a.b").stem() + fs::upath(u"a.b").extension(), u"ab"); }},
        {"change_extension(p, x)",
         [] { EXPECT_EQ(fs::upath(u"a.b").replace_extension(u"c"), u"a.c"_path); }},
        {"p.normalize()",
         [] {
             simulated_machine machine;
             EXPECT_EQ(fs::absolute(u"C:\\a\\..\\b"), u"C:\\b");
         }},
        {"p.lexically_relative(q)",
         [] {
             simulated_machine machine;
             EXPECT_EQ(fs::relative(u"C:\\a\\b", u"C:\\a"), u"b");
         }},
        {"unique_path(model)",
         [] {
             simulated_machine machine;
             fs::create_directory(u"C:\\a");
             EXPECT_FAILURE(fs::create_directory(u"C:\\a"), file_exists(u"C:\\a"));
         }},
    };
}

checks disk_rows()
{
    return {
        {"absolute(p, base)",
         [] {
             simulated_machine machine;
             EXPECT_EQ(fs::absolute(u"C:\\a", u"relative"), u"C:\\a");
             EXPECT_EQ(fs::absolute(u"a", u"D:\\b"), u"D:\\b\\a");
         }},
        {"system_complete(p)",
         [] {
             simulated_machine machine;
             EXPECT_EQ(fs::absolute(u"a"), u"C:\\a");
         }},
        {"initial_path()",
         [] {
             simulated_machine machine;
             EXPECT_EQ(fs::get_current_path(), u"C:\\");
         }},
        {"canonical(p, base)",
         [] {
             simulated_machine machine;
             machine.add_file(u"C:\\d\\f").add_shortcut(u"C:\\d\\s.lnk", u"C:\\d\\f");
             EXPECT_EQ(fs::canonical(u"s.lnk", u"C:\\d"), u"C:\\d\\f");
         }},
        {"is_symlink(p)",
         [] {
             simulated_machine machine;
             machine.add_junction(u"C:\\j", u"C:\\").add_symbolic_link(u"C:\\s", u"x");
             for (auto const &p : {u"C:\\j"_path, u"C:\\s"_path})
                 EXPECT_TRUE(fs::is_symlink(p) || fs::is_junction(p));
         }},
        {"status(p).type() == reparse_file",
         [] {
             simulated_machine machine;
             machine.add_junction(u"C:\\j", u"C:\\").add_deduplicated_file(u"C:\\f", "soup");
             EXPECT_TRUE(fs::file_status::is_reparse(fs::symlink_status(u"C:\\j")));
             EXPECT_TRUE(fs::file_status::is_regular(fs::symlink_status(u"C:\\f")));
         }},
        {"read_symlink(p)",
         [] {
             simulated_machine machine;
             machine.add_junction(u"C:\\j", u"C:\\d");
             EXPECT_EQ(fs::read_symlink(u"C:\\j"), u"C:\\d");
         }},
        {"`last_write_time(p)`, a `std::time_t`",
         [] {
             simulated_machine machine;
             machine.add_file(u"C:\\f");
             fs::last_write_time(u"C:\\f", system_clock::from_time_t(1'000'000'000));
             EXPECT_EQ(system_clock::to_time_t(
                           time_point_cast<system_clock::duration>(fs::last_write_time(u"C:\\f"))),
                       1'000'000'000);
         }},
        {"creation_time(p)",
         [] {
             simulated_machine machine;
             machine.add_file(u"C:\\f").set_times(u"C:\\f", {116'444'736'000'000'000, 1, 2});
             EXPECT_EQ(fs::status(u"C:\\f").get_ctime(),
                       boost::posix_time::ptime(boost::gregorian::date(1970, 1, 1)));
         }},
        {"status(p).permissions()",
         [] {
             simulated_machine machine;
             machine.add_file(u"C:\\f").set_attributes(u"C:\\f", FILE_ATTRIBUTE_HIDDEN);
             EXPECT_NE(fs::status(u"C:\\f").get_perms() & fs::file_status::hidden_file, 0U);
         }},
    };
}

checks folder_rows()
{
    return {
        {"copy_option::overwrite_if_exists",
         [] {
             simulated_machine machine;
             machine.add_file(u"C:\\f", "new").add_file(u"C:\\g", "old");
             fs::copy_file(u"C:\\f", u"C:\\g", std::filesystem::copy_options::overwrite_existing);
             EXPECT_EQ(machine.content(u"C:\\g"), "new");
         }},
        {"copy_directory(p, q)",
         [] {
             simulated_machine machine;
             machine.add_file(u"C:\\d\\f").set_attributes(u"C:\\d", FILE_ATTRIBUTE_HIDDEN);
             fs::copy_directory(u"C:\\d", u"C:\\e");
             EXPECT_EQ(machine.entries(u"C:\\e").size(), 0U);
             EXPECT_EQ(machine.attributes(u"C:\\e") & FILE_ATTRIBUTE_HIDDEN, 0U);
         }},
        {"create_directories(p)",
         [] {
             simulated_machine machine;
             EXPECT_TRUE(fs::ensure_directories(u"C:\\a\\b"));
             EXPECT_FALSE(fs::ensure_directories(u"C:\\a\\b"));
         }},
        {"remove_all(p)",
         [] {
             simulated_machine machine;
             machine.add_file(u"C:\\a\\b");
             EXPECT_EQ(fs::remove_all(u"C:\\a", fs::removal_options()).removed(), 2U);
         }},
        {"symlink_option::recurse",
         [] {
             simulated_machine machine;
             machine.add_symbolic_link(u"C:\\d\\broken", u"x")
                 .add_junction(u"C:\\d\\loop", u"C:\\d");
             auto const walk = [] {
                 for (auto const &entry : fs::recursive_directory_iterator(
                          u"C:\\d", fs::directory_options::follow_directory_symlink))
                     EXPECT_NE(entry.path(), u"");
             };
             EXPECT_FAILURE(walk(), system_error(8246, u"C:\\d\\loop"));
         }},
        {"directory_options::pop_on_error",
         [] {
             simulated_machine machine;
             machine.add_directory(u"C:\\d\\e").deny(u"C:\\d\\e", simulation::right::list);
             auto it = fs::recursive_directory_iterator(u"C:\\d");
             EXPECT_FAILURE(++it, denied(u"C:\\d\\e"));
             EXPECT_TRUE(it == fs::recursive_directory_iterator());
         }},
        {"`it.level()`, `it.no_push()`",
         [] {
             simulated_machine machine;
             machine.add_file(u"C:\\d\\e\\f");
             auto it = fs::recursive_directory_iterator(u"C:\\d");
             EXPECT_EQ(it.depth(), 0);
             it.disable_recursion_pending();
             EXPECT_TRUE(++it == fs::recursive_directory_iterator());
         }},
        {"load_string_file(p, s)",
         [] {
             simulated_machine machine;
             EXPECT_FAILURE(fs::open(u"C:\\x"_path, std::ios::in), not_found(u"C:\\x"));
         }},
        {"boost::filesystem::ifstream(p)",
         [] {
             simulated_machine machine;
             EXPECT_EQ(fs::to_standard(fs::upath(u"C:\\" + std::u16string(300, u'a'))).u16string(),
                       u"\\\\?\\C:\\" + std::u16string(300, u'a'));
         }},
    };
}

checks failure_rows()
{
    return {
        {"f(p, error_code)",
         [] {
             simulated_machine machine;
             EXPECT_FALSE(fs::attempt([] { return fs::file_size(u"C:\\x"); }));
         }},
        {"filesystem_error",
         [] {
             simulated_machine machine;
             machine.add_file(u"C:\\f");
             EXPECT_FAILURE(fs::rename(u"C:\\f", u"C:\\no\\g"), not_found(u"C:\\no\\g"));
         }},
        {"boost::current_exception()",
         [] {
             boost::exception_ptr caught;
             try {
                 fs::throw_last_error(32, u"p", u"q"); // as operations throw
             } catch (...) {
                 caught = boost::current_exception();
             }
             EXPECT_FAILURE(boost::rethrow_exception(caught), system_error(32, u"p", u"q"));
         }},
    };
}

TEST(FromBoostFilesystemGuide, EveryRowHolds)
{
    checks all;
    for (auto const part : {path_rows, disk_rows, folder_rows, failure_rows})
        all.merge(part());
    play("docs/from-boost-filesystem.md", "| Boost | here | remark |", all);
}

} // namespace
