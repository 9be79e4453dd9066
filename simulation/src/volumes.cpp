#include "volumes.hpp"

#include "failure.hpp"
#include "names.hpp"

#include <algorithm>
#include <utility>

namespace fl::simulation {

namespace {

/// A name for the device of a drive that no other drive has: 3 is that of C:.
std::u16string disk_name_of(char16_t letter)
{
    std::string const number = std::to_string(letter - u'A' + 1);
    return u"HarddiskVolume" + std::u16string(number.begin(), number.end());
}

/// A name for the volume of a drive that no other drive has.
std::u16string guid_name_of(char16_t letter)
{
    constexpr std::u16string_view digits = u"0123456789abcdef";
    std::u16string name = u"Volume{5f1e6c8a-0000-0000-0000-0000000000";
    name += digits[letter / 16U];
    name += digits[letter % 16U];
    return name + u'}';
}

} // namespace

std::u16string device_name_of(volume const &disk)
{
    return disk.is_remote ? u"Mup" + disk.name.substr(3) : disk.device_name;
}

std::shared_ptr<node> volume::make_node(DWORD attributes)
{
    return std::make_shared<node>(attributes, clock->now(), next_id());
}

/// As NTFS has them: in the lower 48 bits where the file stands in the volume's table, the
/// root as the fifth and users' files from 36 on; in the upper 16 how often that place has
/// been used. Two disks with the same history have the same numbers. A server that has
/// identities of its own hands them out as they are, and the lower halves may repeat.
std::uint64_t volume::next_id()
{
    constexpr std::uint64_t root_place = 5;
    constexpr std::uint64_t first_place = 36;
    std::uint64_t const count = nodes_++;
    if (is_remote)
        return (count % 2 + 1) << 32 | (first_place + count / 2);
    if (count == 0)
        return root_place << 48 | root_place;
    return (count * 5 % 7 + 1) << 48 | (first_place + count - 1);
}

std::shared_ptr<volume> volumes::make_volume(std::u16string name, place_of_disk where,
                                             DWORD attributes)
{
    auto made = std::make_shared<volume>();
    made->clock = clock_;
    made->is_remote = where == place_of_disk::server;
    made->root = std::make_shared<entry>();
    made->root->target = made->make_node(attributes);
    made->root->target->own_entry = made->root;
    made->root->target->link_count = 1;
    made->name = std::move(name);
    made->serial_number = ++last_serial_number_;
    return made;
}

void volumes::add_drive(char16_t letter)
{
    char16_t const upper = upcase(letter);
    if (drives_.contains(upper))
        return;
    auto made = make_volume({upper, u':'}, place_of_disk::here);
    made->guid_name = guid_name_of(upper);
    made->device_name = disk_name_of(upper);
    drives_[upper] = std::move(made);
}

void volumes::take_letter(char16_t letter)
{
    auto const found = drives_.find(upcase(letter));
    found->second->name.clear();
    without_letter_.push_back(std::move(found->second));
    drives_.erase(found);
}

void volumes::remove_drive(char16_t letter)
{
    drives_.erase(upcase(letter));
    mappings_.erase(upcase(letter));
}

void volumes::add_share(std::u16string_view server, std::u16string_view share)
{
    std::shared_ptr<volume> &held = servers_[upcase(server)].shares[upcase(share)];
    if (held)
        return;
    held = make_volume(u"UNC\\" + std::u16string(server) + u'\\' + std::u16string(share),
                       place_of_disk::server);
}

void volumes::add_dead_server(std::u16string_view name)
{
    servers_[upcase(name)].is_dead = true;
}

std::shared_ptr<volume> volumes::device()
{
    if (!device_) {
        device_ = make_volume({}, place_of_disk::here, FILE_ATTRIBUTE_ARCHIVE);
        device_->is_device = true;
    }
    return device_;
}

std::shared_ptr<volume> volumes::raw_volume()
{
    if (!raw_volume_) {
        raw_volume_ = make_volume({}, place_of_disk::here, FILE_ATTRIBUTE_ARCHIVE);
        raw_volume_->is_device = true;
        raw_volume_->is_raw = true;
    }
    return raw_volume_;
}

void volumes::map_drive(char16_t letter, std::u16string_view server, std::u16string_view share)
{
    mappings_[upcase(letter)] = {std::u16string(server), std::u16string(share)};
}

std::optional<volumes::mapping> volumes::find_mapping(char16_t letter) const
{
    auto const found = mappings_.find(upcase(letter));
    return found == mappings_.end() ? std::nullopt : std::optional(found->second);
}

std::shared_ptr<volume> volumes::find_drive(char16_t letter) const
{
    if (auto const mapped = find_mapping(letter))
        return find_share(mapped->server, mapped->share);
    auto const found = drives_.find(upcase(letter));
    return found == drives_.end() ? nullptr : found->second;
}

std::shared_ptr<volume> volumes::find_by_guid(std::u16string_view guid_name) const
{
    return find_by(&volume::guid_name, guid_name);
}

std::shared_ptr<volume> volumes::find_by_device(std::u16string_view device_name) const
{
    return find_by(&volume::device_name, device_name);
}

std::shared_ptr<volume> volumes::find_by(std::u16string volume::*name,
                                         std::u16string_view wanted) const
{
    std::vector<std::shared_ptr<volume>> disks = without_letter_;
    for (auto const &drive : drives_)
        disks.push_back(drive.second);
    auto const found = std::find_if(disks.begin(), disks.end(), [&](auto const &disk) {
        return upcase((*disk).*name) == upcase(wanted);
    });
    return found == disks.end() ? nullptr : *found;
}

std::shared_ptr<volume> volumes::find_share(std::u16string_view server,
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

} // namespace fl::simulation
