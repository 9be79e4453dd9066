#ifndef FL_FLFS_TOUR_STEP_HPP
#define FL_FLFS_TOUR_STEP_HPP
// The steps of `flfs tour`. Each calls the library once or twice and knows what must come
// out. The tour's folder is the current directory while they run.

#include "flfs/status_text.hpp"
#include "flfs/text.hpp"

#include <functional>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace flfs::tour {

/// `text` with the tour's folder written as `<folder>`, wherever it stands.
std::string told(std::u16string text, std::u16string const &folder);

inline char const *yes_or_no(bool value)
{
    return value ? "yes" : "no";
}

/// What `run` returns, as the tour tells it.
template <typename Run>
std::string told_result(Run const &run, std::u16string const &folder)
{
    using result = std::invoke_result_t<Run>;
    if constexpr (std::is_void_v<result>)
        return run(), "done";
    else if constexpr (std::is_same_v<result, bool>)
        return yes_or_no(run());
    else if constexpr (std::is_integral_v<result>)
        return std::to_string(run());
    else if constexpr (std::is_same_v<result, fl::filesystem::file_status>)
        return type_of(run()).description;
    else if constexpr (std::is_convertible_v<result, std::u16string>)
        return told(run(), folder);
    else
        return run();
}

struct step
{
    template <typename Run>
    step(std::string does, std::string code, Run made, std::string must)
        : sentence(std::move(does)), call(std::move(code)), expected(std::move(must)),
          run([made](std::u16string const &folder) { return told_result(made, folder); })
    {
    }

    /// What comes out is what `look` then sees.
    template <typename Run, typename Look>
    step(std::string does, std::string code, Run made, Look look, std::string must)
        : step(
              std::move(does), std::move(code), [made, look] { return made(), look(); },
              std::move(must))
    {
    }

    std::string sentence; ///< what it does, for somebody who reads along
    std::string call;     ///< as it would stand in a program
    std::string expected; ///< what comes out, or the failure, as `told` writes it
    std::function<std::string(std::u16string const &folder)> run;
};

struct chapter
{
    std::string title;
    std::vector<step> steps;
};

/// In the order in which they have to run: each works on what those before it have left. Each is
/// put together when it is its turn, for it may look at the disk.
std::vector<chapter (*)()> const &chapters();

} // namespace flfs::tour

#endif
