#ifndef FL_FLFS_TOUR_TOUR_HPP
#define FL_FLFS_TOUR_TOUR_HPP
// One narrated run through all that the library does, which checks itself.

#include "flfs/commands.hpp"
#include "flfs/tour/step.hpp"

#include <string>
#include <vector>

namespace flfs::tour {

/// Makes `folder`, runs all chapters in it and, unless `keeps`, removes it again. Returns the
/// exit code: 1 if a step came out otherwise than expected, or if there is no way to begin or
/// to clean up.
int run_tour(session &session, std::u16string const &folder, bool keeps);

/// Tells and checks steps one by one, and counts them.
class guide
{
public:
    guide(session &session, place where) : session_(session), where_(std::move(where)) {}

    void run(chapter const &one);
    /// The closing line; returns the exit code.
    int close();

private:
    void run(step const &one);
    std::string outcome_of(step const &one) const;

    session &session_;
    place where_;
    int steps_ = 0;
    std::vector<int> unexpected_;
};

} // namespace flfs::tour

#endif
