#include <fl/filesystem/file_status.hpp>

#include <boost/date_time/posix_time/posix_time_duration.hpp>

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <type_traits>

namespace fl::filesystem {
namespace {

using boost::gregorian::date;
using boost::posix_time::ptime;
using boost::posix_time::time_duration;

/// What code that knows the layout sees of a record.
struct full_layout
{
    std::uint32_t std_type, std_perms, type, perms;
    ptime atime, mtime, ctime;
    std::uint64_t size;
};

struct light_layout
{
    std::uint32_t std_type, std_perms, type;
    ptime mtime;
    std::uint64_t size;
};

full_layout fields(file_status const &status)
{
    static_assert(sizeof(full_layout) == sizeof(file_status));
    full_layout seen;
    std::memcpy(static_cast<void *>(&seen), &status, sizeof seen);
    return seen;
}

light_layout fields(file_status_light const &status)
{
    static_assert(sizeof(light_layout) == sizeof(file_status_light));
    light_layout seen;
    std::memcpy(static_cast<void *>(&seen), &status, sizeof seen);
    return seen;
}

ptime hour(int number)
{
    return ptime(date(2024, 2, 29), time_duration(number, 0, 0));
}

struct constant_case
{
    char const *name;
    unsigned int const *constant;
    unsigned int expected;
};

#define FL_TEST_CONSTANT(name) #name, &file_status::name

// Taken by address: the constants are data of the library, not only of its header.
constant_case const constant_cases[] = {
    {FL_TEST_CONSTANT(file_not_found), 0xFFFF0000},
    {FL_TEST_CONSTANT(file_type_unknown), 0},
    {FL_TEST_CONSTANT(file_type_auto), 1},
    {FL_TEST_CONSTANT(fifo_file), 0x1000},
    {FL_TEST_CONSTANT(character_file), 0x2000},
    {FL_TEST_CONSTANT(directory_file), 0x4000},
    {FL_TEST_CONSTANT(block_file), 0x6000},
    {FL_TEST_CONSTANT(regular_file), 0x8000},
    {FL_TEST_CONSTANT(symlink_file), 0xA000},
    {FL_TEST_CONSTANT(socket_file), 0xC000},
    {FL_TEST_CONSTANT(reparse_file), 0xE000},
    {FL_TEST_CONSTANT(file_type_mask), 0xF000},
    {FL_TEST_CONSTANT(no_perms), 0},
    {FL_TEST_CONSTANT(owner_read), 0x100},
    {FL_TEST_CONSTANT(owner_write), 0x80},
    {FL_TEST_CONSTANT(owner_exec), 0x40},
    {FL_TEST_CONSTANT(owner_all), 0x1C0},
    {FL_TEST_CONSTANT(group_read), 0x20},
    {FL_TEST_CONSTANT(group_write), 0x10},
    {FL_TEST_CONSTANT(group_exec), 0x8},
    {FL_TEST_CONSTANT(group_all), 0x38},
    {FL_TEST_CONSTANT(others_read), 0x4},
    {FL_TEST_CONSTANT(others_write), 0x2},
    {FL_TEST_CONSTANT(others_exec), 0x1},
    {FL_TEST_CONSTANT(others_all), 0x7},
    {FL_TEST_CONSTANT(perms_all), 0x1FF},
    {FL_TEST_CONSTANT(sticky_bit), 0x200},
    {FL_TEST_CONSTANT(set_gid_on_exec), 0x400},
    {FL_TEST_CONSTANT(set_uid_on_exec), 0x800},
    {FL_TEST_CONSTANT(archive_file), 0x1000},
    {FL_TEST_CONSTANT(system_file), 0x2000},
    {FL_TEST_CONSTANT(hidden_file), 0x4000},
    {FL_TEST_CONSTANT(non_indexed_file), 0x8000},
    {FL_TEST_CONSTANT(perms_mask), 0xFFFF},
    {FL_TEST_CONSTANT(perms_unknown), 0xFFFF},
    {FL_TEST_CONSTANT(perms_add), 0x10000},
    {FL_TEST_CONSTANT(perms_remove), 0x20000},
    {FL_TEST_CONSTANT(perms_symlink), 0x40000},
};

TEST(FileStatus, Constants)
{
    for (auto const &row : constant_cases)
        EXPECT_EQ(*row.constant, row.expected) << row.name;
}

TEST(FileStatus, ConstantsServeAsConstants)
{
    static_assert(file_status::perms_mask == 0xFFFF);
    switch (file_status(file_status::socket_file).get_type()) {
    case file_status::socket_file:
        break;
    default:
        FAIL() << "a case label of its own value";
    }
    static_assert(std::is_same_v<decltype(file_status::regular_file), unsigned int const>);
}

struct type_case
{
    unsigned int type;
    std::uint32_t std_type;
    bool exists;
    char const *predicates; // all that hold but `exists`
    char const *why;
};

constexpr type_case type_cases[] = {
    {0xFFFF0000, 1, false, "", "not found"},
    {0xFFFF8000, 1, false, "", "not found comes before the type in the lower half"},
    {0xFFFF0001, 1, false, "", "not found with a lower half that names no type"},
    {0xFFFFFFFF, 1, false, "", "not found with all bits"},
    {0xFFFFE000, 1, false, " reparse", "the mask sees the lower half alone"},
    {0x8000, 2, true, " regular", "a file"},
    {0x4000, 3, true, " directory", "a directory"},
    {0xA000, 4, true, " symlink", "a symbolic link"},
    {0x6000, 5, true, " block", "a block device"},
    {0x2000, 6, true, " character", "a character device"},
    {0x1000, 7, true, " fifo", "a FIFO"},
    {0xC000, 8, true, " socket", "a socket"},
    {0x81FF, 2, true, " regular", "bits below the mask don't matter"},
    {0x8000 | 0x10000, 2, true, " regular", "nor do those above it"},
    {0xFFFE4000, 3, true, " directory", "an upper half one bit short of not found"},
    {0x7FFF4000, 3, true, " directory", "another one"},
    {0xE000, 9, true, " reparse", "a reparse point has no standard type"},
    {0xE001, 9, true, " reparse", "a reparse point with bits below the mask"},
    {0, 9, true, " unknown", "unknown, and yet it is there"},
    {1, 9, true, "", "to be found out: the word isn't zero"},
    {0x10000, 9, true, "", "nothing under the mask, but not zero"},
    {0x3000, 9, true, "", "not in use"},
    {0x5000, 9, true, "", "not in use"},
    {0xF000, 9, true, "", "the mask names no type"},
};

template <typename Record>
std::string predicates(Record const &status)
{
    std::string holding;
    holding += Record::is_regular(status) ? " regular" : "";
    holding += Record::is_directory(status) ? " directory" : "";
    holding += Record::is_symlink(status) ? " symlink" : "";
    holding += Record::is_block(status) ? " block" : "";
    holding += Record::is_character(status) ? " character" : "";
    holding += Record::is_fifo(status) ? " fifo" : "";
    holding += Record::is_socket(status) ? " socket" : "";
    holding += Record::is_reparse(status) ? " reparse" : "";
    holding += Record::is_unknown_file_type(status) ? " unknown" : "";
    return holding;
}

template <typename Record>
void expect_type(Record const &status, type_case const &row)
{
    EXPECT_EQ(status.get_type(), row.type) << row.why;
    EXPECT_EQ(fields(status).type, row.type) << row.why;
    EXPECT_EQ(fields(status).std_type, row.std_type) << row.why;
    EXPECT_EQ(Record::exists(status), row.exists) << row.why;
    EXPECT_EQ(predicates(status), row.predicates) << row.why;
}

TEST(FileStatus, Types)
{
    for (auto const &row : type_cases)
        expect_type(file_status(row.type), row);
}

TEST(FileStatusLight, Types)
{
    for (auto const &row : type_cases)
        expect_type(file_status_light(row.type), row);
}

/// As they were given, each at its own hour.
void expect_times_and_size(full_layout const &seen)
{
    EXPECT_TRUE(seen.atime == hour(1) && seen.mtime == hour(2) && seen.ctime == hour(3));
    EXPECT_EQ(seen.size, 4U);
}

TEST(FileStatus, SetTypeDerivesTheStandardOne)
{
    file_status status(file_status::directory_file, 0755, hour(1), hour(2), hour(3), 4);
    for (auto const &row : type_cases) {
        status.set_type(row.type);
        expect_type(status, row);
    }
    full_layout const seen = fields(status);
    EXPECT_EQ(seen.std_perms, 0755U) << "no other field";
    EXPECT_EQ(seen.perms, 0755U);
    expect_times_and_size(seen);
}

TEST(FileStatus, StandardTypeOfEveryLowerHalf)
{
    std::uint32_t const by_highest_digit[] = {9, 7, 6, 9, 3, 9, 5, 9, 2, 9, 4, 9, 8, 9, 9, 9};
    for (unsigned int type = 0; type <= 0xFFFF; ++type)
        ASSERT_EQ(fields(file_status(type)).std_type, by_highest_digit[type >> 12]) << type;
}

struct perms_case
{
    unsigned int perms;
    std::uint32_t std_perms;
    char const *why;
};

constexpr perms_case perms_cases[] = {
    {0, 0, "none"},
    {0777, 0777, "all of them"},
    {0xFFFF, 0xFFFF, "unknown stays unknown"},
    {0xFFFE, 0xFFE, "one bit short of unknown"},
    {0x1FFFF, 0xFFF, "one bit more than unknown"},
    {0x11B6, 0x1B6, "archive flag and 0666: the flag doesn't reach the pair"},
    {0xF000 | 0444, 0444, "all four flags"},
    {0x800, 0x800, "set user identity reaches it"},
    {0x400, 0x400, "set group identity reaches it"},
    {0x200, 0x200, "the sticky bit reaches it"},
    {0xFFF, 0xFFF, "everything that reaches it"},
    {0x1000, 0, "a flag alone"},
    {0x70000 | 0222, 0222, "modifiers don't reach it"},
    {0xFFFFFFFF, 0xFFF, "all bits are not what says unknown"},
};

void expect_perms(file_status const &status, perms_case const &row)
{
    EXPECT_EQ(status.get_perms(), row.perms) << row.why;
    EXPECT_EQ(fields(status).perms, row.perms) << row.why;
    EXPECT_EQ(fields(status).std_perms, row.std_perms) << row.why;
}

TEST(FileStatus, Permissions)
{
    file_status changed(file_status::regular_file, 0644, hour(1), hour(2), hour(3), 4);
    for (auto const &row : perms_cases) {
        file_status const made(file_status::regular_file, row.perms);
        changed.set_perms(row.perms);
        expect_perms(made, row);
        expect_perms(changed, row);
    }
    full_layout const seen = fields(changed);
    EXPECT_EQ(seen.std_type, 2U) << "no other field";
    EXPECT_EQ(seen.type, 0x8000U);
    expect_times_and_size(seen);
}

TEST(FileStatus, ArgumentsAndFieldsInOrder)
{
    file_status const status(0x8000, 0x11B6, hour(1), hour(2), hour(3), 0x123456789ABCDEF0);
    full_layout const seen = fields(status);
    EXPECT_EQ(seen.std_type, 2U);
    EXPECT_EQ(seen.std_perms, 0x1B6U);
    EXPECT_EQ(seen.type, 0x8000U);
    EXPECT_EQ(seen.perms, 0x11B6U);
    EXPECT_TRUE(seen.atime == hour(1) && status.get_atime() == hour(1)) << "access";
    EXPECT_TRUE(seen.mtime == hour(2) && status.get_mtime() == hour(2)) << "write";
    EXPECT_TRUE(seen.ctime == hour(3) && status.get_ctime() == hour(3)) << "creation";
    EXPECT_EQ(seen.size, 0x123456789ABCDEF0U);
    EXPECT_EQ(status.get_size(), 0x123456789ABCDEF0U);
}

TEST(FileStatusLight, ArgumentsAndFieldsInOrder)
{
    file_status_light const status(0x4000, hour(2), 0x123456789ABCDEF0);
    light_layout const seen = fields(status);
    EXPECT_EQ(seen.std_type, 3U);
    EXPECT_EQ(seen.std_perms, 0xFFFFU);
    EXPECT_EQ(seen.type, 0x4000U);
    EXPECT_TRUE(seen.mtime == hour(2) && status.get_mtime() == hour(2));
    EXPECT_EQ(seen.size, 0x123456789ABCDEF0U);
    EXPECT_EQ(status.get_size(), 0x123456789ABCDEF0U);
}

TEST(FileStatus, TimesAndSizeAreSetOneByOne)
{
    file_status status;
    status.set_atime(hour(1));
    EXPECT_TRUE(status.get_atime() == hour(1));
    EXPECT_TRUE(status.get_mtime().is_not_a_date_time());
    EXPECT_TRUE(status.get_ctime().is_not_a_date_time());
    status.set_mtime(hour(2));
    EXPECT_TRUE(status.get_mtime() == hour(2));
    EXPECT_TRUE(status.get_ctime().is_not_a_date_time());
    status.set_ctime(hour(3));
    EXPECT_TRUE(status.get_ctime() == hour(3));
    EXPECT_EQ(status.get_size(), 0U);
    status.set_size(0xFFFFFFFFFFFFFFFF);
    EXPECT_EQ(status.get_size(), 0xFFFFFFFFFFFFFFFFU);
    EXPECT_TRUE(status.get_atime() == hour(1) && status.get_mtime() == hour(2));
    EXPECT_FALSE(file_status::exists(status)) << "the type is set by itself";
    EXPECT_EQ(status.get_perms(), 0U);
}

void expect_no_times(full_layout const &seen)
{
    EXPECT_TRUE(seen.atime.is_not_a_date_time());
    EXPECT_TRUE(seen.mtime.is_not_a_date_time());
    EXPECT_TRUE(seen.ctime.is_not_a_date_time());
}

TEST(FileStatus, MadeWithoutArgumentsIsNotFound)
{
    file_status const status;
    EXPECT_FALSE(file_status::exists(status));
    EXPECT_EQ(status.get_type(), 0xFFFF0000U);
    EXPECT_EQ(status.get_perms(), 0U);
    EXPECT_EQ(status.get_size(), 0U);
    EXPECT_EQ(predicates(status), "");
    EXPECT_EQ(fields(status).std_type, 1U);
    EXPECT_EQ(fields(status).std_perms, 0U);
    expect_no_times(fields(status));
}

TEST(FileStatusLight, MadeWithoutArgumentsIsNotFound)
{
    file_status_light const status;
    EXPECT_FALSE(file_status_light::exists(status));
    EXPECT_EQ(status.get_type(), 0xFFFF0000U);
    EXPECT_EQ(status.get_size(), 0U);
    EXPECT_EQ(predicates(status), "");
    EXPECT_EQ(fields(status).std_type, 1U);
    EXPECT_EQ(fields(status).std_perms, 0xFFFFU) << "unlike those of the full record";
    EXPECT_TRUE(status.get_mtime().is_not_a_date_time());
}

TEST(FileStatus, ClearedIsUnknownAndNotMissing)
{
    file_status status(file_status::regular_file, 0644, hour(1), hour(2), hour(3), 4);
    status.clear();
    EXPECT_TRUE(file_status::exists(status));
    EXPECT_EQ(predicates(status), " unknown");
    EXPECT_EQ(status.get_type(), 0U);
    EXPECT_EQ(status.get_perms(), 0xFFFFU);
    EXPECT_EQ(status.get_size(), 0U);
    EXPECT_EQ(fields(status).std_type, 9U);
    EXPECT_EQ(fields(status).std_perms, 0xFFFFU);
    expect_no_times(fields(status));
}

TEST(FileStatusLight, ClearedIsUnknownAndNotMissing)
{
    file_status_light status(file_status::regular_file, hour(2), 4);
    status.clear();
    EXPECT_TRUE(file_status_light::exists(status));
    EXPECT_EQ(predicates(status), " unknown");
    EXPECT_EQ(status.get_type(), 0U);
    EXPECT_EQ(status.get_size(), 0U);
    EXPECT_EQ(fields(status).std_type, 9U);
    EXPECT_EQ(fields(status).std_perms, 0xFFFFU);
    EXPECT_TRUE(status.get_mtime().is_not_a_date_time());
}

TEST(FileStatus, AssignmentCopiesTheWholeRecord)
{
    file_status const source(file_status::socket_file, 0x1FFF, hour(1), hour(2), hour(3), 4);
    file_status target;
    target = source;
    full_layout const seen = fields(target);
    EXPECT_EQ(seen.std_type, 8U);
    EXPECT_EQ(seen.std_perms, 0xFFFU);
    EXPECT_EQ(seen.type, 0xC000U);
    EXPECT_EQ(seen.perms, 0x1FFFU);
    expect_times_and_size(seen);
}

TEST(FileStatusLight, AssignmentCopiesTheWholeRecord)
{
    file_status_light const source(file_status::fifo_file, hour(2), 4);
    file_status_light target;
    target = source;
    light_layout const seen = fields(target);
    EXPECT_EQ(seen.std_type, 7U);
    EXPECT_EQ(seen.std_perms, 0xFFFFU);
    EXPECT_EQ(seen.type, 0x1000U);
    EXPECT_TRUE(seen.mtime == hour(2));
    EXPECT_EQ(seen.size, 4U);
}

template <typename Record>
constexpr bool is_plain_value =
    std::is_trivially_copyable_v<Record> &&std::is_standard_layout_v<Record> &&
    !std::is_polymorphic_v<Record> && std::is_nothrow_copy_assignable_v<Record>;

TEST(FileStatus, PlainValues)
{
    EXPECT_TRUE(is_plain_value<file_status>);
    EXPECT_TRUE(is_plain_value<file_status_light>);
}

// The light record has neither what it doesn't know nor a way to change it.
#define FL_TEST_DETECT(member)                                                                     \
    template <typename Record, typename = void>                                                    \
    constexpr bool has_##member = false;                                                           \
    template <typename Record>                                                                     \
    constexpr bool has_##member<Record, std::void_t<decltype(&Record::member)>> = true;            \
    static_assert(has_##member<file_status> && !has_##member<file_status_light>);

FL_TEST_DETECT(get_perms)
FL_TEST_DETECT(get_atime)
FL_TEST_DETECT(get_ctime)
FL_TEST_DETECT(set_type)
FL_TEST_DETECT(set_perms)
FL_TEST_DETECT(set_atime)
FL_TEST_DETECT(set_mtime)
FL_TEST_DETECT(set_ctime)
FL_TEST_DETECT(set_size)
#undef FL_TEST_DETECT

} // namespace
} // namespace fl::filesystem
