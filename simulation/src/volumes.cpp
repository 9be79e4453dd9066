#include "volumes.hpp"

#include "failure.hpp"
#include "names.hpp"

namespace simulation {

namespace {

std::shared_ptr<node> make_root()
{
    return std::make_shared<node>(u"", DWORD{FILE_ATTRIBUTE_DIRECTORY});
}

} // namespace

void volumes::add_drive(char16_t letter)
{
    drives_.try_emplace(upcase(letter), make_root());
}

void volumes::remove_drive(char16_t letter)
{
    drives_.erase(upcase(letter));
}

void volumes::add_share(std::u16string_view server, std::u16string_view share)
{
    servers_[upcase(server)].shares.try_emplace(upcase(share), make_root());
}

void volumes::add_dead_server(std::u16string_view name)
{
    servers_[upcase(name)].is_dead = true;
}

std::shared_ptr<node> volumes::find_drive(char16_t letter) const
{
    auto const found = drives_.find(upcase(letter));
    return found == drives_.end() ? nullptr : found->second;
}

std::shared_ptr<node> volumes::find_share(std::u16string_view server,
                                          std::u16string_view share) const
{
    auto const host = servers_.find(upcase(server));
    if (host == servers_.end() || host->second.is_dead)
        throw failure(ERROR_BAD_NETPATH);
    // \\server alone is no name of a disk, even if the server is there.
    if (share.empty())
        throw failure(ERROR_INVALID_NAME);
    auto const found = host->second.shares.find(upcase(share));
    if (found == host->second.shares.end())
        throw failure(ERROR_BAD_NET_NAME);
    return found->second;
}

} // namespace simulation
