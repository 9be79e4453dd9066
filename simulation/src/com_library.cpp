#include "com_library.hpp"

#include "failure.hpp"

#include <objbase.h>

#include <algorithm>

namespace fl::simulation {

namespace {

/// Never given twice, as the system's own numbers of threads are.
std::uint64_t this_thread()
{
    static std::atomic<std::uint64_t> count = 0;
    thread_local std::uint64_t const number = ++count;
    return number;
}

} // namespace

bool com_library::enter(apartment_kind kind)
{
    auto const [member, is_first] = members_.try_emplace(this_thread(), membership{kind, 0});
    if (member->second.kind != kind)
        throw failure(static_cast<DWORD>(RPC_E_CHANGED_MODE));
    ++member->second.entered;
    return is_first;
}

void com_library::leave()
{
    auto const member = members_.find(this_thread());
    if (member == members_.end() || --member->second.entered > 0)
        return;
    members_.erase(member);
    if (members_.empty())
        orphans_ += interfaces->live;
}

bool com_library::is_usable() const
{
    return members_.contains(this_thread()) ||
           std::any_of(members_.begin(), members_.end(), [](auto const &member) {
               return member.second.kind == apartment_kind::multi_threaded;
           });
}

int com_library::entered_here() const
{
    auto const member = members_.find(this_thread());
    return member == members_.end() ? 0 : member->second.entered;
}

int com_library::entered() const
{
    int sum = 0;
    for (auto const &[thread, member] : members_)
        sum += member.entered;
    return sum;
}

} // namespace fl::simulation
