// Reparse data of any bytes, read from a buffer and from a disk: names stay inside the data, and
// nothing but what the functions tell is thrown.

#include "fuzz/call.hpp"
#include "fuzz/input.hpp"

#include <fl/filesystem/links.hpp>
#include <fl/filesystem/operations.hpp>
#include <fl/filesystem/windows.hpp>

#include <simulation/machine.hpp>

#include <algorithm>
#include <stdexcept>

using fuzz::call;
using fuzz::must;
namespace ff = fl::filesystem;
using namespace ff::detail::windows;

namespace {

void decode(std::string const &bytes)
{
    static reparse_data_context data; // as large as a stack need not be
    std::fill(std::begin(data.buffer), std::end(data.buffer), static_cast<unsigned char>(0));
    std::copy_n(bytes.begin(), std::min(bytes.size(), sizeof data.buffer), data.buffer);
    attrib_link_type type = link_type_none;
    try {
        std::wstring const text = get_target_path_bridge(type, data);
        must(text.size() <= sizeof data.buffer / 2, "the text is inside");
    } catch (foundation::ustring::CtypeInvalidCharacter const &) {
        // of a mount point's name
    }
}

void read_from_disk(std::string const &bytes, bool is_directory)
{
    simulation::simulated_machine machine;
    machine.keep_journal(false);
    machine.add_file(u"C:\\kept", "kept");
    bool const is_junction = !bytes.empty() && (bytes[0] & 1) != 0;
    auto const tag =
        static_cast<DWORD>(is_junction ? IO_REPARSE_TAG_MOUNT_POINT : IO_REPARSE_TAG_SYMLINK);
    try {
        machine.add_reparse_point(u"C:\\l", tag, bytes,
                                  is_directory ? simulation::flavour::directory
                                               : simulation::flavour::file);
    } catch (std::invalid_argument const &) {
        return; // no disk keeps that
    }
    std::u16string const link = u"C:\\l";
    call([&] { ff::status(link); });
    call([&] { ff::symlink_status(link); });
    call([&] { ff::read_symlink(link); });
    call([&] { ff::canonical(link + u"\\x"); });
    call([&] { static_cast<void>(ff::link_hops(link)); });
    call([&] { ff::copy_symlink(link, u"C:\\copied"); });
    call([&] { ff::permissions(link, ff::file_status::perms_add | ff::file_status::hidden_file); });
    call([&] { ff::remove_all(link); });
    must(!machine.exists(u"C:\\l"), "a link goes, whatever it says");
    must(machine.content(u"C:\\kept") == "kept", "and nothing else");
    must(machine.open_handles() + machine.find_handles() == 0, "all is closed");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size)
{
    std::string const bytes(reinterpret_cast<char const *>(data), size);
    decode(bytes);
    if (size < 2000)
        read_from_disk(bytes, size % 2 == 0);
    return 0;
}
