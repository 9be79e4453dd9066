#ifndef FL_FILESYSTEM_TESTS_RELIABILITY_NAMES_HPP
#define FL_FILESYSTEM_TESTS_RELIABILITY_NAMES_HPP
// What all of these tests include, and the names that they share.

#include "support/calls.hpp"

#include <fl/filesystem.hpp>

#include <filesystem>
#include <string>

namespace reliability {

namespace ff = fl::filesystem;
using std::filesystem::copy_options;
using text = std::u16string;

/// What a record tells, but for its times.
template <typename Record>
std::string shown_record(Record const &record)
{
    switch (record.get_type()) {
    case ff::file_status::file_not_found:
        return "nothing";
    case ff::file_status::regular_file:
        return "file " + std::to_string(record.get_size());
    case ff::file_status::directory_file:
        return "directory";
    case ff::file_status::symlink_file:
        return "symbolic link";
    case ff::file_status::reparse_file:
        return "junction";
    default:
        return "other";
    }
}

inline std::string shown_report(ff::removal_report const &report)
{
    std::string all = std::to_string(report.removed()) + " removed";
    for (auto const &left : report.failures())
        all += ", left " + test_support::printable(left.path_name());
    return all;
}

} // namespace reliability

#endif
