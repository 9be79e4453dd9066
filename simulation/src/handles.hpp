#ifndef FL_SIMULATION_HANDLES_HPP
#define FL_SIMULATION_HANDLES_HPP
// What the process holds open, by handle. No handle is ever used twice, on whatever
// machine, so that a closed one is never taken for another.

#include "opening.hpp"
#include "search.hpp"

#include <windows.h>

#include <cstdint>
#include <map>
#include <memory>

namespace fl::simulation {

class handles
{
public:
    HANDLE add(std::shared_ptr<open_file> file);
    HANDLE add(std::shared_ptr<search> found);

    /// Fail with the code for an invalid handle.
    std::shared_ptr<open_file> file(HANDLE handle) const;
    std::shared_ptr<search> find(HANDLE handle) const;

    /// The text by which either of them was opened.
    std::u16string const &text_of(HANDLE handle) const;

    void close_file(HANDLE handle);
    void close_search(HANDLE handle);

    int open_files() const noexcept { return static_cast<int>(files_.size()); }
    int searches() const noexcept { return static_cast<int>(searches_.size()); }

private:
    std::map<HANDLE, std::shared_ptr<open_file>> files_;
    std::map<HANDLE, std::shared_ptr<search>> searches_;
};

} // namespace fl::simulation

#endif
