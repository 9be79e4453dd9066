// One value of each class that debuggers show in one line, and a place to stop at. What is
// shown of each stands in check.py.

#include <fl/filesystem.hpp>

#include <simulation/machine.hpp>

#include <boost/date_time/gregorian/gregorian_types.hpp>
#include <boost/date_time/posix_time/posix_time_types.hpp>
#include <boost/exception/enable_current_exception.hpp>

#include <array>
#include <cstdint>

namespace fs = fl::filesystem;
using boost::posix_time::ptime;

extern "C" void look_here();
extern "C" void look_here() {}

namespace {

fs::file_status record(unsigned int type, unsigned int perms, ptime const &written,
                       std::uint64_t size)
{
    return fs::file_status(type, perms, ptime(), written, ptime(), size);
}

fs::directory_entry entry_in(char16_t const *directory)
{
    return *fs::directory_iterator(directory);
}

void show()
{
    using status = fs::file_status;
    ptime const evening(boost::gregorian::date(2026, 11, 21),
                        boost::posix_time::time_duration(22, 9, 3));
    ptime const leap_day(boost::gregorian::date(2000, 2, 29));

    fs::upath const path(u"C:/caf\u00E9/\U0001F600");
    fs::upath const &seen = path;
    fs::upath const no_path;
    fs::upath const forged(u"C:/a\nb\u202Etxt.\xD800");

    fs::file_status const file =
        record(status::regular_file, 0666 | status::archive_file, evening, 1234);
    fs::file_status const hidden = record(
        status::regular_file,
        0444 | status::hidden_file | status::system_file | status::non_indexed_file, leap_day, 1);
    fs::file_status const directory = record(status::directory_file, 0777, leap_day, 0);
    fs::file_status const link = record(status::symlink_file, 0666, evening, 0);
    fs::file_status const junction = record(status::reparse_file, 0666, evening, 0);
    fs::file_status const missing;
    fs::file_status unknown;
    unknown.clear();
    fs::file_status const future =
        record(status::regular_file, 0666,
               ptime(boost::gregorian::date(1601, 1, 1) + boost::gregorian::days(3067671)), 0);
    fs::file_status const last_day =
        record(status::regular_file, 0666,
               ptime(boost::gregorian::date(1999, 12, 31), boost::posix_time::seconds(86399)), 0);
    fs::file_status const endless =
        record(status::regular_file, 0666, boost::posix_time::pos_infin, 0);
    fs::file_status const without_beginning =
        record(status::regular_file, 0666, boost::posix_time::neg_infin, 0);
    fs::file_status_light const light(status::regular_file, evening, 18446744073709551615U);

    fs::PathNotFound const not_found(u"C:/dir/x");
    fs::FsysExceptionBase const &base = not_found;
    fs::SystemError const refused(32, u"C:/a", {u"C:/b"});
    fs::SystemError const without_code;
    fs::InvalidArgument const invalid("Time not valid", u"C:/a", {});
    fs::FsysExceptionBase const &invalid_base = invalid;
    auto const carried = boost::enable_current_exception(fs::AccessDenied(u"C:/a"));
    fs::failure const kept(refused);

    std::array<unsigned char, 2 * sizeof(fs::PathNotFound)> garbage;
    garbage.fill(0xFF);

    simulation::simulated_machine machine;
    machine.add_file(u"C:\\f\\a.txt", "nine byte").add_directory(u"C:\\d\\dir");
    machine.add_sparse_file(u"C:\\b\\big", 5000000000U);
    machine.add_symbolic_link(u"C:\\s\\link", u"nowhere").add_junction(u"C:\\j\\to d", u"C:\\d");
    fs::directory_entry const file_entry = entry_in(u"C:\\f");
    fs::directory_entry const large_entry = entry_in(u"C:\\b");
    fs::directory_entry const directory_entry = entry_in(u"C:\\d");
    fs::directory_entry const link_entry = entry_in(u"C:\\s");
    fs::directory_entry const junction_entry = entry_in(u"C:\\j");
    fs::directory_entry const missing_entry(u"C:\\missing");
    fs::directory_entry const no_entry;
    look_here();
}

} // namespace

int main()
{
    show();
}
