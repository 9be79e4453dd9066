// Paths, records and failures to streams, narrow and wide, and by {fmt}.

#ifndef _WIN32 // whose headers those of this host are not
#define FMT_HEADER_ONLY
#include <fmt/format.h>
#include <fmt/ranges.h>
#include <fmt/std.h>
#include <fmt/xchar.h>
#endif

#include <fl/filesystem/directory.hpp>
#include <fl/filesystem/text.hpp>

#include <boost/date_time/posix_time/posix_time_duration.hpp>

#include <gtest/gtest.h>

#include <iomanip>
#include <sstream>
#include <string>
#include <type_traits>

namespace fl::filesystem {
namespace {

using boost::gregorian::date;
using boost::gregorian::date_duration;
using boost::posix_time::ptime;
using boost::posix_time::seconds;

template <typename Value>
std::string narrow(Value const &value)
{
    std::ostringstream out;
    out << value;
    return out.str();
}

template <typename Value>
std::wstring wide(Value const &value)
{
    std::wostringstream out;
    out << value;
    return out.str();
}

file_status record(unsigned int type, unsigned int perms, ptime const &written, std::uint64_t size)
{
    return file_status(type, perms, ptime(), written, ptime(), size);
}

ptime const evening(date(2026, 11, 21), boost::posix_time::time_duration(22, 9, 23));

TEST(TextOutput, OfAPath)
{
    upath const path(u"C:/caf\u00E9/\U0001F600");
    EXPECT_EQ(narrow(path), "C:\\caf\xC3\xA9\\\xF0\x9F\x98\x80");
    EXPECT_EQ(wide(path), path.wstring());
    EXPECT_EQ(narrow(upath()), "");
    upath const half(u"\xD800");
    EXPECT_EQ(narrow(half), "\xED\xA0\x80") << "as it is: nothing is escaped";
    EXPECT_EQ(wide(half), half.wstring());
    std::ostringstream out;
    out << std::setw(5) << std::left << std::setfill('.') << upath(u"abc") << '|' << path.empty();
    EXPECT_EQ(out.str(), "abc..|0");
}

TEST(TextOutput, OfAnEntry)
{
    directory_entry const entry(u"no/caf\u00E9");
    EXPECT_EQ(narrow(entry), "no\\caf\xC3\xA9");
    EXPECT_EQ(wide(entry), L"no\\caf\u00E9");
    EXPECT_EQ(narrow(directory_entry()), "");
}

template <typename Value>
concept streamable = requires(std::ostream &out, Value const &value)
{
    out << value;
};

TEST(TextOutput, TakesNoTextForAPath)
{
    static_assert(streamable<upath> && streamable<directory_entry>);
    static_assert(!streamable<std::u16string>, "would be written in native form");
    static_assert(!streamable<std::wstring>);
}

TEST(TextOutput, OfARecord)
{
    EXPECT_EQ(
        narrow(record(file_status::regular_file, 0666 | file_status::archive_file, evening, 1234)),
        "file, 0666, archive, 1234 bytes, 2026-11-21 22:09:23 UTC");
    EXPECT_EQ(wide(record(file_status::directory_file, 0666, evening, 0)),
              L"directory, 0666, 0 bytes, 2026-11-21 22:09:23 UTC");
    EXPECT_EQ(narrow(record(file_status::regular_file,
                            0444 | file_status::hidden_file | file_status::system_file |
                                file_status::non_indexed_file,
                            evening, 1)),
              "file, 0444, hidden, system, not indexed, 1 byte, 2026-11-21 22:09:23 UTC");
    EXPECT_EQ(narrow(record(file_status::regular_file, 0777, evening, 2)),
              "file, 0777, 2 bytes, 2026-11-21 22:09:23 UTC")
        << "no right is taken for an attribute";
    EXPECT_EQ(narrow(file_status()), "not found");
    file_status cleared;
    cleared.clear();
    EXPECT_EQ(narrow(cleared), "unknown type, unknown permissions, 0 bytes, no time");
    EXPECT_EQ(narrow(file_status_light(file_status::regular_file, evening, 18446744073709551615U)),
              "file, 18446744073709551615 bytes, 2026-11-21 22:09:23 UTC");
    EXPECT_EQ(narrow(file_status_light()), "not found");
}

TEST(TextOutput, OfEachType)
{
    struct
    {
        unsigned int type;
        char const *words;
    } constexpr cases[] = {
        {file_status::symlink_file, "symbolic link"},
        {file_status::reparse_file, "junction or volume mount point"},
        {file_status::block_file, "block device"},
        {file_status::character_file, "character device"},
        {file_status::fifo_file, "FIFO"},
        {file_status::socket_file, "socket"},
        {file_status::file_type_auto, "unknown type"},
    };
    for (auto const &row : cases)
        EXPECT_EQ(narrow(record(row.type, 0666, ptime(), 2)),
                  std::string(row.words) + ", 0666, 2 bytes, no time");
}

/// The date in a record's text.
std::string written(ptime const &time)
{
    std::string const text = narrow(file_status_light(file_status::regular_file, time, 0));
    return text.substr(std::string("file, 0 bytes, ").size());
}

TEST(TextOutput, OfTimes)
{
    ptime const first(date(1601, 1, 1));
    EXPECT_EQ(written(first), "1601-01-01 00:00:00 UTC");
    EXPECT_EQ(written(first - boost::posix_time::microseconds(1)), "1600-12-31 23:59:59 UTC");
    EXPECT_EQ(written(first + boost::posix_time::microseconds(1)), "1601-01-01 00:00:00 UTC");
    EXPECT_EQ(written(first - seconds(1)), "1600-12-31 23:59:59 UTC");
    EXPECT_EQ(written(first - seconds(86399)), "1600-12-31 00:00:01 UTC");
    EXPECT_EQ(written(first - seconds(86400)), "1600-12-31 00:00:00 UTC");
    EXPECT_EQ(written(ptime(date(1970, 1, 1))), "1970-01-01 00:00:00 UTC");
    EXPECT_EQ(written(ptime(date(1999, 12, 31), seconds(86399))), "1999-12-31 23:59:59 UTC");
    EXPECT_EQ(written(ptime(date(2000, 2, 29))), "2000-02-29 00:00:00 UTC");
    EXPECT_EQ(written(ptime(date(2000, 12, 31))), "2000-12-31 00:00:00 UTC");
    EXPECT_EQ(written(ptime(date(2100, 3, 1))), "2100-03-01 00:00:00 UTC");
    EXPECT_EQ(written(ptime(date(9999, 12, 31), seconds(86399))), "9999-12-31 23:59:59 UTC");
    // as far as Windows counts; Boost itself throws
    EXPECT_EQ(written(ptime(date(1601, 1, 1) + date_duration(3067671))),
              "10000-01-01 00:00:00 UTC");
    EXPECT_EQ(written(ptime(boost::posix_time::pos_infin)), "no time");
}

TEST(TextOutput, OfEachDayAroundLeapYearsAsBoostHasIt)
{
    // four centuries begin with 1601 and with 2001
    for (int const from : {1601, 1699, 1799, 1899, 1999, 2099, 2399}) {
        for (date day(static_cast<unsigned short>(from), 1, 1); day.year() < from + 6;
             day += date_duration(1)) {
            std::ostringstream text;
            text << day.year() << '-' << std::setfill('0') << std::setw(2)
                 << day.month().as_number() << '-' << std::setw(2) << day.day().as_number()
                 << " 00:00:00 UTC";
            ASSERT_EQ(written(ptime(day)), text.str());
        }
    }
}

TEST(TextOutput, OfFailures)
{
    PathNotFound const failure(u"C:\\caf\u00E9");
    EXPECT_EQ(narrow(failure), describe(failure));
    EXPECT_EQ(wide(failure),
              L"fl:filesystem:PathNotFound: the name, or a directory on the way to it, isn't "
              L"there: \"C:\\caf\u00E9\"");
    FsysExceptionBase const &base = failure;
    EXPECT_EQ(narrow(base), describe(failure));
}

#ifdef FMT_VERSION

TEST(TextOutput, ByFmt)
{
    upath const path(u"C:/caf\u00E9");
    EXPECT_EQ(fmt::format("{}", path), "C:\\caf\xC3\xA9");
    EXPECT_EQ(fmt::format("{:>6}|{:.2}", upath(u"abc"), upath(u"C:\\x")), "   abc|C:");
    EXPECT_EQ(fmt::format(L"{}", path), path.wstring());
    EXPECT_EQ(fmt::format("{:>5}", directory_entry(u"no")), "   no");
    EXPECT_EQ(fmt::format("{}", record(file_status::directory_file, 0666, evening, 0)),
              "directory, 0666, 0 bytes, 2026-11-21 22:09:23 UTC");
    EXPECT_EQ(fmt::format("{}", file_status_light()), "not found");
    PathNotFound const failure(u"x");
    EXPECT_EQ(fmt::format("{}", failure), describe(failure));
    FsysExceptionBase const &base = failure;
    EXPECT_EQ(fmt::format("{}", base), describe(failure));
    EXPECT_EQ(fmt::format(L"{}", SystemError(99999)),
              L"fl:filesystem:SystemError: the system refused (code 99999)");
}

#endif

#ifdef __cpp_lib_format

TEST(TextOutput, ByStandardFormat)
{
    upath const path(u"C:/caf\u00E9");
    EXPECT_EQ(std::format("{}", path), "C:\\caf\xC3\xA9");
    EXPECT_EQ(std::format("{:>6}|{:.2}", upath(u"abc"), upath(u"C:\\x")), "   abc|C:");
    EXPECT_EQ(std::format(L"{}", path), path.wstring());
    EXPECT_EQ(std::format("{:>5}", directory_entry(u"no")), "   no");
    EXPECT_EQ(std::format("{}", record(file_status::directory_file, 0666, evening, 0)),
              "directory, 0666, 0 bytes, 2026-11-21 22:09:23 UTC");
    EXPECT_EQ(std::format("{}", file_status_light()), "not found");
    PathNotFound const failure(u"x");
    EXPECT_EQ(std::format("{}", failure), describe(failure));
    FsysExceptionBase const &base = failure;
    EXPECT_EQ(std::format("{}", base), describe(failure));
}

#endif

} // namespace
} // namespace fl::filesystem
