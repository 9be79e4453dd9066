// Cleaning and walking on a disk built from the input: it ends, within bounds, and closes all.

#include "fuzz/call.hpp"
#include "fuzz/disk.hpp"

#include <fl/filesystem/links.hpp>
#include <fl/filesystem/operations.hpp>
#include <fl/filesystem/windows.hpp>

using fuzz::call;
using fuzz::must;
namespace ff = fl::filesystem;

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size)
{
    fuzz::input input(data, size);
    simulation::simulated_machine machine;
    fuzz::build_disk(machine, input);
    for (int i = 0; i < 4 && !input.is_empty(); ++i) {
        std::u16string const path = fuzz::pathname(input);
        call([&] {
            std::wstring const form = ff::detail::windows::make_native_access_form_bridge(path);
            must(form.find(L"\\..\\") == form.npos, "no way up is left");
        });
        call([&] {
            std::u16string const found = ff::canonical(path);
            must(ff::canonical(found) == found, "what is canonical stays");
        });
        call([&] { ff::weakly_canonical(path); });
        call([&] { must(ff::link_hops(path).size() <= 100, "a way has at most 100 links"); });
        call([&] { ff::status(path); });
        call([&] { ff::access(path, ff::access_read); });
        fuzz::expect_nothing_open(machine);
    }
    return 0;
}
