#ifndef FL_SIMULATION_VOLUMES_HPP
#define FL_SIMULATION_VOLUMES_HPP
// The trees of a machine: its drives, and the shares of the servers it reaches.

#include "node.hpp"

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace fl::simulation {

/// How much room a volume has, in bytes.
struct volume_space
{
    std::uint64_t capacity = 0;
    std::uint64_t free = 0;
    std::uint64_t available = 0; ///< to the caller, who may have a quota
};

struct volume
{
    /// A file or directory of this volume, without a name as yet.
    std::shared_ptr<node> make_node(DWORD attributes);

    std::shared_ptr<entry> root;
    /// What its pathnames begin with behind a long prefix: `C:` or `UNC\server\share`. Empty
    /// if the volume has lost its letter.
    std::u16string name;
    /// What the object manager knows a disk by, below `\Device\`. A share has none.
    std::u16string device_name;
    /// `Volume{...}`, the name that a mount point knows it by. A share has none.
    std::u16string guid_name;
    DWORD serial_number = 0;
    bool is_remote = false;
    /// No volume at all: its root stands for a device, which takes all bytes and gives none.
    bool is_device = false;
    /// The device is a volume below its file system, which knows no files.
    bool is_raw = false;
    volume_space space = {100ULL << 30, 40ULL << 30, 30ULL << 30};
    std::shared_ptr<machine_clock> clock;
    /// All that anybody has open on it.
    std::vector<open_file const *> open_files;

private:
    std::uint64_t next_id();

    std::uint64_t nodes_ = 0;
};

/// What the names of files begin with below `\Device\`: `HarddiskVolume3`,
/// `Mup\server\share`.
std::u16string device_name_of(volume const &disk);

class volumes
{
public:
    void add_drive(char16_t letter);
    /// Of what remains the volume is known by its other names only.
    void take_letter(char16_t letter);
    void remove_drive(char16_t letter);
    void add_share(std::u16string_view server, std::u16string_view share);
    void add_dead_server(std::u16string_view name);

    /// A letter that stands for a share of a server.
    struct mapping
    {
        std::u16string server;
        std::u16string share;
    };

    void map_drive(char16_t letter, std::u16string_view server, std::u16string_view share);
    std::optional<mapping> find_mapping(char16_t letter) const;

    /// The volume, or null if there is no such drive. Of a mapped drive, the volume of
    /// its share; fails as that does.
    std::shared_ptr<volume> find_drive(char16_t letter) const;

    /// A volume by its `Volume{...}`, or null.
    std::shared_ptr<volume> find_by_guid(std::u16string_view guid_name) const;

    /// A disk by the name of its device, or null.
    std::shared_ptr<volume> find_by_device(std::u16string_view device_name) const;

    /// The volume of a share. Fails as the network does, with a code for the server
    /// and another for the share.
    std::shared_ptr<volume> find_share(std::u16string_view server, std::u16string_view share) const;

    /// What the names of devices open. They are all the same: NUL.
    std::shared_ptr<volume> device();

    /// What `\\?\C:` opens, whatever the letter.
    std::shared_ptr<volume> raw_volume();

    std::shared_ptr<machine_clock> const &clock() const noexcept { return clock_; }

private:
    struct server_entry
    {
        bool is_dead = false;
        std::map<std::u16string, std::shared_ptr<volume>> shares; // by name in upper case
    };

    enum class place_of_disk
    {
        here,
        server
    };

    std::shared_ptr<volume> make_volume(std::u16string name, place_of_disk where,
                                        DWORD attributes = FILE_ATTRIBUTE_DIRECTORY);
    /// The disk, with a letter or without, whose `name` is `wanted` in any case; or null.
    std::shared_ptr<volume> find_by(std::u16string volume::*name, std::u16string_view wanted) const;

    std::shared_ptr<machine_clock> clock_ = std::make_shared<machine_clock>();
    std::shared_ptr<volume> device_;
    std::shared_ptr<volume> raw_volume_;
    std::map<char16_t, std::shared_ptr<volume>> drives_;
    std::vector<std::shared_ptr<volume>> without_letter_;
    std::map<char16_t, mapping> mappings_;
    std::map<std::u16string, server_entry> servers_; // by name in upper case
    DWORD last_serial_number_ = 0x1A2B'3C00;
};

} // namespace fl::simulation

#endif
