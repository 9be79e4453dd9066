// Shortcut files of any bytes, read through the shell link object and followed on a walk.

#include "fuzz/disk.hpp"

#include <fl/filesystem/exceptions.hpp>
#include <fl/filesystem/operations.hpp>
#include <fl/filesystem/queries.hpp>

namespace ff = fl::filesystem;

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size)
{
    simulation::simulated_machine machine;
    machine.keep_journal(false);
    machine.add_file(u"C:\\s.lnk", std::string(reinterpret_cast<char const *>(data), size));
    try {
        std::u16string const target = ff::read_shortcut(u"C:\\s.lnk");
        fuzz::must(target.size() < 260, "no more than the shell hands over");
    } catch (ff::FsysExceptionBase const &) {
    }
    try {
        ff::canonical(u"C:\\s.lnk\\x");
    } catch (ff::FsysExceptionBase const &) {
    }
    fuzz::expect_nothing_open(machine);
    return 0;
}
