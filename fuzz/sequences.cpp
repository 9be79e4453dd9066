// Operations in sequence on a disk built from the input: each ends, closes what it opened, and
// no removal reaches what lies outside its tree.

#include "fuzz/disk.hpp"

#include <fl/filesystem.hpp>

#include <filesystem>

using fuzz::must;
namespace ff = fl::filesystem;

namespace {

using std::filesystem::copy_options;

void act(std::uint32_t which, std::u16string const &p, std::u16string const &q, std::uint32_t word)
{
    switch (which) {
    case 0:
        return ff::create_directories(p);
    case 1:
        return ff::remove(p);
    case 2:
        return static_cast<void>(ff::remove_all(p, ff::removal_options().keep_going()));
    case 3:
        return ff::rename(p, q);
    case 4:
        return ff::copy(p, q, word % 2 == 0 ? copy_options::none : copy_options::copy_symlinks);
    case 5:
        return ff::create_symlink(p, q, ff::file_status::file_type_auto);
    case 6:
        return ff::create_junction(p, q);
    case 7:
        return ff::permissions(p, word);
    case 8:
        ff::change_current_path(p);
        return;
    case 9:
        return ff::create_shortcut(p, q);
    case 10:
        for (auto it = ff::recursive_directory_iterator(p);
             it != ff::recursive_directory_iterator(); ++it)
            must(it.depth() < 200, "listing ends");
        return;
    case 11:
        ff::relative(p, q);
        return;
    case 12:
        return ff::create_hard_link(p, q);
    case 13:
        return ff::resize_file(p, word);
    case 14:
        ff::equivalent(p, q);
        return;
    default:
        return ff::remove_all(p);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size)
{
    fuzz::input input(data, size);
    simulation::simulated_machine machine;
    fuzz::build_disk(machine, input);
    machine.add_drive(u'K').add_file(u"K:\\kept", "kept");
    for (int i = 0; i < 24 && !input.is_empty(); ++i) {
        std::uint32_t const which = input.below(16);
        std::u16string const p = fuzz::pathname(input);
        std::u16string const q = fuzz::pathname(input);
        try {
            act(which, p, q, input.byte());
        } catch (ff::FsysExceptionBase const &) {
        } catch (foundation::ustring::CtypeExceptionBase const &) {
        } catch (std::filesystem::filesystem_error const &) {
        }
        fuzz::expect_nothing_open(machine);
    }
    must(machine.content(u"K:\\kept") == "kept", "nothing outside is touched");
    return 0;
}
