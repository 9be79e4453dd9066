#ifndef FL_FLFS_TOUR_STEP_HPP
#define FL_FLFS_TOUR_STEP_HPP
// The steps of `flfs tour`. Each calls the library once or twice and knows what must come
// out. The tour's folder is the current directory while they run.

#include <functional>
#include <string>
#include <vector>

namespace flfs::tour {

struct step
{
    std::string sentence; ///< what it does, for somebody who reads along
    std::string call;     ///< as it would stand in a program
    std::function<std::string()> run;
    std::string expected; ///< what `run` returns, or its failure, as `told` writes it
};

struct chapter
{
    std::string title;
    std::vector<step> steps;
};

/// Where the tour takes place.
struct place
{
    std::u16string folder; ///< absolute and without links
};

/// `text` with the folder written as `<folder>`, wherever it stands.
std::string told(std::u16string const &text, place const &where);

char const *yes_or_no(bool value);

// The chapters, in the order in which they have to run: each works on what those before it
// have left.
chapter pathnames();
chapter directories(place const &where);
chapter files(place const &where);
chapter copies(place const &where);
chapter shortcuts(place const &where);
chapter symbolic_links(place const &where);
chapter process(place const &where);
chapter removal(place const &where);

} // namespace flfs::tour

#endif
