#ifndef FL_FILESYSTEM_BENCH_CONTEST_HPP
#define FL_FILESYSTEM_BENCH_CONTEST_HPP
// The works on Windows, with all who do them there.

#include "works.hpp"

#include <string>

namespace bench {

/// Text functions, with the standard library's beside.
std::vector<work> text_contest();

/// Operations on a disk, in `folder`, which is there. The floor makes the same calls by itself.
/// On trees of a twentieth of their size if nobody wants to know how long they take.
std::vector<work> disk_works(std::wstring const &folder, bool is_smoke);

/// Puts Boost's facility beside the others, where it was built.
void add_boost(std::vector<work> &works, std::wstring const &folder);

} // namespace bench

#endif
