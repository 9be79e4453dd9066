// The rest of the standard's list, on every system.

#include <fl/filesystem/queries.hpp>

#include <fl/filesystem/operations.hpp>

#include "support/in_workspace.hpp"

#include <windows.h>

#include <boost/date_time/posix_time/posix_time_types.hpp>

#include <type_traits>

namespace fl::filesystem::tests {
namespace {

/// What each question says of a name: file, directory, link, junction, other.
std::string answers(std::u16string const &p)
{
    std::string told;
    for (bool const answer :
         {is_regular_file(p), is_directory(p), is_symlink(p), is_junction(p), is_other(p)})
        told += answer ? 'y' : '-';
    std::string of_path;
    upath const path = p;
    for (bool const answer : {is_regular_file(path), is_directory(path), is_symlink(path),
                              is_junction(path), is_other(path)})
        of_path += answer ? 'y' : '-';
    EXPECT_EQ(of_path, told);
    return told;
}

TEST_IN_WORKSPACE(Queries, OneQuestionOneAnswer)
{
    make({u"file", u"directory\\"});
    EXPECT_EQ(answers(at(u"file")), "y----");
    EXPECT_EQ(answers(at(u"directory")), "-y---");
    EXPECT_EQ(answers(at(u"no")), "-----");
    EXPECT_EQ(answers(at(uR"(no\no)")), "-----");
    EXPECT_EQ(answers(u""), "-----");
    if (work.has_symbolic_links()) {
        work.make_symbolic_link(at(u"link"), u"file");
        work.make_symbolic_link(at(u"directory link"), u"directory", link_to::directory);
        work.make_symbolic_link(at(u"broken"), u"no");
        EXPECT_EQ(answers(at(u"link")), "y-y--");
        EXPECT_EQ(answers(at(u"directory link")), "-yy--");
        EXPECT_EQ(answers(at(u"broken")), "--y--");
    }
    if (work.has_junctions()) {
        work.make_junction(at(u"junction"), at(u"directory"));
        EXPECT_EQ(answers(at(u"junction")), "-y-y-");
    }
}

TEST_IN_WORKSPACE(Queries, EmptinessIsOfContentOrEntries)
{
    make({{u"file", "x"}, u"empty file", u"empty\\"});
    EXPECT_FALSE(is_empty(at(u"file")));
    EXPECT_TRUE(is_empty(upath(at(u"empty file"))));
    EXPECT_TRUE(is_empty(at(u"empty")));
    EXPECT_FALSE(is_empty(work.root()));
    EXPECT_FAILURE(is_empty(at(u"no")), not_found(at(u"no")));
}

TEST_IN_WORKSPACE(FileSize, IsInBytesAndOfFilesOnly)
{
    make({{u"file", "some text"}, u"directory\\"});
    EXPECT_EQ(file_size(at(u"file")), 9U);
    EXPECT_EQ(file_size(upath(u"file")), 9U);
    EXPECT_FAILURE(file_size(u"directory"), file_is_directory(u"directory"));
    EXPECT_FAILURE(file_size(u"./no"), not_found(uR"(.\no)"));
    EXPECT_FAILURE(file_size(u""), empty_path());
    if (!work.has_symbolic_links())
        return;
    work.make_symbolic_link(at(u"link"), u"file");
    work.make_symbolic_link(at(u"broken"), u"no");
    EXPECT_EQ(file_size(u"link"), 9U);
    EXPECT_FAILURE(file_size(u"broken"), not_found(u"broken"));
}

TEST_IN_WORKSPACE(Queries, ReachPathnamesOfAnyLength)
{
    std::u16string const name = chain_of_size(work.root(), 450);
    work.make_file(name, "1234");
    EXPECT_EQ(file_size(name), 4U);
    EXPECT_EQ(hard_link_count(name), 1U);
    resize_file(name, 2);
    EXPECT_EQ(work.content(name), "12");
    file_time_type const time(std::chrono::seconds(1'000'000'000));
    last_write_time(name, time);
    EXPECT_EQ(last_write_time(name), time);
    create_hard_link(name, name + u"2");
    EXPECT_EQ(hard_link_count(name), 2U);
    std::u16string const directory = name + u"3";
    EXPECT_TRUE(ensure_directories(directory + uR"(\x)"));
    EXPECT_FALSE(ensure_directories(directory + uR"(\x)"));
    EXPECT_FALSE(is_empty(directory));
    create_directory(directory + u"4", directory);
    EXPECT_TRUE(is_empty(directory + u"4"));
}

TEST_IN_WORKSPACE(Queries, ReachShares)
{
    NEEDS(work.has_share(), "there is no share");
    std::u16string const name = work.share_root() + uR"(\file)";
    work.make_file(name, "1234");
    EXPECT_EQ(file_size(name), 4U);
    resize_file(name, 6);
    EXPECT_EQ(file_size(name), 6U);
    EXPECT_TRUE(ensure_directories(work.share_root() + uR"(\a\b)"));
    EXPECT_TRUE(is_directory(work.share_root() + uR"(\a)"));
}

TEST_IN_WORKSPACE(LastWriteTime, IsReadAndSet)
{
    std::u16string const file = make_file(u"file");
    file_time_type const now = last_write_time(file);
    EXPECT_EQ(to_ptime(now), status(file).get_mtime());
    file_time_type const past(std::chrono::seconds(946'684'800)); // the start of 2000
    last_write_time(file, past);
    EXPECT_EQ(last_write_time(upath(file)), past);
    EXPECT_EQ(to_file_time(status(file).get_mtime()), past);
    EXPECT_EQ(to_ptime(past), boost::posix_time::ptime(boost::gregorian::date(2000, 1, 1)));
    last_write_time(upath(file), to_file_time(to_ptime(past) + boost::posix_time::seconds(2)));
    EXPECT_EQ(last_write_time(file), past + std::chrono::seconds(2));
    last_write_time(file, std::chrono::time_point_cast<std::chrono::nanoseconds>(past) +
                              std::chrono::nanoseconds(199));
    EXPECT_EQ(last_write_time(file), past + file_time_type::duration(1)) << "cut";
    last_write_time(upath(file), std::chrono::time_point_cast<std::chrono::nanoseconds>(past) -
                                     std::chrono::nanoseconds(1));
    EXPECT_EQ(last_write_time(file), past - file_time_type::duration(1)) << "no time moves forward";
    last_write_time(work.root(), past);
    EXPECT_EQ(last_write_time(work.root()), past) << "a directory has one, too";
    EXPECT_FAILURE(last_write_time(at(u"no"), past), not_found(at(u"no")));
    EXPECT_FAILURE(last_write_time(u"", past), empty_path());
}

TEST_IN_WORKSPACE(LastWriteTime, RefusesWhatNoDiskKeeps)
{
    std::u16string const file = make_file(u"file");
    file_time_type const kept = last_write_time(file);
    constexpr std::int64_t start_of_1601 = -116'444'736'000'000'000;
    for (std::int64_t const ticks :
         {start_of_1601, start_of_1601 - 1, INT64_MIN, INT64_MAX, INT64_MAX + start_of_1601 + 1}) {
        EXPECT_FAILURE(last_write_time(file, file_time_type(file_time_type::duration(ticks))),
                       invalid_argument("Time not valid"))
            << ticks;
    }
    EXPECT_EQ(last_write_time(file), kept);
}

TEST_IN_WORKSPACE(ResizeFile, CutsAndAddsZeros)
{
    std::u16string const file = make_file(u"file", "some text");
    resize_file(file, 4);
    EXPECT_EQ(work.content(file), "some");
    resize_file(upath(file), 6);
    EXPECT_EQ(work.content(file), std::string("some\0\0", 6));
    resize_file(file, 0);
    EXPECT_TRUE(is_empty(file));
    EXPECT_FAILURE(resize_file(at(u"no"), 0), not_found(at(u"no")));
    EXPECT_FALSE(work.exists(at(u"no")));
    EXPECT_FAILURE(resize_file(work.root(), 0), file_is_directory(work.root()));
    EXPECT_FAILURE(resize_file(u"", 0), empty_path());
}

TEST_IN_WORKSPACE(CreateHardLink, GivesAFileOneMoreName)
{
    make({{u"file", "text"}, u"directory\\"});
    create_hard_link(at(u"file"), at(u"name"));
    create_hard_link(upath(at(u"file")), upath(at(u"name 2")));
    EXPECT_EQ(hard_link_count(at(u"name")), 3U);
    create_hard_link(upath(at(u"file")), u"name 3");
    EXPECT_EQ(hard_link_count(u"name 3"), 4U);
    EXPECT_TRUE(equivalent(at(u"file"), at(u"name")));
    EXPECT_EQ(hard_link_count(at(u"directory")), 1U);
    EXPECT_FAILURE(create_hard_link(at(u"no"), at(u"x")), not_found(at(u"no")));
    EXPECT_FAILURE(create_hard_link(at(u"file"), at(u"name")), file_exists(at(u"name")));
    EXPECT_FAILURE(create_hard_link(at(u"file"), at(uR"(no\x)")), not_found(at(uR"(no\x)")));
    EXPECT_FAILURE(create_hard_link(at(u"directory"), at(u"x")), denied(at(u"x")));
    EXPECT_FAILURE(create_hard_link(u"", u"x"), empty_path());
    EXPECT_FAILURE(create_hard_link(u"x", u""), empty_path());
}

TEST_IN_WORKSPACE(CreateDirectorySymlink, IsToADirectoryWhetherItIsThereOrNot)
{
    NEEDS(work.has_symbolic_links(), "there are no links");
    make_directory(u"directory");
    create_directory_symlink(u"directory", at(u"a"));
    create_directory_symlink(upath(u"later"), upath(at(u"b")));
    EXPECT_TRUE(is_directory(at(u"a")));
    EXPECT_FALSE(is_directory(at(u"b")));
    make_directory(u"later");
    EXPECT_TRUE(is_directory(at(u"b")));
}

TEST_IN_WORKSPACE(CreateJunction, LeadsToADirectory)
{
    NEEDS(work.has_junctions(), "there are no junctions");
    make_file(uR"(directory\file)");
    create_junction(at(u"directory"), at(u"absolute"));
    create_junction(upath(u"directory"), upath(u"relative"));
    create_junction(uR"(\\?\)" + at(u"directory"), at(u"prefixed"));
    for (char16_t const *name : {u"absolute", u"relative", u"prefixed"}) {
        EXPECT_TRUE(is_junction(name));
        EXPECT_EQ(read_symlink(name), at(u"directory"));
        EXPECT_TRUE(exists(std::u16string(name) + uR"(\file)"));
    }
    create_junction(u"later", u"broken");
    EXPECT_TRUE(is_junction(u"broken")) << "whether it leads anywhere isn't asked";
}

TEST_IN_WORKSPACE(CreateJunction, LeavesNothingBehindWhereItCant)
{
    make({u"file", u"directory\\"});
    EXPECT_FAILURE(create_junction(work.root(), at(u"file")), file_exists(at(u"file")));
    EXPECT_FAILURE(create_junction(work.root(), at(u"directory")), file_exists(at(u"directory")));
    EXPECT_FAILURE(create_junction(work.root(), at(uR"(no\x)")), not_found(at(uR"(no\x)")));
    EXPECT_FAILURE(create_junction(uR"(\\server\share\x)", at(u"x")),
                   bad_path_type(uR"(\\server\share\x)"));
    EXPECT_FAILURE(create_junction(u"", at(u"x")), empty_path());
    EXPECT_FAILURE(create_junction(work.root(), u""), empty_path());
    std::u16string const too_long = u"C:\\" + std::u16string(5000, u'n');
    EXPECT_FAILURE(create_junction(too_long, at(u"x")), too_large(too_long));
    EXPECT_FALSE(work.exists(at(u"x")));
}

TEST_IN_WORKSPACE(ReadShortcut, TellsTheTargetAsItIsStored)
{
    make_file(u"file");
    work.make_shortcut(at(u"s.lnk"), at(u"file"));
    EXPECT_EQ(read_shortcut(at(u"s.lnk")), at(u"file"));
    EXPECT_EQ(read_shortcut(upath(u"s.lnk")).native(), at(u"file"));
    auto const no_shortcut = invalid_argument("Shortcut path input must have .lnk file extension");
    EXPECT_FAILURE(read_shortcut(u"file"), no_shortcut);
    EXPECT_FAILURE(read_shortcut(u""), no_shortcut);
    EXPECT_FAILURE(read_shortcut(u"no.lnk"), not_found(u"no.lnk"));
}

/// A variable of the process, put back when this goes.
class changed_variable
{
public:
    changed_variable(wchar_t const *name, std::u16string const &value) : name_(name)
    {
        std::wstring former(1000, L'\0');
        former.resize(::GetEnvironmentVariableW(name, former.data(), 1000));
        former_ = former;
        ::SetEnvironmentVariableW(name, wide(value).c_str());
    }
    ~changed_variable()
    {
        ::SetEnvironmentVariableW(name_, former_.empty() ? nullptr : former_.c_str());
    }
    changed_variable(changed_variable const &) = delete;
    changed_variable &operator=(changed_variable const &) = delete;

private:
    wchar_t const *name_;
    std::wstring former_;
};

TEST_IN_WORKSPACE(TempDirectoryPath, IsADirectory)
{
    changed_variable const folder(L"TMP", work.root() + u"\\");
    EXPECT_EQ(temp_directory_path().native(), work.root());
}

TEST_IN_WORKSPACE(EnsureDirectories, SaysWhetherItMadeThem)
{
    EXPECT_TRUE(ensure_directories(at(uR"(a\b\c)")));
    EXPECT_FALSE(ensure_directories(upath(at(uR"(a\b\c)"))));
    EXPECT_FALSE(ensure_directories(work.root()));
    EXPECT_FALSE(ensure_directories(work.root().substr(0, 3))) << "a root";
    make_file(u"file");
    EXPECT_FAILURE(ensure_directories(at(u"file")), file_exists(at(u"file")));
    EXPECT_FAILURE(ensure_directories(u""), empty_path());
    if (work.has_junctions()) {
        work.make_junction(at(u"junction"), at(u"a"));
        EXPECT_FALSE(ensure_directories(at(u"junction")));
    }
}

TEST_IN_WORKSPACE(CreateDirectoryLikeAnother, TakesOverItsAttributes)
{
    constexpr std::uint32_t hidden = 2;
    constexpr std::uint32_t directory = 0x10;
    make_directory(u"model");
    work.set_attributes(at(u"model"), hidden);
    create_directory(at(u"like"), at(u"model"));
    EXPECT_EQ(work.attributes(at(u"like")), hidden | directory);
    create_directory(upath(at(u"plain")), upath(work.root()));
    EXPECT_EQ(work.attributes(at(u"plain")), directory);
    make_file(u"file");
    EXPECT_FAILURE(create_directory(at(u"x"), at(u"file")), not_directory(at(u"file")));
    EXPECT_FAILURE(create_directory(at(u"x"), at(u"no")), not_found(at(u"no")));
    EXPECT_FAILURE(create_directory(upath(), upath(at(u"no"))), empty_path());
    EXPECT_FAILURE(create_directory(upath(at(u"x")), upath()), empty_path());
    EXPECT_FAILURE(create_directory(at(u"like"), at(u"model")), file_exists(at(u"like")));
    EXPECT_FAILURE(create_directory(at(u"x"), u""), empty_path());
    EXPECT_FALSE(work.exists(at(u"x")));
}

TEST(MixedArguments, APathAndALiteralDoWhatTwoPathsDo)
{
    workspace work;
    work.make_file(work.path(u"file"), "content");
    work.change_directory(work.root());
    upath const file(work.path(u"file"));
    EXPECT_EQ(absolute(upath(u"file"), work.root().c_str()), file);
    EXPECT_EQ(canonical(upath(u"file"), work.root().c_str()), canonical(file));
    EXPECT_EQ(relative(file, work.root().c_str()), upath(u"file"));
    EXPECT_TRUE(equivalent(file, u"file"));
    EXPECT_EQ(space(u".").capacity, space(upath(u".")).capacity);
    EXPECT_EQ(status_express_light(file).get_size(), 7U);
    copy(file, u"copied");
    rename(upath(u"copied"), u"renamed");
    create_directory(upath(u"directory"), u".");
    EXPECT_EQ(work.entries(work.root()), (names{u"directory", u"file", u"renamed"}));
    EXPECT_EQ(work.content(work.path(u"renamed")), "content");
    if (work.has_junctions()) {
        create_junction(upath(u"directory"), u"junction");
        EXPECT_EQ(read_symlink(u"junction"), work.path(u"directory"));
    }
    if (work.has_symbolic_links()) {
        create_directory_symlink(upath(u"directory"), u"link");
        EXPECT_EQ(read_symlink(u"link"), u"directory");
    }
}

// What is called with one argument means what it meant.
static_assert(std::is_same_v<decltype(create_directory(u"x")), void>);
static_assert(std::is_same_v<decltype(create_directory(upath())), void>);

} // namespace
} // namespace fl::filesystem::tests
