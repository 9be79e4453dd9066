#ifndef FL_SIMULATION_CALLS_ATTRIBUTES_HPP
#define FL_SIMULATION_CALLS_ATTRIBUTES_HPP
// Attributes and times, for calls by name and by handle.

#include "opening.hpp"

#include <cstdint>

namespace fl::simulation {

FILETIME as_file_time(std::uint64_t ticks);

/// Fills what the records of several calls have in common, under the same names.
template <typename Record>
void fill_record(Record &record, DWORD attributes, times const &taken, std::uint64_t size)
{
    record.dwFileAttributes = attributes;
    record.ftCreationTime = as_file_time(taken.creation);
    record.ftLastAccessTime = as_file_time(taken.access);
    record.ftLastWriteTime = as_file_time(taken.write);
    record.nFileSizeHigh = static_cast<DWORD>(size >> 32);
    record.nFileSizeLow = static_cast<DWORD>(size);
}

/// Sets those attributes that a caller can set, and leaves the others.
void change_attributes(open_file const &file, DWORD attributes);

} // namespace fl::simulation

#endif
