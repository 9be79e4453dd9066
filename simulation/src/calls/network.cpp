#include "calls/call.hpp"

#include <winnetwk.h>

#include <algorithm>
#include <cstddef>
#include <cstring>

namespace fl::simulation {

namespace {

/// The texts that a record points to.
struct network_name
{
    std::u16string universal;
    std::u16string connection;
    std::u16string rest;
};

network_name find_network_name(machine_state &machine, std::u16string_view text)
{
    bool const is_on_drive = is_drive_at(text, 0) && (text.size() == 2 || is_separator(text[2]));
    if (!is_on_drive)
        throw failure(ERROR_BAD_DEVICE);
    auto const mapped = machine.disks.find_mapping(text[0]);
    if (!mapped)
        throw failure(ERROR_NOT_CONNECTED);
    std::u16string const connection = u"\\\\" + mapped->server + u'\\' + mapped->share;
    std::u16string const rest(text.substr(2));
    return {connection + rest, connection, rest};
}

std::size_t bytes_of(std::u16string_view text)
{
    return (text.size() + 1) * sizeof(wchar_t);
}

/// Puts texts behind a record, in the caller's buffer.
class text_area
{
public:
    explicit text_area(std::byte *begin) noexcept : next_(begin) {}

    wchar_t *add(std::u16string_view text)
    {
        wchar_t *const begin = reinterpret_cast<wchar_t *>(next_);
        *std::copy(text.begin(), text.end(), begin) = L'\0';
        next_ += bytes_of(text);
        return begin;
    }

private:
    std::byte *next_;
};

/// States the size that is needed, and fails if there is less.
void claim(std::size_t needed, LPVOID buffer, DWORD *size)
{
    bool const fits = buffer != nullptr && *size >= needed;
    *size = static_cast<DWORD>(needed);
    if (!fits)
        throw failure(ERROR_MORE_DATA);
}

void store_universal(network_name const &name, LPVOID buffer, DWORD *size)
{
    UNIVERSAL_NAME_INFOW record{};
    claim(sizeof record + bytes_of(name.universal), buffer, size);
    text_area area(static_cast<std::byte *>(buffer) + sizeof record);
    record.lpUniversalName = area.add(name.universal);
    *static_cast<UNIVERSAL_NAME_INFOW *>(buffer) = record;
}

void store_remote(network_name const &name, LPVOID buffer, DWORD *size)
{
    REMOTE_NAME_INFOW record{};
    claim(sizeof record + bytes_of(name.universal) + bytes_of(name.connection) +
              bytes_of(name.rest),
          buffer, size);
    text_area area(static_cast<std::byte *>(buffer) + sizeof record);
    record.lpUniversalName = area.add(name.universal);
    record.lpConnectionName = area.add(name.connection);
    record.lpRemainingPath = area.add(name.rest);
    *static_cast<REMOTE_NAME_INFOW *>(buffer) = record;
}

/// A record that points nowhere.
void store_no_name(DWORD level, LPVOID buffer, DWORD *size)
{
    std::size_t const bytes = level == UNIVERSAL_NAME_INFO_LEVEL ? sizeof(UNIVERSAL_NAME_INFOW)
                                                                 : sizeof(REMOTE_NAME_INFOW);
    claim(bytes, buffer, size);
    std::memset(buffer, 0, bytes);
}

void get_universal_name(machine_state &machine, LPCWSTR text, DWORD level, LPVOID buffer,
                        DWORD *size)
{
    if (level != UNIVERSAL_NAME_INFO_LEVEL && level != REMOTE_NAME_INFO_LEVEL)
        throw failure(ERROR_INVALID_PARAMETER);
    network_name const name = find_network_name(machine, from_wide(text));
    if (!machine.knows_universal_names)
        return store_no_name(level, buffer, size);
    if (level == UNIVERSAL_NAME_INFO_LEVEL)
        store_universal(name, buffer, size);
    else
        store_remote(name, buffer, size);
}

} // namespace

} // namespace fl::simulation

extern "C" DWORD WNetGetUniversalNameW(LPCWSTR local_path, DWORD level, LPVOID buffer, DWORD *size)
{
    using namespace fl::simulation;
    call const made{
        .function = "WNetGetUniversalNameW", .text = local_path, .flags = level, .room = *size};
    return perform_refusing(
        made, [](DWORD code) { return code; },
        [&](machine_state &machine) {
            get_universal_name(machine, local_path, level, buffer, size);
            return DWORD{NO_ERROR};
        });
}
