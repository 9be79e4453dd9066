// flfs with any arguments, on a disk: it ends with one of its exit codes and prints no raw
// control character.

#include "fuzz/disk.hpp"

#include "tools/flfs/commands.hpp"
#include "tools/flfs/run.hpp"

#include <algorithm>
#include <sstream>
#include <vector>

using fuzz::must;

namespace {

/// Line ends are flfs' own; nothing else is that a terminal would act on.
void expect_printable(std::string const &shown)
{
    for (std::size_t i = 0; i < shown.size(); ++i) {
        unsigned char const byte = static_cast<unsigned char>(shown[i]);
        must(byte >= 32 || byte == '\n', "no raw control character");
        must(byte != 0x7F, "nor DEL");
        bool const is_latin = byte == 0xC2 && i + 1 < shown.size();
        must(!is_latin || static_cast<unsigned char>(shown[i + 1]) >= 0xA0,
             "nor one of the others");
        must(shown.compare(i, 3, "\xE2\x80\xAE") != 0, "nor one that turns the line round");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size)
{
    std::string_view const text(reinterpret_cast<char const *>(data), size);
    std::vector<std::string> arguments;
    for (std::size_t begin = 0; begin < text.size();) {
        std::size_t const end = std::min(text.find('\n', begin), text.size());
        arguments.emplace_back(text.substr(begin, end - begin));
        begin = end + 1;
    }
    simulation::simulated_machine machine;
    machine.keep_journal(false);
    machine.add_file(u"C:\\a\\f", "f").add_junction(u"C:\\j", u"C:\\a");
    machine.add_symbolic_link(u"C:\\l", u"a", simulation::flavour::directory);
    machine.add_file(u"C:\\a\\\x7F\x9B\x33\x31m\x202E\xD800", "named to hurt");
    std::ostringstream out;
    std::ostringstream err;
    flfs::session session{out, err};
    session.has_disk = true;
    int const code = flfs::run(arguments, session);
    must(code >= 0 && code <= 2, "one of three exit codes");
    expect_printable(out.str());
    expect_printable(err.str());
    fuzz::expect_nothing_open(machine);
    return 0;
}
