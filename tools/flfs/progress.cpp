#include "flfs/progress.hpp"

#include <ostream>
#include <string>

namespace flfs {

progress::progress(session &session, char const *verb)
    : session_(session), verb_(verb), last_told_(std::chrono::steady_clock::now())
{
}

progress::~progress()
{
    if (width_ != 0)
        session_.err << '\r' << std::string(width_, ' ') << '\r' << std::flush;
}

void progress::tell(std::uint64_t names)
{
    auto const now = std::chrono::steady_clock::now();
    if (!session_.progress_pause || now - last_told_ < *session_.progress_pause)
        return;
    last_told_ = now;
    std::string const line =
        std::to_string(names) + (names == 1 ? " name " : " names ") + verb_; // never a shorter one
    session_.err << '\r' << line << std::flush;
    width_ = line.size();
}

} // namespace flfs
