#ifndef FL_SIMULATION_COM_LIBRARY_HPP
#define FL_SIMULATION_COM_LIBRARY_HPP
// What COM keeps for the process: the apartments of its threads, and the interfaces
// that callers hold.

#include <atomic>
#include <cstdint>
#include <map>
#include <memory>

namespace fl::simulation {

/// Shared by the machine and its objects: either may go first.
struct interface_count
{
    std::atomic<int> live = 0;
};

enum class apartment_kind
{
    single_threaded,
    multi_threaded
};

class com_library
{
public:
    /// Whether the calling thread was in no apartment before. Throws `failure` with an
    /// HRESULT if it is in one of the other kind.
    bool enter(apartment_kind kind);
    /// More often than `enter`, it has no effect.
    void leave();

    /// Whether the calling thread may make objects: in an apartment of its own, or in
    /// the multi-threaded one while any thread keeps that open.
    bool is_usable() const;

    int entered_here() const;
    int entered() const;
    int orphans() const noexcept { return orphans_; }

    std::shared_ptr<interface_count> const interfaces = std::make_shared<interface_count>();

private:
    struct membership
    {
        apartment_kind kind;
        int entered;
    };

    std::map<std::uint64_t, membership> members_; // by thread
    int orphans_ = 0;
};

} // namespace fl::simulation

#endif
