#include "flfs/status_text.hpp"
#include "tools/run_flfs.hpp"

#include <fl/filesystem/operations.hpp>

#include <string>

namespace {

using namespace test_support;
namespace fs = fl::filesystem;
using fs::file_status;

struct word_case
{
    char const *text;
    std::optional<unsigned int> word;
    char const *why;
};

constexpr word_case word_cases[] = {
    {"+w", 0x10000 | 0222, "set"},
    {"-w", 0x20000 | 0222, "take away"},
    {"=rw", 0666, "all others away"},
    {"=", 0, "everything away"},
    {"+a", 0x11000, "archive"},
    {"+s", 0x12000, "system"},
    {"+h", 0x14000, "hidden"},
    {"+i", 0x18000, "not indexed"},
    {"-ah", 0x25000, "two of them"},
    {"=rwxashi", 0xF1FF, "all letters, which is not all bits"},
    {"+ww", 0x10000 | 0222, "a letter twice"},
    {"+", std::nullopt, "says nothing"},
    {"-", std::nullopt, "says nothing"},
    {"", std::nullopt, "the empty word"},
    {"w", std::nullopt, "no sign"},
    {"+W", std::nullopt, "a capital"},
    {"+w-h", std::nullopt, "two signs"},
    {"+wz", std::nullopt, "no letter of ours"},
    {"0644", std::nullopt, "numbers aren't taken"},
};

TEST(FlfsChmod, Words)
{
    for (word_case const &row : word_cases)
        EXPECT_EQ(flfs::permission_word(row.text), row.word) << row.text << ": " << row.why;
}

TEST(FlfsChmod, ReadOnlyAndBack)
{
    workspace work;
    std::u16string const file = work.path(u"a.txt");
    std::string const name = fl::filesystem::to_utf8(file);
    work.make_file(file);
    for (char const *word : {"-w", "+w", "=", "=rw"}) {
        flfs_result const result = run_flfs_on_disk({"chmod", word, name});
        EXPECT_EQ(result.exit_code, 0) << word << result.err;
        EXPECT_EQ(result.out, "changed " + name + "\n") << word;
        EXPECT_EQ(result.err, "") << word;
        bool const is_writable = word[1] == 'w' ? word[0] == '+' : word[1] == 'r';
        unsigned int const expected = is_writable ? 0666 : 0444;
        EXPECT_EQ(fs::status(file).get_perms() & file_status::perms_all, expected) << word;
    }
}

TEST(FlfsChmod, AFailureDoesNotStopIt)
{
    workspace work;
    std::string const missing = fl::filesystem::to_utf8(work.path(u"no"));
    std::string const file = fl::filesystem::to_utf8(work.path(u"a.txt"));
    work.make_file(work.path(u"a.txt"));
    EXPECT_EQ(
        run_flfs_on_disk({"chmod", "+w", missing, "", file}),
        (flfs_result{1, "changed " + file + "\n", told_of_missing_and_empty("pathname", missing)}));
}

#if FLFS_SYSTEM_IS_SIMULATED

using simulation::simulated_machine;

struct attribute_case
{
    std::vector<std::string> words;
    DWORD before;
    DWORD after;
    char const *why;
};

constexpr DWORD read_only = FILE_ATTRIBUTE_READONLY;
constexpr DWORD archive = FILE_ATTRIBUTE_ARCHIVE;
constexpr DWORD system_attribute = FILE_ATTRIBUTE_SYSTEM;
constexpr DWORD hidden = FILE_ATTRIBUTE_HIDDEN;
constexpr DWORD not_indexed = FILE_ATTRIBUTE_NOT_CONTENT_INDEXED;
constexpr DWORD normal = FILE_ATTRIBUTE_NORMAL;

attribute_case const attribute_cases[] = {
    {{"+ash"}, read_only, read_only | archive | system_attribute | hidden, "set, others stay"},
    {{"+i"}, archive, archive | not_indexed, "not indexed"},
    {{"-h"}, hidden | archive, archive, "a word, and not the help"},
    {{"-wa"}, archive, read_only, "-w is read-only, -a takes away"},
    {{"=wh"}, read_only | archive, hidden, "all others away"},
    {{"="}, archive | hidden, read_only, "everything away"},
    {{"-r"}, archive, archive, "no such attribute"},
    {{"+x"}, archive, archive, "no such attribute"},
    {{"--links", "-a"}, archive, normal, "an option ahead of the word"},
    {{"--", "-a"}, archive, normal, "behind the double hyphen"},
};

TEST(FlfsChmod, Attributes)
{
    for (attribute_case const &row : attribute_cases) {
        simulated_machine machine;
        machine.add_file(u"C:\\a.txt").set_attributes(u"C:\\a.txt", row.before);
        std::vector<std::string> arguments = {"chmod"};
        arguments.insert(arguments.end(), row.words.begin(), row.words.end());
        arguments.push_back("C:\\a.txt");
        flfs_result const result = run_flfs_on_disk(arguments);
        EXPECT_EQ(result.exit_code, 0) << row.why << "\n" << result.err;
        EXPECT_EQ(result.out, "changed C:\\a.txt\n") << row.why;
        EXPECT_EQ(machine.attributes(u"C:\\a.txt"), row.after) << row.why;
    }
}

TEST(FlfsChmod, ALinkOrWhatItLeadsTo)
{
    simulated_machine machine;
    machine.add_file(u"C:\\a.txt").add_symbolic_link(u"C:\\link", u"a.txt");
    run_flfs_on_disk({"chmod", "+h", "C:\\link"});
    EXPECT_NE(machine.attributes(u"C:\\a.txt") & hidden, 0u);
    EXPECT_EQ(machine.attributes(u"C:\\link") & hidden, 0u);
    run_flfs_on_disk({"chmod", "--links", "+s", "C:\\link"});
    EXPECT_EQ(machine.attributes(u"C:\\a.txt") & system_attribute, 0u);
    EXPECT_NE(machine.attributes(u"C:\\link") & system_attribute, 0u);
}

TEST(FlfsChmod, Denied)
{
    simulated_machine machine;
    machine.add_file(u"C:\\a.txt").deny(u"C:\\a.txt", simulation::right::write);
    EXPECT_EQ(
        run_flfs_on_disk({"chmod", "-w", "C:\\a.txt"}),
        refused(1, report_of("AccessDenied", "pathname", {"C:\\a.txt"},
                             "You have no right to change its attributes. Ask who owns it.")));
}

#endif

} // namespace
